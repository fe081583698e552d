// Bitmaps from the program's resources and from files, and copies of bitmaps and icons.

#include "platform/desktop/drawing/images.h"

#include "platform/desktop/drawing/bitmaps.h"
#include "platform/desktop/drawing/blits.h"
#include "platform/desktop/drawing/dib.h"
#include "platform/desktop/drawing/icons.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/paths.h"
#include "platform/kernel/resources.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <span>

namespace platform {

namespace {

using Bytes = std::span<const uint8_t>;

Bytes from(Bytes bytes, size_t at) { return at < bytes.size() ? bytes.subspan(at) : Bytes(); }

// A colour between two, each of its parts for itself.
QRgb between(QRgb a, QRgb b, double share) {
  const auto part = [&](int low) {
    const int first = static_cast<int>(a >> low & 0xFF), second = static_cast<int>(b >> low & 0xFF);
    return static_cast<QRgb>(std::floor(first + (second - first) * share + 0.5)) << low;
  };
  return 0xFF000000u | part(16) | part(8) | part(0);
}

// Where a pixel of a scaled picture lies between two of the picture.
struct Place {
  int first, second;
  double share;

  Place(int at, int size, int scaled) {
    const double exact = static_cast<double>(at) * size / scaled;
    first = static_cast<int>(exact);
    second = std::min(first + 1, size - 1);
    share = exact - first;
  }
};

void smooth(const QImage &picture, QImage &scaled) {
  for (int y = 0; y < scaled.height(); ++y) {
    const Place down(y, picture.height(), scaled.height());
    const auto *const upper = reinterpret_cast<const QRgb *>(picture.constScanLine(down.first));
    const auto *const lower = reinterpret_cast<const QRgb *>(picture.constScanLine(down.second));
    auto *const row = reinterpret_cast<QRgb *>(scaled.scanLine(y));
    for (int x = 0; x < scaled.width(); ++x) {
      const Place across(x, picture.width(), scaled.width());
      row[x] = between(between(upper[across.first], upper[across.second], across.share),
                       between(lower[across.first], lower[across.second], across.share), down.share);
    }
  }
}

// A bitmap in another size. sharp: made of the same pixels, instead of colours between theirs.
std::shared_ptr<Bitmap> resized(const Bitmap &picture, int width, int height, bool sharp) {
  auto scaled = makeBitmap(width, height, picture.bits);
  if (!scaled) return nullptr;
  scaled->settle();
  if (sharp)
    stretch(picture.image, scaled->image);
  else
    smooth(picture.image, scaled->image);
  return scaled;
}

// bits: the pixels, or all that there is of them.
HBITMAP makeImage(const Dib &dib, Bytes bits, int width, int height) {
  constexpr int64_t kLargest = 0xFFFF;
  if (dib.width == 0 || dib.height == 0) return static_cast<HBITMAP>(emptyBitmap());
  if (dib.width > kLargest || dib.height > kLargest) return nullptr;
  if (dib.coded() && dib.imageSize > 0) bits = bits.first(std::min(bits.size(), dib.imageSize));
  auto picture = makeBitmap(dib.width, dib.height, dib.blackAndWhite ? 1 : 32);
  if (!picture) return nullptr;
  readPixels(dib, bits.data(), bits.size(), *picture);
  if (width == 0) width = picture->width;
  if (height == 0) height = picture->height;
  if (width != picture->width || height != picture->height) picture = resized(*picture, width, height, dib.bits == 1);
  return picture ? openObject<HBITMAP>(picture) : nullptr;
}

HBITMAP loadFile(const char *name, int width, int height) {
  const std::vector<uint8_t> file = readWholeFile(name);
  const Bytes bytes(file);
  BITMAPFILEHEADER header;
  if (bytes.size() < sizeof header) return nullptr;
  std::memcpy(&header, bytes.data(), sizeof header);
  constexpr WORD kMark = 'B' | 'M' << 8;
  const Bytes info = from(bytes, sizeof header);
  const std::optional<Dib> dib =
      header.bfType == kMark ? readDib(info.data(), info.size(), DIB_RGB_COLORS, nullptr) : std::nullopt;
  if (!dib) return nullptr;
  return makeImage(*dib, header.bfOffBits ? from(bytes, header.bfOffBits) : from(info, dib->headerSize), width, height);
}

HBITMAP loadResource(uintptr_t id, int width, int height) {
  const PlatformResource *const found = findResource(PLATFORM_BITMAP_RESOURCE, static_cast<unsigned>(id));
  if (!found) return nullptr;
  const Bytes bytes(static_cast<const uint8_t *>(found->bytes), found->size);
  const std::optional<Dib> dib = readDib(bytes.data(), bytes.size(), DIB_RGB_COLORS, nullptr);
  return dib ? makeImage(*dib, from(bytes, dib->headerSize), width, height) : nullptr;
}

std::shared_ptr<Bitmap> twin(const Bitmap &bitmap) {
  auto copy = makeBitmap(bitmap.width, bitmap.height, bitmap.bits);
  if (!copy) return nullptr;
  std::memcpy(copy->image.bits(), bitmap.image.constBits(), static_cast<size_t>(bitmap.image.sizeInBytes()));
  copy->alpha = bitmap.alpha;
  copy->blank = false;
  return copy;
}

HANDLE copyBitmap(HANDLE handle, int width, int height, UINT flags) {
  const auto bitmap = drawingHandles().get<Bitmap>(handle);
  if (!bitmap || bitmap->image.isNull()) {
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
  }
  if (width == 0) width = bitmap->width;
  if (height == 0) height = bitmap->height;
  const bool same = width == bitmap->width && height == bitmap->height;
  if (same && flags & LR_COPYRETURNORG) return handle;
  bitmap->settle();
  const auto copy = same ? twin(*bitmap) : resized(*bitmap, width, height, bitmap->bits == 1);
  if (!copy) return nullptr;
  if (flags & LR_COPYDELETEORG) DeleteObject(handle);
  return openObject<HBITMAP>(copy);
}

} // namespace

std::vector<uint8_t> readWholeFile(const char *name) {
  const std::string path = existingPath(name);
  std::error_code none;
  if (path.empty() || !std::filesystem::is_regular_file(path, none)) return {};
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace platform

using namespace platform;

HANDLE LoadImageA(HINSTANCE instance, LPCSTR name, UINT type, int width, int height, UINT flags) {
  return locked<HANDLE>(nullptr, [&]() -> HANDLE {
    const auto number = reinterpret_cast<uintptr_t>(name);
    if (type > IMAGE_CURSOR || width < 0 || height < 0) return nullptr;
    if (type != IMAGE_BITMAP) return loadIcon(instance, name, type == IMAGE_CURSOR, {width, height}, flags);
    if (flags & LR_LOADFROMFILE) return number > 0xFFFF ? loadFile(name, width, height) : nullptr;
    const bool own = instance && instance == GetModuleHandleA(nullptr);
    return own && number <= 0xFFFF ? loadResource(number, width, height) : nullptr;
  });
}

HANDLE CopyImage(HANDLE image, UINT type, int width, int height, UINT flags) {
  return locked<HANDLE>(nullptr, [&]() -> HANDLE {
    if (type > IMAGE_CURSOR || width < 0 || height < 0) return nullptr;
    if (type == IMAGE_BITMAP) return copyBitmap(image, width, height, flags);
    return copyIcon(static_cast<HICON>(image), {width, height}, flags);
  });
}
