/* The Windows API for other systems: the types, constants and functions of it that the library, its tests and its
 * example call, with the names, values and record layouts that the API documents. Text is code page 932. */
#ifndef PLATFORM_WINAPI_H
#define PLATFORM_WINAPI_H

#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

#define WINAPI
#define WINAPIV
#define CALLBACK
#define PLATFORM_API __attribute__((visibility("default")))

/* Numbers. They keep their Windows width whatever the width of the compiler's long is. */

typedef int BOOL;
typedef uint8_t BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int32_t LONG;
typedef unsigned int UINT;
typedef int INT;
typedef uintptr_t UINT_PTR;
typedef intptr_t LONG_PTR;
typedef uintptr_t ULONG_PTR;
typedef UINT_PTR WPARAM;
typedef LONG_PTR LPARAM;
typedef LONG_PTR LRESULT;
typedef char *LPSTR;
typedef const char *LPCSTR;

#define FALSE 0
#define TRUE 1

/* Handles. Their values are small numbers that fit 32 bits. */

#define DECLARE_HANDLE(name) typedef struct name##__ *name
typedef void *HANDLE;
DECLARE_HANDLE(HINSTANCE);
DECLARE_HANDLE(HWND);

/* Rectangles. Right and bottom lie outside. */

typedef struct tagPOINT {
  LONG x, y;
} POINT;

typedef struct tagSIZE {
  LONG cx, cy;
} SIZE;

typedef struct tagRECT {
  LONG left, top, right, bottom;
} RECT;

/* TRUE when right <= left or bottom <= top, and for null. */
PLATFORM_API BOOL WINAPI IsRectEmpty(const RECT *rect);
/* Adds dx to left and right, dy to top and bottom. FALSE for null. */
PLATFORM_API BOOL WINAPI OffsetRect(RECT *rect, int dx, int dy);

/* Text. */

/* Formatted print of at most 1023 bytes and an end mark. Knows %c %d %i %u %x %X %s %%, the flags - # 0, width,
 * precision and the sizes h and l. */
PLATFORM_API int WINAPIV wsprintfA(LPSTR text, LPCSTR format, ...);
PLATFORM_API int WINAPI wvsprintfA(LPSTR text, LPCSTR format, va_list arguments);

/* Program. */

/* The command line, cut into arguments, in code page 932; argv of main holds what the shell passed, in UTF-8. */
PLATFORM_API int *__p___argc(void);
PLATFORM_API char ***__p___argv(void);
#define __argc (*__p___argc())
#define __argv (*__p___argv())

/* Opens a C stream by a name in code page 932, in either form of path ("C:\a\b" or "/a/b"). Null when that
 * fails, and for a folder. */
PLATFORM_API FILE *platformOpenStream(const char *name, const char *mode);

#ifdef __cplusplus
}
#endif

#endif
