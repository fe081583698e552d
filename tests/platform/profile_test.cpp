#include "support/desktop.h"
#include "support/files.h"

#include "platform/platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

class Profile : public testing::Test {
 protected:
  // What a read hands out into a room of a size, up to the result; the byte behind the room stays as it is.
  std::string get(const char *section, const char *key, DWORD size = 200, const char *otherwise = "D") const {
    std::vector<char> text(size + 1, '~');
    const DWORD length = GetPrivateProfileStringA(section, key, otherwise, text.data(), size, name_.c_str());
    EXPECT_EQ(text[size], '~') << "behind the room";
    if (size == 0) return {};
    EXPECT_LT(length, size);
    EXPECT_EQ(text[length], '\0');
    return {text.data(), length};
  }
  bool put(const char *section, const char *key, const char *value) const {
    return WritePrivateProfileStringA(section, key, value, name_.c_str());
  }
  // The error of a write that fails.
  DWORD refusal(const char *section, const char *value) const { return put(section, "k", value) ? 0 : GetLastError(); }
  std::string content() const { return readFile(folder_.file("a.ini")); }
  void write(const std::string &content) const { writeFile(folder_.file("a.ini"), content); }

  const TempFolder folder_;
  std::string name_ = ".\\" + folder_.path() + "\\a.ini";
  std::string fresh_ = ".\\" + folder_.path() + "\\fresh.ini";
};

} // namespace

TEST_F(Profile, TextsAndNumbersAreFoundByName) {
  EXPECT_EQ(get("s", "k", 20, "  padded  ") + get("s", "k", 20, "\"quoted\"") + get("s", "k", 20, nullptr),
            "  paddedquoted");
  write("k=outside\r\n; comment\r\n[One]\r\nkey=value\r\n  spaced  =   some text   \r\nquoted=\" in quotes \"\r\n"
        "single='x y'\r\nhalf=\"open\r\nq2=\"a\" b\r\nqq=\"\"\"a\"\"\"\r\nempty=\r\nnoeq\r\n=noname\r\nKEY=second\r\n"
        ";c=d\r\ntab=\tx\t\r\ntail=v ; kept\r\neq=a=b\r\n[two] trailing\na=1\n[ Three ]\ra=3\r[one]\r\nnew=n\r\n"
        "[broken\r\na=9\r\n[\x83\x5C] \x83\x5D\r\n\x95\x5C=\x83\x5C\r\n\x83\x41=a\r\n\x83\x61=b\r\n[x\x83\x5D\r\n"
        "z=1\r\n[a]b]\r\nlast=end");
  std::istringstream rows(
      "One|key|value|oNE|KEY|value| one | key |value|One|spaced|some text|One|quoted| in quotes |One|single|x y|"
      "One|half|\"open|One|q2|\"a\" b|One|qq|\"\"a\"\"|One|empty||One|noeq|D|One||noname|One|c|D|One|tab|x|"
      "One|tail|v ; kept|One|eq|a=b|One|new|D|two|a|1|Three|a|3|broken|a|D||k|outside|n|k|D|"
      "\x83\x5C|\x95\x5C|\x83\x5C|\x83\x5C|\x83\x61|b|\x83\x5C|z|1|a]b|last|end|");
  std::string section, key, value;
  while (std::getline(std::getline(std::getline(rows, section, '|'), key, '|'), value, '|'))
    EXPECT_EQ(get(section.c_str(), key.c_str()), value) << section << ' ' << key;

  const std::pair<const char *, int64_t> numbers[] = {{"12", 12},
                                                      {"-12", -12},
                                                      {"+12", 12},
                                                      {"0x1F", 31},
                                                      {"-0xa", -10},
                                                      {"12abc", 12},
                                                      {"abc", 0},
                                                      {"", 99},
                                                      {"  7 ", 7},
                                                      {"4294967295", -1},
                                                      {"99999999999", 1215752191},
                                                      {"\"8\"", 8},
                                                      {"-", 0},
                                                      {"--5", 0},
                                                      {"1 2", 1},
                                                      {"010", 10}};
  for (const auto &[text, number] : numbers) {
    write(std::string("[n]\r\nk=") + text);
    EXPECT_EQ(static_cast<INT>(GetPrivateProfileIntA("N", "K", 99, name_.c_str())), number) << text;
  }
}

TEST_F(Profile, LongResultsAreCut) {
  write("[One]\r\nkey=value\r\nsecond=2\r\n[two]\r\n[Three]\r\n");
  for (DWORD size = 0; size < 8; ++size) {
    EXPECT_EQ(get("One", "key", size), std::string("value").substr(0, size ? size - 1 : 0));
    EXPECT_EQ(get("One", "n", size, "default"), std::string("default").substr(0, size ? size - 1 : 0));
  }
  const std::string keys("key\0second\0", 11), sections("One\0two\0Three\0", 14);
  EXPECT_EQ(get("One", nullptr), keys);
  EXPECT_EQ(get(nullptr, "key"), sections);
  EXPECT_EQ(get("n", nullptr) + get(nullptr, nullptr, 1) + get("One", nullptr, 1), "D");
  for (DWORD size = 3; size <= keys.size(); ++size) { // ends with two NULs, of which one is counted
    EXPECT_EQ(get("One", nullptr, size), keys.substr(0, size - 2));
    EXPECT_EQ(get(nullptr, nullptr, size), sections.substr(0, size - 2));
  }
}

TEST_F(Profile, WritingKeepsTheRest) {
  put("s", "k", "v"), put("s", "k2", "\"q\""), put("t", "k", ""), put(" S ", " K ", "  a=b;c");
  EXPECT_EQ(content(), "[s]\r\nk=a=b;c\r\nk2=\"q\"\r\n[t]\r\nk=\r\n");
  for (const char *removed : {"k2", "none"}) EXPECT_TRUE(put("s", removed, nullptr)) << removed;
  EXPECT_TRUE(put("none", nullptr, "v"));
  EXPECT_TRUE(put("", "o", "1"));
  EXPECT_EQ(content(), "o=1\r\n[s]\r\nk=a=b;c\r\n[t]\r\nk=\r\n");
  put("s", nullptr, nullptr), put("\x83\x5C", "\x95\x5C", "\x83\x5C");
  EXPECT_EQ(content(), "o=1\r\n[t]\r\nk=\r\n[\x83\x5C]\r\n\x95\x5C=\x83\x5C\r\n");
  EXPECT_EQ(refusal(nullptr, "v"), DWORD{ERROR_FILE_NOT_FOUND});

  write("; t\r\nx=0\r\n[a]\r\n; in a\r\nx=1\r\nx=2\r\njunk\r\n[a]\r\nx=3\r\nv=4\r\n[b]\r\n;e");
  put("a", "X", "9"), put("a", "v", "8"), put("b", "n", "5"), put("c", "n", "1");
  const std::string rest = "[a]\r\nx=3\r\nv=4\r\n[b]\r\n;e\r\nn=5\r\n[c]\r\nn=1\r\n";
  EXPECT_EQ(content(), "; t\r\nx=0\r\n[a]\r\n; in a\r\nx=9\r\nx=2\r\njunk\r\nv=8\r\n" + rest);
  EXPECT_TRUE(put("a", "x", nullptr));
  EXPECT_EQ(get("a", "x"), "2");
  EXPECT_TRUE(put("a", nullptr, nullptr));
  EXPECT_EQ(content(), "; t\r\nx=0\r\n" + rest); // with the next section of that name
}

// It would take the bracket or the sign behind it along.
TEST_F(Profile, HalfADoubleByteAtTheEndIsDropped) {
  write("[y]\r\nk=0\r\n");
  EXPECT_TRUE(put("x\x81", "k", "1"));
  EXPECT_EQ(get("y", "k"), "0");
  EXPECT_TRUE(put("x\x81", "j\x81", "2\x81"));
  EXPECT_EQ(content(), "[y]\r\nk=0\r\n[x]\r\nk=1\r\nj=2\r\n");
  EXPECT_EQ(get("x\x81", "j\x81"), "2");
  EXPECT_EQ(get("x\x81\x45", "k"), "D") << "a whole one is a character";
}

// What a write makes of signs of the format, and of line ends, is what everybody reads.
TEST_F(Profile, ReadsAreThoseOfTheFile) {
  if (onWindows()) GTEST_SKIP() << "the layer's own rule";
  const std::vector<std::string> pieces = {
      "a", "b", "=", "[", "]", ";", "\r", "\n", " ", "\"", "\'", "\x81", "\x83\x5D", "\xEF\xBB\xBF", "\xFF\xFE"};
  std::minstd_rand random(1);
  const auto text = [&] {
    std::string made;
    for (size_t count = random() % 4; count > 0; --count) made += pieces[random() % pieces.size()];
    return made;
  };
  for (int round = 0; round < 1500 && !HasFailure(); ++round) {
    if (round % 20 == 0) write(round % 40 == 0 ? "" : "k=1\r[s]\nk=2");
    const std::string section = text(), key = text(), value = text();
    SCOPED_TRACE(testing::PrintToString(section + '|' + key + '|' + value));
    EXPECT_TRUE(put(section.c_str(), key.c_str(), value.c_str()));
    const auto read = [&] {
      return get(nullptr, nullptr, 5000) + '|' + get(section.c_str(), nullptr, 5000) + '|' +
             get(section.c_str(), key.c_str());
    };
    const std::string kept = read();
    writeFile(folder_.file("fresh.ini"), content());
    std::swap(name_, fresh_);
    EXPECT_EQ(read(), kept);
    std::swap(name_, fresh_);
  }
}

TEST_F(Profile, Utf16StaysUtf16) {
  for (const bool swapped : {false, true}) {
    if (swapped && onWindows() && !onWine()) continue; // which knows one order of bytes only
    const auto bytes = [&](const std::u16string &text) {
      std::string out;
      for (const char16_t unit : u"\uFEFF" + text) {
        const char low = static_cast<char>(unit), high = static_cast<char>(unit >> 8);
        out += swapped ? high : low;
        out += swapped ? low : high;
      }
      return out;
    };
    const std::u16string start = u"; \u20AC\U0001F600\r\n[s]\r\nk=v\r\n\u30BD=\u8868\r\n\uE6FF=1\r\n";
    write(bytes(start));
    EXPECT_EQ(get("s", "k"), "v");
    EXPECT_EQ(get("s", "\x83\x5C"), "\x95\x5C");
    EXPECT_TRUE(put("s", "n", "\x83\x5C"));
    EXPECT_EQ(content(), bytes(start + u"n=\u30BD\r\n"));
    EXPECT_EQ(get("s", "n"), "\x83\x5C");
  }
}

// Whoever has the file open, or knows it by another name, sees what is written.
TEST_F(Profile, FilesThatOthersHaveAreWrittenInPlace) {
  write("[s]\r\nk=long value\r\n");
  const HANDLE file = CreateFileA(name_.c_str(), GENERIC_READ, 7, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_TRUE(put("s", "k", "1"));
  EXPECT_EQ(get("s", "k"), "1");
  char read[100] = "";
  DWORD count = 0;
  EXPECT_TRUE(ReadFile(file, read, sizeof read, &count, nullptr));
  EXPECT_EQ(std::string(read, count), "[s]\r\nk=1\r\n");
  EXPECT_TRUE(CloseHandle(file));

  std::filesystem::create_hard_link(folder_.file("a.ini"), folder_.file("other"));
  EXPECT_TRUE(put("s", "k", "23"));
  EXPECT_EQ(readFile(folder_.file("other")), "[s]\r\nk=23\r\n");
  if (onWindows()) return;

  std::filesystem::remove(folder_.file("other"));
  std::filesystem::create_directories(folder_.file(".a.ini.new/x")); // so that no file can be made beside it
  EXPECT_TRUE(put("s", "k", "4"));
  EXPECT_EQ(content(), "[s]\r\nk=4\r\n");
  write("[s]\r\nk=5\r\n"); // the same size in the same moment
  EXPECT_EQ(get("s", "k"), "5");

  const HANDLE mapped = CreateFileA(name_.c_str(), GENERIC_READ, 7, nullptr, OPEN_EXISTING, 0, nullptr);
  const HANDLE mapping = CreateFileMappingA(mapped, nullptr, PAGE_READONLY, 0, 0, nullptr);
  const void *view = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
  EXPECT_EQ(refusal("s", ""), DWORD{ERROR_USER_MAPPED_FILE}) << "it can't become shorter";
  EXPECT_EQ(get("s", "k"), "5");
  EXPECT_TRUE(put("s", "k", "67"));
  EXPECT_TRUE(UnmapViewOfFile(view));
  CloseHandle(mapping);
  CloseHandle(mapped);
}

TEST_F(Profile, OtherWritersAreSeenAndKept) {
  for (const char *text : {"1", "2", "3", "4", "5"}) { // the same size in the same second
    write(std::string("[s]\r\nk=") + text);
    EXPECT_EQ(get("s", "k"), text);
  }
  const auto writer = [&](const std::string &prefix) {
    for (int i = 0; i < 40; ++i) EXPECT_TRUE(put("s", (prefix + std::to_string(i)).c_str(), prefix.c_str()));
  };
  std::thread other(writer, "a");
  writer("b");
  other.join();
  for (const std::string prefix : {"a", "b"})
    for (int i = 0; i < 40; ++i) EXPECT_EQ(get("s", (prefix + std::to_string(i)).c_str()), prefix);
  EXPECT_EQ(get("s", "k"), "5");

  // files that can't be used are left as they are
  const HANDLE file = CreateFileA(name_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(get("s", "k"), "D");
  EXPECT_EQ(refusal("s", "2"), DWORD{ERROR_SHARING_VIOLATION});
  EXPECT_TRUE(CloseHandle(file));
  EXPECT_EQ(get("s", "k"), "5");
  for (const auto &[name, error] :
       {std::pair<const char *, DWORD>{"\\n\\a", ERROR_PATH_NOT_FOUND}, {"\\.", ERROR_ACCESS_DENIED}}) {
    name_ = folder_.path() + name;
    EXPECT_EQ(refusal("s", "v"), error);
  }
}
