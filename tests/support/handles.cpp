#include "support/handles.h"

#include "platform/platform.h"

#include <cstdio>

#ifdef _WIN32
#define PSAPI_VERSION 2 // the functions are in kernel32
#include <psapi.h>
#else
#include "platform/testing.h"
#include <unistd.h>
#endif

std::vector<size_t> openHandles() {
#ifdef _WIN32
  return {};
#else
  GetStdHandle(STD_ERROR_HANDLE); // opened on its first use
  PlatformHandleCounts kernel;
  PlatformDesktopCounts desktop;
  platformCountHandles(&kernel);
  platformCountDesktop(&desktop);
  return {kernel.kernel, kernel.views, kernel.memory, desktop.windows, desktop.drawing};
#endif
}

size_t residentBytes() {
#ifdef __SANITIZE_ADDRESS__
  return 0; // it keeps freed memory for a while
#elif defined(_WIN32)
  PROCESS_MEMORY_COUNTERS counters{};
  return GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) ? counters.WorkingSetSize : 0;
#else
  size_t all = 0, resident = 0;
  FILE *file = std::fopen("/proc/self/statm", "r");
  const bool read = file && std::fscanf(file, "%zu %zu", &all, &resident) == 2;
  if (file) std::fclose(file);
  return read ? resident * static_cast<size_t>(sysconf(_SC_PAGESIZE)) : 0;
#endif
}
