// File names as the Windows API takes them, and as this system takes them.
#pragma once

#include "platform/winapi.h"

#include <cerrno>
#include <string>
#include <string_view>

namespace platform {

// A name from a caller; null counts as an empty name.
inline std::string_view given(LPCSTR name) { return name ? name : ""; }

// The path on this system of a name in code page 932. Backslash and slash both separate. Drive C: is the root of the
// file system; a name without a drive is relative to the current folder. "." and ".." are folded without a look at the
// disk. Points and blanks at the end of a name are dropped, as Windows does.
//
// Result: empty, with the last error set, for an empty name, a drive that does not exist, a name of 260 bytes or more,
// a name with * ? " < > | or a byte from 1 to 31, and the name of a device.
std::string nativePath(std::string_view name);

// nativePath for functions that open a file or ask about it: the null device has a path too.
std::string openablePath(std::string_view name);
bool isNullDevice(std::string_view path);

// The path of an existing file, found without regard to case, part by part. A part with exactly the given name comes
// first. Else, of the names that differ in case only, the lowest by its bytes counts. From the first part on that
// doesn't exist, the path stays as given.
struct FoundPath {
  std::string path;
  bool exists;
};
FoundPath findPath(const std::string &path);

// Runs a system call on a path. If no file has this exact name, path becomes the one found without regard to case, and
// the call runs once more on it. An exact name costs no search.
// call: takes a path; a result below 0, with errno set, is a failure. Result: that of the call.
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

// The path for a program outside the layer that reads or writes the file, in the case of an existing file.
std::string existingPath(std::string_view name);

// The name of a path on this system: "C:\a\b" for "/a/b". Bytes with another meaning in a name are escaped.
std::string nameOfPath(std::string_view path);
// The same for one part of a path.
std::string nameOfPart(std::string_view part);
// The name for a text from outside, such as an argument. If the text, or else its folder, is a path that exists, that
// much is taken as a path. The rest is taken as plain text.
std::string nameOfArgument(const std::string &text);

bool isSeparator(char c);

// Where the last part of a name of the API begins; 0 if the name has neither folder nor drive.
size_t lastPartAt(std::string_view name);

// The part of a path behind its last slash.
std::string_view lastPart(std::string_view path);

// The meaning of a drive letter. Drive C: is always there.
struct Drive {
  UINT type = DRIVE_NO_ROOT_DIR;
  std::string folder; // on this system, without a slash at its end
};
Drive driveOf(char letter);
void setDrive(char letter, const Drive &drive);

} // namespace platform
