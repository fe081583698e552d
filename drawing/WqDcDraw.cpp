// Zoomed drawing: one rule converts every coordinate, and the platform draws. Objects and modes stay set.

#include "drawing/drawing_private.h"

#include "audio/audio.h"
#include "frame/memory.h"

namespace {

HDC contextOf(const WqDcDraw *draw) { return draw->dc->hdc; }

LONG convert(const WqDcDraw *draw, LONG value, LONG base) { return wqSum(WqMath_CeilInt(value * draw->zoom), base); }

POINT converted(const WqDcDraw *draw, const POINT *point) {
  return {convert(draw, point->x, draw->basePoint.x), convert(draw, point->y, draw->basePoint.y)};
}

RECT converted(const WqDcDraw *draw, const RECT *rect) {
  return {convert(draw, rect->left, draw->basePoint.x), convert(draw, rect->top, draw->basePoint.y),
          convert(draw, rect->right, draw->basePoint.x), convert(draw, rect->bottom, draw->basePoint.y)};
}

void markDrawn(WqDcDraw *draw) { draw->drawn = 1; }

// Cuts the longer side to the length of the shorter one, on both ends. Of an odd excess the larger half is cut at the
// right or bottom.
void makeSquare(RECT *rect) {
  const LONG excess =
      wqDifference(wqDifference(rect->right, rect->left), wqDifference(rect->bottom, rect->top)); // of the width
  if (excess > 0) {
    rect->left = wqSum(rect->left, excess / 2);
    rect->right = wqDifference(rect->right, excess - excess / 2);
  } else {
    const LONG tooHigh = wqDifference(0, excess);
    rect->top = wqSum(rect->top, tooHigh / 2);
    rect->bottom = wqDifference(rect->bottom, tooHigh - tooHigh / 2);
  }
}

// Draws with a converted copy of points. A count of 0 also goes to the platform.
template <typename Count, typename Draw>
void drawPoints(WqDcDraw *draw, const POINT *points, Count count, Draw platformDraw) {
  auto *copy = static_cast<POINT *>(WqMem_AllocArray(sizeof(POINT), static_cast<size_t>(count)));
  if (!copy && count != 0) return;
  for (Count i = 0; i < count; ++i) copy[i] = converted(draw, &points[i]);
  platformDraw(contextOf(draw), copy, count);
  WqMem_Free(copy);
  markDrawn(draw);
}

} // namespace

void WqDcDraw_Init(WqDcDraw *draw) {
  *draw = {};
  draw->zoom = 1.0;
}

void WqDcDraw_Term(WqDcDraw *) {}

void WqDcDraw_Dc(WqDcDraw *draw, WqDc *dc) {
  draw->dc = dc;
  if (!dc->hdc) return;
  draw->foreMode = draw->prevForeMode = GetROP2(dc->hdc);
  draw->backMode = draw->prevBackMode = GetBkMode(dc->hdc);
}

void WqDcDraw_ForeMode(WqDcDraw *draw, int32_t mode) {
  draw->foreMode = mode;
  draw->prevForeMode = SetROP2(contextOf(draw), mode);
}

void WqDcDraw_BackMode(WqDcDraw *draw, int32_t mode) {
  draw->backMode = mode;
  draw->prevBackMode = SetBkMode(contextOf(draw), mode);
}

void WqDcDraw_Zoom(WqDcDraw *draw, double percent) { draw->zoom = percent * 0.01; }

void WqDcDraw_Bp(WqDcDraw *draw, const POINT *basePoint) { draw->basePoint = *basePoint; }

void WqDcDraw_ConvRect(const WqDcDraw *draw, const RECT *rect, RECT *result) { *result = converted(draw, rect); }

void WqDcDraw_ConvSize(const WqDcDraw *draw, const SIZE *size, SIZE *result) {
  const POINT corner = {size->cx, size->cy};
  const POINT moved = converted(draw, &corner);
  *result = {moved.x, moved.y};
}

void WqDcDraw_ConvPoint(const WqDcDraw *draw, const POINT *point, POINT *result) { *result = converted(draw, point); }

void WqDcDraw_InitLine(WqDcDraw *draw, uint32_t width, uint32_t colour) {
  WqDcObj_SelectStylePen(&draw->dc->obj, width, colour, PS_SOLID);
}

void WqDcDraw_InitText(WqDcDraw *draw, uint32_t fontId, uint32_t colour) {
  WqDcObj_SelectFont(&draw->dc->obj, fontId, colour);
}

void WqDcDraw_FrameRect(WqDcDraw *draw, const RECT *rect, uint32_t colour) {
  HBRUSH brush = WqDcObj_SelectBrush(&draw->dc->obj, colour);
  const RECT device = converted(draw, rect);
  FrameRect(contextOf(draw), &device, brush);
  markDrawn(draw);
}

void WqDcDraw_FillRect(WqDcDraw *draw, const RECT *rect, uint32_t colour) {
  HBRUSH brush = WqDcObj_SelectBrush(&draw->dc->obj, colour);
  const RECT device = converted(draw, rect);
  FillRect(contextOf(draw), &device, brush);
  markDrawn(draw);
}

void WqDcDraw_RoundRect(WqDcDraw *draw, const RECT *rect, const POINT *corner, uint32_t colour) {
  WqDcObj_SelectBrush(&draw->dc->obj, colour);
  const RECT device = converted(draw, rect);
  const POINT size = converted(draw, corner);
  RoundRect(contextOf(draw), device.left, device.top, device.right, device.bottom, size.x, size.y);
  markDrawn(draw);
}

void WqDcDraw_Circle(WqDcDraw *draw, const RECT *rect) {
  RECT square = *rect;
  makeSquare(&square);
  WqDcDraw_Ellipse(draw, &square);
}

void WqDcDraw_Ellipse(WqDcDraw *draw, const RECT *rect) {
  const RECT device = converted(draw, rect);
  Ellipse(contextOf(draw), device.left, device.top, device.right, device.bottom);
  markDrawn(draw);
}

void WqDcDraw_PolyBezier(WqDcDraw *draw, const POINT *points, uint32_t count) {
  drawPoints(draw, points, count, PolyBezierTo);
}

void WqDcDraw_PolyLine(WqDcDraw *draw, const POINT *points, int32_t count) {
  drawPoints(draw, points, count, Polyline);
}

void WqDcDraw_Polygon(WqDcDraw *draw, const POINT *points, int32_t count) { drawPoints(draw, points, count, Polygon); }

void WqDcDraw_MoveTo(WqDcDraw *draw, const POINT *point) {
  const POINT device = converted(draw, point);
  MoveToEx(contextOf(draw), device.x, device.y, nullptr);
}

void WqDcDraw_LineTo(WqDcDraw *draw, const POINT *point) {
  const POINT device = converted(draw, point);
  LineTo(contextOf(draw), device.x, device.y);
  markDrawn(draw);
}

void WqDcDraw_Line(WqDcDraw *draw, const POINT *from, const POINT *to) {
  WqDcDraw_MoveTo(draw, from);
  WqDcDraw_LineTo(draw, to);
}

void WqDcDraw_DrawEdge(WqDcDraw *draw, const RECT *rect, uint32_t edge, uint32_t flags) {
  RECT device = converted(draw, rect);
  DrawEdge(contextOf(draw), &device, edge, flags);
  markDrawn(draw);
}

void WqDcDraw_FocusRect(WqDcDraw *draw, const RECT *rect) {
  const RECT device = converted(draw, rect);
  DrawFocusRect(contextOf(draw), &device);
  markDrawn(draw);
}

void WqDcDraw_FrameControl(WqDcDraw *draw, const RECT *rect, uint32_t type, uint32_t state) {
  RECT device = converted(draw, rect);
  DrawFrameControl(contextOf(draw), &device, type, state);
  markDrawn(draw);
}

void WqDcDraw_Text(WqDcDraw *draw, const char *text, const RECT *rect, uint32_t format) {
  RECT device = converted(draw, rect);
  DrawTextA(contextOf(draw), text, -1, &device, format);
  markDrawn(draw);
}

void WqDcDraw_GetTextRect(WqDcDraw *draw, const char *text, RECT *rect, uint32_t format) {
  RECT device = converted(draw, rect);
  DrawTextA(contextOf(draw), text, -1, &device, format | DT_CALCRECT);
  *rect = device;
  markDrawn(draw);
}
