// The layer's own functions on windows.

#include "platform/winapi/extensions.h"

#include "platform/desktop/drawing/surface.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/windows/window.h"
#include "platform/kernel/paths.h"

using namespace platform;

BOOL platformHasDisplay() { return theScreen().isSeen(); }

BOOL platformSavePicture(HWND window, const char *file) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !target->surface) return FALSE;
    return target->surface->image().save(QString::fromStdString(existingPath(file)), "PNG");
  });
}
