#include "support/files.h"

#include "platform/platform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Opens, writes and closes a file; false when it can't be opened.
bool put(const std::string &name, const char *mode, const std::string &text) {
  FILE *file = platformOpenStream(name.c_str(), mode);
  if (!file) return false;
  EXPECT_EQ(std::fwrite(text.data(), 1, text.size(), file), text.size());
  EXPECT_EQ(std::fclose(file), 0);
  return true;
}

// The content of a file; "(none)" when it can't be opened.
std::string get(const std::string &name) {
  FILE *file = platformOpenStream(name.c_str(), "rb");
  if (!file) return "(none)";
  char text[100];
  const size_t length = std::fread(text, 1, sizeof text, file);
  std::fclose(file);
  return {text, length};
}

} // namespace

TEST(Paths, StreamsOpenAsTheirModeSays) {
  const TempFolder folder;
  const std::string name = folder.path() + "\\a.txt";
  EXPECT_EQ(get(name), "(none)");
  EXPECT_FALSE(put(name, "r+b", "x"));
  EXPECT_TRUE(put(name, "wb", "a\r\n\x1A"));
  EXPECT_TRUE(put(name, "ab", "b\n"));
  EXPECT_EQ(readFile(folder.file("a.txt")), "a\r\n\x1A\x62\n");
  EXPECT_TRUE(put(name, "r+b", "c"));
  EXPECT_EQ(get(name), "c\r\n\x1A\x62\n");
  EXPECT_TRUE(put(name, "wb", ""));
  EXPECT_EQ(get(name), "");
}

TEST(Paths, BothSeparatorsLeadThroughFolders) {
  const TempFolder folder;
  const std::string &top = folder.path();
  fs::create_directories(top + "/one/two");
  EXPECT_TRUE(put(top + "\\one/two\\a.txt", "wb", "x"));
  for (const char *name : {"/one/two/a.txt", "\\one\\\\two/a.txt", "\\one\\..\\one\\.\\two\\a.txt"})
    EXPECT_EQ(get(top + name), "x") << name;
  for (const std::string &name : {std::string(), std::string("."), top, top + "/", top + "\\one", top + "\\one\\",
                                  top + "\\missing\\a", "q:" + top + "\\a", std::string("q:a")})
    for (const char *mode : {"rb", "r+b", "wb", "ab"}) EXPECT_FALSE(put(name, mode, "x")) << name << ' ' << mode;
  EXPECT_EQ(std::distance(fs::recursive_directory_iterator(top), {}), 3) << "nothing was made";
}

// The names are those that the system itself shows, and no byte of a character separates.
TEST(Paths, NamesAreCodePage932) {
  const std::vector<std::pair<const char *, const char16_t *>> rows = {
      {"a~b.txt", u"a~b.txt"},
      {"\x83\x5C", u"\u30BD"}, // a backslash as second half
      {"\x95\x5C\x83\x5C.txt", u"\u8868\u30BD.txt"},
      {"\x81\x5F\x81\x60\x81\x7C", u"\uFF3C\uFF5E\uFF0D"}, // where code page 932 departs from Shift-JIS
      {"\x87\x40\xFA\x40\xFB\xFC", u"\u2460\u2170\u9AD9"}, // the rows added to the standard
      {"\xA1\xDFx\xF0\x40", u"\uFF61\uFF9Fx\uE000"},
  };
  const TempFolder folder;
  const fs::path inner = fs::path(folder.path()) / u"\u30BD";
  std::error_code error;
  ASSERT_TRUE(fs::create_directory(inner, error)) << "on Wine such names need the locale ja_JP.UTF-8";
  for (const auto &[name, native] : rows) {
    SCOPED_TRACE(testing::PrintToString(name));
    for (const std::string separator : {"/", "\\"}) {
      EXPECT_TRUE(put(folder.path() + separator + "\x83\x5C" + separator + name, "wb", separator));
      EXPECT_TRUE(fs::is_regular_file(inner / native));
      EXPECT_EQ(std::distance(fs::recursive_directory_iterator(folder.path()), {}), 2);
      EXPECT_EQ(get(folder.path() + "/\x83\x5C\\" + name), separator);
      fs::remove(inner / native);
    }
  }
}
