// Copying and combining rectangles of pixels. A ternary raster operation is a table of eight bits: the bit 4 x pattern
// + 2 x source + destination is the result.

#include "platform/desktop/drawing/blits.h"

#include "platform/desktop/drawing/bitmaps.h"
#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/drawing/raster.h"
#include "platform/desktop/lock.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

namespace platform {

namespace {

constexpr QRgb kColorBits = 0x00FFFFFFu, kOpaque = 0xFF000000u;
constexpr unsigned kCopy = SRCCOPY >> 16;

unsigned tableOf(DWORD operation) { return operation >> 16 & 0xFF; }
bool usesSource(unsigned table) { return ((table >> 2 ^ table) & 0x33) != 0; }
bool usesPattern(unsigned table) { return ((table >> 4 ^ table) & 0x0F) != 0; }
bool usesDestination(unsigned table) { return ((table >> 1 ^ table) & 0x55) != 0; }

// What an operation with one colour of the pattern does to a pixel: it keeps some bits and turns some, and which ones
// depends on the bits of the source.
struct Mix {
  QRgb keep, keepBySource, turn, turnBySource;

  QRgb on(QRgb pixel, QRgb source) const {
    return (pixel & (keep ^ (source & keepBySource))) ^ turn ^ (source & turnBySource);
  }
};

Mix mixOf(unsigned table, QRgb pattern) {
  const auto result = [&](int source, int destination) {
    const int bit = 2 * source + destination;
    return (table >> (4 + bit) & 1 ? pattern : 0u) | (table >> bit & 1 ? ~pattern : 0u);
  };
  const QRgb keep = result(0, 0) ^ result(0, 1), keepWithSource = result(1, 0) ^ result(1, 1);
  return {keep & kColorBits, (keep ^ keepWithSource) & kColorBits, result(0, 0) | kOpaque,
          (result(0, 0) ^ result(1, 0)) & kColorBits};
}

constexpr Mix kNothing = {~0u, 0, 0, 0};

// The pixels of a row, which the pattern divides into eights.
class Mixer {
 public:
  Mixer(unsigned table, const Ink &pattern)
      : pattern_(pattern), line_(mixOf(table, pattern.color)),
        gap_(pattern.transparent ? kNothing : mixOf(table, pattern.background)) {
    lanes_.fill(line_);
  }

  void row(QRgb *pixels, const QRgb *source, int count, QPoint at) {
    if (pattern_.hatch) turnTo(at);
    for (; count >= kLanes; count -= kLanes, pixels += kLanes, source += kLanes)
      for (size_t i = 0; i < kLanes; ++i) pixels[i] = lanes_[i].on(pixels[i], source[i]);
    for (size_t i = 0; i < static_cast<size_t>(count); ++i) pixels[i] = lanes_[i].on(pixels[i], source[i]);
  }

 private:
  static constexpr int kLanes = 8;

  void turnTo(QPoint at) {
    const unsigned bits = pattern_.hatch[(at.y() - pattern_.hatchOrigin.y()) & 7];
    for (int i = 0; i < kLanes; ++i)
      lanes_[static_cast<size_t>(i)] = bits & 0x80u >> ((at.x() + i - pattern_.hatchOrigin.x()) & 7) ? line_ : gap_;
  }

  const Ink &pattern_;
  const Mix line_, gap_;
  std::array<Mix, kLanes> lanes_;
};

// Changes colours where one bitmap has one bit and the other has more. On the way to one bit the background colour of
// the source becomes white, and every other colour black. On the way from one bit white becomes the background colour
// of the destination, and black its text colour.
class Conversion {
 public:
  Conversion() = default;
  Conversion(const Dc &to, bool toMono, const Dc &from)
      : fromMono_(from.kind == Dc::Kind::memory && from.bitmap.object->bits == 1), toMono_(toMono),
        black_(pixelOf(to.textColor, to.palette.object)), white_(pixelOf(to.bkColor, to.palette.object)),
        key_(pixelOf(from.bkColor, from.palette.object)) {}

  bool none() const { return fromMono_ == toMono_; }
  QRgb color(QRgb pixel) const {
    if (none()) return pixel;
    if (fromMono_) return pixel & 1 ? white_ : black_;
    return (pixel | kOpaque) == key_ ? 0xFFFFFFFFu : 0xFF000000u;
  }

 private:
  bool fromMono_ = false, toMono_ = false;
  QRgb black_ = 0, white_ = 0, key_ = 0;
};

int sum(int a, int b) { return static_cast<int>(std::clamp<int64_t>(int64_t{a} + b, INT32_MIN, INT32_MAX)); }

class Blit {
 public:
  Blit(const Canvas &canvas, const QImage &source, const Way &across, const Way &down, const Conversion &conversion)
      : canvas_(canvas), source_(source), across_(across), down_(down), conversion_(conversion) {}

  void draw(const QRect &area, unsigned table, const Ink &pattern) {
    direct_ = across_.straight() && conversion_.none();
    Mixer mixer(table, pattern);
    for (const QRect &clip : *canvas_.clip) {
      const QRect part = common(clip, area);
      for (int y = part.top(); y <= part.bottom() && part.width() > 0; ++y) {
        QRgb *const to = canvas_.row(y) + part.left();
        const QRgb *const from = sourceRow(part, y);
        if (table == kCopy)
          std::memcpy(to, from, sizeof(QRgb) * static_cast<size_t>(part.width()));
        else
          mixer.row(to, from, part.width(), QPoint(part.left(), y));
      }
    }
  }

 private:
  const QRgb *sourceRow(const QRect &part, int y) {
    const Way::Range rows = down_.source(y);
    if (direct_ && rows.first == rows.last) return rowAt(rows.first) + across_.source(part.left()).first;
    made_.resize(static_cast<size_t>(part.width()));
    for (int i = 0; i < part.width(); ++i)
      made_[static_cast<size_t>(i)] = conversion_.color(joined(across_.source(part.left() + i), rows));
    return made_.data();
  }

  // Pixels that come together leave the bits that all of them have, which keeps black lines on white.
  QRgb joined(const Way::Range &columns, const Way::Range &rows) const {
    QRgb color = ~0u;
    for (int64_t y = rows.first; y <= rows.last; ++y)
      for (int64_t x = columns.first; x <= columns.last; ++x) color &= rowAt(y)[x];
    return color;
  }

  const QRgb *rowAt(int64_t y) const {
    return reinterpret_cast<const QRgb *>(source_.constScanLine(static_cast<int>(y)));
  }

  const Canvas &canvas_;
  const QImage &source_;
  const Way &across_, &down_;
  const Conversion &conversion_;
  bool direct_ = false;
  std::vector<QRgb> made_;
};

// Copies within one image, in the order in which no pixel is overwritten before it is read.
void moveRows(const Canvas &canvas, const QRect &part, QPoint shift) {
  const size_t bytes = sizeof(QRgb) * static_cast<size_t>(part.width());
  for (int i = 0; i < part.height(); ++i) {
    const int y = shift.y() < 0 ? part.bottom() - i : part.top() + i;
    std::memmove(canvas.row(y) + part.left(), canvas.row(y + shift.y()) + part.left() + shift.x(), bytes);
  }
}

// A picture for paper, which can't be read. Pixels that a raster operation leaves alone become transparent. An
// operation that takes in the pixels below finds them all black or all white, whichever lets the source be seen. So a
// mask that is blackened first and a picture that is added to it come out right.
QImage pictureOf(const QImage &source, const QRect &part, unsigned table, QRgb pattern, const Conversion &conversion) {
  const Mix mix = mixOf(table, pattern);
  const auto shows = [&](QRgb below) { return ((mix.on(below, 0) ^ mix.on(below, ~0u)) & kColorBits) != 0; };
  const QRgb below = shows(kOpaque) ? kOpaque : ~0u;
  const bool keepsSome = usesDestination(table);
  QImage picture(part.size(), QImage::Format_ARGB32);
  for (int y = 0; y < picture.height(); ++y) {
    const auto *from = reinterpret_cast<const QRgb *>(source.constScanLine(part.top() + y)) + part.left();
    auto *to = reinterpret_cast<QRgb *>(picture.scanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb color = conversion.color(from[x]);
      const bool kept = keepsSome && ((mix.on(0, color) | ~mix.on(~0u, color)) & kColorBits) == 0;
      to[x] = kept ? 0 : mix.on(below, color) | kOpaque;
    }
  }
  return picture;
}

// The part of a box that shows a part of the source. Which way the box and the source go doesn't matter.
QRectF scaledPart(const QRect &to, const QRect &from, const QRect &part) {
  const double across = 1.0 * to.width() / from.width(), down = 1.0 * to.height() / from.height();
  return {to.left() + (part.left() - from.left()) * across, to.top() + (part.top() - from.top()) * down,
          part.width() * across, part.height() * down};
}

void printBox(const Dc &dc, const Canvas &canvas, const Box &to, Dc &source, const Box &from, unsigned table) {
  const QRect part = common(from.rect(), source.bounds());
  const Ink pattern = inkOf(dc, canvas, *dc.brush.object).value_or(Ink());
  if (part.isEmpty()) return;
  const Conversion conversion(dc, false, source);
  const QImage picture = pictureOf(*source.image(), part, table, pattern.color, conversion);
  if (picture.isNull()) throw std::bad_alloc();
  const bool across = to.x.flipped != from.x.flipped, down = to.y.flipped != from.y.flipped;
  const QRect whole = from.rect();
  const QRect seen(QPoint(across ? whole.left() + whole.right() - part.right() : part.left(),
                          down ? whole.top() + whole.bottom() - part.bottom() : part.top()),
                   part.size());
  canvas.paper->picture(*canvas.clip, scaledPart(to.rect(), whole, seen),
                        across || down ? picture.mirrored(across, down) : picture);
}

// Fills a box with the brush. An operation without a source is one of the sixteen of pens.
bool fillBox(Dc &dc, const QRect &area, unsigned table) {
  const bool covers = !usesDestination(table) && (!usesPattern(table) || dc.brush.object->style == BS_SOLID);
  const std::optional<Canvas> canvas = dc.canvas(covers ? area : QRect());
  if (!canvas) return true;
  std::optional<Ink> ink = usesPattern(table) ? inkOf(dc, *canvas, *dc.brush.object) : Ink();
  if (!ink) return true;
  ink->rop2 = static_cast<int>((table & 3) | (table >> 2 & 12)) + 1;
  fillRect(*canvas, area, *ink);
  dc.drawn(area);
  return true;
}

bool blitBox(Dc &dc, const Box &to, Dc &source, const Box &from, unsigned table) {
  QImage *const image = source.image();
  if (!image) return false;
  if (to.empty() || from.empty()) return true;
  const QRect bounds = source.bounds();
  const bool covers = table == kCopy && bounds.contains(from.rect());
  const std::optional<Canvas> canvas = dc.canvas(covers ? to.rect() : QRect());
  if (!canvas) return true;
  if (canvas->paper) {
    printBox(dc, *canvas, to, source, from, table);
    return true;
  }

  const Way across(to.x, from.x), down(to.y, from.y);
  const QRect clip = canvas->clip->boundingRect();
  const auto [left, right] = across.within(clip.left(), clip.right(), bounds.left(), bounds.right());
  const auto [top, bottom] = down.within(clip.top(), clip.bottom(), bounds.top(), bounds.bottom());
  const QRect area(QPoint(left, top), QPoint(right, bottom));
  if (area.isEmpty()) return true;

  Ink pattern; // nothing of the brush, where the operation has no use for it
  if (usesPattern(table)) pattern = inkOf(dc, *canvas, *dc.brush.object).value_or(Ink());
  const Conversion conversion(dc, canvas->mono, source);
  const bool plain = table == kCopy && across.straight() && down.straight() && conversion.none();
  const bool unmoved = across.shift() == 0 && down.shift() == 0;
  const bool whole = area == canvas->bounds && canvas->clip->rectCount() == 1;
  const bool shared = plain && unmoved && whole && sharePixels(*image, *dc.image());
  if (!shared && image != dc.image()) {
    Blit(*canvas, *image, across, down, conversion).draw(area, table, pattern);
  } else if (!shared && plain && canvas->clip->rectCount() == 1) {
    moveRows(*canvas, area, QPoint(static_cast<int>(across.shift()), static_cast<int>(down.shift())));
  } else if (!shared) {
    const QImage before = image->copy();
    Blit(*canvas, before, across, down, conversion).draw(area, table, pattern);
  }
  dc.drawn(area);
  return true;
}

} // namespace

Box boxOf(const Dc &dc, int x, int y, int width, int height) {
  const POINT begin = dc.toDevice(POINT{x, y}), end = dc.toDevice(POINT{sum(x, width), sum(y, height)});
  const int64_t dx = dc.origin.x(), dy = dc.origin.y();
  return {{begin.x + dx, end.x + dx}, {begin.y + dy, end.y + dy}};
}

void stretch(const QImage &from, QImage &to) {
  const QRegion all(to.rect());
  const Canvas canvas{reinterpret_cast<QRgb *>(to.bits()),
                      to.bytesPerLine() / qsizetype{sizeof(QRgb)},
                      to.rect(),
                      &all,
                      QPoint(),
                      false};
  const Conversion none;
  const Way across({0, to.width()}, {0, from.width()}), down({0, to.height()}, {0, from.height()});
  Blit(canvas, from, across, down, none).draw(to.rect(), kCopy, Ink());
}

} // namespace platform

using namespace platform;

BOOL BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, DWORD operation) {
  const unsigned table = tableOf(operation);
  if (!usesSource(table)) return PatBlt(dc, x, y, width, height, operation);
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto to = dcOf(dc), from = dcOf(source);
    if (!to || !from) return FALSE;
    return blitBox(*to, boxOf(*to, x, y, width, height), *from, boxOf(*from, sourceX, sourceY, width, height), table);
  });
}

BOOL PatBlt(HDC dc, int x, int y, int width, int height, DWORD operation) {
  const unsigned table = tableOf(operation);
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    return context && !usesSource(table) && fillBox(*context, boxOf(*context, x, y, width, height).rect(), table);
  });
}
