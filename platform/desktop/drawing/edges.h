// The classic edges round controls.
#pragma once

#include "platform/desktop/drawing/shapes.h"

namespace platform {

// The ink of a solid brush in a system colour.
Ink systemInk(const Dc &dc, const Canvas &canvas, int color);
// Fills a rectangle of logical coordinates with a system colour.
void fillSystem(const Dc &dc, const Canvas &canvas, const RECT &rect, int color);

// A rectangle with its edges moved inwards, and one with edges no further than a limit.
RECT inset(const RECT &rect, const RECT &margins);
RECT within(const RECT &rect, LONG limit);

// What DrawEdge draws.
void drawEdge(const Dc &dc, const Canvas &canvas, const RECT &rect, UINT edge, UINT flags);

} // namespace platform
