// Activation, focus, and the state of being enabled.
#pragma once

#include "platform/desktop/window.h"

namespace platform {

bool activate(const WindowRef &window, bool byMouse, bool moveFocus);
HWND setFocus(const WindowRef &window);
// The active window is going or hidden: another one takes its place.
void activateAnother(Window &window);
// The desktop gave the focus to a window of this application, or to another application.
void desktopActivated(const WindowRef &window);

void setCapture(Queue &queue, Window *window);

} // namespace platform
