// The program's surroundings: its command line, its environment, its standard streams.

#include "platform/kernel/codepage.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/files.h"
#include "platform/kernel/paths.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <unistd.h>

namespace {

struct CommandLine {
  std::vector<std::string> texts;
  std::vector<char *> pointers;
  int count = 0;
  char **arguments = nullptr;

  CommandLine() {
    std::ifstream source("/proc/self/cmdline", std::ios::binary);
    for (std::string argument; std::getline(source, argument, '\0');)
      texts.push_back(platform::nameOfArgument(argument));
    for (std::string &text : texts) pointers.push_back(text.data());
    count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    arguments = pointers.data();
  }
};

CommandLine &commandLine() {
  static CommandLine line;
  return line;
}

// The handle of a standard stream, made on the first call; null if the stream is closed.
HANDLE streamHandle(int descriptor) {
  static std::array<HANDLE, 3> known{};
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  HANDLE &handle = known[static_cast<size_t>(descriptor)];
  if (!handle) {
    platform::Descriptor own(fcntl(descriptor, F_DUPFD_CLOEXEC, 3));
    const DWORD access = descriptor == STDIN_FILENO ? GENERIC_READ : GENERIC_WRITE;
    if (own.valid()) handle = platform::handles().open(std::make_shared<platform::File>(std::move(own), access));
  }
  return handle;
}

} // namespace

int *__p___argc() { return &commandLine().count; }

char ***__p___argv() { return &commandLine().arguments; }

// A value that is a path remains valid as a name: its slashes separate in code page 932 too.
DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR value, DWORD size) {
  return platform::guarded<DWORD>(0, [&]() -> DWORD {
    const char *found = name ? std::getenv(platform::utf8FromCodePage(name).c_str()) : nullptr;
    if (!found) {
      SetLastError(ERROR_ENVVAR_NOT_FOUND);
      return 0;
    }
    const std::string text = platform::codePageFromUtf8(found);
    if (!value || text.size() >= size) return static_cast<DWORD>(text.size() + 1);
    std::memcpy(value, text.c_str(), text.size() + 1);
    return static_cast<DWORD>(text.size());
  });
}

HANDLE GetStdHandle(DWORD stream) {
  return platform::guarded<HANDLE>(INVALID_HANDLE_VALUE, [&]() -> HANDLE {
    if (stream <= STD_INPUT_HANDLE && stream >= STD_ERROR_HANDLE)
      return streamHandle(static_cast<int>(STD_INPUT_HANDLE - stream));
    SetLastError(ERROR_INVALID_HANDLE);
    return INVALID_HANDLE_VALUE;
  });
}

BOOL GetConsoleMode(HANDLE handle, LPDWORD mode) {
  const std::shared_ptr<platform::File> file = platform::handles().get<platform::File>(handle);
  if (!file || !isatty(file->descriptor())) return platform::failWith(ERROR_INVALID_HANDLE);
  *mode = 0;
  return TRUE;
}

DWORD GetCurrentThreadId() { return static_cast<DWORD>(gettid()); }
