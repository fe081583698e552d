/* The scroll bars of windows: WS_VSCROLL gives one at the right of the client area, WS_HSCROLL one below it. A bar only
 * tells the user's wishes. The program sets its positions, which are any numbers, and scrolls its content.
 *
 * A bar is hidden while its page covers the whole range, and the client area grows. With SIF_DISABLENOSCROLL it is
 * disabled instead. SB_CTL isn't supported: there are no scroll bar controls. */
#ifndef PLATFORM_WINAPI_SCROLL_H
#define PLATFORM_WINAPI_SCROLL_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define WS_VSCROLL 0x00200000u
#define WS_HSCROLL 0x00100000u

/* Bars. */
#define SB_HORZ 0
#define SB_VERT 1
#define SB_CTL 2
#define SB_BOTH 3

#define SIF_RANGE 0x01u
#define SIF_PAGE 0x02u
#define SIF_POS 0x04u
#define SIF_DISABLENOSCROLL 0x08u
#define SIF_TRACKPOS 0x10u
#define SIF_ALL (SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS)

/* Both ends of the range are inclusive. The last position is nMax - max(nPage - 1, 0). */
typedef struct tagSCROLLINFO {
  UINT cbSize;
  UINT fMask; /* SIF_...: the valid members */
  int nMin, nMax;
  UINT nPage;
  int nPos;
  int nTrackPos; /* the thumb's position while the user holds it; read only */
} SCROLLINFO;

#define ESB_ENABLE_BOTH 0u
#define ESB_DISABLE_UP 1u
#define ESB_DISABLE_LEFT 1u
#define ESB_DISABLE_DOWN 2u
#define ESB_DISABLE_RIGHT 2u
#define ESB_DISABLE_BOTH 3u

/* WM_HSCROLL, WM_VSCROLL: the low word of wParam is the user's request. With SB_THUMBTRACK and SB_THUMBPOSITION the
 * high word has the low 16 bits of the thumb's position; GetScrollInfo tells all of it. */
#define WM_HSCROLL 0x0114u
#define WM_VSCROLL 0x0115u
#define SB_LINEUP 0
#define SB_LINELEFT 0
#define SB_LINEDOWN 1
#define SB_LINERIGHT 1
#define SB_PAGEUP 2
#define SB_PAGELEFT 2
#define SB_PAGEDOWN 3
#define SB_PAGERIGHT 3
#define SB_THUMBPOSITION 4 /* the thumb was released */
#define SB_THUMBTRACK 5    /* the thumb is moving */
#define SB_TOP 6
#define SB_LEFT 6
#define SB_BOTTOM 7
#define SB_RIGHT 7
#define SB_ENDSCROLL 8 /* the button was released */

/* Result: the position, within the range. */
PLATFORM_API int WINAPI SetScrollInfo(HWND window, int bar, const SCROLLINFO *info, BOOL redraw);
/* FALSE for a window that never had a bar; the record isn't changed then. */
PLATFORM_API BOOL WINAPI GetScrollInfo(HWND window, int bar, SCROLLINFO *info);
/* Result: the position before. */
PLATFORM_API int WINAPI SetScrollPos(HWND window, int bar, int position, BOOL redraw);
PLATFORM_API int WINAPI GetScrollPos(HWND window, int bar);
PLATFORM_API BOOL WINAPI SetScrollRange(HWND window, int bar, int min, int max, BOOL redraw);
PLATFORM_API BOOL WINAPI GetScrollRange(HWND window, int bar, int *min, int *max);
/* bar: may be SB_BOTH. */
PLATFORM_API BOOL WINAPI ShowScrollBar(HWND window, int bar, BOOL show);
/* arrows: ESB_... Result: FALSE if nothing changes. */
PLATFORM_API BOOL WINAPI EnableScrollBar(HWND window, UINT bar, UINT arrows);

#ifdef __cplusplus
}
#endif

#endif
