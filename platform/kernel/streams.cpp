// C streams by names of the API.

#include "platform/kernel/errors.h"
#include "platform/kernel/paths.h"

#include <cstdio>
#include <sys/stat.h>

using namespace platform;

FILE *platformOpenStream(const char *name, const char *mode) {
  return guarded<FILE *>(nullptr, [&]() -> FILE * {
    const std::string path = existingPath(name);
    struct stat status;
    if (path.empty() || (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))) return nullptr;
    return std::fopen(path.c_str(), mode);
  });
}

int64_t platformSeekStream(FILE *stream, int64_t offset, int origin) {
  return fseeko(stream, offset, origin) == 0 ? ftello(stream) : -1;
}
