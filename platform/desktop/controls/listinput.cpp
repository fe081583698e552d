// Input for a list box.

#include "platform/desktop/controls/listbox.h"
#include "platform/desktop/messages/devices.h"

#include <algorithm>

namespace platform {

namespace {

constexpr UINT_PTR kScroll = 1; // the timer of a drag beyond the edge
constexpr UINT kScrollTime = 50;

bool holds(int key) { return isDown(currentQueue()->keys, key); }

} // namespace

void ListBox::notify(int code) const {
  const Window *const self = recordOf(handle_);
  if (!self || !(style_ & LBS_NOTIFY)) return;
  ask(WM_COMMAND, MAKEWPARAM(self->id, code), lParamOf(handle_));
}

// ---- The mouse

void ListBox::pressed(POINT at, WPARAM keys) {
  if (!hasFocus_) SetFocus(handle_);
  const int index = rowAt(at.y);
  if (gone_ || !isThere(index) || !contains(area(), at)) return;
  SetCapture(handle_);
  captured_ = true;
  if (style_ & LBS_EXTENDEDSEL) {
    const bool turns = keys & MK_CONTROL, extends = keys & MK_SHIFT;
    if (extends && anchor_ >= 0) {
      selectOnly(std::min(anchor_, index), std::max(anchor_, index));
    } else if (turns) {
      anchor_ = index;
      select(index, !isSelected(index));
    } else {
      anchor_ = index;
      selectOnly(index, index);
    }
  } else if (style_ & LBS_MULTIPLESEL) {
    anchor_ = index;
    select(index, !isSelected(index));
  } else {
    anchor_ = index;
    select(index, true);
  }
  if (gone_) return;
  setCaret(index);
  show(index);
  SetTimer(handle_, kScroll, kScrollTime, nullptr);
}

// The selection follows the pointer. Beyond an edge the list scrolls.
void ListBox::dragged(POINT at) {
  if (!captured_ || !count_) return;
  const RECT all = area();
  if (at.y < 0) setTop(top_ - 1);
  if (at.y >= all.bottom) setTop(top_ + 1);
  if (gone_ || style_ & LBS_MULTIPLESEL) return;
  const int index = std::min(rowAt(std::clamp<LONG>(at.y, 0, std::max<LONG>(all.bottom - 1, 0))), count_ - 1);
  if (index == caret_ && isSelected(index)) return;
  if (style_ & LBS_EXTENDEDSEL)
    selectOnly(std::min(anchor_, index), std::max(anchor_, index));
  else
    select(index, true);
  if (!gone_) setCaret(index);
}

void ListBox::released() {
  if (!captured_) return;
  captured_ = false;
  KillTimer(handle_, kScroll);
  if (GetCapture() == handle_) ReleaseCapture();
  if (!gone_ && count_) notify(LBN_SELCHANGE);
}

// ---- The keyboard

// Moves the selection to an item, after a key or a character.
void ListBox::goTo(int index, bool extends) {
  if (!count_) return;
  index = std::clamp(index, 0, count_ - 1);
  if (style_ & LBS_EXTENDEDSEL) {
    if (!extends || anchor_ < 0) anchor_ = index;
    selectOnly(std::min(anchor_, index), std::max(anchor_, index));
  } else if (!isMultiple()) {
    anchor_ = index;
    select(index, true);
  }
  if (gone_) return;
  setCaret(index);
  show(index);
  notify(LBN_SELCHANGE);
}

void ListBox::keyDown(WPARAM key) {
  if (style_ & LBS_WANTKEYBOARDINPUT) {
    const auto wanted = static_cast<int>(ask(WM_VKEYTOITEM, MAKEWPARAM(key, std::max(caret_, 0)), lParamOf(handle_)));
    if (gone_ || wanted < -1) return;
    if (wanted >= 0) {
      goTo(wanted, false);
      return;
    }
  }
  const bool extends = holds(VK_SHIFT);
  switch (key) {
  case VK_LEFT:
  case VK_UP: return goTo(caret_ - 1, extends);
  case VK_RIGHT:
  case VK_DOWN: return goTo(caret_ + 1, extends);
  case VK_PRIOR: return goTo(caret_ - page() + 1, extends);
  case VK_NEXT: return goTo(caret_ + page() - 1, extends);
  case VK_HOME: return goTo(0, extends);
  case VK_END: return goTo(count_ - 1, extends);
  case VK_SPACE:
    if (!isThere(caret_)) return;
    if (style_ & LBS_EXTENDEDSEL) return goTo(caret_, extends);
    if (isMultiple()) select(caret_, !isSelected(caret_));
    if (isMultiple() && !gone_) notify(LBN_SELCHANGE);
    return;
  default: return;
  }
}

// Goes to the next item that begins with the character.
void ListBox::typed(WPARAM character) {
  const char text[] = {static_cast<char>(character), '\0'};
  LRESULT wanted = -1;
  if (style_ & LBS_WANTKEYBOARDINPUT) {
    wanted = ask(WM_CHARTOITEM, MAKEWPARAM(character, std::max(caret_, 0)), lParamOf(handle_));
    if (gone_ || wanted < -1) return;
  }
  if (wanted == -1 && hasStrings() && character > VK_SPACE)
    wanted = find(caret_, reinterpret_cast<LPARAM>(text), false);
  if (wanted >= 0) goTo(static_cast<int>(wanted), false);
}

void ListBox::focused(bool has) {
  if (hasFocus_ == has) return;
  hasFocus_ = has;
  refreshItem(caret_, ODA_FOCUS);
  notify(has ? LBN_SETFOCUS : LBN_KILLFOCUS);
}

std::optional<LRESULT> ListBox::answerInput(UINT message, WPARAM wParam, LPARAM lParam) {
  const POINT at = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  switch (message) {
  case WM_GETDLGCODE: return DLGC_WANTARROWS | DLGC_WANTCHARS;
  case WM_SETFOCUS: focused(true); return 0;
  case WM_KILLFOCUS: focused(false); return 0;
  case WM_KEYDOWN: keyDown(wParam); return 0;
  case WM_CHAR: typed(wParam); return 0;
  case WM_LBUTTONDOWN: pressed(at, wParam); return 0;
  case WM_LBUTTONDBLCLK: notify(LBN_DBLCLK); return 0;
  case WM_LBUTTONUP: released(); return 0;
  case WM_MOUSEMOVE: dragged(at); return 0;
  case WM_CAPTURECHANGED:
    captured_ = false;
    KillTimer(handle_, kScroll);
    return 0;
  case WM_TIMER: {
    if (wParam != kScroll) return std::nullopt;
    POINT pointer;
    if (GetCursorPos(&pointer) && ScreenToClient(handle_, &pointer)) dragged(pointer);
    return 0;
  }
  default: return std::nullopt;
  }
}

} // namespace platform
