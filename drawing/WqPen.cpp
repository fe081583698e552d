// Pens and their registry.

#include "drawing/drawing_private.h"

#include "frame/main.h"

void WqPen_Init(WqPen *pen) { *pen = {}; }

void WqPen_Term(WqPen *) {}

void WqPen_Param(WqPen *pen, uint32_t style, uint32_t width, uint32_t colour) {
  pen->log.lopnStyle = style;
  pen->log.lopnWidth = {static_cast<LONG>(width), static_cast<LONG>(width)};
  pen->colour = colour;
}

void WqPen_Create(WqPen *pen) {
  pen->log.lopnColor = WqColorTbl_Get(pen->colour);
  pen->handle = CreatePenIndirect(&pen->log);
}

void WqPen_Delete(WqPen *pen) { wqDelete(pen); }

void WqPenTbl_Insert(uint32_t id, const WqPen *pen) { wqInsertRecord(&wqMain.penTbl, id, pen); }
HPEN WqPenTbl_Get(uint32_t id) { return wqGetHandle<WqPen>(&wqMain.penTbl, id, WqPen_Create); }
void WqPenTbl_Remove(uint32_t id) { wqRemoveRecord<WqPen>(&wqMain.penTbl, id); }
