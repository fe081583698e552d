// Memory that processes share under a name, for as long as one of them holds it.
#pragma once

#include "platform/kernel/files.h"

#include <cstddef>
#include <string>

namespace platform {

class SharedBlock {
 public:
  // Opens the block of a kind and a name, or makes it, zeroed. made tells which. A block that only dead processes left is
  // made anew. The fresh block is handed to start before anybody else can open it.
  // Result: whether there is one; if not, the last error is set.
  template <typename Start> bool open(const char *kind, const std::string &name, bool create, bool &made, Start start) {
    const bool opened = acquire(kind, name, create, made);
    if (opened && made) start(memory_);
    if (opened) openForAll();
    return opened;
  }
  SharedBlock() = default;
  ~SharedBlock();
  SharedBlock(const SharedBlock &) = delete;
  SharedBlock &operator=(const SharedBlock &) = delete;

  void *memory() const { return memory_; }
  // Leaves the memory in place for ever, for a thread that may still look at it.
  void abandon() { memory_ = nullptr; }

  static constexpr size_t kSize = 128; // bytes for the object

 private:
  bool acquire(const char *kind, const std::string &name, bool create, bool &made);
  void openForAll();

  std::string path_;
  Descriptor file_;
  void *memory_ = nullptr;
};

} // namespace platform
