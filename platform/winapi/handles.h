/* Functions for handles of files and waiting objects. */
#ifndef PLATFORM_WINAPI_HANDLES_H
#define PLATFORM_WINAPI_HANDLES_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define INVALID_HANDLE_VALUE ((HANDLE)(LONG_PTR)-1)

typedef struct _SECURITY_ATTRIBUTES {
  DWORD nLength;
  LPVOID lpSecurityDescriptor;
  BOOL bInheritHandle;
} SECURITY_ATTRIBUTES, *LPSECURITY_ATTRIBUTES;

/* Closes a file, a mapping, a mutex or an event. */
PLATFORM_API BOOL WINAPI CloseHandle(HANDLE handle);

#ifdef __cplusplus
}
#endif

#endif
