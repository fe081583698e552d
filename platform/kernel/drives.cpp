// Drives: their kind, and the room on them.

#include "platform/kernel/errors.h"
#include "platform/kernel/paths.h"

#include <algorithm>
#include <string>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <utility>

using namespace platform;

BOOL GetDiskFreeSpaceA(LPCSTR root, LPDWORD sectorsPerCluster, LPDWORD bytesPerSector, LPDWORD freeClusters,
                       LPDWORD clusters) {
  return guarded(FALSE, [&] {
    const std::string path = root ? existingPath(root) : ".";
    struct statvfs status;
    if (path.empty() || statvfs(path.c_str(), &status) != 0) return failWith(ERROR_PATH_NOT_FOUND);
    constexpr uint64_t sector = 512;
    uint64_t perCluster = std::max<uint64_t>(status.f_frsize / sector, 1);
    uint64_t free = status.f_bavail;
    uint64_t all = status.f_blocks;
    for (; all > UINT32_MAX; perCluster *= 2) { // larger clusters, until their number fits
      all /= 2;
      free /= 2;
    }
    const std::pair<LPDWORD, uint64_t> answers[] = {
        {sectorsPerCluster, perCluster}, {bytesPerSector, sector}, {freeClusters, free}, {clusters, all}};
    for (const auto &[room, value] : answers)
      if (room) *room = static_cast<DWORD>(value);
    return TRUE;
  });
}

UINT GetDriveTypeA(LPCSTR root) {
  return guarded<UINT>(DRIVE_UNKNOWN, [&]() -> UINT {
    if (!root) return DRIVE_FIXED;
    const std::string name = root;
    if (name.empty()) return DRIVE_NO_ROOT_DIR;
    const bool letter = name.size() >= 2 && name[1] == ':';
    const Drive drive = driveOf(letter ? name[0] : 'C');
    if (letter && name.size() <= 3) return drive.type; // an empty drive has a kind too
    const std::string path = existingPath(name);
    struct stat status;
    return !path.empty() && stat(path.c_str(), &status) == 0 ? drive.type : DRIVE_NO_ROOT_DIR;
  });
}
