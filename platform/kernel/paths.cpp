// Names are folded in code page 932, where escapes and plain characters still differ, and decoded last.

#include "platform/kernel/paths.h"

#include "platform/kernel/codepage.h"

#include <algorithm>
#include <array>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <unistd.h>
#include <vector>

namespace platform {

namespace {

constexpr std::string_view kForbidden = "*?\"<>|";
constexpr std::string_view kReserved = "\\:*?\"<>|"; // bytes with a meaning in a name, but none in a part of a path
constexpr std::string_view kDeviceLetters = "ACLNPaclnp"; // the first letters of the devices' names
constexpr std::string_view kNullName = "NUL";
constexpr const char *kNullPath = "/dev/null";

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

// A backslash that is part of a name on this system travels as an escape. Decoding turns the escape into a backslash
// again. So separators are replaced before, and double-byte codes are skipped, since 5C may be a trail byte.
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

constexpr bool isForbidden(unsigned char byte) {
  return byte < 0x20 || byte == '|' || (byte < 0x40 && kForbidden.find(static_cast<char>(byte)) != kForbidden.npos);
}

// Whether a name has a byte that no file name has. Trail bytes don't count.
bool hasForbidden(std::string_view name) {
  for (size_t at = 0; at < name.size(); at += isDoubleByteAt(name, at) ? 2 : 1)
    if (isForbidden(static_cast<unsigned char>(name[at]))) return true;
  return false;
}

// One part of a name as Windows reads it: the last part drops all points and blanks at its end, any other one point.
std::string_view meantPart(std::string_view part, bool last) {
  if (last) return part.substr(0, part.find_last_not_of(". ") + 1);
  const bool drops = part.ends_with('.') && !part.ends_with("..");
  return drops ? part.substr(0, part.size() - 1) : part;
}

// Folds a name with slashes. A slash at the end stays. A name of blanks only becomes empty.
std::string foldedPath(std::string_view name) {
  const bool absolute = name.starts_with('/');
  std::string path(absolute ? "/" : "");
  std::vector<size_t> starts; // where in path the parts begin that a ".." removes
  for (size_t at = 0; at < name.size();) {
    const size_t end = std::min(name.find('/', at), name.size());
    const std::string_view part = name.substr(at, end - at);
    at = end + 1;
    if (part == "..") {
      if (!starts.empty()) {
        path.resize(starts.back());
        starts.pop_back();
      } else if (!absolute) {
        path += "../";
      }
      continue;
    }
    const std::string_view meant = meantPart(part, end == name.size());
    if (meant.empty()) continue;
    starts.push_back(path.size());
    path.append(meant) += '/';
  }
  if (path.size() > 1 && !name.ends_with('/')) path.pop_back();
  return path.empty() && name.find_first_not_of(' ') != std::string_view::npos ? "." : path;
}

// The device that the last part of a name stands for, with or without an extension; empty for a file name.
std::string_view deviceOf(std::string_view path) {
  std::string_view part = lastPart(path);
  part = part.substr(0, std::min(part.find_first_of(".:"), part.size()));
  part = part.substr(0, part.find_last_not_of(' ') + 1);
  if (part.size() < 3 || part.size() > 7 || kDeviceLetters.find(part[0]) == std::string_view::npos) return {};
  for (const std::string_view device : {"NUL", "CON", "PRN", "AUX", "CONIN$", "CONOUT$"})
    if (differInCaseOnly(part, device)) return device;
  const bool numbered = part.size() == 4 && part[3] >= '1' && part[3] <= '9';
  for (const std::string_view device : {"COM", "LPT"})
    if (numbered && differInCaseOnly(part.substr(0, 3), device)) return device;
  return {};
}

bool isThere(const std::string &path) {
  return faccessat(AT_FDCWD, path.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0; // true for a dangling link too
}

// The length of the longest leading part of a path, with its slash, that exists under exactly this name.
size_t knownPart(const std::string &path) {
  for (size_t slash = path.rfind('/'); slash != std::string::npos && slash > 0; slash = path.rfind('/', slash - 1))
    if (isThere(path.substr(0, slash))) return slash + 1;
  return path.starts_with('/') ? 1 : 0;
}

// The path of a device, whose name counts only in a folder that exists. Only the null device can be opened.
std::string devicePath(std::string_view device, const std::string &path) {
  const std::string folder = path.substr(0, path.size() - lastPart(path).size());
  const bool known = folder.empty() || findPath(folder).exists;
  if (known && device == kNullName) return kNullPath;
  SetLastError(known ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND);
  return {};
}

// The entry of a folder whose name differs from a name in case only; empty if there is no such entry.
std::string otherCase(const std::string &folder, std::string_view name) {
  const std::unique_ptr<DIR, int (*)(DIR *)> stream(opendir(folder.empty() ? "." : folder.c_str()), closedir);
  std::string best;
  while (const dirent *entry = stream ? readdir(stream.get()) : nullptr) {
    const std::string_view candidate = entry->d_name;
    if ((best.empty() || candidate < best) && differInCaseOnly(candidate, name)) best = candidate;
  }
  return best;
}

std::string nameOfParts(std::string_view path, char separator) {
  std::string name;
  for (;;) {
    const size_t slash = std::min(path.find('/'), path.size());
    name += nameOfPart(path.substr(0, slash));
    if (slash == path.size()) return name;
    name += separator;
    path.remove_prefix(slash + 1);
  }
}

// The meaning of a name: a path, or a device too.
struct Meant {
  std::string path; // empty, with the last error set, for an invalid name
  std::string_view device;
};

Meant meantBy(std::string_view name) {
  if (name.empty() || name.size() >= MAX_PATH) {
    SetLastError(name.empty() ? ERROR_PATH_NOT_FOUND : ERROR_FILENAME_EXCED_RANGE);
    return {};
  }
  std::string_view rest = name;
  Drive drive = {DRIVE_FIXED, ""};
  if (name.size() >= 2 && name[1] == ':') {
    rest.remove_prefix(2);
    drive = driveOf(name[0]);
  }
  std::string path = foldedPath(withSlashes(rest));
  if (path.empty() && rest.empty()) path = ".";
  if (path.empty() || drive.type == DRIVE_NO_ROOT_DIR) {
    SetLastError(ERROR_PATH_NOT_FOUND);
    return {};
  }
  if (hasForbidden(path)) {
    SetLastError(ERROR_INVALID_NAME);
    return {};
  }
  const std::string_view device = deviceOf(path);
  std::string native = utf8FromCodePage(path);
  if (!drive.folder.empty()) native.insert(0, native.starts_with('/') ? drive.folder : drive.folder + '/');
  return {std::move(native), device};
}

} // namespace

bool isSeparator(char c) { return c == '\\' || c == '/'; }

size_t lastPartAt(std::string_view name) {
  size_t start = name.size() >= 2 && name[1] == ':' ? 2 : 0;
  for (size_t at = start; at < name.size(); ++at) {
    if (isDoubleByteAt(name, at))
      ++at;
    else if (isSeparator(name[at]))
      start = at + 1;
  }
  return start;
}

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
  Meant meant = meantBy(name);
  if (meant.device.empty()) return std::move(meant.path);
  if (!devicePath(meant.device, meant.path).empty()) SetLastError(ERROR_FILE_NOT_FOUND);
  return {};
}

std::string openablePath(std::string_view name) {
  Meant meant = meantBy(name);
  return meant.device.empty() ? std::move(meant.path) : devicePath(meant.device, meant.path);
}

bool isNullDevice(std::string_view path) { return path == kNullPath; }

FoundPath findPath(const std::string &path) {
  if (isThere(path)) return {path, true};
  size_t at = knownPart(path);
  std::string found = path.substr(0, at);
  while (at < path.size()) {
    const size_t end = std::min(path.find('/', at), path.size());
    const std::string part = path.substr(at, end - at);
    const std::string name = isThere(found + part) ? part : otherCase(found, part);
    if (name.empty()) return {found + path.substr(at), false};
    found += name + path.substr(end, 1);
    at = end + 1;
  }
  return {found, isThere(found)};
}

std::string existingPath(std::string_view name) {
  const std::string path = openablePath(name);
  return path.empty() ? path : findPath(path).path;
}

std::string_view lastPart(std::string_view path) { return path.substr(path.find_last_of('/') + 1); }

std::string nameOfPart(std::string_view part) {
  if (part == "." || part == "..") return std::string(part);
  const bool device = !deviceOf(part).empty(); // an escape for its first letter is enough
  const bool dropped = part.ends_with('.') || part.ends_with(' ');
  const auto isEscaped = [&](size_t at) {
    return static_cast<unsigned char>(part[at]) < 0x20 || kReserved.find(part[at]) != std::string_view::npos ||
           (device && at == 0) || (dropped && at + 1 == part.size());
  };
  std::string name;
  for (size_t at = 0; at < part.size();) {
    size_t end = at;
    while (end < part.size() && !isEscaped(end)) ++end;
    name += codePageFromUtf8(part.substr(at, end - at));
    if (end < part.size()) name += escapeOf(static_cast<unsigned char>(part[end]));
    at = end + 1;
  }
  return name;
}

std::string nameOfArgument(const std::string &text) {
  const size_t last = text.rfind('/') + 1;
  const std::string folder = text.substr(0, last);
  if (isThere(text)) return nameOfParts(text, '/');
  if (last > 0 && isThere(folder)) return nameOfParts(folder, '/') + codePageFromUtf8(text.substr(last));
  return codePageFromUtf8(text);
}

std::string nameOfPath(std::string_view path) { return "C:" + nameOfParts(path, '\\'); }

} // namespace platform
