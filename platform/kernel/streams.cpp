// C streams by names of the API. A stream claims its file like any other opener, until its descriptor closes. Others
// may read and write the file, but not delete it.

#include "platform/kernel/errors.h"
#include "platform/kernel/files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>

using namespace platform;

namespace {

struct Mode {
  DWORD access;
  DWORD creation;
  const char *plain; // for the C library, which needn't create or cut the file any more
};

std::optional<Mode> modeOf(const char *text) {
  const bool both = std::strchr(text, '+') != nullptr;
  const bool fresh = std::strchr(text, 'x') != nullptr;
  const DWORD readWrite = GENERIC_READ | GENERIC_WRITE;
  switch (*text) {
  case 'r': return Mode{both ? readWrite : GENERIC_READ, OPEN_EXISTING, both ? "r+" : "r"};
  case 'w': return Mode{both ? readWrite : GENERIC_WRITE, fresh ? CREATE_NEW : CREATE_ALWAYS, both ? "r+" : "w"};
  case 'a': return Mode{both ? readWrite : GENERIC_WRITE, OPEN_ALWAYS, both ? "a+" : "a"};
  default: return std::nullopt;
  }
}

// The errno that the C runtime's fopen sets on the platform.
int errnoOf(DWORD error) {
  switch (error) {
  case ERROR_FILE_NOT_FOUND:
  case ERROR_PATH_NOT_FOUND: return ENOENT;
  case ERROR_ACCESS_DENIED:
  case ERROR_SHARING_VIOLATION: return EACCES;
  case ERROR_FILE_EXISTS: return EEXIST;
  case ERROR_TOO_MANY_OPEN_FILES: return EMFILE;
  case ERROR_NOT_ENOUGH_MEMORY: return ENOMEM;
  default: return EINVAL;
  }
}

FILE *openStream(const char *name, const Mode &mode) {
  std::string path = openablePath(given(name));
  if (path.empty()) return nullptr;
  bool existed;
  Descriptor file =
      openFile(path, mode.access, FILE_SHARE_READ | FILE_SHARE_WRITE, mode.creation, FILE_ATTRIBUTE_NORMAL, &existed);
  FILE *const stream = file.valid() ? fdopen(file.get(), mode.plain) : nullptr;
  if (stream) file.release(); // the stream closes it
  return stream;
}

} // namespace

FILE *platformOpenStream(const char *name, const char *mode) {
  return guarded<FILE *>(nullptr, [&]() -> FILE * {
    const std::optional<Mode> known = mode ? modeOf(mode) : std::nullopt;
    SetLastError(ERROR_SUCCESS);
    FILE *const stream = known ? openStream(name, *known) : nullptr;
    if (!stream) errno = errnoOf(GetLastError());
    return stream;
  });
}

int64_t platformSeekStream(FILE *stream, int64_t offset, int origin) {
  return fseeko(stream, offset, origin) == 0 ? ftello(stream) : -1;
}
