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
typedef uintptr_t UINT_PTR;
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
#define ERROR_DIR_NOT_EMPTY 145u
#define ERROR_ALREADY_EXISTS 183u
#define ERROR_ENVVAR_NOT_FOUND 203u
#define ERROR_FILENAME_EXCED_RANGE 206u
#define ERROR_DIRECTORY 267u
#define ERROR_NOT_OWNER 288u
#define ERROR_INVALID_ADDRESS 487u
#define ERROR_FILE_INVALID 1006u
#define ERROR_MAPPED_ALIGNMENT 1132u
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
#define DRIVE_REMOVABLE 2u
#define DRIVE_FIXED 3u
#define DRIVE_REMOTE 4u
#define DRIVE_CDROM 5u

PLATFORM_API HANDLE WINAPI FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA *entry);
PLATFORM_API BOOL WINAPI FindNextFileA(HANDLE find, WIN32_FIND_DATAA *entry);
PLATFORM_API BOOL WINAPI FindClose(HANDLE find);
PLATFORM_API DWORD WINAPI SearchPathA(LPCSTR path, LPCSTR name, LPCSTR extension, DWORD size, LPSTR found,
                                      LPSTR *filePart);
PLATFORM_API BOOL WINAPI CreateDirectoryA(LPCSTR name, LPSECURITY_ATTRIBUTES security);
PLATFORM_API BOOL WINAPI RemoveDirectoryA(LPCSTR name);
PLATFORM_API DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR name);
PLATFORM_API BOOL WINAPI SetCurrentDirectoryA(LPCSTR name);
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

/* Opens a C stream by a name in code page 932, in either form of path ("C:\a\b" or "/a/b"). Null when that
 * fails, and for a folder. */
PLATFORM_API FILE *platformOpenStream(const char *name, const char *mode);

#ifdef __cplusplus
}
#endif

#endif
