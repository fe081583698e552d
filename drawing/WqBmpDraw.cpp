// Blits of a bitmap, each from a new context.

#include "drawing/drawing_private.h"

namespace {

struct Pass {
  bool fromMask; // the mask is to the right of the picture
  DWORD operation;
};

// Copies to one place in several passes. A bitmap that can't be selected draws nothing.
template <size_t count> void blit(const WqBmpDraw *draw, HDC dc, const Pass (&passes)[count]) {
  HDC source = CreateCompatibleDC(dc);
  HGDIOBJ before = SelectObject(source, draw->bitmap);
  for (size_t i = 0; before && i < count; ++i) {
    const LONG x = wqSum(draw->src.x, passes[i].fromMask ? draw->size.cx : 0);
    BitBlt(dc, draw->dst.x, draw->dst.y, draw->size.cx, draw->size.cy, source, x, draw->src.y, passes[i].operation);
  }
  if (before) SelectObject(source, before);
  DeleteDC(source);
}

} // namespace

void WqBmpDraw_Init(WqBmpDraw *draw, HBITMAP bitmap) {
  *draw = {};
  draw->bitmap = bitmap;
}

void WqBmpDraw_Term(WqBmpDraw *) {}

void WqBmpDraw_Param(WqBmpDraw *draw, const POINT *src, const POINT *dst, const SIZE *size) {
  draw->src = *src;
  draw->dst = *dst;
  draw->size = *size;
}

void WqBmpDraw_SrcCopy(const WqBmpDraw *draw, HDC dc) { blit(draw, dc, {{false, SRCCOPY}}); }

void WqBmpDraw_SrcCopyWithMask(const WqBmpDraw *draw, HDC dc) { blit(draw, dc, {{true, SRCAND}, {false, SRCPAINT}}); }
