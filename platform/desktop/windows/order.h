// The order in which windows stand before one another.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

// Whether a window stands already where an insertion would put it. after: one of the HWND_... words or a sibling.
bool isInPlace(Window &window, HWND after);
// Puts a window into the order, and what it owns above it.
void reorder(Window &window, HWND after);

} // namespace platform
