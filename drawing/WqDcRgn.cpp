// A temporary clip rectangle.

#include "drawing/drawing.h"

void WqDcRgn_Init(WqDcRgn *rgn) { *rgn = {}; }

void WqDcRgn_Term(WqDcRgn *) {}

void WqDcRgn_Dc(WqDcRgn *rgn, WqDc *dc) { rgn->dc = dc; }

void WqDcRgn_Create(WqDcRgn *rgn, const RECT *rect) {
  HDC hdc = rgn->dc->hdc;
  rgn->region = CreateRectRgnIndirect(rect);
  rgn->savedRegion = CreateRectRgn(0, 0, 1, 1);
  if (GetClipRgn(hdc, rgn->savedRegion) != 1) { // the context has no clip region to restore
    DeleteObject(rgn->savedRegion);
    rgn->savedRegion = nullptr;
  }
  ExtSelectClipRgn(hdc, rgn->region, RGN_COPY);
}

void WqDcRgn_Delete(WqDcRgn *rgn) {
  SelectClipRgn(rgn->dc->hdc, rgn->savedRegion);
  DeleteObject(rgn->region);
  if (rgn->savedRegion) DeleteObject(rgn->savedRegion);
}
