// Missing pointers and sizes that can't be: an error, and no crash.

#include "platform/files.h"
#include "support/desktop.h"

namespace {

class Arguments : public FilesTest {
 protected:
  Arguments() {
    writeFile(folder_.file("a"), "text");
    EXPECT_EQ(open(at("a"), 3, 7, OPEN_EXISTING), "ok");
  }
  ~Arguments() override { CloseHandle(file_); }

  const std::string a_ = at("a");
  char text_[300] = {};
  WCHAR wide_[300] = {};
  DWORD count_ = 0;
};

struct Row {
  const char *call;
  std::function<bool()> fails;
  DWORD error;
};

void expectErrors(const std::vector<Row> &rows) {
  for (const Row &row : rows) {
    SetLastError(777);
    EXPECT_TRUE(row.fails()) << row.call;
    EXPECT_EQ(GetLastError(), row.error) << row.call;
  }
}

} // namespace

TEST_F(Arguments, NamesAreGiven) {
  const char *const none = nullptr;
  WIN32_FIND_DATAA entry;
  expectErrors({
      {"CreateFileA", [&] { return CreateFileA(none, 0, 0, nullptr, 3, 0, nullptr) == INVALID_HANDLE_VALUE; }, 3},
      {"DeleteFileA", [&] { return !DeleteFileA(none); }, 3},
      {"MoveFileA from", [&] { return !MoveFileA(none, "b"); }, 3},
      {"CopyFileA from", [&] { return !CopyFileA(none, "b", TRUE); }, 3},
      {"CopyFileA to", [&] { return !CopyFileA(a_.c_str(), none, TRUE); }, 3},
      {"GetFileAttributesA", [&] { return GetFileAttributesA(none) == INVALID_FILE_ATTRIBUTES; }, 3},
      {"SetFileAttributesA", [&] { return !SetFileAttributesA(none, 0); }, 3},
      {"FindFirstFileA", [&] { return FindFirstFileA(none, &entry) == INVALID_HANDLE_VALUE; }, 3},
      {"SearchPathA", [&] { return SearchPathA(".", none, nullptr, 300, text_, nullptr) == 0; }, 87},
      {"CreateDirectoryA", [&] { return !CreateDirectoryA(none, nullptr); }, 3},
      {"OpenMutexA", [&] { return !OpenMutexA(MUTEX_ALL_ACCESS, FALSE, none); }, 87},
      {"GetEnvironmentVariableA", [&] { return GetEnvironmentVariableA(none, text_, 300) == 0; }, 203},
  });
  EXPECT_FALSE(RemoveDirectoryA(none));
}

TEST_F(Arguments, RoomsAreGiven) {
  expectErrors({
      {"ReadFile", [&] { return !ReadFile(file_, nullptr, 3, &count_, nullptr); }, 998},
      {"WriteFile", [&] { return !WriteFile(file_, nullptr, 3, &count_, nullptr); }, 1784},
      {"a mapping without pages", [&] { return !CreateFileMappingA(file_, nullptr, 0, 0, 0, nullptr); }, 87},
      {"a mapping of no pages", [&] { return !CreateFileMappingA(file_, nullptr, 0x1000, 0, 0, nullptr); }, 87},
      {"a date without room", [&] { return !GetDateFormatA(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, nullptr, 9); },
       87},
      {"a date of no size", [&] { return !GetDateFormatA(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, text_, -1); }, 87},
  });
  EXPECT_TRUE(ReadFile(file_, nullptr, 0, &count_, nullptr));

  // the room that is needed, with a NUL
  const DWORD folder = GetCurrentDirectoryA(0, nullptr);
  EXPECT_EQ(GetCurrentDirectoryA(300, nullptr), folder);
  EXPECT_EQ(GetCurrentDirectoryA(300, text_), folder - 1);
  const DWORD found = SearchPathA(folder_.path().c_str(), "a", nullptr, 0, nullptr, nullptr);
  EXPECT_EQ(SearchPathA(folder_.path().c_str(), "a", nullptr, 300, nullptr, nullptr), found);
  EXPECT_EQ(SearchPathA(folder_.path().c_str(), "a", nullptr, 300, text_, nullptr), found - 1);
  EXPECT_GT(GetEnvironmentVariableA("PATH", nullptr, 10), 0u);
  DWORD clusters = 0;
  EXPECT_TRUE(GetDiskFreeSpaceA(nullptr, nullptr, nullptr, nullptr, &clusters));
  EXPECT_GT(clusters, 0u);
}

TEST_F(Arguments, ConversionsTakeTextAndRoom) {
  const auto wide = [&](UINT page, const char *text, int length, WCHAR *room, int size) {
    return [=] { return MultiByteToWideChar(page, 0, text, length, room, size) == 0; };
  };
  const auto narrow = [&](UINT page, const WCHAR *text, int length, char *room, int size, BOOL *usedDefault = nullptr) {
    return [=] { return WideCharToMultiByte(page, 0, text, length, room, size, nullptr, usedDefault) == 0; };
  };
  const WCHAR some[] = {'a', 'b', 0};
  expectErrors({
      {"wide: no text", wide(932, nullptr, -1, wide_, 9), 87},
      {"wide: no text of 3", wide(932, nullptr, 3, wide_, 9), 87},
      {"wide: nothing of it", wide(932, "ab", 0, wide_, 9), 87},
      {"wide: no room", wide(932, "ab", -1, nullptr, 9), 87},
      {"wide: no size", wide(932, "ab", -1, wide_, -1), 87},
      {"wide: no page", wide(12345, "ab", -1, wide_, 9), 87},
      {"wide: too small", wide(932, "ab", -1, wide_, 2), 122},
      {"narrow: no text", narrow(932, nullptr, -1, text_, 9), 87},
      {"narrow: no text of 3", narrow(CP_UTF8, nullptr, 3, text_, 9), 87},
      {"narrow: nothing of it", narrow(932, some, 0, text_, 9), 87},
      {"narrow: no room", narrow(932, some, -1, nullptr, 9), 87},
      {"narrow: no size", narrow(932, some, -1, text_, -1), 87},
      {"narrow: no page", narrow(12345, some, -1, text_, 9), 87},
      {"narrow: too small", narrow(932, some, -1, text_, 2), 122},
  });
  BOOL usedDefault = FALSE;
  if (!onWine()) // which takes these
    expectErrors({{"nothing stands in for UTF-8", narrow(CP_UTF8, some, -1, text_, 9, &usedDefault), 87},
                  {"room in the text", wide(932, reinterpret_cast<char *>(wide_), 2, wide_, 9), 87}});
  EXPECT_EQ(MultiByteToWideChar(932, 0, "ab", -5, wide_, 9), 3) << "any length below 0 means up to the NUL";
}
