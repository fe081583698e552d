// A file in memory, under a name that the library can open.
#pragma once

#include "fuzz.h"

#include <cstdint>
#include <span>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

using Bytes = std::span<const uint8_t>;

class File {
 public:
  // So few files may be open that one left open in each run is noticed.
  File() : descriptor_(memfd_create("input", MFD_CLOEXEC)), name_("/proc/self/fd/" + std::to_string(descriptor_)) {
    const rlimit limit{64, 64};
    REQUIRE(descriptor_ >= 0 && setrlimit(RLIMIT_NOFILE, &limit) == 0);
  }
  const char *name() const { return name_.c_str(); }
  void fill(Bytes bytes) const {
    REQUIRE(ftruncate(descriptor_, 0) == 0);
    REQUIRE(pwrite(descriptor_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
  }
  std::string content() const {
    std::string bytes(static_cast<size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
    REQUIRE(pread(descriptor_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    return bytes;
  }

 private:
  int descriptor_;
  std::string name_;
};

// A number of the input, its lowest byte first.
inline uint32_t number(Bytes bytes, size_t at, size_t width) {
  uint32_t value = 0;
  for (size_t i = width; i-- > 0;) value = value << 8 | bytes[at + i];
  return value;
}
