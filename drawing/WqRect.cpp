// Rectangles. Every function treats the right and bottom edges in its own way.

#include "drawing/drawing.h"

#include "audio/audio.h"
#include "drawing/drawing_private.h"

#include <algorithm>

namespace {

bool isIn(const RECT *rect, LONG x, LONG y) {
  return x >= rect->left && x <= rect->right && y >= rect->top && y <= rect->bottom;
}

} // namespace

void WqRect_Set(RECT *rect, int32_t left, int32_t top, int32_t right, int32_t bottom) {
  *rect = {left, top, right, bottom};
}

void WqRect_Offset(RECT *rect, int32_t dx, int32_t dy) {
  *rect = {wqSum(rect->left, dx), wqSum(rect->top, dy), wqSum(rect->right, dx), wqSum(rect->bottom, dy)};
}

void WqRect_toSize(const RECT *rect, SIZE *size) {
  *size = {WqMath_Abs(wqDifference(rect->right, rect->left)), WqMath_Abs(wqDifference(rect->bottom, rect->top))};
}

int WqRect_isSame(const RECT *rect, const RECT *other) {
  return rect->left == other->left && rect->top == other->top && rect->right == other->right &&
         rect->bottom == other->bottom;
}

int WqRect_IsIn(const RECT *rect, const POINT *point) { return isIn(rect, point->x, point->y); }

int WqRect_IsInRect(const RECT *outer, const RECT *inner) {
  return inner->left >= outer->left && inner->right <= outer->right && inner->top >= outer->top &&
         inner->bottom <= outer->bottom;
}

int WqRect_Hit(const RECT *rect, const RECT *other) {
  return isIn(rect, other->left, other->top) || isIn(rect, other->right, other->top) ||
         isIn(rect, other->right, other->bottom) || isIn(rect, other->left, other->bottom);
}

void WqRect_Union(RECT *rect, const RECT *other) {
  *rect = {std::min(rect->left, other->left), std::min(rect->top, other->top), std::max(rect->right, other->right),
           std::max(rect->bottom, other->bottom)};
}

void WqRect_Clip(RECT *rect, const RECT *bound) {
  if (!bound || IsRectEmpty(bound)) return;
  rect->left = std::max(rect->left, bound->left);
  rect->right = std::min(rect->right, bound->right);
  rect->top = std::max(rect->top, bound->top);
  rect->bottom = std::min(rect->bottom, bound->bottom);
  rect->right = std::max(rect->right, rect->left);
  rect->bottom = std::max(rect->bottom, rect->top);
}

void WqRect_Limit(RECT *rect, const RECT *bound) {
  if (bound && !IsRectEmpty(bound)) WqRect_Union(rect, bound);
}

void WqRect_SubMargin(RECT *rect, const RECT *margin) {
  *rect = {wqDifference(rect->left, margin->left), wqDifference(rect->top, margin->top),
           wqDifference(rect->right, margin->right), wqDifference(rect->bottom, margin->bottom)};
}

void WqRect_Center(RECT *rect, const RECT *enclosing) {
  if (!rect) return;
  RECT desktop;
  if (!enclosing) {
    GetWindowRect(GetDesktopWindow(), &desktop);
    enclosing = &desktop;
  }
  const LONG excessX =
      wqDifference(wqDifference(enclosing->right, enclosing->left), wqDifference(rect->right, rect->left));
  const LONG excessY =
      wqDifference(wqDifference(enclosing->bottom, enclosing->top), wqDifference(rect->bottom, rect->top));
  const LONG left = wqSum(enclosing->left, excessX / 2);
  const LONG top = wqSum(enclosing->top, excessY / 2);
  OffsetRect(rect, wqDifference(left, rect->left), wqDifference(top, rect->top));
}

void WqRect_InAlign(uint32_t, uint32_t, uint32_t) {}
