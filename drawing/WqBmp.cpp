// Bitmaps of the application's resources.

#include "drawing/drawing.h"

void WqBmp_Init(WqBmp *bmp) { *bmp = {}; }

void WqBmp_Term(WqBmp *) {}

void WqBmp_Load(WqBmp *bmp) {
  bmp->handle = static_cast<HBITMAP>(
      LoadImageA(bmp->instance, MAKEINTRESOURCEA(bmp->resourceId), IMAGE_BITMAP, bmp->cx, bmp->cy, 0));
}
