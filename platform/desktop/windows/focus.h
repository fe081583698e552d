// Activation, focus, and the state of being enabled.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

enum class Cause { program, mouse, desktop };

// On the window's own thread; null for no window.
bool activate(const WindowRef &window, Cause cause, bool moveFocus);
HWND setFocus(const WindowRef &window);
// The active window is going or hidden: another one takes its place.
void activateAnother(Window &window);
// The desktop gave the keyboard to a window of this thread, or took it.
void desktopActivated(const WindowRef &window);

} // namespace platform
