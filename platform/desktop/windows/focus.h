// Activation, focus, and disabled windows.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

enum class Cause { program, mouse, desktop };

// Both run on the window's own thread. window: null for no window.
bool activate(const WindowRef &window, Cause cause, bool moveFocus);
HWND setFocus(const WindowRef &window);
// Activates another window, because the active one is going or hidden.
void activateAnother(Window &window);
// The desktop has given the keyboard to a window of this thread, or taken it.
void desktopActivated(const WindowRef &window);

} // namespace platform
