// The screen that Qt shows windows on.
#pragma once

#include "platform/desktop/screen/screen.h"

namespace platform {

// Null if there is no display.
std::unique_ptr<Screen> startQtScreen();

} // namespace platform
