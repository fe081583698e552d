// An input as a BMP file: it makes a bitmap of the size that its header tells, whose first stored pixel has the colour
// that the file gives it, or none.

#include "memory_file.h"

#include <cstdlib>
#include <sys/resource.h>

namespace {

constexpr uint64_t kMostPixels = 1 << 20; // a coded picture can promise far more than its file holds
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

// The colour of the first pixel of plain rows, where its place and meaning don't depend on more than the header.
// known: gets whether that is so.
COLORREF firstColour(Bytes file, const BITMAPINFOHEADER &header, bool *known) {
  *known = header.biCompression == BI_RGB && header.biBitCount != 16;
  if (!*known) return 0;
  const size_t table = kFileHeader + header.biSize;
  const bool core = header.biSize == sizeof(BITMAPCOREHEADER), deep = header.biBitCount > 8;
  const uint32_t colours = deep ? 0 : core ? 1u << header.biBitCount : WqBmpFile_ColNum(nullptr, &header);
  const size_t width = core ? 3 : 4, behind = table + width * colours, told = number(file, 10, 4);
  const size_t at = (header.biSize == 40 && !deep) || told == 0 ? behind : told;
  if (deep) return RGB(file[at + 2], file[at + 1], file[at]);
  const uint32_t index = file[at] >> (8 - header.biBitCount);
  const size_t entry = table + width * index;
  return index < colours ? RGB(file[entry + 2], file[entry + 1], file[entry]) : 0;
}

void seesPicture(Bytes file, const BITMAPINFOHEADER &header, HBITMAP bitmap, HDC dc) {
  BITMAP object;
  REQUIRE(GetObjectA(bitmap, sizeof object, &object) == sizeof object);
  REQUIRE(object.bmWidth == header.biWidth && object.bmHeight == std::abs(header.biHeight));
  const HGDIOBJ before = SelectObject(dc, bitmap);
  REQUIRE(before);
  bool known;
  const COLORREF colour = firstColour(file, header, &known);
  const COLORREF pixel = GetPixel(dc, 0, header.biHeight < 0 ? 0 : header.biHeight - 1);
  REQUIRE(!known || pixel == colour);
  SelectObject(dc, before);
}

} // namespace

// So few files may be open that one left open in each run is noticed.
extern "C" int LLVMFuzzerInitialize(int *, char ***) {
  const rlimit limit{64, 64};
  REQUIRE(setrlimit(RLIMIT_NOFILE, &limit) == 0);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static const File file;
  static const HDC screen = GetDC(nullptr), dc = CreateCompatibleDC(screen);
  const Bytes bytes(data, size);
  const BITMAPINFOHEADER header = headerOf(Bytes(data, size));
  const bool coded = header.biCompression == BI_RLE8 || header.biCompression == BI_RLE4;
  if (coded &&
      static_cast<uint64_t>(std::abs(int64_t{header.biWidth}) * std::abs(int64_t{header.biHeight})) > kMostPixels)
    return 0;
  file.fill(bytes);
  WqBmpFile bmp;
  WqBmpFile_Init(&bmp, file.name());
  WqBmpFile_Create(&bmp, screen);
  REQUIRE(!bmp.handle || size >= kLeast);
  if (bmp.handle) seesPicture(bytes, header, bmp.handle, dc);
  WqBmpFile_Delete(&bmp);
  return 0;
}
