#include "platform/desktop/drawing/wide.h"

#include "platform/desktop/drawing/polygon.h"

#include <climits>
#include <cmath>

namespace platform {

namespace {

void addDisc(Spans &spans, POINT at, int width, QPoint origin) {
  addEllipse(spans, QRect(at.x - width / 2, at.y - width / 2, width, width), origin);
}

// width x part / length, rounded up.
int64_t portion(int width, int64_t part, double length) {
  return static_cast<int64_t>(std::ceil(static_cast<double>(width) * static_cast<double>(std::abs(part)) / length));
}

POINT pointAt(int64_t x, int64_t y) {
  const auto limited = [](int64_t value) { return static_cast<int>(std::clamp<int64_t>(value, INT_MIN, INT_MAX)); };
  return {limited(x), limited(y)};
}

// The body of a line without its ends: a rectangle on its edge, whose corners are whole numbers of pixels from the line's.
// What can't be halved goes to the right, and down for a line that is level or rises to the right, else up.
void addSegment(Spans &spans, POINT from, POINT to, int width, QPoint origin) {
  const int64_t dx = int64_t{to.x} - from.x, dy = int64_t{to.y} - from.y;
  if (dx == 0 && dy == 0) return;
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
  for (size_t i = 0; i < points.size(); ++i) {
    addDisc(spans, points[i], width, canvas.origin);
    if (i + 1 < points.size())
      addSegment(spans, points[i], points[i + 1], width, canvas.origin);
    else if (closed)
      addSegment(spans, points[i], points[0], width, canvas.origin);
  }
  spans.settle();
  return spans;
}

} // namespace platform
