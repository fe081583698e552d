// Where windows stand: position, size, order.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

constexpr UINT kStateChanged = 0x8000; // in the flags of a WINDOWPOS: minimized, maximized or restored
constexpr UINT kNoClientSize = 0x0800; // the client area kept its size
constexpr UINT kNoClientMove = 0x1000; // and its place

bool setWindowPos(const WindowRef &window, WINDOWPOS position);
// The limits of a window's size, as WM_GETMINMAXINFO leaves them.
MINMAXINFO sizeLimits(const WindowRef &window);
// Puts a top-level window in front of the others of its kind, with what it owns, without a message.
void raise(Window &window);

} // namespace platform
