// Shared by the families of files.
#pragma once

#include "files/files.h"

#include "frame/memory.h"
#include "text/double_byte.h"

// The walks skip entries with one of these attributes.
constexpr DWORD kWqLeftAlone = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_TEMPORARY;

// Joins texts in an array.
// Result: whether they fit; if not, the array holds as much as fits.
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
