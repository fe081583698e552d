// Push buttons, check boxes and radio buttons.

#include "platform/desktop/dialogs/control.h"
#include "platform/desktop/rects.h"

namespace platform {

namespace {

constexpr LONG kBox = 13; // the side of a check box
constexpr LONG kGap = 4;  // from it to its text

class Button final : public Control {
 public:
  using Control::Control;

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (const auto answered = answerButton(message, wParam)) return answered;
    if (const auto answered = answerMouse(message, lParam)) return answered;
    if (const auto answered = answerKeys(message, wParam)) return answered;
    return Control::answer(message, wParam, lParam);
  }

 private:
  UINT type() const { return style() & BS_TYPEMASK; }
  bool isRadio() const { return type() == BS_AUTORADIOBUTTON; }
  bool isBox() const { return type() == BS_AUTOCHECKBOX || isRadio(); }

  std::optional<LRESULT> answerButton(UINT message, WPARAM wParam) {
    switch (message) {
    case WM_GETDLGCODE: return DLGC_BUTTON | kindCode();
    case BM_GETCHECK: return checked_;
    case BM_SETCHECK: checked_ = isBox() && wParam == BST_CHECKED; break;
    case BM_GETSTATE:
      return static_cast<LRESULT>((checked_ ? BST_CHECKED : 0u) | (pushed_ ? BST_PUSHED : 0u) |
                                  (hasFocus() ? BST_FOCUS : 0u));
    case BM_SETSTYLE:
      SetWindowLongA(handle_, GWL_STYLE, static_cast<LONG>((style() & ~BS_TYPEMASK) | (wParam & BS_TYPEMASK)));
      break;
    case BM_CLICK:
      if (isEnabled()) click();
      return 0;
    default: return std::nullopt;
    }
    repaint();
    return 0;
  }

  unsigned kindCode() const {
    if (isRadio()) return DLGC_RADIOBUTTON;
    if (isBox()) return 0;
    return type() == BS_DEFPUSHBUTTON ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON;
  }

  std::optional<LRESULT> answerMouse(UINT message, LPARAM lParam) {
    const POINT at = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      SetCapture(handle_);
      SetFocus(handle_);
      push(GetCapture() == handle_);
      return 0;
    case WM_MOUSEMOVE:
      if (GetCapture() == handle_) push(contains(area(), at));
      return 0;
    case WM_LBUTTONUP: {
      if (GetCapture() != handle_) return 0;
      const bool inside = contains(area(), at);
      ReleaseCapture();
      if (inside) click();
      return 0;
    }
    case WM_CAPTURECHANGED: push(false); return 0;
    default: return std::nullopt;
    }
  }

  std::optional<LRESULT> answerKeys(UINT message, WPARAM key) {
    switch (message) {
    case WM_KEYDOWN:
      if (key != VK_SPACE) return std::nullopt;
      push(true);
      return 0;
    case WM_KEYUP:
      if (key != VK_SPACE || !pushed_) return std::nullopt;
      push(false);
      click();
      return 0;
    case WM_KILLFOCUS: push(false); return std::nullopt;
    default: return std::nullopt;
    }
  }

  void push(bool pushed) {
    if (std::exchange(pushed_, pushed) != pushed) repaint();
  }

  void click() {
    if (isBox()) {
      checked_ = isRadio() || !checked_;
      if (isRadio()) clearOthers();
      repaint();
    }
    notify(BN_CLICKED);
  }

  // Of the radio buttons of a group, which ends where another one begins, one is checked.
  void clearOthers() const {
    HWND first = handle_;
    while (first && !(GetWindowLongA(first, GWL_STYLE) & WS_GROUP)) first = GetWindow(first, GW_HWNDPREV);
    if (!first) first = GetWindow(handle_, GW_HWNDFIRST);
    for (HWND one = first; one; one = GetWindow(one, GW_HWNDNEXT)) {
      if (one != first && GetWindowLongA(one, GWL_STYLE) & WS_GROUP) return;
      if (one != handle_ && SendMessageA(one, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON)
        SendMessageA(one, BM_SETCHECK, BST_UNCHECKED, 0);
    }
  }

  void draw(HDC dc, const RECT &area) override {
    FillRect(dc, &area, GetSysColorBrush(COLOR_BTNFACE));
    SetTextColor(dc, GetSysColor(isEnabled() ? COLOR_BTNTEXT : COLOR_BTNSHADOW));
    if (isBox())
      drawBox(dc, area);
    else
      drawPush(dc, area);
  }

  void drawPush(HDC dc, const RECT &area) {
    RECT inner = area;
    if (type() == BS_DEFPUSHBUTTON || hasFocus()) {
      FrameRect(dc, &inner, GetSysColorBrush(COLOR_WINDOWFRAME));
      inner = {inner.left + 1, inner.top + 1, inner.right - 1, inner.bottom - 1};
    }
    DrawFrameControl(dc, &inner, DFC_BUTTON, DFCS_BUTTONPUSH | (pushed_ ? DFCS_PUSHED : 0u));
    RECT words = pushed_ ? offset(inner, 1, 1) : inner;
    DrawTextA(dc, text().c_str(), -1, &words, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    if (!hasFocus()) return;
    const RECT ring = {inner.left + 3, inner.top + 3, inner.right - 3, inner.bottom - 3};
    DrawFocusRect(dc, &ring);
  }

  void drawBox(HDC dc, const RECT &area) {
    const LONG top = (area.bottom - kBox) / 2;
    RECT box = {0, top, kBox, top + kBox};
    DrawFrameControl(dc, &box, DFC_BUTTON,
                     (isRadio() ? DFCS_BUTTONRADIO : DFCS_BUTTONCHECK) | (checked_ ? DFCS_CHECKED : 0u) |
                         (pushed_ ? DFCS_PUSHED : 0u));
    RECT words = {kBox + kGap, 0, area.right, area.bottom};
    DrawTextA(dc, text().c_str(), -1, &words, DT_VCENTER | DT_SINGLELINE);
    if (!hasFocus()) return;
    const RECT ring = {words.left - 2, top - 1, words.right, top + kBox + 1};
    DrawFocusRect(dc, &ring);
  }

  bool pushed_ = false, checked_ = false;
};

} // namespace

LRESULT CALLBACK buttonProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return procedureOf<Button>(window, message, wParam, lParam);
}

} // namespace platform
