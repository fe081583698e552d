// Round boxes row by row, and Bezier curves as short lines.

#include "platform/desktop/drawing/curves.h"

#include "platform/desktop/drawing/wide.h"

#include <cmath>
#include <iterator>

namespace platform {

RoundBox::RoundBox(const QRect &box, int cornerWidth, int cornerHeight)
    : box_(box), cornerHeight_(std::clamp(cornerHeight, 1, box.height())),
      corner_(std::clamp(cornerWidth, 1, box.width()), cornerHeight_) {}

int RoundBox::margin(int y) const {
  const int fromEdge = std::min(y - box_.top(), box_.bottom() - y);
  return fromEdge < (cornerHeight_ + 1) / 2 ? corner_.margin(fromEdge) : 0;
}

int RoundBox::line(int y) const {
  const int fromEdge = std::min(y - box_.top(), box_.bottom() - y);
  return fromEdge < (cornerHeight_ + 1) / 2 ? corner_.line(fromEdge) : 1;
}

// The rows between the corners, some of which may lie outside the limits.
QRect RoundBox::between(const QRect &limits) const {
  const int corner = (cornerHeight_ + 1) / 2;
  return common(limits, box_.adjusted(0, corner, 0, -corner));
}

template <typename Draw> void RoundBox::inside(const QRect &limits, Draw draw) const {
  const QRect rows = common(limits, box_), straight = between(limits);
  for (int y = rows.top(); y <= rows.bottom(); ++y) {
    if (y == straight.top() && !straight.isEmpty()) {
      draw(straight);
      y = straight.bottom();
    } else if (line(y) > 0) {
      draw(QRect(QPoint(box_.left() + margin(y), y), QPoint(box_.right() - margin(y), y)));
    }
  }
}

// Whether nothing of the box lies beyond a row.
bool RoundBox::outermost(int y) const {
  const int beyond = y - box_.top() < box_.bottom() - y ? y - 1 : y + 1;
  return beyond < box_.top() || beyond > box_.bottom() || line(beyond) == 0;
}

template <typename Draw> void RoundBox::outline(const QRect &limits, Draw draw) const {
  const QRect rows = common(limits, box_), straight = between(limits);
  for (int y = rows.top(); y <= rows.bottom(); ++y) {
    const int run = line(y), left = box_.left() + margin(y), right = box_.right() - margin(y);
    const int last = y == straight.top() && !straight.isEmpty() ? straight.bottom() : y;
    if (run > 0 && (outermost(y) || right - left < 2 * run)) {
      draw(QRect(QPoint(left, y), QPoint(right, last)));
    } else if (run > 0) {
      draw(QRect(QPoint(left, y), QPoint(left + run - 1, last)));
      draw(QRect(QPoint(right - run + 1, y), QPoint(right, last)));
    }
    y = last;
  }
}

// From the middle of the right side up, over to the left, down, and back, as far as it comes near.
std::vector<POINT> RoundBox::path(const QRect &near) const {
  std::vector<POINT> left;
  const auto add = [&left](POINT point) {
    const size_t size = left.size();
    if (size > 1 && left[size - 1].x == point.x && left[size - 2].x == point.x) left.pop_back();
    left.push_back(point);
  };
  const int first = std::max(box_.top(), near.top()), last = std::min(box_.bottom(), near.bottom());
  for (int y = first; y <= last; ++y) {
    if (line(y) == 0) continue;
    const int outer = box_.left() + margin(y), inner = outer + line(y) - 1;
    const bool upper = y - box_.top() < box_.bottom() - y;
    add({upper ? inner : outer, y});
    if (inner != outer) add({upper ? outer : inner, y});
  }
  const auto mirrored = [this](POINT point) { return POINT{box_.right() - (point.x - box_.left()), point.y}; };
  const int middle = box_.top() + box_.height() / 2;
  std::vector<POINT> round{{box_.right(), middle}};
  const auto lower = std::find_if(left.begin(), left.end(), [middle](POINT point) { return point.y >= middle; });
  std::transform(std::make_reverse_iterator(lower), left.rend(), std::back_inserter(round), mirrored);
  round.insert(round.end(), left.begin(), left.end());
  std::transform(left.rbegin(), std::make_reverse_iterator(lower), std::back_inserter(round), mirrored);
  return round;
}

namespace {

void drawWideRoundBox(const Canvas &canvas, const RoundBox &shape, const std::optional<Ink> &ink,
                      const Pencil &pencil) {
  const QRect seen = canvas.clip->boundingRect().translated(-canvas.origin);
  const int reach = pencil.width + 1;
  const Spans outline = strokeOf(canvas, pencil.width, shape.path(seen.adjusted(0, -reach, 0, reach)), true);
  if (ink) {
    Spans inside(canvas);
    shape.inside(seen, [&](const QRect &part) {
      const QRect pixels = part.translated(canvas.origin);
      for (int y = pixels.top(); y <= pixels.bottom(); ++y) inside.add(y, pixels.left(), pixels.right() + 1);
    });
    inside.remove(outline);
    inside.fill(canvas, *ink);
  }
  outline.fill(canvas, pencil.ink);
}

// What the corners of a round box are on paper: curves, whose control points lie so far along a quarter of an ellipse.
constexpr double kQuarter = 0.5522847498;

// box: through the middles of the outermost pixels, or round them for a shape without a line.
PaperPath roundPath(const QRectF &box, double cornerWidth, double cornerHeight) {
  const double rx = std::min(cornerWidth, box.width()) / 2, ry = std::min(cornerHeight, box.height()) / 2;
  const double left = box.left(), top = box.top(), right = box.right(), bottom = box.bottom();
  const double dx = rx * (1 - kQuarter), dy = ry * (1 - kQuarter);
  PaperPath path;
  path.move(right, top + ry);
  path.curve({right, top + dy}, {right - dx, top}, {right - rx, top});
  path.line(left + rx, top);
  path.curve({left + dx, top}, {left, top + dy}, {left, top + ry});
  path.line(left, bottom - ry);
  path.curve({left, bottom - dy}, {left + dx, bottom}, {left + rx, bottom});
  path.line(right - rx, bottom);
  path.curve({right - dx, bottom}, {right, bottom - dy}, {right, bottom - ry});
  path.close();
  return path;
}

// Where nothing of the corners is left it is a rectangle.
void drawRoundBox(const Canvas &canvas, QRect box, int cornerWidth, int cornerHeight, const std::optional<Ink> &ink,
                  const std::optional<Pencil> &pencil) {
  if (std::min({cornerWidth, cornerHeight, box.width(), box.height()}) <= 2) {
    drawRectangle(canvas, box, ink, pencil);
    return;
  }
  if (pencil && pencil->inside) box = insideFrame(box, pencil->width);
  if (box.isEmpty()) return;
  if (canvas.paper) {
    const double margin = pencil ? 0.5 : 0;
    const QRectF edges = QRectF(box).adjusted(margin, margin, -margin, -margin);
    canvas.paper->draw(*canvas.clip, roundPath(edges, cornerWidth, cornerHeight), WINDING, ink ? &*ink : nullptr,
                       pencil ? &*pencil : nullptr);
    return;
  }
  const RoundBox shape(box, cornerWidth, cornerHeight);
  if (pencil && pencil->width > 1) {
    drawWideRoundBox(canvas, shape, ink, *pencil);
    return;
  }
  const QRect seen = canvas.clip->boundingRect().translated(-canvas.origin);
  const auto drawnWith = [&](const Ink &with) {
    return [filler = Filler(canvas, with), origin = canvas.origin](const QRect &part) {
      filler.rect(part.translated(origin));
    };
  };
  if (ink) shape.inside(seen, drawnWith(*ink));
  if (!pencil) return;
  constexpr int kUnseen = 1 << 15; // dashes go on from what isn't seen
  if (pencil->dashes.empty())
    shape.outline(seen, drawnWith(pencil->ink));
  else
    drawLines(canvas, *pencil, shape.path(seen.adjusted(0, -kUnseen, 0, kUnseen)), true);
}

// A corner's width or height in pixels; parts of pixels don't count.
int cornerOf(int length, int windowExtent, int viewportExtent) {
  const double pixels = std::abs(static_cast<double>(length) * viewportExtent / windowExtent);
  return static_cast<int>(std::min(pixels, 1e9));
}

// corner: gives the size of the ellipse that the corners are of, in pixels.
template <typename Corner> BOOL drawRound(HDC dc, int left, int top, int right, int bottom, Corner corner) {
  return drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    const QRect box = deviceBox(context, left, top, right, bottom);
    const auto pencil = pencilOf(context, canvas);
    const QSize round = corner(context, box);
    if (!box.isEmpty())
      drawRoundBox(canvas, box, round.width(), round.height(), inkOf(context, canvas, *context.brush.object), pencil);
    return reachOf(canvas, frameOf(box), pencil);
  });
}

// A point in sixteenths of a pixel.
struct Spot {
  int64_t x, y;
};
constexpr int64_t kParts = 16;

Spot middle(Spot a, Spot b) { return {(a.x + b.x + 1) >> 1, (a.y + b.y + 1) >> 1}; }

// Whether a curve is as good as the straight line from its first to its last point: its control points lie beside that
// line, no more than a pixel away across its longer axis.
bool flat(const Spot (&curve)[4]) {
  const auto dx = static_cast<double>(curve[3].x - curve[0].x), dy = static_cast<double>(curve[3].y - curve[0].y);
  const bool steep = std::abs(dy) > std::abs(dx);
  const double length = steep ? std::abs(dy) : std::abs(dx);
  for (const Spot &control : {curve[1], curve[2]}) {
    const auto x = static_cast<double>(control.x - curve[0].x), y = static_cast<double>(control.y - curve[0].y);
    const double along = steep ? (dy < 0 ? -y : y) : (dx < 0 ? -x : x);
    if (along < 0 || along > length || std::abs(x * dy - y * dx) > kParts * length) return false;
  }
  return true;
}

void addCurve(const Spot (&curve)[4], int depth, std::vector<POINT> &points) {
  if (depth == 0 || flat(curve)) {
    const auto pixel = [](int64_t parts) { return static_cast<int>((parts + kParts / 2) >> 4); };
    points.push_back({pixel(curve[3].x), pixel(curve[3].y)});
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
  const auto spot = [](POINT point) { return Spot{point.x * kParts, point.y * kParts}; };
  std::vector<POINT> points{corners[0]};
  for (size_t i = 0; i + 3 < corners.size(); i += 3)
    addCurve({spot(corners[i]), spot(corners[i + 1]), spot(corners[i + 2]), spot(corners[i + 3])}, kDepth, points);
  return points;
}

} // namespace

} // namespace platform

using namespace platform;

BOOL Ellipse(HDC dc, int left, int top, int right, int bottom) {
  return drawRound(dc, left, top, right, bottom, [](const Dc &, const QRect &box) { return box.size(); });
}

BOOL RoundRect(HDC dc, int left, int top, int right, int bottom, int width, int height) {
  return drawRound(dc, left, top, right, bottom, [=](const Dc &context, const QRect &) {
    return QSize(cornerOf(width, context.windowExtent.cx, context.viewportExtent.cx),
                 cornerOf(height, context.windowExtent.cy, context.viewportExtent.cy));
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
