/* The Windows API for other systems: the types, constants and functions of it that the library, its tests and its
 * example call, with the names, values and record layouts that the API documents. Text is code page 932. */
#ifndef PLATFORM_WINAPI_H
#define PLATFORM_WINAPI_H

#include <stdarg.h>
#include <stddef.h>
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
/* result: all 0 when there is nothing that both hold. It may be one of the two. */
PLATFORM_API BOOL WINAPI IntersectRect(RECT *result, const RECT *first, const RECT *second);

/* Errors. Every function that can fail says so by its result and leaves the reason here, for each thread apart. */

#define ERROR_SUCCESS 0u
#define ERROR_FILE_NOT_FOUND 2u
#define ERROR_PATH_NOT_FOUND 3u
#define ERROR_TOO_MANY_OPEN_FILES 4u
#define ERROR_ACCESS_DENIED 5u
#define ERROR_INVALID_HANDLE 6u
#define ERROR_NOT_ENOUGH_MEMORY 8u
#define ERROR_NOT_SAME_DEVICE 17u
#define ERROR_NO_MORE_FILES 18u
#define ERROR_WRITE_FAULT 29u
#define ERROR_SHARING_VIOLATION 32u
#define ERROR_NOT_SUPPORTED 50u
#define ERROR_FILE_EXISTS 80u
#define ERROR_INVALID_PARAMETER 87u
#define ERROR_DISK_FULL 112u
#define ERROR_INSUFFICIENT_BUFFER 122u
#define ERROR_INVALID_NAME 123u
#define ERROR_MOD_NOT_FOUND 126u
#define ERROR_PROC_NOT_FOUND 127u
#define ERROR_DIR_NOT_EMPTY 145u
#define ERROR_ALREADY_EXISTS 183u
#define ERROR_ENVVAR_NOT_FOUND 203u
#define ERROR_FILENAME_EXCED_RANGE 206u
#define ERROR_DIRECTORY 267u
#define ERROR_NOT_OWNER 288u
#define ERROR_INVALID_ADDRESS 487u
#define ERROR_FILE_INVALID 1006u
#define ERROR_MAPPED_ALIGNMENT 1132u
#define ERROR_INVALID_WINDOW_HANDLE 1400u
#define ERROR_TLW_WITH_WSCHILD 1406u
#define ERROR_CANNOT_FIND_WND_CLASS 1407u
#define ERROR_CLASS_ALREADY_EXISTS 1410u
#define ERROR_INVALID_INDEX 1413u
#define ERROR_INVALID_THREAD_ID 1444u
#define ERROR_NOT_ENOUGH_QUOTA 1816u
#define ERROR_USER_MAPPED_FILE 1224u

PLATFORM_API DWORD WINAPI GetLastError(void);
PLATFORM_API void WINAPI SetLastError(DWORD error);

typedef struct _SECURITY_ATTRIBUTES {
  DWORD nLength;
  LPVOID lpSecurityDescriptor;
  BOOL bInheritHandle;
} SECURITY_ATTRIBUTES, *LPSECURITY_ATTRIBUTES;

/* Closes a file, a mapping, a mutex or an event. */
PLATFORM_API BOOL WINAPI CloseHandle(HANDLE handle);

/* Files. A file is shared as its openers allow, within the process and between processes that use these functions. Names
 * of 260 bytes or more are refused. A file is read-only when nobody has the right to write it, whoever asks. */

#define INVALID_HANDLE_VALUE ((HANDLE)(LONG_PTR)-1)
#define INVALID_FILE_SIZE 0xFFFFFFFFu
#define GENERIC_READ 0x80000000u
#define GENERIC_WRITE 0x40000000u
#define FILE_SHARE_READ 1u
#define FILE_SHARE_WRITE 2u
#define FILE_SHARE_DELETE 4u
#define CREATE_NEW 1u
#define CREATE_ALWAYS 2u
#define OPEN_EXISTING 3u
#define OPEN_ALWAYS 4u
#define TRUNCATE_EXISTING 5u
#define FILE_ATTRIBUTE_READONLY 0x01u
#define FILE_ATTRIBUTE_HIDDEN 0x02u
#define FILE_ATTRIBUTE_SYSTEM 0x04u
#define FILE_ATTRIBUTE_DIRECTORY 0x10u
#define FILE_ATTRIBUTE_ARCHIVE 0x20u
#define FILE_ATTRIBUTE_NORMAL 0x80u
#define FILE_ATTRIBUTE_TEMPORARY 0x100u
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFu

typedef struct _OVERLAPPED OVERLAPPED, *LPOVERLAPPED; /* always null: all calls are synchronous */

PLATFORM_API HANDLE WINAPI CreateFileA(LPCSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                                       DWORD creation, DWORD attributes, HANDLE model);
PLATFORM_API BOOL WINAPI ReadFile(HANDLE file, LPVOID bytes, DWORD size, LPDWORD count, LPOVERLAPPED overlapped);
PLATFORM_API BOOL WINAPI WriteFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD count, LPOVERLAPPED overlapped);
PLATFORM_API DWORD WINAPI GetFileSize(HANDLE file, LPDWORD high);
PLATFORM_API BOOL WINAPI SetEndOfFile(HANDLE file);
PLATFORM_API BOOL WINAPI DeleteFileA(LPCSTR name);
/* Doesn't replace a file, except by a change of case. */
PLATFORM_API BOOL WINAPI MoveFileA(LPCSTR from, LPCSTR to);
PLATFORM_API BOOL WINAPI CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists);
PLATFORM_API DWORD WINAPI GetFileAttributesA(LPCSTR name);
PLATFORM_API BOOL WINAPI SetFileAttributesA(LPCSTR name, DWORD attributes);

#define PAGE_READONLY 0x02u
#define PAGE_READWRITE 0x04u
#define SEC_COMMIT 0x8000000u
#define FILE_MAP_READ 0x04u
#define FILE_MAP_WRITE 0x02u
#define FILE_MAP_ALL_ACCESS 0xF001Fu

PLATFORM_API HANDLE WINAPI CreateFileMappingA(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection,
                                              DWORD sizeHigh, DWORD sizeLow, LPCSTR name);
/* A view outlives the handles of its file and its mapping; a file under a view can't be cut. */
PLATFORM_API LPVOID WINAPI MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow, SIZE_T size);
PLATFORM_API BOOL WINAPI FlushViewOfFile(LPCVOID address, SIZE_T size);
PLATFORM_API BOOL WINAPI UnmapViewOfFile(LPCVOID address);

/* Folders and drives. Found names come in the order of their letters. Wildcards are * and ?. */

typedef struct _FILETIME {
  DWORD dwLowDateTime, dwHighDateTime;
} FILETIME;

typedef struct _WIN32_FIND_DATAA {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime, ftLastAccessTime, ftLastWriteTime;
  DWORD nFileSizeHigh, nFileSizeLow;
  DWORD dwReserved0, dwReserved1;
  CHAR cFileName[MAX_PATH];
  CHAR cAlternateFileName[14];
} WIN32_FIND_DATAA;

#define DRIVE_UNKNOWN 0u
#define DRIVE_NO_ROOT_DIR 1u
#define DRIVE_FIXED 3u
#define DRIVE_CDROM 5u

PLATFORM_API HANDLE WINAPI FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA *entry);
PLATFORM_API BOOL WINAPI FindNextFileA(HANDLE find, WIN32_FIND_DATAA *entry);
PLATFORM_API BOOL WINAPI FindClose(HANDLE find);
PLATFORM_API DWORD WINAPI SearchPathA(LPCSTR path, LPCSTR name, LPCSTR extension, DWORD size, LPSTR found,
                                      LPSTR *filePart);
PLATFORM_API BOOL WINAPI CreateDirectoryA(LPCSTR name, LPSECURITY_ATTRIBUTES security);
PLATFORM_API BOOL WINAPI RemoveDirectoryA(LPCSTR name);
PLATFORM_API DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR name);
PLATFORM_API BOOL WINAPI GetDiskFreeSpaceA(LPCSTR root, LPDWORD sectorsPerCluster, LPDWORD bytesPerSector,
                                           LPDWORD freeClusters, LPDWORD clusters);
PLATFORM_API UINT WINAPI GetDriveTypeA(LPCSTR root);

/* Private profiles. A name without a folder lies in the user's folder for settings. */

PLATFORM_API DWORD WINAPI GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR defaultText, LPSTR text,
                                                   DWORD size, LPCSTR name);
PLATFORM_API UINT WINAPI GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT defaultValue, LPCSTR name);
/* The file has the new content when this returns, whole. */
PLATFORM_API BOOL WINAPI WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR text, LPCSTR name);

/* Time. */

typedef struct _SYSTEMTIME {
  WORD wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
} SYSTEMTIME;

#define LOCALE_USER_DEFAULT 0x400u
#define DATE_SHORTDATE 1u

PLATFORM_API DWORD WINAPI GetTickCount(void);
PLATFORM_API void WINAPI GetLocalTime(SYSTEMTIME *time);
PLATFORM_API int WINAPI GetDateFormatA(LCID locale, DWORD flags, const SYSTEMTIME *date, LPCSTR format, LPSTR text,
                                       int size);

/* Waiting objects. Named ones live as long as a process holds a handle. */

typedef struct _CRITICAL_SECTION {
  uint64_t state[6]; /* the lock itself: not to be copied */
} CRITICAL_SECTION, *LPCRITICAL_SECTION;

#define MUTEX_ALL_ACCESS 0x1F0001u
#define INFINITE 0xFFFFFFFFu
#define WAIT_OBJECT_0 0u
#define WAIT_ABANDONED 0x80u
#define WAIT_TIMEOUT 0x102u
#define WAIT_FAILED 0xFFFFFFFFu

PLATFORM_API void WINAPI InitializeCriticalSection(LPCRITICAL_SECTION section);
PLATFORM_API void WINAPI DeleteCriticalSection(LPCRITICAL_SECTION section);
PLATFORM_API void WINAPI EnterCriticalSection(LPCRITICAL_SECTION section);
PLATFORM_API void WINAPI LeaveCriticalSection(LPCRITICAL_SECTION section);
PLATFORM_API HANDLE WINAPI CreateMutexA(LPSECURITY_ATTRIBUTES security, BOOL owned, LPCSTR name);
PLATFORM_API HANDLE WINAPI OpenMutexA(DWORD access, BOOL inherit, LPCSTR name);
PLATFORM_API BOOL WINAPI ReleaseMutex(HANDLE mutex);
PLATFORM_API HANDLE WINAPI CreateEventA(LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL set, LPCSTR name);
PLATFORM_API BOOL WINAPI SetEvent(HANDLE event);
PLATFORM_API BOOL WINAPI ResetEvent(HANDLE event);
PLATFORM_API DWORD WINAPI WaitForSingleObject(HANDLE object, DWORD milliseconds);

/* Windows. They belong to the thread that made them; those of the thread that made the first one stand on the desktop.
 * Calls with a handle that is none, or no longer one, fail with ERROR_INVALID_WINDOW_HANDLE and do nothing. */

DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HICON);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HRGN);
typedef HICON HCURSOR;
typedef HINSTANCE HMODULE;
typedef void *HGDIOBJ;
typedef WORD ATOM;
typedef DWORD COLORREF; /* 0x00BBGGRR */
typedef LRESULT(CALLBACK *WNDPROC)(HWND, UINT, WPARAM, LPARAM);
typedef void(CALLBACK *TIMERPROC)(HWND, UINT, UINT_PTR, DWORD);
typedef intptr_t(WINAPI *FARPROC)(void);

#define LOWORD(value) ((WORD)((ULONG_PTR)(value)&0xFFFFu))
#define HIWORD(value) ((WORD)(((ULONG_PTR)(value) >> 16) & 0xFFFFu))
#define MAKELONG(low, high) ((LONG)(((DWORD)(WORD)(low)) | ((DWORD)(WORD)(high)) << 16))
#define MAKEWPARAM(low, high) ((WPARAM)(DWORD)MAKELONG(low, high))
#define MAKELPARAM(low, high) ((LPARAM)(DWORD)MAKELONG(low, high))
#define GET_X_LPARAM(value) ((int)(short)LOWORD(value))
#define GET_Y_LPARAM(value) ((int)(short)HIWORD(value))
#define MAKEINTRESOURCEA(id) ((LPSTR)(ULONG_PTR)(WORD)(id))

/* Classes. */

#define CS_VREDRAW 0x0001u
#define CS_HREDRAW 0x0002u
#define CS_DBLCLKS 0x0008u
#define IDI_APPLICATION MAKEINTRESOURCEA(32512)
#define IDC_ARROW MAKEINTRESOURCEA(32512)
#define IDC_SIZENWSE MAKEINTRESOURCEA(32642)
#define IDC_SIZENESW MAKEINTRESOURCEA(32643)
#define IDC_SIZEWE MAKEINTRESOURCEA(32644)
#define IDC_SIZENS MAKEINTRESOURCEA(32645)

typedef struct tagWNDCLASSA {
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra;
  int cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;
  HBRUSH hbrBackground; /* a brush, a system colour plus 1, or null */
  LPCSTR lpszMenuName;
  LPCSTR lpszClassName;
} WNDCLASSA;

PLATFORM_API ATOM WINAPI RegisterClassA(const WNDCLASSA *windowClass);
/* Fails while a window of the class exists. */
PLATFORM_API int WINAPI GetClassNameA(HWND window, LPSTR text, int size);
PLATFORM_API HCURSOR WINAPI SetCursor(HCURSOR cursor);
PLATFORM_API HMODULE WINAPI GetModuleHandleA(LPCSTR name);
PLATFORM_API int WINAPI LoadStringA(HINSTANCE instance, UINT id, LPSTR text, int size);

/* Creation and end. */

#define WS_OVERLAPPED 0x00000000u
#define WS_POPUP 0x80000000u
#define WS_CHILD 0x40000000u
#define WS_MINIMIZE 0x20000000u
#define WS_VISIBLE 0x10000000u
#define WS_DISABLED 0x08000000u
#define WS_CLIPSIBLINGS 0x04000000u
#define WS_CLIPCHILDREN 0x02000000u
#define WS_MAXIMIZE 0x01000000u
#define WS_CAPTION 0x00C00000u
#define WS_BORDER 0x00800000u
#define WS_DLGFRAME 0x00400000u
#define WS_SYSMENU 0x00080000u
#define WS_THICKFRAME 0x00040000u
#define WS_MINIMIZEBOX 0x00020000u
#define WS_MAXIMIZEBOX 0x00010000u
#define WS_OVERLAPPEDWINDOW (WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX)

#define WS_EX_DLGMODALFRAME 0x00000001u
#define WS_EX_NOPARENTNOTIFY 0x00000004u
#define WS_EX_TOPMOST 0x00000008u
#define WS_EX_TRANSPARENT 0x00000020u
#define WS_EX_TOOLWINDOW 0x00000080u
#define WS_EX_WINDOWEDGE 0x00000100u
#define WS_EX_CLIENTEDGE 0x00000200u
#define WS_EX_STATICEDGE 0x00020000u
#define WS_EX_LAYERED 0x00080000u
#define WS_EX_NOACTIVATE 0x08000000u

#define CW_USEDEFAULT ((int)0x80000000u)

typedef struct tagCREATESTRUCTA {
  LPVOID lpCreateParams;
  HINSTANCE hInstance;
  HMENU hMenu;
  HWND hwndParent;
  int cy, cx, y, x;
  LONG style;
  LPCSTR lpszName;
  LPCSTR lpszClass;
  DWORD dwExStyle;
} CREATESTRUCTA;

PLATFORM_API HWND WINAPI CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, int x, int y,
                                         int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                                         LPVOID parameter);
PLATFORM_API BOOL WINAPI DestroyWindow(HWND window);
PLATFORM_API LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
PLATFORM_API LRESULT WINAPI CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/* Relations and state. */

#define GW_HWNDFIRST 0u
#define GW_HWNDLAST 1u
#define GW_HWNDNEXT 2u
#define GW_HWNDPREV 3u
#define GW_OWNER 4u
#define GW_CHILD 5u
#define GA_PARENT 1u
#define GA_ROOT 2u
#define GA_ROOTOWNER 3u
#define GWL_WNDPROC (-4)
#define GWL_HINSTANCE (-6)
#define GWL_HWNDPARENT (-8)
#define GWL_ID (-12)
#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWL_USERDATA (-21)
#define GWLP_WNDPROC (-4)
#define GWLP_USERDATA (-21)

typedef struct tagSTYLESTRUCT {
  DWORD styleOld, styleNew;
} STYLESTRUCT;

PLATFORM_API BOOL WINAPI IsWindow(HWND window);
PLATFORM_API BOOL WINAPI IsChild(HWND parent, HWND window);
PLATFORM_API BOOL WINAPI IsWindowVisible(HWND window);
PLATFORM_API BOOL WINAPI IsWindowEnabled(HWND window);
PLATFORM_API BOOL WINAPI IsIconic(HWND window);
PLATFORM_API BOOL WINAPI IsZoomed(HWND window);
PLATFORM_API HWND WINAPI GetDesktopWindow(void);
PLATFORM_API HWND WINAPI GetParent(HWND window);
PLATFORM_API HWND WINAPI SetParent(HWND window, HWND parent);
PLATFORM_API HWND WINAPI GetWindow(HWND window, UINT relation);
PLATFORM_API HWND WINAPI GetAncestor(HWND window, UINT relation);
PLATFORM_API HWND WINAPI FindWindowA(LPCSTR className, LPCSTR title);
PLATFORM_API HWND WINAPI GetDlgItem(HWND parent, int id);
PLATFORM_API DWORD WINAPI GetCurrentThreadId(void);
PLATFORM_API LONG WINAPI GetWindowLongA(HWND window, int index);
PLATFORM_API LONG WINAPI SetWindowLongA(HWND window, int index, LONG value);
PLATFORM_API LONG_PTR WINAPI GetWindowLongPtrA(HWND window, int index);
PLATFORM_API LONG_PTR WINAPI SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
PLATFORM_API BOOL WINAPI SetWindowTextA(HWND window, LPCSTR text);
PLATFORM_API int WINAPI GetWindowTextA(HWND window, LPSTR text, int size);
PLATFORM_API int WINAPI GetWindowTextLengthA(HWND window);

/* Geometry. The frame round a client area follows from the style alone. */

#define SWP_NOSIZE 0x0001u
#define SWP_NOMOVE 0x0002u
#define SWP_NOZORDER 0x0004u
#define SWP_NOREDRAW 0x0008u
#define SWP_NOACTIVATE 0x0010u
#define SWP_FRAMECHANGED 0x0020u
#define SWP_SHOWWINDOW 0x0040u
#define SWP_HIDEWINDOW 0x0080u
#define SWP_NOCOPYBITS 0x0100u
#define SWP_NOSENDCHANGING 0x0400u
#define HWND_TOP ((HWND)0)
#define HWND_BOTTOM ((HWND)1)
#define HWND_TOPMOST ((HWND)(LONG_PTR)-1)
#define HWND_NOTOPMOST ((HWND)(LONG_PTR)-2)

#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_SHOWMINIMIZED 2
#define SW_SHOWMAXIMIZED 3
#define SW_MAXIMIZE 3
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
#define SW_MINIMIZE 6
#define SW_SHOWMINNOACTIVE 7
#define SW_SHOWNA 8
#define SW_RESTORE 9
#define SW_SHOWDEFAULT 10

typedef struct tagWINDOWPOS {
  HWND hwnd;
  HWND hwndInsertAfter;
  int x, y, cx, cy;
  UINT flags;
} WINDOWPOS;

typedef struct tagNCCALCSIZE_PARAMS {
  RECT rgrc[3];
  WINDOWPOS *lppos;
} NCCALCSIZE_PARAMS;

typedef struct tagMINMAXINFO {
  POINT ptReserved;
  POINT ptMaxSize;
  POINT ptMaxPosition;
  POINT ptMinTrackSize;
  POINT ptMaxTrackSize;
} MINMAXINFO;

typedef struct tagWINDOWPLACEMENT {
  UINT length, flags, showCmd;
  POINT ptMinPosition, ptMaxPosition;
  RECT rcNormalPosition;
} WINDOWPLACEMENT;

PLATFORM_API BOOL WINAPI SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
PLATFORM_API BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
PLATFORM_API BOOL WINAPI ShowWindow(HWND window, int command);
PLATFORM_API BOOL WINAPI GetWindowPlacement(HWND window, WINDOWPLACEMENT *placement);
PLATFORM_API BOOL WINAPI GetWindowRect(HWND window, RECT *rect);
PLATFORM_API BOOL WINAPI GetClientRect(HWND window, RECT *rect);
PLATFORM_API BOOL WINAPI AdjustWindowRectEx(RECT *rect, DWORD style, BOOL menu, DWORD exStyle);
/* Null stands for the screen. */
PLATFORM_API int WINAPI MapWindowPoints(HWND from, HWND to, POINT *points, UINT count);
PLATFORM_API BOOL WINAPI ClientToScreen(HWND window, POINT *point);
PLATFORM_API BOOL WINAPI ScreenToClient(HWND window, POINT *point);
PLATFORM_API HWND WINAPI WindowFromPoint(POINT point);
PLATFORM_API HWND WINAPI ChildWindowFromPoint(HWND parent, POINT point);

#define SM_CXSCREEN 0
#define SM_CYSCREEN 1
#define SM_CXVSCROLL 2
#define SM_CYHSCROLL 3
#define SM_CYCAPTION 4
#define SM_CXBORDER 5
#define SM_CYBORDER 6
#define SM_CXFIXEDFRAME 7
#define SM_CYFIXEDFRAME 8
#define SM_CXICON 11
#define SM_CYICON 12
#define SM_CXCURSOR 13
#define SM_CYCURSOR 14
#define SM_CYMENU 15
#define SM_CXFULLSCREEN 16
#define SM_CYFULLSCREEN 17
#define SM_MOUSEPRESENT 19
#define SM_CXMIN 28
#define SM_CYMIN 29
#define SM_CXSIZE 30
#define SM_CYSIZE 31
#define SM_CXFRAME 32
#define SM_CYFRAME 33
#define SM_CXMINTRACK 34
#define SM_CYMINTRACK 35
#define SM_CXDOUBLECLK 36
#define SM_CYDOUBLECLK 37
#define SM_CMOUSEBUTTONS 43
#define SM_CXEDGE 45
#define SM_CYEDGE 46
#define SM_CXSMICON 49
#define SM_CYSMICON 50
#define SM_CYSMCAPTION 51
#define SM_CXMAXTRACK 59
#define SM_CYMAXTRACK 60
#define SM_CXMAXIMIZED 61
#define SM_CYMAXIMIZED 62
#define SM_CXDRAG 68
#define SM_CYDRAG 69
#define SM_MOUSEWHEELPRESENT 75
#define SM_CXVIRTUALSCREEN 78
#define SM_CYVIRTUALSCREEN 79

PLATFORM_API int WINAPI GetSystemMetrics(int index);

/* Enabling, focus, activation. */

PLATFORM_API BOOL WINAPI EnableWindow(HWND window, BOOL enable);
PLATFORM_API HWND WINAPI SetFocus(HWND window);
PLATFORM_API HWND WINAPI GetFocus(void);
PLATFORM_API HWND WINAPI SetActiveWindow(HWND window);
PLATFORM_API HWND WINAPI GetActiveWindow(void);
PLATFORM_API BOOL WINAPI SetForegroundWindow(HWND window);
PLATFORM_API HWND WINAPI GetForegroundWindow(void);

/* Layered windows. SetLayeredWindowAttributes is also found at run time, in "user32". */

#define LWA_ALPHA 2u

PLATFORM_API BOOL WINAPI SetLayeredWindowAttributes(HWND window, COLORREF key, BYTE alpha, DWORD flags);
PLATFORM_API BOOL WINAPI GetLayeredWindowAttributes(HWND window, COLORREF *key, BYTE *alpha, DWORD *flags);
PLATFORM_API HMODULE WINAPI LoadLibraryA(LPCSTR name);
PLATFORM_API FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name);
PLATFORM_API BOOL WINAPI FreeLibrary(HMODULE module);

/* The system menu: its items and their states, which the desktop's own frame does not show. */

#define MF_BYCOMMAND 0u
#define MF_BYPOSITION 0x400u
#define MF_ENABLED 0u
#define MF_GRAYED 1u
#define MF_DISABLED 2u
#define MF_SEPARATOR 0x800u
#define SC_SIZE 0xF000u
#define SC_MOVE 0xF010u
#define SC_MINIMIZE 0xF020u
#define SC_MAXIMIZE 0xF030u
#define SC_CLOSE 0xF060u
#define SC_KEYMENU 0xF100u
#define SC_RESTORE 0xF120u

PLATFORM_API HMENU WINAPI GetSystemMenu(HWND window, BOOL revert);
/* Result: the item's state before, all ones for an item that isn't there. */
PLATFORM_API BOOL WINAPI EnableMenuItem(HMENU menu, UINT item, UINT flags);
PLATFORM_API UINT WINAPI GetMenuState(HMENU menu, UINT item, UINT flags);

/* Painting. */

#define RDW_INVALIDATE 0x0001u
#define RDW_ERASE 0x0004u
#define RDW_VALIDATE 0x0008u
#define RDW_NOERASE 0x0020u
#define RDW_NOCHILDREN 0x0040u
#define RDW_ALLCHILDREN 0x0080u
#define RDW_UPDATENOW 0x0100u
#define RDW_ERASENOW 0x0200u
#define RDW_FRAME 0x0400u

typedef struct tagPAINTSTRUCT {
  HDC hdc;
  BOOL fErase;
  RECT rcPaint;
  BOOL fRestore;
  BOOL fIncUpdate;
  BYTE rgbReserved[32];
} PAINTSTRUCT;

PLATFORM_API BOOL WINAPI InvalidateRect(HWND window, const RECT *rect, BOOL erase);
PLATFORM_API BOOL WINAPI ValidateRect(HWND window, const RECT *rect);
PLATFORM_API BOOL WINAPI RedrawWindow(HWND window, const RECT *rect, HRGN region, UINT flags);
PLATFORM_API BOOL WINAPI UpdateWindow(HWND window);
PLATFORM_API BOOL WINAPI GetUpdateRect(HWND window, RECT *rect, BOOL erase);
PLATFORM_API HDC WINAPI BeginPaint(HWND window, PAINTSTRUCT *paint);
PLATFORM_API BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT *paint);

/* Messages. */

typedef struct tagMSG {
  HWND hwnd;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD time;
  POINT pt;
} MSG;

#define WM_CREATE 0x0001u
#define WM_DESTROY 0x0002u
#define WM_MOVE 0x0003u
#define WM_SIZE 0x0005u
#define WM_ACTIVATE 0x0006u
#define WM_SETFOCUS 0x0007u
#define WM_KILLFOCUS 0x0008u
#define WM_ENABLE 0x000Au
#define WM_SETREDRAW 0x000Bu
#define WM_SETTEXT 0x000Cu
#define WM_GETTEXT 0x000Du
#define WM_GETTEXTLENGTH 0x000Eu
#define WM_PAINT 0x000Fu
#define WM_CLOSE 0x0010u
#define WM_QUERYOPEN 0x0013u
#define WM_QUIT 0x0012u
#define WM_ERASEBKGND 0x0014u
#define WM_SHOWWINDOW 0x0018u
#define WM_ACTIVATEAPP 0x001Cu
#define WM_CANCELMODE 0x001Fu
#define WM_SETCURSOR 0x0020u
#define WM_MOUSEACTIVATE 0x0021u
#define WM_CHILDACTIVATE 0x0022u
#define WM_GETMINMAXINFO 0x0024u
#define WM_WINDOWPOSCHANGING 0x0046u
#define WM_WINDOWPOSCHANGED 0x0047u
#define WM_NOTIFY 0x004Eu
#define WM_CONTEXTMENU 0x007Bu
#define WM_STYLECHANGING 0x007Cu
#define WM_STYLECHANGED 0x007Du
#define WM_GETICON 0x007Fu
#define WM_SETICON 0x0080u
#define WM_NCCREATE 0x0081u
#define WM_NCDESTROY 0x0082u
#define WM_NCCALCSIZE 0x0083u
#define WM_NCHITTEST 0x0084u
#define WM_NCPAINT 0x0085u
#define WM_NCACTIVATE 0x0086u
#define WM_NCMOUSEMOVE 0x00A0u
#define WM_NCLBUTTONDOWN 0x00A1u
#define WM_NCLBUTTONDBLCLK 0x00A3u
#define WM_NCRBUTTONUP 0x00A5u
#define WM_KEYDOWN 0x0100u
#define WM_KEYUP 0x0101u
#define WM_CHAR 0x0102u
#define WM_SYSKEYDOWN 0x0104u
#define WM_SYSKEYUP 0x0105u
#define WM_SYSCHAR 0x0106u
#define WM_SYSCOMMAND 0x0112u
#define WM_TIMER 0x0113u
#define WM_MOUSEFIRST 0x0200u
#define WM_MOUSEMOVE 0x0200u
#define WM_LBUTTONDOWN 0x0201u
#define WM_LBUTTONUP 0x0202u
#define WM_LBUTTONDBLCLK 0x0203u
#define WM_RBUTTONDOWN 0x0204u
#define WM_RBUTTONUP 0x0205u
#define WM_RBUTTONDBLCLK 0x0206u
#define WM_MBUTTONDOWN 0x0207u
#define WM_MBUTTONUP 0x0208u
#define WM_MBUTTONDBLCLK 0x0209u
#define WM_MOUSEWHEEL 0x020Au
#define WM_PARENTNOTIFY 0x0210u
#define WM_SIZING 0x0214u
#define WM_CAPTURECHANGED 0x0215u
#define WM_MOVING 0x0216u
#define WM_ENTERSIZEMOVE 0x0231u
#define WM_EXITSIZEMOVE 0x0232u
#define WM_MOUSELEAVE 0x02A3u
#define WM_USER 0x0400u
#define WM_APP 0x8000u

#define SIZE_RESTORED 0
#define SIZE_MINIMIZED 1
#define SIZE_MAXIMIZED 2
#define WMSZ_LEFT 1
#define WA_INACTIVE 0
#define WA_ACTIVE 1
#define WA_CLICKACTIVE 2
#define MA_ACTIVATE 1
#define MA_ACTIVATEANDEAT 2
#define MA_NOACTIVATE 3
#define MA_NOACTIVATEANDEAT 4
#define HTERROR (-2)
#define HTTRANSPARENT (-1)
#define HTNOWHERE 0
#define HTCLIENT 1
#define HTCAPTION 2
#define HTSYSMENU 3
#define HTMINBUTTON 8
#define HTMAXBUTTON 9
#define HTLEFT 10
#define HTRIGHT 11
#define HTTOP 12
#define HTTOPLEFT 13
#define HTTOPRIGHT 14
#define HTBOTTOM 15
#define HTBOTTOMLEFT 16
#define HTBOTTOMRIGHT 17
#define HTBORDER 18
#define HTCLOSE 20
#define WHEEL_DELTA 120

typedef struct tagNMHDR {
  HWND hwndFrom;
  UINT_PTR idFrom;
  UINT code;
} NMHDR;

#define PM_NOREMOVE 0u
#define PM_REMOVE 1u

/* Messages come in this order: sent, posted, input, quit, paint, timer. */
PLATFORM_API BOOL WINAPI GetMessageA(MSG *message, HWND window, UINT first, UINT last);
PLATFORM_API BOOL WINAPI PeekMessageA(MSG *message, HWND window, UINT first, UINT last, UINT remove);
PLATFORM_API BOOL WINAPI TranslateMessage(const MSG *message);
PLATFORM_API LRESULT WINAPI DispatchMessageA(const MSG *message);
/* To a window of another thread: waits until that thread takes the message, and serves messages sent here meanwhile. */
PLATFORM_API LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
PLATFORM_API BOOL WINAPI PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
PLATFORM_API BOOL WINAPI PostThreadMessageA(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam);
PLATFORM_API void WINAPI PostQuitMessage(int status);
PLATFORM_API BOOL WINAPI InSendMessage(void);

/* Timers. Without a window the id is the layer's choice, unless it is that of such a timer. */

#define USER_TIMER_MINIMUM 10u

PLATFORM_API UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure);
PLATFORM_API BOOL WINAPI KillTimer(HWND window, UINT_PTR id);
PLATFORM_API void WINAPI Sleep(DWORD milliseconds);

/* Input. */

#define MK_LBUTTON 0x01u
#define MK_RBUTTON 0x02u
#define MK_SHIFT 0x04u
#define MK_CONTROL 0x08u
#define MK_MBUTTON 0x10u

#define VK_LBUTTON 0x01
#define VK_RBUTTON 0x02
#define VK_MBUTTON 0x04
#define VK_BACK 0x08
#define VK_TAB 0x09
#define VK_CLEAR 0x0C
#define VK_RETURN 0x0D
#define VK_SHIFT 0x10
#define VK_CONTROL 0x11
#define VK_MENU 0x12
#define VK_PAUSE 0x13
#define VK_CAPITAL 0x14
#define VK_KANJI 0x19
#define VK_ESCAPE 0x1B
#define VK_CONVERT 0x1C
#define VK_NONCONVERT 0x1D
#define VK_SPACE 0x20
#define VK_PRIOR 0x21
#define VK_NEXT 0x22
#define VK_END 0x23
#define VK_HOME 0x24
#define VK_LEFT 0x25
#define VK_UP 0x26
#define VK_RIGHT 0x27
#define VK_DOWN 0x28
#define VK_SNAPSHOT 0x2C
#define VK_INSERT 0x2D
#define VK_DELETE 0x2E
#define VK_HELP 0x2F
#define VK_LWIN 0x5B
#define VK_RWIN 0x5C
#define VK_APPS 0x5D
#define VK_NUMPAD0 0x60
#define VK_NUMPAD9 0x69
#define VK_MULTIPLY 0x6A
#define VK_ADD 0x6B
#define VK_SUBTRACT 0x6D
#define VK_DECIMAL 0x6E
#define VK_DIVIDE 0x6F
#define VK_F1 0x70
#define VK_F4 0x73
#define VK_F10 0x79
#define VK_NUMLOCK 0x90
#define VK_SCROLL 0x91
#define VK_LSHIFT 0xA0
#define VK_RSHIFT 0xA1
#define VK_LCONTROL 0xA2
#define VK_RCONTROL 0xA3
#define VK_LMENU 0xA4
#define VK_RMENU 0xA5
#define VK_OEM_1 0xBA
#define VK_OEM_PLUS 0xBB
#define VK_OEM_COMMA 0xBC
#define VK_OEM_MINUS 0xBD
#define VK_OEM_PERIOD 0xBE
#define VK_OEM_2 0xBF
#define VK_OEM_3 0xC0
#define VK_OEM_4 0xDB
#define VK_OEM_5 0xDC
#define VK_OEM_6 0xDD
#define VK_OEM_7 0xDE

#define TME_LEAVE 2u
#define TME_CANCEL 0x80000000u

typedef struct tagTRACKMOUSEEVENT {
  DWORD cbSize, dwFlags;
  HWND hwndTrack;
  DWORD dwHoverTime;
} TRACKMOUSEEVENT;

PLATFORM_API HWND WINAPI SetCapture(HWND window);
PLATFORM_API BOOL WINAPI ReleaseCapture(void);
PLATFORM_API HWND WINAPI GetCapture(void);
PLATFORM_API BOOL WINAPI TrackMouseEvent(TRACKMOUSEEVENT *event);
PLATFORM_API BOOL WINAPI GetCursorPos(POINT *point);
PLATFORM_API BOOL WINAPI SetCursorPos(int x, int y);
/* GetKeyState as of the last message taken, GetAsyncKeyState as of now. The high bit tells that the key is down. */
PLATFORM_API SHORT WINAPI GetKeyState(int key);
PLATFORM_API SHORT WINAPI GetAsyncKeyState(int key);
PLATFORM_API UINT WINAPI GetDoubleClickTime(void);

/* Input as if it came from the user. */

#define MOUSEEVENTF_MOVE 0x0001u
#define MOUSEEVENTF_LEFTDOWN 0x0002u
#define MOUSEEVENTF_LEFTUP 0x0004u
#define MOUSEEVENTF_RIGHTDOWN 0x0008u
#define MOUSEEVENTF_RIGHTUP 0x0010u
#define MOUSEEVENTF_MIDDLEDOWN 0x0020u
#define MOUSEEVENTF_MIDDLEUP 0x0040u
#define MOUSEEVENTF_WHEEL 0x0800u
#define MOUSEEVENTF_ABSOLUTE 0x8000u
#define KEYEVENTF_EXTENDEDKEY 1u
#define KEYEVENTF_KEYUP 2u

PLATFORM_API void WINAPI mouse_event(DWORD flags, DWORD x, DWORD y, DWORD data, ULONG_PTR extra);
PLATFORM_API void WINAPI keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR extra);

/* Messages to the user. */

#define MB_OK 0u
#define IDOK 1

PLATFORM_API int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);

/* Text. */

/* Formatted print of at most 1023 bytes and an end mark. Knows %c %d %i %u %x %X %s %%, the flags - # 0, width,
 * precision and the sizes h and l. */
PLATFORM_API int WINAPIV wsprintfA(LPSTR text, LPCSTR format, ...);
PLATFORM_API int WINAPI wvsprintfA(LPSTR text, LPCSTR format, va_list arguments);

/* Whether a byte is the first one of a double-byte character. */
PLATFORM_API BOOL WINAPI IsDBCSLeadByte(BYTE byte);

#define CP_ACP 0u
#define CP_UTF8 65001u

/* Between UTF-16 and a code page: CP_ACP, which is 932, or CP_UTF8. A length of -1 takes the text with its NUL; a size
 * of 0 asks for the room needed. Result: the units written or needed; 0 when the room is short. */
PLATFORM_API int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, WCHAR *wide, int size);
PLATFORM_API int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, const WCHAR *wide, int length, LPSTR text,
                                            int size, LPCSTR defaultCharacter, BOOL *usedDefault);
/* The code page in which the terminal takes text: CP_UTF8. */
PLATFORM_API UINT WINAPI GetConsoleOutputCP(void);

/* Program. */

/* The command line, cut into arguments, in code page 932; argv of main holds what the shell passed, in UTF-8. */
PLATFORM_API int *__p___argc(void);
PLATFORM_API char ***__p___argv(void);
#define __argc (*__p___argc())
#define __argv (*__p___argv())

/* The value of an environment variable, in code page 932. Result: its length; the room needed where there is less; 0 when
 * there is none. */
PLATFORM_API DWORD WINAPI GetEnvironmentVariableA(LPCSTR name, LPSTR value, DWORD size);

/* The standard streams as files, and whether a file is a terminal. */
#define STD_INPUT_HANDLE ((DWORD)-10)
#define STD_OUTPUT_HANDLE ((DWORD)-11)
#define STD_ERROR_HANDLE ((DWORD)-12)

PLATFORM_API HANDLE WINAPI GetStdHandle(DWORD stream);
PLATFORM_API BOOL WINAPI GetConsoleMode(HANDLE file, LPDWORD mode);

/* Whether windows are shown to anybody. Without a display they work all the same, unseen. */
PLATFORM_API BOOL platformHasDisplay(void);

/* Writes what a top-level window shows in its client area into a PNG file.
 * file: in code page 932. FALSE for another window, and when the file can't be written. */
PLATFORM_API BOOL platformSavePicture(HWND window, const char *file);

/* Opens a C stream by a name in code page 932, in either form of path ("C:\a\b" or "/a/b"). Null when that
 * fails, and for a folder. */
PLATFORM_API FILE *platformOpenStream(const char *name, const char *mode);

#ifdef __cplusplus
}
#endif

#include "platform/winapi_drawing.h"
#include "platform/winapi_icons.h"

#endif
