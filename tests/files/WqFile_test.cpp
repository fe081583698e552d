// A file record through its opens, reads, writes and views, under names of every length.

#include "support/files.h"
#include "support/library.h"

#include <cstring>

namespace {

// Closed at the end.
struct Record : WqFile {
  explicit Record(const std::string &name) {
    WqFile_Init(this);
    WqFile_Path(this, name.c_str());
  }
  ~Record() { WqFile_Term(this); }
};

std::string read(WqFile *file, uint32_t size) {
  std::string bytes(size, '~');
  return bytes.substr(0, WqFile_Read(file, bytes.data(), size));
}
// The content, or "none"; by the library, since the names go beyond ASCII.
std::string content(const std::string &name) {
  Record file(name);
  return WqFile_ReadOpen(&file) ? read(&file, 100000) : "none";
}
bool put(const std::string &name, const std::string &text) {
  Record file(name);
  const auto size = static_cast<uint32_t>(text.size());
  return WqFile_WriteOpen(&file) && WqFile_Write(&file, text.data(), size) == size;
}

class WqFileTest : public LibraryTest {
 protected:
  const TempFolder folder_;
  const std::string name_ = folder_.path() + "\\\x83\x5C.txt"; // a backslash within a character
  HANDLE (*const opens_[3])(WqFile *) = {WqFile_ReadOpen, WqFile_WriteOpen, WqFile_ReadWriteOpen};
};

} // namespace

TEST_F(WqFileTest, PathsAreCutTo259Bytes) {
  std::string path = folder_.path() + '\\' + std::string(100, 'd');
  ASSERT_TRUE(CreateDirectoryA(path.c_str(), nullptr));
  path += '\\' + std::string(299 - path.size(), 'f'); // 300 bytes
  for (const size_t length : {300u, 260u, 259u, 258u, 0u}) {
    WqFile file;
    std::memset(file.path, '~', sizeof file.path);
    EXPECT_EQ(WqFile_Path(&file, path.substr(0, length).c_str()), std::min(static_cast<int32_t>(length), 259));
    EXPECT_EQ(std::string(file.path), path.substr(0, std::min<size_t>(length, 259)));
  }
  EXPECT_TRUE(put(path, "long"));
  EXPECT_EQ(content(path.substr(0, 259)) + content(path.substr(0, 260)) + content(path.substr(0, 258)), "longlongnone");
}

TEST_F(WqFileTest, OpensDiffer) {
  const std::string rows[][4] = {// name, what it holds when "!" was written: by read, write, read and write
                                 {"\x83\x5C.txt", "hello", "!", "!ello"},
                                 {"new", "none", "!", "!"},
                                 {"none\\new", "none", "none", "none"}};
  for (const auto &row : rows)
    for (size_t n = 0; n < 3; ++n) {
      SCOPED_TRACE(row[0] + std::to_string(n));
      EXPECT_TRUE(put(name_, "hello"));
      DeleteFileA((folder_.path() + "\\new").c_str());
      const std::string path = folder_.path() + '\\' + row[0], after = row[n + 1];
      Record file(path);
      const HANDLE handle = opens_[n](&file);
      EXPECT_EQ(file.file, handle ? handle : INVALID_HANDLE_VALUE);
      EXPECT_EQ(WqFile_Write(&file, "!", 1), handle && n > 0 ? 1u : 0u);
      EXPECT_EQ(read(&file, 2), after == "hello" ? "he" : after == "!ello" ? "el" : "");
      (n == 1 ? WqFile_Close : WqFile_Term)(&file);
      EXPECT_EQ(file.file, handle ? nullptr : INVALID_HANDLE_VALUE);
      EXPECT_EQ(file.path + content(path), path + after);
    }
  for (const auto first : opens_)
    for (const auto second : opens_) {
      Record file(name_), other(name_);
      EXPECT_TRUE(first(&file));
      EXPECT_EQ(second(&other) != nullptr, first == opens_[0] && second == opens_[0]) << "only readers share a file";
    }
  const HANDLE writer = CreateFileA(name_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_TRUE(content(name_) == "none" && CloseHandle(writer)) << "readers admit no writers";
}

TEST_F(WqFileTest, NothingHappensWithoutAFile) {
  const WqFile zeros{};
  Record zero(""), failed(folder_.path() + "\\none");
  EXPECT_EQ(WqFile_ReadOpen(&failed), nullptr);
  for (WqFile *file : {static_cast<WqFile *>(&zero), static_cast<WqFile *>(&failed)}) {
    uint32_t size = 5;
    EXPECT_EQ(read(file, 4), "");
    EXPECT_EQ(WqFile_Write(file, "text", 4), 0u);
    EXPECT_EQ(WqFile_Size(file, &size) & size, 0xFFFFFFFFu);
    EXPECT_FALSE(WqFile_ReadMapping(file) || WqFile_ReadWriteMapping(file));
    EXPECT_FALSE(WqFile_UnMapping(file));
    WqFile_Term(file);
  }
  for (const auto open : opens_) EXPECT_EQ(open(&zero), nullptr) << "an empty path";
  EXPECT_EQ(std::memcmp(static_cast<WqFile *>(&zero), &zeros, sizeof zeros), 0);
  EXPECT_EQ(failed.file, INVALID_HANDLE_VALUE);
  WqPath_Init(failed.path);
  EXPECT_STREQ(failed.path, "");
}

TEST_F(WqFileTest, ViewsShowTheWholeFile) {
  const std::string bytes = std::string(69998, 'x') + "yz"; // several pages, and part of one
  uint32_t size = 9;
  Record file(name_);
  ASSERT_TRUE(put(name_, bytes) && WqFile_ReadOpen(&file));
  EXPECT_TRUE(WqFile_Size(&file, &size) == bytes.size() && size == bytes.size());
  EXPECT_TRUE(!WqFile_ReadWriteMapping(&file) && !file.mapping) << "not opened for that";
  auto *view = static_cast<char *>(WqFile_ReadMapping(&file));
  ASSERT_TRUE(view && file.mapping);
  EXPECT_EQ(file.view, view);
  WqFile_Term(&file);
  EXPECT_EQ(std::string(view, bytes.size()), bytes) << "the view outlives the open file";
  EXPECT_FALSE(put(name_, "")) << "a file that is seen can't be emptied";
  EXPECT_TRUE(WqFile_UnMapping(&file));
  EXPECT_TRUE(!file.view && !file.mapping);
  EXPECT_FALSE(WqFile_UnMapping(&file));

  ASSERT_TRUE(WqFile_ReadWriteOpen(&file));
  ASSERT_TRUE(view = static_cast<char *>(WqFile_ReadWriteMapping(&file)));
  std::memcpy(view + 4094, "1234", 4); // on two pages
  EXPECT_TRUE(WqFile_FlushMapping(&file, view + 4094, 4) && !WqFile_FlushMapping(&file, nullptr, 4));
  EXPECT_TRUE(WqFile_UnMapping(&file));
  WqFile_Term(&file);
  EXPECT_EQ(content(name_), std::string(bytes).replace(4094, 4, "1234"));
  ASSERT_TRUE(put(name_, "") && WqFile_ReadWriteOpen(&file));
  EXPECT_TRUE(!WqFile_ReadMapping(&file) && !file.mapping) << "empty";
}

TEST_F(WqFileTest, SearchPathTellsTheLength) {
  char current[MAX_PATH];
  const std::string folder =
      std::string(current, GetCurrentDirectoryA(sizeof current, current)) + '\\' + folder_.path();
  const size_t length = folder.size() + 7; // with a backslash and the name
  EXPECT_TRUE(put(name_, ""));
  EXPECT_EQ(WqFile_SearchPath(&length, folder.c_str(), "\x83\x5C.txt", ".dat"), length);
  EXPECT_EQ(WqFile_SearchPath(nullptr, ("C:\\none;" + folder).c_str(), "\x83\x5C", ".txt"), length);
  EXPECT_EQ(WqFile_SearchPath(nullptr, folder.c_str(), "\x83\x5C", nullptr), 0u);
}
