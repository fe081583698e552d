// Regions, and the clip regions of contexts.
#pragma once

#include "platform/desktop/drawing/objects.h"

namespace platform {

// NULLREGION, SIMPLEREGION or COMPLEXREGION.
int kindOf(const QRegion &region);

// Combines a context's clip region with another, which is in device coordinates; null takes the clip away.
// mode: RGN_... Result: the kind of what is left, ERROR for a mode that is none.
int selectClip(Dc &dc, const QRegion *region, int mode);

} // namespace platform
