// Views of files. A mapping has its own open description, marked as mapped, which its views keep open. The mark keeps
// the file from being cut under a view: reading behind the new end would kill the process.

#include "platform/kernel/mapping.h"

#include "platform/kernel/errors.h"
#include "platform/kernel/files.h"
#include "platform/kernel/sharing.h"

#include <algorithm>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <sys/mman.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr uint64_t kGranularity = 0x10000; // an offset of a view is a multiple of this

struct Mapping : Closable {
  Descriptor file;
  bool writable;
  uint64_t size;
};

struct View {
  size_t size;
  std::shared_ptr<Mapping> mapping;
};

// All views of the process, by address.
class Views {
 public:
  void add(void *address, View view) {
    const std::lock_guard lock(mutex_);
    views_.emplace(static_cast<char *>(address), std::move(view));
  }

  bool remove(const void *address) {
    const std::lock_guard lock(mutex_);
    const auto found = views_.find(static_cast<const char *>(address));
    if (found == views_.end()) return false;
    munmap(const_cast<void *>(address), found->second.size);
    views_.erase(found);
    return true;
  }

  // The bytes from an address to the end of its view; 0 if the address is in no view.
  size_t rest(const void *address) {
    const std::lock_guard lock(mutex_);
    const char *at = static_cast<const char *>(address);
    auto behind = views_.upper_bound(at);
    if (behind == views_.begin()) return 0;
    const auto &[start, view] = *--behind;
    return at < start + view.size ? static_cast<size_t>(start + view.size - at) : 0;
  }

  size_t count() {
    const std::lock_guard lock(mutex_);
    return views_.size();
  }

 private:
  std::mutex mutex_;
  std::map<const char *, View, std::less<>> views_;
};

Views &views() {
  static auto *all = new Views; // never destroyed: views may outlive static objects
  return *all;
}

HANDLE makeMapping(const File &file, bool writable, uint64_t size) {
  const std::string same = "/proc/self/fd/" + std::to_string(file.descriptor());
  auto mapping = std::make_shared<Mapping>();
  mapping->file = Descriptor(open(same.c_str(), (writable ? O_RDWR : O_RDONLY) | O_CLOEXEC));
  struct stat status;
  if (!mapping->file.valid() || fstat(mapping->file.get(), &status) != 0) {
    failWithErrno();
    return nullptr;
  }
  const auto fileSize = static_cast<uint64_t>(status.st_size);
  if (size == 0) size = fileSize;
  if (size == 0) {
    SetLastError(ERROR_FILE_INVALID);
    return nullptr;
  }
  if (size > fileSize) { // the mapping extends the file
    if (!writable) {
      SetLastError(ERROR_NOT_ENOUGH_MEMORY);
      return nullptr;
    }
    if (ftruncate(mapping->file.get(), static_cast<off_t>(size)) != 0) {
      failWithErrno();
      return nullptr;
    }
  }
  markMapped(mapping->file.get());
  mapping->writable = writable;
  mapping->size = size;
  return handles().open(std::move(mapping));
}

} // namespace

size_t countViews() { return views().count(); }

} // namespace platform

using namespace platform;

HANDLE CreateFileMappingA(HANDLE handle, LPSECURITY_ATTRIBUTES, DWORD protection, DWORD sizeHigh, DWORD sizeLow,
                          LPCSTR name) {
  return guarded<HANDLE>(nullptr, [&]() -> HANDLE {
    const bool writable = (protection & PAGE_READWRITE) != 0;
    const DWORD pages = protection & ~SEC_COMMIT;
    if (pages != PAGE_READONLY && pages != PAGE_READWRITE) {
      SetLastError(ERROR_INVALID_PARAMETER);
      return nullptr;
    }
    const std::shared_ptr<File> file = handles().get<File>(handle);
    if (!file || name) { // memory without a file and named memory aren't supported
      SetLastError(name ? ERROR_NOT_SUPPORTED : ERROR_INVALID_HANDLE);
      return nullptr;
    }
    if (!file->allows(writable ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ)) {
      SetLastError(ERROR_ACCESS_DENIED);
      return nullptr;
    }
    return makeMapping(*file, writable, static_cast<uint64_t>(sizeHigh) << 32 | sizeLow);
  });
}

LPVOID MapViewOfFile(HANDLE handle, DWORD access, DWORD offsetHigh, DWORD offsetLow, SIZE_T size) {
  return guarded<LPVOID>(nullptr, [&]() -> LPVOID {
    const std::shared_ptr<Mapping> mapping = handles().get<Mapping>(handle);
    const uint64_t offset = static_cast<uint64_t>(offsetHigh) << 32 | offsetLow;
    const bool writes = (access & FILE_MAP_WRITE) != 0;
    DWORD error = ERROR_SUCCESS;
    if (!mapping)
      error = ERROR_INVALID_HANDLE;
    else if ((writes && !mapping->writable) || offset >= mapping->size || size > mapping->size - offset)
      error = ERROR_ACCESS_DENIED;
    else if (offset % kGranularity != 0)
      error = ERROR_MAPPED_ALIGNMENT;
    if (error != ERROR_SUCCESS) {
      SetLastError(error);
      return nullptr;
    }
    if (size == 0) size = static_cast<size_t>(mapping->size - offset);
    void *address = mmap(nullptr, size, writes ? PROT_READ | PROT_WRITE : PROT_READ, MAP_SHARED, mapping->file.get(),
                         static_cast<off_t>(offset));
    if (address == MAP_FAILED) {
      failWithErrno();
      return nullptr;
    }
    views().add(address, {size, mapping});
    return address;
  });
}

BOOL FlushViewOfFile(LPCVOID address, SIZE_T size) {
  const size_t rest = views().rest(address);
  if (rest == 0 || size > rest) return failWith(rest == 0 ? ERROR_INVALID_PARAMETER : ERROR_INVALID_ADDRESS);
  if (size == 0) size = rest;
  const size_t inPage = reinterpret_cast<uintptr_t>(address) % static_cast<size_t>(sysconf(_SC_PAGESIZE));
  char *page = const_cast<char *>(static_cast<const char *>(address)) - inPage;
  return msync(page, size + inPage, MS_SYNC) == 0 ? TRUE : failWithErrno();
}

BOOL UnmapViewOfFile(LPCVOID address) { return views().remove(address) ? TRUE : failWith(ERROR_INVALID_ADDRESS); }
