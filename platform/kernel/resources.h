// Finding resources of the program.
#pragma once

#include "platform/resources.h"

namespace platform {

// A resource of the program; null if no resource has this number.
const PlatformResource *findResource(unsigned kind, unsigned id);

} // namespace platform
