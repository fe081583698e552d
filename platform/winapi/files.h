/* Files. Openers share a file as they allow each other, within a process and between processes that use these
 * functions. Names of 260 bytes or more are refused. A file without any write permission is read-only, for root too. */
#ifndef PLATFORM_WINAPI_FILES_H
#define PLATFORM_WINAPI_FILES_H

#include "platform/winapi/handles.h"
#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

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
#define FILE_ATTRIBUTE_REPARSE_POINT 0x400u /* a link to a folder; links to files look like the files */
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFu

typedef struct _OVERLAPPED OVERLAPPED, *LPOVERLAPPED; /* always null: all calls are synchronous */

PLATFORM_API HANDLE WINAPI CreateFileA(LPCSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                                       DWORD creation, DWORD attributes, HANDLE model);
PLATFORM_API BOOL WINAPI ReadFile(HANDLE file, LPVOID bytes, DWORD size, LPDWORD count, LPOVERLAPPED overlapped);
PLATFORM_API BOOL WINAPI WriteFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD count, LPOVERLAPPED overlapped);
PLATFORM_API DWORD WINAPI GetFileSize(HANDLE file, LPDWORD high);
PLATFORM_API BOOL WINAPI SetEndOfFile(HANDLE file);
PLATFORM_API BOOL WINAPI DeleteFileA(LPCSTR name);
/* Fails if the new name is taken, except by the file itself in another case. */
PLATFORM_API BOOL WINAPI MoveFileA(LPCSTR from, LPCSTR to);
PLATFORM_API BOOL WINAPI CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists);
PLATFORM_API DWORD WINAPI GetFileAttributesA(LPCSTR name);
PLATFORM_API BOOL WINAPI SetFileAttributesA(LPCSTR name, DWORD attributes);

/* Mappings, and views of them. */

#define PAGE_READONLY 0x02u
#define PAGE_READWRITE 0x04u
#define SEC_COMMIT 0x8000000u
#define FILE_MAP_READ 0x04u
#define FILE_MAP_WRITE 0x02u
#define FILE_MAP_ALL_ACCESS 0xF001Fu

PLATFORM_API HANDLE WINAPI CreateFileMappingA(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection,
                                              DWORD sizeHigh, DWORD sizeLow, LPCSTR name);
/* A view outlives the handles of its file and its mapping. A file can't be cut under a view. */
PLATFORM_API LPVOID WINAPI MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow, SIZE_T size);
PLATFORM_API BOOL WINAPI FlushViewOfFile(LPCVOID address, SIZE_T size);
PLATFORM_API BOOL WINAPI UnmapViewOfFile(LPCVOID address);

#ifdef __cplusplus
}
#endif

#endif
