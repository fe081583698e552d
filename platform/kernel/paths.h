// File names as the Windows API takes them, and as this system takes them.
#pragma once

#include "platform/winapi.h"

#include <cerrno>
#include <string>
#include <string_view>

namespace platform {

// A name that a caller gave; none is as good as an empty one.
inline std::string_view given(LPCSTR name) { return name ? name : ""; }

// The path on this system that a name in code page 932 stands for. Backslash and slash both separate. Drive C: is the
// root of the file system; a name without a drive is relative to the current folder. "." and ".." are folded without a
// look at the disk, and what Windows drops at the end of a name, points and blanks, is dropped.
//
// Empty, with the last error set, for an empty name, a drive that does not exist, a name of 260 bytes or more, one with
// * ? " < > | or a byte from 1 to 31, and for the name of a device.
std::string nativePath(std::string_view name);

// The same for what is opened or asked about: the device that swallows everything has a path too.
std::string openablePath(std::string_view name);
bool isNullDevice(std::string_view path);

// What a path leads to without regard to case. Part by part, what is called exactly so comes first, then, of the names
// that differ in case only, the lowest by its bytes. From the first part on that nobody has, all stays as it was given.
struct FoundPath {
  std::string path;
  bool exists;
};
FoundPath findPath(const std::string &path);

// Runs a system call on a path, and where there is nothing of that name once more on what is found without regard to
// case, which path becomes then. The exact name costs nothing more.
// call: takes a path; below 0, with errno set, is a failure. Result: the call's.
template <typename Call> auto onPath(std::string &path, Call call) {
  auto result = call(path.c_str());
  if (result >= 0 || (errno != ENOENT && errno != ENOTDIR)) return result;
  const int error = errno;
  FoundPath found = findPath(path);
  const bool other = found.exists && found.path != path;
  errno = error;
  if (!other) return result;
  path = std::move(found.path);
  return call(path.c_str());
}

// The path of a name that is about to be read or written by others, under the case of what is there.
std::string existingPath(std::string_view name);

// The name of a path on this system: "C:\a\b" for "/a/b". What would mean something else there is escaped.
std::string nameOfPath(std::string_view path);
// The same for one part of a path.
std::string nameOfPart(std::string_view part);
// A text from outside that may be a path of this system. Where it names something that is there, or the folder in front
// of its last slash does, that much is taken as a path, and anything else as text.
std::string nameOfArgument(const std::string &text);

bool isSeparator(char c);

// Where the last part of a name of the API begins; 0 for one without folder and drive.
size_t lastPartAt(std::string_view name);

// The name behind the last slash.
std::string_view lastPart(std::string_view path);

// What stands behind a drive letter. Drive C: is always there.
struct Drive {
  UINT type = DRIVE_NO_ROOT_DIR;
  std::string folder; // on this system, without a slash at its end
};
Drive driveOf(char letter);
void setDrive(char letter, const Drive &drive);

} // namespace platform
