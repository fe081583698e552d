// Thin lines by integer steps. Wide ones are shapes, which wide.h makes.

#include "platform/desktop/drawing/lines.h"

#include "platform/desktop/drawing/wide.h"

#include <climits>
#include <cmath>

namespace platform {

namespace {

constexpr uint8_t kDash[] = {18, 6}, kDot[] = {3, 3}, kDashDot[] = {9, 6, 3, 6}, kDashDotDot[] = {9, 3, 3, 3, 3, 3};

std::span<const uint8_t> dashesOf(UINT style) {
  switch (style) {
  case PS_DASH: return kDash;
  case PS_DOT: return kDot;
  case PS_DASHDOT: return kDashDot;
  case PS_DASHDOTDOT: return kDashDotDot;
  default: return {};
  }
}

// Steps of a line.
struct Range {
  int64_t from, to; // to: outside

  Range operator&(Range other) const { return {std::max(from, other.from), std::min(to, other.to)}; }
};

// The pixels from one point towards another, the last one left out: step i is i pixels along the longer axis, and
// across it on the nearest pixel, the left or upper one of two equally near.
class Track {
 public:
  Track(POINT from, POINT to)
      : from_(from), dx_(int64_t{to.x} - from.x), dy_(int64_t{to.y} - from.y), steep_(std::abs(dy_) > std::abs(dx_)),
        along_(std::abs(steep_ ? dy_ : dx_)), across_(std::abs(steep_ ? dx_ : dy_)), back_((steep_ ? dy_ : dx_) < 0),
        up_((steep_ ? dx_ : dy_) < 0) {}

  int64_t length() const { return along_; }
  bool straight() const { return across_ == 0; }
  // Whether it runs along a row, whose pixels lie beside each other.
  bool level() const { return across_ == 0 && !steep_; }
  // The leftmost step of some on a row.
  int64_t leftmost(Range range) const { return back_ ? range.to - 1 : range.from; }
  // The steps that lie within some rows, and within some columns.
  Range rows(int top, int bottom) const {
    return steep_ ? alongWithin(from_.y, top, bottom) : acrossWithin(from_.y, top, bottom);
  }
  Range columns(int left, int right) const {
    return steep_ ? acrossWithin(from_.x, left, right) : alongWithin(from_.x, left, right);
  }
  int64_t columnAt(int64_t step) const {
    return from_.x + (steep_ ? (up_ ? -distanceAt(step) : distanceAt(step)) : (back_ ? -step : step));
  }

 private:
  friend class Walk;
  using Wide = __int128; // products of distances of 33 bits and more

  Range alongWithin(int64_t start, int64_t low, int64_t high) const {
    return Range{0, along_} & (back_ ? Range{start - high, start - low + 1} : Range{low - start, high - start + 1});
  }
  // Steps grow monotonously across, so that the first one at or beyond a distance bounds the range on either side.
  Range acrossWithin(int64_t start, int64_t low, int64_t high) const {
    return up_ ? Range{firstAt(start - high), firstAt(start - low + 1)}
               : Range{firstAt(low - start), firstAt(high - start + 1)};
  }
  int64_t firstAt(int64_t distance) const {
    if (distance <= 0) return 0;
    if (distance > across_) return along_;
    if (near()) return divide(2 * along_ * distance - half() + 2 * across_ - 1, 2 * across_);
    return static_cast<int64_t>((Wide{2} * along_ * distance - half() + Wide{2} * across_ - 1) / (Wide{2} * across_));
  }
  int64_t distanceAt(int64_t step) const {
    if (across_ == 0) return 0;
    if (near()) return divide(2 * across_ * step + half(), 2 * along_);
    return static_cast<int64_t>((Wide{2} * across_ * step + half()) / (Wide{2} * along_));
  }
  // As exact as whole numbers, and much faster than their division: what a double leaves out is no more than 1.
  static int64_t divide(int64_t value, int64_t by) {
    const auto about = static_cast<int64_t>(static_cast<double>(value) / static_cast<double>(by));
    const int64_t rest = value - about * by;
    return about + (rest < 0 ? -1 : rest >= by ? 1 : 0);
  }
  // Whether products of distances are numbers of 64 bits.
  bool near() const { return along_ < 1 << 30; }
  // What is added before the division, in units of 1 / (2 x along): ties go up and to the left.
  int64_t half() const { return along_ - (up_ ? 0 : 1); }

  POINT from_;
  int64_t dx_, dy_;
  bool steep_;
  int64_t along_, across_;
  bool back_, up_;
};

// Goes along a track and draws.
class Walk {
 public:
  Walk(const Canvas &canvas, const Track &track, int64_t step)
      : carry_(2 * track.across_), full_(std::max<int64_t>(2 * track.along_, 1)) {
    const int64_t distance = step == 0 ? 0 : track.distanceAt(step);
    rest_ = static_cast<int64_t>(Track::Wide{carry_} * step + track.half() - Track::Wide{full_} * distance);
    if (full_ <= kLongest) {
      slope_ = fractionOf(carry_);
      fraction_ = fractionOf(rest_);
    }
    const int64_t along = track.back_ ? -step : step, across = track.up_ ? -distance : distance;
    const int64_t x = track.from_.x + (track.steep_ ? across : along) + canvas.origin.x();
    const int64_t y = track.from_.y + (track.steep_ ? along : across) + canvas.origin.y();
    at_ = canvas.bits + y * canvas.pitch + x;
    const qsizetype alongStep = track.steep_ ? canvas.pitch : 1, acrossStep = track.steep_ ? 1 : canvas.pitch;
    along_ = track.back_ ? -alongStep : alongStep;
    across_ = track.up_ ? -acrossStep : acrossStep;
  }

  // Draws pixels beside each other.
  void drawLevel(int64_t count, Effect effect) { applyTo(at_, static_cast<int>(count), effect); }

  void draw(int64_t count, Effect effect) {
    if (effect.copies())
      walk(count, [turn = effect.turn](QRgb) { return turn; });
    else
      walk(count, [effect](QRgb pixel) { return effect.on(pixel); });
  }

 private:
  // Twice the length of the longest line whose slope is exact enough in so many bits: all steps together add less than
  // the smallest part that decides on a pixel, one of full_.
  static constexpr int kBits = 40;
  static constexpr int64_t kLongest = 1 << 20;

  // A part of full_, rounded up.
  uint64_t fractionOf(int64_t part) const { return static_cast<uint64_t>(((part << kBits) + full_ - 1) / full_); }

  template <typename Change> void walk(int64_t count, Change change) {
    if (full_ <= kLongest)
      slide(count, change);
    else
      step(count, change);
  }

  // No pixel's place waits for that of the one before.
  template <typename Change> void slide(int64_t count, Change change) {
    QRgb *at = at_;
    uint64_t fraction = fraction_;
    const auto place = [&]() -> QRgb & { return at[static_cast<qsizetype>(fraction >> kBits) * across_]; };
#pragma GCC unroll 4
    for (int64_t i = 0; i < count; ++i, at += along_, fraction += slope_) place() = change(place());
    at_ = &place();
    fraction_ = fraction & ((uint64_t{1} << kBits) - 1);
  }

  template <typename Change> void step(int64_t count, Change change) {
    QRgb *at = at_;
    int64_t rest = rest_;
    for (; count > 0; --count) {
      *at = change(*at);
      at += along_;
      rest += carry_;
      const bool over = rest >= full_;
      rest -= over ? full_ : 0;
      at += over ? across_ : 0;
    }
    at_ = at;
    rest_ = rest;
  }

  QRgb *at_;
  qsizetype along_, across_;
  int64_t carry_, full_, rest_;
  uint64_t slope_ = 0, fraction_ = 0; // the same as carry_ and rest_, with kBits behind the point
};

// How a thin pen marks the steps of its lines. The pattern of dashes goes on from one line to the next.
class Marks {
 public:
  Marks(const Canvas &canvas, const Pencil &pencil)
      : canvas_(canvas), clip_(canvas.clip->boundingRect()), simple_(canvas.clip->rectCount() == 1),
        dashes_(pencil.dashes), dash_(effectOf(pencil.ink.rop2, pencil.ink.color)) {
    if (dashes_.empty()) return;
    gap_ = pencil.gap.transparent ? effectOf(R2_NOP, 0) : effectOf(pencil.gap.rop2, pencil.gap.color);
    for (const uint8_t length : dashes_) period_ += length;
  }

  void line(POINT from, POINT to) {
    const Track track(from, to);
    if (track.length() == 0) return;
    if (simple_ && seen(from) && seen(to))
      part(track, {0, track.length()});
    else
      clipped(track, from.y, to.y);
    if (period_) phase_ = (phase_ + track.length()) % period_;
  }

 private:
  bool seen(POINT at) const {
    const int64_t x = int64_t{at.x} + canvas_.origin.x(), y = int64_t{at.y} + canvas_.origin.y();
    return x >= clip_.left() && x <= clip_.right() && y >= clip_.top() && y <= clip_.bottom();
  }

  void clipped(const Track &track, int fromRow, int toRow) const {
    const auto [top, bottom] = std::minmax(fromRow, toRow);
    const auto row = [&](int y) {
      return static_cast<int>(std::clamp<int64_t>(int64_t{y} + canvas_.origin.y(), -1, canvas_.bounds.bottom() + 1));
    };
    const std::span<const QRect> clip = clipAt(canvas_, row(top), row(bottom));
    for (size_t i = 0; i < clip.size();) {
      const QRect band = clip[i].translated(-canvas_.origin);
      const Range rows = track.rows(band.top(), band.bottom());
      const size_t first = i;
      while (i < clip.size() && clip[i].top() == clip[first].top()) ++i;
      if (rows.from < rows.to) inBand(track, rows, clip.subspan(first, i - first));
    }
  }

  // rows: the steps that lie in the rows of some rectangles beside each other.
  void inBand(const Track &track, Range rows, std::span<const QRect> clip) const {
    if (clip.size() == 1) {
      part(track, rows & track.columns(clip[0].left() - canvas_.origin.x(), clip[0].right() - canvas_.origin.x()));
      return;
    }
    const auto [left, right] = std::minmax({track.columnAt(rows.from), track.columnAt(rows.to - 1)});
    for (const QRect &rect : clip) {
      const int from = rect.left() - canvas_.origin.x(), to = rect.right() - canvas_.origin.x();
      if (right < from) break;
      if (left <= to) part(track, from <= left && right <= to ? rows : rows & track.columns(from, to));
    }
  }

  void part(const Track &track, Range range) const {
    if (range.from >= range.to) return;
    if (!period_ && track.level()) {
      Walk(canvas_, track, track.leftmost(range)).drawLevel(range.to - range.from, dash_);
      return;
    }
    Walk walk(canvas_, track, range.from);
    if (period_)
      dashed(walk, range);
    else
      walk.draw(range.to - range.from, dash_);
  }

  void dashed(Walk &walk, Range range) const {
    int64_t into = (phase_ + range.from) % period_;
    for (size_t i = 0; range.from < range.to; i = (i + 1) % dashes_.size()) {
      const int64_t count = std::min(dashes_[i] - into, range.to - range.from);
      into = std::max<int64_t>(0, into - dashes_[i]);
      if (count <= 0) continue;
      walk.draw(count, i % 2 ? gap_ : dash_);
      range.from += count;
    }
  }

  const Canvas &canvas_;
  const QRect clip_;  // round all rectangles of the canvas' clip
  const bool simple_; // there is just one
  std::span<const uint8_t> dashes_;
  Effect dash_, gap_{};
  int64_t period_ = 0, phase_ = 0;
};

// A pen's width in pixels.
int widthOf(const Dc &dc, int width) {
  constexpr int kWidest = 1 << 16; // covers any image
  if (dc.unmapped()) return std::clamp(width, 1, kWidest);
  const double scale = static_cast<double>(dc.viewportExtent.cx) / dc.windowExtent.cx;
  return static_cast<int>(std::clamp<double>(std::abs(std::floor(width * scale + 0.5)), 1, kWidest));
}

} // namespace

std::optional<Pencil> pencilOf(const Dc &dc, const Canvas &canvas) {
  const Pen &pen = *dc.pen.object;
  if (pen.style == PS_NULL) return std::nullopt;
  Pencil pencil;
  pencil.width = widthOf(dc, pen.width);
  pencil.inside = pen.style == PS_INSIDEFRAME;
  // on paper the pixels of a line that is thin on the screen are many
  if (pencil.width == 1 || (canvas.paper && pen.width <= 1)) pencil.dashes = dashesOf(pen.style);
  pencil.ink.rop2 = dc.rop2;
  pencil.ink.color = shownOn(canvas, pen.color, dc.bkColor);
  if (pencil.dashes.empty()) return pencil;
  pencil.gap.rop2 = dc.rop2;
  pencil.gap.color = backgroundShown(canvas, pen.color, dc.bkColor);
  pencil.gap.transparent = dc.bkMode == TRANSPARENT;
  return pencil;
}

PaperPath pathOf(std::span<const POINT> points, bool closed) {
  PaperPath path;
  for (const POINT &point : points)
    if (path.steps.empty())
      path.move(point.x + 0.5, point.y + 0.5);
    else
      path.line(point.x + 0.5, point.y + 0.5);
  if (closed) path.close();
  return path;
}

void drawLines(const Canvas &canvas, const Pencil &pencil, std::span<const POINT> points, bool closed) {
  if (points.empty()) return;
  if (canvas.paper) {
    canvas.paper->draw(*canvas.clip, pathOf(points, closed), ALTERNATE, nullptr, &pencil);
    return;
  }
  if (pencil.width > 1) {
    Spans spans = strokeOf(canvas, pencil.width, points, closed);
    spans.fill(canvas, pencil.ink);
    return;
  }
  Marks marks(canvas, pencil);
  for (size_t i = 1; i < points.size(); ++i) marks.line(points[i - 1], points[i]);
  if (closed) marks.line(points.back(), points.front());
}

QRect boundsOf(const Canvas &canvas, std::span<const POINT> points, int more) {
  int64_t left = INT_MAX, top = INT_MAX, right = INT_MIN, bottom = INT_MIN;
  for (const POINT &point : points) {
    left = std::min<int64_t>(left, point.x);
    right = std::max<int64_t>(right, point.x);
    top = std::min<int64_t>(top, point.y);
    bottom = std::max<int64_t>(bottom, point.y);
  }
  const QRect &all = canvas.bounds;
  const auto across = [&](int64_t x) {
    return static_cast<int>(std::clamp<int64_t>(x + canvas.origin.x(), all.left() - 1, all.right() + 1));
  };
  const auto down = [&](int64_t y) {
    return static_cast<int>(std::clamp<int64_t>(y + canvas.origin.y(), all.top() - 1, all.bottom() + 1));
  };
  return QRect(QPoint(across(left - more), down(top - more)), QPoint(across(right + more), down(bottom + more)));
}

std::vector<POINT> toDevice(const Dc &dc, std::span<const POINT> logical) {
  std::vector<POINT> points(logical.begin(), logical.end());
  if (!dc.unmapped())
    for (POINT &point : points) point = dc.toDevice(point);
  return points;
}

} // namespace platform

using namespace platform;

BOOL MoveToEx(HDC dc, int x, int y, POINT *previous) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context) return FALSE;
    if (previous) *previous = context->position;
    context->position = {x, y};
    return TRUE;
  });
}

BOOL LineTo(HDC dc, int x, int y) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context) return FALSE;
    const POINT points[] = {context->toDevice(context->position), context->toDevice(POINT{x, y})};
    context->position = {x, y};
    if (const auto canvas = context->canvas())
      if (const auto pencil = pencilOf(*context, *canvas)) {
        drawLines(*canvas, *pencil, points);
        if (context->surface) context->drawn(boundsOf(*canvas, points, pencil->width));
      }
    return TRUE;
  });
}

BOOL Polyline(HDC dc, const POINT *points, int count) {
  if (!points || count < 2) return FALSE;
  return drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    const auto pencil = pencilOf(context, canvas);
    if (!pencil) return QRect();
    const std::vector<POINT> mapped = toDevice(context, std::span(points, static_cast<size_t>(count)));
    drawLines(canvas, *pencil, mapped);
    return boundsOf(canvas, mapped, pencil->width);
  });
}

COLORREF SetPixel(HDC dc, int x, int y, COLORREF color) {
  COLORREF result = CLR_INVALID;
  drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    const POINT at = context.toDevice(POINT{x, y});
    const QRect pixel = boundsOf(canvas, std::span(&at, 1));
    Ink ink;
    ink.color = shown(canvas, color);
    ink.rop2 = context.rop2;
    setPixel(canvas, pixel.topLeft(), ink);
    result = fromQt(ink.color);
    return pixel;
  });
  return result;
}

// The clip of the application does not hide pixels from it.
COLORREF GetPixel(HDC dc, int x, int y) {
  return locked<COLORREF>(CLR_INVALID, [&]() -> COLORREF {
    const auto context = dcOf(dc);
    if (!context || !context->image()) return CLR_INVALID;
    const POINT at = context->toDevice(POINT{x, y});
    const QRect &all = context->image()->rect();
    const int64_t column = int64_t{at.x} + context->origin.x(), row = int64_t{at.y} + context->origin.y();
    if (column < all.left() || column > all.right() || row < all.top() || row > all.bottom()) return CLR_INVALID;
    const QPoint pixel(static_cast<int>(column), static_cast<int>(row));
    if (context->kind == Dc::Kind::window && !context->readable.contains(pixel)) return CLR_INVALID;
    return fromQt(reinterpret_cast<const QRgb *>(context->image()->constScanLine(pixel.y()))[pixel.x()]);
  });
}
