// Bitmaps from the program's resources and from files.

#include "platform/desktop/drawing/bitmaps.h"
#include "platform/desktop/drawing/blits.h"
#include "platform/desktop/drawing/dib.h"
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

std::vector<uint8_t> readWhole(const std::string &path) {
  std::error_code none;
  if (path.empty() || !std::filesystem::is_regular_file(path, none)) return {};
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

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

// bits: the pixels, or all that there is of them.
HBITMAP makeImage(const Dib &dib, Bytes bits, int width, int height) {
  constexpr int64_t kLargest = 0xFFFF;
  if (dib.width == 0 || dib.height == 0) return static_cast<HBITMAP>(emptyBitmap());
  if (dib.width > kLargest || dib.height > kLargest) return nullptr;
  if (dib.coded() && dib.imageSize > 0) bits = bits.first(std::min(bits.size(), dib.imageSize));
  const int depth = dib.blackAndWhite ? 1 : 32;
  const auto picture = makeBitmap(dib.width, dib.height, depth);
  if (!picture) return nullptr;
  readPixels(dib, bits.data(), bits.size(), *picture);
  if (width == 0) width = picture->width;
  if (height == 0) height = picture->height;
  if (width == picture->width && height == picture->height) return openObject<HBITMAP>(picture);
  const auto scaled = makeBitmap(width, height, depth);
  if (!scaled) return nullptr;
  scaled->settle();
  if (dib.bits == 1)
    stretch(picture->image, scaled->image);
  else
    smooth(picture->image, scaled->image);
  return openObject<HBITMAP>(scaled);
}

HBITMAP loadFile(const char *name, int width, int height) {
  const std::vector<uint8_t> file = readWhole(nativePath(name));
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

} // namespace

} // namespace platform

using namespace platform;

HANDLE LoadImageA(HINSTANCE instance, LPCSTR name, UINT type, int width, int height, UINT flags) {
  return locked<HANDLE>(nullptr, [&]() -> HANDLE {
    const auto number = reinterpret_cast<uintptr_t>(name);
    if (type != IMAGE_BITMAP || width < 0 || height < 0) return nullptr;
    if (flags & LR_LOADFROMFILE) return number > 0xFFFF ? loadFile(name, width, height) : nullptr;
    const bool own = instance && instance == GetModuleHandleA(nullptr);
    return own && number <= 0xFFFF ? loadResource(number, width, height) : nullptr;
  });
}
