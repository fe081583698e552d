// Code page 932 to UTF-8 and back, without loss in either direction.
//
// Names on this system are bytes, by custom UTF-8, and need not be characters of code page 932 at all. What has no
// code there travels as an escape, one double-byte code of the private range U+E658..U+E757 (bytes F8B9..F9FC) for
// each byte, and returns as that very byte. So every name can be handed out, stored and opened again. A byte below 80 is
// only escaped where it means something in a name (paths.h says when); the codes of all others are characters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

inline bool isLeadByte(unsigned char byte) { return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC); }
inline bool isTrailByte(unsigned char byte) { return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC); }
// Whether a double-byte code stands at a place of a text.
inline bool isDoubleByteAt(std::string_view text, size_t at) {
  return at + 1 < text.size() && isLeadByte(static_cast<unsigned char>(text[at])) &&
         isTrailByte(static_cast<unsigned char>(text[at + 1]));
}

// Copies the whole characters of a text that fit in front of a NUL, into room for size bytes, at least 1.
// Result: their length.
size_t copyWhole(std::string_view text, char *room, size_t size);

// The character of a byte, or of a double-byte code lead << 8 | trail; U+FFFD where there is none.
char16_t characterOf(uint16_t code);

// What is no well-formed UTF-8 or UTF-16 becomes U+FFFD.
std::u16string utf16FromUtf8(std::string_view text);
std::string utf8FromUtf16(std::u16string_view text);

// A text with its capital letters turned small, for comparisons without regard to case. Escapes stay what they are.
std::u16string foldedName(std::string_view text);

// Whether two names of this system differ in nothing but the case of letters. Such names have the same length.
bool differInCaseOnly(std::string_view a, std::string_view b);

// The same for texts that programs exchange, as the platform does it: nothing is escaped. A character that the code page
// lacks becomes the letter that resembles it most or a question mark, a code without a character U+30FB.
std::u16string utf16FromText(std::string_view text);
std::string textFromUtf16(std::u16string_view text);

// Bytes that code page 932 leaves undefined become U+FFFD.
std::string utf8FromCodePage(std::string_view text);
std::string codePageFromUtf8(std::string_view text);

// The escape of a byte. There is one for every byte above 7F, for 1 to 31, for blank . \ : * ? " < > | and for the first
// letters of devices.
std::string escapeOf(unsigned char byte);

} // namespace platform
