// A block is a small file in memory. Each process that holds the block has a shared lock on the file. The system drops
// the lock when the process ends, even if it is killed. So a process that gets the exclusive lock is alone. A second
// lock, on the file's first byte, lets opening and closing processes take turns.
//
// The files lie in a folder of the user that is closed to all others. So nobody else can add a file, read one, or cut
// one that a process has mapped. A killed process leaves its files behind: the next process that uses a name removes
// them.

#include "platform/kernel/named.h"

#include "platform/kernel/errors.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr size_t kNameRoom = MAX_PATH;

// A block with the name it was made for. Two names may have the same file name by accident.
struct Content {
  alignas(64) unsigned char object[SharedBlock::kSize];
  char kind[8];
  char name[kNameRoom];
};

// FNV-1a, 64 bits (Fowler, Noll, Vo).
uint64_t hashOf(const std::string &text, uint64_t start) {
  for (const char c : text) start = (start ^ static_cast<unsigned char>(c)) * UINT64_C(0x100000001B3);
  return start;
}

bool isOwnFolder(const std::string &path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
         (status.st_mode & 0077) == 0;
}

// The user's folder for files in memory, made if it is missing. Empty, with the last error set, if none of the possible
// folders belongs to the user.
std::string ownFolder() {
  const std::string user = "/winapi-" + std::to_string(geteuid());
  const char *session = std::getenv("XDG_RUNTIME_DIR");
  const bool inSession = session && isOwnFolder(session);
  std::string folders[] = {inSession ? session + user : "", "/dev/shm" + user, "/tmp" + user};
  for (std::string &folder : folders)
    if ((mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) && isOwnFolder(folder)) return std::move(folder);
  SetLastError(ERROR_ACCESS_DENIED);
  return {};
}

std::string fileNameOf(const std::string &name) {
  char text[40];
  std::snprintf(text, sizeof text, "/%016llx%016llx",
                static_cast<unsigned long long>(hashOf(name, UINT64_C(0xCBF29CE484222325))),
                static_cast<unsigned long long>(hashOf(name, UINT64_C(0x84222325CBF29CE4))));
  return text;
}

bool setTurn(int file, short type, int command = F_OFD_SETLKW) {
  struct flock turn {};
  turn.l_type = type;
  turn.l_whence = SEEK_SET;
  turn.l_len = 1;
  while (fcntl(file, command, &turn) != 0)
    if (errno != EINTR) return false;
  return true;
}

bool isStillNamed(int file, const std::string &path) {
  struct stat opened;
  struct stat named;
  return fstat(file, &opened) == 0 && stat(path.c_str(), &named) == 0 && opened.st_ino == named.st_ino &&
         opened.st_dev == named.st_dev;
}

// Removes a file that nobody has open. A file whose turn is taken is in use.
void clearFile(const std::string &path) {
  const Descriptor file(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  const bool free = file.valid() && setTurn(file.get(), F_WRLCK, F_OFD_SETLK) &&
                    flock(file.get(), LOCK_EX | LOCK_NB) == 0 && isStillNamed(file.get(), path);
  if (free) unlink(path.c_str());
}

void clearFolder(const std::string &folder) {
  const std::unique_ptr<DIR, int (*)(DIR *)> stream(opendir(folder.c_str()), closedir);
  while (const dirent *entry = stream ? readdir(stream.get()) : nullptr)
    if (entry->d_name[0] != '.') clearFile(folder + '/' + entry->d_name);
}

// The path of a block's file; empty, with the last error set, if there is no folder for it.
std::string pathOf(const std::string &name) {
  static std::once_flag cleared;
  std::string folder = ownFolder();
  if (folder.empty()) return folder;
  std::call_once(cleared, clearFolder, folder);
  return folder + fileNameOf(name);
}

// Whether a file is a block as this process would make it.
bool isBlock(int file) {
  struct stat status;
  return fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
         status.st_size == sizeof(Content);
}

// The block's file, with the turn taken.
Descriptor openInTurn(const std::string &path, bool create) {
  for (;;) {
    Descriptor file(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | (create ? O_CREAT : 0), 0600));
    if (!file.valid()) {
      failWithErrno();
      return file;
    }
    setTurn(file.get(), F_WRLCK);
    if (isStillNamed(file.get(), path)) return file;
  }
}

} // namespace

bool SharedBlock::acquire(const char *kind, const std::string &name, bool create, bool &made) {
  if (name.size() >= kNameRoom) return failWith(ERROR_FILENAME_EXCED_RANGE);
  path_ = pathOf(name);
  if (path_.empty()) return false;
  Descriptor file = openInTurn(path_, create);
  if (!file.valid()) return false;
  made = flock(file.get(), LOCK_EX | LOCK_NB) == 0; // no other process holds the block
  if (made && !create) {
    unlink(path_.c_str());
    return failWith(ERROR_FILE_NOT_FOUND);
  }
  if (made && (ftruncate(file.get(), 0) != 0 || ftruncate(file.get(), sizeof(Content)) != 0)) return failWithErrno();
  if (!isBlock(file.get())) return failWith(ERROR_INVALID_HANDLE);
  void *memory = mmap(nullptr, sizeof(Content), PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
  if (memory == MAP_FAILED) return failWithErrno();
  auto *content = static_cast<Content *>(memory);
  if (made) {
    std::strncpy(content->kind, kind, sizeof content->kind - 1);
    std::memcpy(content->name, name.c_str(), name.size() + 1);
  }
  if (std::strncmp(content->kind, kind, sizeof content->kind) != 0 ||
      std::strncmp(content->name, name.c_str(), kNameRoom) != 0) {
    munmap(memory, sizeof(Content));
    return failWith(ERROR_INVALID_HANDLE);
  }
  file_ = std::move(file);
  memory_ = memory;
  return true;
}

void SharedBlock::openForAll() {
  flock(file_.get(), LOCK_SH);
  setTurn(file_.get(), F_UNLCK);
}

SharedBlock::~SharedBlock() {
  if (!file_.valid()) return;
  setTurn(file_.get(), F_WRLCK);
  if (flock(file_.get(), LOCK_EX | LOCK_NB) == 0)
    unlink(path_.c_str());
  else
    flock(file_.get(), LOCK_UN);
  setTurn(file_.get(), F_UNLCK); // an abandoned mapping keeps the description open, and its locks too
  if (memory_) munmap(memory_, sizeof(Content));
}

} // namespace platform
