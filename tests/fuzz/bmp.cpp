// An input as a BMP file: it makes a bitmap of the size that its header tells, all of which can be read, or none.

#include "memory_file.h"

#include <cstdlib>

namespace {

constexpr double kMostPixels = 1 << 20; // a coded picture can promise far more than its file holds
constexpr size_t kFileHeader = 14;
constexpr size_t kLeast = kFileHeader + sizeof(BITMAPCOREHEADER);

// The header as far as the file goes; of the oldest kind, with the fields that it lacks at 0.
BITMAPINFOHEADER headerOf(Bytes file) {
  BITMAPINFOHEADER header = {};
  if (file.size() < kLeast) return header;
  if (number(file, kFileHeader, 4) == sizeof(BITMAPCOREHEADER)) {
    header.biSize = sizeof(BITMAPCOREHEADER);
    header.biWidth = static_cast<LONG>(number(file, 18, 2));
    header.biHeight = static_cast<LONG>(number(file, 20, 2));
    header.biBitCount = static_cast<WORD>(number(file, 24, 2));
  } else if (file.size() >= kFileHeader + sizeof header) {
    std::memcpy(&header, file.data() + kFileHeader, sizeof header);
  }
  return header;
}

// Each pixel is there to be read.
void seesPicture(const BITMAPINFOHEADER &header, HBITMAP bitmap, HDC dc) {
  BITMAP object;
  REQUIRE(GetObjectA(bitmap, sizeof object, &object) == sizeof object);
  REQUIRE(object.bmWidth == header.biWidth && object.bmHeight == std::abs(header.biHeight));
  const HGDIOBJ before = SelectObject(dc, bitmap);
  REQUIRE(before && GetPixel(dc, 0, 0) != CLR_INVALID);
  REQUIRE(GetPixel(dc, object.bmWidth - 1, object.bmHeight - 1) != CLR_INVALID);
  SelectObject(dc, before);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static const File file;
  static const HDC screen = GetDC(nullptr), dc = CreateCompatibleDC(screen);
  const Bytes bytes(data, size);
  const BITMAPINFOHEADER header = headerOf(bytes);
  const bool coded = header.biCompression == BI_RLE8 || header.biCompression == BI_RLE4;
  if (coded && std::abs(1.0 * header.biWidth * header.biHeight) > kMostPixels) return 0;
  file.fill(bytes);
  WqBmpFile bmp;
  WqBmpFile_Init(&bmp, file.name());
  WqBmpFile_Create(&bmp, screen);
  REQUIRE(!bmp.handle || size >= kLeast);
  if (bmp.handle) seesPicture(header, bmp.handle, dc);
  WqBmpFile_Delete(&bmp);
  return 0;
}
