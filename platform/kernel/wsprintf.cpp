// The API's own formatted print. It differs from the C library's: the output has at most 1023 bytes, a precision counts
// the minus sign, and an unknown conversion prints its letter.

#include "platform/winapi.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>

namespace {

constexpr int kRoom = 1024; // bytes of the longest output, with its NUL

// Takes text for as long as there is room, and counts the bytes taken.
class Output {
 public:
  explicit Output(char *text) : text_(text) {}
  void put(char c) {
    if (used_ < kRoom - 1) text_[used_++] = c;
  }
  void put(std::string_view piece) {
    for (const char c : piece) put(c);
  }
  void fill(char c, uint32_t count) {
    for (; count > 0; --count) put(c);
  }
  uint32_t left() const { return static_cast<uint32_t>(kRoom - 1 - used_); }
  int end() {
    text_[used_] = '\0';
    return used_;
  }

 private:
  char *text_;
  int used_ = 0;
};

struct Conversion {
  bool left = false;
  bool prefixed = false;
  bool zeros = false;
  bool hasPrecision = false;
  uint32_t width = 0;
  uint32_t precision = 0;
};

bool accept(const char *&at, char c) {
  if (*at != c) return false;
  ++at;
  return true;
}

uint32_t decimal(const char *&at) {
  uint32_t value = 0;
  for (; *at >= '0' && *at <= '9'; ++at) value = value * 10 + static_cast<uint32_t>(*at - '0');
  return value;
}

Conversion parse(const char *&at) {
  Conversion c;
  c.left = accept(at, '-');
  c.prefixed = accept(at, '#');
  c.zeros = accept(at, '0');
  c.width = decimal(at);
  if (accept(at, '.')) {
    c.hasPrecision = true;
    c.precision = decimal(at);
  }
  if (*at == 'h' || *at == 'l') ++at; // short and long arguments come as int
  return c;
}

uint32_t missing(uint32_t wanted, size_t present) {
  return wanted > present ? wanted - static_cast<uint32_t>(present) : 0;
}

void putPadded(Output &out, const Conversion &c, std::string_view text) {
  if (!c.left) out.fill(' ', missing(c.width, text.size()));
  out.put(text);
  if (c.left) out.fill(' ', missing(c.width, text.size()));
}

void putNumber(Output &out, const Conversion &c, std::string_view prefix, std::string_view digits) {
  const bool negative = !digits.empty() && digits.front() == '-';
  const uint32_t wanted = c.zeros && !c.left ? std::max(c.width, c.precision) : c.precision;
  const uint32_t zeros = missing(wanted, digits.size());
  const uint32_t blanks = missing(c.width, digits.size() + zeros);
  if (!c.left) out.fill(' ', blanks);
  out.put(prefix);
  if (negative) out.put('-');
  out.fill('0', zeros);
  out.put(negative ? digits.substr(1) : digits);
  if (c.left) out.fill(' ', blanks);
}

template <typename Number> std::string_view digitsOf(char (&area)[16], Number value, int base) {
  const char *end = std::to_chars(area, area + sizeof area, value, base).ptr;
  return {area, static_cast<size_t>(end - area)};
}

void putHex(Output &out, const Conversion &c, uint32_t value, bool upper) {
  char area[16];
  std::string_view digits = digitsOf(area, value, 16);
  if (upper) std::transform(area, area + digits.size(), area, [](char d) { return d >= 'a' ? d - 'a' + 'A' : d; });
  putNumber(out, c, !c.prefixed ? "" : upper ? "0X" : "0x", digits);
}

void putText(Output &out, const Conversion &c, const char *text) {
  if (!text) text = "(null)";
  const size_t length = c.hasPrecision ? strnlen(text, c.precision) : std::strlen(text);
  putPadded(out, c, {text, length});
}

} // namespace

int wvsprintfA(LPSTR text, LPCSTR format, va_list arguments) {
  Output out(text);
  for (const char *at = format; *at;) {
    if (*at != '%') {
      out.put(*at++);
      continue;
    }
    ++at;
    Conversion c = parse(at);
    c.width = std::min(c.width, out.left()); // padding must not push the value out
    c.precision = std::min(c.precision, out.left());
    const char kind = *at;
    if (kind) ++at;
    char area[16];
    switch (kind) {
    case 'd':
    case 'i': putNumber(out, c, "", digitsOf(area, va_arg(arguments, int), 10)); break;
    case 'u': putNumber(out, c, "", digitsOf(area, va_arg(arguments, unsigned), 10)); break;
    case 'x':
    case 'X': putHex(out, c, va_arg(arguments, unsigned), kind == 'X'); break;
    case 'c': {
      const char letter = static_cast<char>(va_arg(arguments, int));
      putPadded(out, c, {&letter, 1});
      break;
    }
    case 's': putText(out, c, va_arg(arguments, const char *)); break;
    case '\0': break;
    default: putPadded(out, c, {&kind, 1}); break;
    }
  }
  return out.end();
}

int wsprintfA(LPSTR text, LPCSTR format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = wvsprintfA(text, format, arguments);
  va_end(arguments);
  return length;
}
