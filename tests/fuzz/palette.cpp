// An input as a BMP file that a palette is taken from: the entries are what follows the headers, or the record stays as
// it was; and whatever they are, colours are found and added, and a palette of the platform is made.

#include "memory_file.h"

#include <algorithm>

namespace {

constexpr size_t kHeaders = 54;

void takesEntries(Bytes file, const WqColorPal &palette) {
  const auto *bytes = reinterpret_cast<const uint8_t *>(palette.entries);
  for (size_t i = 0; i < sizeof palette.entries; ++i)
    REQUIRE(bytes[i] == (kHeaders + i < file.size() ? file[kHeaders + i] : 0));
}

void findsColours(WqColorPal *palette) {
  for (uint32_t i = 0; i < palette->count; ++i) {
    const int32_t found = WqColorPal_FindIx(palette, WqColorPal_FindData(palette, i));
    REQUIRE(found >= 0 && static_cast<uint32_t>(found) <= i);
  }
  const int32_t added = WqColorPal_Add(palette, 0x123456);
  REQUIRE(added == WqColorPal_FindIx(palette, 0x123456) || (added == -1 && palette->count == WQ_PAL_ENTRIES));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static const File file;
  const Bytes bytes(data, size);
  file.fill(bytes);
  WqColorPal palette;
  WqColorPal_Init(&palette, 0);
  palette.entries[7].rgbRed = 7;
  const WqColorPal before = palette;
  WqColorPal_Bmp(&palette, file.name());

  const uint32_t count = palette.count;
  if (count == before.count) {
    REQUIRE(std::memcmp(&palette, &before, sizeof palette) == 0);
  } else {
    REQUIRE(size >= kHeaders && count <= WQ_PAL_ENTRIES && palette.baseCount == count);
    REQUIRE(palette.handle == before.handle);
    takesEntries(bytes, palette);
  }
  findsColours(&palette);
  WqColorPal_InitReplace(&palette);
  WqColorPal_Create(&palette);
  REQUIRE(palette.count == count);
  PALETTEENTRY entries[256];
  if (palette.handle) REQUIRE(GetPaletteEntries(palette.handle, 0, 256, entries) == count);
  WqColorPal_Term(&palette);
  return 0;
}
