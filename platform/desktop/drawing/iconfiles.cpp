// Icon and cursor files: a list of images, each one either a bitmap with a mask behind it or a whole PNG file.
//
// What the list tells of an image is not trusted: size and depth are taken from the image itself, and one that reaches
// beyond the file, or has a form that icons don't have, is left out.

#include "platform/desktop/drawing/iconfiles.h"

#include "platform/desktop/drawing/dib.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <tuple>

namespace platform {

namespace {

using Bytes = std::span<const uint8_t>;

constexpr int64_t kLargest = 1024; // pixels in a direction; icons end at 256
constexpr uint16_t kIconFile = 1, kCursorFile = 2;
constexpr size_t kHead = 6, kEntry = 16;
constexpr std::array<uint8_t, 8> kPngMark = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr size_t kPngWidthAt = 16, kPngHeightAt = 20, kPngChunk = 12; // a chunk without what it holds
constexpr QRgb kWhite = 0xFFFFFFFFu, kBlack = 0xFF000000u;

uint16_t shortAt(Bytes bytes, size_t at) { return static_cast<uint16_t>(bytes[at] | bytes[at + 1] << 8); }
uint32_t longAt(Bytes bytes, size_t at) { return shortAt(bytes, at) | uint32_t{shortAt(bytes, at + 2)} << 16; }
uint32_t bigEndianAt(Bytes bytes, size_t at) { return __builtin_bswap32(longAt(bytes, at)); }

struct Image {
  SIZE size{0, 0};
  int bits = 0;
  POINT hotSpot{0, 0};
  Bytes bytes;
};

bool isPng(Bytes bytes) {
  return bytes.size() >= kPngHeightAt + 4 && std::equal(kPngMark.begin(), kPngMark.end(), bytes.begin());
}

// Whether all chunks of a PNG file are there. Its reader would complain to the user of one that is cut.
bool endsWell(Bytes png) {
  constexpr uint32_t kEnd = 'I' << 24 | 'E' << 16 | 'N' << 8 | 'D';
  for (size_t at = kPngMark.size(); at <= png.size() && png.size() - at >= kPngChunk;) {
    const size_t length = bigEndianAt(png, at);
    if (length > png.size() - at - kPngChunk) return false;
    if (bigEndianAt(png, at + 4) == kEnd) return true;
    at += kPngChunk + length;
  }
  return false;
}

bool setSize(Image &image, int64_t width, int64_t height) {
  if (width < 1 || height < 1 || width > kLargest || height > kLargest) return false;
  image.size = {static_cast<LONG>(width), static_cast<LONG>(height)};
  return true;
}

// A bitmap's header counts the rows of the mask too.
bool readHeader(Image &image) {
  if (isPng(image.bytes)) {
    image.bits = 32;
    return endsWell(image.bytes) &&
           setSize(image, bigEndianAt(image.bytes, kPngWidthAt), bigEndianAt(image.bytes, kPngHeightAt));
  }
  const std::optional<Dib> form = readForm(image.bytes.data(), image.bytes.size());
  if (!form || form->coded() || form->topDown) return false;
  image.bits = form->bits;
  return setSize(image, form->width, form->height / 2);
}

std::vector<Image> readList(Bytes file) {
  std::vector<Image> images;
  if (file.size() < kHead || shortAt(file, 0) != 0) return images;
  const uint16_t kind = shortAt(file, 2);
  if (kind != kIconFile && kind != kCursorFile) return images;
  const size_t count = std::min<size_t>(shortAt(file, 4), (file.size() - kHead) / kEntry);
  for (size_t i = 0; i < count; ++i) {
    const Bytes entry = file.subspan(kHead + i * kEntry, kEntry);
    const size_t size = longAt(entry, 8), offset = longAt(entry, 12);
    if (offset > file.size() || size > file.size() - offset) continue;
    Image image;
    image.bytes = file.subspan(offset, size);
    if (!readHeader(image)) continue;
    image.hotSpot =
        kind == kCursorFile ? POINT{shortAt(entry, 4), shortAt(entry, 6)} : POINT{image.size.cx / 2, image.size.cy / 2};
    images.push_back(image);
  }
  return images;
}

QRgb *row(QImage &image, LONG y) { return reinterpret_cast<QRgb *>(image.scanLine(static_cast<int>(y))); }

// Whether the fourth byte of the pixels means anything. Pictures from before there was alpha have zeros there.
bool hasAlpha(const Dib &dib, Bytes rows) {
  if (dib.bits != 32 || dib.compression != BI_RGB) return false;
  for (size_t i = 3; i < rows.size(); i += 4)
    if (rows[i] != 0) return true;
  return false;
}

void takeAlpha(const uint8_t *rows, QImage &color) {
  for (int y = color.height(); y-- > 0;) {
    QRgb *const line = row(color, y);
    for (int x = 0; x < color.width(); ++x, rows += 4) line[x] = (line[x] & ~kBlack) | QRgb{rows[3]} << 24;
  }
}

QImage readMask(const uint8_t *rows, SIZE size) {
  QImage mask = makePixels(size, QImage::Format_RGB32);
  const ptrdiff_t pitch = (ptrdiff_t{size.cx} + 31) / 32 * 4;
  for (LONG y = 0; y < size.cy; ++y, rows += pitch) {
    QRgb *const line = row(mask, size.cy - 1 - y);
    for (LONG x = 0; x < size.cx; ++x) line[x] = rows[x / 8] & 0x80 >> x % 8 ? kWhite : kBlack;
  }
  return mask;
}

// A mask that isn't there, or not as a whole, is what the alpha says.
std::optional<IconPicture> readBitmap(const Image &image) {
  const std::optional<Dib> dib = readDib(image.bytes.data(), image.bytes.size(), DIB_RGB_COLORS, nullptr);
  if (!dib || dib->headerSize > image.bytes.size()) return std::nullopt;
  const Bytes all = image.bytes.subspan(dib->headerSize);
  const auto height = static_cast<size_t>(image.size.cy);
  if (all.size() / dib->pitch() < height) return std::nullopt;
  const Bytes rows = all.first(height * dib->pitch()), behind = all.subspan(rows.size());
  IconPicture picture;
  picture.color = makePixels(image.size, QImage::Format_ARGB32);
  for (size_t y = 0; y < height; ++y)
    dib->readRow(rows.data() + y * dib->pitch(), row(picture.color, static_cast<LONG>(height - 1 - y)));
  picture.mono = dib->blackAndWhite;
  picture.alpha = hasAlpha(*dib, rows);
  if (picture.alpha) takeAlpha(rows.data(), picture.color);
  const size_t maskSize = static_cast<size_t>((image.size.cx + 31) / 32 * 4) * height;
  picture.mask = behind.size() < maskSize ? maskOf(picture.color) : readMask(behind.data(), image.size);
  return picture;
}

std::optional<IconPicture> readPng(const Image &image) {
  QImage read = QImage::fromData(image.bytes.data(), static_cast<int>(image.bytes.size()), "PNG");
  if (read.width() != image.size.cx || read.height() != image.size.cy) return std::nullopt;
  IconPicture picture;
  picture.alpha = read.hasAlphaChannel();
  picture.color = std::move(read).convertToFormat(QImage::Format_ARGB32);
  if (picture.color.isNull()) return std::nullopt;
  picture.mask = maskOf(picture.color);
  return picture;
}

class IconFile : public IconSource {
 public:
  explicit IconFile(std::vector<uint8_t> bytes) : own_(std::move(bytes)), images_(readList(own_)) {}
  explicit IconFile(Bytes bytes) : images_(readList(bytes)) {}

  bool empty() const { return images_.empty(); }
  SIZE firstSize() const override { return images_.front().size; }
  std::optional<IconPicture> pictureFor(SIZE size, Choice choice) const override {
    const auto merit = [&](const Image &image) { // the first of equals wins
      const bool small = choice == Choice::larger && (image.size.cx < size.cx || image.size.cy < size.cy);
      return std::tuple(small, std::abs(image.size.cx - size.cx) + std::abs(image.size.cy - size.cy), -image.bits);
    };
    const Image &best = *std::min_element(images_.begin(), images_.end(),
                                          [&](const Image &a, const Image &b) { return merit(a) < merit(b); });
    std::optional<IconPicture> picture = isPng(best.bytes) ? readPng(best) : readBitmap(best);
    if (picture) picture->hotSpot = best.hotSpot;
    return picture;
  }

 private:
  const std::vector<uint8_t> own_;
  const std::vector<Image> images_;
};

template <typename Held> std::shared_ptr<const IconSource> sourceOf(Held &&bytes) {
  auto file = std::make_shared<const IconFile>(std::forward<Held>(bytes));
  return file->empty() ? nullptr : file;
}

} // namespace

bool isWholePng(Bytes file) { return isPng(file) && endsWell(file); }

std::shared_ptr<const IconSource> readIcon(std::span<const uint8_t> bytes) { return sourceOf(bytes); }

std::shared_ptr<const IconSource> readIcon(std::vector<uint8_t> bytes) { return sourceOf(std::move(bytes)); }

} // namespace platform
