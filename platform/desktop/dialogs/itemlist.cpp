#include "platform/desktop/dialogs/itemlist.h"

#include "platform/desktop/messages/devices.h"
#include "platform/desktop/rects.h"

#include <algorithm>
#include <cctype>

namespace platform {

namespace {

constexpr LONG kRow = 16, kStrip = 16, kStep = 14, kPicture = 14;
constexpr long kWheelRows = 3;

void drawFolder(HDC dc, LONG left, LONG top) {
  const RECT tab = {left + 1, top + 3, left + 6, top + 5}, body = {left + 1, top + 5, left + 13, top + 13};
  const HBRUSH brush = CreateSolidBrush(RGB(240, 200, 90));
  FillRect(dc, &tab, brush);
  FillRect(dc, &body, brush);
  FrameRect(dc, &body, GetSysColorBrush(COLOR_BTNSHADOW));
  DeleteObject(brush);
}

void drawSheet(HDC dc, LONG left, LONG top) {
  const RECT sheet = {left + 3, top + 2, left + 11, top + 14};
  FillRect(dc, &sheet, GetSysColorBrush(COLOR_WINDOW));
  FrameRect(dc, &sheet, GetSysColorBrush(COLOR_BTNSHADOW));
}

} // namespace

std::optional<LRESULT> ItemList::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_GETDLGCODE: return DLGC_WANTARROWS | DLGC_WANTCHARS;
  case WM_LBUTTONDOWN:
  case WM_LBUTTONDBLCLK: press({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}, message == WM_LBUTTONDBLCLK); return 0;
  case WM_MOUSEMOVE:
    if (GetCapture() == handle_) pressStrip(GET_Y_LPARAM(lParam));
    return 0;
  case WM_LBUTTONUP:
    if (GetCapture() == handle_) ReleaseCapture();
    return 0;
  case WM_MOUSEWHEEL:
    scrollTo(static_cast<long>(top_) - kWheelRows * static_cast<short>(HIWORD(wParam)) / WHEEL_DELTA);
    return 0;
  case WM_KEYDOWN: return key(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
  case WM_CHAR: letter(static_cast<char>(wParam)); return 0;
  default: return Control::answer(message, wParam, lParam);
  }
}

void ItemList::fill(std::vector<Item> items) {
  items_ = std::move(items);
  selected_.assign(items_.size(), false);
  top_ = current_ = anchor_ = 0;
  repaint();
}

std::vector<size_t> ItemList::selection() const {
  std::vector<size_t> all;
  for (size_t i = 0; i < selected_.size(); ++i)
    if (selected_[i]) all.push_back(i);
  return all;
}

void ItemList::select(size_t index) {
  if (index >= items_.size()) return;
  selected_.assign(items_.size(), false);
  selected_[index] = true;
  current_ = anchor_ = index;
  if (index < top_) scrollTo(static_cast<long>(index));
  if (index >= top_ + visible()) scrollTo(static_cast<long>(index + 1 - visible()));
  repaint();
}

// ---- Keys and the mouse

bool ItemList::key(WPARAM key) {
  const bool extend = several_ && isDown(currentQueue()->keys, VK_SHIFT);
  const size_t last = items_.empty() ? 0 : items_.size() - 1, page = visible();
  const bool any = !selection().empty();
  switch (key) {
  case VK_UP: go(current_ ? current_ - 1 : 0, extend); return true;
  case VK_DOWN: go(any ? std::min(current_ + 1, last) : current_, extend); return true;
  case VK_PRIOR: go(current_ > page ? current_ - page : 0, extend); return true;
  case VK_NEXT: go(std::min(current_ + page, last), extend); return true;
  case VK_HOME: go(0, extend); return true;
  case VK_END: go(last, extend); return true;
  case VK_RIGHT: tell(Way::in); return true;
  case VK_LEFT: tell(Way::out); return true;
  default: return false;
  }
}

// Goes to the next row whose name begins so; Backspace goes out.
void ItemList::letter(char character) {
  if (character == '\b') return tell(Way::out);
  const auto begins = [&](const Item &item) {
    return !item.name.empty() && std::toupper(static_cast<unsigned char>(item.name[0])) ==
                                     std::toupper(static_cast<unsigned char>(character));
  };
  for (size_t i = 1; i <= items_.size(); ++i)
    if (const size_t at = (current_ + i) % items_.size(); begins(items_[at])) return go(at, false);
}

void ItemList::go(size_t index, bool extend) {
  if (items_.empty()) return;
  const size_t anchor = anchor_;
  select(index);
  if (extend) {
    anchor_ = anchor;
    const auto [from, to] = std::minmax(anchor, index);
    for (size_t i = from; i <= to; ++i) selected_[i] = true;
  }
  notify(kSelected);
}

void ItemList::tell(std::optional<Way> way) {
  way_ = way;
  notify(kChosen);
  way_.reset();
}

void ItemList::press(POINT at, bool twice) {
  SetFocus(handle_);
  if (contains(strip(), at)) {
    SetCapture(handle_);
    return pressStrip(at.y);
  }
  const size_t index = top_ + static_cast<size_t>(at.y / kRow);
  if (at.y < 0 || index >= items_.size()) return;
  if (twice) return tell(std::nullopt);
  const Keys &keys = currentQueue()->keys;
  if (several_ && isDown(keys, VK_CONTROL)) {
    selected_[index] = !selected_[index];
    current_ = anchor_ = index;
    repaint();
    return notify(kSelected);
  }
  go(index, several_ && isDown(keys, VK_SHIFT));
}

// An arrow goes on by a row; elsewhere the thumb comes to the pointer.
void ItemList::pressStrip(LONG y) {
  const RECT all = strip();
  if (y < kStrip) return scrollTo(static_cast<long>(top_) - 1);
  if (y >= all.bottom - kStrip) return scrollTo(static_cast<long>(top_) + 1);
  const RECT handle = thumb();
  const LONG high = handle.bottom - handle.top, way = all.bottom - 2 * kStrip - high;
  const auto rows = static_cast<long>(items_.size()) - static_cast<long>(visible());
  if (way > 0) scrollTo(rows * std::max(0L, static_cast<long>(y - kStrip - high / 2)) / way);
}

void ItemList::scrollTo(long top) {
  const long last = static_cast<long>(items_.size()) - static_cast<long>(visible());
  top_ = static_cast<size_t>(std::clamp(top, 0L, std::max(0L, last)));
  repaint();
}

// ---- The look

size_t ItemList::visible() const { return static_cast<size_t>(std::max<LONG>(1, area().bottom / kRow)); }

RECT ItemList::strip() const {
  const RECT all = area();
  return {items_.size() > visible() ? all.right - kStrip : all.right, 0, all.right, all.bottom};
}

RECT ItemList::thumb() const {
  const RECT all = strip();
  const long way = all.bottom - 2 * kStrip, rows = static_cast<long>(items_.size()),
             seen = static_cast<long>(visible());
  const long high = std::max(8L, way * seen / std::max(1L, rows));
  const long top = kStrip + (way - high) * static_cast<long>(top_) / std::max(1L, rows - seen);
  return {all.left, static_cast<LONG>(top), all.right, static_cast<LONG>(top + high)};
}

void ItemList::draw(HDC dc, const RECT &area) {
  FillRect(dc, &area, GetSysColorBrush(COLOR_WINDOW));
  const RECT right = strip();
  LONG y = 0;
  for (size_t i = top_; i < items_.size() && y < area.bottom; ++i, y += kRow) {
    const Item &item = items_[i];
    const LONG left = 2 + item.depth * kStep;
    (item.folder ? drawFolder : drawSheet)(dc, left, y);
    RECT words = {left + kPicture + 4, y, right.left, y + kRow};
    const RECT ground = {words.left - 2, y, right.left, y + kRow};
    if (selected_[i]) FillRect(dc, &ground, GetSysColorBrush(COLOR_HIGHLIGHT));
    SetTextColor(dc, GetSysColor(selected_[i] ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    DrawTextA(dc, item.name.c_str(), -1, &words, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    if (i == current_ && hasFocus()) DrawFocusRect(dc, &ground);
  }
  if (right.left < right.right) drawStrip(dc, right);
}

void ItemList::drawStrip(HDC dc, const RECT &strip) const {
  FillRect(dc, &strip, GetSysColorBrush(COLOR_3DLIGHT));
  RECT up = {strip.left, 0, strip.right, kStrip}, down = {strip.left, strip.bottom - kStrip, strip.right, strip.bottom};
  DrawFrameControl(dc, &up, DFC_SCROLL, DFCS_SCROLLUP);
  DrawFrameControl(dc, &down, DFC_SCROLL, DFCS_SCROLLDOWN);
  RECT handle = thumb();
  DrawEdge(dc, &handle, EDGE_RAISED, BF_RECT | BF_MIDDLE);
}

} // namespace platform
