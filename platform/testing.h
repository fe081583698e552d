/* What tests and tools may see and set of the layer. It has no counterpart in the API. */
#ifndef PLATFORM_TESTING_H
#define PLATFORM_TESTING_H

#include "platform/winapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Puts a folder behind a drive letter, or takes the drive away with DRIVE_NO_ROOT_DIR.
 * type: DRIVE_... folder: a path of this system in UTF-8, without a slash at its end. */
PLATFORM_API void platformSetDrive(char letter, UINT type, const char *folder);

/* Handles that are open now. */
typedef struct PlatformHandleCounts {
  size_t kernel; /* files, mappings, finds, mutexes, events */
  size_t views;  /* of files */
  size_t memory; /* blocks of global memory */
} PlatformHandleCounts;

PLATFORM_API void platformCountHandles(PlatformHandleCounts *counts);

/* Things of the desktop that live now. */
typedef struct PlatformDesktopCounts {
  size_t windows;
  size_t drawing; /* contexts, pens, ..., palettes, icons and cursors, without the system's own and shared ones */
} PlatformDesktopCounts;

PLATFORM_API void platformCountDesktop(PlatformDesktopCounts *counts);

/* Without a display boxes and dialogs are answered at once; TRUE keeps them open until somebody answers. They are the
 * layer's own then, also where the desktop has dialogs for files. */
PLATFORM_API void platformKeepDialogsOpen(BOOL keep);

#ifdef __cplusplus
}
#endif

#endif
