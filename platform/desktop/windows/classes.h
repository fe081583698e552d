// Window classes.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

// Null for an unknown name.
std::shared_ptr<WindowClass> findClass(LPCSTR name);

} // namespace platform
