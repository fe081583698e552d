// Window classes.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

// Null for a name that is none.
std::shared_ptr<WindowClass> findClass(LPCSTR name);

} // namespace platform
