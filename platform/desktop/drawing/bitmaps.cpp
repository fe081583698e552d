// Bitmaps and their memory, and making them from pixels of other forms.
//
// A program that paints without flicker makes a bitmap of the window's size for each WM_PAINT and deletes it again.
// Memory fresh from the system costs more there than the drawing, a page fault for each 4096 bytes, so the last big
// blocks that bitmaps gave back are kept for the next ones.

#include "platform/desktop/drawing/bitmaps.h"

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/drawing/dib.h"
#include "platform/desktop/drawing/raster.h"
#include "platform/desktop/lock.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <mutex>

namespace platform {

namespace {

constexpr size_t kSmallestKept = size_t{256} << 10, kLargestKept = size_t{64} << 20;

struct Block {
  void *bytes = nullptr;
  size_t size = 0;
};

std::array<Block, 2> kept;

std::mutex &keptMutex() { // the screen's thread gives pixels back too
  static auto *one = new std::mutex;
  return *one;
}

// A kept block that fits and isn't much too big.
Block takeKept(size_t size) {
  const std::lock_guard lock(keptMutex());
  for (Block &block : kept)
    if (block.size >= size && block.size / 2 <= size) return std::exchange(block, {});
  return {};
}

// A QImage's clean-up function.
void giveBack(void *address) {
  auto *const block = static_cast<Block *>(address);
  if (block->size >= kSmallestKept && block->size <= kLargestKept) {
    const std::lock_guard lock(keptMutex());
    std::rotate(kept.begin(), kept.end() - 1, kept.end());
    std::swap(kept.front(), *block); // the older of the two goes
  }
  std::free(block->bytes);
  delete block;
}

// Its pixels are anything.
QImage makeImage(int width, int height) {
  const size_t size = static_cast<size_t>(width) * static_cast<size_t>(height) * sizeof(QRgb);
  auto block = std::make_unique<Block>(takeKept(size));
  if (!block->bytes) *block = {std::malloc(size), size};
  if (!block->bytes) return {};
  auto *const bytes = static_cast<uchar *>(block->bytes);
  return QImage(bytes, width, height, qsizetype{width} * 4, QImage::Format_RGB32, giveBack, block.release());
}

int roundedBits(UINT bits) {
  for (const int known : {1, 4, 8, 16, 24, 32})
    if (bits <= static_cast<UINT>(known)) return bits == 0 ? 4 : known;
  return 0;
}

// Pixels whose fourth bytes are all 0 have no alpha.
void readAlpha(Bitmap &bitmap, const uint8_t *data) {
  const size_t count = static_cast<size_t>(bitmap.width) * static_cast<size_t>(bitmap.height);
  size_t first = 0;
  while (first < count && data[4 * first + 3] == 0) ++first;
  if (first == count) return;
  bitmap.alpha.resize(count);
  for (size_t i = first; i < count; ++i) bitmap.alpha[i] = data[4 * i + 3];
}

// Pixels as CreateBitmap takes them: rows of whole words of 16 bits.
void readRows(Bitmap &bitmap, const uint8_t *data) {
  const size_t pitch = static_cast<size_t>((int64_t{bitmap.width} * bitmap.bits + 15) / 16 * 2);
  Dib form;
  form.width = bitmap.width;
  form.bits = bitmap.bits;
  form.colors = {0xFF000000u, 0xFFFFFFFFu};
  if (bitmap.bits == 32) readAlpha(bitmap, data);
  for (int y = 0; y < bitmap.height; ++y, data += pitch)
    form.readRow(data, reinterpret_cast<QRgb *>(bitmap.image.scanLine(y)));
}

HBITMAP openBitmap(const std::shared_ptr<Bitmap> &bitmap) { return bitmap ? openObject<HBITMAP>(bitmap) : nullptr; }

// What a bitmap for a context has: one bit when the context's has, and without a context.
int bitsFor(const Dc *dc) { return !dc ? 1 : dc->kind == Dc::Kind::memory ? dc->bitmap.object->bits : 32; }

} // namespace

std::shared_ptr<Bitmap> makeBitmap(int64_t width, int64_t height, int bits) {
  constexpr int64_t kMostPixels = INT32_MAX / sizeof(QRgb);
  if (width <= 0 || height <= 0 || width > kMostPixels || height > kMostPixels / width) return nullptr;
  auto bitmap = std::make_shared<Bitmap>(static_cast<int>(width), static_cast<int>(height), bits);
  bitmap->image = makeImage(bitmap->width, bitmap->height);
  bitmap->blank = true;
  return bitmap->image.isNull() ? nullptr : bitmap;
}

void ownPixels(QImage &image, bool keep) {
  if (image.isDetached()) return;
  QImage own = makeImage(image.width(), image.height());
  if (own.isNull()) return; // Qt makes a copy then, or has no memory either
  for (int y = 0; keep && y < image.height(); ++y)
    std::memcpy(own.scanLine(y), image.constScanLine(y), sizeof(QRgb) * static_cast<size_t>(image.width()));
  image = std::move(own);
}

bool sharePixels(const QImage &from, QImage &to) {
  const bool same = from.size() == to.size() && from.format() == to.format();
  if (!same || static_cast<size_t>(from.sizeInBytes()) < kSmallestKept) return false;
  to = from;
  return true;
}

HGDIOBJ emptyBitmap() {
  static const HGDIOBJ handle = openStock(makeBitmap(1, 1, 1));
  return handle;
}

} // namespace platform

using namespace platform;

HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height) {
  return locked<HBITMAP>(nullptr, [&]() -> HBITMAP {
    const auto context = dcOf(dc);
    if (!context) return nullptr;
    if (width == 0 || height == 0) return static_cast<HBITMAP>(emptyBitmap());
    return openBitmap(makeBitmap(std::abs(int64_t{width}), std::abs(int64_t{height}), bitsFor(context)));
  });
}

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bits, const void *data) {
  return locked<HBITMAP>(nullptr, [&]() -> HBITMAP {
    if (width == 0 || height == 0) return static_cast<HBITMAP>(emptyBitmap());
    const int64_t across = std::abs(int64_t{width}), down = std::abs(int64_t{height});
    const int known = planes == 1 ? roundedBits(bits) : 0;
    if (known == 0 || across > INT32_MAX / 32) return nullptr;
    if (known != 1 && known != 32) // no context takes it, so its pixels are out of anybody's reach
      return openBitmap(std::make_shared<Bitmap>(static_cast<int>(across), static_cast<int>(down), known));
    const auto bitmap = makeBitmap(across, down, known);
    if (bitmap && data) {
      readRows(*bitmap, static_cast<const uint8_t *>(data));
      bitmap->blank = false;
    }
    return openBitmap(bitmap);
  });
}

namespace {

size_t pitchOf(const BITMAPINFOHEADER &header) {
  return (static_cast<size_t>(header.biWidth) * header.biBitCount + 31) / 32 * 4;
}

int tellForm(const Bitmap &bitmap, BITMAPINFOHEADER &header) {
  header.biWidth = bitmap.width;
  header.biHeight = bitmap.height;
  header.biPlanes = 1;
  header.biBitCount = static_cast<WORD>(bitmap.bits);
  header.biCompression = bitmap.bits == 32 ? BI_BITFIELDS : BI_RGB;
  header.biSizeImage = static_cast<DWORD>(pitchOf(header) * static_cast<size_t>(bitmap.height));
  return bitmap.height;
}

// A row of the form; one outside of the bitmap is black, and so is what lies to the right of it.
// Result: whether it lies in the bitmap.
bool copyRow(const QImage &image, LONG y, const BITMAPINFOHEADER &header, uint8_t *row) {
  std::memset(row, 0, pitchOf(header));
  if (y >= image.height()) return false;
  const auto *const pixels = reinterpret_cast<const QRgb *>(image.constScanLine(static_cast<int>(y)));
  const size_t bytes = header.biBitCount / 8u;
  const auto count = static_cast<size_t>(std::min<LONG>(image.width(), header.biWidth));
  for (size_t x = 0; x < count; ++x) {
    const uint32_t colour = pixels[x] & 0xFFFFFF;
    for (size_t part = 0; part < bytes; ++part) row[x * bytes + part] = static_cast<uint8_t>(colour >> 8 * part);
  }
  return true;
}

// Result: the rows that lie in the bitmap.
int copyRows(const Bitmap &bitmap, UINT first, UINT rows, uint8_t *bits, const BITMAPINFOHEADER &header) {
  const LONG height = std::abs(header.biHeight), end = std::min<LONG>(height, static_cast<LONG>(first + rows));
  int copied = 0;
  for (LONG row = static_cast<LONG>(first); row < end; ++row, bits += pitchOf(header))
    copied += copyRow(bitmap.image, header.biHeight < 0 ? row : height - 1 - row, header, bits);
  return copied;
}

} // namespace

int GetDIBits(HDC dc, HBITMAP handle, UINT first, UINT rows, void *bits, BITMAPINFO *info, UINT colors) {
  return locked<int>(0, [&]() -> int {
    const auto bitmap = drawingHandles().get<Bitmap>(handle);
    if (!dcOf(dc) || !bitmap || !info || colors > DIB_PAL_COLORS) return 0;
    BITMAPINFOHEADER &header = info->bmiHeader;
    if (header.biSize < sizeof header) return 0;
    if (!bits && header.biBitCount == 0) return tellForm(*bitmap, header);
    const bool known = header.biBitCount == 24 || header.biBitCount == 32;
    constexpr LONG kMost = 1 << 20; // so that sizes are numbers still
    const bool sized = header.biWidth > 0 && header.biWidth < kMost && std::abs(header.biHeight + 0LL) < kMost;
    if (!known || !sized || header.biCompression != BI_RGB || bitmap->image.isNull()) return 0;
    header.biSizeImage = static_cast<DWORD>(pitchOf(header) * static_cast<size_t>(std::abs(header.biHeight)));
    if (!bits) return 1;
    bitmap->settle();
    return copyRows(*bitmap, std::min<UINT>(first, kMost), std::min<UINT>(rows, kMost), static_cast<uint8_t *>(bits),
                    header);
  });
}

HBITMAP CreateDIBitmap(HDC dc, const BITMAPINFOHEADER *header, DWORD init, const void *bits, const BITMAPINFO *info,
                       UINT colors) {
  constexpr size_t kUnknown = SIZE_MAX / 2; // the call doesn't tell how long its records are
  return locked<HBITMAP>(nullptr, [&]() -> HBITMAP {
    const auto context = dcOf(dc);
    if (!header || (dc && !context) || colors > DIB_PAL_COLORS) return nullptr;
    const bool filled = init & CBM_INIT;
    const std::optional<Dib> size = readForm(header, kUnknown);
    if (!size || (filled && (!bits || !info))) return nullptr;
    if (size->width == 0 || size->height == 0) return static_cast<HBITMAP>(emptyBitmap());
    const auto bitmap = makeBitmap(size->width, size->height, bitsFor(context));
    if (!bitmap || !filled) return openBitmap(bitmap);
    const Palette *palette = context ? context->palette.object : nullptr;
    const std::optional<Dib> dib = readDib(info, kUnknown, colors, palette);
    if (!dib || (dib->coded() && dib->imageSize == 0)) return nullptr;
    readPixels(*dib, static_cast<const uint8_t *>(bits), dib->coded() ? dib->imageSize : kUnknown, *bitmap);
    return openBitmap(bitmap);
  });
}
