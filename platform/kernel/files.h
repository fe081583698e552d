// Open files, for other parts of the layer.
#pragma once

#include "platform/kernel/handles.h"
#include "platform/kernel/paths.h"

#include <string>
#include <sys/stat.h>

namespace platform {

// A descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor &&other) noexcept : number_(other.release()) {}
  Descriptor &operator=(Descriptor &&other) noexcept;
  ~Descriptor();

  int get() const { return number_; }
  bool valid() const { return number_ >= 0; }
  int release();

 private:
  int number_;
};

class File : public Closable {
 public:
  File(Descriptor descriptor, DWORD access) : descriptor_(std::move(descriptor)), access_(access) {}
  int descriptor() const { return descriptor_.get(); }
  bool allows(DWORD access) const { return (access_ & access) == access; }

 private:
  Descriptor descriptor_;
  DWORD access_;
};

// In place of a share mode: a profile function opens the file.
constexpr DWORD kOfProfile = 0xFFFFFFFF;

// Opens a file as CreateFileA does.
// path: becomes the path found without regard to case. existed: gets whether the file was there before.
// Result: an invalid descriptor, with the last error set, on failure.
Descriptor openFile(std::string &path, DWORD access, DWORD share, DWORD creation, DWORD attributes, bool *existed);

// The error for a missing file: ERROR_PATH_NOT_FOUND if its folder is missing too, else ERROR_FILE_NOT_FOUND.
DWORD missingError(const std::string &path);

// Whether the last part of a path is a link to a folder.
bool isFolderLink(const std::string &path);

// The attributes of a file whose status is known, and their setting.
DWORD attributesOf(const std::string &path, const struct stat &status);
bool setAttributes(const std::string &path, DWORD attributes);

} // namespace platform
