#include "platform/desktop/dialogs/choicebox.h"

namespace platform {

std::optional<LRESULT> ChoiceBox::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_GETDLGCODE: return DLGC_WANTARROWS;
  case WM_LBUTTONDOWN:
  case WM_LBUTTONDBLCLK:
    SetFocus(handle_);
    step(true, true);
    return 0;
  case WM_MOUSEWHEEL: step(static_cast<short>(HIWORD(wParam)) < 0, false); return 0;
  case WM_KEYDOWN:
    if (wParam != VK_UP && wParam != VK_DOWN) return std::nullopt;
    step(wParam == VK_DOWN, false);
    return 0;
  default: return Control::answer(message, wParam, lParam);
  }
}

void ChoiceBox::step(bool forward, bool round) {
  const size_t last = texts_.empty() ? 0 : texts_.size() - 1;
  size_t next = chosen_;
  if (forward)
    next = chosen_ < last ? chosen_ + 1 : round ? 0 : last;
  else if (chosen_ > 0)
    --next;
  if (std::exchange(chosen_, next) == next) return;
  repaint();
  notify(kChanged);
}

void ChoiceBox::draw(HDC dc, const RECT &area) {
  FillRect(dc, &area, GetSysColorBrush(hasFocus() ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  SetTextColor(dc, GetSysColor(hasFocus() ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  RECT arrow = {area.right - area.bottom, 0, area.right, area.bottom}, words = {3, 0, arrow.left, area.bottom};
  if (chosen_ < texts_.size())
    DrawTextA(dc, texts_[chosen_].c_str(), -1, &words, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  DrawFrameControl(dc, &arrow, DFC_SCROLL, DFCS_SCROLLCOMBOBOX);
}

} // namespace platform
