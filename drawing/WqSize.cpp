// Sizes.

#include "drawing/drawing.h"

#include "drawing/drawing_private.h"

#include <algorithm>

void WqSize_Set(SIZE *size, int32_t cx, int32_t cy) { *size = {cx, cy}; }

void WqSize_Offset(SIZE *size, int32_t dx, int32_t dy) { *size = {wqSum(size->cx, dx), wqSum(size->cy, dy)}; }

void WqSize_Clip(SIZE *size, const SIZE *limit) {
  *size = {std::min(size->cx, limit->cx), std::min(size->cy, limit->cy)};
}

void WqSize_Rect(SIZE *size, const RECT *rect) {
  *size = {wqSum(wqDifference(rect->right, rect->left), 1), wqSum(wqDifference(rect->bottom, rect->top), 1)};
}

void WqSize_Init(SIZE *) {}

void WqSize_Term(SIZE *) {}
