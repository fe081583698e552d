// Text to the clipboard and from it.
#pragma once

#include "platform/winapi/types.h"

#include <string>

namespace platform {

// window: that opens the clipboard.
void copyText(HWND window, const std::string &text);
std::string pastedText(HWND window);

} // namespace platform
