/* Resources of a program: bitmaps, icons, cursors and strings by number. On Windows they are part of the program's
 * file. Elsewhere cmake/resources.cmake makes a source from the same .rc file, which adds them when the program
 * starts. */
#ifndef PLATFORM_RESOURCES_H
#define PLATFORM_RESOURCES_H

#include "platform/winapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Kinds of resources, with the platform's numbers. A bitmap is a BMP file without its file header. A string is bytes in
 * code page 932, without a NUL. An icon or a cursor is a whole .ico or .cur file. */
#define PLATFORM_BITMAP_RESOURCE 2u
#define PLATFORM_STRING_RESOURCE 6u
#define PLATFORM_CURSOR_RESOURCE 12u
#define PLATFORM_ICON_RESOURCE 14u

typedef struct PlatformResource {
  unsigned kind, id;
  const void *bytes;
  size_t size;
} PlatformResource;

/* Adds resources to the program's. They are not copied: they must live as long as the program. */
PLATFORM_API void platformAddResources(const PlatformResource *resources, size_t count);

#ifdef __cplusplus
}
#endif

#endif
