// Views of files.
#pragma once

#include <cstddef>

namespace platform {

// The number of mapped views.
size_t countViews();

} // namespace platform
