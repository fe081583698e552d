// The events of Qt as actions of the user.
#pragma once

#include "platform/desktop/window.h"

class QEvent;

namespace platform {

// Takes a mouse, wheel, key or text event. Result: whether it was one.
bool userInput(Window &window, QEvent &event);
// The cursor left a top-level window.
void leaveInput(Window &window);

// The character that a virtual key types on a keyboard of the usual US layout; 0 for none.
char characterOf(BYTE key, bool shift, bool capital);

} // namespace platform
