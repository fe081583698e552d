// Strings: copies that return the length written, and the text forms of settings values. WqScan_String can read the
// quoted form.

#include "text/text.h"

#include "text/double_byte.h"

#include <array>
#include <bit>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

int32_t lengthOf(const char *text) { return static_cast<int32_t>(std::strlen(text)); }

// Writes the low digits of a value in hexadecimal, behind a prefix.
int32_t writeHex(char *dst, const char *prefix, int32_t value, int count) {
  char *out = dst + WqStr_Copy(dst, prefix);
  for (int shift = 4 * (count - 1); shift >= 0; shift -= 4)
    *out++ = "0123456789ABCDEF"[static_cast<uint32_t>(value) >> shift & 0xF];
  *out = '\0';
  return static_cast<int32_t>(out - dst);
}

// The digits of the numbers 00 to 99, one pair after the other.
constexpr auto kPairs = [] {
  std::array<char, 200> digits{};
  for (size_t i = 0; i < 100; ++i) {
    digits[2 * i] = static_cast<char>('0' + i / 10);
    digits[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return digits;
}();

const char *pair(size_t value) { return &kPairs[value * 2]; }

// The number of decimal digits. 1233 / 4096 is nearly the decimal logarithm of 2: the estimate is right or one too low.
uint32_t digitCount(uint32_t value) {
  constexpr uint32_t powers[] = {0, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};
  const uint32_t count = static_cast<uint32_t>(std::bit_width(value | 1)) * 1233 >> 12;
  return count + (value >= powers[count]);
}

// Writes values in decimal with commas between them.
template <typename... Values> int32_t writeList(char *dst, int32_t first, Values... others) {
  char *out = dst + WqStr_Int(dst, first);
  ((*out++ = ',', out += WqStr_Int(out, others)), ...);
  return static_cast<int32_t>(out - dst);
}

} // namespace

int32_t WqStr_Len(const char *src) { return lengthOf(src); }

int32_t WqStr_Copy(char *dst, const char *src) {
  const size_t length = std::strlen(src);
  std::memcpy(dst, src, length + 1);
  return static_cast<int32_t>(length);
}

int32_t WqStr_nCopy(char *dst, const char *src, int32_t n) {
  int32_t copied = 0;
  while (copied < n && (dst[copied] = src[copied]) != '\0') ++copied;
  return copied;
}

int32_t WqStr_CopyD(char *dst, const char *src) {
  dst[0] = '"';
  const int32_t length = WqStr_Copy(dst + 1, src);
  dst[length + 1] = '"';
  dst[length + 2] = '\0';
  return length + 2;
}

int32_t WqStr_Cat(char *dst, const char *src) {
  const int32_t length = lengthOf(dst);
  return length + WqStr_Copy(dst + length, src);
}

int32_t WqStr_CopyCat(char *dst, const char *a, const char *b) {
  const int32_t length = WqStr_Copy(dst, a);
  return length + WqStr_Copy(dst + length, b);
}

int32_t WqStr_Remove(const char *src, char *dst, const char *chars) {
  const char removed = chars[0];
  const bool doubledStays = removed != '\0' && chars[1] == removed;
  char *out = dst;
  for (; *src; ++src) {
    if (*src == removed) {
      if (!doubledStays || src[1] != removed) continue;
      ++src;
    }
    *out++ = *src;
  }
  *out = '\0';
  return static_cast<int32_t>(out - dst);
}

int WqStr_Comp(const char *a, const char *b) { return std::strcmp(a, b) == 0; }

int WqStr_nComp(const char *a, const char *b, int32_t n) {
  if (n < 1) return 0;
  for (int32_t i = 0; i < n; ++i)
    if (a[i] != b[i] || a[i] == '\0') return 0;
  return 1;
}

int WqStr_Find(const char *text, const char *pattern, uint32_t n) {
  if (n == 0 || pattern[0] == '\0') return 0;
  while ((text = std::strchr(text, pattern[0])) != nullptr) {
    uint32_t matched = 1;
    while (matched < n && text[matched] != '\0' && text[matched] == pattern[matched]) ++matched;
    if (matched == n) return 1;
    ++text;
  }
  return 0;
}

int32_t WqStr_AddEsc(char *dst, const char *src) {
  const char *at = src;
  *dst++ = '"';
  for (; *at; ++at) {
    if (*at == '"') *dst++ = '"';
    *dst++ = *at;
  }
  if (at > src && at[-1] == '\\') *dst++ = '\\'; // otherwise the closing quote reads as escaped
  *dst++ = '"';
  *dst = '\0';
  return static_cast<int32_t>(at - src);
}

void WqStr_DelEsc(char *dst, const char *src) {
  src = WqScan_Space(src);
  if (*src != '"') return;
  for (++src; *src; ++src) {
    if (wqIsDoubleByte(src)) {
      *dst++ = *src++;
    } else if (*src == '"') {
      if (src[1] != '"') break;
      ++src;
    }
    *dst++ = *src;
  }
  *dst = '\0';
}

int32_t WqStr_CfgStr(char *dst, const char *src, uint32_t) {
  return std::strpbrk(src, "\",") ? WqStr_AddEsc(dst, src) : WqStr_Copy(dst, src);
}

int32_t WqStr_Int(char *dst, int32_t value) {
  uint32_t rest = value < 0 ? 0 - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
  *dst = '-'; // overwritten if the value isn't negative
  char *const end = dst + (value < 0) + digitCount(rest);
  char *at = end;
  *at = '\0';
  for (; rest >= 100; rest /= 100) std::memcpy(at -= 2, pair(rest % 100), 2);
  if (rest >= 10)
    std::memcpy(at - 2, pair(rest), 2);
  else
    at[-1] = static_cast<char>('0' + rest);
  return static_cast<int32_t>(end - dst);
}

int32_t WqStr_Hex02(char *dst, int32_t value) { return writeHex(dst, "", value, 2); }
int32_t WqStr_Hex04(char *dst, int32_t value) { return writeHex(dst, "", value, 4); }
int32_t WqStr_Hex08(char *dst, int32_t value) { return writeHex(dst, "", value, 8); }
int32_t WqStr_Hex0x02(char *dst, int32_t value) { return writeHex(dst, "0x", value, 2); }
int32_t WqStr_Hex02A(char *dst, int32_t value) { return writeHex(dst, "0x", value, 2); }
int32_t WqStr_Hex04A(char *dst, int32_t value) { return writeHex(dst, "0x", value, 4); }
int32_t WqStr_Hex08A(char *dst, int32_t value) { return writeHex(dst, "0x", value, 8); }

int32_t WqStr_Rect(char *dst, const RECT *rect) {
  return writeList(dst, rect->left, rect->top, rect->right, rect->bottom);
}

int32_t WqStr_Size(char *dst, const SIZE *size) { return writeList(dst, size->cx, size->cy); }
int32_t WqStr_Point(char *dst, const POINT *point) { return writeList(dst, point->x, point->y); }

int32_t WqStr_Format(char *dst, const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsprintf(dst, format, arguments);
  va_end(arguments);
  if (length >= 0) return length;
  dst[0] = '\0';
  return 0;
}
