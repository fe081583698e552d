/* Types that all headers of the API need: numbers, handles, points and rectangles, and halves of words. */
#ifndef PLATFORM_WINAPI_TYPES_H
#define PLATFORM_WINAPI_TYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define WINAPI
#define WINAPIV
#define CALLBACK
#define PLATFORM_API __attribute__((visibility("default")))

/* Numbers. They have their Windows width, whatever the width of the compiler's long. */

typedef int BOOL;
typedef uint8_t BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int32_t LONG;
typedef unsigned int UINT;
typedef int INT;
typedef int16_t SHORT;
typedef uintptr_t UINT_PTR;
typedef intptr_t INT_PTR;
typedef intptr_t LONG_PTR;
typedef uintptr_t ULONG_PTR;
typedef size_t SIZE_T;
typedef UINT_PTR WPARAM;
typedef LONG_PTR LPARAM;
typedef LONG_PTR LRESULT;
typedef DWORD LCID;
typedef WORD ATOM;
typedef DWORD COLORREF; /* 0x00BBGGRR */
typedef void *LPVOID;
typedef const void *LPCVOID;
typedef DWORD *LPDWORD;
typedef char CHAR;
typedef char *LPSTR;
typedef const char *LPCSTR;
typedef uint16_t WCHAR; /* UTF-16; the compiler's wchar_t is wider here */

#define FALSE 0
#define TRUE 1
#define MAX_PATH 260

/* Handles. Their values are small numbers that fit 32 bits. */

#define DECLARE_HANDLE(name) typedef struct name##__ *name
typedef void *HANDLE;
DECLARE_HANDLE(HINSTANCE);
DECLARE_HANDLE(HWND);
typedef HINSTANCE HMODULE;
DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HICON);
typedef HICON HCURSOR;
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HRGN);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HPEN);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HPALETTE);
typedef void *HGDIOBJ; /* a region or any drawing object */

/* Rectangles. Right and bottom are exclusive. */

typedef struct tagPOINT {
  LONG x, y;
} POINT;

typedef struct tagSIZE {
  LONG cx, cy;
} SIZE;

typedef struct tagRECT {
  LONG left, top, right, bottom;
} RECT;

/* Halves of words. */

#define LOWORD(value) ((WORD)((ULONG_PTR)(value)&0xFFFFu))
#define HIWORD(value) ((WORD)(((ULONG_PTR)(value) >> 16) & 0xFFFFu))
#define MAKELONG(low, high) ((LONG)(((DWORD)(WORD)(low)) | ((DWORD)(WORD)(high)) << 16))
#define MAKEWPARAM(low, high) ((WPARAM)(DWORD)MAKELONG(low, high))
#define MAKELPARAM(low, high) ((LPARAM)(DWORD)MAKELONG(low, high))
#define GET_X_LPARAM(value) ((int)(short)LOWORD(value))
#define GET_Y_LPARAM(value) ((int)(short)HIWORD(value))

/* Passes a number in place of a name. */
#define MAKEINTRESOURCEA(id) ((LPSTR)(ULONG_PTR)(WORD)(id))

#ifdef __cplusplus
}
#endif

#endif
