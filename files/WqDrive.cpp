// The drive behind a path.

#include "files/files.h"

#include "text/text.h"

namespace {

// Copies "C:" from a path, or an empty text if it names no drive.
int32_t copyDrive(char *dst, const char *path) {
  dst[0] = '\0';
  if (path[0] == '\0' || path[1] != ':') return 0;
  dst[2] = '\0';
  return WqStr_nCopy(dst, path, 2);
}

} // namespace

void WqDrive_Init(char *path) { *path = '\0'; }

void WqDrive_Term(char *path) { *path = '\0'; }

uint32_t WqDrive_FreeSpace(const char *path) {
  char root[4];
  WqStr_Copy(root + copyDrive(root, path), "\\");
  DWORD sectorsPerCluster;
  DWORD bytesPerSector;
  DWORD freeClusters;
  DWORD clusters;
  if (!GetDiskFreeSpaceA(root, &sectorsPerCluster, &bytesPerSector, &freeClusters, &clusters)) return 0;
  return sectorsPerCluster * bytesPerSector * freeClusters;
}

int WqDrive_IsWrite(const char *path) {
  char drive[4];
  copyDrive(drive, path);
  const UINT type = GetDriveTypeA(drive);
  return type != DRIVE_UNKNOWN && type != DRIVE_CDROM;
}

void WqDrive_CurrentName(char *name) {
  char current[1024];
  name[0] = '\0';
  const DWORD length = GetCurrentDirectoryA(sizeof current, current);
  if (length < 2 || length >= sizeof current) return;
  WqStr_nCopy(name, current, 2);
  WqStr_Copy(name + 2, "\\");
}
