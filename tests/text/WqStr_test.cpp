#include "wq.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using namespace std::string_literals;

namespace {

// The picture of a destination of 64 bytes, of which the first ones are written, between guard bytes.
std::string guarded(const std::string &bytes) {
  return std::string(8, '\xA5') + bytes + std::string(64 + 8 - bytes.size(), '\xA5');
}

std::string terminated(const char *text) { return {text, std::strlen(text) + 1}; }

struct Destination {
  std::string bytes = guarded("");
  char *at() { return bytes.data() + 8; }
};

// A block that ends with the text's last byte, so that the sanitizer sees a read behind it.
std::vector<char> exact(const std::string &bytes) { return {bytes.begin(), bytes.end()}; }

// Each function writes its text, and its result is the text's length.
void expectWrites(const std::vector<std::pair<int32_t (*)(char *dst), const char *>> &rows) {
  for (const auto &[write, text] : rows) {
    Destination dst;
    EXPECT_EQ(write(dst.at()), static_cast<int32_t>(std::strlen(text))) << text;
    EXPECT_EQ(dst.bytes, guarded(terminated(text)));
  }
}

} // namespace

TEST(WqStr, CopiesJoinsAndFormats) {
  expectWrites({
      {[](char *d) { return WqStr_Copy(d, ""); }, ""},
      {[](char *d) { return WqStr_Copy(d, "\x83\x5C,\xFF"); }, "\x83\x5C,\xFF"},
      {[](char *d) { return WqStr_CopyD(d, "a\"b\\"); }, R"("a"b\")"},
      {[](char *d) { return WqStr_CopyCat(d, "", "cde"); }, "cde"},
      {[](char *d) { return WqStr_CopyCat(d, "ab", "cde"); }, "abcde"},
      {[](char *d) { return *d = '\0', WqStr_Cat(d, "abc"); }, "abc"},
      {[](char *d) { return WqStr_Copy(d, "ab"), WqStr_Cat(d, "cd"), WqStr_Cat(d, "e"); }, "abcde"},
      {[](char *d) { return WqStr_Format(d, "%s=%03d|%-4c|%.2f%%", "a", 7, 'x', 1.5); }, "a=007|x   |1.50%"},
      {[](char *d) { return WqStr_Format(d, "%ls", L"\x3042"); }, ""}, // no character of the C locale
  });
  EXPECT_EQ(WqStr_Len(""), 0);
  EXPECT_EQ(WqStr_Len("a\x81\x40\xFF"), 4);
  std::string large(5002, '\xA5');
  EXPECT_EQ(WqStr_Format(large.data(), "%5000d", 7), 5000);
  EXPECT_EQ(large, std::string(4999, ' ') + "7\0\xA5"s);
}

// Sources of these two are read no further than their last byte.
TEST(WqStr, NCopyStopsAtItsBoundOrBehindTheNul) {
  const std::vector<std::tuple<std::string, int32_t, std::string, int32_t>> rows = {
      {"abcd", INT32_MIN, "", 0}, {"abcd", 0, "", 0},           {"abcd", 1, "a", 1},
      {"abcd", 4, "abcd", 4},     {"ab\0"s, 2, "ab", 2},        {"ab\0"s, 3, "ab\0"s, 2},
      {"\0"s, 1, "\0"s, 0},       {"\0"s, INT32_MAX, "\0"s, 0}, {"\x83\x5C", 1, "\x83", 1},
  };
  for (const auto &[source, n, written, result] : rows) {
    Destination dst;
    EXPECT_EQ(WqStr_nCopy(dst.at(), exact(source).data(), n), result) << source << n;
    EXPECT_EQ(dst.bytes, guarded(written));
  }
}

TEST(WqStr, ComparesAndFinds) {
  using Rows = std::vector<std::tuple<std::string, std::string, int32_t, int>>;
  const Rows equal = {
      {"abX", "abY", 2, 1},     {"abX", "abY", 3, 0}, {"Xb", "Yb", 2, 0},   {"ab\0"s, "ab\0"s, 2, 1},
      {"ab\0"s, "ab\0"s, 3, 0}, {"\0"s, "\0"s, 1, 0}, {"a\0"s, "ab", 2, 0}, {"ab", "a\0"s, INT32_MAX, 0},
      {"a", "A", 1, 0},         {"a", "a", 0, 0},     {"a", "a", -1, 0},
  };
  for (const auto &[a, b, n, result] : equal)
    EXPECT_EQ(WqStr_nComp(exact(a).data(), exact(b).data(), n), result) << a << b << n;
  const Rows found = {
      {"abcabd\0"s, "abd", 3, 1}, {"abcabd\0"s, "abe", 3, 0},  {"abcabd\0"s, "abe", 2, 1}, {"abcab\0"s, "abd", 3, 0},
      {"aaab\0"s, "aab", 3, 1},   {"ab\0"s, "b\0"s, 1, 1},     {"ab\0"s, "b\0"s, 2, 0},    {"ab\0"s, "B", 1, 0},
      {"ab\0"s, "a", 0, 0},       {"ab\0"s, "\0"s, 1, 0},      {"\0"s, "\0"s, 1, 0},       {"\0"s, "a", 1, 0},
      {"ab\0"s, "ab\0"s, -1, 0},  {"\x95\x5C\0"s, "\\", 1, 1},
  };
  for (const auto &[text, pattern, n, result] : found)
    EXPECT_EQ(WqStr_Find(exact(text).data(), exact(pattern).data(), static_cast<uint32_t>(n)), result)
        << text << pattern;
  for (const char *text : {"", "a\x83\x5C"}) EXPECT_EQ(WqStr_Comp(text, std::string(text).c_str()), 1);
  for (const char *other : {"", "a", "abcd", "abd", "Abc", "abC"}) {
    EXPECT_EQ(WqStr_Comp("abc", other), 0) << other;
    EXPECT_EQ(WqStr_Comp(other, "abc"), 0) << other;
  }
}

TEST(WqStr, RemovesAByteOrHalvesItsPairs) {
  const std::vector<std::tuple<const char *, const char *, const char *>> rows = {
      {"", ",", ""},       {"a,b,,c,", ",", "abc"}, {"abc", "b-", "ac"},  {"\"a\"\"b\"", "\"\"", "a\"b"},
      {"bb", "bb", "b"},   {"bbb", "bb", "b"},      {"bbbb", "bb", "bb"}, {"abc", "bb", "ac"},
      {"abbc", "b", "ac"}, {"a-b-c", "b-", "a--c"}, {"abc", "", "abc"},   {"\x83\x5C.", "\\", "\x83."},
  };
  for (const auto &[source, chars, text] : rows) {
    Destination dst;
    const int32_t length = WqStr_Remove(exact(terminated(source)).data(), dst.at(), exact(terminated(chars)).data());
    EXPECT_EQ(length, static_cast<int32_t>(std::strlen(text)));
    EXPECT_EQ(dst.bytes, guarded(terminated(text))) << source << ' ' << chars;
  }
}

TEST(WqStr, WritesQuotedAndSettingsForms) {
  using Rows = std::vector<std::pair<const char *, const char *>>; // of a text and its quoted form
  const auto expectForms = [](const Rows &rows, bool plain) {
    for (const auto &[source, quoted] : rows) {
      const auto length = static_cast<int32_t>(std::strlen(source));
      Destination dst;
      EXPECT_EQ(WqStr_AddEsc(dst.at(), source), length);
      EXPECT_EQ(dst.bytes, guarded(terminated(quoted)));
      for (const uint32_t unused : {0u, UINT32_MAX}) {
        Destination setting;
        EXPECT_EQ(WqStr_CfgStr(setting.at(), source, unused), length);
        EXPECT_EQ(setting.bytes, guarded(terminated(plain ? source : quoted)));
      }
    }
  };
  expectForms({{"", R"("")"}, {"a b", R"("a b")"}, {"C:\\a", R"("C:\a")"}, {"C:\\", R"("C:\\")"}}, true);
  expectForms({{"\\", R"("\\")"}, {"\\\\", R"("\\\")"}, {"\x83\x5C", "\"\x83\x5C\\\""}}, true);
  expectForms({{"a,b", R"("a,b")"}, {"a\"b", R"("a""b")"}, {"\"", R"("""")"}, {"\",\\", R"(""",\\")"}}, false);
}

TEST(WqStr, DelEscReadsAQuotedForm) {
  const auto expectRead = [](const std::vector<std::pair<const char *, std::string>> &rows) {
    for (const auto &[quoted, written] : rows) {
      Destination dst;
      WqStr_DelEsc(dst.at(), exact(terminated(quoted)).data());
      EXPECT_EQ(dst.bytes, guarded(written)) << quoted;
    }
  };
  expectRead({{R"("")", "\0"s}, {"\t\r\n \x81\x40\"a,b\"c", "a,b\0"s}, {R"("a""b"""x)", "a\"b\"\0"s}});
  expectRead({{"\"open", "open\0"s}, {"\"", "\0"s}, {R"("a\n\\")", "a\\n\\\\\0"s}});
  // a lead byte without a trail byte is a character of its own
  expectRead({{"\"\x83\x5C\"\"x\"", "\x83\x5C\"x\0"s}, {"\"\x81\"\"\xE0", "\x81\"\xE0\0"s}});
  expectRead({{" ", ""}, {"'a\"b\"", ""}}); // nothing is written where no quote opens
}

TEST(WqStr, WritesNumbers) {
  constexpr auto bits = static_cast<int32_t>(0x8A0B0C0D);
  // clang-format off
  const struct { int32_t (*write)(char *dst, int32_t value); int32_t value; std::string text; } rows[] = {
      {WqStr_Int, 0, "0"}, {WqStr_Int, -10, "-10"}, {WqStr_Int, INT32_MAX, "2147483647"},
      {WqStr_Int, INT32_MIN, "-2147483648"}, {WqStr_Hex02, bits, "0D"}, {WqStr_Hex04, bits, "0C0D"},
      {WqStr_Hex08, bits, "8A0B0C0D"}, {WqStr_Hex08, 0x1F, "0000001F"}, {WqStr_Hex0x02, bits, "0x0D"},
      {WqStr_Hex02A, bits, "0x0D"}, {WqStr_Hex04A, bits, "0x0C0D"}, {WqStr_Hex08A, bits, "0x8A0B0C0D"}};
  // clang-format on
  for (const auto &[write, value, text] : rows) {
    Destination dst;
    EXPECT_EQ(write(dst.at(), value), static_cast<int32_t>(text.size())) << text;
    EXPECT_EQ(dst.bytes, guarded(text + '\0'));
  }
  static const RECT rects[] = {{10, -20, 300, 400}, {INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN}};
  static const SIZE size = {0, -1};
  static const POINT point = {INT32_MIN, INT32_MAX};
  expectWrites({{[](char *d) { return WqStr_Rect(d, &rects[0]); }, "10,-20,300,400"},
                {[](char *d) { return WqStr_Rect(d, &rects[1]); }, "-2147483648,-2147483648,-2147483648,-2147483648"},
                {[](char *d) { return WqStr_Size(d, &size); }, "0,-1"},
                {[](char *d) { return WqStr_Point(d, &point); }, "-2147483648,2147483647"}});
}
