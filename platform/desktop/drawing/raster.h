// Pixels: spans, rectangles and masks on a canvas, with a colour or a hatch and one of the sixteen raster operations.
// Everything here works in pixels of the image.
#pragma once

#include "platform/desktop/drawing/dc.h"

#include <algorithm>
#include <span>
#include <vector>

namespace platform {

// What pixels are drawn with.
struct Ink {
  QRgb color = 0xFF000000u;       // 0xFFRRGGBB
  const uint8_t *hatch = nullptr; // 8 rows of 8 bits, the left pixel in the highest one; null for a solid ink
  QPoint hatchOrigin;             // in the image
  QRgb background = 0xFFFFFFFFu;  // between the lines of a hatch
  bool transparent = false;       // leaves those pixels alone instead
  int rop2 = R2_COPYPEN;
};

// What one colour does to a pixel under a raster operation: it keeps some bits and turns some.
struct Effect {
  QRgb keep, turn;

  QRgb on(QRgb pixel) const { return (pixel & keep) ^ turn; }
  bool copies() const { return keep == 0; }
};
Effect effectOf(int rop2, QRgb color);
// Applies an effect to pixels beside each other.
void applyTo(QRgb *pixels, int count, Effect effect);

// The colour that a canvas can show: on one of one bit, white where the colour is nearer to it.
QRgb shown(const Canvas &canvas, COLORREF color);
// The same for pens, hatches and text. On one bit they stand out from the background colour, unless they have it.
QRgb shownOn(const Canvas &canvas, COLORREF color, COLORREF background);
// The background that goes with such a colour.
QRgb backgroundShown(const Canvas &canvas, COLORREF color, COLORREF background);
// The ink of a solid brush. On one bit a colour between black and white is a pattern of both.
Ink solidInk(const Canvas &canvas, COLORREF color, POINT brushOrigin);
// A context's brush as ink; nothing for the null brush.
std::optional<Ink> inkOf(const Dc &dc, const Canvas &canvas, const Brush &brush);

// Each one keeps within the canvas' clip.
void fillRect(const Canvas &canvas, const QRect &rect, const Ink &ink);
void setPixel(const Canvas &canvas, QPoint at, const Ink &ink);

// What two rectangles share. Unlike Qt's own it takes rectangles wider than an int can say.
inline QRect common(const QRect &a, const QRect &b) {
  return QRect(QPoint(std::max(a.left(), b.left()), std::max(a.top(), b.top())),
               QPoint(std::min(a.right(), b.right()), std::min(a.bottom(), b.bottom())));
}

// The rectangles of a canvas' clip that reach into some rows. They lie in bands from top to bottom, and those of a band
// from left to right, so that of many only these cost time.
std::span<const QRect> clipAt(const Canvas &canvas, int top, int bottom);

// Draws many spans and rectangles with one ink, which outlives it.
class Filler {
 public:
  Filler(const Canvas &canvas, const Ink &ink);
  void rect(const QRect &rect) const;
  // Pixels of a row. right: outside.
  void row(int y, int left, int right) const;
  // A rectangle that lies within the clip.
  void part(const QRect &rect) const;

 private:
  void hatchPart(const QRect &rect) const;
  void hatchRow(QRgb *row, int count, int x, int y) const;

  const Canvas &canvas_;
  const Ink &ink_;
  const QRect clip_;  // round all rectangles of the canvas' clip
  const bool simple_; // there is just one
  const uint8_t *hatch_;
  QPoint hatchOrigin_;
  Effect line_, gap_;
};

// Rows of pixels from shapes that may overlap; each pixel is drawn once.
class Spans {
 public:
  // limits: what lies outside them is left out.
  explicit Spans(const QRect &limits) : limits_(limits) { rows_.reserve(64); }
  // Those of a canvas' clip.
  explicit Spans(const Canvas &canvas) : Spans(canvas.clip->boundingRect()) {}

  const QRect &limits() const { return limits_; }
  // right: outside.
  void add(int y, int64_t left, int64_t right) {
    const int64_t from = std::max<int64_t>(left, limits_.left()), to = std::min<int64_t>(right, limits_.right() + 1);
    if (from < to && y >= limits_.top() && y <= limits_.bottom())
      rows_.push_back({y, static_cast<int>(from), static_cast<int>(to)});
  }
  // Makes them an ordered set without overlaps.
  void settle();
  // Takes away what another settled set has.
  void remove(const Spans &other);
  void fill(const Canvas &canvas, const Ink &ink) const;

 private:
  struct Row {
    int y, left, right;

    bool operator<(const Row &other) const { return y != other.y ? y < other.y : left < other.left; }
  };
  void sortRows();

  QRect limits_;
  std::vector<Row> rows_;
};

} // namespace platform
