/* Painting: update regions, and contexts of windows. */
#ifndef PLATFORM_WINAPI_PAINTING_H
#define PLATFORM_WINAPI_PAINTING_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define RDW_INVALIDATE 0x0001u
#define RDW_ERASE 0x0004u
#define RDW_VALIDATE 0x0008u
#define RDW_NOERASE 0x0020u
#define RDW_NOCHILDREN 0x0040u
#define RDW_ALLCHILDREN 0x0080u
#define RDW_UPDATENOW 0x0100u
#define RDW_ERASENOW 0x0200u
#define RDW_FRAME 0x0400u

typedef struct tagPAINTSTRUCT {
  HDC hdc;
  BOOL fErase;
  RECT rcPaint;
  BOOL fRestore;
  BOOL fIncUpdate;
  BYTE rgbReserved[32];
} PAINTSTRUCT;

PLATFORM_API BOOL WINAPI InvalidateRect(HWND window, const RECT *rect, BOOL erase);
PLATFORM_API BOOL WINAPI ValidateRect(HWND window, const RECT *rect);
PLATFORM_API BOOL WINAPI RedrawWindow(HWND window, const RECT *rect, HRGN region, UINT flags);
PLATFORM_API BOOL WINAPI UpdateWindow(HWND window);
PLATFORM_API BOOL WINAPI GetUpdateRect(HWND window, RECT *rect, BOOL erase);
PLATFORM_API HDC WINAPI BeginPaint(HWND window, PAINTSTRUCT *paint);
PLATFORM_API BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT *paint);

#define DCX_WINDOW 0x00000001u

/* The visible client area of a window, or of the screen. With DCX_WINDOW GetDCEx gives the whole window. The caller
 * gives the context back with ReleaseDC. */
PLATFORM_API HDC WINAPI GetDC(HWND window);
PLATFORM_API HDC WINAPI GetDCEx(HWND window, HRGN region, DWORD flags);
PLATFORM_API int WINAPI ReleaseDC(HWND window, HDC dc);

#ifdef __cplusplus
}
#endif

#endif
