// The z-order of windows.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

// Whether a window already stands where an insertion would put it. after: a HWND_... word or a sibling.
bool isInPlace(Window &window, HWND after);
// Inserts a window into the order, with the windows that it owns above it.
void reorder(Window &window, HWND after);

} // namespace platform
