// Visibility, and the states minimized, maximized and normal.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

// command: SW_... Result: whether the window was visible before.
bool showWindow(const WindowRef &window, int command);
// Gives a new window the state of its wanted style.
void startInState(const WindowRef &window, DWORD wanted);
// The window's state as WM_SIZE tells it.
WPARAM sizeKind(const Window &window);

} // namespace platform
