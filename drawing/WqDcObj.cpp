// The selection cache. Objects are selected by their properties, and come from the registries or are made for the
// record. At the end the objects selected before return to the context.

#include "drawing/drawing_private.h"

namespace {

bool push(WqStack *stack, HGDIOBJ object) { return WqStack_Push(stack, reinterpret_cast<WqWord>(object)) != 0; }

bool pop(WqStack *stack, HGDIOBJ *object) {
  WqWord word;
  if (!WqStack_Pop(stack, &word)) return false;
  *object = reinterpret_cast<HGDIOBJ>(word);
  return true;
}

// Leaves an empty stack, so that a second end finds nothing.
void endStack(WqStack *stack) {
  WqStack_Term(stack);
  WqStack_Init(stack);
}

// Selects an object that the record doesn't own.
// kind: WQ_DCOBJ_... save: whether to remember the replaced object, if it is the first of its kind.
void selectLasting(WqDcObj *obj, HGDIOBJ object, uint32_t kind, bool save) {
  HGDIOBJ replaced = SelectObject(obj->dc->hdc, object);
  if (save && replaced && !(obj->flags & kind)) push(&obj->saved, replaced);
  obj->flags |= kind;
}

// Selects an object that the record owns from here on.
// Result: the object; null if memory is short, and the object is deleted then.
template <typename Handle> Handle selectTemporary(WqDcObj *obj, Handle object, uint32_t kind) {
  HGDIOBJ replaced = SelectObject(obj->dc->hdc, object);
  obj->flags |= kind;
  if (!object || push(&obj->temporary, object)) return object;
  SelectObject(obj->dc->hdc, replaced);
  DeleteObject(object);
  return nullptr;
}

} // namespace

void WqDcObj_Init(WqDcObj *obj) { *obj = {}; }

void WqDcObj_Dc(WqDcObj *obj, WqDc *dc) { obj->dc = dc; }

void WqDcObj_Term(WqDcObj *obj) {
  HGDIOBJ object;
  if (obj->dc && obj->dc->hdc)
    while (pop(&obj->saved, &object)) SelectObject(obj->dc->hdc, object);
  endStack(&obj->saved);
  while (pop(&obj->temporary, &object)) DeleteObject(object);
  endStack(&obj->temporary);
}

HPEN WqDcObj_SelectStylePen(WqDcObj *obj, uint32_t width, uint32_t colour, uint32_t style) {
  WqPen record;
  WqPen_Init(&record);
  WqPen_Param(&record, style, width, colour);
  if (wqIsDirect(colour)) {
    WqPen_Create(&record);
    return selectTemporary(obj, record.handle, WQ_DCOBJ_PEN);
  }
  const uint32_t id = width << 16 | colour | style;
  HPEN pen = WqPenTbl_Get(id);
  if (!pen) {
    WqPenTbl_Insert(id, &record);
    pen = WqPenTbl_Get(id);
  }
  selectLasting(obj, pen, WQ_DCOBJ_PEN, true);
  return pen;
}

HFONT WqDcObj_SelectFont(WqDcObj *obj, uint32_t fontId, uint32_t colour) {
  SetTextColor(obj->dc->hdc, WqColorTbl_Get(colour));
  HFONT font = WqFontTbl_Get(fontId);
  selectLasting(obj, font, WQ_DCOBJ_FONT, !wqIsDirect(colour));
  return font;
}

HBRUSH WqDcObj_SelectBrush(WqDcObj *obj, uint32_t colour) {
  WqBrush record;
  WqBrush_Init(&record);
  WqBrush_Param(&record, WQ_BRUSH_SOLID, colour);
  if (wqIsDirect(colour)) {
    WqBrush_Create(&record);
    return selectTemporary(obj, record.handle, WQ_DCOBJ_BRUSH);
  }
  HBRUSH brush = WqBrushTbl_Get(colour);
  if (!brush) {
    WqBrushTbl_Insert(colour, &record);
    brush = WqBrushTbl_Get(colour);
  }
  selectLasting(obj, brush, WQ_DCOBJ_BRUSH, true);
  return brush;
}
