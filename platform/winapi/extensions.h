/* The layer's own functions beside the API. */
#ifndef PLATFORM_WINAPI_EXTENSIONS_H
#define PLATFORM_WINAPI_EXTENSIONS_H

#include <stdio.h>

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Whether windows are shown to anybody. Without a display they work all the same, unseen. */
PLATFORM_API BOOL platformHasDisplay(void);

/* Writes what a top-level window shows in its client area into a PNG file.
 * file: in code page 932. FALSE for another window, and when the file can't be written. */
PLATFORM_API BOOL platformSavePicture(HWND window, const char *file);

/* Opens a C stream by a name in code page 932, in either form of path ("C:\a\b" or "/a/b"). The stream lets others read
 * and write the file, but not delete or move it, and is refused where another opener forbids what it does. Null, with
 * errno set, when that fails, and for a folder. */
PLATFORM_API FILE *platformOpenStream(const char *name, const char *mode);

/* Moves a stream, also beyond 2 GB. origin: SEEK_SET, SEEK_CUR or SEEK_END. Result: the new position; -1 on failure. */
PLATFORM_API int64_t platformSeekStream(FILE *stream, int64_t offset, int origin);

#ifdef __cplusplus
}
#endif

#endif
