// A button: its creation, its state, and the repaint after a change of state.

#include "buttonbar/buttonbar_private.h"

#include "drawing/drawing.h"
#include "drawing/wrapping.h"
#include "text/double_byte.h"

namespace {

void invalidate(const WqMbbBtn *button) {
  const WqMbbField *field = button->field;
  RECT place = button->rect;
  OffsetRect(&place, field->originX, field->originY);
  place.right = wqSum(place.right, 1); // right and bottom are exclusive for the platform
  place.bottom = wqSum(place.bottom, 1);
  InvalidateRect(field->bar->window, &place, FALSE);
}

void setFlags(WqMbbBtn *button, uint32_t flags) {
  button->flags = flags;
  if (button->field->bar->window) invalidate(button);
}

void changeFlags(WqMbbBtn *button, uint32_t flags) {
  if (button->flags != flags) setFlags(button, flags);
}

} // namespace

WqMbbBtn *WqMbbBtn_Create(WqMbbField *field, uint16_t id, WqWord userData, uint32_t flags, const RECT *rect,
                          const char *text, uint32_t options) {
  auto *button = static_cast<WqMbbBtn *>(field ? WqMem_Alloc(sizeof(WqMbbBtn)) : nullptr);
  if (!button) return nullptr;
  button->id = id;
  button->userData = userData;
  button->flags = flags;
  button->rect = *rect;
  wqCopyFitting(button->text, text);
  button->field = field;
  button->options = options;
  if (!wqAddRecord(&field->buttons, button)) return nullptr;
  WqRect_Union(&field->rect, rect);
  ++field->buttonCount;
  return button;
}

WqMbbBtn *WqMbbBtn_Get(HWND window, uint16_t fieldId, uint16_t buttonId) {
  return WqMbbField_Get(WqMbb_Get(WqMbbTbl_Get(window), fieldId), buttonId);
}

void WqMbbBtn_Select(WqMbbBtn *button) { changeFlags(button, button->flags | WQ_MBB_SELECTED); }
void WqMbbBtn_UnSelect(WqMbbBtn *button) { changeFlags(button, button->flags & ~WQ_MBB_SELECTED); }
void WqMbbBtn_Down(WqMbbBtn *button) { changeFlags(button, button->flags | WQ_MBB_DOWN); }
void WqMbbBtn_Up(WqMbbBtn *button) { changeFlags(button, button->flags & ~WQ_MBB_DOWN); }

void WqMbbBtn_Enable(WqMbbBtn *button, int32_t enable) {
  setFlags(button, enable ? button->flags & ~WQ_MBB_DISABLED : button->flags | WQ_MBB_DISABLED);
}

void WqMbbBtn_Update(WqMbbBtn *button, uint32_t flags) { setFlags(button, flags); }

void WqMbbBtn_UpdatePaint(WqMbbBtn *button) { invalidate(button); }
