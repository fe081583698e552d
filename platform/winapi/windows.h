/* Windows. A window belongs to the thread that made it. Calls with an invalid handle fail with
 * ERROR_INVALID_WINDOW_HANDLE and do nothing. */
#ifndef PLATFORM_WINAPI_WINDOWS_H
#define PLATFORM_WINAPI_WINDOWS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef LRESULT(CALLBACK *WNDPROC)(HWND, UINT, WPARAM, LPARAM);

/* Classes. */

#define CS_VREDRAW 0x0001u
#define CS_HREDRAW 0x0002u
#define CS_DBLCLKS 0x0008u

typedef struct tagWNDCLASSA {
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra;
  int cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;
  HBRUSH hbrBackground; /* a brush, a system colour plus 1, or null */
  LPCSTR lpszMenuName;
  LPCSTR lpszClassName;
} WNDCLASSA;

PLATFORM_API ATOM WINAPI RegisterClassA(const WNDCLASSA *windowClass);
PLATFORM_API int WINAPI GetClassNameA(HWND window, LPSTR text, int size);

/* Creation and destruction. */

#define WS_OVERLAPPED 0x00000000u
#define WS_POPUP 0x80000000u
#define WS_CHILD 0x40000000u
#define WS_MINIMIZE 0x20000000u
#define WS_VISIBLE 0x10000000u
#define WS_DISABLED 0x08000000u
#define WS_CLIPSIBLINGS 0x04000000u
#define WS_CLIPCHILDREN 0x02000000u
#define WS_MAXIMIZE 0x01000000u
#define WS_CAPTION 0x00C00000u
#define WS_BORDER 0x00800000u
#define WS_DLGFRAME 0x00400000u
#define WS_SYSMENU 0x00080000u
#define WS_THICKFRAME 0x00040000u
#define WS_MINIMIZEBOX 0x00020000u
#define WS_MAXIMIZEBOX 0x00010000u
#define WS_OVERLAPPEDWINDOW (WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX)

#define WS_EX_DLGMODALFRAME 0x00000001u
#define WS_EX_NOPARENTNOTIFY 0x00000004u
#define WS_EX_TOPMOST 0x00000008u
#define WS_EX_ACCEPTFILES 0x00000010u
#define WS_EX_TRANSPARENT 0x00000020u
#define WS_EX_TOOLWINDOW 0x00000080u
#define WS_EX_WINDOWEDGE 0x00000100u
#define WS_EX_CLIENTEDGE 0x00000200u
#define WS_EX_STATICEDGE 0x00020000u
#define WS_EX_LAYERED 0x00080000u
#define WS_EX_NOACTIVATE 0x08000000u

#define CW_USEDEFAULT ((int)0x80000000u)

typedef struct tagCREATESTRUCTA {
  LPVOID lpCreateParams;
  HINSTANCE hInstance;
  HMENU hMenu;
  HWND hwndParent;
  int cy, cx, y, x;
  LONG style;
  LPCSTR lpszName;
  LPCSTR lpszClass;
  DWORD dwExStyle;
} CREATESTRUCTA;

PLATFORM_API HWND WINAPI CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, int x, int y,
                                         int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                                         LPVOID parameter);
PLATFORM_API BOOL WINAPI DestroyWindow(HWND window);
PLATFORM_API LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
PLATFORM_API LRESULT WINAPI CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/* Relations and state. */

#define GW_HWNDFIRST 0u
#define GW_HWNDLAST 1u
#define GW_HWNDNEXT 2u
#define GW_HWNDPREV 3u
#define GW_OWNER 4u
#define GW_CHILD 5u
#define GA_PARENT 1u
#define GA_ROOT 2u
#define GA_ROOTOWNER 3u
#define GWL_WNDPROC (-4)
#define GWL_HINSTANCE (-6)
#define GWL_HWNDPARENT (-8)
#define GWL_ID (-12)
#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWL_USERDATA (-21)
#define GWLP_WNDPROC (-4)
#define GWLP_USERDATA (-21)

typedef struct tagSTYLESTRUCT {
  DWORD styleOld, styleNew;
} STYLESTRUCT;

PLATFORM_API BOOL WINAPI IsWindow(HWND window);
PLATFORM_API BOOL WINAPI IsChild(HWND parent, HWND window);
PLATFORM_API BOOL WINAPI IsWindowVisible(HWND window);
PLATFORM_API BOOL WINAPI IsWindowEnabled(HWND window);
PLATFORM_API BOOL WINAPI IsIconic(HWND window);
PLATFORM_API BOOL WINAPI IsZoomed(HWND window);
PLATFORM_API HWND WINAPI GetDesktopWindow(void);
/* Result: the thread of a window; 0 for an invalid handle. process: may be null. */
PLATFORM_API DWORD WINAPI GetWindowThreadProcessId(HWND window, DWORD *process);
PLATFORM_API HWND WINAPI GetParent(HWND window);
PLATFORM_API HWND WINAPI SetParent(HWND window, HWND parent);
PLATFORM_API HWND WINAPI GetWindow(HWND window, UINT relation);
PLATFORM_API HWND WINAPI GetAncestor(HWND window, UINT relation);
PLATFORM_API HWND WINAPI FindWindowA(LPCSTR className, LPCSTR title);
PLATFORM_API HWND WINAPI GetDlgItem(HWND parent, int id);
PLATFORM_API LONG WINAPI GetWindowLongA(HWND window, int index);
PLATFORM_API LONG WINAPI SetWindowLongA(HWND window, int index, LONG value);
PLATFORM_API LONG_PTR WINAPI GetWindowLongPtrA(HWND window, int index);
PLATFORM_API LONG_PTR WINAPI SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
PLATFORM_API BOOL WINAPI SetWindowTextA(HWND window, LPCSTR text);
PLATFORM_API int WINAPI GetWindowTextA(HWND window, LPSTR text, int size);
PLATFORM_API int WINAPI GetWindowTextLengthA(HWND window);

/* Layered windows. Programs also find SetLayeredWindowAttributes at run time, in "user32". */

#define LWA_ALPHA 2u

PLATFORM_API BOOL WINAPI SetLayeredWindowAttributes(HWND window, COLORREF key, BYTE alpha, DWORD flags);
PLATFORM_API BOOL WINAPI GetLayeredWindowAttributes(HWND window, COLORREF *key, BYTE *alpha, DWORD *flags);

#ifdef __cplusplus
}
#endif

#endif
