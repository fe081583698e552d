// Code page 932 by two tables, filled once from iconv. iconv also takes some characters that the code page lacks, such
// as the yen sign as 5C. So a code counts only if it leads back to the same character.

#include "platform/kernel/codepage.h"

#include <array>
#include <cstdint>
#include <iconv.h>
#include <memory>
#include <optional>

namespace platform {

namespace {

constexpr char16_t kUndefined = 0xFFFD;
constexpr char16_t kFirstEscape = 0xE658; // the escape of byte 0; byte 255 has 0xE757, the last private code
constexpr std::string_view kEscapable = " .\\:*?\"<>|ACLNPaclnp"; // with an escape, beside 1 to 31 and 80 to FF

struct Tables {
  std::array<char16_t, 0x10000> character{}; // by code: a single byte, or lead << 8 | trail; 0 for an undefined code
  std::array<uint16_t, 0x10000> code{};      // by character; 0 for a character that has no code
};

class Converter {
 public:
  Converter(const char *to, const char *from) : descriptor_(iconv_open(to, from)) {}
  ~Converter() {
    if (usable()) iconv_close(descriptor_);
  }
  Converter(const Converter &) = delete;
  Converter &operator=(const Converter &) = delete;

  // The bytes of one character in the other encoding; empty if that encoding lacks the character.
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
  tables->character[0x80] = 0x80; // here and below: four single bytes for which iconv differs from the platform
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
    // some characters have several codes: iconv's choice counts
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
  const auto tail = [&](int shift) { out += static_cast<char>(0x80 | (character >> shift & 0x3F)); };
  if (character < 0x80) {
    out += static_cast<char>(character);
  } else if (character < 0x800) {
    out += static_cast<char>(0xC0 | character >> 6);
    tail(0);
  } else if (character < 0x10000) {
    out += static_cast<char>(0xE0 | character >> 12);
    tail(6);
    tail(0);
  } else {
    out += static_cast<char>(0xF0 | character >> 18);
    tail(12);
    tail(6);
    tail(0);
  }
}

struct Decoded {
  char32_t character;
  size_t length;
};

// The UTF-8 sequence at the front of a text; nothing if the text begins with ill-formed bytes.
std::optional<Decoded> firstCharacter(std::string_view text) {
  const auto byte = [&](size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned first = byte(0);
  if (first < 0x80) return Decoded{first, 1};
  const size_t length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
  if (length == 0 || length > text.size()) return std::nullopt;
  char32_t character = first & (0x7Fu >> length);
  for (size_t at = 1; at < length; ++at) {
    if ((byte(at) & 0xC0) != 0x80) return std::nullopt;
    character = character << 6 | (byte(at) & 0x3Fu);
  }
  const bool shortest = length == 2 || (length == 3 && character >= 0x800) || (length == 4 && character >= 0x10000);
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  return shortest && !surrogate && character <= 0x10FFFF ? std::optional(Decoded{character, length}) : std::nullopt;
}

// The small letter for a capital letter or Roman numeral that code page 932 has; any other character unchanged.
char32_t folded(char32_t c) {
  const bool capital = (c >= 'A' && c <= 'Z') || (c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F) ||
                       (c >= 0xFF21 && c <= 0xFF3A);
  if (capital) return c + 0x20;
  if (c >= 0x2160 && c <= 0x2169) return c + 0x10;
  return c == 0x401 ? 0x451 : c;
}

// Replacements for U+00A1 to U+00FF that the code page lacks; 0 for a character that no other one resembles.
constexpr uint16_t kLatin[] = {
    '!', 0x8191, 0x8192, 0,   0x5C,   '|', 0,      0,      'c', 'a', 0x81E1, 0x81CA, '-', 'R', 0x8150, 0,
    0,   '2',    '3',    0,   0x83CA, 0,   0x8145, 0x8143, '1', 'o', 0x81E2, 0,      0,   0,   0,      'A',
    'A', 'A',    'A',    'A', 'A',    'A', 'C',    'E',    'E', 'E', 'E',    'I',    'I', 'I', 'I',    'D',
    'N', 'O',    'O',    'O', 'O',    'O', 0,      'O',    'U', 'U', 'U',    'U',    'Y', 'T', 's',    'a',
    'a', 'a',    'a',    'a', 'a',    'a', 'c',    'e',    'e', 'e', 'e',    'i',    'i', 'i', 'i',    'd',
    'n', 'o',    'o',    'o', 'o',    'o', 0,      'o',    'u', 'u', 'u',    'u',    'y', 't', 'y'};
constexpr char16_t kFirstLatin = 0xA1, kHiraganaVu = 0x3094;

uint16_t resembling(char16_t character) {
  constexpr uint16_t kKatakanaVu = 0x8394;
  if (character == kHiraganaVu) return kKatakanaVu;
  const bool latin = character >= kFirstLatin && character <= 0xFF;
  return latin && kLatin[character - kFirstLatin] != 0 ? kLatin[character - kFirstLatin] : uint16_t{'?'};
}

void appendCode(std::string &out, uint16_t code) {
  if (code > 0xFF) out += static_cast<char>(code >> 8);
  out += static_cast<char>(code);
}

bool isEscape(char32_t character) {
  if (character <= kFirstEscape || character >= kFirstEscape + 0x100) return false;
  const auto byte = static_cast<unsigned char>(character - kFirstEscape);
  return byte >= 0x80 || byte < 0x20 || kEscapable.find(static_cast<char>(byte)) != std::string_view::npos;
}

// A character in a text, 0 for an undefined code, and the length of its code in bytes.
struct Coded {
  char16_t character;
  size_t length;
};

Coded codedAt(std::string_view text, size_t at) {
  const unsigned first = static_cast<unsigned char>(text[at]);
  if (!isDoubleByteAt(text, at)) return {tables().character[first], 1};
  return {tables().character[first << 8 | static_cast<unsigned char>(text[at + 1])], 2};
}

} // namespace

size_t copyWhole(std::string_view text, char *room, size_t size) {
  size_t length = 0;
  while (length < text.size()) {
    const size_t next = length + (isDoubleByteAt(text, length) ? 2 : 1);
    if (next >= size) break;
    length = next;
  }
  text.copy(room, length);
  room[length] = '\0';
  return length;
}

char16_t characterOf(uint16_t code) {
  const char16_t character = tables().character[code];
  return character != 0 || code == 0 ? character : kUndefined;
}

std::string utf8FromCodePage(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 2);
  for (size_t at = 0; at < text.size();) {
    if (static_cast<unsigned char>(text[at]) < 0x80) {
      out += text[at++];
      continue;
    }
    const auto [character, length] = codedAt(text, at);
    if (isEscape(character))
      out += static_cast<char>(character - kFirstEscape);
    else
      appendUtf8(out, character != 0 ? character : kUndefined);
    at += length;
  }
  return out;
}

std::string escapeOf(unsigned char byte) {
  std::string out;
  appendCode(out, tables().code[static_cast<char16_t>(kFirstEscape + byte)]);
  return out;
}

std::string codePageFromUtf8(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const std::optional<Decoded> next = firstCharacter(text);
    uint16_t code = 0;
    if (next && next->character < 0x10000 && !isEscape(next->character)) code = tables().code[next->character];
    const bool known = code != 0 || (next && next->character == 0);
    if (known)
      appendCode(out, code);
    else
      out += escapeOf(static_cast<unsigned char>(text[0]));
    text.remove_prefix(known ? next->length : 1);
  }
  return out;
}

std::u16string utf16FromUtf8(std::string_view text) {
  std::u16string out;
  while (!text.empty()) {
    const Decoded next = firstCharacter(text).value_or(Decoded{kUndefined, 1});
    if (next.character < 0x10000) {
      out += static_cast<char16_t>(next.character);
    } else {
      out += static_cast<char16_t>(0xD800 + ((next.character - 0x10000) >> 10));
      out += static_cast<char16_t>(0xDC00 + (next.character & 0x3FF));
    }
    text.remove_prefix(next.length);
  }
  return out;
}

std::string utf8FromUtf16(std::u16string_view text) {
  std::string out;
  for (size_t at = 0; at < text.size(); ++at) {
    const bool high = (text[at] & 0xFC00) == 0xD800;
    const bool pair = high && at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
    if (pair) {
      appendUtf8(out, 0x10000u + ((text[at] & 0x3FFu) << 10) + (text[at + 1] & 0x3FFu));
      ++at;
    } else {
      appendUtf8(out, (text[at] & 0xF800) == 0xD800 ? kUndefined : text[at]);
    }
  }
  return out;
}

std::u16string utf16FromText(std::string_view text) {
  constexpr char16_t kNone = 0x30FB;
  const auto &characters = tables().character;
  std::u16string out;
  out.reserve(text.size());
  for (size_t at = 0; at < text.size(); ++at) {
    unsigned code = static_cast<unsigned char>(text[at]);
    const bool pair =
        code >= 0x80 && isLeadByte(static_cast<unsigned char>(code)) && at + 1 < text.size() && text[at + 1];
    if (pair) code = code << 8 | static_cast<unsigned char>(text[++at]);
    out += code == 0 || characters[code] != 0 ? characters[code] : kNone;
  }
  return out;
}

std::string textFromUtf16(std::u16string_view text) {
  const auto &codes = tables().code;
  std::string out;
  out.reserve(text.size());
  for (const char16_t character : text) {
    const uint16_t code = codes[character];
    appendCode(out, code != 0 || character == 0 ? code : resembling(character));
  }
  return out;
}

std::u16string foldedName(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (size_t at = 0; at < text.size();) {
    const auto [character, length] = codedAt(text, at);
    out += static_cast<char16_t>(folded(character != 0 || text[at] == '\0' ? character : kUndefined));
    at += length;
  }
  return out;
}

bool differInCaseOnly(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  while (!a.empty()) {
    const std::optional<Decoded> one = firstCharacter(a), other = firstCharacter(b);
    const bool same =
        one && other ? folded(one->character) == folded(other->character) : a[0] == b[0] && !one && !other;
    if (!same) return false;
    a.remove_prefix(one ? one->length : 1);
    b.remove_prefix(other ? other->length : 1);
  }
  return true;
}

} // namespace platform
