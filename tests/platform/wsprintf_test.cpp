#include "platform/platform.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <utility>
#include <vector>

namespace {

// A destination of the 1024 bytes that a print may fill, between guard bytes.
class Room {
 public:
  char *at() { return bytes_.data() + 8; }
  std::string text() const {
    const std::string text = bytes_.c_str() + 8;
    EXPECT_EQ(bytes_, std::string(8, '\xA5') + text + '\0' + std::string(1024 + 7 - text.size(), '\xA5'));
    return text;
  }

 private:
  std::string bytes_ = std::string(8 + 1024 + 8, '\xA5');
};

// Prints one value. The result is the text's length.
template <typename Value> std::string print(const std::string &format, Value value) {
  Room room;
  const int length = wsprintfA(room.at(), format.c_str(), value);
  EXPECT_EQ(static_cast<size_t>(length), room.text().size()) << format;
  return room.text();
}

} // namespace

TEST(Wsprintf, PrintsNumbers) {
  const auto expect = [](int value, const std::vector<std::pair<const char *, const char *>> &rows) {
    for (const auto &[format, text] : rows) EXPECT_EQ(print(format, value), text) << format << ' ' << value;
  };
  expect(-7, {{"%i", "-7"}, {"%ld", "-7"}, {"%u", "4294967289"}, {"%lu", "4294967289"}, {"%x", "fffffff9"}});
  expect(-7, {{"%5d|", "   -7|"}, {"%-5d|", "-7   |"}, {"%05d", "-0007"}, {"%12X|", "    FFFFFFF9|"}});
  expect(7, {{"%.3d", "007"}, {"%6.3u", "   007"}, {"%-6.3i|", "007   |"}, {"%3.5x", "00007"}, {"%-05d|", "7    |"}});
  expect(0xABC, {{"%X", "ABC"}, {"%08x", "00000abc"}, {"%08lX", "00000ABC"}, {"%2d", "2748"}, {"%1.2d", "2748"}});
  expect(INT_MIN, {{"%d", "-2147483648"}, {"%012d", "-02147483648"}, {"%x", "80000000"}});
  expect(0, {{"%d", "0"}, {"%x", "0"}, {"%3u", "  0"}, {"100%% %d%%", "100% 0%"}, {"\x83\x5C%d", "\x83\x5C\x30"}});
}

TEST(Wsprintf, PrintsText) {
  const std::pair<const char *, const char *> rows[] = {
      {"[%s]", "[abc]"}, {"%5s", "  abc"}, {"%-5s|", "abc  |"}, {"%5.2s", "   ab"}, {"%.9s", "abc"}};
  for (const auto &[format, text] : rows) EXPECT_EQ(print(format, "abc"), text) << format;
  EXPECT_EQ(print("%s", "") + print("%3s|", "") + print("%s", "%d\x83\x5C"), "   |%d\x83\x5C");
  const std::vector<char> open = {'a', 'b', 'c'}; // without a NUL it is read as far as the precision goes
  EXPECT_EQ(print("%.3s", open.data()), "abc");
  EXPECT_EQ(print("%c", 'A') + print("%3c", 'b') + print("%-3c|", '\xFF'), "A  b\xFF  |");
  Room room;
  EXPECT_EQ(wsprintfA(room.at(), "%s=%d,%c,%08X", "a", -1, 'z', 0x89ABCDEFu), 15);
  EXPECT_EQ(room.text(), "a=-1,z,89ABCDEF");
}

// No width pushes a value out of the room that is left.
TEST(Wsprintf, CutsAt1023Bytes) {
  const auto a = [](size_t count) { return std::string(count, 'a'); };
  const std::pair<std::string, std::string> rows[] = {{a(1023), a(1023)},
                                                      {a(2000), a(1023)},
                                                      {a(1022) + "%d", a(1022) + "1"},
                                                      {a(1022) + "\x83\x5C", a(1022) + "\x83"},
                                                      {a(1017) + "%5d%%%%", a(1017) + "12345%"},
                                                      {a(1017) + "%7d", a(1017) + " 12345"},
                                                      {"%02000d", std::string(1018, '0') + "12345"},
                                                      {"%.2000d", std::string(1018, '0') + "12345"},
                                                      {"%-2000dx", "12345" + std::string(1018, ' ')},
                                                      {a(1010) + "%2000d", a(1010) + std::string(8, ' ') + "12345"}};
  // the result of a cut print is no length
  for (const auto &[format, text] : rows) {
    Room room;
    wsprintfA(room.at(), format.c_str(), 12345);
    EXPECT_EQ(room.text(), text);
  }
}
