// What lines of more than one pixel cover: their ends and joins are round.
#pragma once

#include "platform/desktop/drawing/raster.h"

#include <span>

namespace platform {

// closed: the line comes back to its first point.
Spans strokeOf(const Canvas &canvas, int width, std::span<const POINT> points, bool closed);

} // namespace platform
