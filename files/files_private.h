// What the file families share.
#pragma once

#include "files/files.h"

#include "frame/frame.h"
#include "text/double_byte.h"

#include <cstring>

// A found entry's attributes that keep the walks away from it.
constexpr DWORD kWqLeftAlone = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_TEMPORARY;

// The length of text, or of its beginning in whole characters that limit bytes hold.
inline size_t wqFittingLength(const char *text, size_t limit) {
  const auto *end = static_cast<const char *>(std::memchr(text, 0, limit + 1));
  if (end) return static_cast<size_t>(end - text); // all of it, whatever its characters are
  size_t length = 0;
  while (text[length]) {
    const size_t next = length + (wqIsDoubleByte(text + length) ? 2 : 1);
    if (next > limit) break;
    length = next;
  }
  return length;
}

// Copies what fits into an array and ends it.
template <size_t size> void wqCopyFitting(char (&dst)[size], const char *src) {
  const size_t length = wqFittingLength(src, size - 1);
  WqMem_Copy(dst, src, length);
  dst[length] = '\0';
}

// Joins texts in an array.
// Result: whether they fit; if not, the array holds what does.
template <size_t size, typename... Texts> bool wqJoin(char (&dst)[size], Texts... texts) {
  size_t used = 0;
  bool fits = true;
  const auto append = [&](const char *text) {
    const size_t length = wqFittingLength(text, size - 1 - used);
    fits = fits && text[length] == '\0';
    WqMem_Copy(dst + used, text, length);
    used += length;
  };
  (append(texts), ...);
  dst[used] = '\0';
  return fits;
}
