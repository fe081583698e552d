// Code page 932 to UTF-8 and back, without loss in either direction.
//
// Names on this system are bytes, by custom UTF-8, and need not be characters of code page 932 at all. What has no
// code there travels as an escape, one double-byte code of the private range U+E658..U+E757 (bytes F8B9..F9FC) for
// each byte, and returns as that very byte. So every name can be handed out, stored and opened again. Only bytes above 7F
// and those of kReserved are ever escaped; the codes of the others are characters like all.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// What has a meaning in a name there, and none in a part of a path on this system.
constexpr std::string_view kReserved = "\\:*?\"<>|";

bool isLeadByte(unsigned char byte);
bool isTrailByte(unsigned char byte);
// Whether a double-byte code stands at a place of a text.
bool isDoubleByteAt(std::string_view text, size_t at);

// Copies the whole characters of a text that fit in front of a NUL, into room for size bytes, at least 1.
// Result: their length.
size_t copyWhole(std::string_view text, char *room, size_t size);

// The character of a byte, or of a double-byte code lead << 8 | trail; U+FFFD where there is none.
char16_t characterOf(uint16_t code);

// What is no well-formed UTF-8 or UTF-16 becomes U+FFFD.
std::u16string utf16FromUtf8(std::string_view text);
std::string utf8FromUtf16(std::u16string_view text);

// A name with its capital letters turned small, for comparisons without regard to case.
std::u16string foldedName(std::string_view name);

// The same for texts that programs exchange, as the platform does it: nothing is escaped. A character that the code page
// lacks becomes the letter that resembles it most or a question mark, a code without a character U+30FB.
std::u16string utf16FromText(std::string_view text);
std::string textFromUtf16(std::u16string_view text);

// Bytes that code page 932 leaves undefined become U+FFFD.
std::string utf8FromCodePage(std::string_view text);

// partOfName: the bytes of kReserved are escaped too.
std::string codePageFromUtf8(std::string_view text, bool partOfName = false);

} // namespace platform
