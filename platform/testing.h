/* Functions of the layer for tests and tools, without a counterpart in the API. */
#ifndef PLATFORM_TESTING_H
#define PLATFORM_TESTING_H

#include "platform/winapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Puts a folder behind a drive letter. DRIVE_NO_ROOT_DIR removes the drive.
 * type: DRIVE_... folder: a path of this system in UTF-8, without a slash at its end. */
PLATFORM_API void platformSetDrive(char letter, UINT type, const char *folder);

/* The numbers of open handles and the like. */
typedef struct PlatformHandleCounts {
  size_t kernel; /* files, mappings, finds, mutexes, events */
  size_t views;  /* of files */
  size_t memory; /* blocks of global memory */
} PlatformHandleCounts;

PLATFORM_API void platformCountHandles(PlatformHandleCounts *counts);

/* The numbers of living objects of the desktop half. */
typedef struct PlatformDesktopCounts {
  size_t windows;
  size_t drawing; /* contexts, pens, ..., palettes, icons and cursors, except the system's and shared ones */
} PlatformDesktopCounts;

PLATFORM_API void platformCountDesktop(PlatformDesktopCounts *counts);

/* Without a display boxes and dialogs are answered at once; TRUE keeps them open until somebody answers. They are the
 * layer's own then, also where the desktop has dialogs for files. */
PLATFORM_API void platformKeepDialogsOpen(BOOL keep);

#ifdef __cplusplus
}
#endif

#endif
