/* The part of COM that programs call although they use no component: a thread enters and leaves it. */
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

/* reserved: null. Result: S_OK for the thread's first call, S_FALSE while it is in already; each of them counts. */
PLATFORM_API HRESULT WINAPI CoInitialize(LPVOID reserved);
/* Takes one such call back; without one it does nothing. */
PLATFORM_API void WINAPI CoUninitialize(void);

#ifdef __cplusplus
}
#endif

#endif
