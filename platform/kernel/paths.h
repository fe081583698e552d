// File names as the Windows API takes them, and as this system takes them.
#pragma once

#include "platform/winapi.h"

#include <string>
#include <string_view>

namespace platform {

// The path on this system that a name in code page 932 stands for. Backslash and slash both separate. Drive C: is the
// root of the file system; a name without a drive is relative to the current folder. Empty, with the last error set, for
// an empty name, a drive that does not exist, a name of 260 bytes or more, and one with * ? " < > or |.
std::string nativePath(std::string_view name);

// The name of a path on this system: "C:\a\b" for "/a/b". Bytes that would mean something else there are escaped.
std::string nameOfPath(std::string_view path);
// The same for one part of a path.
std::string nameOfPart(std::string_view part);

bool isSeparator(char c);

// What stands behind a drive letter. Drive C: is always there.
struct Drive {
  UINT type = DRIVE_NO_ROOT_DIR;
  std::string folder; // on this system, without a slash at its end
};
Drive driveOf(char letter);
void setDrive(char letter, const Drive &drive);

} // namespace platform
