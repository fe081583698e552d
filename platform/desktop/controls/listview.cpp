// The view of a list box: heights, scrolling, painting.

#include "platform/desktop/controls/listbox.h"
#include "platform/desktop/guards.h"
#include "platform/desktop/windows/scroll.h"

#include <algorithm>
#include <cstring>

namespace platform {

namespace {

template <typename Record> Record &recordAt(LPARAM address) { return *reinterpret_cast<Record *>(address); }

constexpr int kHighest = 255;  // pixels of an item
constexpr int kWheelLines = 3; // for each notch
constexpr int kTextMargin = 1;
constexpr UINT kSamePlace = SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE;

} // namespace

// ---- Heights

HFONT ListBox::font() const { return font_ ? font_ : static_cast<HFONT>(GetStockObject(SYSTEM_FONT)); }

// The height of items follows the font.
void ListBox::setFont(HFONT font) {
  font_ = font;
  const HDC dc = GetDC(handle_);
  if (!dc) return;
  SelectObject(dc, this->font());
  TEXTMETRICA metrics{};
  GetTextMetricsA(dc, &metrics);
  ReleaseDC(handle_, dc);
  if (!isDrawnByOwner() || height_ == 1) height_ = std::clamp<int>(metrics.tmHeight, 1, kHighest);
}

// The height of an item, as the owner answers.
int ListBox::measured(int index) const {
  auto record = recordFor<MEASUREITEMSTRUCT>(index);
  record.itemHeight = static_cast<UINT>(height_);
  if (isThere(index))
    record.itemData = hasStrings() ? reinterpret_cast<ULONG_PTR>(lines_.at(static_cast<size_t>(index))) : dataOf(index);
  ask(WM_MEASUREITEM, record.CtlID, addressOf(record));
  return static_cast<int>(std::clamp<UINT>(record.itemHeight, 1, kHighest));
}

void ListBox::measureAll() {
  setFont(font_);
  if (style_ & LBS_OWNERDRAWFIXED) height_ = measured(-1);
}

int ListBox::heightOf(int index) const { return isVariable() ? heights_[static_cast<size_t>(index)] : height_; }

LRESULT ListBox::setHeight(int index, int height) {
  if (height > kHighest || (isVariable() && !isThere(index))) return LB_ERR;
  height = std::max(height, 1);
  if (isVariable())
    heights_[static_cast<size_t>(index)] = static_cast<uint8_t>(height);
  else
    height_ = height;
  settleBars();
  refreshAll();
  return LB_OKAY;
}

// ---- Scrolling

RECT ListBox::area() const {
  const Window *const self = recordOf(handle_);
  return self ? self->clientArea() : RECT{0, 0, 0, 0};
}

// The number of items that are wholly visible if a given one is at the top.
int ListBox::rowsFrom(int top) const {
  const LONG room = area().bottom;
  if (!isVariable()) return static_cast<int>(room) / height_;
  int rows = 0;
  LONG bottom = 0;
  while (top + rows < count_ && (bottom += heightOf(top + rows)) <= room) ++rows;
  return rows;
}

int ListBox::page() const { return std::max(1, rowsFrom(top_)); }

// The item at the top when the last item is at the bottom.
int ListBox::lastTop() const {
  if (!isVariable()) return std::max(0, count_ - page());
  const LONG room = area().bottom;
  LONG bottom = 0;
  int top = count_;
  while (top > 0 && (bottom += heightOf(top - 1)) <= room) --top;
  return std::max(0, std::min(top, count_ - 1));
}

void ListBox::setTop(int top) {
  top = std::clamp(top, 0, lastTop());
  if (std::exchange(top_, top) == top) return;
  settleBars();
  refreshAll();
}

void ListBox::show(int index) {
  if (index < top_) {
    setTop(index);
    return;
  }
  if (index < top_ + page()) return;
  LONG bottom = heightOf(index);
  int top = index;
  while (top > 0 && bottom + heightOf(top - 1) <= area().bottom) bottom += heightOf(--top);
  setTop(top);
}

void ListBox::setOffset(int offset) {
  offset = std::clamp(offset, 0, std::max(0, extent_ - static_cast<int>(area().right)));
  if (std::exchange(offset_, offset) == offset) return;
  settleBars();
  refreshAll();
}

void ListBox::settleBars() {
  if (!drawn_) return;
  top_ = std::min(top_, lastTop());
  const UINT always = style_ & LBS_DISABLENOSCROLL ? SIF_DISABLENOSCROLL : 0;
  constexpr UINT kNumbers = SIF_RANGE | SIF_PAGE | SIF_POS;
  if (style_ & WS_VSCROLL) {
    const SCROLLINFO rows = {
        sizeof rows, kNumbers | always, 0, std::max(0, count_ - 1), static_cast<UINT>(page()), top_, 0};
    SetScrollInfo(handle_, SB_VERT, &rows, TRUE);
  }
  if (style_ & WS_HSCROLL && !gone_) {
    const auto width = static_cast<UINT>(area().right);
    const SCROLLINFO columns = {sizeof columns, kNumbers | always, 0, std::max(0, extent_ - 1), width, offset_, 0};
    SetScrollInfo(handle_, SB_HORZ, &columns, TRUE);
  }
}

// Without LBS_NOINTEGRALHEIGHT the window shrinks to a whole number of lines.
void ListBox::resized() {
  const LONG part = area().bottom % height_;
  const Window *const self = recordOf(handle_);
  if (self && !(style_ & LBS_NOINTEGRALHEIGHT) && !isVariable() && part && area().bottom > height_) {
    SetWindowPos(handle_, nullptr, 0, 0, static_cast<int>(self->width()), static_cast<int>(self->height() - part),
                 kSamePlace);
    return; // the new size calls this function again
  }
  offset_ = std::clamp(offset_, 0, std::max(0, extent_ - static_cast<int>(area().right)));
  settleBars();
  refreshAll();
}

void ListBox::scrolled(int code, int bar) {
  SCROLLINFO info = {sizeof info, SIF_TRACKPOS, 0, 0, 0, 0, 0};
  GetScrollInfo(handle_, bar, &info);
  const bool down = bar == SB_VERT;
  const int from = down ? top_ : offset_, leap = down ? page() : static_cast<int>(area().right);
  const auto go = [&](int to) { down ? setTop(to) : setOffset(to); };
  switch (code) {
  case SB_LINEUP: return go(from - 1);
  case SB_LINEDOWN: return go(from + 1);
  case SB_PAGEUP: return go(from - leap);
  case SB_PAGEDOWN: return go(from + leap);
  case SB_THUMBTRACK:
  case SB_THUMBPOSITION: return go(info.nTrackPos);
  case SB_TOP: return go(0);
  case SB_BOTTOM: return go(down ? count_ : extent_);
  default: return;
  }
}

void ListBox::wheel(int delta) {
  turned_ += delta * kWheelLines;
  const int lines = turned_ / WHEEL_DELTA;
  turned_ -= lines * WHEEL_DELTA;
  setTop(top_ - lines);
}

// ---- Places

RECT ListBox::rowOf(int index) const {
  const RECT all = area();
  LONG y = 0;
  if (!isVariable())
    y = static_cast<LONG>(std::clamp<int64_t>((int64_t{index} - top_) * height_, -(1 << 28), 1 << 28));
  else if (index >= top_)
    for (int i = top_; i < index; ++i) y += heightOf(i);
  else
    for (int i = index; i < top_; ++i) y -= heightOf(i);
  return {0, y, std::max<LONG>(all.right, extent_), y + heightOf(index)};
}

LRESULT ListBox::itemRect(int index, RECT &rect) const {
  if (!isThere(index)) return LB_ERR;
  rect = rowOf(index);
  return rect.bottom > 0 && rect.top < area().bottom;
}

// The item at a height of the window; the number of items below the last one.
int ListBox::rowAt(LONG y) const {
  int index = top_;
  for (LONG bottom = 0; index < count_ && (bottom += heightOf(index)) <= y;) ++index;
  return index;
}

LRESULT ListBox::itemAt(POINT point) const {
  const RECT all = area();
  const int index = rowAt(std::clamp<LONG>(point.y, 0, std::max<LONG>(all.bottom - 1, 0)));
  const bool outside = !contains(all, point) || index >= count_;
  return MAKELONG(std::clamp(index, 0, std::max(count_ - 1, 0)), outside);
}

// ---- Painting

// Draws the visible part of an item at once.
void ListBox::refreshItem(int index, UINT action) {
  if (!isThere(index) || !drawn_ || index < top_ || gone_) return;
  const RECT row = rowOf(index);
  const Window *const self = recordOf(handle_);
  if (!self || !isVisible(*self) || row.top >= area().bottom) return;
  if (!self->update.isEmpty()) { // pending paint covers the item
    InvalidateRect(handle_, &row, TRUE);
    return;
  }
  const HDC dc = GetDC(handle_);
  const OnThrow released([&] { ReleaseDC(handle_, dc); });
  SelectObject(dc, font());
  drawItem(dc, index, action, ground(dc));
  ReleaseDC(handle_, dc);
}

void ListBox::refreshFrom(int index) {
  if (!drawn_ || gone_ || !isThere(index)) return;
  RECT below = area();
  below.top = std::max<LONG>(0, rowOf(index).top);
  if (below.top < below.bottom) InvalidateRect(handle_, &below, TRUE);
}

void ListBox::refreshAll() {
  if (drawn_ && !gone_) InvalidateRect(handle_, nullptr, TRUE);
}

// The background brush. The parent may choose another brush and set the context's colours.
HBRUSH ListBox::ground(HDC dc) const {
  SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
  SetBkColor(dc, GetSysColor(COLOR_WINDOW));
  const LRESULT brush = ask(WM_CTLCOLORLISTBOX, reinterpret_cast<WPARAM>(dc), lParamOf(handle_));
  return brush ? reinterpret_cast<HBRUSH>(brush) : GetSysColorBrush(COLOR_WINDOW);
}

void ListBox::drawItem(HDC dc, int index, UINT action, HBRUSH brush) const {
  const Window *const self = recordOf(handle_);
  if (!self || !isThere(index)) return;
  const bool selected = isSelected(index) && !(style_ & LBS_NOSEL), focused = hasFocus_ && index == caret_;
  const bool disabled = self->is(WS_DISABLED);
  RECT row = offset(rowOf(index), -offset_, 0);
  row.right = std::max(row.right, area().right);
  if (isDrawnByOwner()) {
    auto record = recordFor<DRAWITEMSTRUCT>(index);
    record.itemAction = action;
    record.itemState = (selected ? ODS_SELECTED : 0u) | (focused ? ODS_FOCUS : 0u) | (disabled ? ODS_DISABLED : 0u);
    record.hwndItem = handle_;
    record.hDC = dc;
    record.rcItem = row;
    record.itemData = dataOf(index);
    ask(WM_DRAWITEM, record.CtlID, addressOf(record));
    return;
  }
  const COLORREF before = GetTextColor(dc);
  FillRect(dc, &row, selected ? GetSysColorBrush(COLOR_HIGHLIGHT) : brush);
  if (selected)
    SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
  else if (disabled)
    SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
  SetBkMode(dc, TRANSPARENT);
  const char *const text = lines_.at(static_cast<size_t>(index));
  TextOutA(dc, static_cast<int>(row.left) + kTextMargin, static_cast<int>(row.top), text,
           static_cast<int>(std::strlen(text)));
  if (focused) DrawFocusRect(dc, &row);
  SetTextColor(dc, before);
}

void ListBox::paint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(handle_, &paint);
  if (!dc) return;
  const OnThrow ended([&] { EndPaint(handle_, &paint); });
  if (drawn_) {
    SelectObject(dc, font());
    const HBRUSH brush = ground(dc);
    LONG y = 0;
    for (int index = top_; index < count_ && y < paint.rcPaint.bottom && !gone_; ++index) {
      const LONG bottom = y + heightOf(index);
      if (bottom > paint.rcPaint.top) drawItem(dc, index, ODA_DRAWENTIRE, brush);
      y = bottom;
    }
    const RECT rest = {0, y, area().right, area().bottom};
    if (!gone_ && rest.top < rest.bottom) FillRect(dc, &rest, brush);
  }
  EndPaint(handle_, &paint);
}

std::optional<LRESULT> ListBox::answerView(UINT message, WPARAM wParam, LPARAM lParam) {
  const int index = static_cast<int>(wParam);
  switch (message) {
  case WM_CREATE: measureAll(), settleBars(); return 0;
  case WM_SIZE: resized(); return 0;
  case WM_ERASEBKGND: return TRUE; // paint() fills the whole area
  case WM_PAINT: paint(); return 0;
  case WM_SETREDRAW:
    drawn_ = wParam;
    settleBars();
    refreshAll();
    return 0;
  case WM_GETFONT: return reinterpret_cast<LRESULT>(font_);
  case WM_SETFONT:
    setFont(reinterpret_cast<HFONT>(wParam));
    resized();
    return 0;
  case WM_ENABLE: refreshAll(); return 0;
  case WM_VSCROLL: scrolled(LOWORD(wParam), SB_VERT); return 0;
  case WM_HSCROLL: scrolled(LOWORD(wParam), SB_HORZ); return 0;
  case WM_MOUSEWHEEL: wheel(static_cast<short>(HIWORD(wParam))); return 0;
  case LB_GETTOPINDEX: return top_;
  case LB_SETTOPINDEX:
    if (index < -1 || index >= count_) return LB_ERR;
    setTop(index);
    return LB_OKAY;
  case LB_GETITEMRECT: return lParam ? itemRect(index, recordAt<RECT>(lParam)) : LB_ERR;
  case LB_ITEMFROMPOINT: return itemAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
  case LB_GETITEMHEIGHT: return isVariable() && !isThere(index) ? LB_ERR : heightOf(index);
  case LB_SETITEMHEIGHT: return setHeight(index, static_cast<int>(lParam));
  case LB_GETHORIZONTALEXTENT: return extent_;
  case LB_SETHORIZONTALEXTENT:
    extent_ = std::max(index, 0);
    resized();
    return LB_OKAY;
  default: return std::nullopt;
  }
}

} // namespace platform
