// Edges in the classic colours: two rings of lines, or two diagonals, each with a light and a dark half; and the dotted
// frame that shows the focus.

#include "platform/desktop/drawing/edges.h"

namespace platform {

namespace {

// The two colours of a ring: left and top, right and bottom. A ring that is both raised and sunken has none.
struct Ring {
  int light, dark;
};
constexpr int kNone = -1;
constexpr Ring kNoRing = {kNone, kNone};

// By bits: 1 raised, 2 sunken.
constexpr Ring kOuter[] = {kNoRing, {COLOR_3DLIGHT, COLOR_3DDKSHADOW}, {COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT}, kNoRing};
constexpr Ring kInner[] = {kNoRing, {COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW}, {COLOR_3DDKSHADOW, COLOR_3DLIGHT}, kNoRing};
constexpr Ring kSoftOuter[] = {
    kNoRing, {COLOR_BTNHIGHLIGHT, COLOR_3DDKSHADOW}, {COLOR_3DDKSHADOW, COLOR_BTNHIGHLIGHT}, kNoRing};
constexpr Ring kSoftInner[] = {kNoRing, {COLOR_3DLIGHT, COLOR_BTNSHADOW}, {COLOR_BTNSHADOW, COLOR_3DLIGHT}, kNoRing};

struct Edge {
  Ring outer, inner;
  bool hasOuter, hasInner; // they take their room even without a colour
  int middle;
  bool whole; // no ring is both raised and sunken
};

Edge edgeOf(UINT edge, UINT flags) {
  const UINT outer = edge & 3, inner = edge >> 2 & 3;
  const auto plain = [](UINT bits, int color) { return bits ? Ring{color, color} : kNoRing; };
  if (flags & BF_MONO)
    return {plain(outer, COLOR_WINDOWFRAME), plain(inner, COLOR_WINDOW), outer != 0, inner != 0, COLOR_WINDOW, true};
  if (flags & BF_FLAT)
    return {plain(outer, COLOR_BTNSHADOW), plain(inner, COLOR_BTNFACE), outer != 0, inner != 0, COLOR_BTNFACE, true};
  const bool soft = flags & BF_SOFT, wrong = outer == 3;
  return {(soft ? kSoftOuter : kOuter)[outer],
          wrong ? kNoRing : (soft ? kSoftInner : kInner)[inner],
          outer != 0,
          inner != 0,
          COLOR_BTNFACE,
          !wrong && inner != 3};
}

class EdgePainter {
 public:
  EdgePainter(const Dc &dc, const Canvas &canvas) : dc_(dc), canvas_(canvas) {
    pencil_.ink.rop2 = dc.rop2;
    pencil_.width = std::max(1, dc.widthToDevice(1));
  }

  void line(int color, POINT from, POINT to) {
    if (color == kNone) return;
    pencil_.ink.color = shownOn(canvas_, GetSysColor(color), dc_.bkColor);
    const POINT points[] = {dc_.toDevice(from), dc_.toDevice(to)};
    drawLines(canvas_, pencil_, points);
  }

  // Draws so many pixels from a point, to the right and up or down.
  void diagonal(int color, POINT from, int count, int down) {
    line(color, from, {from.x + count, from.y + count * down});
  }

  // Fills a polygon, its sides too.
  void fill(int color, std::span<const POINT> corners) {
    pencil_.ink.color = shownOn(canvas_, GetSysColor(color), dc_.bkColor);
    Ink ink = systemInk(dc_, canvas_, color);
    ink.rop2 = dc_.rop2;
    drawPolygon(canvas_, toDevice(dc_, corners), dc_.polyFillMode, ink, pencil_);
  }

 private:
  const Dc &dc_;
  const Canvas &canvas_;
  Pencil pencil_;
};

// The diagonals, by which sides of the box they go with. The sides that belong together say where the diagonal ends and
// which half it bounds; other sets of sides show what the platform makes of them.
enum class Diagonal { aboveRising, rightOnly, belowRising, topOnly, aboveFalling, belowFalling };

constexpr Diagonal kDiagonals[] = {
    Diagonal::aboveRising,  Diagonal::aboveRising, Diagonal::topOnly,     Diagonal::aboveFalling,
    Diagonal::rightOnly,    Diagonal::rightOnly,   Diagonal::belowRising, Diagonal::belowRising,
    Diagonal::aboveRising,  Diagonal::aboveRising, Diagonal::topOnly,     Diagonal::topOnly,
    Diagonal::belowFalling, Diagonal::rightOnly,   Diagonal::belowRising, Diagonal::belowRising,
};

// The line of a ring, which is the first or, with step 1, the second one.
void drawDiagonal(EdgePainter &painter, Diagonal diagonal, int color, const RECT &box, int length, int step) {
  const LONG left = box.left, bottom = box.bottom - 1;
  switch (diagonal) {
  case Diagonal::aboveRising: painter.diagonal(color, {left, bottom - step}, length - step, -1); break;
  case Diagonal::belowRising: painter.diagonal(color, {left + step, bottom}, length - step, -1); break;
  case Diagonal::aboveFalling: painter.diagonal(color, {left + step, box.top}, length - step, 1); break;
  case Diagonal::belowFalling: painter.diagonal(color, {left, box.top + step}, length - step, 1); break;
  case Diagonal::topOnly: painter.diagonal(color, {left + step, bottom - step}, length - step, -1); break;
  case Diagonal::rightOnly: painter.diagonal(color, {left, bottom}, length - step, -1); break;
  }
}

// What lies beside the lines of so many rings.
std::vector<POINT> besideDiagonal(Diagonal diagonal, const RECT &box, int length, int rings) {
  const LONG left = box.left, top = box.top, right = box.right - 1, bottom = box.bottom - 1;
  const LONG run = length - 1 - rings;
  const auto rising = [run](POINT from) { return POINT{from.x + run, from.y - run}; };
  const auto falling = [run](POINT from) { return POINT{from.x + run, from.y + run}; };
  switch (diagonal) {
  case Diagonal::aboveRising: {
    const POINT from = {left, bottom - rings};
    return {{left, top}, rising(from), from};
  }
  case Diagonal::rightOnly: {
    const POINT from = {left, bottom};
    return {{left, top + rings}, rising(from), from};
  }
  case Diagonal::belowRising: {
    const POINT from = {left + rings, bottom};
    return {from, {right, bottom}, {right, top + rings}, rising(from)};
  }
  case Diagonal::topOnly: {
    const POINT from = {left + rings, bottom - rings};
    return {from, {right, bottom - rings}, {right, top}, rising(from)};
  }
  case Diagonal::aboveFalling: {
    const POINT from = {left + rings, top};
    return {from, {right, top}, {right, bottom - rings}, falling(from)};
  }
  case Diagonal::belowFalling: {
    const POINT from = {left, top + rings};
    return {from, {left, bottom}, falling(from)};
  }
  }
  return {};
}

void shrink(RECT &box, UINT sides) {
  const LONG left = sides & BF_LEFT ? 1 : 0, top = sides & BF_TOP ? 1 : 0;
  const LONG right = sides & BF_RIGHT ? 1 : 0, bottom = sides & BF_BOTTOM ? 1 : 0;
  box = inset(box, {left, top, right, bottom});
}

void drawDiagonals(EdgePainter &painter, const Edge &edge, const RECT &box, UINT flags) {
  const Diagonal diagonal = kDiagonals[flags & BF_RECT];
  const int length = std::min(box.right - box.left, box.bottom - box.top);
  const auto color = [&](Ring ring) { return flags & BF_BOTTOM ? ring.dark : ring.light; };
  int rings = 0;
  if (edge.hasOuter) drawDiagonal(painter, diagonal, color(edge.outer), box, length, rings++);
  if (edge.hasInner) drawDiagonal(painter, diagonal, color(edge.inner), box, length, rings++);
  if (flags & BF_MIDDLE && edge.whole) painter.fill(edge.middle, besideDiagonal(diagonal, box, length, rings));
}

void drawRing(const Dc &dc, const Canvas &canvas, Ring colors, const RECT &box, UINT sides) {
  if (colors.light == kNone) return;
  const auto side = [&](UINT bit, const RECT &rect, int color) {
    if (sides & bit) fillSystem(dc, canvas, rect, color);
  };
  side(BF_TOP, {box.left, box.top, box.right, box.top + 1}, colors.light);
  side(BF_LEFT, {box.left, box.top, box.left + 1, box.bottom}, colors.light);
  side(BF_RIGHT, {box.right - 1, box.top, box.right, box.bottom}, colors.dark);
  side(BF_BOTTOM, {box.left, box.bottom - 1, box.right, box.bottom}, colors.dark);
}

void drawRings(const Dc &dc, const Canvas &canvas, const Edge &edge, RECT box, UINT flags) {
  if (edge.hasOuter) {
    drawRing(dc, canvas, edge.outer, box, flags);
    shrink(box, flags);
  }
  if (edge.hasInner) {
    drawRing(dc, canvas, edge.inner, box, flags);
    shrink(box, flags);
  }
  if (flags & BF_MIDDLE && edge.whole) fillSystem(dc, canvas, box, edge.middle);
}

} // namespace

RECT inset(const RECT &rect, const RECT &margins) {
  const auto sum = [](LONG edge, LONG by) {
    return static_cast<LONG>(std::clamp<int64_t>(int64_t{edge} + by, INT32_MIN, INT32_MAX));
  };
  return {sum(rect.left, margins.left), sum(rect.top, margins.top), sum(rect.right, -margins.right),
          sum(rect.bottom, -margins.bottom)};
}

RECT within(const RECT &rect, LONG limit) {
  const auto cut = [limit](LONG edge) { return std::clamp(edge, -limit, limit); };
  return {cut(rect.left), cut(rect.top), cut(rect.right), cut(rect.bottom)};
}

Ink systemInk(const Dc &dc, const Canvas &canvas, int color) {
  return solidInk(canvas, GetSysColor(color), dc.brushOrigin);
}

void fillSystem(const Dc &dc, const Canvas &canvas, const RECT &rect, int color) {
  const QRect box = filledBox(dc, rect.left, rect.top, rect.right, rect.bottom);
  fillRect(canvas, box.translated(canvas.origin), systemInk(dc, canvas, color));
}

void drawEdge(const Dc &dc, const Canvas &canvas, const RECT &rect, UINT type, UINT flags) {
  const Edge edge = edgeOf(type, flags);
  if (flags & BF_DIAGONAL) {
    EdgePainter painter(dc, canvas);
    drawDiagonals(painter, edge, rect, flags);
  } else {
    drawRings(dc, canvas, edge, rect, flags);
  }
}

} // namespace platform

using namespace platform;

BOOL DrawEdge(HDC dc, RECT *rect, UINT type, UINT flags) {
  if (!rect) return FALSE;
  const Edge edge = edgeOf(type, flags);
  const BOOL drawn = drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    drawEdge(context, canvas, within(*rect, kFar), type, flags);
    return deviceBox(context, rect->left, rect->top, rect->right, rect->bottom).translated(canvas.origin);
  });
  if (drawn && flags & BF_ADJUST)
    for (int i = 0; i < edge.hasOuter + edge.hasInner; ++i) shrink(*rect, flags);
  return drawn && edge.whole;
}

BOOL DrawFocusRect(HDC dc, const RECT *rect) {
  if (!rect) return FALSE;
  return drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    constexpr uint8_t kEveryOther[] = {1, 1};
    Pencil pencil;
    pencil.ink.rop2 = R2_NOT;
    pencil.gap.transparent = true;
    pencil.dashes = kEveryOther;
    const QRect box = deviceBox(context, rect->left, rect->top, rect->right, rect->bottom);
    if (!box.isEmpty()) drawLines(canvas, pencil, frameOf(box), true);
    return box.translated(canvas.origin);
  });
}
