// What drawing asks of the floors above it, which define these functions.
#pragma once

#include "platform/desktop/drawing/paper.h"
#include "platform/winapi.h"

#include <memory>

namespace platform::above {

// The paper of a printer. name: null for none. mode: null for the printer's own.
// Result: null when there is no such printer.
std::shared_ptr<Paper> paperOf(const char *name, const DEVMODEA *mode);

} // namespace platform::above
