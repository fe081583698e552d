// Round boxes row by row, and Bezier curves as short lines.

#include "platform/desktop/drawing/curves.h"

#include <cmath>

namespace platform {

RoundBox::RoundBox(const QRect &box, int cornerWidth, int cornerHeight)
    : box_(box), cornerHeight_(std::clamp(cornerHeight, 1, box.height())),
      corner_(std::clamp(cornerWidth, 1, box.width()), cornerHeight_) {}

int RoundBox::margin(int y) const {
  const int fromEdge = std::min(y - box_.top(), box_.bottom() - y);
  return fromEdge < cornerHeight_ / 2 ? corner_.margin(fromEdge) : 0;
}

int RoundBox::line(int y) const {
  const int fromEdge = std::min(y - box_.top(), box_.bottom() - y);
  return fromEdge < cornerHeight_ / 2 ? corner_.line(fromEdge) : 1;
}

void RoundBox::addInside(Spans &spans, QPoint origin) const {
  const QRect rows = common(spans.limits().translated(-origin), box_);
  for (int y = rows.top(); y <= rows.bottom(); ++y) {
    const int free = margin(y);
    spans.add(y + origin.y(), box_.left() + free + origin.x(), box_.right() + 1 - free + origin.x());
  }
}

void RoundBox::addOutline(Spans &spans, QPoint origin) const {
  const QRect rows = common(spans.limits().translated(-origin), box_);
  for (int y = rows.top(); y <= rows.bottom(); ++y) {
    const int left = box_.left() + origin.x(), right = box_.right() + 1 + origin.x(), row = y + origin.y();
    const int free = margin(y), run = line(y);
    if (y == box_.top() || y == box_.bottom()) {
      spans.add(row, left + free, right - free);
    } else {
      spans.add(row, left + free, left + free + run);
      spans.add(row, right - free - run, right - free);
    }
  }
}

std::vector<POINT> RoundBox::path() const {
  std::vector<POINT> left, right;
  for (int y = box_.top(); y <= box_.bottom(); ++y) {
    const int free = margin(y);
    left.push_back({box_.left() + free, y});
    right.push_back({box_.right() - free, y});
  }
  left.insert(left.end(), right.rbegin(), right.rend());
  return left;
}

namespace {

// What a pen that goes along a round box covers.
Spans wideOutline(const Canvas &canvas, const QRect &box, int cornerWidth, int cornerHeight, int width) {
  const int before = width / 2, after = (width - 1) / 2;
  Spans spans(canvas);
  RoundBox(box.adjusted(-before, -before, after, after), cornerWidth + width - 1, cornerHeight + width - 1)
      .addInside(spans, canvas.origin);
  const QRect hole = box.adjusted(width - before, width - before, -(width - after), -(width - after));
  if (hole.isEmpty()) return spans;
  Spans inside(canvas);
  RoundBox(hole, cornerWidth - width - 1, cornerHeight - width - 1).addInside(inside, canvas.origin);
  spans.remove(inside);
  return spans;
}

// Where nothing of the corners is left it is a rectangle.
void drawRoundBox(const Dc &dc, const Canvas &canvas, QRect box, int cornerWidth, int cornerHeight) {
  const auto pencil = pencilOf(dc, canvas);
  const auto ink = inkOf(dc, canvas, *dc.brush.object);
  if (std::min({cornerWidth, cornerHeight, box.width(), box.height()}) <= 2) {
    drawRectangle(canvas, box, ink, pencil);
    return;
  }
  if (pencil && pencil->inside) box = insideFrame(box, pencil->width);
  if (box.isEmpty()) return;
  const RoundBox shape(box, cornerWidth, cornerHeight);
  const bool wide = pencil && pencil->width > 1;
  Spans outline(canvas), inside(canvas);
  if (wide)
    outline = wideOutline(canvas, box, cornerWidth, cornerHeight, pencil->width);
  else if (pencil)
    shape.addOutline(outline, canvas.origin);
  if (ink) {
    shape.addInside(inside, canvas.origin);
    if (wide) inside.remove(outline);
    inside.fill(canvas, *ink);
  }
  if (pencil && !pencil->dashes.empty())
    drawLines(canvas, *pencil, shape.path(), true);
  else if (pencil)
    outline.fill(canvas, pencil->ink);
}

// A corner's width or height in pixels; parts of pixels don't count.
int cornerOf(int length, int windowExtent, int viewportExtent) {
  const double pixels = std::abs(static_cast<double>(length) * viewportExtent / windowExtent);
  return static_cast<int>(std::min(pixels, 1e9));
}

struct Spot {
  double x, y;
};

Spot middle(Spot a, Spot b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2}; }

// Whether the control points lie so near the straight line that nobody sees the difference.
bool flat(const Spot (&curve)[4]) {
  const double dx = curve[3].x - curve[0].x, dy = curve[3].y - curve[0].y, length = std::hypot(dx, dy);
  for (const Spot &control : {curve[1], curve[2]}) {
    const double x = control.x - curve[0].x, y = control.y - curve[0].y;
    const double along = x * dx + y * dy;
    if (along < 0 || along > length * length || std::abs(x * dy - y * dx) > 0.3 * length)
      if (std::abs(x) + std::abs(y) > 0.5) return false;
  }
  return true;
}

void addCurve(const Spot (&curve)[4], int depth, std::vector<POINT> &points) {
  if (depth == 0 || flat(curve)) {
    points.push_back({static_cast<int>(std::floor(curve[3].x + 0.5)), static_cast<int>(std::floor(curve[3].y + 0.5))});
    return;
  }
  const Spot a = middle(curve[0], curve[1]), b = middle(curve[1], curve[2]), c = middle(curve[2], curve[3]);
  const Spot ab = middle(a, b), bc = middle(b, c), half = middle(ab, bc);
  addCurve({curve[0], a, ab, half}, depth - 1, points);
  addCurve({half, bc, c, curve[3]}, depth - 1, points);
}

// corners: the point where the curves begin, then three for each.
std::vector<POINT> flattened(std::span<const POINT> corners) {
  constexpr int kDepth = 10; // 1024 pieces are smooth at any size of a screen
  const auto spot = [](POINT point) { return Spot{double(point.x), double(point.y)}; };
  std::vector<POINT> points{corners[0]};
  for (size_t i = 0; i + 3 < corners.size(); i += 3)
    addCurve({spot(corners[i]), spot(corners[i + 1]), spot(corners[i + 2]), spot(corners[i + 3])}, kDepth, points);
  return points;
}

} // namespace

} // namespace platform

using namespace platform;

BOOL Ellipse(HDC dc, int left, int top, int right, int bottom) {
  return drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    const QRect box = deviceBox(context, left, top, right, bottom);
    if (!box.isEmpty()) drawRoundBox(context, canvas, box, box.width(), box.height());
    return box.translated(canvas.origin).adjusted(-100, -100, 100, 100);
  });
}

BOOL RoundRect(HDC dc, int left, int top, int right, int bottom, int width, int height) {
  return drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    const QRect box = deviceBox(context, left, top, right, bottom);
    if (!box.isEmpty())
      drawRoundBox(context, canvas, box, cornerOf(width, context.windowExtent.cx, context.viewportExtent.cx),
                   cornerOf(height, context.windowExtent.cy, context.viewportExtent.cy));
    return box.translated(canvas.origin).adjusted(-100, -100, 100, 100);
  });
}

BOOL PolyBezierTo(HDC dc, const POINT *points, DWORD count) {
  if (!points || count == 0 || count % 3 != 0) return FALSE;
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context) return FALSE;
    std::vector<POINT> corners{context->position};
    corners.insert(corners.end(), points, points + count);
    context->position = corners.back();
    const auto canvas = context->canvas();
    const auto pencil = canvas ? pencilOf(*context, *canvas) : std::nullopt;
    if (!pencil) return TRUE;
    const std::vector<POINT> path = flattened(toDevice(*context, corners));
    drawLines(*canvas, *pencil, path);
    context->drawn(boundsOf(*canvas, path, pencil->width));
    return TRUE;
  });
}
