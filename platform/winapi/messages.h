/* Messages: their numbers and parameters, the queue of a thread, timers. */
#ifndef PLATFORM_WINAPI_MESSAGES_H
#define PLATFORM_WINAPI_MESSAGES_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct tagMSG {
  HWND hwnd;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD time;
  POINT pt;
} MSG;

#define WM_NULL 0x0000u
#define WM_CREATE 0x0001u
#define WM_DESTROY 0x0002u
#define WM_MOVE 0x0003u
#define WM_SIZE 0x0005u
#define WM_ACTIVATE 0x0006u
#define WM_SETFOCUS 0x0007u
#define WM_KILLFOCUS 0x0008u
#define WM_ENABLE 0x000Au
#define WM_SETREDRAW 0x000Bu
#define WM_SETTEXT 0x000Cu
#define WM_GETTEXT 0x000Du
#define WM_GETTEXTLENGTH 0x000Eu
#define WM_PAINT 0x000Fu
#define WM_CLOSE 0x0010u
#define WM_QUIT 0x0012u
#define WM_QUERYENDSESSION 0x0011u
#define WM_QUERYOPEN 0x0013u
#define WM_ERASEBKGND 0x0014u
#define WM_ENDSESSION 0x0016u
#define WM_SHOWWINDOW 0x0018u
#define WM_ACTIVATEAPP 0x001Cu
#define WM_CANCELMODE 0x001Fu
#define WM_SETCURSOR 0x0020u
#define WM_MOUSEACTIVATE 0x0021u
#define WM_CHILDACTIVATE 0x0022u
#define WM_GETMINMAXINFO 0x0024u
#define WM_SETFONT 0x0030u /* wParam: a font, which stays the sender's; low word of lParam: whether to redraw */
#define WM_GETFONT 0x0031u
#define WM_WINDOWPOSCHANGING 0x0046u
#define WM_WINDOWPOSCHANGED 0x0047u
#define WM_NOTIFY 0x004Eu
#define WM_HELP 0x0053u
#define WM_CONTEXTMENU 0x007Bu
#define WM_STYLECHANGING 0x007Cu
#define WM_STYLECHANGED 0x007Du
#define WM_DISPLAYCHANGE 0x007Eu
#define WM_GETICON 0x007Fu
#define WM_SETICON 0x0080u
#define WM_NCCREATE 0x0081u
#define WM_NCDESTROY 0x0082u
#define WM_NCCALCSIZE 0x0083u
#define WM_NCHITTEST 0x0084u
#define WM_NCPAINT 0x0085u
#define WM_NCACTIVATE 0x0086u
#define WM_NCMOUSEMOVE 0x00A0u
#define WM_NCLBUTTONDOWN 0x00A1u
#define WM_NCLBUTTONUP 0x00A2u
#define WM_NCLBUTTONDBLCLK 0x00A3u
#define WM_NCRBUTTONUP 0x00A5u
#define WM_KEYFIRST 0x0100u
#define WM_KEYDOWN 0x0100u
#define WM_KEYUP 0x0101u
#define WM_CHAR 0x0102u
#define WM_SYSKEYDOWN 0x0104u
#define WM_SYSKEYUP 0x0105u
#define WM_SYSCHAR 0x0106u
#define WM_KEYLAST 0x0109u
#define WM_SYSCOMMAND 0x0112u
#define WM_TIMER 0x0113u
#define WM_MOUSEFIRST 0x0200u
#define WM_MOUSEMOVE 0x0200u
#define WM_LBUTTONDOWN 0x0201u
#define WM_LBUTTONUP 0x0202u
#define WM_LBUTTONDBLCLK 0x0203u
#define WM_RBUTTONDOWN 0x0204u
#define WM_RBUTTONUP 0x0205u
#define WM_RBUTTONDBLCLK 0x0206u
#define WM_MBUTTONDOWN 0x0207u
#define WM_MBUTTONUP 0x0208u
#define WM_MBUTTONDBLCLK 0x0209u
#define WM_MOUSEWHEEL 0x020Au
#define WM_MOUSEHWHEEL 0x020Eu
#define WM_PARENTNOTIFY 0x0210u
#define WM_SIZING 0x0214u
#define WM_CAPTURECHANGED 0x0215u
#define WM_MOVING 0x0216u
#define WM_ENTERSIZEMOVE 0x0231u
#define WM_EXITSIZEMOVE 0x0232u
#define WM_DROPFILES 0x0233u /* wParam: an HDROP, the receiver's to free with DragFinish */
#define WM_MOUSELEAVE 0x02A3u
#define WM_USER 0x0400u
#define WM_APP 0x8000u

/* Parameters and results of messages. */

#define SIZE_RESTORED 0
#define SIZE_MINIMIZED 1
#define SIZE_MAXIMIZED 2
#define WMSZ_LEFT 1

#define WA_INACTIVE 0
#define WA_ACTIVE 1
#define WA_CLICKACTIVE 2

#define MA_ACTIVATE 1
#define MA_ACTIVATEANDEAT 2
#define MA_NOACTIVATE 3
#define MA_NOACTIVATEANDEAT 4

#define HTERROR (-2)
#define HTTRANSPARENT (-1)
#define HTNOWHERE 0
#define HTCLIENT 1
#define HTCAPTION 2
#define HTSYSMENU 3
#define HTGROWBOX 4
#define HTHSCROLL 6
#define HTVSCROLL 7
#define HTMINBUTTON 8
#define HTMAXBUTTON 9
#define HTLEFT 10
#define HTRIGHT 11
#define HTTOP 12
#define HTTOPLEFT 13
#define HTTOPRIGHT 14
#define HTBOTTOM 15
#define HTBOTTOMLEFT 16
#define HTBOTTOMRIGHT 17
#define HTBORDER 18
#define HTCLOSE 20

#define WHEEL_DELTA 120

typedef struct tagNMHDR {
  HWND hwndFrom;
  UINT_PTR idFrom;
  UINT code;
} NMHDR;

/* The queue of a thread. */

#define SMTO_NORMAL 0u
#define SMTO_BLOCK 1u
#define SMTO_ABORTIFHUNG 2u
#define PM_NOREMOVE 0u
#define PM_REMOVE 1u

/* Messages are retrieved in this order: sent, posted, quit, input, paint, timer. */
PLATFORM_API BOOL WINAPI GetMessageA(MSG *message, HWND window, UINT first, UINT last);
PLATFORM_API BOOL WINAPI PeekMessageA(MSG *message, HWND window, UINT first, UINT last, UINT remove);
PLATFORM_API BOOL WINAPI TranslateMessage(const MSG *message);
PLATFORM_API LRESULT WINAPI DispatchMessageA(const MSG *message);
/* A message to another thread's window waits until that thread has handled it. Messages sent here are served
 * meanwhile. */
PLATFORM_API LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/* SendMessageA with a limit in milliseconds. Result: 0 with ERROR_TIMEOUT after the limit. flags: SMTO_NORMAL. result:
 * may be null. */
PLATFORM_API LRESULT WINAPI SendMessageTimeoutA(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags,
                                                UINT timeout, ULONG_PTR *result);
/* A message to another thread's window is sent without waiting. */
PLATFORM_API BOOL WINAPI SendNotifyMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
PLATFORM_API BOOL WINAPI PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
PLATFORM_API BOOL WINAPI PostThreadMessageA(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam);
PLATFORM_API void WINAPI PostQuitMessage(int status);
PLATFORM_API BOOL WINAPI InSendMessage(void);

/* Timers. For a null window the layer chooses the id, unless id is that of an existing timer without a window. */

#define USER_TIMER_MINIMUM 10u

typedef void(CALLBACK *TIMERPROC)(HWND, UINT, UINT_PTR, DWORD);

PLATFORM_API UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure);
PLATFORM_API BOOL WINAPI KillTimer(HWND window, UINT_PTR id);

#ifdef __cplusplus
}
#endif

#endif
