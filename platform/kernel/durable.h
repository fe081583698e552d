// What has to be on the disk before something else may get there.
#pragma once

#include <string>

namespace platform {

// Waits until the bytes of an open file are on the disk. A file system that can't tell is one that needn't.
bool syncFile(int file);

// Waits until the names in the folder of a path are. Best effort: a folder that can't be read keeps its own time.
void syncFolderOf(const std::string &path);

} // namespace platform
