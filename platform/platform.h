/* The one header that tells the systems apart. It gives the Windows API: on Windows the system's own, elsewhere
 * winapi.h. It also gives a few functions that no API covers. */
#ifndef PLATFORM_PLATFORM_H
#define PLATFORM_PLATFORM_H

#include <stdint.h>
#include <stdio.h>

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX /* std::min and std::max keep their names */
#endif
#include <windows.h>
/* the order matters */
#include <commctrl.h>
#include <commdlg.h>
#include <objbase.h>
#include <shlobj.h>
#include <winspool.h>

#define PLATFORM_EXPORT __declspec(dllexport)
#define PLATFORM_IMPORT __declspec(dllimport)

/* Windows always has a display. */
static inline BOOL platformHasDisplay(void) { return TRUE; }

/* Writing a picture isn't supported on Windows. */
static inline BOOL platformSavePicture(HWND window, const char *file) {
  (void)window;
  (void)file;
  return FALSE;
}

/* Opens a C stream by a name in the ANSI code page. The runtime's own fopen takes such names. */
static inline FILE *platformOpenStream(const char *name, const char *mode) { return fopen(name, mode); }

/* Moves a stream, also beyond 2 GB. origin: SEEK_SET, SEEK_CUR or SEEK_END. Result: the new position; -1 on failure. */
static inline int64_t platformSeekStream(FILE *stream, int64_t offset, int origin) {
  return _fseeki64(stream, offset, origin) == 0 ? _ftelli64(stream) : -1;
}

#else

#include "platform/winapi.h"

#define PLATFORM_EXPORT __attribute__((visibility("default")))
#define PLATFORM_IMPORT

#endif

#endif
