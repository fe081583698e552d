/* Files that the user drags from another program and drops on a window. */
#ifndef PLATFORM_WINAPI_DROPS_H
#define PLATFORM_WINAPI_DROPS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

DECLARE_HANDLE(HDROP); /* global memory with a DROPFILES */

typedef struct _DROPFILES {
  DWORD pFiles; /* bytes from here to the names: each ends with a NUL, and one more ends them all */
  POINT pt;     /* in the client area of the window, or on the screen */
  BOOL fNC;     /* pt is on the screen, outside of the client area */
  BOOL fWide;   /* the names are UTF-16 */
} DROPFILES;

/* Gives a window WS_EX_ACCEPTFILES, or takes it away. One that has it is sent WM_DROPFILES for files that are
 * dropped on it, and on windows in it that don't have it. */
PLATFORM_API void WINAPI DragAcceptFiles(HWND window, BOOL accepts);
/* The full name of a file, cut to size - 1 bytes and a NUL.
 * number: from 0 on; 0xFFFFFFFF asks how many there are.
 * Result: the bytes that were copied, without the NUL; without room, or for size 0, those that there are. 0 for a
 * number that no file has. */
PLATFORM_API UINT WINAPI DragQueryFileA(HDROP drop, UINT number, LPSTR name, UINT size);
/* Where the files were dropped. Result: whether that is in the client area. */
PLATFORM_API BOOL WINAPI DragQueryPoint(HDROP drop, POINT *point);
/* Frees what WM_DROPFILES has brought. */
PLATFORM_API void WINAPI DragFinish(HDROP drop);

#ifdef __cplusplus
}
#endif

#endif
