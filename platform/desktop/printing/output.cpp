// Files of documents.

#include "platform/desktop/printing/output.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace platform {

namespace {

constexpr int kNumbers = 10000; // that are tried for one name

std::string numbered(const std::string &path, int number) {
  if (number == 1) return path;
  const std::filesystem::path name(path);
  return (name.parent_path() / name.stem()).string() + " (" + std::to_string(number) + ")" + name.extension().string();
}

} // namespace

OutputFile::~OutputFile() {
  if (!current_.empty()) unlink(current_.c_str());
}

Descriptor OutputFile::begin(const std::string &path, bool replaces, mode_t mode) {
  static std::atomic<unsigned> serial;
  std::error_code none;
  const std::filesystem::path whole = std::filesystem::absolute(path, none); // the current folder may change
  path_ = whole.string();
  replaces_ = replaces;
  if (replaces && std::filesystem::is_directory(whole, none)) {
    errno = EISDIR;
    return Descriptor();
  }
  const std::string hidden = ".print-" + std::to_string(getpid()) + "-" + std::to_string(++serial);
  std::string beside = (whole.parent_path() / hidden).string();
  Descriptor file(open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
  if (file.valid()) current_ = std::move(beside);
  return file;
}

// A second name is given only where there is none; some file systems can't.
int OutputFile::keepNumbered() {
  for (int number = 1; number <= kNumbers; ++number) {
    const std::string path = numbered(path_, number);
    if (link(current_.c_str(), path.c_str()) == 0) return 0;
    if (errno == EEXIST) continue;
    if (errno != EPERM && errno != ENOTSUP) return errno;
    if (access(path.c_str(), F_OK) == 0) continue;
    if (rename(current_.c_str(), path.c_str()) != 0) return errno;
    current_.clear();
    return 0;
  }
  return EEXIST;
}

int OutputFile::keep() {
  if (!replaces_) return keepNumbered();
  if (rename(current_.c_str(), path_.c_str()) != 0) return errno;
  current_.clear();
  return 0;
}

} // namespace platform
