/* More of the Windows API that tests call. Part of winapi.h. */
#ifndef PLATFORM_WINAPI_MORE_H
#define PLATFORM_WINAPI_MORE_H

#ifndef PLATFORM_WINAPI_H
#error "include platform/winapi.h"
#endif

#ifdef __cplusplus
extern "C" {
#endif

#define ERROR_TIMEOUT 1460u
#define WM_NCLBUTTONUP 0x00A2u
#define WM_KEYFIRST 0x0100u
#define WM_KEYLAST 0x0109u
#define SWP_ASYNCWINDOWPOS 0x4000u
#define MF_DEFAULT 0x1000u
#define SMTO_NORMAL 0x0000u
#define SMTO_BLOCK 0x0001u
#define SMTO_ABORTIFHUNG 0x0002u

/* The thread that made a window; 0 for a handle that is none. process: gets the process; may be null. */
PLATFORM_API DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD process);
/* As SendMessageA, but gives up after some time. Result: 0 then, with ERROR_TIMEOUT. result: what the window answered. */
PLATFORM_API LRESULT WINAPI SendMessageTimeoutA(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags,
                                                UINT milliseconds, ULONG_PTR *result);
/* As SendMessageA to a window of this thread; to any other it doesn't wait for the answer. */
PLATFORM_API BOOL WINAPI SendNotifyMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/* As ShowWindow, but doesn't wait for the thread of the window. */
PLATFORM_API BOOL WINAPI ShowWindowAsync(HWND window, int command);

#ifdef __cplusplus
}
#endif

#endif
