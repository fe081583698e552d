// Reading icon and cursor files. What a resource holds has the same form.
#pragma once

#include "platform/desktop/drawing/icons.h"

#include <span>
#include <vector>

namespace platform {

// Null when there is no image of a known form. bytes: stay where they are as long as the source.
std::shared_ptr<const IconSource> readIcon(std::span<const uint8_t> bytes);
// The source keeps the bytes.
std::shared_ptr<const IconSource> readIcon(std::vector<uint8_t> bytes);

// Whether a file is a PNG file with all of its parts.
bool isWholePng(std::span<const uint8_t> file);

} // namespace platform
