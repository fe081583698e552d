// The screen of a program without a display: windows work, but nobody sees them.
#pragma once

#include "platform/desktop/screen/screen.h"

namespace platform {

std::unique_ptr<Screen> makeNullScreen();

} // namespace platform
