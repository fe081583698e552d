// Names are decoded before anybody looks for separators, since 0x5C can be the second half of a character.

#include "platform/kernel/paths.h"

#include "platform/kernel/codepage.h"
#include "platform/winapi.h"

#include <cstdio>
#include <exception>
#include <sys/stat.h>

namespace platform {

namespace {

// A backslash that is part of a name on this system travels as an escape. Decoding would make it a separator, so the
// separators are turned in the encoded text, where a byte that belongs to a double-byte code is stepped over.
std::string withSlashes(std::string_view name) {
  std::string out(name);
  for (size_t at = 0; at < out.size(); ++at) {
    if (isLeadByte(static_cast<unsigned char>(out[at])) && at + 1 < out.size() &&
        isTrailByte(static_cast<unsigned char>(out[at + 1])))
      ++at;
    else if (out[at] == '\\')
      out[at] = '/';
  }
  return out;
}

} // namespace

std::string nativePath(std::string_view name) {
  const std::string slashed = withSlashes(name);
  std::string_view rest = slashed;
  if (rest.size() >= 2 && rest[1] == ':') {
    if (rest[0] != 'C' && rest[0] != 'c') return {};
    rest.remove_prefix(2);
    if (rest.empty()) return ".";
  }
  return utf8FromCodePage(rest);
}

} // namespace platform

extern "C" FILE *platformOpenStream(const char *name, const char *mode) {
  try {
    const std::string path = platform::nativePath(name);
    struct stat status;
    if (path.empty() || (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))) return nullptr;
    return std::fopen(path.c_str(), mode);
  } catch (const std::exception &) { // out of memory
    return nullptr;
  }
}
