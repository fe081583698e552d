/* Drawing: points, sizes and rectangles. Colours, resources and device contexts have their own headers. */
#ifndef WQ_DRAWING_DRAWING_H
#define WQ_DRAWING_DRAWING_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqPoint, WqSize, WqRect: geometry ---------------------------------------------------------------------------
 *
 * Coordinates have no unit. Rectangles are never put in order: one whose right is less than its left stays so. Every
 * function treats the right and bottom edges in its own way, and says how: "inside" means that points on these two
 * edges belong to the rectangle. Arithmetic is 32-bit and wraps.
 *
 * All functions may run on several threads at once. */

/* Store two values. */
WQ_API void WqPoint_Set(POINT *point, int32_t x, int32_t y);
WQ_API void WqSize_Set(SIZE *size, int32_t cx, int32_t cy);

WQ_API void WqPoint_Copy(POINT *destination, const POINT *source);

/* Places of a point, from WqPoint_Hit. */
#define WQ_HIT_INSIDE 0u
#define WQ_HIT_BEFORE 0x42000000u /* above or left of the rectangle */
#define WQ_HIT_BEHIND 0x81000000u /* below or right of it */

/* Compares a point with a rectangle, whose edges are inside. The vertical position decides first.
 * Result: WQ_HIT_INSIDE, WQ_HIT_BEFORE or WQ_HIT_BEHIND. */
WQ_API uint32_t WqPoint_Hit(const POINT *point, const RECT *rect);

/* Moves a point to the nearest place in a rectangle, edges inside. In an inverted rectangle it ends at right or
 * bottom. */
WQ_API void WqPoint_Clip(POINT *point, const RECT *rect);

/* Adds to both values. */
WQ_API void WqSize_Offset(SIZE *size, int32_t dx, int32_t dy);

/* Takes the smaller one of each two values. */
WQ_API void WqSize_Clip(SIZE *size, const SIZE *limit);

/* Stores right - left + 1 and bottom - top + 1; an inverted rectangle gives 0 or less. */
WQ_API void WqSize_Rect(SIZE *size, const RECT *rect);

/* Both do nothing; WqSize_Init doesn't clear the record. */
WQ_API void WqSize_Init(SIZE *size);
WQ_API void WqSize_Term(SIZE *size);

/* Stores four values. */
WQ_API void WqRect_Set(RECT *rect, int32_t left, int32_t top, int32_t right, int32_t bottom);

/* Moves a rectangle. */
WQ_API void WqRect_Offset(RECT *rect, int32_t dx, int32_t dy);

/* Stores the absolute values of right - left and bottom - top. */
WQ_API void WqRect_toSize(const RECT *rect, SIZE *size);

/* Result: 1 if all four edges are equal, else 0. */
WQ_API int WqRect_isSame(const RECT *rect, const RECT *other);

/* Result: 1 if the point lies in the rectangle, edges inside, else 0. */
WQ_API int WqRect_IsIn(const RECT *rect, const POINT *point);

/* Result: 1 if no part of the inner rectangle is outside the outer one, else 0. They may have edges in common. */
WQ_API int WqRect_IsInRect(const RECT *outer, const RECT *inner);

/* Result: 1 if at least one corner of the other rectangle lies in the rectangle, edges inside, else 0. This doesn't
 * test for overlap: another rectangle that surrounds the first one gives 0. */
WQ_API int WqRect_Hit(const RECT *rect, const RECT *other);

/* Widens a rectangle to hold another one, even if that is empty. */
WQ_API void WqRect_Union(RECT *rect, const RECT *other);

/* Cuts a rectangle to a bound. A rectangle outside it gets a width or height of 0, never less.
 * bound: null, or right <= left, or bottom <= top: nothing changes. */
WQ_API void WqRect_Clip(RECT *rect, const RECT *bound);

/* Widens a rectangle to hold a bound.
 * bound: null, or right <= left, or bottom <= top: nothing changes. */
WQ_API void WqRect_Limit(RECT *rect, const RECT *bound);

/* Subtracts each field of margin. Negative left and top with positive right and bottom make the rectangle smaller. */
WQ_API void WqRect_SubMargin(RECT *rect, const RECT *margin);

/* Moves a rectangle to the middle of an enclosing one; both widths are right - left. A larger rectangle exceeds the
 * enclosing one on both sides.
 * rect: null does nothing.
 * enclosing: null stands for the desktop. */
WQ_API void WqRect_Center(RECT *rect, const RECT *enclosing);

/* Does nothing. */
WQ_API void WqRect_InAlign(uint32_t a, uint32_t b, uint32_t c);

#ifdef __cplusplus
}
#endif

/* In reading order. */
/* clang-format off */
#include "drawing/colours.h"
#include "drawing/resources.h"
#include "drawing/dc.h"
/* clang-format on */

#endif
