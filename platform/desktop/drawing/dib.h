// Pixels in the forms that programs and files have them in: 1 to 32 bits, with colours, with masks, run-length coded.
#pragma once

#include "platform/desktop/drawing/objects.h"

#include <array>
#include <cstdint>
#include <optional>

namespace platform {

// What a header tells of the pixels that belong to it.
struct Dib {
  int64_t width = 0, height = 0;
  bool topDown = false;
  int bits = 0; // a pixel has
  DWORD compression = BI_RGB;
  std::array<uint32_t, 3> masks{}; // of red, green and blue, with 16 and 32 bits
  std::vector<QRgb> colors;        // one for each value of a pixel, with up to 8 bits
  bool blackAndWhite = false;      // 1 bit, 0 is black and 1 is white
  size_t imageSize = 0;            // of the pixels; 0 where it isn't told
  size_t colorsUsed = 0;           // 0 for all that there can be
  size_t headerSize = 0;           // with the masks and colours behind it

  // From the start of one row to the next.
  size_t pitch() const { return static_cast<size_t>((width * bits + 31) / 32 * 4); }
  bool coded() const { return compression == BI_RLE4 || compression == BI_RLE8; }
  void readRow(const uint8_t *row, QRgb *pixels) const;
};

// Reads a header without its masks and colours. size: of the memory behind the address, which isn't read beyond it.
// Result: nothing for a header that is none, or that tells of pixels that there can't be.
std::optional<Dib> readForm(const void *header, size_t size);
// Reads all of it. usage: DIB_... palette: for DIB_PAL_COLORS.
std::optional<Dib> readDib(const void *header, size_t size, UINT usage, const Palette *palette);

// Fills a bitmap from pixels, as far as there are some and both have room for them; the rest of it gets black.
void readPixels(const Dib &dib, const uint8_t *bits, size_t size, Bitmap &bitmap);

} // namespace platform
