// The desktop half's functions for tests and tools.

#include "platform/testing.h"

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/windows/window.h"

using namespace platform;

void platformCountDesktop(PlatformDesktopCounts *counts) {
  const DesktopLock lock;
  desktopWindow(); // made by the first call, and not counted
  counts->windows = countWindows() - 1;
  counts->drawing = countDrawing();
}
