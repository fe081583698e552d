// The classic look's colours.
#pragma once

#include "platform/winapi.h"

#include <optional>

namespace platform {

// The colour of a solid brush, or of a system colour's number plus 1.
std::optional<COLORREF> brushColor(HBRUSH brush);

// How many brushes the system has made of its own colours.
size_t countColorBrushes();

} // namespace platform
