// A field to edit one line of text.

#include "platform/desktop/dialogs/clip.h"
#include "platform/desktop/dialogs/control.h"
#include "platform/desktop/messages/devices.h"
#include "platform/kernel/codepage.h"

#include <algorithm>
#include <climits>

namespace platform {

namespace {

constexpr LONG kMargin = 2;

class EditField final : public Control {
 public:
  using Control::Control;

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (const auto answered = answerEdit(message, wParam, lParam)) return answered;
    if (const auto answered = answerMouse(message, lParam)) return answered;
    switch (message) {
    case WM_KEYDOWN: return key(wParam);
    case WM_CHAR: type(static_cast<char>(wParam)); return 0;
    default: return Control::answer(message, wParam, lParam);
    }
  }

 private:
  std::optional<LRESULT> answerEdit(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_GETDLGCODE: return DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS;
    case WM_SETTEXT: {
      const LRESULT set = DefWindowProcA(handle_, message, wParam, lParam);
      caret_ = anchor_ = scrolled_ = 0;
      changed();
      return set;
    }
    case EM_SETSEL: select(wParam, lParam); return 0;
    case EM_GETSEL: {
      const auto [from, to] = selection();
      if (wParam) *reinterpret_cast<DWORD *>(wParam) = static_cast<DWORD>(from);
      if (lParam) *reinterpret_cast<DWORD *>(lParam) = static_cast<DWORD>(to);
      return MAKELONG(from, to);
    }
    case EM_LIMITTEXT: limit_ = wParam ? wParam : INT_MAX; return 0;
    case WM_SETFOCUS: select(0, -1); return std::nullopt;
    default: return std::nullopt;
    }
  }

  std::optional<LRESULT> answerMouse(UINT message, LPARAM lParam) {
    switch (message) {
    case WM_LBUTTONDOWN:
      SetCapture(handle_);
      SetFocus(handle_);
      moveTo(positionAt(GET_X_LPARAM(lParam)), false);
      return 0;
    case WM_LBUTTONDBLCLK: select(0, -1); return 0;
    case WM_MOUSEMOVE:
      if (GetCapture() == handle_) moveTo(positionAt(GET_X_LPARAM(lParam)), true);
      return 0;
    case WM_LBUTTONUP:
      if (GetCapture() == handle_) ReleaseCapture();
      return 0;
    default: return std::nullopt;
    }
  }

  std::optional<LRESULT> key(WPARAM key) {
    const bool extend = isDown(currentQueue()->keys, VK_SHIFT);
    switch (key) {
    case VK_LEFT:
    case VK_UP: moveTo(before(caret_), extend); return 0;
    case VK_RIGHT:
    case VK_DOWN: moveTo(behind(caret_), extend); return 0;
    case VK_HOME: moveTo(0, extend); return 0;
    case VK_END: moveTo(text().size(), extend); return 0;
    case VK_DELETE:
      if (caret_ == anchor_) anchor_ = behind(caret_);
      replace("");
      return 0;
    default: return std::nullopt;
    }
  }

  // A double-byte character comes as two.
  void type(char character) {
    lead_ += character;
    if (lead_.size() == 1 && isLeadByte(static_cast<unsigned char>(character))) return;
    const std::string typed = std::exchange(lead_, {});
    if (typed == "\b") {
      if (caret_ == anchor_) anchor_ = before(caret_);
      replace("");
    } else if (static_cast<unsigned char>(typed[0]) >= ' ') {
      if (!(style() & ES_NUMBER) || (typed[0] >= '0' && typed[0] <= '9')) replace(typed);
    } else {
      control(typed[0]);
    }
  }

  // Letters with Control.
  void control(char character) {
    constexpr char kAll = 'A' - '@', kCopy = 'C' - '@', kPaste = 'V' - '@', kCut = 'X' - '@';
    const auto [from, to] = selection();
    switch (character) {
    case kAll: return select(0, -1);
    case kCut:
    case kCopy:
      copyText(handle_, text().substr(from, to - from));
      if (character == kCut && recordOf(handle_)) replace("");
      return;
    case kPaste: {
      const std::string pasted = pastedText(handle_);
      if (recordOf(handle_)) replace(pasted.substr(0, pasted.find_first_of("\r\n")));
      return;
    }
    default: return;
    }
  }

  // Puts a text in the place of the selection.
  void replace(const std::string &words) {
    const auto [from, to] = selection();
    std::string &all = recordOf(handle_)->text;
    if (all.size() - (to - from) + words.size() > limit_ || (from == to && words.empty())) return;
    all.replace(from, to - from, words);
    caret_ = anchor_ = from + words.size();
    changed();
  }

  void changed() {
    repaint();
    notify(EN_CHANGE);
  }

  void select(WPARAM from, LPARAM to) {
    const size_t length = text().size();
    anchor_ = from > length ? length : static_cast<size_t>(from);
    caret_ = to < 0 || static_cast<size_t>(to) > length ? length : static_cast<size_t>(to);
    repaint();
  }

  void moveTo(size_t position, bool extend) {
    caret_ = position;
    if (!extend) anchor_ = position;
    repaint();
  }

  std::pair<size_t, size_t> selection() const { return std::minmax({caret_, anchor_}); }

  size_t behind(size_t at) const {
    if (at >= text().size()) return text().size();
    return at + (isDoubleByteAt(text(), at) ? 2 : 1);
  }

  size_t before(size_t at) const {
    size_t last = 0;
    for (size_t next = 0; next < at; next = behind(next)) last = next;
    return last;
  }

  LONG widthTo(HDC dc, size_t at) const {
    SIZE size{};
    GetTextExtentPoint32A(dc, text().c_str(), static_cast<int>(at), &size);
    return size.cx;
  }

  size_t positionAt(LONG x) const {
    const HDC dc = GetDC(handle_);
    size_t best = 0;
    {
      const Selected selected(dc, font());
      LONG nearest = INT_MAX;
      for (size_t at = 0;; at = behind(at)) {
        const LONG away = std::abs(widthTo(dc, at) + kMargin - scrolled_ - x);
        if (away < nearest) nearest = away, best = at;
        if (at >= text().size()) break;
      }
    }
    ReleaseDC(handle_, dc);
    return best;
  }

  // So far that the caret is seen.
  void scroll(HDC dc, LONG width) {
    const LONG at = widthTo(dc, caret_);
    scrolled_ = std::clamp(scrolled_, std::max<LONG>(0, at - width + 2 * kMargin + 1), std::max<LONG>(0, at));
  }

  void draw(HDC dc, const RECT &area) override {
    FillRect(dc, &area, GetSysColorBrush(isEnabled() ? COLOR_WINDOW : COLOR_BTNFACE));
    scroll(dc, area.right);
    const LONG left = kMargin - scrolled_;
    RECT line = {left, 0, area.right, area.bottom};
    SetTextColor(dc, GetSysColor(isEnabled() ? COLOR_WINDOWTEXT : COLOR_BTNSHADOW));
    DrawTextA(dc, text().c_str(), -1, &line, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    if (!hasFocus()) return;
    const auto [from, to] = selection();
    if (from != to) drawSelected(dc, area, from, to);
    const LONG at = left + widthTo(dc, caret_);
    const RECT caret = {at, 2, at + 1, area.bottom - 2};
    FillRect(dc, &caret, GetSysColorBrush(COLOR_WINDOWTEXT));
  }

  void drawSelected(HDC dc, const RECT &area, size_t from, size_t to) {
    const LONG left = kMargin - scrolled_;
    RECT part = {left + widthTo(dc, from), 1, left + widthTo(dc, to), area.bottom - 1};
    FillRect(dc, &part, GetSysColorBrush(COLOR_HIGHLIGHT));
    SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
    DrawTextA(dc, text().substr(from, to - from).c_str(), -1, &part, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  }

  size_t caret_ = 0, anchor_ = 0; // of the selection one end moves, the other stays
  LONG scrolled_ = 0;
  size_t limit_ = INT_MAX;
  std::string lead_;
};

} // namespace

LRESULT CALLBACK editProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return procedureOf<EditField>(window, message, wParam, lParam);
}

} // namespace platform
