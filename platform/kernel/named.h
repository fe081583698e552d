// Memory that processes share under a name, for as long as one of them holds it.
#pragma once

#include "platform/kernel/files.h"

#include <cstddef>
#include <string>

namespace platform {

class SharedBlock {
 public:
  // Opens the block of a kind and a name, or makes it, zeroed. A block of dead processes is made again.
  // start gets a new block before anybody else can open it.
  // made: gets whether the block is new.
  // Result: whether the block is open; if not, the last error is set.
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
  // Leaves the block mapped for ever, for a thread that may still use it.
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
