// Names as Windows takes them: without regard to case, without points and blanks at their ends, and those of devices;
// and the names of this system that Windows has none like.

#include "platform/files.h"
#include "support/desktop.h"
#include "support/program.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

class Names : public FilesTest {
 protected:
  // Writes a file by a stream; what it held before, or the error.
  std::string stream(const std::string &name, const std::string &text) const {
    FILE *file = platformOpenStream(at(name).c_str(), "rb");
    char before[100] = "none";
    if (file) before[std::fread(before, 1, sizeof before - 1, file)] = '\0';
    if (file) std::fclose(file);
    file = platformOpenStream(at(name).c_str(), "wb");
    if (!file) return std::string(before) + ", refused";
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
    return before;
  }

  const std::vector<std::string> odd_ = {
      "what?.wav", "*",    "a\"b",     "<x>",      "a|b",        "12:30",        "back\\slash", "x\x01y",
      "tab\there", "end.", "end..",    "end ",     " ",          "...",          "..x",         "nul",
      "Aux.c",     "con",  "lpt1.txt", "\xFF\x83", "\xC3\xA9?.", "\xE2\x82\xAC", "\xE3\x82\xBD"};
};

} // namespace

TEST_F(Names, AreFoundInAnyCase) {
  run("make Sub ok; put Sub/In.dat 12 ok; create SUB\\IN.DAT 3 0; create sub\\in.dat 1 80; "
      "create sub\\in.dat 4 183; find sub\\in.dat In.dat; find SUB\\I* In.dat; find sub\\* ./../In.dat; "
      "attr sub\\in.DAT 0; set sub\\IN.dat 1 ok; attr Sub\\In.dat 1; set sub\\in.dat 128 ok; make SUB 183; "
      "make sub\\in.DAT 183; make sub\\Deep ok; put a 1 ok; copy a SUB\\in.dat 80; move a SUB\\in.dat 183; "
      "copyover a SUB\\in.dat ok; open sub\\IN.dat 1 0 ok; size 1; close ok; create SUB\\DEEP\\New 1 0; "
      "find Sub\\Deep\\* ./../New; copy SUB\\deep\\new SUB\\DEEP\\Copy ok; find Sub\\deep\\* ./../Copy/New; "
      "erase sub\\DEEP\\NEW ok; erase sub\\deep\\copy ok; remove SUB\\DEEP ok; create sub\\IN.DAT 2 183; "
      "find sub\\* ./../In.dat");
  if (!onWine()) // which leaves the old case
    run("move SUB\\IN.DAT Sub\\iN.dAT ok; find sub\\* ./../iN.dAT; move A a ok; move a A ok; find * ./../A/Sub");
  run("erase sub\\in.dat ok; remove sub ok; erase a ok; find * ./..");

  // those that have two cases in code page 932: full-width letters, Greek, Cyrillic, Roman numerals
  for (const char *pair : {"\x82\x81\x82\x60", "\x82\x9A\x82\x79", "\x83\xBF\x83\x9F", "\x83\xD6\x83\xB6",
                           "\x84\x70\x84\x40", "\x84\x91\x84\x60", "\x84\x76\x84\x46", "\xFA\x40\x87\x54"})
    run("create #x 1 0; create " + std::string(pair + 2) + "X 3 0; find * ./../#x; erase " + (pair + 2) + "X ok",
        std::string(pair, 2));
  run("create \xB6 1 0; create \x83\x4A 3 2; create \x82\xA9 3 2; erase \xB6 ok"); // three forms of a letter, no case
}

TEST_F(Names, StreamsProfilesAndSearchesPassOverCase) {
  EXPECT_EQ(stream("wqa_Case.WAV", "1"), "none");
  EXPECT_EQ(stream("WQA_cASE.wav", "22"), "1");
  for (const char *name : {"Set.ini", "SET.INI"})
    EXPECT_TRUE(WritePrivateProfileStringA("s", "k", name, at(name).c_str())) << name;
  EXPECT_EQ(GetPrivateProfileIntA("S", "K", 7, at("set.ini").c_str()), 0u) << "no number, but there";
  run("find * ./../Set.ini/wqa_Case.WAV; make One ok; put One/a.Txt 1 ok; search A.txt .x one\\A.txt; "
      "search A .TXT one\\A.TXT");
}

// Where a system has both, each has its own name; any other spelling means the first by its bytes.
TEST_F(Names, TheExactOneComesFirst) {
  if (onWindows()) GTEST_SKIP() << "no two names differ in case only";
  writeFile(folder_.file("ab"), "small");
  writeFile(folder_.file("AB"), "capital");
  fs::create_directory(folder_.file("D"));
  fs::create_directory(folder_.file("d"));
  writeFile(folder_.file("d/x"), "only here");
  EXPECT_EQ(stream("ab", "small"), "small");
  EXPECT_EQ(stream("AB", "capital"), "capital");
  EXPECT_EQ(stream("aB", "capital"), "capital");
  run("find A* AB/ab; move ab AB 183; erase aB ok; find * ./../ab/D/d; create D\\x 3 2; erase AB ok; move d D 183");
}

TEST_F(Names, PointsAndBlanksAtTheEndDontCount) {
  run("put a.txt 1 ok; make Sub ok; put Sub/in 12 ok; create a.txt. 3 0; create a.txt%..%. 3 0; create a.txt% 3 0; "
      "create Sub.\\in 3 0; create Sub..\\in 3 3; create Sub%\\in 3 3; create Sub.%\\in 3 3; attr Sub. 16; "
      "attr Sub.\\ 16; attr Sub%\\ 2; attr Sub\\% 16; attr Sub\\. 16; attr Sub\\.. 16; attr Sub\\... 16; "
      "attr ... 16; attr Sub\\.% 16; create y..% 1 0; find y* y; make d.% ok; find d* d; make e%\\ ok; "
      "make g.\\ ok; find g* g; make %i ok; find %* %i; make ... 183; make Sub\\. 183; find a.txt.% a.txt; "
      "find *.txt. a.txt; find Sub.\\* ./../in; find no\\..\\a.txt a.txt; find no\\..\\a* a.txt; "
      "create no\\..\\a.txt 3 0; create no\\.\\..\\Sub\\.\\in 3 0; move a.txt. b.txt.% ok; find b* b.txt; "
      "copy b.txt% c.txt. ok; find c* c.txt; erase c.txt%. ok; erase y. ok; remove d. ok; remove e% 2; "
      "remove e%\\ ok; remove g. ok; remove %i. ok; find * ./../b.txt/Sub");
  EXPECT_EQ(open(" ", 1, 0, OPEN_EXISTING), "3");
  EXPECT_EQ(stream("b.txt. .", "x"), "1");
  EXPECT_TRUE(WritePrivateProfileStringA("s", "k", "v", at("p.ini. ").c_str()));
  run("find p* p.ini");
}

TEST_F(Names, HaveNoControlBytes) {
  for (const char *name : {"x\x01", "\x1Fx"})
    run("put a 1 ok; create # 1 123; create # 3 123; make # 123; remove # 123; erase # 123; move a # 123; "
        "move # b 123; copy a # 123; attr # 123; set # 1 123",
        name);
  EXPECT_EQ(open(at("x\ty"), 2, 0, CREATE_NEW), "123");
  run("create x\x01\\..\\a 3 0; create a\x7F 1 0; find * ./../a/a\x7F");
}

// What follows the name of a device behind a point is nothing to it.
TEST_F(Names, OfDevicesAreNoFiles) {
  run("make d ok; put a hello ok");
  const std::pair<const char *, const char *> nulls[] = {{"NUL", "NUL"},      {"nul", "nul"},
                                                         {"nul.txt", "nul"},  {"d\\Nul.", "Nul"},
                                                         {"Nul%.x.y", "Nul"}, {"d\\..\\nul", "nul"}};
  for (const auto &[name, shown] : nulls) {
    run("open # 3 0 ok; write text ok; close ok; open # 3 0 ok; read 9 =; size 0; close ok; create # 1 0; "
        "create # 2 0; attr # 0; copy a # ok; find # " +
            std::string(shown),
        name);
    const std::string path = at(name).substr(0, at(name).find('%'));
    EXPECT_EQ(stream(path.substr(folder_.path().size() + 1), "text"), "") << name;
    EXPECT_TRUE(WritePrivateProfileStringA("s", "k", "v", path.c_str())) << name;
  }
  EXPECT_EQ(open(at("nul"), 3, 0, OPEN_EXISTING), "ok");
  const HANDLE first = file_;
  run("open nul 3 0 ok; close ok"); // nobody has it alone
  CloseHandle(first);
  for (const char *device : {"PRN", "prn.txt", "lpt9", "d\\LPT4.x"})
    run("create # 3 2; create # 1 2; create # 2 2; create # 4 2", device);
  if (!onWine()) // which has some serial ports, and files of others
    for (const char *device : {"CON", "aux.c", "com1", "COM9%.x", "CONIN$", "conout$"})
      run("create # 3 2; create # 1 2; create # 2 2; attr # 2; find # 2", device);
  run("create no\\nul 3 3; attr no\\nul 3; create nul\\x 3 3; find * ./../a/d");
  for (const char *file : {"COM0", "com10", "xnul", "nulx", "a.nul", "LPT"}) run("create # 1 0; erase # ok", file);
}

// Every name that this system can have is listed under one that leads to it, as a file and as a folder.
TEST_F(Names, OfThisSystemLeadToTheirFiles) {
  if (onWindows()) GTEST_SKIP() << "no such names";
  for (const std::string &name : odd_) {
    SCOPED_TRACE(testing::PrintToString(name));
    writeFile(folder_.file(name), "content");
    const std::string listed = found(at("*")).substr(std::strlen("./../"));
    run("open # 1 0 ok; read 9 =content; close ok; find # #; move # n ok; move n # ok; copy # n ok; erase n ok; "
        "find #* #",
        listed);
    EXPECT_EQ(readFile(folder_.file(name)), "content");
    EXPECT_EQ(stream(listed, "more"), "content");
    run("erase # ok; make # ok; create #\\new 1 0; find #\\* ./../new; find * ./../#; erase #\\new ok", listed);
    EXPECT_TRUE(fs::is_directory(folder_.file(name)));
    run("remove # ok; find * ./..", listed);
  }
  writeFile(folder_.file("a?c"), "");
  writeFile(folder_.file("abc"), "");
  run("find a?c abc/#; find #* #", found(at("*")).substr(std::strlen("./../abc/"))); // letters come before escapes
}

// An argument that is the path of something that is there is taken as such, and else it is text.
TEST_F(Names, OfThisSystemComeInArguments) {
  if (onWindows()) GTEST_SKIP() << "no such names";
  std::vector<std::string> arguments = {"exist"};
  for (const std::string &name : odd_) {
    writeFile(folder_.file(name), "");
    arguments.push_back(folder_.file(name));
  }
  EXPECT_EQ(BackgroundProgram("opener", arguments).wait(), static_cast<int>(odd_.size()));
  fs::create_directory(folder_.file("in?"));
  EXPECT_EQ(BackgroundProgram("opener", {"create", folder_.file("in?/new"), folder_.file("new?"),
                                         folder_.file("no?/new"), folder_.path() + "\\plain"})
                .wait(),
            2);
  EXPECT_TRUE(fs::exists(folder_.file("in?/new")));
  EXPECT_TRUE(fs::exists(folder_.file("plain"))) << "where there is no such file, a backslash separates";
}
