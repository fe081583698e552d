// A block is a small file in memory. Each process that holds it has a shared lock on the file, which goes with the process
// however it ends: who can get the file for himself knows that nobody else is there. A second lock, on the file's first
// byte, lets openers and closers take turns.

#include "platform/kernel/named.h"

#include "platform/kernel/errors.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr size_t kNameRoom = MAX_PATH;

// The block and the name it was made for, which a shared file name might belong to by accident.
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

std::string pathOf(const std::string &name) {
  char path[96];
  const char *folder = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  std::snprintf(path, sizeof path, "%s/winapi-%u-%016llx%016llx", folder, static_cast<unsigned>(geteuid()),
                static_cast<unsigned long long>(hashOf(name, UINT64_C(0xCBF29CE484222325))),
                static_cast<unsigned long long>(hashOf(name, UINT64_C(0x84222325CBF29CE4))));
  return path;
}

void setTurn(int file, short type) {
  struct flock turn {};
  turn.l_type = type;
  turn.l_whence = SEEK_SET;
  turn.l_len = 1;
  while (fcntl(file, F_OFD_SETLKW, &turn) != 0 && errno == EINTR) {}
}

bool isStillNamed(int file, const std::string &path) {
  struct stat opened;
  struct stat named;
  return fstat(file, &opened) == 0 && stat(path.c_str(), &named) == 0 && opened.st_ino == named.st_ino &&
         opened.st_dev == named.st_dev;
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
  Descriptor file = openInTurn(path_, create);
  if (!file.valid()) return false;
  made = flock(file.get(), LOCK_EX | LOCK_NB) == 0; // nobody is there
  if (made && !create) {
    unlink(path_.c_str());
    return failWith(ERROR_FILE_NOT_FOUND);
  }
  if (made && (ftruncate(file.get(), 0) != 0 || ftruncate(file.get(), sizeof(Content)) != 0)) return failWithErrno();
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
  setTurn(file_.get(), F_UNLCK); // memory that stays keeps the file open, and its locks with it
  if (memory_) munmap(memory_, sizeof(Content));
}

} // namespace platform
