// Code page 932 to UTF-8 and back, without loss in either direction.
//
// Names on this system are bytes, by custom UTF-8, and need not be characters of code page 932 at all. What has no
// code there travels as an escape, one double-byte code of the private range U+E658..U+E757 (bytes F89D..F9FC) for
// each byte, and returns as that very byte. So every name can be handed out, stored and opened again.
#pragma once

#include <string>
#include <string_view>

namespace platform {

bool isLeadByte(unsigned char byte);
bool isTrailByte(unsigned char byte);
// Whether a double-byte code stands at a place of a text.
bool isDoubleByteAt(std::string_view text, size_t at);

// What is no well-formed UTF-8 or UTF-16 becomes U+FFFD.
std::u16string utf16FromUtf8(std::string_view text);
std::string utf8FromUtf16(std::u16string_view text);

// A name with its capital letters turned small, for comparisons without regard to case.
std::u16string foldedName(std::string_view name);

// Bytes that code page 932 leaves undefined become U+FFFD.
std::string utf8FromCodePage(std::string_view text);

// Bytes listed in reserved are escaped too, for a byte that means something else in the text's new place.
std::string codePageFromUtf8(std::string_view text, std::string_view reserved = {});

} // namespace platform
