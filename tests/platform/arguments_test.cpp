// Missing pointers and sizes that can't be: an error, and no crash.

#include "platform/errors.h"
#include "platform/files.h"
#include "support/desktop.h"

using Arguments = FilesTest;

TEST_F(Arguments, NamesAndRoomsAreGiven) {
  run("put a text ok; open a 3 7 ok");
  const std::string a = at("a");
  const char *const none = nullptr;
  char text[300];
  DWORD count = 0;
  WIN32_FIND_DATAA entry;
  expectErrors({
      {"CreateFileA", [&] { return CreateFileA(none, 0, 0, nullptr, 3, 0, nullptr) == INVALID_HANDLE_VALUE; }, 3},
      {"DeleteFileA", [&] { return !DeleteFileA(none); }, 3},
      {"MoveFileA from", [&] { return !MoveFileA(none, "b"); }, 3},
      {"CopyFileA from", [&] { return !CopyFileA(none, "b", TRUE); }, 3},
      {"CopyFileA to", [&] { return !CopyFileA(a.c_str(), none, TRUE); }, 3},
      {"GetFileAttributesA", [&] { return GetFileAttributesA(none) == INVALID_FILE_ATTRIBUTES; }, 3},
      {"SetFileAttributesA", [&] { return !SetFileAttributesA(none, 0); }, 3},
      {"FindFirstFileA", [&] { return FindFirstFileA(none, &entry) == INVALID_HANDLE_VALUE; }, 3},
      {"SearchPathA", [&] { return SearchPathA(".", none, nullptr, 300, text, nullptr) == 0; }, 87},
      {"CreateDirectoryA", [&] { return !CreateDirectoryA(none, nullptr); }, 3},
      {"OpenMutexA", [&] { return !OpenMutexA(MUTEX_ALL_ACCESS, FALSE, none); }, 87},
      {"GetEnvironmentVariableA", [&] { return GetEnvironmentVariableA(none, text, 300) == 0; }, 203},
      {"ReadFile", [&] { return !ReadFile(file_, nullptr, 3, &count, nullptr); }, 998},
      {"WriteFile", [&] { return !WriteFile(file_, nullptr, 3, &count, nullptr); }, 1784},
      {"a mapping without pages", [&] { return !CreateFileMappingA(file_, nullptr, 0, 0, 0, nullptr); }, 87},
      {"a mapping of no pages", [&] { return !CreateFileMappingA(file_, nullptr, 0x1000, 0, 0, nullptr); }, 87},
      {"a date without room", [&] { return !GetDateFormatA(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, nullptr, 9); },
       87},
      {"a date of no size", [&] { return !GetDateFormatA(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, text, -1); }, 87},
  });
  EXPECT_FALSE(RemoveDirectoryA(none));
  EXPECT_TRUE(ReadFile(file_, nullptr, 0, &count, nullptr));

  // the room that is needed, with a NUL
  const DWORD folder = GetCurrentDirectoryA(0, nullptr);
  EXPECT_EQ(GetCurrentDirectoryA(300, nullptr), folder);
  EXPECT_EQ(GetCurrentDirectoryA(300, text), folder - 1);
  const DWORD found = SearchPathA(folder_.path().c_str(), "a", nullptr, 0, nullptr, nullptr);
  EXPECT_EQ(SearchPathA(folder_.path().c_str(), "a", nullptr, 300, text, nullptr), found - 1);
  EXPECT_GT(GetEnvironmentVariableA("PATH", nullptr, 10), 0u);
  EXPECT_TRUE(GetDiskFreeSpaceA(nullptr, nullptr, nullptr, nullptr, &count));
  run("close ok");
}

TEST_F(Arguments, ConversionsTakeTextAndRoom) {
  const WCHAR some[] = {'a', 'b', 0};
  WCHAR wide[9];
  char narrow[9];
  struct Row {
    const char *what;
    UINT page;
    bool hasText;
    int length;
    bool hasRoom;
    int size;
    DWORD error;
  };
  const Row rows[] = {{"no text", 932, false, -1, true, 9, 87},     {"no text of 3", 932, false, 3, true, 9, 87},
                      {"nothing of it", 932, true, 0, true, 9, 87}, {"no room", 932, true, -1, false, 9, 87},
                      {"no size", 932, true, -1, true, -1, 87},     {"no page", 12345, true, -1, true, 9, 87},
                      {"too small", 932, true, -1, true, 2, 122}};
  for (const Row &row : rows)
    expectErrors({{row.what,
                   [&] {
                     return MultiByteToWideChar(row.page, 0, row.hasText ? "ab" : nullptr, row.length,
                                                row.hasRoom ? wide : nullptr, row.size) == 0;
                   },
                   row.error},
                  {row.what,
                   [&] {
                     return WideCharToMultiByte(row.page, 0, row.hasText ? some : nullptr, row.length,
                                                row.hasRoom ? narrow : nullptr, row.size, nullptr, nullptr) == 0;
                   },
                   row.error}});
  auto *const inside = reinterpret_cast<char *>(wide); // the text in the room
  BOOL usedDefault = FALSE;
  const auto toUtf8 = [&] { return WideCharToMultiByte(CP_UTF8, 0, some, -1, narrow, 9, nullptr, &usedDefault) == 0; };
  if (!onWine()) // which takes these
    expectErrors({{"nothing stands in for UTF-8", toUtf8, 87},
                  {"inside", [&] { return MultiByteToWideChar(932, 0, inside, 2, wide, 9) == 0; }, 87}});
  EXPECT_EQ(MultiByteToWideChar(932, 0, "ab", -5, wide, 9), 3) << "any length below 0 means up to the NUL";
}
