// Rectangle arithmetic.

#include "platform/winapi.h"

#include <algorithm>
#include <cstdint>

namespace {

// Coordinates wrap, as they do on the platform.
LONG sum(LONG a, int b) { return static_cast<LONG>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b)); }

} // namespace

BOOL IsRectEmpty(const RECT *rect) { return !rect || rect->right <= rect->left || rect->bottom <= rect->top; }

BOOL OffsetRect(RECT *rect, int dx, int dy) {
  if (!rect) return FALSE;
  rect->left = sum(rect->left, dx);
  rect->right = sum(rect->right, dx);
  rect->top = sum(rect->top, dy);
  rect->bottom = sum(rect->bottom, dy);
  return TRUE;
}

BOOL IntersectRect(RECT *result, const RECT *first, const RECT *second) {
  if (!result || !first || !second) return FALSE;
  *result = {std::max(first->left, second->left), std::max(first->top, second->top),
             std::min(first->right, second->right), std::min(first->bottom, second->bottom)};
  if (!IsRectEmpty(result)) return TRUE;
  *result = {};
  return FALSE;
}

BOOL PtInRect(const RECT *rect, POINT point) {
  return rect && point.x >= rect->left && point.x < rect->right && point.y >= rect->top && point.y < rect->bottom;
}
