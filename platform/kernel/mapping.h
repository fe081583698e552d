// Views of files.
#pragma once

#include <cstddef>

namespace platform {

// The views that are mapped now.
size_t countViews();

} // namespace platform
