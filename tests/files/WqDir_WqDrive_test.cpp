// Folder trees: made, listed, copied and deleted; and the drive behind a path.

#include "support/allocation.h"
#include "support/desktop.h"
#include "support/drives.h"
#include "support/files.h"
#include "support/library.h"

#include <cstring>
#include <filesystem>
#include <vector>

namespace {

using Names = std::vector<std::string>;

class WqDirTest : public LibraryTest {
 protected:
  std::string at(const std::string &name) const { return folder_.path() + '\\' + name; }

  // Makes files, and folders where a name ends in a slash. Files named 1, 2 and 4 get these attributes: they are
  // read-only, hidden, and the system's.
  void make(const Names &names) const {
    for (const std::string &name : names) {
      const HANDLE file = CreateFileA(at(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
      if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
      EXPECT_TRUE(name.back() != '/' || CreateDirectoryA(at(name.substr(0, name.size() - 1)).c_str(), nullptr));
      if (std::strchr("124", name.back())) SetFileAttributesA(at(name).c_str(), static_cast<DWORD>(name.back() - '0'));
    }
  }
  void makeNormal(const Names &names) const {
    for (const std::string &name : names) EXPECT_TRUE(SetFileAttributesA(at(name).c_str(), FILE_ATTRIBUTE_NORMAL));
  }

  // Which of these are there.
  Names there(Names names) const {
    std::erase_if(names, [&](const auto &name) { return !WqDir_IsExist(at(name).c_str()); });
    return names;
  }

  // The names behind a folder in the texts of a new list, which is given back.
  static Names taken(WqList *list, const std::string &folder) {
    Names names;
    for (const WqList *node = list; node; node = node->next) {
      const std::string text = reinterpret_cast<char *>(node->data);
      names.push_back(text.starts_with(folder + '\\') ? text.substr(folder.size() + 1) : "elsewhere: " + text);
    }
    WqList_RemoveAllWith(list);
    return names;
  }
  static Names collect(const std::string &folder, const char *pattern) {
    return taken(WqDir_Collect(folder.c_str(), pattern), folder);
  }

  const TempFolder folder_;
  const std::string longest_ =
      std::string(100, 'l') + '\\' + std::string(153 - folder_.path().size(), 'l'); // 255 bytes
};

} // namespace

TEST_F(WqDirTest, CreateMakesWhatIsMissing) {
  make({"file"});
  // clang-format off
  const std::pair<std::string, int> rows[] = {
      {at("a\\b\\c"), 1}, {at("a\\b\\c"), 1}, {folder_.path() + "\\\\\\d/e", 1},
      {at("\x83\x5C\\\x95\x5C\x81\x5C\\z"), 1}, {at("file\\r"), 0},
      {folder_.path() + "_none\\q\\r", 0}, // the first part is not made
      {at(longest_) + 'l', 0}, {at(longest_), 1}, {at("p\\" + longest_), 0}};
  // clang-format on
  for (const auto &[path, result] : rows) {
    EXPECT_EQ(WqDir_Create(path.c_str()), result) << path;
    EXPECT_EQ(WqDir_IsExist(path.c_str()), result) << path;
  }
  const Names names = {"f*", "?", "p", "*.txt", "p\\", "p\\x", "none\\*", "\x83", "\x83\x5C"};
  EXPECT_EQ(there(names), (Names{"f*", "?", "p", "\x83\x5C"})) << "what was made before a failure stays";
}

TEST_F(WqDirTest, DeleteLeavesSpecialFiles) {
  make({"t/", "t\\s/", "t\\s\\b", "t\\s\\u/", "t\\s\\u\\c", "t\\.p/", "t\\.p\\d", "t\\a", "other"});
  const Names special = {"t\\s\\1", "t\\s\\2", "t\\s\\4"};
  make(special);
  EXPECT_EQ(WqDir_Delete(at("t").c_str()), 1);
  EXPECT_EQ(there({"t\\s", "t\\s\\b", "t\\s\\u", "t\\.p\\d", "t\\a"}), (Names{"t\\s", "t\\.p\\d"}));
  EXPECT_EQ(there(special), special);
  makeNormal(special);
  for (const char *gone : {"t\\s\\", "t\\.p", "t\\"}) EXPECT_EQ(WqDir_Delete(at(gone).c_str()), 1);
  EXPECT_EQ(WqDir_Delete(at("t").c_str()), 0);
  make({"\x83\x5C/", "\x83\x5C\\\x95\x5C/", "\x83\x5C\\\x95\x5C\\x"});
  EXPECT_EQ(WqDir_Delete(at("\x83\x5C").c_str()), 1) << "its name ends in 0x5C, and in no backslash";
  EXPECT_EQ(there({"t", "\x83\x5C", "other"}), Names{"other"});
}

TEST_F(WqDirTest, CopyFileKeepsWhatIsThere) {
  make({"t/", "t\\s/", "t\\s\\b", "t\\\x83\x5C/", "t\\\x83\x5C\\c", "t\\.p/", "t\\.p\\d", "t\\e/", "d/", "d\\s/"});
  make({"t\\s\\1", "t\\s\\2", "t\\s\\4"});
  writeFile(folder_.file("d/s/b"), "older");
  writeFile(folder_.file("t/s/x"), "new");
  for (const std::string to : {"d", "d\\", "n\\\x83\x5C\\f\\", "n\\\x83\x5C"}) {
    WvDir_CopyFile(at(to[0] == 'd' ? "t\\" : "t").c_str(), at(to).c_str());
    EXPECT_EQ(there({to + "\\s\\b", to + "\\\x83\x5C\\c", to + "\\.p", to + "\\e", to + "\\s\\2", to + "\\s\\4"}),
              (Names{to + "\\s\\b", to + "\\\x83\x5C\\c"}));
    makeNormal({to + "\\s\\1"});
  }
  EXPECT_EQ(readFile(folder_.file("d/s/b")) + readFile(folder_.file("d/s/x")), "oldernew");
  makeNormal({"t\\s\\1"});
}

// A link leads out of the tree, or round in it.
TEST_F(WqDirTest, LinksToFoldersAreNotEntered) {
  if (onWindows()) GTEST_SKIP() << "links take rights there";
  namespace fs = std::filesystem;
  make({"outside/", "outside\\kept", "t/", "t\\a", "t\\s/", "t\\s\\b"});
  const fs::path top = fs::absolute(folder_.path());
  fs::create_directory_symlink(top / "outside", top / "t/s/out");
  fs::create_directory_symlink(top, top / "t/s/round");
  EXPECT_EQ(GetFileAttributesA(at("t\\s\\out").c_str()),
            DWORD{FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT});
  EXPECT_FALSE(DeleteFileA(at("t\\s\\out").c_str())) << "a folder is no file";

  WvDir_CopyFile(at("t").c_str(), at("copy").c_str());
  EXPECT_EQ(there({"copy\\a", "copy\\s\\b", "copy\\s\\out", "copy\\s\\round"}), (Names{"copy\\a", "copy\\s\\b"}));
  WvDir_CopyFile(at("t\\s\\out").c_str(), at("copy").c_str());
  EXPECT_EQ(there({"copy\\kept"}), Names{"copy\\kept"}) << "a link that is named is the folder";

  EXPECT_EQ(WqDir_Delete(at("t").c_str()), 1);
  EXPECT_EQ(there({"t", "outside\\kept", "copy\\a"}), (Names{"outside\\kept", "copy\\a"}));
  fs::create_directory_symlink(top / "outside", top / "link");
  EXPECT_EQ(WqDir_Delete(at("link\\").c_str()), 1);
  EXPECT_EQ(there({"link", "outside\\kept"}), Names{"outside\\kept"});
}

TEST_F(WqDirTest, CopyFileIntoTheTreeItselfEnds) {
  make({"t/", "t\\a", "t\\m/", "t\\m\\b", "t\\z/", "t\\z\\c"});
  WvDir_CopyFile(at("t").c_str(), at("t\\z").c_str());
  EXPECT_EQ(there({"t\\z\\a", "t\\z\\m\\b", "t\\z\\c", "t\\z\\z\\c", "t\\z\\z\\a", "t\\z\\z\\m", "t\\z\\z\\z"}),
            (Names{"t\\z\\a", "t\\z\\m\\b", "t\\z\\c", "t\\z\\z\\c"}));
}

TEST_F(WqDirTest, CollectListsOneFolder) {
  make({"t/", "t\\b.wav", "t\\a.wav", "t\\\x83\x5C.wav", "t\\sub/", "t\\sub\\d.wav", "e/", "t\\1", "t\\2", "t\\4"});
  const std::pair<const char *, Names> rows[] = {{"*", {"1", "a.wav", "b.wav", "sub", "\x83\x5C.wav"}},
                                                 {"*.wav", {"a.wav", "b.wav", "\x83\x5C.wav"}},
                                                 {"s*", {"sub"}},
                                                 {"\x83\x5C*", {"\x83\x5C.wav"}},
                                                 {"none", {}}};
  for (const auto &[pattern, names] : rows)
    for (const char *folder : {"t", "t\\"}) EXPECT_EQ(collect(at(folder), pattern), names) << folder << ' ' << pattern;
  makeNormal({"t\\1"});
  for (const char *nothing : {"e", "none"}) EXPECT_EQ(WqDir_Collect(at(nothing).c_str(), "*"), nullptr);
  EXPECT_TRUE(WqDir_Create(at(longest_).c_str()));
  make({longest_ + "\\nnn"});
  EXPECT_EQ(collect(at(longest_), "*"), Names{"nnn"});
  EXPECT_EQ(WqDir_Collect(at(longest_ + '\\').c_str(), "*"), nullptr) << "260 bytes don't fit";
}

TEST_F(WqDirTest, MemoryShortEndsAListEarly) {
  make({"a", "b", "c"});
  for (size_t n = 1; n <= 7; ++n) { // a text and a node for each
    AllocationFailure failure(static_cast<int>(n));
    WqList *list = WqDir_Collect(folder_.path().c_str(), "*");
    EXPECT_EQ(failure.happened(), n < 7);
    EXPECT_EQ(taken(list, folder_.path()).size(), (n - 1) / 2) << n;
  }
}

TEST_F(WqDirTest, GetFromPathEndsAtTheLastBackslash) {
  const std::pair<const char *, std::string> rows[] = {{"C:\\a\\b.txt", "C:\\a"},
                                                       {"name.txt", ""},
                                                       {"a\\b\\", "a\\b"},
                                                       {"d\\\x83\x5C\x95\x5C", "d"},
                                                       {"\x83\x5C\\x", "\x83\x5C"}};
  for (const auto &[path, folder] : rows) {
    char text[2][20] = {"~~~~~~~", "~~~~~~~"};
    EXPECT_EQ(WqDir_GetFromPath(path, text[0]), static_cast<int32_t>(folder.size()));
    EXPECT_EQ(WvDir_PathTo(text[1], path), static_cast<int32_t>(folder.size()));
    for (const auto &each : text) EXPECT_EQ(each, folder);
  }
  for (const auto clear : {WqDir_Init, WqDrive_Init, WqDrive_Term}) {
    char text[] = "text";
    clear(text);
    EXPECT_STREQ(text, "");
  }
}

TEST_F(WqDirTest, DrivesAreTakenFromAPath) {
  char current[1024], name[6] = "~~~~~";
  GetCurrentDirectoryA(sizeof current, current);
  WqDrive_CurrentName(name);
  EXPECT_EQ(std::string(name, 5), std::string(current, 2) + std::string("\\\0~", 3));
  for (const std::string &path : {std::string(name) + "no\\such", std::string(name, 2), std::string("x")})
    for (DWORD perCluster, perSector, before = 0, after = 1, all; before != after;) { // until nobody else writes
      ASSERT_TRUE(GetDiskFreeSpaceA(name, &perCluster, &perSector, &before, &all));
      const uint32_t space = WqDrive_FreeSpace(path.c_str());
      ASSERT_TRUE(GetDiskFreeSpaceA(name, &perCluster, &perSector, &after, &all));
      EXPECT_TRUE(before != after || space == perCluster * perSector * before) << path;
    }
  EXPECT_EQ(WqDrive_FreeSpace("Q:\\"), 0u);
  EXPECT_TRUE(WqDrive_IsWrite("Q:\\") && WqDrive_IsWrite(name)) << "a drive that isn't there is no CD drive";
  for (const UINT type : {DRIVE_UNKNOWN, DRIVE_CDROM})
    EXPECT_TRUE(!makeDrive('R', type) || !WqDrive_IsWrite("R:\\some\\folder")) << type;
}
