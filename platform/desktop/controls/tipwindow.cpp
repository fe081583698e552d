// The tip of a tooltip control: its times, its text, its place, its look.

#include "platform/desktop/controls/tooltip.h"
#include "platform/desktop/guards.h"
#include "platform/desktop/messages/devices.h"
#include "platform/desktop/messages/input.h"
#include "platform/kernel/codepage.h"

#include <algorithm>
#include <cstring>

namespace platform {

namespace {

constexpr size_t kLongest = 1023; // bytes of a text
constexpr UINT kLeaveTime = 100;  // between two checks whether the pointer has left
constexpr LONG kPadding = 2;      // round the text
constexpr LONG kFrame = 1;
constexpr LONG kBelow = 19;   // from the pointer's hot spot to the tip, below the arrow
constexpr LONG kDistance = 1; // from a tool to a tip centered on it
constexpr UINT kSamePlace = SWP_NOMOVE | SWP_NOSIZE;

bool isNumber(LPCSTR text) { return reinterpret_cast<uintptr_t>(text) <= 0xFFFF; }

// The part of a text that fits a tip.
std::string cut(std::string_view text) {
  if (text.size() <= kLongest) return std::string(text);
  char room[kLongest + 1];
  copyWhole(text, room, sizeof room);
  return room;
}

std::string loadString(HINSTANCE instance, LPCSTR number) {
  char text[kLongest + 1];
  const auto id = static_cast<UINT>(reinterpret_cast<uintptr_t>(number));
  return LoadStringA(instance, id, text, sizeof text) > 0 ? text : "";
}

std::string answered(const NMTTDISPINFOA &info) {
  if (!info.lpszText || info.lpszText == LPSTR_TEXTCALLBACKA) return {};
  if (isNumber(info.lpszText)) return loadString(info.hinst, info.lpszText);
  if (info.lpszText != info.szText) return cut(info.lpszText);
  return {info.szText, strnlen(info.szText, sizeof info.szText)};
}

// The area for windows: the primary screen without its panels, or all screens for a point on another screen.
RECT areaAt(POINT point) {
  const ScreenInfo info = theScreen().info();
  const RECT primary = {0, 0, info.size.cx, info.size.cy};
  return contains(primary, point) ? info.workArea : info.all;
}

LONG within(LONG at, LONG length, LONG from, LONG to) { return std::max(from, std::min(at, to - length)); }

void drawRing(HDC dc, const RECT &rect, HBRUSH brush) {
  const RECT sides[] = {{rect.left, rect.top, rect.right, rect.top + kFrame},
                        {rect.left, rect.bottom - kFrame, rect.right, rect.bottom},
                        {rect.left, rect.top, rect.left + kFrame, rect.bottom},
                        {rect.right - kFrame, rect.top, rect.right, rect.bottom}};
  for (const RECT &side : sides) FillRect(dc, &side, brush);
}

} // namespace

// ---- Times

// Waits for the pointer to rest, unless a button is held.
// since: a time of GetTickCount.
void Tooltip::waitFor(int delay, DWORD since) {
  if (!active_ || mouseFlags(currentQueue()->keys) & (MK_LBUTTON | MK_RBUTTON | MK_MBUTTON)) return;
  restsSince_ = since;
  if (std::exchange(waiting_, delay) != delay) SetTimer(handle_, kShow, static_cast<UINT>(delay), nullptr);
}

void Tooltip::relayed(const MSG &message) {
  if (message.message != WM_MOUSEMOVE) {
    if (message.message < WM_LBUTTONDOWN || message.message > WM_MBUTTONUP) return;
    waiting_ = -1;
    if (!tracking_) pop();
    return;
  }
  if (tracking_) return;
  Tool *tool = tools_.under(message.hwnd, {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)});
  if (tool && tool->flags & TTF_TRACK) tool = nullptr;
  if (tool != hovered_.get())
    hover(tool ? tool->shared_from_this() : nullptr);
  else if (shown_)
    SetTimer(handle_, kPop, static_cast<UINT>(delays_.autopop), nullptr);
  else if (tool) // a program may relay messages without a time
    waitFor(delays_.initial, message.time == currentQueue()->messageTime ? message.time : GetTickCount());
}

// The pointer has moved to another tool, or to no tool.
void Tooltip::hover(const ToolRef &tool) {
  const bool fromTool = hovered_ != nullptr;
  hovered_ = tool;
  waiting_ = -1;
  if (!tool) KillTimer(handle_, kLeave);
  pop();
  if (tool && !gone_ && hovered_ == tool) waitFor(fromTool ? delays_.reshow : delays_.initial, GetTickCount());
}

void Tooltip::tick(WPARAM timer) {
  switch (timer) {
  case kShow: return rested();
  case kPop: return pop();
  case kLeave: return look();
  default: return;
  }
}

// The delay has passed, but the pointer may have moved meanwhile.
void Tooltip::rested() {
  const auto rests = static_cast<int>(GetTickCount() - restsSince_);
  constexpr int kClock = 1; // timers and GetTickCount count in different steps
  if (rests + kClock < waiting_) {
    SetTimer(handle_, kShow, static_cast<UINT>(waiting_ - rests), nullptr);
    return;
  }
  KillTimer(handle_, kShow);
  if (std::exchange(waiting_, -1) < 0 || tracking_) return;
  const ToolRef tool = underPointer();
  if (gone_) return;
  if (tool != hovered_) {
    hovered_ = tool;
    return;
  }
  if (!tool || !active_ || !ownerIsActive(*tool) || !show(tool)) return;
  SetTimer(handle_, kPop, static_cast<UINT>(delays_.autopop), nullptr);
  SetTimer(handle_, kLeave, kLeaveTime, nullptr);
}

// Checks whether the pointer has left: the tool's window may have got no message.
void Tooltip::look() {
  if (tracking_ || !hovered_) {
    KillTimer(handle_, kLeave);
    return;
  }
  const ToolRef tool = underPointer();
  if (!gone_ && tool != hovered_) hover(tool);
}

ToolRef Tooltip::underPointer() {
  POINT at;
  GetCursorPos(&at);
  if (pointerIsElsewhere()) return nullptr;
  const LRESULT under = send(windowOrNone(handle_), TTM_WINDOWFROMPOINT, 0, addressOf(at));
  const WindowRef window = windowOrNone(reinterpret_cast<HWND>(under));
  if (gone_ || !window) return nullptr;
  const POINT origin = clientOrigin(*window);
  Tool *const tool = tools_.under(window->handle, {at.x - origin.x, at.y - origin.y});
  return tool && !(tool->flags & TTF_TRACK) ? tool->shared_from_this() : nullptr;
}

bool Tooltip::ownerIsActive(const Tool &tool) const {
  const Window *const self = recordOf(handle_);
  if (!self || self->is(TTS_ALWAYSTIP)) return self;
  const Window *const base = self->owner ? self->owner : recordOf(tool.window);
  return base && isActive(rootOf(*base));
}

void Tooltip::activate(bool active) {
  active_ = active;
  if (active) return;
  waiting_ = -1;
  pop();
}

void Tooltip::track(bool on, const ToolRef &tool) {
  if (!on && !tracking_) return;
  pop();
  if (!on || !tool || gone_ || tool->removed) return;
  hovered_ = nullptr;
  waiting_ = -1;
  tracking_ = true;
  if (!show(tool)) tracking_ = false;
}

// ---- The text

std::string Tooltip::askText(const ToolRef &tool) {
  NMTTDISPINFOA info{};
  info.hdr = {handle_, tool->id, TTN_NEEDTEXTA};
  info.lpszText = info.szText;
  info.uFlags = tool->flags;
  info.lParam = tool->data;
  send(windowOrNone(tool->window), WM_NOTIFY, tool->id, addressOf(info));
  std::string text = answered(info);
  if (info.uFlags & TTF_DI_SETITEM) tool->text = {nullptr, info.hinst, text, true};
  return text;
}

std::string Tooltip::textOf(const ToolRef &tool) {
  const TipText &kept = tool->text;
  std::string text = kept.where == LPSTR_TEXTCALLBACKA ? askText(tool)
                     : kept.where                      ? loadString(kept.instance, kept.where)
                                                       : cut(kept.own);
  const Window *const self = recordOf(handle_);
  if (self && !(self->style & TTS_NOPREFIX)) text.resize(std::min(text.size(), text.find('\t')));
  return text;
}

// A text without the marks of prefixes.
std::string Tooltip::shownText(const std::string &text) const {
  const Window *const self = recordOf(handle_);
  if (!self || self->style & TTS_NOPREFIX) return text;
  std::string shown;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '&' && ++i == text.size()) break;
    shown += text[i];
  }
  return shown;
}

void Tooltip::notify(const Tool &tool, UINT code) const {
  NMHDR header = {handle_, tool.id, code};
  send(windowOrNone(tool.window), WM_NOTIFY, tool.id, addressOf(header));
}

// ---- The place

UINT Tooltip::textFormat() const {
  return DT_NOPREFIX | (widest_ < 0 ? DT_SINGLELINE : DT_WORDBREAK | DT_EXTERNALLEADING);
}

// The widths of frame, padding and margin.
RECT Tooltip::border() const {
  constexpr LONG kAround = kFrame + kPadding;
  return {margin_.left + kAround, margin_.top + kAround, margin_.right + kAround, margin_.bottom + kAround};
}

SIZE Tooltip::sizeFor(const std::string &text) const {
  RECT rect = {0, 0, std::max(widest_, 0), 0};
  const HDC dc = GetDC(handle_);
  SelectObject(dc, font());
  DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &rect, textFormat() | DT_CALCRECT);
  ReleaseDC(handle_, dc);
  const RECT around = border(), area = theScreen().info().workArea;
  return {std::min(rect.right + around.left + around.right, area.right - area.left),
          std::min(rect.bottom + around.top + around.bottom, area.bottom - area.top)};
}

POINT Tooltip::placeFor(const Tool &tool, SIZE size) const {
  const bool tracked = tracking_ && tool.flags & TTF_TRACK, centered = tool.flags & TTF_CENTERTIP;
  POINT point = cursorPosition(), at;
  RECT avoided = {point.x, point.y, point.x, point.y + kBelow};
  if (tracked) {
    point = trackAt_;
    at = centered ? POINT{point.x - size.cx / 2, point.y - size.cy / 2} : POINT{point.x - 1, point.y - 1};
  } else {
    at = {point.x - 1, avoided.bottom};
    const Window *const place = recordOf(tool.place());
    if (centered && place) {
      const POINT origin = clientOrigin(*place);
      avoided = tool.isWhole() ? screenRect(*place) : offset(tool.rect, origin.x, origin.y);
      avoided = {avoided.left, avoided.top - kDistance, avoided.right, avoided.bottom + kDistance};
      at = {(avoided.left + avoided.right) / 2 - size.cx / 2, avoided.bottom};
    }
  }
  const RECT area = areaAt(point);
  if (!tracked && at.y + size.cy > area.bottom) at.y = avoided.top - size.cy;
  return {within(at.x, size.cx, area.left, area.right), within(at.y, size.cy, area.top, area.bottom)};
}

// ---- The window

bool Tooltip::isUp() const {
  const Window *const self = recordOf(handle_);
  return self && self->is(WS_VISIBLE);
}

// Shows a tip, or updates a visible one.
// Result: whether the tip is visible.
bool Tooltip::show(const ToolRef &tool) {
  std::string text = shownText(textOf(tool));
  if (gone_ || tool->removed) return false;
  if (text.empty()) {
    if (shown_ == tool) pop();
    return false;
  }
  text_ = std::move(text);
  const SIZE size = sizeFor(text_);
  const POINT at = placeFor(*tool, size);
  shown_ = tool;
  const auto isMeant = [&] { return !gone_ && shown_ == tool; };
  const OnThrow stays([&] {
    if (isMeant() && !isUp()) shown_ = nullptr;
  });
  SetWindowPos(handle_, HWND_TOPMOST, at.x, at.y, size.cx, size.cy, SWP_NOACTIVATE);
  if (isMeant()) notify(*tool, TTN_SHOW);
  if (isMeant() && !isUp()) ShowWindow(handle_, SW_SHOWNA);
  if (!isMeant()) return false;
  InvalidateRect(handle_, nullptr, FALSE);
  UpdateWindow(handle_);
  return isMeant();
}

void Tooltip::showAgain(const ToolRef &tool) {
  if (tool && tool == shown_) show(tool);
}

void Tooltip::pop() {
  const ToolRef tool = shown_;
  if (!tool) return;
  KillTimer(handle_, kPop);
  notify(*tool, TTN_POP);
  if (gone_ || shown_ != tool) return;
  shown_ = nullptr;
  tracking_ = false;
  ShowWindow(handle_, SW_HIDE);
}

HFONT Tooltip::font() const { return font_ ? font_ : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)); }

void Tooltip::paint() const {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(handle_, &paint);
  if (!dc) return;
  RECT rect;
  GetClientRect(handle_, &rect);
  const HBRUSH ground = CreateSolidBrush(background_);
  FillRect(dc, &rect, ground);
  DeleteObject(ground);
  drawRing(dc, rect, GetSysColorBrush(COLOR_WINDOWFRAME));
  const RECT around = border();
  rect = {rect.left + around.left, rect.top + around.top, rect.right - around.right, rect.bottom - around.bottom};
  SelectObject(dc, font());
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, foreground_);
  DrawTextA(dc, text_.c_str(), static_cast<int>(text_.size()), &rect, textFormat());
  EndPaint(handle_, &paint);
}

} // namespace platform
