#include "platform/desktop/drawing/dib.h"

#include "platform/desktop/drawing/raster.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace platform {

namespace {

constexpr QRgb kBlack = 0xFF000000u;
constexpr DWORD kCoreHeader = 12;                        // with sizes of 16 bits, and colours of three bytes
constexpr DWORD kHeaders[] = {40, 52, 56, 64, 108, 124}; // each one begins as the first
constexpr size_t kMasksAt = 40;

template <typename Number> Number numberAt(const uint8_t *bytes, size_t at) {
  Number number;
  std::memcpy(&number, bytes + at, sizeof number);
  return number;
}

// Reads the fixed part of a header. Result: its size, 0 for none.
DWORD readFields(const uint8_t *bytes, size_t size, BITMAPINFOHEADER &fields) {
  if (size < sizeof(DWORD)) return 0;
  const auto own = numberAt<DWORD>(bytes, 0);
  if (own > size) return 0;
  if (own == kCoreHeader) {
    fields.biWidth = numberAt<WORD>(bytes, 4);
    fields.biHeight = numberAt<WORD>(bytes, 6);
    fields.biPlanes = numberAt<WORD>(bytes, 8);
    fields.biBitCount = numberAt<WORD>(bytes, 10);
    return own;
  }
  if (std::find(std::begin(kHeaders), std::end(kHeaders), own) == std::end(kHeaders)) return 0;
  std::memcpy(&fields, bytes, sizeof fields);
  return own;
}

bool fits(const BITMAPINFOHEADER &fields) {
  const auto hasBits = [&](std::initializer_list<int> some) {
    return std::find(some.begin(), some.end(), fields.biBitCount) != some.end();
  };
  if (fields.biPlanes == 0 || fields.biWidth < 0 || fields.biHeight == INT32_MIN) return false;
  switch (fields.biCompression) {
  case BI_RGB: return hasBits({1, 4, 8, 16, 24, 32});
  case BI_BITFIELDS: return hasBits({16, 32});
  case BI_RLE4: return hasBits({4}) && fields.biHeight >= 0;
  case BI_RLE8: return hasBits({8}) && fields.biHeight >= 0;
  default: return false;
  }
}

// The colour of an entry: three bytes, or a number of the palette, which begins again where it ends.
QRgb colorAt(const uint8_t *entry, UINT usage, const Palette *palette) {
  if (usage != DIB_PAL_COLORS) return qRgb(entry[2], entry[1], entry[0]);
  if (!palette || palette->entries.empty()) return kBlack;
  const PALETTEENTRY &color = palette->entries[numberAt<WORD>(entry, 0) % palette->entries.size()];
  return qRgb(color.peRed, color.peGreen, color.peBlue);
}

void readColors(Dib &dib, const uint8_t *bytes, size_t size, UINT usage, const Palette *palette) {
  const size_t most = dib.bits <= 8 ? size_t{1} << dib.bits : 0, told = dib.colorsUsed;
  const size_t count = most == 0 ? told : told == 0 ? most : std::min(told, most);
  const size_t entry = usage == DIB_PAL_COLORS ? 2 : dib.headerSize == kCoreHeader ? 3 : 4;
  const size_t first = dib.headerSize;
  dib.headerSize += count * entry;
  for (size_t i = 0; i < std::min(count, most) && size - first >= (i + 1) * entry; ++i)
    dib.colors.push_back(colorAt(bytes + first + i * entry, usage, palette));
  dib.colors.resize(most, kBlack);
}

// The bits of a mask from its lowest one up, as 8 bits.
uint32_t channel(uint32_t pixel, uint32_t mask) {
  const int low = std::countr_zero(mask), length = std::countr_one(mask >> low);
  const uint32_t value = pixel >> low & (length < 32 ? (1u << length) - 1 : ~0u);
  if (length >= 8) return value >> (length - 8);
  const uint32_t high = value << (8 - length);
  return high | high >> length;
}

class Channels {
 public:
  explicit Channels(const std::array<uint32_t, 3> &masks) : masks_(masks) {}
  QRgb color(uint32_t pixel) const {
    return kBlack | channel(pixel, masks_[0]) << 16 | channel(pixel, masks_[1]) << 8 | channel(pixel, masks_[2]);
  }

 private:
  const std::array<uint32_t, 3> &masks_;
};

// Run-length coded pixels, from the bottom row up. What they leave out stays as it is.
class Runs {
 public:
  Runs(const Dib &dib, const uint8_t *codes, size_t size, QImage &image)
      : dib_(dib), at_(codes), end_(codes + size), image_(image) {}

  void read() {
    while (end_ - at_ >= 2 && y_ < dib_.height) {
      const int count = *at_++, code = *at_++;
      if (count > 0)
        repeat(count, code);
      else if (code > 2)
        single(code);
      else if (!move(code))
        return;
    }
  }

 private:
  void repeat(int count, int code) {
    for (int i = 0; i < count; ++i) put(dib_.bits == 8 ? code : i % 2 == 0 ? code >> 4 : code & 15);
  }

  // Pixels one by one, filled up to a word.
  void single(int count) {
    const ptrdiff_t bytes = dib_.bits == 8 ? count : (count + 1) / 2;
    const uint8_t *const next = at_ + std::min((bytes + 1) / 2 * 2, end_ - at_);
    if (bytes <= end_ - at_)
      for (int i = 0; i < count; ++i) put(dib_.bits == 8 ? at_[i] : i % 2 == 0 ? at_[i / 2] >> 4 : at_[i / 2] & 15);
    at_ = next;
  }

  // To the next row, or further off. Result: false at the end.
  bool move(int code) {
    if (code == 1) return false;
    if (code == 0) {
      x_ = 0;
      ++y_;
      return true;
    }
    if (end_ - at_ < 2) return false;
    x_ += *at_++;
    y_ += *at_++;
    return true;
  }

  void put(int index) {
    const int64_t row = dib_.height - 1 - y_;
    if (x_ < std::min<int64_t>(dib_.width, image_.width()) && row >= 0 && row < image_.height())
      reinterpret_cast<QRgb *>(image_.scanLine(static_cast<int>(row)))[x_] = dib_.colors[static_cast<size_t>(index)];
    ++x_;
  }

  const Dib &dib_;
  const uint8_t *at_;
  const uint8_t *const end_;
  QImage &image_;
  int64_t x_ = 0, y_ = 0;
};

void readRows(const Dib &dib, const uint8_t *bits, size_t size, QImage &image) {
  const size_t pitch = dib.pitch();
  const auto count = static_cast<size_t>(std::min<int64_t>(dib.width, image.width())) * sizeof(QRgb);
  std::vector<QRgb> pixels(static_cast<size_t>(dib.width));
  std::vector<uint8_t> last;
  for (int64_t line = 0; line < dib.height && size > 0; ++line) {
    const uint8_t *row = bits;
    if (size < pitch) {
      last.assign(pitch, 0);
      std::copy_n(bits, size, last.begin());
      row = last.data();
    }
    const int64_t y = dib.topDown ? line : dib.height - 1 - line;
    if (y < image.height()) {
      dib.readRow(row, pixels.data());
      std::memcpy(image.scanLine(static_cast<int>(y)), pixels.data(), count);
    }
    bits += std::min(pitch, size);
    size -= std::min(pitch, size);
  }
}

} // namespace

void Dib::readRow(const uint8_t *row, QRgb *pixels) const {
  const auto count = static_cast<size_t>(width);
  const auto pixelBits = static_cast<size_t>(bits);
  if (bits <= 8) {
    const auto mask = static_cast<unsigned>(colors.size() - 1);
    for (size_t x = 0; x < count; ++x) {
      const size_t bit = x * pixelBits;
      pixels[x] = colors[row[bit / 8] >> (8 - pixelBits - bit % 8) & mask];
    }
  } else if (bits == 24) {
    for (size_t x = 0; x < count; ++x, row += 3) pixels[x] = qRgb(row[2], row[1], row[0]);
  } else if (bits == 32 && compression == BI_RGB) {
    for (size_t x = 0; x < count; ++x) pixels[x] = kBlack | numberAt<uint32_t>(row, x * 4);
  } else {
    const Channels channels(masks);
    for (size_t x = 0; x < count; ++x)
      pixels[x] = channels.color(bits == 16 ? numberAt<uint16_t>(row, x * 2) : numberAt<uint32_t>(row, x * 4));
  }
}

std::optional<Dib> readForm(const void *header, size_t size) {
  BITMAPINFOHEADER fields{};
  Dib dib;
  dib.headerSize = readFields(static_cast<const uint8_t *>(header), size, fields);
  if (dib.headerSize == 0 || !fits(fields)) return std::nullopt;
  dib.width = fields.biWidth;
  dib.height = std::abs(int64_t{fields.biHeight});
  dib.topDown = fields.biHeight < 0;
  dib.bits = fields.biBitCount;
  dib.compression = fields.biCompression;
  dib.colorsUsed = fields.biClrUsed;
  dib.imageSize = fields.biSizeImage;
  return dib;
}

std::optional<Dib> readDib(const void *header, size_t size, UINT usage, const Palette *palette) {
  const auto *const bytes = static_cast<const uint8_t *>(header);
  std::optional<Dib> dib = readForm(header, size);
  if (!dib) return std::nullopt;
  if (dib->compression == BI_BITFIELDS) {
    if (size < kMasksAt + sizeof dib->masks) return std::nullopt;
    std::memcpy(dib->masks.data(), bytes + kMasksAt, sizeof dib->masks);
    if (std::count(dib->masks.begin(), dib->masks.end(), 0u) > 0) return std::nullopt;
    dib->headerSize = std::max(dib->headerSize, kMasksAt + sizeof dib->masks);
  } else if (dib->bits == 16) {
    dib->masks = {0x7C00, 0x03E0, 0x001F};
  }
  readColors(*dib, bytes, size, usage, palette);
  dib->blackAndWhite = dib->bits == 1 && dib->colors == std::vector<QRgb>{kBlack, 0xFFFFFFFFu};
  return dib;
}

void readPixels(const Dib &dib, const uint8_t *bits, size_t size, Bitmap &bitmap) {
  QImage &image = bitmap.image;
  image.fill(Qt::black);
  bitmap.blank = false;
  if (dib.coded())
    Runs(dib, bits, size, image).read();
  else
    readRows(dib, bits, size, image);
  if (bitmap.bits != 1) return;
  const Canvas canvas{nullptr, 0, {}, nullptr, {}, true};
  for (int y = 0; y < image.height(); ++y) {
    auto *const row = reinterpret_cast<QRgb *>(image.scanLine(y));
    std::transform(row, row + image.width(), row, [&](QRgb pixel) { return shown(canvas, fromQt(pixel)); });
  }
}

} // namespace platform
