// The scanner. Its functions take a cursor into a text, read a value, and return the cursor behind the value.

#include "text/text.h"

#include "audio/audio.h"
#include "text/double_byte.h"

#include <initializer_list>
#include <type_traits>

namespace {

constexpr int kExponentDepth = 64; // exponents within exponents; limits the recursion for hostile text

// Whether c is a decimal digit. digit: gets its value.
inline bool isDecimal(char c, uint32_t &digit) {
  digit = static_cast<uint32_t>(static_cast<unsigned char>(c)) - '0';
  return digit < 10;
}

inline bool isHex(char c, uint32_t &digit) {
  if (isDecimal(c, digit)) return true;
  digit = (static_cast<uint32_t>(static_cast<unsigned char>(c)) | 0x20) - 'a' + 10;
  return digit >= 10 && digit < 16;
}

inline bool isHexPrefix(const char *text) { return text[0] == '0' && text[1] == 'x'; }

// WqScan_Int for all integer types.
template <typename Number> const char *scanSigned(const char *cursor, Number *value) {
  cursor = WqScan_Space(cursor);
  const bool negative = *cursor == '-';
  if (negative || *cursor == '+') ++cursor;
  uint32_t sum = 0;
  uint32_t digit;
  if (isHexPrefix(cursor)) {
    for (cursor += 2; isHex(*cursor, digit); ++cursor) sum = sum * 16 + digit;
  } else {
    for (; isDecimal(*cursor, digit); ++cursor) sum = sum * 10 + digit;
  }
  *value = static_cast<Number>(negative ? 0 - sum : sum);
  return cursor;
}

// Reads as many hexadecimal digits as there are, up to a limit.
template <typename Number> const char *scanHexDigits(const char *cursor, Number *value, int limit) {
  uint32_t sum = 0;
  uint32_t digit;
  for (; limit > 0 && isHex(*cursor, digit); --limit, ++cursor) sum = sum * 16 + digit;
  *value = static_cast<Number>(sum);
  return cursor;
}

template <typename Real> const char *scanReal(const char *cursor, Real *value, int depth) {
  const bool minus = *WqScan_Space(cursor) == '-';
  int32_t whole;
  cursor = scanSigned(cursor, &whole);
  *value = static_cast<Real>(whole);
  if (*cursor != '.') return cursor;
  ++cursor;
  uint32_t digit;
  if (*cursor == '0' && !isDecimal(cursor[1], digit)) return cursor + 1;

  double fraction = 0;
  Real divisor = 10; // in the precision of the result
  for (; isDecimal(*cursor, digit); ++cursor) {
    fraction += digit / static_cast<double>(divisor);
    divisor *= 10;
  }
  double sum = whole < 0 ? whole - fraction : whole + fraction;
  if (minus && whole == 0 && sum > 0) sum = -sum; // the integer part of -0.5 is a 0 without sign
  *value = static_cast<Real>(sum);
  if ((*cursor != 'e' && *cursor != 'E') || depth == 0) return cursor;

  const char sign = *++cursor;
  if (sign == '\0') return cursor;
  Real exponent;
  cursor = scanReal(cursor + 1, &exponent, depth - 1);
  const bool negative = std::is_same_v<Real, float> ? sign != '+' : sign == '-';
  *value = static_cast<Real>(WqMath_Pow(10.0, negative ? -exponent : exponent) * *value);
  return cursor;
}

// Reads two numbers with a comma between them, in parentheses or without.
const char *scanPair(const char *cursor, LONG *first, LONG *second) {
  const char *at = WqScan_Space(cursor);
  const bool open = *at == '(';
  if (open) ++at;
  at = scanSigned(at, first);
  if (*at != ',') at = WqScan_Space(at);
  if (*at != ',') return cursor;
  at = WqScan_Space(scanSigned(at + 1, second));
  if (!open) return at;
  return *at == ')' ? at + 1 : cursor;
}

bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

const char *skipBlockComment(const char *cursor) {
  for (++cursor; *cursor; ++cursor)
    if (cursor[0] == '*' && cursor[1] == '/') return cursor + 2;
  return cursor;
}

} // namespace

const char *WqScan_Int(const char *cursor, int32_t *value) { return scanSigned(cursor, value); }
const char *WqScan_Short(const char *cursor, int16_t *value) { return scanSigned(cursor, value); }
const char *WqScan_UShort(const char *cursor, uint16_t *value) { return scanSigned(cursor, value); }
const char *WqScan_Byte(const char *cursor, uint8_t *value) { return scanSigned(cursor, value); }

const char *WqScan_Dec1(const char *cursor, int32_t *value) { return WqScan_DecN(cursor, value, 1); }
const char *WqScan_Dec2(const char *cursor, int32_t *value) { return WqScan_DecN(cursor, value, 2); }

const char *WqScan_DecN(const char *cursor, int32_t *value, int32_t n) {
  const char *at = WqScan_Space(cursor);
  uint32_t sum = 0;
  uint32_t digit;
  for (; n > 0; --n, ++at) {
    if (!isDecimal(*at, digit)) return cursor;
    sum = sum * 10 + digit;
  }
  *value = static_cast<int32_t>(sum);
  return at;
}

const char *WqScan_HexByte(const char *cursor, uint8_t *value) {
  *value = 0;
  cursor = WqScan_Space(cursor);
  uint32_t high;
  uint32_t low;
  if (!isHex(*cursor, high)) return cursor;
  ++cursor;
  if (!isHex(*cursor, low)) return cursor;
  *value = static_cast<uint8_t>(high << 4 | low);
  return cursor + 1;
}

const char *WqScan_HexWord(const char *cursor, uint16_t *value) {
  return scanHexDigits(WqScan_Space(cursor), value, 4);
}

const char *WqScan_HexDword(const char *cursor, uint32_t *value) {
  return scanHexDigits(WqScan_Space(cursor), value, 8);
}

const char *WqScan_HexLong(const char *cursor, uint32_t *value) {
  cursor = WqScan_Space(cursor);
  return scanHexDigits(isHexPrefix(cursor) ? cursor + 2 : cursor, value, 16);
}

const char *WqScan_Float(const char *cursor, float *value) { return scanReal(cursor, value, kExponentDepth); }
const char *WqScan_Double(const char *cursor, double *value) { return scanReal(cursor, value, kExponentDepth); }

const char *WqScan_String(const char *cursor, char *dst) {
  cursor = WqScan_Space(cursor);
  const bool quoted = *cursor == '"';
  if (quoted) ++cursor;
  for (; *cursor; ++cursor) {
    char c = *cursor;
    if (wqIsDoubleByte(cursor)) {
      *dst++ = *cursor++;
      c = *cursor;
    } else if (c == '\\') {
      const char next = cursor[1];
      if (next == '"' || next == '\\' || next == 'n' || next == 'r') {
        c = next == 'n' ? '\n' : next == 'r' ? '\r' : next;
        ++cursor;
      }
    } else if (c == '"') {
      ++cursor;
      if (*cursor != '"') break;
    } else if (c == ',' && !quoted) {
      break;
    }
    *dst++ = c;
  }
  *dst = '\0';
  return cursor;
}

const char *WqScan_Rect(const char *cursor, RECT *rect) {
  const char *at = cursor;
  for (LONG *edge : {&rect->left, &rect->top, &rect->right}) {
    at = WqScan_Space(scanSigned(at, edge));
    if (*at != ',') return cursor;
    ++at;
  }
  const char *end = scanSigned(at, &rect->bottom);
  return end == at ? cursor : end;
}

const char *WqScan_Size(const char *cursor, SIZE *size) { return scanPair(cursor, &size->cx, &size->cy); }
const char *WqScan_Point(const char *cursor, POINT *point) { return scanPair(cursor, &point->x, &point->y); }

const char *WqScan_Space(const char *cursor) {
  for (;;) {
    if (*cursor == ' ' || (*cursor >= '\t' && *cursor <= '\r'))
      ++cursor;
    else if (cursor[0] == '\x81' && cursor[1] == '\x40')
      cursor += 2;
    else
      return cursor;
  }
}

const char *WqScan_Conma(const char *cursor) {
  if (*cursor != ',') cursor = WqScan_Space(cursor);
  return *cursor == ',' ? cursor + 1 : cursor;
}

const char *WqScan_SkipLine(const char *cursor) {
  while (*cursor && *cursor != '\n') ++cursor;
  return *cursor ? cursor + 1 : cursor;
}

const char *WqScan_Comment(const char *cursor) {
  cursor = WqScan_Space(cursor);
  for (;;) {
    if (isLineEnd(*cursor))
      ++cursor;
    else if (cursor[0] == '/' && cursor[1] == '/')
      cursor = WqScan_SkipLine(cursor);
    else if (cursor[0] == '/' && cursor[1] == '*')
      cursor = skipBlockComment(cursor);
    else
      return cursor;
  }
}

const char *WqScan_Comment2(const char *cursor) {
  cursor = WqScan_Space(cursor);
  for (;;) {
    if (isLineEnd(*cursor))
      ++cursor;
    else if (*cursor == ';')
      cursor = WqScan_SkipLine(cursor);
    else
      return cursor;
  }
}
