// Keys of the usual US keyboard layout, and their characters.
#pragma once

#include "platform/winapi.h"

namespace platform {

// The character of a virtual key; 0 if it has none.
char characterOf(BYTE key, bool shift, bool capital);
// The virtual key of a character that isn't a letter; 0 if there is none.
BYTE keyOf(char character);

} // namespace platform
