/* Messages to the user. */
#ifndef PLATFORM_WINAPI_BOXES_H
#define PLATFORM_WINAPI_BOXES_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define MB_OK 0u
#define IDOK 1

PLATFORM_API int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);

#ifdef __cplusplus
}
#endif

#endif
