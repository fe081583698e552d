// Waits until data is on the disk.
#pragma once

#include <string>

namespace platform {

// Waits until the bytes of an open file are on the disk.
// Result: false if the disk failed; true also if the file system has no such call.
bool syncFile(int file);

// Waits until the names in the folder of a path are on the disk. A folder that can't be opened is left out silently.
void syncFolderOf(const std::string &path);

} // namespace platform
