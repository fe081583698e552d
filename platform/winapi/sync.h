/* Threads and waiting. */
#ifndef PLATFORM_WINAPI_SYNC_H
#define PLATFORM_WINAPI_SYNC_H

#include "platform/winapi/handles.h"
#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

PLATFORM_API DWORD WINAPI GetCurrentThreadId(void);
PLATFORM_API void WINAPI Sleep(DWORD milliseconds);

/* Waiting objects. A named object lives as long as a process of this user has a handle to it. A name may begin with
 * "Local\" or "Global\". "Local\" changes nothing, "Global\" makes it another name. Other backslashes are invalid. */

typedef struct _CRITICAL_SECTION {
  uint64_t state[6]; /* the lock itself: not to be copied */
} CRITICAL_SECTION, *LPCRITICAL_SECTION;

#define MUTEX_ALL_ACCESS 0x1F0001u
#define INFINITE 0xFFFFFFFFu
#define WAIT_OBJECT_0 0u
#define WAIT_ABANDONED 0x80u
#define WAIT_TIMEOUT 0x102u
#define WAIT_FAILED 0xFFFFFFFFu

PLATFORM_API void WINAPI InitializeCriticalSection(LPCRITICAL_SECTION section);
PLATFORM_API void WINAPI DeleteCriticalSection(LPCRITICAL_SECTION section);
PLATFORM_API void WINAPI EnterCriticalSection(LPCRITICAL_SECTION section);
PLATFORM_API void WINAPI LeaveCriticalSection(LPCRITICAL_SECTION section);
PLATFORM_API HANDLE WINAPI CreateMutexA(LPSECURITY_ATTRIBUTES security, BOOL owned, LPCSTR name);
PLATFORM_API HANDLE WINAPI OpenMutexA(DWORD access, BOOL inherit, LPCSTR name);
PLATFORM_API BOOL WINAPI ReleaseMutex(HANDLE mutex);
PLATFORM_API HANDLE WINAPI CreateEventA(LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL set, LPCSTR name);
PLATFORM_API BOOL WINAPI SetEvent(HANDLE event);
PLATFORM_API BOOL WINAPI ResetEvent(HANDLE event);
PLATFORM_API DWORD WINAPI WaitForSingleObject(HANDLE object, DWORD milliseconds);

#ifdef __cplusplus
}
#endif

#endif
