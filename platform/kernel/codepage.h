// Code page 932 to UTF-8 and back, without loss in either direction.
//
// File names on this system are bytes, usually UTF-8, and may hold characters that code page 932 lacks. Each byte of
// such a character becomes an escape: one double-byte code of the private range U+E658..U+E757 (bytes F8B9..F9FC). The
// way back turns each escape into its byte. So every name can be handed out, stored and opened again. A byte below 80
// has an escape only if it means something in a name (paths.h says when); the codes of all others are characters.
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

// Copies a text into room for size bytes, at least 1, and ends it with NUL. A character that doesn't fit whole is left
// out.
// Result: the bytes copied, without the NUL.
size_t copyWhole(std::string_view text, char *room, size_t size);

// The character of a byte, or of a double-byte code lead << 8 | trail; U+FFFD for an undefined code.
char16_t characterOf(uint16_t code);

// Ill-formed UTF-8 or UTF-16 becomes U+FFFD.
std::u16string utf16FromUtf8(std::string_view text);
std::string utf8FromUtf16(std::u16string_view text);

// A text in small letters, for comparisons without regard to case. Escapes stay as they are.
std::u16string foldedName(std::string_view text);

// Whether two file names of this system differ only in the case of letters. Such names have the same length.
bool differInCaseOnly(std::string_view a, std::string_view b);

// Conversions of text that programs exchange, by the platform's rules and without escapes. A character that the code
// page lacks becomes the letter that resembles it most, or a question mark. A code without a character becomes U+30FB.
std::u16string utf16FromText(std::string_view text);
std::string textFromUtf16(std::u16string_view text);

// Conversions of file names, with escapes. Bytes that code page 932 leaves undefined become U+FFFD.
std::string utf8FromCodePage(std::string_view text);
std::string codePageFromUtf8(std::string_view text);

// The escape of a byte: one above 7F, one of 1 to 31, blank . \ : * ? " < > | or the first letter of a device name.
std::string escapeOf(unsigned char byte);

} // namespace platform
