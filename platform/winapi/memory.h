/* Global memory: blocks that are passed by handle, such as to the clipboard. */
#ifndef PLATFORM_WINAPI_MEMORY_H
#define PLATFORM_WINAPI_MEMORY_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef HANDLE HGLOBAL;
typedef HANDLE HLOCAL;

/* The handle of a fixed block is its address. A movable block has an address only while it is locked, and its handle
 * fits 32 bits. A movable block of size 0 is discarded: a handle without memory. */
#define GMEM_FIXED 0x0000u
#define GMEM_MOVEABLE 0x0002u
#define GMEM_NOCOMPACT 0x0010u /* no effect, like the next flag */
#define GMEM_NODISCARD 0x0020u
#define GMEM_ZEROINIT 0x0040u
#define GMEM_MODIFY 0x0080u      /* GlobalReAlloc changes flags and leaves the size as it is */
#define GMEM_DISCARDABLE 0x0100u /* no effect, but GlobalFlags returns it for movable blocks */
#define GMEM_DDESHARE 0x2000u    /* likewise */
#define GMEM_SHARE GMEM_DDESHARE
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)

/* The result of GlobalFlags, beside GMEM_DISCARDABLE and GMEM_DDESHARE. */
#define GMEM_LOCKCOUNT 0x00FFu /* the bits with the number of locks, which doesn't exceed 255 */
#define GMEM_DISCARDED 0x4000u
#define GMEM_INVALID_HANDLE 0x8000u

/* Result: null, with the last error set, if memory is short. */
PLATFORM_API HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size);

/* Changes the size of a block, or with GMEM_MODIFY its flags, which can make a fixed block movable. A block in use is a
 * fixed or a locked one. Without GMEM_MOVEABLE it keeps its address, or the call fails. GMEM_ZEROINIT clears added
 * bytes. Size 0 with GMEM_MOVEABLE discards a movable block that isn't locked.
 * Result: the block, a fixed one perhaps at another address; null on failure, and the old block stays as it was. */
PLATFORM_API HGLOBAL WINAPI GlobalReAlloc(HGLOBAL block, SIZE_T size, UINT flags);

/* Result: the address; null for a discarded block. Each lock of a movable block needs an unlock. */
PLATFORM_API LPVOID WINAPI GlobalLock(HGLOBAL block);

/* Result: whether the block is still locked; TRUE for a fixed block. FALSE comes with ERROR_SUCCESS after the last
 * lock, and with ERROR_NOT_LOCKED if there was no lock. */
PLATFORM_API BOOL WINAPI GlobalUnlock(HGLOBAL block);

/* Result: the size in bytes; 0 for a discarded block, and 0 with an error for an invalid handle. */
PLATFORM_API SIZE_T WINAPI GlobalSize(HGLOBAL block);
PLATFORM_API UINT WINAPI GlobalFlags(HGLOBAL block);

/* The handle of the block that begins at an address. */
PLATFORM_API HGLOBAL WINAPI GlobalHandle(LPCVOID address);

/* Frees a block, even a locked one.
 * Result: null; for an invalid handle the handle, with an error. */
PLATFORM_API HGLOBAL WINAPI GlobalFree(HGLOBAL block);

#define GlobalDiscard(block) GlobalReAlloc((block), 0, GMEM_MOVEABLE)

/* Other names of the same functions. */

#define LMEM_FIXED GMEM_FIXED
#define LMEM_MOVEABLE GMEM_MOVEABLE
#define LMEM_ZEROINIT GMEM_ZEROINIT
#define LMEM_MODIFY GMEM_MODIFY
#define LMEM_LOCKCOUNT GMEM_LOCKCOUNT
#define LMEM_DISCARDED GMEM_DISCARDED
#define LMEM_INVALID_HANDLE GMEM_INVALID_HANDLE
#define LHND GHND
#define LPTR GPTR

PLATFORM_API HLOCAL WINAPI LocalAlloc(UINT flags, SIZE_T size);
PLATFORM_API HLOCAL WINAPI LocalReAlloc(HLOCAL block, SIZE_T size, UINT flags);
PLATFORM_API LPVOID WINAPI LocalLock(HLOCAL block);
PLATFORM_API BOOL WINAPI LocalUnlock(HLOCAL block);
PLATFORM_API SIZE_T WINAPI LocalSize(HLOCAL block);
PLATFORM_API UINT WINAPI LocalFlags(HLOCAL block);
PLATFORM_API HLOCAL WINAPI LocalHandle(LPCVOID address);
PLATFORM_API HLOCAL WINAPI LocalFree(HLOCAL block);

#ifdef __cplusplus
}
#endif

#endif
