// Folders: searches, making and removing, the current folder, and the search for a file.

#include "platform/kernel/codepage.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr uint64_t kTicksPerSecond = 10000000;
constexpr uint64_t kSecondsTo1970 = 11644473600; // from the beginning of 1601

// Whether a name matches a pattern: ? stands for any one character, * for any number of them. On a difference the last
// * takes one character more.
bool matches(std::u16string_view name, std::u16string_view pattern) {
  size_t at = 0;
  size_t n = 0;
  size_t starAt = std::u16string_view::npos;
  size_t starN = 0;
  while (n < name.size()) {
    if (at < pattern.size() && pattern[at] == '*') {
      starAt = at++;
      starN = n;
    } else if (at < pattern.size() && (pattern[at] == '?' || pattern[at] == name[n])) {
      ++at;
      ++n;
    } else if (starAt != std::u16string_view::npos) {
      at = starAt + 1;
      n = ++starN;
    } else {
      return false;
    }
  }
  while (at < pattern.size() && pattern[at] == '*') ++at;
  return at == pattern.size();
}

// "*.*" means all names, with a point or without. Points and blanks at the end don't count, as in any name.
std::u16string patternOf(std::string_view text) {
  std::u16string pattern = foldedName(text.substr(0, text.find_last_not_of(". ") + 1));
  return pattern == u"*.*" ? u"*" : pattern;
}

FILETIME fileTime(const timespec &time) {
  const uint64_t ticks = (static_cast<uint64_t>(time.tv_sec) + kSecondsTo1970) * kTicksPerSecond +
                         static_cast<uint64_t>(time.tv_nsec) / 100;
  return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

// Fills an entry.
// Result: false if the file is gone or its name is too long for the entry.
bool describe(const std::string &path, const std::string &name, WIN32_FIND_DATAA &entry) {
  struct stat status;
  if (name.size() >= sizeof entry.cFileName) return false;
  if (stat(path.c_str(), &status) != 0 && lstat(path.c_str(), &status) != 0) return false;
  entry = {};
  entry.dwFileAttributes = attributesOf(path, status);
  entry.ftCreationTime = entry.ftLastWriteTime = fileTime(status.st_mtim);
  entry.ftLastAccessTime = fileTime(status.st_atim);
  if (!S_ISDIR(status.st_mode)) {
    entry.nFileSizeLow = static_cast<DWORD>(status.st_size);
    entry.nFileSizeHigh = static_cast<DWORD>(static_cast<uint64_t>(status.st_size) >> 32);
  }
  std::memcpy(entry.cFileName, name.c_str(), name.size() + 1);
  return true;
}

// A search. The names that match are listed when it begins, and each is described when the caller asks for it.
class Find : public Object {
 public:
  Find(std::string folder, std::vector<std::string> names) : folder_(std::move(folder)), names_(std::move(names)) {}

  bool next(WIN32_FIND_DATAA &entry) {
    const std::lock_guard lock(mutex_);
    while (index_ < names_.size()) {
      const std::string &part = names_[index_++];
      if (describe(folder_ + '/' + part, nameOfPart(part), entry)) return true;
    }
    return false;
  }

 private:
  std::mutex mutex_;
  std::string folder_;
  std::vector<std::string> names_;
  size_t index_ = 0;
};

// The names of a folder that match, sorted by their letters, with "." and ".." first.
// folder: becomes the path found without regard to case.
bool listFolder(std::string &folder, std::string_view text, std::vector<std::string> &names) {
  Descriptor file(onPath(folder, [](const char *path) { return open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  const std::unique_ptr<DIR, int (*)(DIR *)> stream(file.valid() ? fdopendir(file.get()) : nullptr, closedir);
  if (!stream) return failWith(errno == ENOENT ? ERROR_PATH_NOT_FOUND : errorOf(errno));
  file.release(); // the stream closes it
  const std::u16string pattern = patternOf(text);
  const bool root = folder == "/";
  std::vector<std::pair<std::u16string, std::string>> found;
  while (const dirent *entry = readdir(stream.get())) {
    const std::string part = entry->d_name;
    const bool dots = part == "." || part == "..";
    std::u16string key = foldedName(nameOfPart(part));
    if ((dots && root) || !matches(key, pattern)) continue;
    if (dots) key.insert(0, 1, u'\0');
    found.emplace_back(std::move(key), part);
  }
  std::sort(found.begin(), found.end());
  for (auto &[key, part] : found) names.push_back(std::move(part));
  return true;
}

// A link to a folder is removed itself; its target stays as it is.
int removeFolder(const char *path) {
  const std::string name(path);
  if (isFolderLink(name)) return unlink(name.substr(0, name.find_last_not_of('/') + 1).c_str());
  return rmdir(path);
}

// The name of a file or folder in its parent folder, with "." and ".." resolved.
std::string realName(const std::string &path) {
  const std::string_view last = lastPart(path);
  if (last != "." && last != "..") return std::string(last);
  const std::unique_ptr<char, void (*)(void *)> real(realpath(path.c_str(), nullptr), std::free);
  return real ? std::string(lastPart(real.get())) : std::string();
}

HANDLE notFound(DWORD error) {
  SetLastError(error);
  return INVALID_HANDLE_VALUE;
}

HANDLE openFind(std::shared_ptr<Find> find) {
  const HANDLE handle = handles().open(std::move(find));
  return handle ? handle : INVALID_HANDLE_VALUE;
}

// A search whose only entry has been handed out.
HANDLE openEnded() { return openFind(std::make_shared<Find>(std::string(), std::vector<std::string>())); }

// The null device is found in every folder.
HANDLE findDevice(std::string_view name, WIN32_FIND_DATAA *entry) {
  *entry = {};
  entry->dwFileAttributes = FILE_ATTRIBUTE_ARCHIVE;
  name.substr(lastPartAt(name), std::strlen("NUL")).copy(entry->cFileName, sizeof entry->cFileName - 1);
  return openEnded();
}

HANDLE findOne(std::string_view name, WIN32_FIND_DATAA *entry) {
  const std::string wanted = openablePath(name);
  if (wanted.empty()) return INVALID_HANDLE_VALUE;
  if (isNullDevice(wanted)) return findDevice(name, entry);
  const FoundPath found = findPath(wanted);
  const std::string part = realName(found.path);
  if (!found.exists || part.empty() || !describe(found.path, nameOfPart(part), *entry))
    return notFound(missingError(found.path));
  return openEnded();
}

HANDLE findMany(std::string_view folderName, std::string_view pattern, WIN32_FIND_DATAA *entry) {
  std::string folder = folderName.empty() ? "." : nativePath(folderName);
  std::vector<std::string> names;
  if (folder.empty() || !listFolder(folder, pattern, names)) return INVALID_HANDLE_VALUE;
  auto find = std::make_shared<Find>(std::move(folder), std::move(names));
  return find->next(*entry) ? openFind(std::move(find)) : notFound(ERROR_FILE_NOT_FOUND);
}

// Copies a name to a caller's room.
// Result: its length; if the room is too small, the room needed, with the NUL.
DWORD handOut(const std::string &name, DWORD size, LPSTR text) {
  if (!text || name.size() >= size) return static_cast<DWORD>(name.size() + 1);
  std::memcpy(text, name.c_str(), name.size() + 1);
  return static_cast<DWORD>(name.size());
}

std::string currentFolder() {
  const std::unique_ptr<char, void (*)(void *)> folder(getcwd(nullptr, 0), std::free);
  return folder ? folder.get() : "";
}

// The folders for the search of a file if the caller names none: the program's, the current one, those of PATH.
std::string defaultSearchPath() {
  std::array<char, PATH_MAX> program{};
  std::string path;
  const ssize_t length = readlink("/proc/self/exe", program.data(), program.size());
  if (length > 0) path = nameOfPath(std::string_view(program.data(), static_cast<size_t>(length)));
  path.resize(lastPartAt(path));
  path += ";.";
  const char *folders = std::getenv("PATH");
  for (std::string_view rest = folders ? folders : ""; !rest.empty();) {
    const size_t colon = std::min(rest.find(':'), rest.size());
    path += ';' + nameOfPath(rest.substr(0, colon));
    rest.remove_prefix(std::min(colon + 1, rest.size()));
  }
  return path;
}

bool isAbsolute(std::string_view name) {
  return (!name.empty() && isSeparator(name[0])) || (name.size() >= 2 && name[1] == ':');
}

// A folded path, made absolute by the current folder.
std::string absolutePath(std::string_view path) {
  if (path.starts_with('/')) return std::string(path);
  std::string folder = currentFolder();
  while (path.starts_with("../")) {
    folder.resize(std::min(folder.rfind('/'), folder.size()));
    path.remove_prefix(3);
  }
  return folder + '/' + std::string(path);
}

// The name of a file in a folder, as the caller spelled it; empty if no such file exists.
std::string fullName(std::string_view folder, const std::string &file) {
  std::string name(folder);
  if (!name.empty() && !isSeparator(name.back())) name += '\\';
  const std::string path = nativePath(name + file);
  return !path.empty() && findPath(path).exists ? nameOfPath(absolutePath(path)) : std::string();
}

std::string search(LPCSTR searchPath, const std::string &file) {
  if (isAbsolute(file)) return fullName("", file);
  const std::string path = searchPath ? searchPath : defaultSearchPath();
  for (std::string_view rest = path;;) {
    const size_t end = std::min(rest.find(';'), rest.size()); // ; is never a trail byte
    const std::string_view folder = rest.substr(0, end);
    if (!folder.empty() || path.empty()) {
      std::string found = fullName(folder.empty() ? "." : folder, file);
      if (!found.empty()) return found;
    }
    if (end == rest.size()) return {};
    rest.remove_prefix(end + 1);
  }
}

} // namespace

} // namespace platform

using namespace platform;

HANDLE FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA *entry) {
  return guarded<HANDLE>(INVALID_HANDLE_VALUE, [&]() -> HANDLE {
    const std::string_view name = given(pattern);
    const size_t last = lastPartAt(name);
    if (name.empty() || last == name.size()) { // a name that ends in a separator or a drive has no entry
      SetLastError(name.empty() ? ERROR_PATH_NOT_FOUND : ERROR_FILE_NOT_FOUND);
      return INVALID_HANDLE_VALUE;
    }
    const bool many = name.find_first_of("*?", last) != std::string_view::npos;
    return many ? findMany(name.substr(0, last), name.substr(last), entry) : findOne(name, entry);
  });
}

BOOL FindNextFileA(HANDLE handle, WIN32_FIND_DATAA *entry) {
  return guarded(FALSE, [&] {
    const std::shared_ptr<Find> find = handles().get<Find>(handle);
    if (!find) return failWith(ERROR_INVALID_HANDLE);
    return find->next(*entry) ? TRUE : failWith(ERROR_NO_MORE_FILES);
  });
}

BOOL FindClose(HANDLE handle) { return handles().close<Find>(handle) ? TRUE : failWith(ERROR_INVALID_HANDLE); }

DWORD SearchPathA(LPCSTR path, LPCSTR name, LPCSTR extension, DWORD size, LPSTR found, LPSTR *filePart) {
  return guarded<DWORD>(0, [&]() -> DWORD {
    if (!name || *name == '\0') {
      SetLastError(ERROR_INVALID_PARAMETER);
      return 0;
    }
    std::string file = name;
    const size_t last = lastPartAt(file);
    if (extension && file.find('.', last) == std::string::npos) file += extension;
    const std::string full = search(path, file);
    if (full.empty()) {
      SetLastError(ERROR_FILE_NOT_FOUND);
      return 0;
    }
    const DWORD length = handOut(full, size, found);
    if (filePart && found && length < size) *filePart = found + lastPartAt(full);
    return length;
  });
}

BOOL CreateDirectoryA(LPCSTR name, LPSECURITY_ATTRIBUTES) {
  return guarded(FALSE, [&] {
    const std::string path = nativePath(given(name));
    if (path.empty()) return FALSE;
    const FoundPath found = findPath(path);
    if (found.exists) return failWith(ERROR_ALREADY_EXISTS);
    if (mkdir(found.path.c_str(), 0777) == 0) return TRUE;
    return failWith(errno == ENOENT ? ERROR_PATH_NOT_FOUND : errorOf(errno));
  });
}

BOOL RemoveDirectoryA(LPCSTR name) {
  return guarded(FALSE, [&] {
    std::string path = nativePath(given(name));
    if (path.empty()) return FALSE;
    if (onPath(path, removeFolder) == 0) return TRUE;
    if (errno == ENOTDIR) return failWith(ERROR_DIRECTORY);
    return failWith(errno == ENOENT ? missingError(path) : errorOf(errno));
  });
}

BOOL SetCurrentDirectoryA(LPCSTR name) {
  return guarded<BOOL>(FALSE, [&]() -> BOOL {
    const std::string path = nativePath(name ? name : "");
    if (path.empty()) return FALSE;
    return chdir(path.c_str()) == 0 ? TRUE : failWithErrno();
  });
}

DWORD GetCurrentDirectoryA(DWORD size, LPSTR name) {
  return guarded<DWORD>(0, [&]() -> DWORD {
    const std::string folder = currentFolder();
    if (folder.empty()) {
      failWithErrno();
      return 0;
    }
    return handOut(nameOfPath(folder), size, name);
  });
}
