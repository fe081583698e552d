/* Drawing objects: pens, brushes and palettes. Fonts and bitmaps have their own headers. A selected object may be
 * deleted: it goes when it is no longer selected. */
#ifndef PLATFORM_WINAPI_OBJECTS_H
#define PLATFORM_WINAPI_OBJECTS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define PS_SOLID 0
#define PS_DASH 1
#define PS_DOT 2
#define PS_DASHDOT 3
#define PS_DASHDOTDOT 4
#define PS_NULL 5
#define PS_INSIDEFRAME 6
#define BS_SOLID 0u
#define BS_NULL 1u
#define BS_HATCHED 2u
#define HS_HORIZONTAL 0
#define HS_VERTICAL 1
#define HS_FDIAGONAL 2
#define HS_BDIAGONAL 3
#define HS_CROSS 4
#define HS_DIAGCROSS 5

#define WHITE_BRUSH 0
#define LTGRAY_BRUSH 1
#define GRAY_BRUSH 2
#define DKGRAY_BRUSH 3
#define BLACK_BRUSH 4
#define NULL_BRUSH 5
#define WHITE_PEN 6
#define BLACK_PEN 7
#define NULL_PEN 8
#define OEM_FIXED_FONT 10
#define ANSI_FIXED_FONT 11
#define ANSI_VAR_FONT 12
#define SYSTEM_FONT 13
#define DEVICE_DEFAULT_FONT 14
#define DEFAULT_PALETTE 15
#define SYSTEM_FIXED_FONT 16
#define DEFAULT_GUI_FONT 17

typedef struct tagLOGPEN {
  UINT lopnStyle;
  POINT lopnWidth;
  COLORREF lopnColor;
} LOGPEN;

typedef struct tagLOGBRUSH {
  UINT lbStyle;
  COLORREF lbColor;
  ULONG_PTR lbHatch;
} LOGBRUSH;

PLATFORM_API HPEN WINAPI CreatePenIndirect(const LOGPEN *pen);
PLATFORM_API HPEN WINAPI CreatePen(int style, int width, COLORREF color);
PLATFORM_API HBRUSH WINAPI CreateSolidBrush(COLORREF color);
PLATFORM_API HBRUSH WINAPI CreateHatchBrush(int hatch, COLORREF color);
PLATFORM_API HGDIOBJ WINAPI GetStockObject(int index);
/* Result: the object selected before; for a region the kind of the resulting region; null on failure. */
PLATFORM_API HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ object);
/* Writes a description of the object: LOGPEN, LOGBRUSH, LOGFONTA, BITMAP, or the number of a palette's entries. */
PLATFORM_API int WINAPI GetObjectA(HANDLE object, int size, void *description);
PLATFORM_API BOOL WINAPI DeleteObject(HGDIOBJ object);
PLATFORM_API BOOL WINAPI UnrealizeObject(HGDIOBJ object);

/* Palettes can be selected, but pixels always have true colours. */

typedef struct tagPALETTEENTRY {
  BYTE peRed, peGreen, peBlue, peFlags;
} PALETTEENTRY;

typedef struct tagLOGPALETTE {
  WORD palVersion, palNumEntries;
  PALETTEENTRY palPalEntry[1];
} LOGPALETTE;

PLATFORM_API HPALETTE WINAPI CreatePalette(const LOGPALETTE *palette);
PLATFORM_API HPALETTE WINAPI SelectPalette(HDC dc, HPALETTE palette, BOOL background);
PLATFORM_API UINT WINAPI GetPaletteEntries(HPALETTE palette, UINT first, UINT count, PALETTEENTRY *entries);

#ifdef __cplusplus
}
#endif

#endif
