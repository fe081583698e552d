// Finding resources of the program.
#pragma once

#include "platform/resources.h"

namespace platform {

// Null for a number that there is none of.
const PlatformResource *findResource(unsigned kind, unsigned id);

} // namespace platform
