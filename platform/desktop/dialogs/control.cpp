#include "platform/desktop/dialogs/control.h"

namespace platform {

const char *const kDialogClass = "#32770";
const char *const kButtonClass = "Button";
const char *const kEditClass = "Edit";
const char *const kLabelClass = "Static";

std::optional<LRESULT> Control::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_PAINT: paint(); return 0;
  case WM_ERASEBKGND: return 1;
  case WM_SETFONT:
    font_ = reinterpret_cast<HFONT>(wParam);
    if (LOWORD(lParam)) repaint();
    return 0;
  case WM_GETFONT: return reinterpret_cast<LRESULT>(font_);
  case WM_ENABLE:
  case WM_SETFOCUS:
  case WM_KILLFOCUS: repaint(); return 0;
  case WM_SETTEXT: {
    const LRESULT set = DefWindowProcA(handle_, message, wParam, lParam);
    repaint();
    return set;
  }
  default: return std::nullopt;
  }
}

RECT Control::area() const {
  RECT area{};
  GetClientRect(handle_, &area);
  return area;
}

void Control::notify(int what) const {
  const HWND parent = GetParent(handle_);
  if (parent) SendMessageA(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(handle_), what), lParamOf(handle_));
}

void Control::paint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(handle_, &paint);
  if (dc && recordOf(handle_)) {
    const Selected selected(dc, font_ ? font_ : GetStockObject(SYSTEM_FONT));
    SetBkMode(dc, TRANSPARENT);
    draw(dc, area());
  }
  EndPaint(handle_, &paint);
}

} // namespace platform

using namespace platform;

int GetDlgCtrlID(HWND control) { return static_cast<int>(GetWindowLongA(control, GWL_ID)); }
