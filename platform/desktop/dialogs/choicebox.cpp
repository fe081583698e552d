#include "platform/desktop/dialogs/choicebox.h"

#include "platform/desktop/dialogs/dialog.h"
#include "platform/desktop/rects.h"

#include <algorithm>
#include <cstring>

namespace platform {

namespace {

constexpr LONG kRow = 16;
constexpr UINT kDone = WM_USER + 1; // from the list to its box; wParam: the row that was chosen, counted from 1

} // namespace

// The list. It has the mouse as long as it is open, and the box keeps the focus. It is a part of the dialog, since a
// window of its own could not be placed on every desktop.
class DropList final : public Control {
 public:
  DropList(HWND handle, HWND box, const std::vector<std::string> &texts, size_t hot)
      : Control(handle), box_(box), texts_(texts), hot_(hot) {}

  static RECT placeFor(HWND box, size_t rows);

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    const POINT at = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_MOUSEMOVE:
      if (const auto row = rowAt(at)) heat(*row);
      return 0;
    case WM_LBUTTONDOWN:
      if (!contains(area(), at)) tell(0);
      return 0;
    case WM_LBUTTONUP: // that of the press which opened it comes from outside
      if (const auto row = rowAt(at)) tell(*row + 1);
      return 0;
    case WM_CAPTURECHANGED: tell(0); return 0;
    default: return Control::answer(message, wParam, lParam);
    }
  }

  HWND window() const { return handle_; }
  size_t hot() const { return hot_; }
  void heat(size_t row) {
    if (row >= texts_.size()) return;
    hot_ = row;
    const auto seen = static_cast<size_t>(std::max<LONG>(1, area().bottom / kRow));
    top_ = std::clamp(top_, row >= seen ? row - seen + 1 : 0, row);
    repaint();
  }

 private:
  void tell(size_t row) const { SendMessageA(box_, kDone, row, 0); }

  std::optional<size_t> rowAt(POINT at) const {
    if (!contains(area(), at)) return std::nullopt;
    const size_t row = top_ + static_cast<size_t>(at.y / kRow);
    return row < texts_.size() ? std::optional(row) : std::nullopt;
  }

  void draw(HDC dc, const RECT &area) override {
    FillRect(dc, &area, GetSysColorBrush(COLOR_WINDOW));
    RECT line = {0, 0, area.right, kRow};
    for (size_t row = top_; row < texts_.size() && line.top < area.bottom; ++row, line = offset(line, 0, kRow)) {
      const bool hot = row == hot_;
      if (hot) FillRect(dc, &line, GetSysColorBrush(COLOR_HIGHLIGHT));
      SetTextColor(dc, GetSysColor(hot ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
      RECT words = {line.left + 3, line.top, line.right, line.bottom};
      DrawTextA(dc, texts_[row].c_str(), -1, &words, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
  }

  const HWND box_;
  const std::vector<std::string> texts_;
  size_t hot_, top_ = 0;
};

// Below the box, or above it where there is more room, in coordinates of the dialog.
RECT DropList::placeFor(HWND box, size_t rows) {
  constexpr LONG kEdges = 2;
  RECT place, all;
  GetWindowRect(box, &place);
  MapWindowPoints(nullptr, GetParent(box), reinterpret_cast<POINT *>(&place), 2);
  GetClientRect(GetParent(box), &all);
  const LONG wanted = static_cast<LONG>(rows) * kRow + kEdges, below = all.bottom - place.bottom;
  const auto whole = [&](LONG room) { return std::min(wanted, (room - kEdges) / kRow * kRow + kEdges); };
  if (wanted <= below || below >= place.top)
    return {place.left, place.bottom, place.right, place.bottom + whole(below)};
  return {place.left, place.top - whole(place.top), place.right, place.top};
}

std::optional<LRESULT> ChoiceBox::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  if (const auto answered = answerProgram(message, wParam, lParam)) return answered;
  switch (message) {
  case kDone:
    close();
    if (wParam) choose(wParam - 1);
    return 0;
  case WM_GETDLGCODE: return DLGC_WANTARROWS | (list_ ? DLGC_WANTALLKEYS : 0);
  case WM_LBUTTONDOWN:
  case WM_LBUTTONDBLCLK:
    SetFocus(handle_);
    drop();
    return 0;
  case WM_MOUSEWHEEL: step(static_cast<short>(HIWORD(wParam)) < 0); return 0;
  case WM_KEYDOWN: return key(wParam);
  case WM_SYSKEYDOWN:
    if (wParam != VK_UP && wParam != VK_DOWN) return std::nullopt;
    list_ ? close() : drop();
    return 0;
  case WM_KILLFOCUS:
  case WM_DESTROY: close(); return Control::answer(message, wParam, lParam);
  default: return Control::answer(message, wParam, lParam);
  }
}

// What a program asks of a combo box.
std::optional<LRESULT> ChoiceBox::answerProgram(UINT message, WPARAM wParam, LPARAM lParam) {
  const bool exists = wParam < texts_.size();
  switch (message) {
  case CB_GETCOUNT: return static_cast<LRESULT>(texts_.size());
  case CB_GETCURSEL: return chosen_ < texts_.size() ? static_cast<LRESULT>(chosen_) : CB_ERR;
  case CB_SETCURSEL:
    if (!exists) return CB_ERR;
    chosen_ = wParam;
    repaint();
    return static_cast<LRESULT>(wParam);
  case CB_GETLBTEXTLEN: return exists ? static_cast<LRESULT>(texts_[wParam].size()) : CB_ERR;
  case CB_GETLBTEXT:
    if (!exists || !lParam) return CB_ERR;
    std::memcpy(reinterpret_cast<char *>(lParam), texts_[wParam].c_str(), texts_[wParam].size() + 1);
    return static_cast<LRESULT>(texts_[wParam].size());
  case CB_SHOWDROPDOWN: wParam ? drop() : close(); return TRUE;
  case CB_GETDROPPEDSTATE: return list_ != nullptr;
  default: return std::nullopt;
  }
}

std::optional<LRESULT> ChoiceBox::key(WPARAM key) {
  switch (key) {
  case VK_UP:
  case VK_DOWN: step(key == VK_DOWN); return 0;
  case VK_F4: list_ ? close() : drop(); return 0;
  case VK_RETURN:
    if (!list_) return std::nullopt;
    SendMessageA(handle_, kDone, list_->hot() + 1, 0);
    return 0;
  case VK_ESCAPE:
    if (!list_) return std::nullopt;
    close();
    return 0;
  default: return std::nullopt;
  }
}

// In the open list nothing is chosen yet.
void ChoiceBox::step(bool forward) {
  const size_t from = list_ ? list_->hot() : chosen_;
  if (forward ? from + 1 >= texts_.size() : from == 0) return;
  const size_t to = forward ? from + 1 : from - 1;
  list_ ? list_->heat(to) : choose(to);
}

void ChoiceBox::choose(size_t index) {
  if (index >= texts_.size() || std::exchange(chosen_, index) == index) return;
  repaint();
  notify(CBN_SELCHANGE);
}

void ChoiceBox::drop() {
  if (list_ || texts_.empty()) return;
  DialogLook look;
  look.style = WS_BORDER;
  look.exStyle = 0;
  std::shared_ptr<DropList> list;
  const HWND window = addPart(GetParent(handle_), DropList::placeFor(handle_, texts_.size()), 0, look, [&](HWND made) {
    return list = std::make_shared<DropList>(made, handle_, texts_, chosen_);
  });
  if (!window) return;
  list_ = list;
  SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  SetCapture(window);
  list_->heat(chosen_);
}

void ChoiceBox::close() {
  const std::shared_ptr<DropList> list = std::exchange(list_, nullptr);
  if (!list) return;
  if (GetCapture() == list->window()) ReleaseCapture();
  DestroyWindow(list->window());
}

void ChoiceBox::draw(HDC dc, const RECT &area) {
  const bool lit = hasFocus() && !list_;
  FillRect(dc, &area, GetSysColorBrush(lit ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  SetTextColor(dc, GetSysColor(lit ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  RECT arrow = {area.right - area.bottom, 0, area.right, area.bottom}, words = {3, 0, arrow.left, area.bottom};
  if (chosen_ < texts_.size())
    DrawTextA(dc, texts_[chosen_].c_str(), -1, &words, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  DrawFrameControl(dc, &arrow, DFC_SCROLL, DFCS_SCROLLCOMBOBOX | (list_ ? DFCS_PUSHED : 0u));
}

} // namespace platform
