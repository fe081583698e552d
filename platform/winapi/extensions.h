/* The layer's additions to the API. */
#ifndef PLATFORM_WINAPI_EXTENSIONS_H
#define PLATFORM_WINAPI_EXTENSIONS_H

#include <stdio.h>

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Whether windows are visible to anybody. Without a display all functions work, but windows stay unseen. */
PLATFORM_API BOOL platformHasDisplay(void);

/* Writes the visible client area of a top-level window to a PNG file.
 * file: in code page 932. Result: FALSE for any other window, and if the file can't be written. */
PLATFORM_API BOOL platformSavePicture(HWND window, const char *file);

/* Opens a C stream by a name in code page 932, in either form of path ("C:\a\b" or "/a/b"). Others may read and write
 * the file meanwhile, but not delete or move it.
 * Result: null, with errno set, on failure, for a folder, and if another opener forbids the access. */
PLATFORM_API FILE *platformOpenStream(const char *name, const char *mode);

/* Moves a stream, also beyond 2 GB. origin: SEEK_SET, SEEK_CUR or SEEK_END. Result: the new position; -1 on failure. */
PLATFORM_API int64_t platformSeekStream(FILE *stream, int64_t offset, int origin);

#ifdef __cplusplus
}
#endif

#endif
