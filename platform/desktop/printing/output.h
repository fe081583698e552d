// A file that gets its name when it is whole. Until then it lies beside its place under another name.
#pragma once

#include "platform/kernel/files.h"

namespace platform {

class OutputFile {
 public:
  OutputFile() = default;
  // Takes the file away, unless it was kept.
  ~OutputFile();
  OutputFile(const OutputFile &) = delete;
  OutputFile &operator=(const OutputFile &) = delete;

  // Makes the file, empty.
  // path: its name at last. replaces: whether it takes the place of a file that has that name; else it gets a number.
  // mode: who may read it, as open takes it.
  // Result: an invalid descriptor, with errno, where that is impossible.
  Descriptor begin(const std::string &path, bool replaces, mode_t mode);
  // Result: an errno, 0 for none.
  int keep();
  // What it is named now.
  const std::string &current() const { return current_; }

 private:
  int keepNumbered();

  std::string path_, current_;
  bool replaces_ = false;
};

} // namespace platform
