// Code page 932 by two tables, filled once from iconv. iconv takes a few characters that the code page does not have
// (the yen sign as 5C, for one): a code counts only where it leads back to the same character.

#include "platform/kernel/codepage.h"

#include <array>
#include <cstdint>
#include <iconv.h>
#include <memory>
#include <optional>

namespace platform {

namespace {

constexpr char16_t kUndefined = 0xFFFD;
constexpr char16_t kFirstEscape = 0xE658; // stands for byte 0; 0xE757, the last private code, for byte 255

struct Tables {
  std::array<char16_t, 0x10000> character{}; // by code: a single byte, or lead << 8 | trail; 0 where there is none
  std::array<uint16_t, 0x10000> code{};      // by character; 0 where there is none
};

class Converter {
 public:
  Converter(const char *to, const char *from) : descriptor_(iconv_open(to, from)) {}
  ~Converter() {
    if (usable()) iconv_close(descriptor_);
  }
  Converter(const Converter &) = delete;
  Converter &operator=(const Converter &) = delete;

  // The bytes that one character turns into; none where it has no counterpart.
  std::string convert(std::string_view in) {
    std::array<char, 8> out{};
    std::string source(in);
    char *from = source.data();
    char *to = out.data();
    size_t fromLeft = source.size();
    size_t toLeft = out.size();
    if (!usable()) return {};
    iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(descriptor_, &from, &fromLeft, &to, &toLeft) != 0 || fromLeft != 0) return {};
    return {out.data(), to};
  }

 private:
  bool usable() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }
  iconv_t descriptor_;
};

void define(Tables &tables, Converter &decode, unsigned code) {
  const char bytes[2] = {static_cast<char>(code >> 8), static_cast<char>(code)};
  const std::string utf16 = decode.convert(code > 0xFF ? std::string_view(bytes, 2) : std::string_view(bytes + 1, 1));
  if (utf16.size() != 2) return;
  const auto byte = [&](size_t at) -> unsigned { return static_cast<unsigned char>(utf16[at]); };
  tables.character[code] = static_cast<char16_t>(byte(0) | byte(1) << 8);
}

std::unique_ptr<const Tables> makeTables() {
  auto tables = std::make_unique<Tables>();
  Converter decode("UTF-16LE", "CP932");
  Converter encode("CP932", "UTF-16LE");
  for (unsigned code = 1; code < 0x80; ++code) tables->character[code] = static_cast<char16_t>(code);
  tables->character[0x80] = 0x80; // the platform keeps these four apart from iconv
  tables->character[0xA0] = 0xF8F0;
  for (unsigned code = 0xFD; code <= 0xFF; ++code)
    tables->character[code] = static_cast<char16_t>(0xF8F1 + code - 0xFD);
  for (unsigned code = 0xA1; code <= 0xDF; ++code) define(*tables, decode, code);
  for (unsigned lead = 0x81; lead <= 0xFC; ++lead) {
    for (unsigned trail = 0x40; isLeadByte(static_cast<unsigned char>(lead)) && trail <= 0xFC; ++trail)
      if (isTrailByte(static_cast<unsigned char>(trail))) define(*tables, decode, lead << 8 | trail);
  }
  for (unsigned code = 1; code < 0x10000; ++code) {
    const char16_t character = tables->character[code];
    if (character == 0 || tables->code[character] != 0) continue;
    tables->code[character] = static_cast<uint16_t>(code);
    if (code < 0x100) continue;
    // a character that stands at several places is written as iconv writes it
    const char utf16[2] = {static_cast<char>(character), static_cast<char>(character >> 8)};
    const std::string chosen = encode.convert(std::string_view(utf16, 2));
    if (chosen.size() != 2) continue;
    const auto byte = [&](size_t at) -> unsigned { return static_cast<unsigned char>(chosen[at]); };
    const unsigned other = byte(0) << 8 | byte(1);
    if (tables->character[other] == character) tables->code[character] = static_cast<uint16_t>(other);
  }
  return tables;
}

const Tables &tables() {
  static const std::unique_ptr<const Tables> made = makeTables();
  return *made;
}

void appendUtf8(std::string &out, char32_t character) {
  if (character < 0x80) {
    out += static_cast<char>(character);
  } else if (character < 0x800) {
    out += static_cast<char>(0xC0 | character >> 6);
    out += static_cast<char>(0x80 | (character & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | character >> 12);
    out += static_cast<char>(0x80 | (character >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (character & 0x3F));
  }
}

struct Decoded {
  char32_t character;
  size_t length;
};

// One well-formed UTF-8 sequence of at most three bytes at the front of text; longer ones have no code in 932 anyway.
std::optional<Decoded> firstCharacter(std::string_view text) {
  const auto byte = [&](size_t at) { return static_cast<unsigned char>(text[at]); };
  const auto follows = [&](size_t at) { return at < text.size() && (byte(at) & 0xC0) == 0x80; };
  const unsigned first = byte(0);
  if (first < 0x80) return Decoded{first, 1};
  if (first >= 0xC2 && first < 0xE0 && follows(1)) return Decoded{(first & 0x1Fu) << 6 | (byte(1) & 0x3Fu), 2};
  if (first >= 0xE0 && first < 0xF0 && follows(1) && follows(2)) {
    const char32_t character = (first & 0x0Fu) << 12 | (byte(1) & 0x3Fu) << 6 | (byte(2) & 0x3Fu);
    if (character >= 0x800 && (character < 0xD800 || character > 0xDFFF)) return Decoded{character, 3};
  }
  return std::nullopt;
}

void appendCode(std::string &out, uint16_t code) {
  if (code > 0xFF) out += static_cast<char>(code >> 8);
  out += static_cast<char>(code);
}

bool isEscape(char32_t character) { return character >= kFirstEscape && character < kFirstEscape + 0x100; }

} // namespace

bool isLeadByte(unsigned char byte) { return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC); }

bool isTrailByte(unsigned char byte) { return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC); }

std::string utf8FromCodePage(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 2);
  for (size_t at = 0; at < text.size(); ++at) {
    unsigned code = static_cast<unsigned char>(text[at]);
    if (code < 0x80) {
      out += text[at];
      continue;
    }
    if (isLeadByte(static_cast<unsigned char>(code)) && at + 1 < text.size() &&
        isTrailByte(static_cast<unsigned char>(text[at + 1])))
      code = code << 8 | static_cast<unsigned char>(text[++at]);
    const char16_t character = tables().character[code];
    if (isEscape(character))
      out += static_cast<char>(character - kFirstEscape);
    else
      appendUtf8(out, character != 0 ? character : kUndefined);
  }
  return out;
}

std::string codePageFromUtf8(std::string_view text, std::string_view reserved) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const std::optional<Decoded> next = firstCharacter(text);
    uint16_t code = 0;
    if (next && !isEscape(next->character)) code = tables().code[next->character];
    if (code != 0 && (code > 0xFF || reserved.find(static_cast<char>(code)) == std::string_view::npos)) {
      appendCode(out, code);
      text.remove_prefix(next->length);
    } else {
      appendCode(out, tables().code[static_cast<char16_t>(kFirstEscape + static_cast<unsigned char>(text[0]))]);
      text.remove_prefix(1);
    }
  }
  return out;
}

} // namespace platform
