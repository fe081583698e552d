/* Device contexts, for all drawing: their numbers, mapping and modes.
 *
 * Coordinates are logical unless a comment says otherwise. Right and bottom edges are exclusive. With an invalid handle
 * a call fails and does nothing. */
#ifndef PLATFORM_WINAPI_CONTEXTS_H
#define PLATFORM_WINAPI_CONTEXTS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* driver: "DISPLAY" gives a context with the display's numbers that draws nothing. Any other driver, or null, gives a
 * printer by its name device. mode: a DEVMODEA, null for the printer's own settings. The caller ends the context with
 * DeleteDC. */
PLATFORM_API HDC WINAPI CreateDCA(LPCSTR driver, LPCSTR device, LPCSTR output, const void *mode);
/* A context that draws on the bitmap selected into it. At first this is a bitmap of one black pixel. */
PLATFORM_API HDC WINAPI CreateCompatibleDC(HDC dc);
PLATFORM_API BOOL WINAPI DeleteDC(HDC dc);

#define TECHNOLOGY 2
#define DT_RASDISPLAY 1
#define DT_RASPRINTER 2
#define HORZSIZE 4
#define VERTSIZE 6
#define HORZRES 8
#define VERTRES 10
#define BITSPIXEL 12
#define PLANES 14
#define NUMCOLORS 24
#define RASTERCAPS 38
#define RC_BITBLT 0x0001
#define RC_BITMAP64 0x0008
#define RC_GDI20_OUTPUT 0x0010
#define RC_DI_BITMAP 0x0080
#define RC_DIBTODEV 0x0200
#define RC_BIGFONT 0x0400
#define RC_STRETCHBLT 0x0800
#define RC_FLOODFILL 0x1000
#define RC_STRETCHDIB 0x2000
#define RC_DEVBITS 0x8000
#define LOGPIXELSX 88
#define LOGPIXELSY 90
#define PHYSICALWIDTH 110
#define PHYSICALHEIGHT 111
#define PHYSICALOFFSETX 112
#define PHYSICALOFFSETY 113

PLATFORM_API int WINAPI GetDeviceCaps(HDC dc, int index);

/* Mapping. A device coordinate is (logical - window origin) x viewport extent / window extent + viewport origin. */

#define MM_TEXT 1
#define MM_LOMETRIC 2
#define MM_HIMETRIC 3
#define MM_LOENGLISH 4
#define MM_HIENGLISH 5
#define MM_TWIPS 6
#define MM_ISOTROPIC 7
#define MM_ANISOTROPIC 8

PLATFORM_API int WINAPI GetMapMode(HDC dc);
PLATFORM_API int WINAPI SetMapMode(HDC dc, int mode);
PLATFORM_API BOOL WINAPI SetWindowOrgEx(HDC dc, int x, int y, POINT *previous);
PLATFORM_API BOOL WINAPI SetWindowExtEx(HDC dc, int x, int y, SIZE *previous);
PLATFORM_API BOOL WINAPI SetViewportOrgEx(HDC dc, int x, int y, POINT *previous);
PLATFORM_API BOOL WINAPI SetViewportExtEx(HDC dc, int x, int y, SIZE *previous);
PLATFORM_API BOOL WINAPI LPtoDP(HDC dc, POINT *points, int count);
PLATFORM_API BOOL WINAPI DPtoLP(HDC dc, POINT *points, int count);

/* Modes. */

#define R2_BLACK 1
#define R2_NOTMERGEPEN 2
#define R2_MASKNOTPEN 3
#define R2_NOTCOPYPEN 4
#define R2_MASKPENNOT 5
#define R2_NOT 6
#define R2_XORPEN 7
#define R2_NOTMASKPEN 8
#define R2_MASKPEN 9
#define R2_NOTXORPEN 10
#define R2_NOP 11
#define R2_MERGENOTPEN 12
#define R2_COPYPEN 13
#define R2_MERGEPENNOT 14
#define R2_MERGEPEN 15
#define R2_WHITE 16
#define TRANSPARENT 1
#define OPAQUE 2
#define ALTERNATE 1
#define WINDING 2

PLATFORM_API int WINAPI GetROP2(HDC dc);
PLATFORM_API int WINAPI SetROP2(HDC dc, int mode);
PLATFORM_API int WINAPI GetBkMode(HDC dc);
PLATFORM_API int WINAPI SetBkMode(HDC dc, int mode);
PLATFORM_API COLORREF WINAPI SetBkColor(HDC dc, COLORREF color);
PLATFORM_API COLORREF WINAPI GetTextColor(HDC dc);
PLATFORM_API COLORREF WINAPI SetTextColor(HDC dc, COLORREF color);
PLATFORM_API int WINAPI SetPolyFillMode(HDC dc, int mode);
PLATFORM_API BOOL WINAPI SetBrushOrgEx(HDC dc, int x, int y, POINT *previous);

#ifdef __cplusplus
}
#endif

#endif
