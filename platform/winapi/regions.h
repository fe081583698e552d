/* Regions, in device coordinates. */
#ifndef PLATFORM_WINAPI_REGIONS_H
#define PLATFORM_WINAPI_REGIONS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define ERROR 0
#define NULLREGION 1
#define SIMPLEREGION 2
#define COMPLEXREGION 3
#define RGN_AND 1
#define RGN_OR 2
#define RGN_XOR 3
#define RGN_DIFF 4
#define RGN_COPY 5

PLATFORM_API HRGN WINAPI CreateRectRgn(int left, int top, int right, int bottom);
PLATFORM_API HRGN WINAPI CreateRectRgnIndirect(const RECT *rect);
PLATFORM_API int WINAPI CombineRgn(HRGN result, HRGN first, HRGN second, int mode);
PLATFORM_API int WINAPI GetRgnBox(HRGN region, RECT *rect);
PLATFORM_API int WINAPI SelectClipRgn(HDC dc, HRGN region);
PLATFORM_API int WINAPI ExtSelectClipRgn(HDC dc, HRGN region, int mode);
/* Copies the context's own clip region. Result: 1; 0 if the context has none, -1 on failure. */
PLATFORM_API int WINAPI GetClipRgn(HDC dc, HRGN region);
PLATFORM_API int WINAPI ExcludeClipRect(HDC dc, int left, int top, int right, int bottom);
PLATFORM_API int WINAPI IntersectClipRect(HDC dc, int left, int top, int right, int bottom);
/* The rectangle round the area that the context can draw on. */
PLATFORM_API int WINAPI GetClipBox(HDC dc, RECT *rect);

#ifdef __cplusplus
}
#endif

#endif
