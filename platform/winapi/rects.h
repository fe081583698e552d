/* Arithmetic of rectangles. Right and bottom are exclusive. */
#ifndef PLATFORM_WINAPI_RECTS_H
#define PLATFORM_WINAPI_RECTS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* TRUE if right <= left or bottom <= top, and for null. */
PLATFORM_API BOOL WINAPI IsRectEmpty(const RECT *rect);
/* Moves by dx to the right and by dy downwards. FALSE for null. */
PLATFORM_API BOOL WINAPI OffsetRect(RECT *rect, int dx, int dy);
/* result: all 0 if the two have no common part. It may be one of the two. */
PLATFORM_API BOOL WINAPI IntersectRect(RECT *result, const RECT *first, const RECT *second);
/* FALSE for null. */
PLATFORM_API BOOL WINAPI PtInRect(const RECT *rect, POINT point);

#ifdef __cplusplus
}
#endif

#endif
