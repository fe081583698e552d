/* Icons and cursors. */
#ifndef PLATFORM_WINAPI_ICONS_H
#define PLATFORM_WINAPI_ICONS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define IDI_APPLICATION MAKEINTRESOURCEA(32512)
#define IDC_ARROW MAKEINTRESOURCEA(32512)
#define IDC_SIZENWSE MAKEINTRESOURCEA(32642)
#define IDC_SIZENESW MAKEINTRESOURCEA(32643)
#define IDC_SIZEWE MAKEINTRESOURCEA(32644)
#define IDC_SIZENS MAKEINTRESOURCEA(32645)

/* The system's own icons and cursors, by IDI_... and IDC_...; an instance has none here. */
PLATFORM_API HICON WINAPI LoadIconA(HINSTANCE instance, LPCSTR name);
PLATFORM_API HCURSOR WINAPI LoadCursorA(HINSTANCE instance, LPCSTR name);
PLATFORM_API HCURSOR WINAPI SetCursor(HCURSOR cursor);

#ifdef __cplusplus
}
#endif

#endif
