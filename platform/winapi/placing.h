/* Place, size, order and state of windows. The frame round a client area depends only on the style. */
#ifndef PLATFORM_WINAPI_PLACING_H
#define PLATFORM_WINAPI_PLACING_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define SWP_NOSIZE 0x0001u
#define SWP_NOMOVE 0x0002u
#define SWP_NOZORDER 0x0004u
#define SWP_NOREDRAW 0x0008u
#define SWP_NOACTIVATE 0x0010u
#define SWP_FRAMECHANGED 0x0020u
#define SWP_SHOWWINDOW 0x0040u
#define SWP_HIDEWINDOW 0x0080u
#define SWP_NOCOPYBITS 0x0100u
#define SWP_NOSENDCHANGING 0x0400u
#define SWP_ASYNCWINDOWPOS 0x4000u /* doesn't wait for the window's thread */
#define HWND_TOP ((HWND)0)
#define HWND_BOTTOM ((HWND)1)
#define HWND_TOPMOST ((HWND)(LONG_PTR)-1)
#define HWND_NOTOPMOST ((HWND)(LONG_PTR)-2)

#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_SHOWMINIMIZED 2
#define SW_SHOWMAXIMIZED 3
#define SW_MAXIMIZE 3
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
#define SW_MINIMIZE 6
#define SW_SHOWMINNOACTIVE 7
#define SW_SHOWNA 8
#define SW_RESTORE 9
#define SW_SHOWDEFAULT 10

typedef struct tagWINDOWPOS {
  HWND hwnd;
  HWND hwndInsertAfter;
  int x, y, cx, cy;
  UINT flags;
} WINDOWPOS;

typedef struct tagNCCALCSIZE_PARAMS {
  RECT rgrc[3];
  WINDOWPOS *lppos;
} NCCALCSIZE_PARAMS;

typedef struct tagMINMAXINFO {
  POINT ptReserved;
  POINT ptMaxSize;
  POINT ptMaxPosition;
  POINT ptMinTrackSize;
  POINT ptMaxTrackSize;
} MINMAXINFO;

#define WPF_RESTORETOMAXIMIZED 2u

typedef struct tagWINDOWPLACEMENT {
  UINT length, flags, showCmd;
  POINT ptMinPosition, ptMaxPosition;
  RECT rcNormalPosition;
} WINDOWPLACEMENT;

PLATFORM_API BOOL WINAPI SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
PLATFORM_API BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
PLATFORM_API BOOL WINAPI ShowWindow(HWND window, int command);
/* Doesn't wait if the window belongs to another thread. */
PLATFORM_API BOOL WINAPI ShowWindowAsync(HWND window, int command);
PLATFORM_API BOOL WINAPI GetWindowPlacement(HWND window, WINDOWPLACEMENT *placement);
PLATFORM_API BOOL WINAPI GetWindowRect(HWND window, RECT *rect);
PLATFORM_API BOOL WINAPI GetClientRect(HWND window, RECT *rect);
PLATFORM_API BOOL WINAPI AdjustWindowRectEx(RECT *rect, DWORD style, BOOL menu, DWORD exStyle);
/* A null window stands for the screen. */
PLATFORM_API int WINAPI MapWindowPoints(HWND from, HWND to, POINT *points, UINT count);
PLATFORM_API BOOL WINAPI ClientToScreen(HWND window, POINT *point);
PLATFORM_API BOOL WINAPI ScreenToClient(HWND window, POINT *point);
PLATFORM_API HWND WINAPI WindowFromPoint(POINT point);
PLATFORM_API HWND WINAPI ChildWindowFromPoint(HWND parent, POINT point);

#ifdef __cplusplus
}
#endif

#endif
