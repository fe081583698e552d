/* The part of COM that programs without components call: a thread enters and leaves COM. */
#ifndef PLATFORM_WINAPI_COM_H
#define PLATFORM_WINAPI_COM_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef LONG HRESULT; /* negative for failure */

#define S_OK ((HRESULT)0)
#define S_FALSE ((HRESULT)1)
#define FAILED(result) ((HRESULT)(result) < 0)
#define E_NOINTERFACE ((HRESULT)0x80004002u)
#define E_INVALIDARG ((HRESULT)0x80070057u)

/* reserved: null. Result: S_OK for the thread's first call, S_FALSE for further calls. Every call needs a
 * CoUninitialize. */
PLATFORM_API HRESULT WINAPI CoInitialize(LPVOID reserved);
/* Undoes one call of CoInitialize. Without one it does nothing. */
PLATFORM_API void WINAPI CoUninitialize(void);

#ifdef __cplusplus
}
#endif

#endif
