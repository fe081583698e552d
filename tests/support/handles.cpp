#include "support/handles.h"

#include "platform/platform.h"

#ifndef _WIN32
#include "platform/testing.h"
#endif

std::vector<size_t> openHandles() {
#ifdef _WIN32
  return {};
#else
  PlatformHandleCounts kernel;
  PlatformDesktopCounts desktop;
  platformCountHandles(&kernel);
  platformCountDesktop(&desktop);
  return {kernel.kernel, kernel.views, desktop.windows, desktop.drawing};
#endif
}
