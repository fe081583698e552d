// Rectangles and polygons: filled with the brush and outlined with the pen.

#include "platform/desktop/drawing/shapes.h"

#include "platform/desktop/drawing/wide.h"

namespace platform {

QRect deviceBox(const Dc &dc, int left, int top, int right, int bottom) {
  const auto limited = [](POINT point) {
    return QPoint(std::clamp(point.x, -kFar, kFar), std::clamp(point.y, -kFar, kFar));
  };
  const QPoint a = limited(dc.toDevice(POINT{left, top})), b = limited(dc.toDevice(POINT{right, bottom}));
  return QRect(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
               QPoint(std::max(a.x(), b.x()) - 1, std::max(a.y(), b.y()) - 1));
}

QRect filledBox(const Dc &dc, int left, int top, int right, int bottom) {
  const POINT a = dc.toDevice(POINT{left, top}), b = dc.toDevice(POINT{right, bottom});
  const auto span = [](int from, int to) {
    from = std::clamp(from, -kFar, kFar);
    to = std::clamp(to, -kFar, kFar);
    return from <= to ? std::pair(from, to - 1) : std::pair(to + 1, from);
  };
  const auto [x, right_] = span(a.x, b.x);
  const auto [y, bottom_] = span(a.y, b.y);
  return QRect(QPoint(x, y), QPoint(right_, bottom_));
}

void drawPolygon(const Canvas &canvas, std::span<const POINT> points, int mode, const std::optional<Ink> &ink,
                 const std::optional<Pencil> &pencil) {
  if (canvas.paper) {
    canvas.paper->draw(*canvas.clip, pathOf(points, true), mode, ink ? &*ink : nullptr, pencil ? &*pencil : nullptr);
    return;
  }
  const bool wide = pencil && pencil->width > 1;
  const Spans outline = wide ? strokeOf(canvas, pencil->width, points, true) : Spans(canvas);
  if (ink) {
    Spans inside(canvas);
    addPolygon(inside, points, mode, canvas.origin);
    if (wide) inside.remove(outline);
    inside.fill(canvas, *ink);
  }
  if (wide)
    outline.fill(canvas, pencil->ink);
  else if (pencil)
    drawLines(canvas, *pencil, points, true);
}

// A frame with a hole: its rounded corners row by row, the rest as rectangles.
void drawWideFrame(const Canvas &canvas, const QRect &box, const std::optional<Ink> &ink, const Pencil &pencil) {
  const int width = pencil.width, before = width / 2, after = width - before - 1;
  const QRect outer = box.adjusted(-before, -before, after, after);
  const QRect hole = outer.adjusted(width, width, -width, -width);
  const auto shift = [&](int left, int top, int right, int bottom) {
    return QRect(QPoint(left, top), QPoint(right, bottom)).translated(canvas.origin);
  };
  const Filler filler(canvas, pencil.ink);
  const EllipseRows corner(width, width);
  for (int i = 0; i < before; ++i) {
    const int free = corner.margin(i), y = outer.top() + i;
    filler.rect(shift(outer.left() + free, y, outer.right() - free, y));
  }
  for (int i = before; i < width; ++i) {
    const int free = corner.margin(i), y = outer.bottom() - width + 1 + i;
    filler.rect(shift(outer.left() + free, y, outer.right() - free, y));
  }
  filler.rect(shift(outer.left(), box.top(), outer.right(), hole.top() - 1));
  filler.rect(shift(outer.left(), hole.top(), hole.left() - 1, hole.bottom()));
  filler.rect(shift(hole.right() + 1, hole.top(), outer.right(), hole.bottom()));
  filler.rect(shift(outer.left(), hole.bottom() + 1, outer.right(), box.bottom() - 1));
  if (ink) fillRect(canvas, hole.translated(canvas.origin), *ink);
}

void drawRectangle(const Canvas &canvas, QRect box, const std::optional<Ink> &ink,
                   const std::optional<Pencil> &pencil) {
  if (!pencil) {
    if (ink) fillRect(canvas, box.adjusted(0, 0, -1, -1).translated(canvas.origin), *ink);
    return;
  }
  if (pencil->inside) box = insideFrame(box, pencil->width);
  const std::array<POINT, 4> corners = frameOf(box);
  if (pencil->width > 1 || canvas.paper) {
    if (!canvas.paper && box.width() > 2 * pencil->width && box.height() > 2 * pencil->width)
      drawWideFrame(canvas, box, ink, *pencil);
    else
      drawPolygon(canvas, corners, WINDING, ink, pencil);
    return;
  }
  if (ink) fillRect(canvas, box.adjusted(1, 1, -1, -1).translated(canvas.origin), *ink);
  drawLines(canvas, *pencil, corners, true);
}

QRect reachOf(const Canvas &canvas, std::span<const POINT> corners, const std::optional<Pencil> &pencil) {
  return boundsOf(canvas, corners, pencil ? pencil->width : 0);
}

QRect insideFrame(QRect box, int width) {
  return box.adjusted(width / 2, width / 2, -((width - 1) / 2), -((width - 1) / 2));
}

std::array<POINT, 4> frameOf(const QRect &box) {
  return {POINT{box.right(), box.top()}, POINT{box.left(), box.top()}, POINT{box.left(), box.bottom()},
          POINT{box.right(), box.bottom()}};
}

} // namespace platform

using namespace platform;

int FillRect(HDC dc, const RECT *rect, HBRUSH brush) {
  const DesktopLock lock;
  const Brush *const found = brushOf(brush);
  if (!rect || !found) return 0;
  const auto boxIn = [&](const Dc &context) {
    return filledBox(context, rect->left, rect->top, rect->right, rect->bottom);
  };
  const auto draw = [&](const Dc &context, const Canvas &canvas) {
    auto ink = inkOf(context, canvas, *found);
    if (!ink) return QRect();
    ink->rop2 = R2_COPYPEN;
    const QRect box = boxIn(context).translated(canvas.origin);
    fillRect(canvas, box, *ink);
    return box;
  };
  const auto overwritten = [&](const Dc &context) { return found->style == BS_SOLID ? boxIn(context) : QRect(); };
  return drawOn(dc, draw, overwritten);
}

int FrameRect(HDC dc, const RECT *rect, HBRUSH brush) {
  const DesktopLock lock;
  const Brush *const found = drawingObject<Brush>(brush); // here a system colour is none
  if (!rect || !found || rect->left >= rect->right || rect->top >= rect->bottom) return 0;
  return drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    auto ink = inkOf(context, canvas, *found);
    if (!ink) return QRect();
    ink->rop2 = R2_COPYPEN;
    const Filler filler(canvas, *ink);
    const auto side = [&](int left, int top, int right, int bottom) {
      filler.rect(filledBox(context, left, top, right, bottom).translated(canvas.origin));
    };
    side(rect->left, rect->top, rect->right, rect->top + 1);
    side(rect->left, rect->bottom - 1, rect->right, rect->bottom);
    side(rect->left, rect->top, rect->left + 1, rect->bottom);
    side(rect->right - 1, rect->top, rect->right, rect->bottom);
    return deviceBox(context, rect->left, rect->top, rect->right, rect->bottom).translated(canvas.origin);
  });
}

BOOL Rectangle(HDC dc, int left, int top, int right, int bottom) {
  return drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    const QRect box = deviceBox(context, left, top, right, bottom);
    const auto ink = inkOf(context, canvas, *context.brush.object);
    const auto pencil = pencilOf(context, canvas);
    if (!box.isEmpty()) drawRectangle(canvas, box, ink, pencil);
    return reachOf(canvas, frameOf(box), pencil);
  });
}

BOOL Polygon(HDC dc, const POINT *points, int count) {
  if (!points || count < 2) return FALSE;
  return drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    const std::vector<POINT> mapped = toDevice(context, std::span(points, static_cast<size_t>(count)));
    const auto pencil = pencilOf(context, canvas);
    drawPolygon(canvas, mapped, context.polyFillMode, inkOf(context, canvas, *context.brush.object), pencil);
    return reachOf(canvas, mapped, pencil);
  });
}
