// Texts and icons in dialogs.

#include "platform/desktop/dialogs/control.h"

namespace platform {

namespace {

class Label final : public Control {
 public:
  using Control::Control;

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
    case WM_GETDLGCODE: return DLGC_STATIC;
    case WM_NCHITTEST: return HTTRANSPARENT;
    case STM_SETICON: {
      const HICON before = std::exchange(icon_, reinterpret_cast<HICON>(wParam));
      repaint();
      return reinterpret_cast<LRESULT>(before);
    }
    default: return Control::answer(message, wParam, lParam);
    }
  }

 private:
  void draw(HDC dc, const RECT &area) override {
    FillRect(dc, &area, GetSysColorBrush(COLOR_BTNFACE));
    if ((style() & SS_TYPEMASK) == SS_ICON) {
      if (icon_) DrawIconEx(dc, 0, 0, icon_, area.right, area.bottom, 0, nullptr, DI_NORMAL);
      return;
    }
    RECT place = area;
    const UINT format = (style() & SS_NOPREFIX ? DT_NOPREFIX : 0u) | (style() & SS_EDITCONTROL ? DT_EDITCONTROL : 0u);
    SetTextColor(dc, GetSysColor(isEnabled() ? COLOR_BTNTEXT : COLOR_BTNSHADOW));
    DrawTextA(dc, text().c_str(), -1, &place, DT_WORDBREAK | DT_EXPANDTABS | format);
  }

  HICON icon_ = nullptr;
};

} // namespace

LRESULT CALLBACK labelProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return procedureOf<Label>(window, message, wParam, lParam);
}

} // namespace platform
