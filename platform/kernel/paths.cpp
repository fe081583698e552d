// Names are decoded before anybody looks for separators, since 0x5C can be the second half of a character.

#include "platform/kernel/paths.h"

#include "platform/kernel/codepage.h"
#include "platform/kernel/errors.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <mutex>
#include <sys/stat.h>

namespace platform {

namespace {

std::mutex drivesMutex;

std::array<Drive, 26> &drives() {
  static std::array<Drive, 26> table = [] {
    std::array<Drive, 26> start;
    start['C' - 'A'].type = DRIVE_FIXED;
    return start;
  }();
  return table;
}

int driveIndex(char letter) {
  if (letter >= 'a' && letter <= 'z') return letter - 'a';
  return letter >= 'A' && letter <= 'Z' ? letter - 'A' : -1;
}

// A backslash that is part of a name on this system travels as an escape. Decoding would make it a separator, so the
// separators are turned in the encoded text, where a byte that belongs to a double-byte code is stepped over.
std::string withSlashes(std::string_view name) {
  std::string out(name);
  for (size_t at = 0; at < out.size(); ++at) {
    if (isDoubleByteAt(out, at))
      ++at;
    else if (out[at] == '\\')
      out[at] = '/';
  }
  return out;
}

// Whether a name has one of the characters that no file's name has. They are single bytes.
bool hasForbidden(std::string_view name) {
  for (size_t at = 0; at < name.size(); ++at) {
    if (isDoubleByteAt(name, at))
      ++at;
    else if (std::string_view("*?\"<>|").find(name[at]) != std::string_view::npos)
      return true;
  }
  return false;
}

} // namespace

bool isSeparator(char c) { return c == '\\' || c == '/'; }

Drive driveOf(char letter) {
  const int index = driveIndex(letter);
  const std::lock_guard lock(drivesMutex);
  return index < 0 ? Drive{} : drives()[static_cast<size_t>(index)];
}

void setDrive(char letter, const Drive &drive) {
  const int index = driveIndex(letter);
  const std::lock_guard lock(drivesMutex);
  if (index >= 0) drives()[static_cast<size_t>(index)] = drive;
}

std::string nativePath(std::string_view name) {
  if (name.empty() || name.size() >= MAX_PATH) {
    SetLastError(name.empty() ? ERROR_PATH_NOT_FOUND : ERROR_FILENAME_EXCED_RANGE);
    return {};
  }
  if (hasForbidden(name)) {
    SetLastError(ERROR_INVALID_NAME);
    return {};
  }
  const std::string slashed = withSlashes(name);
  std::string_view rest = slashed;
  std::string path;
  if (rest.size() >= 2 && rest[1] == ':') {
    const Drive drive = driveOf(rest[0]);
    if (drive.type == DRIVE_NO_ROOT_DIR) {
      SetLastError(ERROR_PATH_NOT_FOUND);
      return {};
    }
    rest.remove_prefix(2);
    path = drive.folder;
    if (!path.empty() && (rest.empty() || rest[0] != '/')) path += '/';
    if (path.empty() && rest.empty()) return ".";
  }
  return path + utf8FromCodePage(rest);
}

std::string nameOfPart(std::string_view part) { return codePageFromUtf8(part, true); }

std::string nameOfPath(std::string_view path) {
  std::string name = "C:";
  while (!path.empty()) {
    const size_t slash = std::min(path.find('/'), path.size());
    name += nameOfPart(path.substr(0, slash));
    path.remove_prefix(slash);
    if (path.empty()) break;
    name += '\\';
    path.remove_prefix(1);
  }
  return name;
}

} // namespace platform

FILE *platformOpenStream(const char *name, const char *mode) {
  return platform::guarded<FILE *>(nullptr, [&]() -> FILE * {
    const std::string path = platform::nativePath(name);
    struct stat status;
    if (path.empty() || (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))) return nullptr;
    return std::fopen(path.c_str(), mode);
  });
}

int64_t platformSeekStream(FILE *stream, int64_t offset, int origin) {
  return fseeko(stream, offset, origin) == 0 ? ftello(stream) : -1;
}
