// Points: setting, copying, and their place relative to rectangles.

#include "drawing/drawing.h"

void WqPoint_Set(POINT *point, int32_t x, int32_t y) { *point = {x, y}; }

void WqPoint_Copy(POINT *destination, const POINT *source) { *destination = *source; }

uint32_t WqPoint_Hit(const POINT *point, const RECT *rect) {
  if (point->y < rect->top) return WQ_HIT_BEFORE;
  if (point->y > rect->bottom) return WQ_HIT_BEHIND;
  if (point->x < rect->left) return WQ_HIT_BEFORE;
  if (point->x > rect->right) return WQ_HIT_BEHIND;
  return WQ_HIT_INSIDE;
}

// The upper bounds act last. std::clamp doesn't accept bounds in the wrong order.
void WqPoint_Clip(POINT *point, const RECT *rect) {
  if (point->x < rect->left) point->x = rect->left;
  if (point->y < rect->top) point->y = rect->top;
  if (point->x > rect->right) point->x = rect->right;
  if (point->y > rect->bottom) point->y = rect->bottom;
}
