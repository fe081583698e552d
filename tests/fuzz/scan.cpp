// Every scanner function on every cursor position of a text: none moves back or passes the NUL, what is promised to be
// stored is stored, and values agree with the standard library and with the texts that WqStr makes of them.

#include "fuzz.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

namespace {

constexpr size_t kLongest = 1024;     // enough for exponents within exponents, to their limit
constexpr size_t kMostPositions = 40; // evenly spread over a longer text

struct Position {
  const char *at;
  const char *start; // behind the white space
  const char *end;   // the NUL
};

template <typename Value> struct Result {
  const char *next;
  Value value;
  bool stored;
};

// Reads twice, into areas with different bytes: where they still differ, nothing was stored.
template <typename Value, typename Reader> Result<Value> read(Reader reader, const Position &p) {
  Value value;
  Value other;
  std::memset(&value, 0x55, sizeof value);
  std::memset(&other, 0xAA, sizeof other);
  const char *next = reader(p.at, &value);
  REQUIRE(next >= p.at && next <= p.end);
  REQUIRE(next == reader(p.at, &other));
  return {next, value, std::memcmp(&value, &other, sizeof value) == 0};
}

bool isWhite(const char *at) {
  return (*at != '\0' && std::strchr(" \t\n\v\f\r", *at)) || (at[0] == '\x81' && at[1] == '\x40');
}

bool isHexPrefix(const char *at) { return at[0] == '0' && at[1] == 'x'; }

template <typename Class> ptrdiff_t countOf(const char *at, Class isMember) {
  ptrdiff_t count = 0;
  while (isMember(static_cast<unsigned char>(at[count]))) ++count;
  return count;
}

void wholeNumbers(const Position &p) {
  const auto number = read<int32_t>(WqScan_Int, p);
  REQUIRE(number.stored);
  const auto sameAs = [&](const auto &other) {
    using Number = decltype(other.value);
    REQUIRE(other.stored && other.next == number.next && other.value == static_cast<Number>(number.value));
  };
  sameAs(read<int16_t>(WqScan_Short, p)), sameAs(read<uint16_t>(WqScan_UShort, p)),
      sameAs(read<uint8_t>(WqScan_Byte, p));

  const char *sign = p.start;
  const char *digits = sign + (*sign == '-' || *sign == '+');
  int32_t expected = 0;
  if (isHexPrefix(digits)) {
    REQUIRE(number.next == digits + 2 + countOf(digits + 2, isxdigit));
  } else if (std::isdigit(static_cast<unsigned char>(*digits))) {
    const auto [next, error] = std::from_chars(*sign == '+' ? digits : sign, p.end, expected);
    REQUIRE(number.next == next);
    if (error == std::errc()) REQUIRE(number.value == expected);
  } else {
    REQUIRE(number.next == digits && number.value == 0);
  }

  const Text text(written(12, [&](char *dst) { WqStr_Int(dst, number.value); }));
  REQUIRE(WqScan_Int(text.begin(), &expected) == text.end() && expected == number.value);
}

void countedDecimals(const Position &p) {
  const ptrdiff_t present = countOf(p.start, isdigit);
  for (const int32_t n : {-1, 0, 1, 2, 3, 9, 40}) {
    const auto number = read<int32_t>([n](const char *at, int32_t *value) { return WqScan_DecN(at, value, n); }, p);
    const ptrdiff_t wanted = std::max(n, 0);
    REQUIRE(number.stored == (wanted <= present));
    REQUIRE(number.next == (number.stored ? p.start + wanted : p.at));
    int32_t expected = 0;
    std::from_chars(p.start, p.start + std::min(wanted, present), expected);
    REQUIRE(!number.stored || n > 9 || number.value == expected);
  }
  read<int32_t>(WqScan_Dec1, p), read<int32_t>(WqScan_Dec2, p);
}

// digits: where the digits begin.
template <typename Number>
void countedHex(const char *(*reader)(const char *, Number *), const Position &p, const char *digits, ptrdiff_t limit) {
  const auto number = read<Number>(reader, p);
  const ptrdiff_t count = std::min(countOf(digits, isxdigit), limit);
  uint64_t expected = 0;
  std::from_chars(digits, digits + count, expected, 16);
  if (limit == 2 && count < 2) expected = 0; // a byte has both digits
  REQUIRE(number.stored && number.next == digits + count && number.value == static_cast<Number>(expected));
}

void hexNumbers(const Position &p) {
  countedHex(WqScan_HexByte, p, p.start, 2);
  countedHex(WqScan_HexWord, p, p.start, 4);
  countedHex(WqScan_HexDword, p, p.start, 8);
  countedHex(WqScan_HexLong, p, isHexPrefix(p.start) ? p.start + 2 : p.start, 16);
}

void reals(const Position &p) {
  const auto number = read<double>(WqScan_Double, p);
  const auto single = read<float>(WqScan_Float, p);
  REQUIRE(number.stored && single.stored && number.next == single.next);
  const std::string_view taken(p.start, static_cast<size_t>(number.next - p.start));
  if (taken.find('x') != std::string_view::npos) return;
  // at most 64 exponents, each with an e and perhaps another one in the place of its sign
  REQUIRE(std::count_if(taken.begin(), taken.end(), [](char c) { return c == 'e' || c == 'E'; }) <= 2 * 64);
  // a plain decimal fraction has the standard library's value, within what summing digits costs
  double expected;
  const auto [next, error] = std::from_chars(p.start, p.end, expected, std::chars_format::fixed);
  if (error != std::errc() || countOf(p.start + (*p.start == '-'), isdigit) - 1 > 8u || number.next != next) return;
  const double slack = std::max(1.0, std::abs(expected));
  REQUIRE(std::abs(number.value - expected) <= 1e-13 * slack && std::abs(single.value - expected) <= 1e-6 * slack);
}

void strings(const Position &p) {
  const Room room(static_cast<size_t>(p.end - p.at) + 1);
  const char *next = WqScan_String(p.at, room.get());
  REQUIRE(next >= p.start && next <= p.end);
  REQUIRE(std::strlen(room.get()) <= static_cast<size_t>(next - p.start));
}

// What is read as a whole is written and read again; sizes and points are the same two numbers.
void compounds(const Position &p) {
  const auto rect = read<RECT>(WqScan_Rect, p);
  const auto size = read<SIZE>(WqScan_Size, p);
  const auto point = read<POINT>(WqScan_Point, p);
  REQUIRE(size.next == point.next && (rect.stored || rect.next == p.at));
  REQUIRE(size.next == p.at || (size.stored && std::memcmp(&size.value, &point.value, sizeof size.value) == 0));
  if (rect.next == p.at) return;
  const Text text(written(48, [&](char *dst) { WqStr_Rect(dst, &rect.value); }));
  RECT again;
  REQUIRE(WqScan_Rect(text.begin(), &again) == text.end() && std::memcmp(&again, &rect.value, sizeof again) == 0);
}

void separators(const Position &p) {
  REQUIRE(p.start >= p.at && p.start <= p.end && !isWhite(p.start));
  REQUIRE(WqScan_Conma(p.at) == p.start + (*p.start == ','));
  const char *line = std::find(p.at, p.end, '\n');
  REQUIRE(WqScan_SkipLine(p.at) == line + (line != p.end));

  const char *next = WqScan_Comment(p.at);
  REQUIRE(next >= p.start && next <= p.end && *next != '\r' && *next != '\n');
  REQUIRE(next[0] != '/' || (next[1] != '/' && next[1] != '*'));
  next = WqScan_Comment2(p.at);
  REQUIRE(next >= p.start && next <= p.end && *next != '\r' && *next != '\n' && *next != ';');
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const Text text(textOf(data, size, kLongest));
  const ptrdiff_t step = (text.end() - text.begin()) / static_cast<ptrdiff_t>(kMostPositions) + 1;
  // the last position is always the NUL
  for (const char *at = text.begin() + (text.end() - text.begin()) % step; at <= text.end(); at += step) {
    const Position p{at, WqScan_Space(at), text.end()};
    for (const auto check : {separators, wholeNumbers, countedDecimals, hexNumbers, reals, strings, compounds})
      check(p);
  }
  return 0;
}
