// What tests and tools may see of the desktop half.

#include "platform/testing.h"

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/windows/window.h"

using namespace platform;

void platformCountDesktop(PlatformDesktopCounts *counts) {
  const DesktopLock lock;
  desktopWindow(); // is made when it is first asked for, and counts as none
  counts->windows = countWindows() - 1;
  counts->drawing = countDrawing();
}
