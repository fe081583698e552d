/* Mouse, keyboard, focus and activation. The numbers of keys are in keys.h. */
#ifndef PLATFORM_WINAPI_INPUT_H
#define PLATFORM_WINAPI_INPUT_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Enabling, focus, activation. */

PLATFORM_API BOOL WINAPI EnableWindow(HWND window, BOOL enable);
PLATFORM_API HWND WINAPI SetFocus(HWND window);
PLATFORM_API HWND WINAPI GetFocus(void);
PLATFORM_API HWND WINAPI SetActiveWindow(HWND window);
PLATFORM_API HWND WINAPI GetActiveWindow(void);
PLATFORM_API BOOL WINAPI SetForegroundWindow(HWND window);
PLATFORM_API HWND WINAPI GetForegroundWindow(void);

/* The mouse. */

#define MK_LBUTTON 0x01u
#define MK_RBUTTON 0x02u
#define MK_SHIFT 0x04u
#define MK_CONTROL 0x08u
#define MK_MBUTTON 0x10u

#define TME_LEAVE 2u
#define TME_CANCEL 0x80000000u

typedef struct tagTRACKMOUSEEVENT {
  DWORD cbSize, dwFlags;
  HWND hwndTrack;
  DWORD dwHoverTime;
} TRACKMOUSEEVENT;

PLATFORM_API HWND WINAPI SetCapture(HWND window);
PLATFORM_API BOOL WINAPI ReleaseCapture(void);
PLATFORM_API HWND WINAPI GetCapture(void);
PLATFORM_API BOOL WINAPI TrackMouseEvent(TRACKMOUSEEVENT *event);
PLATFORM_API BOOL WINAPI GetCursorPos(POINT *point);
PLATFORM_API BOOL WINAPI SetCursorPos(int x, int y);
PLATFORM_API UINT WINAPI GetDoubleClickTime(void);

/* The keyboard. GetKeyState tells the state as of the last message taken, GetAsyncKeyState the present one. The high
 * bit is set while the key is down. */

PLATFORM_API SHORT WINAPI GetKeyState(int key);
PLATFORM_API SHORT WINAPI GetAsyncKeyState(int key);

/* Simulated input. */

#define MOUSEEVENTF_MOVE 0x0001u
#define MOUSEEVENTF_LEFTDOWN 0x0002u
#define MOUSEEVENTF_LEFTUP 0x0004u
#define MOUSEEVENTF_RIGHTDOWN 0x0008u
#define MOUSEEVENTF_RIGHTUP 0x0010u
#define MOUSEEVENTF_MIDDLEDOWN 0x0020u
#define MOUSEEVENTF_MIDDLEUP 0x0040u
#define MOUSEEVENTF_WHEEL 0x0800u
#define MOUSEEVENTF_ABSOLUTE 0x8000u
#define KEYEVENTF_EXTENDEDKEY 1u
#define KEYEVENTF_KEYUP 2u

PLATFORM_API void WINAPI mouse_event(DWORD flags, DWORD x, DWORD y, DWORD data, ULONG_PTR extra);
PLATFORM_API void WINAPI keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR extra);

#ifdef __cplusplus
}
#endif

#endif
