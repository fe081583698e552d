#include "platform/desktop/drawing/wide.h"

#include "platform/desktop/drawing/polygon.h"

#include <climits>
#include <cmath>

namespace platform {

namespace {

// The round end of a line.
class Disc {
 public:
  explicit Disc(int width) : width_(width), rows_(width, width) {}

  void add(Spans &spans, POINT at, QPoint origin) const {
    const int64_t left = int64_t{at.x} - width_ / 2 + origin.x(), top = int64_t{at.y} - width_ / 2 + origin.y();
    const QRect &limits = spans.limits();
    if (left > limits.right() || left + width_ <= limits.left()) return;
    const int64_t first = std::max<int64_t>(top, limits.top());
    const int64_t last = std::min<int64_t>(top + width_ - 1, limits.bottom());
    for (int64_t y = first; y <= last; ++y) {
      const int margin = rows_.margin(static_cast<int>(y - top));
      spans.add(static_cast<int>(y), left + margin, left + width_ - margin);
    }
  }

 private:
  int width_;
  EllipseRows rows_;
};

// width x part / length, rounded up.
int64_t portion(int width, int64_t part, double length) {
  return static_cast<int64_t>(std::ceil(static_cast<double>(width) * static_cast<double>(std::abs(part)) / length));
}

POINT pointAt(int64_t x, int64_t y) {
  const auto limited = [](int64_t value) { return static_cast<int>(std::clamp<int64_t>(value, INT_MIN, INT_MAX)); };
  return {limited(x), limited(y)};
}

// The body of a line along a row or a column.
void addStraight(Spans &spans, POINT from, POINT to, int width, QPoint origin) {
  const int64_t before = width / 2, after = width - before;
  const bool level = from.y == to.y;
  const auto [left, right] = std::minmax(from.x, to.x);
  const auto [top, bottom] = std::minmax(from.y, to.y);
  const int64_t first = int64_t{top} - (level ? before : 0) + origin.y();
  const int64_t end = int64_t{bottom} + (level ? after : 0) + origin.y();
  const int64_t begin = int64_t{left} - (level ? 0 : before) + origin.x();
  const int64_t stop = int64_t{right} + (level ? 0 : after) + origin.x();
  const QRect &limits = spans.limits();
  for (int64_t y = std::max<int64_t>(first, limits.top()); y < std::min<int64_t>(end, limits.bottom() + 1); ++y)
    spans.add(static_cast<int>(y), begin, stop);
}

// The body of a slanting line without its ends: a rectangle whose corners lie whole numbers of pixels from the ends of
// the line. Of an odd number of columns the right side has one more. Of an odd number of rows the lower side has one
// more when the line rises to the right, and the upper side when it falls.
void addSegment(Spans &spans, POINT from, POINT to, int width, QPoint origin) {
  const int64_t dx = int64_t{to.x} - from.x, dy = int64_t{to.y} - from.y;
  if (dx == 0 || dy == 0) {
    addStraight(spans, from, to, width, origin);
    return;
  }
  const double length = std::hypot(static_cast<double>(dx), static_cast<double>(dy));
  const int64_t across = portion(width, dy, length), down = portion(width, dx, length);
  const bool falling = (dx > 0 && dy > 0) || (dx < 0 && dy < 0);
  const int64_t left = -(across / 2), right = left + across;
  const int64_t above = -(falling ? down - down / 2 : down / 2), below = above + down;
  const auto first = [&](POINT at) { return pointAt(at.x + left, at.y + (falling ? below : above)); };
  const auto second = [&](POINT at) { return pointAt(at.x + right, at.y + (falling ? above : below)); };
  const POINT corners[] = {first(from), first(to), second(to), second(from)};
  addPolygon(spans, corners, WINDING, origin);
}

} // namespace

Spans strokeOf(const Canvas &canvas, int width, std::span<const POINT> points, bool closed) {
  Spans spans(canvas);
  const Disc disc(width);
  for (size_t i = 0; i < points.size(); ++i) {
    disc.add(spans, points[i], canvas.origin);
    if (i + 1 < points.size())
      addSegment(spans, points[i], points[i + 1], width, canvas.origin);
    else if (closed)
      addSegment(spans, points[i], points[0], width, canvas.origin);
  }
  spans.settle();
  return spans;
}

} // namespace platform
