// The profile functions. A profile is read once, and kept for as long as the file on the disk is the one that was read.
// A write usually makes a complete new file, which then takes the old file's name.

#include "platform/kernel/durable.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/files.h"
#include "platform/kernel/paths.h"
#include "platform/kernel/profile.h"
#include "platform/kernel/sharing.h"

#include "platform/kernel/codepage.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <sys/file.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr size_t kKept = 16;             // profiles at a time
constexpr int64_t kSettled = 50'000'000; // nanoseconds; a later change is certain to have another time
constexpr off_t kLargest = 1 << 26;      // bytes; a larger file counts as no profile

int64_t nanoseconds(const timespec &time) { return time.tv_sec * INT64_C(1'000'000'000) + time.tv_nsec; }

// Identifies one state of a file.
struct Stamp {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  int64_t changed = 0;

  explicit Stamp(const struct stat &status)
      : device(status.st_dev), inode(status.st_ino), size(status.st_size), changed(nanoseconds(status.st_mtim)) {}
  bool operator==(const Stamp &) const = default;
};

struct Kept {
  Stamp stamp;
  bool settled; // false: the file may still change without a new stamp
  Profile profile;
  Descriptor file; // the file without a claim, to ask whether others forbid reading it
};

std::mutex mutex; // of everything below; calls on profiles take turns
std::unordered_map<std::string, Kept> &kept() {
  static std::unordered_map<std::string, Kept> profiles;
  return profiles;
}

// The path of a profile. A profile named without a folder lies in the user's folder for settings.
std::string profilePath(LPCSTR name) {
  const std::string_view text = name ? name : "";
  std::string path = openablePath(text);
  if (path.empty()) return path;
  if (lastPartAt(text) == 0 && !isNullDevice(path)) {
    const char *settings = std::getenv("XDG_CONFIG_HOME");
    const char *home = std::getenv("HOME");
    std::string folder = settings && *settings ? settings : std::string(home ? home : "") + "/.config";
    mkdir(folder.c_str(), 0700);
    path = folder + '/' + path;
  }
  const auto realPath = [](const std::string &path) {
    const std::unique_ptr<char, void (*)(void *)> real(realpath(path.c_str(), nullptr), std::free);
    return std::string(real ? real.get() : ""); // a link stays as it is, and its target is replaced
  };
  std::string real = realPath(path);
  if (!real.empty()) return real;
  path = findPath(path).path;
  real = realPath(path);
  return real.empty() ? path : real;
}

bool readAll(int file, std::string &content) {
  struct stat status {};
  if (fstat(file, &status) != 0 || status.st_size > kLargest) return false;
  content.resize(static_cast<size_t>(status.st_size));
  size_t done = 0;
  while (done < content.size()) {
    const ssize_t step = pread(file, content.data() + done, content.size() - done, static_cast<off_t>(done));
    if (step < 0 && errno == EINTR) continue;
    if (step <= 0) break;
    done += static_cast<size_t>(step);
  }
  content.resize(done);
  return true;
}

Kept *keptProfile(const std::string &path, const struct stat &status) {
  const auto found = kept().find(path);
  if (found == kept().end() || !found->second.settled || found->second.stamp != Stamp(status)) return nullptr;
  return &found->second;
}

// The profile of an open file; null if it can't be read.
Kept *load(const std::string &path, int file) {
  struct stat status {};
  std::string content;
  timespec now;
  if (fstat(file, &status) != 0) return nullptr;
  if (Kept *known = keptProfile(path, status)) return known;
  if (!readAll(file, content)) return nullptr;
  clock_gettime(CLOCK_REALTIME, &now);
  const bool settled = nanoseconds(now) - nanoseconds(status.st_mtim) > kSettled;
  if (kept().size() >= kKept) kept().clear();
  Kept fresh{Stamp(status), settled, Profile(content), Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC))};
  return &kept().insert_or_assign(path, std::move(fresh)).first->second;
}

// The profile for reading; null if the file doesn't exist or another opener forbids reading it.
const Profile *profileForReading(LPCSTR name) {
  std::string path = profilePath(name);
  if (path.empty()) return nullptr;
  struct stat status {};
  if (stat(path.c_str(), &status) == 0)
    if (const Kept *known = keptProfile(path, status)) return isReadable(known->file.get()) ? &known->profile : nullptr;
  bool existed;
  const Descriptor file = openFile(path, GENERIC_READ, kOfProfile, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, &existed);
  if (file.valid()) flock(file.get(), LOCK_SH); // waits for a writer that writes in place
  const Kept *read = file.valid() ? load(path, file.get()) : nullptr;
  return read ? &read->profile : nullptr;
}

// Opens a profile for a change, and keeps other writers waiting until the caller closes it.
Descriptor openForWriting(std::string &path) {
  for (;;) {
    bool existed;
    Descriptor file =
        openFile(path, GENERIC_READ | GENERIC_WRITE, kOfProfile, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, &existed);
    struct stat opened {};
    struct stat named {};
    if (!file.valid() || fstat(file.get(), &opened) != 0) return file;
    if (!S_ISREG(opened.st_mode)) return failWith(ERROR_ACCESS_DENIED), Descriptor();
    if (flock(file.get(), LOCK_EX) != 0) return file;
    if (stat(path.c_str(), &named) != 0) continue;
    if (opened.st_dev == named.st_dev && opened.st_ino == named.st_ino) return file;
  }
}

bool writeAll(int file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t step = write(file, content.data(), content.size());
    if (step < 0 && errno != EINTR) return false;
    content.remove_prefix(static_cast<size_t>(std::max<ssize_t>(step, 0)));
  }
  return true;
}

// Makes a file beside the old one, with the same owner and rights. Its name is always the same, so a file that a dead
// process left is removed first.
// Result: an invalid descriptor if the file can't be made.
Descriptor makeBeside(const std::string &fresh, const struct stat &old) {
  constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  Descriptor file(open(fresh.c_str(), flags, 0600));
  if (!file.valid() && errno == EEXIST && unlink(fresh.c_str()) == 0)
    file = Descriptor(open(fresh.c_str(), flags, 0600));
  if (!file.valid()) return file;
  struct stat made;
  const bool same =
      fstat(file.get(), &made) == 0 &&
      ((made.st_uid == old.st_uid && made.st_gid == old.st_gid) || fchown(file.get(), old.st_uid, old.st_gid) == 0) &&
      fchmod(file.get(), old.st_mode & 0777) == 0;
  if (same) return file;
  unlink(fresh.c_str());
  return Descriptor();
}

// Writes a file in place. Room on the disk is reserved first, so that a full disk leaves the file as it is.
bool overwrite(int file, const std::string &content, const struct stat &status) {
  const auto size = static_cast<off_t>(content.size());
  if (size < status.st_size && isMapped(file)) return failWith(ERROR_USER_MAPPED_FILE);
  const bool knowsRoom = size <= status.st_size || fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size) == 0;
  if (!knowsRoom && errno != EOPNOTSUPP && errno != ENOSYS) return failWithErrno();
  const bool whole = lseek(file, 0, SEEK_SET) == 0 && writeAll(file, content) && ftruncate(file, size) == 0;
  return (whole && syncFile(file)) || failWithErrno();
}

// Stores a profile. A new file takes the old one's name after its bytes are on the disk. The old file is written in
// place if others have it open, if it has several hard links, or if no file can be made beside it.
// old: the file, open and locked. replaced: gets whether a new file was made. status: gets that of the stored file.
bool store(const std::string &path, int old, const std::string &content, bool &replaced, struct stat &status) {
  if (fstat(old, &status) != 0) return failWithErrno();
  const std::string_view name = lastPart(path);
  const std::string fresh = path.substr(0, path.size() - name.size()) + '.' + std::string(name) + ".new";
  const bool shared = status.st_nlink > 1 || isOpenElsewhere(old);
  const Descriptor file = shared ? Descriptor() : makeBeside(fresh, status);
  replaced = file.valid();
  if (!replaced) return overwrite(old, content, status) && (fstat(old, &status) == 0 || failWithErrno());
  const bool whole = writeAll(file.get(), content) && syncFile(file.get()) && fstat(file.get(), &status) == 0 &&
                     rename(fresh.c_str(), path.c_str()) == 0;
  if (whole) return true; // after a power cut the old or the new file is there
  failWithErrno();
  unlink(fresh.c_str());
  return false;
}

void edit(Profile &profile, LPCSTR section, LPCSTR key, LPCSTR text) {
  if (!key)
    profile.removeSection(section);
  else if (!text)
    profile.removeKey(section, key);
  else
    profile.set(section, key, text);
}

bool change(LPCSTR name, LPCSTR section, LPCSTR key, LPCSTR text) {
  std::string path = profilePath(name);
  if (path.empty()) return false;
  if (isNullDevice(path)) return true;
  const Descriptor old = openForWriting(path);
  if (!old.valid()) return false;
  Kept *known = load(path, old.get());
  if (!known) return failWith(ERROR_INVALID_PARAMETER);
  struct stat status {};
  known->settled = false; // until the file holds the changed profile
  edit(known->profile, section, key, text);
  const std::string content = known->profile.content();
  bool replaced = false;
  if (!store(path, old.get(), content, replaced, status)) return false;
  known->profile.settle(content);
  known->stamp = Stamp(status);
  known->settled = replaced; // nobody else knows a new file yet
  known->file = Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  return true;
}

DWORD handOut(std::string_view value, LPSTR text, DWORD size) {
  return static_cast<DWORD>(copyWhole(value, text, size));
}

// Copies names with a NUL behind each and another one at the end. Names that don't fit are cut off.
DWORD handOut(const std::vector<std::string> &names, LPSTR text, DWORD size) {
  std::string all;
  for (const std::string &name : names) all += name + '\0';
  if (size < 2) return handOut(std::string_view(), text, size);
  const size_t length = std::min<size_t>(all.size(), size - 1);
  std::memcpy(text, all.data(), length);
  text[length] = '\0';
  if (length == all.size()) return static_cast<DWORD>(length);
  text[length - 1] = '\0';
  return size - 2;
}

// A default value loses blanks at its end and one pair of quotes.
std::string_view defaultValue(LPCSTR text) {
  const std::string_view value = text ? text : "";
  return unquoted(value.substr(0, value.find_last_not_of(' ') + 1));
}

// Reads a number up to the first character that doesn't belong to it: a sign, then decimal digits, or 0x and
// hexadecimal ones. The number wraps at 32 bits.
UINT numberOf(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const bool hex = text.starts_with("0x") || text.starts_with("0X");
  if (hex) text.remove_prefix(2);
  UINT sum = 0;
  for (const char c : text) {
    UINT digit = static_cast<UINT>(static_cast<unsigned char>(c)) - '0';
    if (digit > 9) digit = hex ? (static_cast<UINT>(static_cast<unsigned char>(c)) | 0x20) - 'a' + 10 : 16;
    if (digit > (hex ? 15 : 9)) break;
    sum = sum * (hex ? 16 : 10) + digit;
  }
  return negative ? 0 - sum : sum;
}

} // namespace

} // namespace platform

using namespace platform;

DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR defaultText, LPSTR text, DWORD size, LPCSTR name) {
  return guarded<DWORD>(0, [&]() -> DWORD {
    if (!text || size == 0) return 0;
    const std::lock_guard lock(mutex);
    SetLastError(ERROR_SUCCESS);
    const Profile *profile = profileForReading(name);
    if (profile && !section) return handOut(profile->sectionNames(), text, size);
    if (profile && !key)
      if (const auto names = profile->keyNames(section)) return handOut(*names, text, size);
    if (profile && section && key)
      if (const auto value = profile->value(section, key)) return handOut(std::string_view(*value), text, size);
    return handOut(defaultValue(defaultText), text, size);
  });
}

UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT defaultValue, LPCSTR name) {
  return guarded(static_cast<UINT>(defaultValue), [&] {
    const std::lock_guard lock(mutex);
    const Profile *profile = section && key ? profileForReading(name) : nullptr;
    const std::optional<std::string> value = profile ? profile->value(section, key) : std::nullopt;
    return value && !value->empty() ? numberOf(*value) : static_cast<UINT>(defaultValue);
  });
}

BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR text, LPCSTR name) {
  return guarded(FALSE, [&] {
    if (!section) return failWith(key ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS);
    const std::lock_guard lock(mutex);
    SetLastError(ERROR_SUCCESS);
    return change(name, section, key, text) ? TRUE : FALSE;
  });
}
