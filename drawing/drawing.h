/* Drawing: points, sizes and rectangles here, then colours, resources and device contexts in headers of their own. */
#ifndef WQ_DRAWING_DRAWING_H
#define WQ_DRAWING_DRAWING_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqPoint, WqSize, WqRect: geometry ---------------------------------------------------------------------------
 *
 * Coordinates carry no unit, and no rectangle is ever put in order: one whose right is less than its left stays so.
 * Each function has its own reading of the right and bottom edges, and says which: "inside" means that points on these
 * two edges belong to the rectangle. Arithmetic is 32-bit and wraps.
 *
 * All functions may run on several threads at once. */

/* Store two values. */
WQ_API void WqPoint_Set(POINT *point, int32_t x, int32_t y);
WQ_API void WqSize_Set(SIZE *size, int32_t cx, int32_t cy);

WQ_API void WqPoint_Copy(POINT *destination, const POINT *source);

/* Where a point lies, as WqPoint_Hit tells it. */
#define WQ_HIT_INSIDE 0u
#define WQ_HIT_BEFORE 0x42000000u /* above or left of the rectangle */
#define WQ_HIT_BEHIND 0x81000000u /* below or right of it */

/* Places a point against a rectangle, whose edges are inside. The vertical position decides first.
 * Result: WQ_HIT_INSIDE, WQ_HIT_BEFORE or WQ_HIT_BEHIND. */
WQ_API uint32_t WqPoint_Hit(const POINT *point, const RECT *rect);

/* Moves a point to the nearest place in a rectangle, edges inside. In an inverted one it ends at right or bottom. */
WQ_API void WqPoint_Clip(POINT *point, const RECT *rect);

/* Adds to both values. */
WQ_API void WqSize_Offset(SIZE *size, int32_t dx, int32_t dy);

/* Takes the smaller of each two values. */
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

/* Result: 1 when all four edges are equal, else 0. */
WQ_API int WqRect_isSame(const RECT *rect, const RECT *other);

/* Result: 1 when the point lies in the rectangle, edges inside, else 0. */
WQ_API int WqRect_IsIn(const RECT *rect, const POINT *point);

/* Result: 1 when no part of the inner rectangle is outside the outer one; both may have edges in common. Else 0. */
WQ_API int WqRect_IsInRect(const RECT *outer, const RECT *inner);

/* Result: 1 when at least one corner of the other rectangle lies in the rectangle, edges inside, else 0. This is no test
 * for overlap: an other rectangle that surrounds the first one gives 0. */
WQ_API int WqRect_Hit(const RECT *rect, const RECT *other);

/* Widens a rectangle to hold another. An empty one counts like any other. */
WQ_API void WqRect_Union(RECT *rect, const RECT *other);

/* Cuts a rectangle to a bound. One that lies outside shrinks to no width or no height, never to less.
 * bound: null, or right <= left, or bottom <= top: nothing changes. */
WQ_API void WqRect_Clip(RECT *rect, const RECT *bound);

/* Widens a rectangle to hold a bound.
 * bound: null, or right <= left, or bottom <= top: nothing changes. */
WQ_API void WqRect_Limit(RECT *rect, const RECT *bound);

/* Subtracts field from field. A margin that shrinks has negative left and top, positive right and bottom. */
WQ_API void WqRect_SubMargin(RECT *rect, const RECT *margin);

/* Moves a rectangle to the middle of an enclosing one; both widths are right - left. A rectangle that is larger hangs
 * over on both sides.
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
