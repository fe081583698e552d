/* Lines, shapes and edges. Right and bottom edges are exclusive. */
#ifndef PLATFORM_WINAPI_DRAWING_H
#define PLATFORM_WINAPI_DRAWING_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Lines. A line leaves its last pixel out. */

PLATFORM_API BOOL WINAPI MoveToEx(HDC dc, int x, int y, POINT *previous);
PLATFORM_API BOOL WINAPI LineTo(HDC dc, int x, int y);
PLATFORM_API BOOL WINAPI Polyline(HDC dc, const POINT *points, int count);
PLATFORM_API BOOL WINAPI PolyBezierTo(HDC dc, const POINT *points, DWORD count);
PLATFORM_API COLORREF WINAPI SetPixel(HDC dc, int x, int y, COLORREF color);
PLATFORM_API COLORREF WINAPI GetPixel(HDC dc, int x, int y);

/* Shapes: outlined with the pen and filled with the brush. */

PLATFORM_API BOOL WINAPI Rectangle(HDC dc, int left, int top, int right, int bottom);
PLATFORM_API BOOL WINAPI RoundRect(HDC dc, int left, int top, int right, int bottom, int width, int height);
PLATFORM_API BOOL WINAPI Ellipse(HDC dc, int left, int top, int right, int bottom);
PLATFORM_API BOOL WINAPI Polygon(HDC dc, const POINT *points, int count);
/* brush: a brush, or a system colour plus 1. */
PLATFORM_API int WINAPI FillRect(HDC dc, const RECT *rect, HBRUSH brush);
PLATFORM_API int WINAPI FrameRect(HDC dc, const RECT *rect, HBRUSH brush);

#define BDR_RAISEDOUTER 1u
#define BDR_SUNKENOUTER 2u
#define BDR_RAISEDINNER 4u
#define BDR_SUNKENINNER 8u
#define EDGE_RAISED (BDR_RAISEDOUTER | BDR_RAISEDINNER)
#define EDGE_SUNKEN (BDR_SUNKENOUTER | BDR_SUNKENINNER)
#define EDGE_ETCHED (BDR_SUNKENOUTER | BDR_RAISEDINNER)
#define EDGE_BUMP (BDR_RAISEDOUTER | BDR_SUNKENINNER)
#define BF_LEFT 0x0001u
#define BF_TOP 0x0002u
#define BF_RIGHT 0x0004u
#define BF_BOTTOM 0x0008u
#define BF_RECT (BF_LEFT | BF_TOP | BF_RIGHT | BF_BOTTOM)
#define BF_DIAGONAL 0x0010u
#define BF_MIDDLE 0x0800u
#define BF_SOFT 0x1000u
#define BF_ADJUST 0x2000u
#define BF_FLAT 0x4000u
#define BF_MONO 0x8000u

#define DFC_CAPTION 1u
#define DFC_MENU 2u
#define DFC_SCROLL 3u
#define DFC_BUTTON 4u
#define DFCS_CAPTIONCLOSE 0x0000u
#define DFCS_CAPTIONMIN 0x0001u
#define DFCS_CAPTIONMAX 0x0002u
#define DFCS_CAPTIONRESTORE 0x0003u
#define DFCS_CAPTIONHELP 0x0004u
#define DFCS_MENUARROW 0x0000u
#define DFCS_MENUCHECK 0x0001u
#define DFCS_MENUBULLET 0x0002u
#define DFCS_SCROLLUP 0x0000u
#define DFCS_SCROLLDOWN 0x0001u
#define DFCS_SCROLLLEFT 0x0002u
#define DFCS_SCROLLRIGHT 0x0003u
#define DFCS_SCROLLCOMBOBOX 0x0005u
#define DFCS_SCROLLSIZEGRIP 0x0008u
#define DFCS_BUTTONCHECK 0x0000u
#define DFCS_BUTTONRADIO 0x0004u
#define DFCS_BUTTON3STATE 0x0008u
#define DFCS_BUTTONPUSH 0x0010u
#define DFCS_INACTIVE 0x0100u
#define DFCS_PUSHED 0x0200u
#define DFCS_CHECKED 0x0400u
#define DFCS_ADJUSTRECT 0x2000u
#define DFCS_FLAT 0x4000u
#define DFCS_MONO 0x8000u

/* Frames in the classic look. BF_ADJUST and DFCS_ADJUSTRECT shrink the rectangle to the part inside the frame. */
PLATFORM_API BOOL WINAPI DrawEdge(HDC dc, RECT *rect, UINT edge, UINT flags);
PLATFORM_API BOOL WINAPI DrawFrameControl(HDC dc, RECT *rect, UINT type, UINT state);
/* A dotted frame. A second call removes it. */
PLATFORM_API BOOL WINAPI DrawFocusRect(HDC dc, const RECT *rect);

#ifdef __cplusplus
}
#endif

#endif
