// File names as the Windows API takes them, and as this system takes them.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The path on this system that a name in code page 932 stands for. Backslash and slash both separate. Drive C: is the
// root of the file system; a name without a drive is relative to the current folder. Empty for an empty name and for
// a drive that does not exist.
std::string nativePath(std::string_view name);

} // namespace platform
