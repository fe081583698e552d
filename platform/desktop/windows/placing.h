// The place of windows: position, size, order.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

constexpr UINT kStateChanged = 0x8000; // in the flags of a WINDOWPOS: minimized, maximized or restored
constexpr UINT kNoClientSize = 0x0800; // the client area kept its size
constexpr UINT kNoClientMove = 0x1000; // and its place

bool setWindowPos(const WindowRef &window, WINDOWPOS position);
// The limits of a window's size, after WM_GETMINMAXINFO.
MINMAXINFO sizeLimits(const WindowRef &window);
// Puts a top-level window with the windows it owns in front of others of its band, without a message.
void raise(Window &window);

} // namespace platform
