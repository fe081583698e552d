// Bitmaps and their memory.
#pragma once

#include "platform/desktop/drawing/objects.h"

namespace platform {

// A bitmap of black pixels. Null for a size that is none or too big.
std::shared_ptr<Bitmap> makeBitmap(int64_t width, int64_t height, int bits);

// Gives an image that shares its pixels with another one pixels of its own. keep: whether they are the same ones.
void ownPixels(QImage &image, bool keep);
// Makes an image the same as another, or does nothing when copying the pixels is better. Big images share their pixels
// from then on, until one of them is drawn on: a bitmap that is copied to a window as a whole is mostly deleted next.
bool sharePixels(const QImage &from, QImage &to);

// The one black pixel that a memory context has selected at first, and that stands for a bitmap without pixels.
HGDIOBJ emptyBitmap();

} // namespace platform
