// A bar, and building one from tables.

#include "buttonbar/buttonbar_private.h"

#include "windows/windows.h"

namespace {

// Skips the rows of a field that could not be made.
// Result: the row behind the field's rows.
const WqMbbBtnDesc *makeButtons(WqMbbField *field, const WqMbbBtnDesc *row, uint32_t count) {
  for (const WqMbbBtnDesc *end = row + count; row != end; ++row)
    WqMbbBtn_Create(field, row->id, row->userData, row->flags, &row->rect, row->text, row->options);
  return row;
}

} // namespace

void WqMbb_Config(HWND window, const WqMbbFieldDesc *fields, const WqMbbBtnDesc *buttons, uint32_t fieldCount) {
  WqMbb *bar = WqMbb_Create(window);
  if (!bar) return;
  for (const WqMbbFieldDesc *row = fields, *end = fields + fieldCount; row != end; ++row) {
    const POINT origin = {row->originX, row->originY};
    const SIZE cell = {row->cellWidth, row->cellHeight};
    buttons = makeButtons(WqMbbField_Create(bar, row->id, row->bitmapId, &origin, &cell), buttons, row->buttonCount);
  }
}

WqMbb *WqMbb_Create(HWND window) {
  auto *bar = static_cast<WqMbb *>(WqMem_Alloc(sizeof(WqMbb)));
  if (!bar) return nullptr;
  bar->window = window;
  WqMbbTbl_Insert(window, bar);
  if (WqMbbTbl_Get(window) == bar) return bar;
  WqMem_Free(bar);
  return nullptr;
}

WqMbbField *WqMbb_Get(const WqMbb *bar, uint16_t fieldId) {
  return bar ? wqFindId<WqMbbField>(bar->fields, fieldId) : nullptr;
}

void WqMbb_RepeatEnd() { WqTimer_Remove(WQ_MBB_TIMER_REPEAT); }
