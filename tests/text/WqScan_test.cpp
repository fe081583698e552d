#include "wq.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <source_location>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

// A block that ends with the text's NUL, so that the sanitizer sees a read behind it.
std::vector<char> exact(const std::string &text) { return {text.c_str(), text.c_str() + text.size() + 1}; }

// What a value holds that nothing was stored to.
template <typename Value> Value untouched() {
  Value value;
  std::memset(&value, 0x5A, sizeof value);
  return value;
}

// What a text reads as, and the offset of the cursor behind it.
template <typename Value> struct Row {
  std::string text;
  Value value;
  ptrdiff_t stop;
};

template <typename Value>
void reads(const char *(*scan)(const char *, Value *), const std::vector<Row<Value>> &rows,
           std::source_location from = std::source_location::current()) {
  for (const Row<Value> &row : rows) {
    const testing::ScopedTrace trace(from.file_name(), static_cast<int>(from.line()), row.text.substr(0, 80));
    const std::vector<char> text = exact(row.text);
    const Value guard = untouched<Value>();
    Value cells[] = {guard, guard, guard};
    EXPECT_EQ(scan(text.data(), &cells[1]) - text.data(), row.stop);
    if constexpr (std::is_floating_point_v<Value>) {
      EXPECT_EQ(std::signbit(cells[1]), std::signbit(row.value));
    }
    if constexpr (std::is_same_v<Value, double>)
      EXPECT_DOUBLE_EQ(cells[1], row.value); // the sum of the digits may differ in its last place
    else
      EXPECT_EQ(cells[1], row.value);
    EXPECT_EQ(cells[0], guard);
    EXPECT_EQ(cells[2], guard);
  }
}

// The same for functions that only move the cursor.
void stops(const char *(*scan)(const char *), const std::vector<std::pair<std::string, ptrdiff_t>> &rows) {
  for (const auto &[text, stop] : rows) {
    const std::vector<char> copy = exact(text);
    EXPECT_EQ(scan(copy.data()) - copy.data(), stop) << testing::PrintToString(text);
  }
}

using Pair = std::array<int32_t, 2>;
using Quad = std::array<int32_t, 4>;

// A scanner of records as one of plain numbers.
template <typename Numbers, typename Record, const char *(*scan)(const char *, Record *)>
const char *asNumbers(const char *cursor, Numbers *numbers) {
  Record record = std::bit_cast<Record>(*numbers);
  cursor = scan(cursor, &record);
  *numbers = std::bit_cast<Numbers>(record);
  return cursor;
}

template <int32_t n> const char *scanDec(const char *cursor, int32_t *value) { return WqScan_DecN(cursor, value, n); }

constexpr int32_t kNone = 0x5A5A5A5A; // nothing was stored

} // namespace

TEST(WqScan, IntReadsSignPrefixAndDigits) {
  reads<int32_t>(WqScan_Int, {{"", 0, 0}, {"-", 0, 1}, {"- 5", 0, 1}, {"+-5", 0, 1}, {"--5", 0, 1}, {",", 0, 0}});
  reads<int32_t>(WqScan_Int, {{"  -0x1F,", -31, 7}, {"+12abc", 12, 3}, {" \t\n\v\f\r\x81\x40", 0, 8}, {"12:", 12, 2}});
  reads<int32_t>(WqScan_Int, {{"0X1F", 0, 1}, {"0x", 0, 2}, {"0xaBcDeF9", 0xABCDEF9, 9}, {"0x1/", 1, 3}});
  reads<int32_t>(WqScan_Int, {{"0x1@", 1, 3}, {"0x1`", 1, 3}, {"0x1G", 1, 3}, {"0x1g", 1, 3}, {"0x1\xC1", 1, 3}});
  reads<int32_t>(WqScan_Int, {{"2147483648", INT32_MIN, 10}, {"-2147483648", INT32_MIN, 11}, {"4294967297", 1, 10}});
  reads<int32_t>(
      WqScan_Int,
      {{"-4294967297", -1, 11}, {"0x123456789", 0x23456789, 11}, {"007\xB2", 7, 3}, {"12/", 12, 2}, {"0x1:", 1, 3}});
  reads<int32_t>(WqScan_Int, {{std::string(300, '0') + "9", 9, 301}, {"0x" + std::string(300, 'f'), -1, 302}});
  reads<int16_t>(WqScan_Short, {{"-1", -1, 2}, {"32768", -32768, 5}, {" 0x12345,", 0x2345, 8}, {"x", 0, 0}});
  reads<uint16_t>(WqScan_UShort, {{"-1", 0xFFFF, 2}, {"65537", 1, 5}, {"", 0, 0}});
  reads<uint8_t>(WqScan_Byte, {{"300", 44, 3}, {"-1", 255, 2}, {" 0xABC", 0xBC, 6}, {"x", 0, 0}});
}

TEST(WqScan, CountedDecimalsStoreAllDigitsOrNothing) {
  reads<int32_t>(WqScan_Dec1, {{" 12", 1, 2}, {"x", kNone, 0}, {" ", kNone, 0}, {"-1", kNone, 0}, {"\xB2", kNone, 0}});
  reads<int32_t>(WqScan_Dec2, {{"\x81\x40\t123", 12, 5}, {" 1x", kNone, 0}, {"1", kNone, 0}, {"", kNone, 0}});
  reads<int32_t>(scanDec<4>, {{"20061", 2006, 4}, {"200", kNone, 0}, {" 200:", kNone, 0}, {"0x20", kNone, 0}});
  reads<int32_t>(scanDec<0>, {{" 12", 0, 1}, {"", 0, 0}});
  reads<int32_t>(scanDec<INT32_MIN>, {{" \x81\x40-", 0, 3}});
  reads<int32_t>(scanDec<11>, {{"429496729712", 11, 11}, {"00000000042", 42, 11}}); // wraps at 32 bits
  reads<int32_t>(scanDec<INT32_MAX>, {{"1234567890123", kNone, 0}});
}

TEST(WqScan, HexReadsDigitsUpToALimit) {
  reads<uint8_t>(WqScan_HexByte, {{" A5F", 0xA5, 3}, {"fe", 0xFE, 2}, {"Az", 0, 1}, {" \tz", 0, 2}, {"A", 0, 1}});
  reads<uint8_t>(WqScan_HexByte, {{"", 0, 0}, {"0x12", 0, 1}, {"+1", 0, 0}, {"\x81\x40\x30g", 0, 3}});
  reads<uint16_t>(WqScan_HexWord, {{" 12aBc", 0x12AB, 5}, {"0x12", 0, 1}, {"", 0, 0}, {"  g", 0, 2}, {"F,", 15, 1}});
  reads<uint32_t>(WqScan_HexDword, {{"89ABCDEF0", 0x89ABCDEF, 8}, {" 0x1", 0, 2}, {"7", 7, 1}, {"-1", 0, 0}});
  reads<uint32_t>(WqScan_HexLong, {{"0x123456789", 0x23456789, 11}, {"0123456789abcdefA", 0x89ABCDEF, 16}});
  reads<uint32_t>(WqScan_HexLong,
                  {{"", 0, 0}, {" 0x", 0, 3}, {"0xg", 0, 2}, {"0X1", 0, 1}, {"0x0000000000000001A", 1, 18}});
}

// What Float and Double have in common.
template <typename Real> void readsReals(const char *(*scan)(const char *, Real *)) {
  const auto real = [](double value) { return static_cast<Real>(value); };
  const Real infinity = std::numeric_limits<Real>::infinity();
  reads<Real>(scan, {{"", 0, 0}, {" -", 0, 2}, {"12,", 12, 2}, {"1e+05", 1, 1}, {".", 0, 1}, {"2.", 2, 2}});
  reads<Real>(scan, {{"-0.5", real(-.5), 4}, {" -.5", real(-.5), 4}, {"-1.5", real(-1.5), 4}, {"+.25", real(.25), 4}});
  reads<Real>(scan, {{"-0.0", 0, 4}, {"-0.00", 0, 5}, {"1.0e+03", 1, 3}, {"1.00e+03", 1000, 8}, {"2.e+02", 200, 6}});
  reads<Real>(scan, {{"0x10.8", real(16.8), 6}, {"-0x10.8x", real(-16.8), 7}, {"1.2.3", real(1.2), 3}});
  reads<Real>(scan, {{"1.05", real(1.05), 4}, {"4294967297.5", real(1.5), 12}, {"-4294967296.5", real(-.5), 13}});
  reads<Real>(scan, {{"2147483648.5", real(-2147483648.5), 12},
                     {"16777217.5", real(16777217.5), 10},
                     {"3000000000", -1294967296, 10}});
  reads<Real>(scan, {{"1.5e+02", 150, 7}, {"1.5E-02,", real(.015), 7}, {"-0.5e+01", -5, 8}, {"-1.5e+2", -150, 7}});
  reads<Real>(scan, {{"1.5e+ -2", real(.015), 8}, {"1.5e--2", 150, 7}, {"1.5e+0x2", 150, 8}, {"1.5e+", real(1.5), 5}});
  reads<Real>(scan, {{"1.5e+0.5", real(1.5 * std::sqrt(10)), 8}, {"1.5e+1.5e+01", real(1.5e15), 12}});
  reads<Real>(scan, {{"1.5e+02e+01", 150, 7}, {"1.5e+1.0e+01", 15, 8}, {"1.5e", real(1.5), 4}});
  reads<Real>(scan, {{"1.5e+999", infinity, 8}, {"-1.5e+999", -infinity, 9}, {"1.5e-999", 0, 8}});
  reads<Real>(scan, {{"0." + std::string(10000, '9'), 1, 10002}, {"1." + std::string(500, '0') + "1", 1, 503}});

  // 64 exponents within each other are read, the next one is left
  std::string nested = "1.5";
  for (int depth = 0; depth < 64; ++depth) nested.insert(0, "1.5e-");
  Real value;
  EXPECT_EQ(scan(nested.c_str(), &value), nested.c_str() + nested.size());
  const Real deepest = value;
  for (int depth = 64; depth < 10000; ++depth) nested += "e-1.5";
  EXPECT_EQ(scan(nested.c_str(), &value), nested.c_str() + 5 * 64 + 3);
  EXPECT_EQ(value, deepest);
}

TEST(WqScan, FloatAndDoubleReadFractionsAndExponents) {
  readsReals(WqScan_Float);
  readsReals(WqScan_Double);
}

TEST(WqScan, FloatAndDoubleDiffer) {
  // a byte that is no sign behind the e
  reads<float>(WqScan_Float, {{"1.5ex2", .015f, 6}, {"1.5e12", .015f, 6}, {"1.5e,-2", 150, 7}});
  reads<double>(WqScan_Double, {{"1.5ex2", 150, 6}, {"1.5e12", 150, 6}, {"1.5e,-2", .015, 7}});
  // Float rounds each value, also before the exponent, and the divisor of a digit
  const std::string digit25 = "0." + std::string(24, '0') + "1";
  const std::string digit41 = "0." + std::string(40, '0') + "1e+41";
  reads<float>(WqScan_Float, {{"16777217", 16777216, 8}, {"1.18e+02", 117.999992f, 8}, {"1.5e+39", HUGE_VALF, 7}});
  reads<float>(WqScan_Float, {{digit25, static_cast<float>(1 / 1.000000071494503e25), 27}, {digit41, 0, 47}});
  reads<double>(WqScan_Double, {{"16777217", 16777217, 8}, {"1.18e+02", 118, 8}, {"1.5e+39", 1.5e39, 7}});
  reads<double>(WqScan_Double, {{digit25, 1e-25, 27}, {digit41, 1, 47}});
}

TEST(WqScan, StringReadsQuotedAndPlain) {
  const auto strings = [](const std::vector<Row<std::string>> &rows) {
    for (const auto &[text, value, stop] : rows) {
      SCOPED_TRACE(text);
      const std::vector<char> copy = exact(text);
      std::string room(24, '\xA5');
      EXPECT_EQ(WqScan_String(copy.data(), room.data() + 4) - copy.data(), stop);
      EXPECT_EQ(room, "\xA5\xA5\xA5\xA5" + value + '\0' + std::string(19 - value.size(), '\xA5'));
    }
  };
  strings({{"", "", 0}, {" \x81\x40", "", 3}, {",a", "", 0}, {" a b ,c", "a b ", 5}, {"a\r\n\tb", "a\r\n\tb", 5}});
  strings({{R"("a""b",c)", "a\"b", 6}, {R"("a,b" c)", "a,b", 5}, {R"(""x)", "", 2}, {"\"a, ", "a, ", 4}});
  strings({{"a\"b,c", "a", 2}, {"a\"\"b,c", "a\"b", 4}, {"a\"", "a", 2}}); // a quote ends a plain text too
  strings({{R"(a\new\r\\\"b)", "a\new\r\\\"b", 12}, {R"("x\\",)", "x\\", 5}, {R"(a\q\)", "a\\q\\", 4}});
  strings({{R"(\,)", "\\", 1}, {R"("\"")", "\"", 4}, {R"("a\)", "a\\", 3}, {R"(""")", "\"", 3}});
  // the second half of a character is no escape; a lead byte without a trail byte is a character of its own
  strings({{"\x83\x5Cn,", "\x83\x5Cn", 3}, {"\"\x95\x5C\"x", "\x95\x5C", 4}, {"\x83\x5C\\n", "\x83\x5C\n", 4}});
  strings({{"\xB1\\n", "\xB1\n", 3},
           {"\x81,", "\x81", 1},
           {"\"\xE0\"\x81", "\xE0", 3},
           {"\xFC\xFD\x9F", "\xFC\xFD\x9F", 3}});
}

TEST(WqScan, RectAndPairsStoreWhatStandsBeforeAFault) {
  constexpr auto rect = asNumbers<Quad, RECT, WqScan_Rect>;
  reads<Quad>(rect, {{"1, 2 ,3,4", {1, 2, 3, 4}, 9}, {" -1\t,+2,\x81\x40\x30x3,4 ,", {-1, 2, 3, 4}, 15}});
  reads<Quad>(rect, {{"1,2,3, ", {1, 2, 3, 0}, 7}, {"1,2,3,-", {1, 2, 3, 0}, 7}, {",,,0", {0, 0, 0, 0}, 4}});
  reads<Quad>(rect, {{"-2147483648,1,2,2147483648", {INT32_MIN, 1, 2, INT32_MIN}, 26}});
  reads<Quad>(rect, {{"1,2,3", {1, 2, 3, kNone}, 0}, {"1,2,3,", {1, 2, 3, 0}, 0}, {"1,2,3,x", {1, 2, 3, 0}, 0}});
  reads<Quad>(rect, {{" 1;2", {1, kNone, kNone, kNone}, 0}, {"1,2 3,4", {1, 2, kNone, kNone}, 0}});
  reads<Quad>(rect, {{"", {0, kNone, kNone, kNone}, 0}, {"(1,2,3,4)", {0, kNone, kNone, kNone}, 0}});
  for (const auto pair : {asNumbers<Pair, SIZE, WqScan_Size>, asNumbers<Pair, POINT, WqScan_Point>}) {
    reads<Pair>(pair, {{" ( 3 , 4 ) x", {3, 4}, 10}, {"3,4  x", {3, 4}, 5}, {"3,4)", {3, 4}, 3}, {"3,", {3, 0}, 2}});
    reads<Pair>(pair, {{"(-3,0x4)", {-3, 4}, 8}, {"(,)", {0, 0}, 3}, {"\x81\x40\x33\t,\n4\x81\x40", {3, 4}, 9}});
    reads<Pair>(pair, {{"(3,4", {3, 4}, 0}, {" (3,4 ]", {3, 4}, 0}, {"3", {3, kNone}, 0}, {"((3,4))", {0, kNone}, 0}});
    reads<Pair>(pair, {{"", {0, kNone}, 0}, {" 3 4", {3, kNone}, 0}, {"(", {0, kNone}, 0}});
  }
}

TEST(WqScan, SeparatorsAndCommentsMoveTheCursor) {
  stops(WqScan_Space, {{"", 0}, {"\t\n\v\f\r x", 6}, {"\x81\x40\tx", 3}, {"\x81\x41", 0}, {" \x81", 1}, {"\x81 ", 0}});
  stops(WqScan_Space, {{"\x08", 0}, {"\x0E", 0}, {"\xA0", 0}, {"\x85", 0}, {"\x40", 0}, {"\x81\x40\x81\x40", 4}});
  stops(WqScan_Conma, {{"", 0}, {"  ,x", 3}, {"  x", 2}, {",  x", 1}, {",,", 1}, {"\x81\x40\n", 3}, {"x,", 0}});
  stops(WqScan_SkipLine, {{"", 0}, {"a\r\nb", 3}, {"a\rb\nc", 4}, {"abc", 3}, {"\n\n", 1}, {"a\n", 2}, {"a\r", 2}});
  stops(WqScan_Comment, {{"", 0}, {" // a\n/* b */\nx", 14}, {"/*/x", 3}, {"// a\n  x", 5}, {"\r\n\rx", 3}});
  stops(WqScan_Comment, {{"/x", 0}, {"/", 0}, {"/* * / **/x", 10}, {"/**//**/x", 8}, {"/*a\nb*/ //", 7}, {"; a", 0}});
  stops(WqScan_Comment, {{" // a", 5}, {"/* open", 7}, {"/*", 2}, {"/* *", 4}, {"//\\\n//\n\n", 8}});
  stops(WqScan_Comment2, {{"", 0}, {" ; a\r\n;b\n\nx", 10}, {";a\n ;b", 3}, {"; open", 6}, {"// a", 0}});
}
