// An opener's accesses and what it denies others are marks: read locks on single bytes far behind any file's end. Their
// owner is the open description, so they end with it, even when the process is killed. An opener first sets its marks
// and then looks for opposing ones. So of two openers that oppose each other at most one succeeds.

#include "platform/kernel/sharing.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <initializer_list>
#include <random>
#include <thread>

namespace platform {

namespace {

enum Mark : off_t {
  kReads,
  kWrites,
  kDeniesRead,
  kDeniesWrite,
  kDeniesDelete,
  kMapped,
  kProfileReads,
  kProfileWrites,
  kNone
};

constexpr off_t kFirstMark = 0x7FFFFFFFFFFFF000;

struct flock rangeOf(Mark mark, short type) {
  struct flock range {};
  range.l_type = type;
  range.l_whence = SEEK_SET;
  range.l_start = kFirstMark + mark;
  range.l_len = 1;
  return range;
}

// A description without read access takes a write lock instead, which only one opener can have. On a file system
// without locks every mark succeeds.
bool set(int file, Mark mark) {
  struct flock range = rangeOf(mark, F_RDLCK);
  if (fcntl(file, F_OFD_SETLK, &range) == 0) return true;
  if (errno == EBADF) {
    range = rangeOf(mark, F_WRLCK);
    if (fcntl(file, F_OFD_SETLK, &range) == 0) return true;
  }
  return errno != EAGAIN && errno != EACCES;
}

// Whether another description has a mark in a range.
bool isSetElsewhere(int file, Mark first, Mark last) {
  struct flock range = rangeOf(first, F_WRLCK);
  range.l_len = last - first + 1;
  return fcntl(file, F_OFD_GETLK, &range) == 0 && range.l_type != F_UNLCK;
}

bool isSetElsewhere(int file, Mark mark) { return mark != kNone && isSetElsewhere(file, mark, mark); }

void clear(int file, Mark first, Mark last) {
  struct flock range = rangeOf(first, F_UNLCK);
  range.l_len = last - first + 1;
  fcntl(file, F_OFD_SETLK, &range);
}

struct Rule {
  bool applies;
  Mark own, opposing;
};

template <size_t count> bool agreeOnce(int file, const Rule (&rules)[count]) {
  bool agreed = true;
  for (const Rule &rule : rules) agreed = agreed && (!rule.applies || set(file, rule.own));
  for (const Rule &rule : rules) agreed = agreed && (!rule.applies || !isSetElsewhere(file, rule.opposing));
  if (!agreed) clear(file, kReads, kProfileWrites);
  return agreed;
}

template <size_t count> bool agree(int file, const Rule (&rules)[count]) {
  if (agreeOnce(file, rules)) return true;
  // Two opposing openers may have met between setting and looking, and both have given way.
  std::minstd_rand random(std::random_device{}());
  std::this_thread::sleep_for(std::chrono::microseconds(20 + random() % 200));
  return agreeOnce(file, rules);
}

} // namespace

bool claim(int file, DWORD access, DWORD share) {
  if (!(access & (GENERIC_READ | GENERIC_WRITE))) return true; // who only asks about a file opposes nobody
  const bool deniesRead = !(share & FILE_SHARE_READ);
  const bool deniesWrite = !(share & FILE_SHARE_WRITE);
  const Rule rules[] = {
      {!(share & FILE_SHARE_DELETE), kDeniesDelete, kNone},
      {(access & GENERIC_READ) != 0, kReads, kDeniesRead},
      {(access & GENERIC_WRITE) != 0, kWrites, kDeniesWrite},
      {deniesRead, kDeniesRead, kReads},
      {deniesWrite, kDeniesWrite, kWrites},
      {deniesRead, kDeniesRead, kProfileReads},
      {deniesWrite, kDeniesWrite, kProfileWrites},
  };
  return agree(file, rules);
}

bool claimForProfile(int file, bool writes) {
  const Rule rules[] = {{true, kProfileReads, kDeniesRead}, {writes, kProfileWrites, kDeniesWrite}};
  return agree(file, rules);
}

bool isOpenElsewhere(int file) { return isSetElsewhere(file, kReads, kMapped); }

void narrowClaim(int file, DWORD access) {
  if (!(access & (GENERIC_READ | GENERIC_WRITE)))
    clear(file, kReads, kDeniesDelete);
  else if (!(access & GENERIC_WRITE))
    clear(file, kWrites, kWrites);
}

bool isReadable(int file) { return !isSetElsewhere(file, kDeniesRead); }

bool isDeletable(int file) { return !isSetElsewhere(file, kDeniesDelete); }

void markMapped(int file) { set(file, kMapped); }

bool isMapped(int file) { return isSetElsewhere(file, kMapped); }

} // namespace platform
