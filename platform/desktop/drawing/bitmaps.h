// Bitmaps and their memory.
#pragma once

#include "platform/desktop/drawing/objects.h"

namespace platform {

// A bitmap of black pixels. Null for a size that is none or too big.
std::shared_ptr<Bitmap> makeBitmap(int64_t width, int64_t height, int bits);

// The one black pixel that a memory context has selected at first, and that stands for a bitmap without pixels.
HGDIOBJ emptyBitmap();

} // namespace platform
