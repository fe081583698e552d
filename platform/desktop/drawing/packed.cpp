#include "platform/desktop/drawing/packed.h"

#include "platform/desktop/drawing/bitmaps.h"
#include "platform/desktop/drawing/dib.h"
#include "platform/desktop/drawing/iconfiles.h"

#include <QBuffer>

#include <algorithm>
#include <cstring>

namespace platform {

namespace {

using Bytes = std::span<const uint8_t>;

constexpr int64_t kMostCoded = int64_t{1} << 26; // pixels; few bytes of codes may tell of any number

// A BITMAPV5HEADER, which ends with 48 bytes for other colour spaces than this one.
struct V5Header {
  BITMAPINFOHEADER info;
  uint32_t masks[3];
  uint32_t alphaMask;
  uint32_t colorSpace;
  uint8_t unused[48];
  uint32_t intent;
  uint32_t profile[3];
};
static_assert(sizeof(V5Header) == kV5Header && sizeof(BITMAPINFOHEADER) == kInfoHeader);

constexpr uint32_t kStandardColors = 'B' | 'G' << 8 | 'R' << 16 | uint32_t{'s'} << 24, kImageIntent = 4;
constexpr size_t kAlphaMaskAt = 52;

template <typename Record> void append(std::string &bytes, const Record &record) {
  bytes.append(reinterpret_cast<const char *>(&record), sizeof record);
}
void append(std::string &bytes, Bytes more) { bytes.append(reinterpret_cast<const char *>(more.data()), more.size()); }

Bytes from(Bytes bytes, size_t at) { return at < bytes.size() ? bytes.subspan(at) : Bytes(); }

// What a header tells, and the pixels that belong to it.
struct Picture {
  Bytes header;
  Dib form;
  Bytes pixels;
};

// pixelsAt: where they begin; 0 for behind the header.
std::optional<Picture> pictureOf(Bytes bytes, size_t pixelsAt = 0) {
  const std::optional<Dib> form = readDib(bytes.data(), bytes.size(), DIB_RGB_COLORS, nullptr);
  if (!form || form->width == 0 || form->height == 0) return std::nullopt;
  Bytes pixels = from(bytes, pixelsAt ? pixelsAt : form->headerSize);
  if (form->coded()) {
    if (pixels.empty() || form->width > kMostCoded / form->height) return std::nullopt;
    return Picture{bytes, *form, pixels};
  }
  const auto rows = static_cast<size_t>(form->height);
  if (pixels.size() / rows < form->pitch()) return std::nullopt;
  return Picture{bytes, *form, pixels.first(form->pitch() * rows)};
}

std::string pack(const Picture &picture, DWORD headerSize) {
  V5Header header{};
  const Dib &form = picture.form;
  const auto height = static_cast<LONG>(form.height);
  header.info = {headerSize,
                 static_cast<LONG>(form.width),
                 form.topDown ? -height : height,
                 1,
                 static_cast<WORD>(form.bits),
                 form.compression,
                 static_cast<DWORD>(picture.pixels.size()),
                 0,
                 0,
                 0,
                 0};
  header.colorSpace = kStandardColors;
  header.intent = kImageIntent;
  DWORD size = headerSize;
  if (form.compression == BI_BITFIELDS) {
    std::copy(form.masks.begin(), form.masks.end(), header.masks);
    if (headerSize == kInfoHeader) size += sizeof header.masks; // they lie behind it
    DWORD own;
    std::memcpy(&own, picture.header.data(), sizeof own);
    if (own >= kAlphaMaskAt + sizeof header.alphaMask)
      std::memcpy(&header.alphaMask, picture.header.data() + kAlphaMaskAt, sizeof header.alphaMask);
  }
  std::string packed(reinterpret_cast<const char *>(&header), size);
  for (const QRgb color : form.colors) append(packed, static_cast<uint32_t>(color & 0xFFFFFFu));
  append(packed, picture.pixels);
  return packed;
}

void appendRow(std::string &bytes, const QImage &image, int y, int bits) {
  const auto *const row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
  const auto width = static_cast<size_t>(image.width());
  const size_t start = bytes.size();
  bytes.resize(start + (width * static_cast<size_t>(bits) + 31) / 32 * 4);
  if (bits == 32) {
    for (size_t x = 0; x < width; ++x) {
      const uint32_t pixel = row[x] & 0xFFFFFFu;
      std::memcpy(&bytes[start + x * 4], &pixel, sizeof pixel);
    }
    return;
  }
  for (size_t x = 0; x < width; ++x)
    if (row[x] & 0xFFFFFFu) bytes[start + x / 8] = static_cast<char>(bytes[start + x / 8] | 0x80 >> x % 8);
}

// A picture with alpha, over white.
QImage overWhite(const QImage &image) {
  QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < pixels.height(); ++y) {
    auto *const row = reinterpret_cast<QRgb *>(pixels.scanLine(y));
    std::transform(row, row + pixels.width(), row,
                   [](QRgb pixel) { return pixel + static_cast<QRgb>(255 - qAlpha(pixel)) * 0x01010101u; });
  }
  return pixels;
}

std::string dibOfBmp(Bytes file) {
  BITMAPFILEHEADER header;
  std::memcpy(&header, file.data(), sizeof header);
  const Bytes dib = from(file, sizeof header);
  if (header.bfOffBits != 0 && header.bfOffBits < sizeof header) return {};
  const auto picture = pictureOf(dib, header.bfOffBits ? header.bfOffBits - sizeof header : 0);
  return picture ? pack(*picture, kInfoHeader) : std::string();
}

std::string dibOfPng(Bytes file) {
  if (!isWholePng(file)) return {};
  const QImage image = QImage::fromData(file.data(), static_cast<int>(file.size()), "PNG");
  return image.isNull() ? std::string() : dibOfImage(overWhite(image), 32, false);
}

} // namespace

std::shared_ptr<Bitmap> bitmapOfDib(Bytes dib) {
  const std::optional<Picture> picture = pictureOf(dib);
  auto bitmap = picture ? makeBitmap(picture->form.width, picture->form.height, 32) : nullptr;
  if (bitmap) readPixels(picture->form, picture->pixels.data(), picture->pixels.size(), *bitmap);
  return bitmap;
}

std::string dibOfImage(const QImage &image, int bits, bool masks) {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof header;
  header.biWidth = image.width();
  header.biHeight = image.height();
  header.biPlanes = 1;
  header.biBitCount = static_cast<WORD>(bits);
  header.biCompression = bits == 32 && masks ? BI_BITFIELDS : BI_RGB;
  const size_t pitch = static_cast<size_t>((int64_t{image.width()} * bits + 31) / 32 * 4);
  header.biSizeImage = static_cast<DWORD>(pitch * static_cast<size_t>(image.height()));
  std::string dib;
  dib.reserve(sizeof header + 12 + header.biSizeImage);
  append(dib, header);
  if (header.biCompression == BI_BITFIELDS)
    for (const uint32_t mask : {0xFF0000u, 0x00FF00u, 0x0000FFu}) append(dib, mask);
  if (bits == 1)
    for (const uint32_t color : {0x000000u, 0xFFFFFFu}) append(dib, color);
  for (int y = image.height() - 1; y >= 0; --y) appendRow(dib, image, y, bits);
  return dib;
}

std::string dibWithHeader(Bytes dib, DWORD headerSize) {
  const std::optional<Picture> picture = pictureOf(dib);
  return picture ? pack(*picture, headerSize) : std::string();
}

std::string dibOfFile(Bytes file) {
  if (file.size() < sizeof(BITMAPFILEHEADER)) return {};
  return file[0] == 'B' && file[1] == 'M' ? dibOfBmp(file) : dibOfPng(file);
}

std::string bmpOfDib(Bytes dib) {
  const std::optional<Picture> picture = pictureOf(dib);
  if (!picture) return {};
  const std::string packed = pack(*picture, kInfoHeader);
  BITMAPFILEHEADER header{};
  header.bfType = 'B' | 'M' << 8;
  header.bfSize = static_cast<DWORD>(sizeof header + packed.size());
  header.bfOffBits = static_cast<DWORD>(header.bfSize - picture->pixels.size());
  std::string file;
  file.reserve(header.bfSize);
  append(file, header);
  return file += packed;
}

std::string pngOfImage(const QImage &image) {
  constexpr int kQuick = 90; // packing tighter takes many times longer
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  return image.save(&file, "PNG", kQuick) ? file.data().toStdString() : std::string();
}

} // namespace platform
