// Files. Every open file has its own description and position. The system's descriptor reads and writes
// if the file allows it, since claims need both. So the access that the caller asked for is checked here.

#include "platform/kernel/files.h"

#include "platform/kernel/codepage.h"
#include "platform/kernel/durable.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/sharing.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/xattr.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr size_t kPiece = 1u << 30; // the most bytes that one system call moves
constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr const char *kAttributeName = "user.DOSATTRIB"; // as other programs that share folders with Windows name it
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_TEMPORARY;

// A read-only file can't be written by anybody, root included.
bool isReadOnly(const struct stat &status) { return (status.st_mode & kAnyWrite) == 0; }

Descriptor systemOpen(const std::string &path, DWORD access, int flags) {
  const bool writes = (access & GENERIC_WRITE) != 0;
  Descriptor file(open(path.c_str(), (writes ? O_RDWR : O_RDONLY) | O_CLOEXEC | flags, 0666));
  if (!file.valid() && writes && errno == EACCES)
    file = Descriptor(open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, 0666));
  return file;
}

bool isMissing(int systemError) { return systemError == ENOENT || systemError == ENOTDIR; }

Descriptor notOpened(int systemError) {
  errno = systemError;
  return Descriptor();
}

// Opens or creates a file by a creation word, without cutting it. A new file gets its name in the caller's case, under
// folders in the case that they have on the disk.
Descriptor openOrCreate(std::string &path, DWORD access, DWORD creation, bool *existed) {
  const bool creates = creation == CREATE_NEW || creation == CREATE_ALWAYS || creation == OPEN_ALWAYS;
  for (;;) {
    int error = EEXIST;
    *existed = true;
    if (creation != CREATE_NEW) {
      Descriptor file = systemOpen(path, access, 0);
      if (file.valid() || !isMissing(errno)) return file;
      error = errno;
    }
    FoundPath found = findPath(path);
    const bool other = found.exists && found.path != path;
    path = std::move(found.path);
    if (creation == CREATE_NEW ? found.exists : !creates && !other) return notOpened(error);
    if (other) continue;
    *existed = false;
    // a name that exists but can't be opened is a dangling link: its target is created
    Descriptor file = systemOpen(path, access, found.exists ? O_CREAT : O_CREAT | O_EXCL);
    if (file.valid() || errno != EEXIST || creation == CREATE_NEW) return file;
  }
}

DWORD openError(const std::string &path, DWORD creation) {
  if (errno == ENOENT) return missingError(path);
  return errno == EEXIST && creation == CREATE_NEW ? ERROR_FILE_EXISTS : errorOf(errno);
}

std::optional<DWORD> refusal(int file, DWORD access, DWORD share, bool existed) {
  struct stat status;
  if (fstat(file, &status) != 0) return errorOf(errno);
  if (S_ISDIR(status.st_mode)) return ERROR_ACCESS_DENIED;
  if (existed && (access & GENERIC_WRITE) && isReadOnly(status)) return ERROR_ACCESS_DENIED;
  if (!S_ISREG(status.st_mode)) return std::nullopt;
  const bool writes = (access & GENERIC_WRITE) != 0;
  const bool claimed = share == kOfProfile ? claimForProfile(file, writes) : claim(file, access, share);
  return claimed ? std::nullopt : std::optional<DWORD>(ERROR_SHARING_VIOLATION);
}

bool cut(int file, off_t size) {
  struct stat status;
  if (fstat(file, &status) != 0) return failWithErrno();
  if (status.st_size > size && isMapped(file)) return failWith(ERROR_USER_MAPPED_FILE);
  if (S_ISREG(status.st_mode) && ftruncate(file, size) != 0) return failWithErrno();
  return true;
}

// Moves bytes in as many system calls as needed. Ends early at the end of the file or on a full disk.
template <typename Call> BOOL transfer(DWORD size, DWORD *count, Call call) {
  DWORD done = 0;
  while (done < size) {
    const ssize_t step = call(done, std::min<size_t>(size - done, kPiece));
    if (step < 0 && errno == EINTR) continue;
    if (step < 0 && done == 0) return failWithErrno();
    if (step <= 0) break;
    done += static_cast<DWORD>(step);
    if (static_cast<size_t>(step) < kPiece) break;
  }
  if (count) *count = done;
  return TRUE;
}

std::shared_ptr<File> usable(HANDLE handle, DWORD access, DWORD *count) {
  if (count) *count = 0;
  std::shared_ptr<File> file = handles().get<File>(handle);
  if (!file)
    SetLastError(ERROR_INVALID_HANDLE);
  else if (!file->allows(access))
    SetLastError(ERROR_ACCESS_DENIED);
  return file && file->allows(access) ? file : nullptr;
}

// Whether a name can be removed: 0, or the error.
DWORD removalError(const std::string &path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  return file.valid() && !isDeletable(file.get()) ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
}

bool copyContent(int from, int to) {
  std::vector<char> buffer(1u << 20);
  for (;;) {
    const ssize_t count = read(from, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return failWithErrno();
    if (count == 0) return true;
    for (ssize_t written = 0; written < count;) {
      const ssize_t step = write(to, buffer.data() + written, static_cast<size_t>(count - written));
      if (step < 0 && errno != EINTR) return failWithErrno();
      written += std::max<ssize_t>(step, 0);
    }
  }
}

// Copies a file with its time and attributes. A copy that fails on the way leaves no new file behind.
bool copyFile(std::string from, std::string to, DWORD creation) {
  bool existed;
  const Descriptor source =
      openFile(from, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, &existed);
  if (!source.valid()) return false;
  struct stat status;
  if (fstat(source.get(), &status) != 0) return failWithErrno();
  const Descriptor copy = openFile(to, GENERIC_WRITE, 0, creation, FILE_ATTRIBUTE_NORMAL, &existed);
  if (!copy.valid()) return false;
  if (isNullDevice(to)) return true;
  if (!copyContent(source.get(), copy.get())) {
    const DWORD error = GetLastError();
    if (!existed) unlink(to.c_str());
    return failWith(error);
  }
  const timespec times[2] = {status.st_atim, status.st_mtim};
  futimens(copy.get(), times);
  fchmod(copy.get(), status.st_mode & 0777);
  const DWORD kept = attributesOf(from, status) & kKeptAttributes;
  if (kept && lastPart(from)[0] != '.') setAttributes(to, attributesOf(from, status));
  return true;
}

// Renames a file or folder to a name that is free. sameFile: the new name differs only in case, and is the file itself.
bool rename(const std::string &from, const std::string &to, bool sameFile) {
  if (sameFile) return std::rename(from.c_str(), to.c_str()) == 0 || failWithErrno();
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  const bool knowsFlag = errno != EINVAL && errno != ENOSYS;
  if (!knowsFlag && std::rename(from.c_str(), to.c_str()) == 0) return true;
  return failWith(errno == ENOENT ? ERROR_PATH_NOT_FOUND : errorOf(errno));
}

// Whether a file's bytes are on the disk. A file that can't be opened counts as written.
bool syncPath(const std::string &path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  return !file.valid() || syncFile(file.get());
}

// Moves a file. After a power cut the whole file has one of the two names.
bool moveFile(std::string from, const std::string &name) {
  struct stat status, there;
  if (onPath(from, [&](const char *path) { return lstat(path, &status); }) != 0)
    return failWith(errno == ENOENT ? missingError(from) : errorOf(errno));
  const FoundPath found = findPath(name);
  const bool sameFile = found.exists && lstat(found.path.c_str(), &there) == 0 && there.st_dev == status.st_dev &&
                        there.st_ino == status.st_ino && differInCaseOnly(lastPart(from), lastPart(found.path));
  if (found.exists && !sameFile) return failWith(ERROR_ALREADY_EXISTS);
  if (const DWORD error = removalError(from)) return failWith(error);
  // folders keep their case on the disk, and the file gets the caller's
  const std::string_view last = lastPart(name);
  const std::string to = found.path.substr(0, found.path.size() - last.size()) + std::string(last);
  if (S_ISREG(status.st_mode) && !syncPath(from)) return failWithErrno();
  if (!rename(from, to, sameFile)) {
    if (GetLastError() != ERROR_NOT_SAME_DEVICE || !S_ISREG(status.st_mode)) return false;
    if (!copyFile(from, to, CREATE_NEW)) return false;
    if (!syncPath(to) || unlink(from.c_str()) != 0) return failWithErrno();
  }
  syncFolderOf(to);
  return true;
}

} // namespace

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept {
  if (this == &other) return *this;
  if (valid()) close(number_);
  number_ = other.release();
  return *this;
}

Descriptor::~Descriptor() {
  if (valid()) close(number_);
}

int Descriptor::release() {
  const int number = number_;
  number_ = -1;
  return number;
}

Descriptor openFile(std::string &path, DWORD access, DWORD share, DWORD creation, DWORD attributes, bool *existed) {
  *existed = false;
  if (isNullDevice(path)) return systemOpen(path, access, 0); // always there, without claims
  const bool cuts = creation == CREATE_ALWAYS || creation == TRUNCATE_EXISTING;
  const DWORD needed = cuts ? access | GENERIC_WRITE : access; // cutting a file writes to it, with any access
  Descriptor file = openOrCreate(path, needed, creation, existed);
  if (!file.valid()) {
    SetLastError(openError(path, creation));
    return file;
  }
  if (const std::optional<DWORD> error = refusal(file.get(), needed, share, *existed)) {
    SetLastError(*error);
    return Descriptor();
  }
  if (*existed && cuts && !cut(file.get(), 0)) return Descriptor();
  if (needed != access) narrowClaim(file.get(), access);
  if (!*existed && (attributes & (FILE_ATTRIBUTE_READONLY | kKeptAttributes))) setAttributes(path, attributes);
  return file;
}

DWORD missingError(const std::string &path) {
  const size_t slash = path.find_last_of('/', path.find_last_not_of('/'));
  if (slash == std::string::npos || slash == 0) return ERROR_FILE_NOT_FOUND;
  struct stat status;
  const bool folder = stat(path.substr(0, slash).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
  return folder ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

bool isFolderLink(const std::string &path) {
  const std::string own = path.substr(0, path.find_last_not_of('/') + 1); // lstat follows a link that ends with a slash
  struct stat status;
  return lstat(own.c_str(), &status) == 0 && S_ISLNK(status.st_mode) && stat(own.c_str(), &status) == 0 &&
         S_ISDIR(status.st_mode);
}

DWORD attributesOf(const std::string &path, const struct stat &status) {
  const std::string_view name = lastPart(path);
  char text[16] = "";
  const ssize_t length = getxattr(path.c_str(), kAttributeName, text, sizeof text - 1);
  DWORD attributes = length > 0 ? static_cast<DWORD>(std::strtoul(text, nullptr, 16)) & kKeptAttributes : 0;
  if (name.size() > 1 && name[0] == '.' && name != "..") attributes |= FILE_ATTRIBUTE_HIDDEN;
  if (S_ISDIR(status.st_mode))
    return attributes | FILE_ATTRIBUTE_DIRECTORY | (isFolderLink(path) ? FILE_ATTRIBUTE_REPARSE_POINT : 0);
  if (isReadOnly(status)) attributes |= FILE_ATTRIBUTE_READONLY;
  return attributes | FILE_ATTRIBUTE_ARCHIVE;
}

bool setAttributes(const std::string &path, DWORD attributes) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return failWith(errno == ENOENT ? missingError(path) : errorOf(errno));
  const DWORD kept = attributes & kKeptAttributes;
  if (kept) {
    char text[16];
    const int length = std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned>(kept));
    if (setxattr(path.c_str(), kAttributeName, text, static_cast<size_t>(length), 0) != 0) return failWithErrno();
  } else if (removexattr(path.c_str(), kAttributeName) != 0 && errno != ENODATA && errno != ENOTSUP) {
    return failWithErrno();
  }
  if (S_ISDIR(status.st_mode)) return true; // a folder has no read-only bit
  const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  if (readOnly == isReadOnly(status)) return true;
  const mode_t mode = readOnly ? status.st_mode & ~kAnyWrite : status.st_mode | S_IWUSR;
  return chmod(path.c_str(), mode & 07777) == 0 || failWithErrno();
}

} // namespace platform

using namespace platform;

HANDLE CreateFileA(LPCSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES, DWORD creation, DWORD attributes,
                   HANDLE) {
  return guarded<HANDLE>(INVALID_HANDLE_VALUE, [&]() -> HANDLE {
    const bool cutsUnwritten = creation == TRUNCATE_EXISTING && !(access & GENERIC_WRITE);
    if (creation < CREATE_NEW || creation > TRUNCATE_EXISTING || cutsUnwritten) {
      SetLastError(ERROR_INVALID_PARAMETER);
      return INVALID_HANDLE_VALUE;
    }
    std::string path = openablePath(given(name));
    if (path.empty()) return INVALID_HANDLE_VALUE;
    bool existed;
    Descriptor descriptor = openFile(path, access, share, creation, attributes, &existed);
    if (!descriptor.valid()) return INVALID_HANDLE_VALUE;
    const HANDLE handle = handles().open(std::make_shared<File>(std::move(descriptor), access));
    if (!handle) return INVALID_HANDLE_VALUE;
    const bool tells = creation == CREATE_ALWAYS || creation == OPEN_ALWAYS;
    SetLastError(existed && tells ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return handle;
  });
}

BOOL ReadFile(HANDLE handle, LPVOID bytes, DWORD size, LPDWORD count, LPOVERLAPPED) {
  const std::shared_ptr<File> file = usable(handle, GENERIC_READ, count);
  if (!file || (!bytes && size > 0)) return file ? failWith(ERROR_NOACCESS) : FALSE;
  return transfer(size, count, [&](DWORD done, size_t piece) {
    return read(file->descriptor(), static_cast<char *>(bytes) + done, piece);
  });
}

BOOL WriteFile(HANDLE handle, LPCVOID bytes, DWORD size, LPDWORD count, LPOVERLAPPED) {
  const std::shared_ptr<File> file = usable(handle, GENERIC_WRITE, count);
  if (!file || (!bytes && size > 0)) return file ? failWith(ERROR_INVALID_USER_BUFFER) : FALSE;
  return transfer(size, count, [&](DWORD done, size_t piece) {
    return write(file->descriptor(), static_cast<const char *>(bytes) + done, piece);
  });
}

DWORD GetFileSize(HANDLE handle, LPDWORD high) {
  const std::shared_ptr<File> file = handles().get<File>(handle);
  struct stat status;
  if (!file || fstat(file->descriptor(), &status) != 0) {
    SetLastError(ERROR_INVALID_HANDLE);
    return INVALID_FILE_SIZE;
  }
  const auto size = static_cast<uint64_t>(status.st_size);
  if (high) *high = static_cast<DWORD>(size >> 32);
  return static_cast<DWORD>(size);
}

BOOL SetEndOfFile(HANDLE handle) {
  const std::shared_ptr<File> file = usable(handle, GENERIC_WRITE, nullptr);
  return file && cut(file->descriptor(), lseek(file->descriptor(), 0, SEEK_CUR));
}

BOOL DeleteFileA(LPCSTR name) {
  return guarded(FALSE, [&] {
    std::string path = nativePath(given(name));
    if (path.empty()) return FALSE;
    struct stat status;
    if (onPath(path, [&](const char *each) { return lstat(each, &status); }) != 0)
      return failWith(errno == ENOENT ? missingError(path) : errorOf(errno));
    if (S_ISDIR(status.st_mode) || isFolderLink(path) || (S_ISREG(status.st_mode) && isReadOnly(status)))
      return failWith(ERROR_ACCESS_DENIED);
    if (const DWORD error = removalError(path)) return failWith(error);
    return unlink(path.c_str()) == 0 ? TRUE : failWithErrno();
  });
}

BOOL MoveFileA(LPCSTR from, LPCSTR to) {
  return guarded(FALSE, [&]() -> BOOL {
    const std::string source = nativePath(given(from));
    const std::string destination = source.empty() ? source : nativePath(given(to));
    return !destination.empty() && moveFile(source, destination);
  });
}

BOOL CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists) {
  return guarded(FALSE, [&]() -> BOOL {
    const std::string source = nativePath(given(from));
    const std::string copy = source.empty() ? source : openablePath(given(to));
    return !copy.empty() && copyFile(source, copy, failIfExists ? CREATE_NEW : CREATE_ALWAYS);
  });
}

DWORD GetFileAttributesA(LPCSTR name) {
  return guarded(INVALID_FILE_ATTRIBUTES, [&] {
    std::string path = openablePath(given(name));
    struct stat status;
    if (path.empty()) return INVALID_FILE_ATTRIBUTES;
    if (isNullDevice(path)) return DWORD{FILE_ATTRIBUTE_ARCHIVE};
    if (onPath(path, [&](const char *each) { return stat(each, &status); }) == 0) return attributesOf(path, status);
    SetLastError(errno == ENOENT ? missingError(path) : errorOf(errno));
    return INVALID_FILE_ATTRIBUTES;
  });
}

BOOL SetFileAttributesA(LPCSTR name, DWORD attributes) {
  return guarded(FALSE, [&]() -> BOOL {
    const std::string path = existingPath(given(name));
    return !path.empty() && (isNullDevice(path) || setAttributes(path, attributes));
  });
}
