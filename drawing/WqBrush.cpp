// Brushes and their registry.

#include "drawing/drawing_private.h"

#include "frame/main.h"

void WqBrush_Init(WqBrush *brush) { *brush = {}; }

void WqBrush_Param(WqBrush *brush, int32_t style, uint32_t colour) {
  brush->style = style;
  brush->colour = colour;
}

void WqBrush_Create(WqBrush *brush) {
  const COLORREF colour = WqColorTbl_Get(brush->colour);
  if (brush->style == WQ_BRUSH_SOLID)
    brush->handle = CreateSolidBrush(colour);
  else if (brush->style == WQ_BRUSH_HATCHED)
    brush->handle = CreateHatchBrush(HS_HORIZONTAL, colour);
}

void WqBrush_Delete(WqBrush *brush) { wqDelete(brush); }
void WqBrush_Term(WqBrush *brush) { wqDelete(brush); }

void WqBrushTbl_Insert(uint32_t id, const WqBrush *brush) { wqInsertRecord(&wqMain.brushTbl, id, brush); }
HBRUSH WqBrushTbl_Get(uint32_t id) { return wqGetHandle<WqBrush>(&wqMain.brushTbl, id, WqBrush_Create); }
void WqBrushTbl_Remove(uint32_t id) { wqRemoveRecord<WqBrush>(&wqMain.brushTbl, id); }
