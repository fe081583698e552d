// The screen of a program without a display: windows work there all the same, and nobody sees them.
#pragma once

#include "platform/desktop/screen/screen.h"

namespace platform {

std::unique_ptr<Screen> makeNullScreen();

} // namespace platform
