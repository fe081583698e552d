/* Resources of a program: bitmaps, icons, cursors and strings by number. On Windows they are part of the program's file; elsewhere the
 * source that cmake/resources.cmake makes of the same .rc file adds them when the program starts. */
#ifndef PLATFORM_RESOURCES_H
#define PLATFORM_RESOURCES_H

#include "platform/winapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The platform's numbers. A bitmap is what a BMP file holds behind its file header. A string is its bytes in code page
 * 932, without an end mark. An icon, or a cursor, is a whole .ico or .cur file: the list of its images, and the images. */
#define PLATFORM_BITMAP_RESOURCE 2u
#define PLATFORM_STRING_RESOURCE 6u
#define PLATFORM_CURSOR_RESOURCE 12u
#define PLATFORM_ICON_RESOURCE 14u

typedef struct PlatformResource {
  unsigned kind, id;
  const void *bytes;
  size_t size;
} PlatformResource;

/* The resources stay where they are, and have to live as long as the program. */
PLATFORM_API void platformAddResources(const PlatformResource *resources, size_t count);

#ifdef __cplusplus
}
#endif

#endif
