#include "platform/kernel/durable.h"

#include "platform/kernel/files.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

bool syncFile(int file) { return fdatasync(file) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS; }

void syncFolderOf(const std::string &path) {
  const std::string folder = path.substr(0, path.size() - lastPart(path).size());
  const Descriptor file(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (file.valid()) fsync(file.get());
}

} // namespace platform
