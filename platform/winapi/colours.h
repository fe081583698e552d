/* Colours. With bit 24 a colour is the number, in its lower half, of an entry in the palette that the context has
 * selected; a number without an entry means the first one. The other bits of the top byte change nothing: a colour
 * of a palette (top byte 2) is drawn as the colour itself. */
#ifndef PLATFORM_WINAPI_COLOURS_H
#define PLATFORM_WINAPI_COLOURS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define RGB(red, green, blue) ((COLORREF)((BYTE)(red) | (DWORD)(BYTE)(green) << 8 | (DWORD)(BYTE)(blue) << 16))
#define PALETTERGB(red, green, blue) (0x02000000u | RGB(red, green, blue))
#define PALETTEINDEX(number) (0x01000000u | (WORD)(number))
#define GetRValue(color) ((BYTE)(color))
#define GetGValue(color) ((BYTE)((color) >> 8))
#define GetBValue(color) ((BYTE)((color) >> 16))
#define CLR_INVALID 0xFFFFFFFFu

#define COLOR_SCROLLBAR 0
#define COLOR_BACKGROUND 1
#define COLOR_ACTIVECAPTION 2
#define COLOR_WINDOW 5
#define COLOR_WINDOWFRAME 6
#define COLOR_WINDOWTEXT 8
#define COLOR_APPWORKSPACE 12
#define COLOR_HIGHLIGHT 13
#define COLOR_HIGHLIGHTTEXT 14
#define COLOR_BTNFACE 15
#define COLOR_BTNSHADOW 16
#define COLOR_GRAYTEXT 17
#define COLOR_BTNTEXT 18
#define COLOR_BTNHIGHLIGHT 20
#define COLOR_3DDKSHADOW 21
#define COLOR_3DLIGHT 22
#define COLOR_INFOTEXT 23
#define COLOR_INFOBK 24

PLATFORM_API DWORD WINAPI GetSysColor(int index);
PLATFORM_API HBRUSH WINAPI GetSysColorBrush(int index);

#ifdef __cplusplus
}
#endif

#endif
