// Keys and the characters that they type on a keyboard of the usual US layout.
#pragma once

#include "platform/winapi.h"

namespace platform {

// The character that a virtual key types; 0 for none.
char characterOf(BYTE key, bool shift, bool capital);
// The virtual key that types a character beside letters; 0 for none.
BYTE keyOf(char character);

} // namespace platform
