/* Folders and drives. Found names are sorted by their letters. Wildcards are * and ?. */
#ifndef PLATFORM_WINAPI_FOLDERS_H
#define PLATFORM_WINAPI_FOLDERS_H

#include "platform/winapi/handles.h"
#include "platform/winapi/time.h"
#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

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
/* Changes the current folder of the whole process. */
PLATFORM_API BOOL WINAPI SetCurrentDirectoryA(LPCSTR name);
PLATFORM_API BOOL WINAPI GetDiskFreeSpaceA(LPCSTR root, LPDWORD sectorsPerCluster, LPDWORD bytesPerSector,
                                           LPDWORD freeClusters, LPDWORD clusters);
PLATFORM_API UINT WINAPI GetDriveTypeA(LPCSTR root);

#ifdef __cplusplus
}
#endif

#endif
