/* Private profiles. A name without a folder lies in the user's folder for settings. */
#ifndef PLATFORM_WINAPI_PROFILES_H
#define PLATFORM_WINAPI_PROFILES_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

PLATFORM_API DWORD WINAPI GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR defaultText, LPSTR text,
                                                   DWORD size, LPCSTR name);
PLATFORM_API UINT WINAPI GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT defaultValue, LPCSTR name);
/* On return the file has the whole new content. */
PLATFORM_API BOOL WINAPI WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR text, LPCSTR name);

#ifdef __cplusplus
}
#endif

#endif
