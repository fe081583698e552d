// Visibility, and the states minimized, maximized and normal.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

// command: SW_... Result: whether it was visible.
bool showWindow(const WindowRef &window, int command);
// A new window takes the state of the style that it was wanted with.
void startInState(const WindowRef &window, DWORD wanted);
// What WM_SIZE tells of a window's state.
WPARAM sizeKind(const Window &window);

} // namespace platform
