// A field of a bar: buttons that share an origin and a sheet of pictures.

#include "buttonbar/buttonbar_private.h"

WqMbbField *WqMbbField_Create(WqMbb *bar, uint16_t id, uint16_t bitmapId, const POINT *origin, const SIZE *cell) {
  auto *field = static_cast<WqMbbField *>(bar ? WqMem_Alloc(sizeof(WqMbbField)) : nullptr);
  if (!field) return nullptr;
  field->id = id;
  field->bitmapId = bitmapId;
  field->originX = origin->x;
  field->originY = origin->y;
  field->cellWidth = cell->cx;
  field->cellHeight = cell->cy;
  field->bar = bar;
  if (!wqAddRecord(&bar->fields, field)) return nullptr;
  ++bar->fieldCount;
  return field;
}

WqMbbBtn *WqMbbField_Get(const WqMbbField *field, uint16_t buttonId) {
  return field ? wqFindId<WqMbbBtn>(field->buttons, buttonId) : nullptr;
}
