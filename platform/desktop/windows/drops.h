// Files that the user drops on windows.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

// Whether a window or one in it takes dropped files.
bool takesFiles(const Window &window);
// Posts WM_DROPFILES to the window there that takes them, or to none.
void dropFiles(const FilesDropped &dropped);

} // namespace platform
