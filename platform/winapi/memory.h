/* Global memory: blocks that are handed on by handle, to the clipboard for one. */
#ifndef PLATFORM_WINAPI_MEMORY_H
#define PLATFORM_WINAPI_MEMORY_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef HANDLE HGLOBAL;
typedef HANDLE HLOCAL;

/* A fixed block's handle is its address. A movable one has an address only while it is locked, and a handle that fits 32
 * bits; with a size of 0 it is a discarded one, a handle without memory. */
#define GMEM_FIXED 0x0000u
#define GMEM_MOVEABLE 0x0002u
#define GMEM_NOCOMPACT 0x0010u /* without an effect, as is the next one */
#define GMEM_NODISCARD 0x0020u
#define GMEM_ZEROINIT 0x0040u
#define GMEM_MODIFY 0x0080u      /* GlobalReAlloc changes flags and leaves the size as it is */
#define GMEM_DISCARDABLE 0x0100u /* told again by GlobalFlags, for movable blocks; without an effect besides */
#define GMEM_DDESHARE 0x2000u    /* likewise */
#define GMEM_SHARE GMEM_DDESHARE
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)

/* What GlobalFlags tells beside GMEM_DISCARDABLE and GMEM_DDESHARE. */
#define GMEM_LOCKCOUNT 0x00FFu /* the bits with the number of locks, which stays at 255 */
#define GMEM_DISCARDED 0x4000u
#define GMEM_INVALID_HANDLE 0x8000u

/* Result: null, with an error, when memory is short. */
PLATFORM_API HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size);

/* Changes the size of a block, or with GMEM_MODIFY its flags; a fixed block becomes a movable one so. Without
 * GMEM_MOVEABLE a block in use, a fixed or a locked one, keeps its address or stays as it is. GMEM_ZEROINIT clears what is
 * added. A size of 0 with GMEM_MOVEABLE discards a movable block that nobody has locked.
 * Result: the block, for a fixed one perhaps at another address; null, with the old one as it was. */
PLATFORM_API HGLOBAL WINAPI GlobalReAlloc(HGLOBAL block, SIZE_T size, UINT flags);

/* Result: the address; null for a discarded block. Each lock of a movable block asks for an unlock. */
PLATFORM_API LPVOID WINAPI GlobalLock(HGLOBAL block);

/* Result: whether the block is still locked, TRUE for a fixed one. FALSE leaves ERROR_SUCCESS when this was the last
 * lock, and ERROR_NOT_LOCKED when there was none. */
PLATFORM_API BOOL WINAPI GlobalUnlock(HGLOBAL block);

/* Result: the bytes in it; 0 for a discarded block, and with an error for none. */
PLATFORM_API SIZE_T WINAPI GlobalSize(HGLOBAL block);
PLATFORM_API UINT WINAPI GlobalFlags(HGLOBAL block);

/* The block that begins at an address. */
PLATFORM_API HGLOBAL WINAPI GlobalHandle(LPCVOID address);

/* Frees a block, a locked one too.
 * Result: null; the handle, with an error, when it is none. */
PLATFORM_API HGLOBAL WINAPI GlobalFree(HGLOBAL block);

#define GlobalDiscard(block) GlobalReAlloc((block), 0, GMEM_MOVEABLE)

/* The same under their other names. */

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
