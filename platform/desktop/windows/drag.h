// Moving and sizing by the frame.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

// Moves or sizes a window with the mouse, from a press on its frame to the release. at: on the screen.
void dragFrame(const WindowRef &window, WPARAM hit, LPARAM at);

} // namespace platform
