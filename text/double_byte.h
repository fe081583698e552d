// The double-byte characters of code page 932, and copies that cut only between characters. The classes of bytes are
// fixed and need no locale.
#pragma once

#include <cstddef>
#include <cstring>

constexpr bool wqIsLeadByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

constexpr bool wqIsTrailByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC);
}

// Whether a double-byte character begins here. A lead byte without a trail byte behind it counts as a single byte.
inline bool wqIsDoubleByte(const char *text) { return wqIsLeadByte(text[0]) && wqIsTrailByte(text[1]); }

// The length of text if it fits limit bytes, else the length of its longest beginning of whole characters that does.
inline size_t wqFittingLength(const char *text, size_t limit) {
  const auto *end = static_cast<const char *>(std::memchr(text, 0, limit + 1));
  if (end) return static_cast<size_t>(end - text); // whole text: its characters don't matter
  size_t length = 0;
  while (length < limit) { // bytes behind the limit may be unreadable
    const size_t next = length + (wqIsDoubleByte(text + length) ? 2 : 1);
    if (next > limit) break;
    length = next;
  }
  return length;
}

// Copies as many whole characters as fit an array, and a NUL.
template <size_t size> void wqCopyFitting(char (&dst)[size], const char *src) {
  const size_t length = wqFittingLength(src, size - 1);
  std::memcpy(dst, src, length);
  dst[length] = '\0';
}
