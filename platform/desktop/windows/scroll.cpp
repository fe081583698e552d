// The scroll bars of windows: values, look, and the loop that follows a press.

#include "platform/desktop/windows/scroll.h"

#include "platform/desktop/guards.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/messages/input.h"
#include "platform/desktop/windows/contexts.h"
#include "platform/desktop/windows/placing.h"

#include <algorithm>

namespace platform {

namespace {

constexpr LONG kShortestThumb = 8;
constexpr LONG kBetweenArrows = 4; // pixels between them in a bar that is too short
constexpr UINT_PTR kRepeat = 0x7FFE5C01;
constexpr UINT kFirstRepeat = 200, kNextRepeat = 50; // milliseconds
constexpr LONG kAside = 8, kBeyond = 2; // how far the pointer may leave a bar with its thumb, in widths of the bar

constexpr DWORD kStyles[] = {WS_HSCROLL, WS_VSCROLL};
bool isBar(int bar) { return bar == SB_HORZ || bar == SB_VERT; }

LONG widthOf(int bar) { return GetSystemMetrics(bar == SB_VERT ? SM_CXVSCROLL : SM_CYHSCROLL); }

// value * by / of, rounded to the nearest.
int64_t scaled(int64_t value, int64_t by, int64_t of) { return (value * by + of / 2) / of; }

ScrollBars &barsOf(Window &window) {
  if (!window.scroll) window.scroll = std::make_unique<ScrollBars>();
  return *window.scroll;
}

// Null if the window never had a scroll bar.
ScrollBar *barOf(Window &window, int bar) {
  if (!isBar(bar) || (!window.scroll && !(window.style & (WS_HSCROLL | WS_VSCROLL)))) return nullptr;
  return &barsOf(window).bars[bar];
}

LONG along(int bar, POINT point) { return bar == SB_VERT ? point.y : point.x; }

// ---- The look

LONG lengthOf(const RECT &rect, int bar) { return bar == SB_VERT ? rect.bottom - rect.top : rect.right - rect.left; }

BarLook lookOf(Window &window, int bar) {
  const ScrollBars &all = barsOf(window);
  const ScrollBar &values = all.bars[bar];
  BarLook look;
  look.length = lengthOf(barRect(window, bar), bar);
  look.arrow = std::min(widthOf(bar), std::max<LONG>(look.length - kBetweenArrows, 0) / 2);
  look.disabled = values.disabled;
  const bool isHeld = all.held == bar;
  if (isHeld && all.inside) look.pressed = all.part;
  const LONG track = look.length - 2 * look.arrow;
  if (look.arrow < widthOf(bar) || values.disabled == ESB_DISABLE_BOTH || values.min == values.max) return look;
  const int64_t range = int64_t{values.max} - values.min + 1;
  LONG thumb = widthOf(bar);
  if (values.page) thumb = std::max(kShortestThumb, static_cast<LONG>(int64_t{track} * values.page / range));
  if (thumb >= track) return look;
  look.thumbLength = thumb;
  look.thumb = look.arrow;
  const int64_t last = values.last();
  if (last > values.min)
    look.thumb += static_cast<LONG>(scaled(track - thumb, int64_t{values.pos} - values.min, last - values.min));
  if (isHeld && all.part == BarPart::thumb) look.thumb = all.thumb;
  return look;
}

// The part of a bar between two places along it.
RECT slice(const RECT &rect, int bar, LONG from, LONG to) {
  if (bar == SB_VERT) return {rect.left, rect.top + from, rect.right, rect.top + to};
  return {rect.left + from, rect.top, rect.left + to, rect.bottom};
}

void drawArrow(HDC dc, RECT rect, UINT shape, bool disabled, bool pressed) {
  if (rect.left >= rect.right || rect.top >= rect.bottom) return;
  if (disabled) shape |= DFCS_INACTIVE;
  if (pressed) shape |= DFCS_PUSHED | DFCS_FLAT;
  DrawFrameControl(dc, &rect, DFC_SCROLL, shape);
}

// rect: in coordinates of the window.
void drawBar(const OpenDc &open, const RECT &rect, int bar, const BarLook &look) {
  const bool vertical = bar == SB_VERT;
  const LONG end = look.length - look.arrow;
  drawArrow(open.handle(), slice(rect, bar, 0, look.arrow), vertical ? DFCS_SCROLLUP : DFCS_SCROLLLEFT,
            look.disabled & ESB_DISABLE_UP, look.pressed == BarPart::lineBack);
  drawArrow(open.handle(), slice(rect, bar, end, look.length), vertical ? DFCS_SCROLLDOWN : DFCS_SCROLLRIGHT,
            look.disabled & ESB_DISABLE_DOWN, look.pressed == BarPart::lineOn);
  const COLORREF face = GetSysColor(COLOR_SCROLLBAR), light = GetSysColor(COLOR_BTNHIGHLIGHT);
  const auto ground = [&](LONG from, LONG to, bool pressed) {
    if (from < to)
      fillMixed(open.dc(), slice(rect, bar, from, to), pressed ? GetSysColor(COLOR_3DDKSHADOW) : light, face);
  };
  if (!look.thumbLength) {
    ground(look.arrow, end, false);
    return;
  }
  ground(look.arrow, look.thumb, look.pressed == BarPart::pageBack);
  ground(look.thumb + look.thumbLength, end, look.pressed == BarPart::pageOn);
  RECT thumb = slice(rect, bar, look.thumb, look.thumb + look.thumbLength);
  DrawEdge(open.handle(), &thumb, EDGE_RAISED, BF_RECT | BF_MIDDLE);
}

RECT inWindow(const Window &window, const RECT &rect) { return offset(rect, -window.rect.left, -window.rect.top); }

// Draws a bar, if its look has changed.
void refreshBar(Window &window, int bar) {
  if (!hasBar(window, bar) || !isOpen(window)) return;
  ScrollBar &values = barsOf(window).bars[bar];
  const BarLook look = lookOf(window, bar);
  if (values.drawn == look) return;
  drawBar(OpenDc(openWholeDc(window)), inWindow(window, barRect(window, bar)), bar, look);
  values.drawn = look;
}

// ---- The numbers

void showBars(const WindowRef &window, DWORD styles, bool show) {
  const DWORD wanted = show ? window->style | styles : window->style & ~styles;
  if (wanted == window->style) return;
  window->style = wanted;
  barsOf(*window);
  setWindowPos(window, {window->handle, nullptr, 0, 0, 0, 0,
                        SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED});
}

void settle(ScrollBar &bar) {
  const int64_t range = int64_t{bar.max} - bar.min + 1;
  bar.page = static_cast<int>(std::clamp<int64_t>(bar.page, 0, std::min<int64_t>(range, INT32_MAX)));
  bar.pos = std::clamp(bar.pos, bar.min, bar.last());
}

int setInfo(const WindowRef &window, int which, const SCROLLINFO &info, bool redraw) {
  ScrollBar &bar = barsOf(*window).bars[which];
  const ScrollBar before = bar;
  if (info.fMask & SIF_PAGE) bar.page = static_cast<int>(std::min<UINT>(info.nPage, INT32_MAX));
  if (info.fMask & SIF_POS) bar.pos = info.nPos;
  if (info.fMask & SIF_RANGE) {
    const bool ordered = info.nMin <= info.nMax;
    bar.min = ordered ? info.nMin : 0;
    bar.max = ordered ? info.nMax : 0;
  }
  settle(bar);
  const int pos = bar.pos;
  const bool changed = bar.min != before.min || bar.max != before.max || bar.page != before.page;
  if (info.fMask & (SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL)) {
    const bool scrolls = bar.min < bar.last();
    if (!scrolls && info.fMask & SIF_DISABLENOSCROLL)
      bar.disabled = ESB_DISABLE_BOTH;
    else if (scrolls && info.fMask != SIF_PAGE) // a page alone shows no bar
      bar.disabled = ESB_ENABLE_BOTH;
    const bool hides = !scrolls && !(info.fMask & SIF_DISABLENOSCROLL);
    const bool shows = scrolls && info.fMask != SIF_PAGE;
    if (changed && (hides || shows)) showBars(window, kStyles[which], shows);
    if (!window->alive) return pos;
  }
  if (redraw)
    refreshBar(*window, which);
  else
    barsOf(*window).bars[which].drawn.reset();
  return pos;
}

bool enableArrows(Window &window, int which, UINT arrows) {
  ScrollBar *const bar = barOf(window, which);
  if (!bar || bar->disabled == arrows) return false;
  bar->disabled = arrows;
  refreshBar(window, which);
  return true;
}

// ---- The user

// Whether the pointer is near enough to a bar to hold the thumb.
bool isNear(const RECT &rect, int bar, POINT point) {
  const LONG aside = kAside * widthOf(bar), beyond = kBeyond * widthOf(bar);
  const LONG dx = bar == SB_VERT ? aside : beyond, dy = bar == SB_VERT ? beyond : aside;
  return contains({rect.left - dx, rect.top - dy, rect.right + dx, rect.bottom + dy}, point);
}

BarPart partAt(const BarLook &look, LONG at) {
  if (at < look.arrow) return BarPart::lineBack;
  if (at >= look.length - look.arrow) return BarPart::lineOn;
  if (!look.thumbLength) return BarPart::none;
  if (at < look.thumb) return BarPart::pageBack;
  return at < look.thumb + look.thumbLength ? BarPart::thumb : BarPart::pageOn;
}

bool isBlocked(UINT disabled, BarPart part) {
  return disabled == ESB_DISABLE_BOTH || (part == BarPart::lineBack && disabled & ESB_DISABLE_UP) ||
         (part == BarPart::lineOn && disabled & ESB_DISABLE_DOWN);
}

int codeOf(BarPart part) {
  switch (part) {
  case BarPart::lineBack: return SB_LINEUP;
  case BarPart::pageBack: return SB_PAGEUP;
  case BarPart::pageOn: return SB_PAGEDOWN;
  case BarPart::lineOn: return SB_LINEDOWN;
  default: return SB_ENDSCROLL;
  }
}

// A press on a bar, until the release.
class Press {
 public:
  Press(const WindowRef &window, int bar) : window_(window), bar_(bar) {}

  void follow(POINT at);

 private:
  ScrollBars &all() const { return *window_->scroll; }
  RECT onScreen() const {
    const POINT origin = clientOrigin(*window_->parent);
    return offset(barRect(*window_, bar_), origin.x, origin.y);
  }
  LONG placeOf(POINT at) const {
    const RECT rect = onScreen();
    return along(bar_, at) - (bar_ == SB_VERT ? rect.top : rect.left);
  }
  bool goesOn() const { return window_->alive && window_->queue->capture == window_->handle; }
  void tell(int code, int pos = 0) const {
    send(window_, bar_ == SB_VERT ? WM_VSCROLL : WM_HSCROLL, MAKEWPARAM(code, pos), 0);
  }
  void start(POINT at);
  void moveTo(POINT at);
  void holdThumb(LONG place);
  void repeat();
  void leave();
  bool take(const MSG &message);

  const WindowRef window_;
  const int bar_;
  POINT at_{};
  LONG grabbed_ = 0;    // from the thumb's beginning to the pointer
  LONG thumbStart_ = 0; // where the thumb was
  int posStart_ = 0;
};

void Press::start(POINT at) {
  at_ = at;
  const BarLook look = lookOf(*window_, bar_);
  ScrollBars &state = all();
  state.part = partAt(look, placeOf(at));
  state.held = bar_;
  state.inside = true;
  state.thumb = thumbStart_ = look.thumb;
  state.trackPos = posStart_ = state.bars[bar_].pos;
  grabbed_ = placeOf(at) - look.thumb;
  refreshBar(*window_, bar_);
  if (state.part == BarPart::thumb) {
    tell(SB_THUMBTRACK, posStart_);
  } else if (state.part != BarPart::none) {
    tell(codeOf(state.part));
    if (goesOn()) SetTimer(window_->handle, kRepeat, kFirstRepeat, nullptr);
  }
}

// Moves the thumb with the pointer. If the pointer is far away, the thumb goes back to its start.
void Press::holdThumb(LONG place) {
  const ScrollBar &values = all().bars[bar_];
  const BarLook look = lookOf(*window_, bar_);
  const LONG room = look.length - 2 * look.arrow - look.thumbLength;
  int pos = posStart_;
  LONG thumb = thumbStart_;
  if (isNear(onScreen(), bar_, at_) && room > 0) {
    thumb = std::clamp(place - grabbed_, look.arrow, look.arrow + room);
    pos = static_cast<int>(values.min + scaled(thumb - look.arrow, int64_t{values.last()} - values.min, room));
    if (thumb == thumbStart_) pos = posStart_;
  }
  all().thumb = thumb;
  refreshBar(*window_, bar_);
  if (std::exchange(all().trackPos, pos) != pos) tell(SB_THUMBTRACK, pos);
}

void Press::moveTo(POINT at) {
  at_ = at;
  if (all().part == BarPart::thumb) {
    holdThumb(placeOf(at));
    return;
  }
  all().inside = contains(onScreen(), at) && partAt(lookOf(*window_, bar_), placeOf(at)) == all().part;
  refreshBar(*window_, bar_);
}

void Press::repeat() {
  SetTimer(window_->handle, kRepeat, kNextRepeat, nullptr);
  moveTo(at_); // the thumb may have reached the pointer
  if (all().inside) tell(codeOf(all().part));
}

void Press::leave() {
  KillTimer(window_->handle, kRepeat);
  if (!window_->alive) return;
  all().held = -1;
  refreshBar(*window_, bar_);
}

// Result: whether the message was meant for the bar.
bool Press::take(const MSG &message) {
  if (message.hwnd != window_->handle) return false;
  if (message.message == WM_MOUSEMOVE)
    moveTo(message.pt);
  else if (message.message == WM_TIMER && message.wParam == kRepeat)
    repeat();
  else
    return false;
  return true;
}

void Press::follow(POINT at) {
  Queue &queue = *window_->queue;
  setCapture(queue, window_->handle);
  if (!window_->alive) return;
  const OnThrow released([&] {
    if (queue.capture == window_->handle) queue.capture = nullptr;
    leave();
  });
  start(at);
  bool isReleased = false;
  MSG message;
  while (goesOn() && !isReleased) {
    if (GetMessageA(&message, nullptr, 0, 0) <= 0) { // the program's own loop shall get WM_QUIT
      PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    if (!goesOn()) break;
    isReleased = message.message == WM_LBUTTONUP && message.hwnd == window_->handle;
    if (isReleased || take(message)) continue;
    const DesktopUnlock unlocked;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  if (!window_->alive) return;
  if (queue.capture == window_->handle) setCapture(queue, nullptr);
  if (isReleased && window_->alive && all().part == BarPart::thumb) tell(SB_THUMBPOSITION, all().trackPos);
  if (isReleased && window_->alive) tell(SB_ENDSCROLL);
  leave();
}

} // namespace

int ScrollBar::last() const { return static_cast<int>(std::max<int64_t>(min, int64_t{max} - std::max(page - 1, 0))); }

bool hasBar(const Window &window, int bar) {
  if (!(window.style & kStyles[bar]) || window.is(WS_MINIMIZE)) return false;
  const RECT rect = barRect(window, bar);
  return rect.left < rect.right && rect.top < rect.bottom;
}

// A bar stands beside the client area, which a program may have made larger or smaller than usual.
RECT barRect(const Window &window, int bar) {
  const RECT &client = window.client;
  RECT rect = bar == SB_VERT ? RECT{client.right, client.top, client.right + widthOf(bar), client.bottom}
                             : RECT{client.left, client.bottom, client.right, client.bottom + widthOf(bar)};
  return intersected(rect, window.rect);
}

LRESULT hitBars(const Window &window, POINT inParent) {
  const bool below = hasBar(window, SB_HORZ), beside = hasBar(window, SB_VERT);
  if (beside && contains(barRect(window, SB_VERT), inParent)) return HTVSCROLL;
  if (below && contains(barRect(window, SB_HORZ), inParent)) return HTHSCROLL;
  const RECT &client = window.client;
  const RECT corner = {client.right, client.bottom, client.right + widthOf(SB_VERT), client.bottom + widthOf(SB_HORZ)};
  return beside && below && contains(corner, inParent) ? HTGROWBOX : HTNOWHERE;
}

void drawBars(Window &window) {
  if (!(window.style & (WS_HSCROLL | WS_VSCROLL)) || !isOpen(window)) return;
  for (const int bar : {SB_HORZ, SB_VERT}) {
    barsOf(window).bars[bar].drawn.reset();
    refreshBar(window, bar);
  }
  if (!hasBar(window, SB_HORZ) || !hasBar(window, SB_VERT)) return;
  const RECT below = barRect(window, SB_HORZ), beside = barRect(window, SB_VERT);
  const OpenDc open(openWholeDc(window));
  fill(open.dc(), inWindow(window, {beside.left, below.top, beside.right, below.bottom}), GetSysColor(COLOR_BTNFACE));
}

void trackBar(const WindowRef &window, int bar, POINT at) {
  if (!hasBar(*window, bar)) return;
  ScrollBars &all = barsOf(*window);
  if (all.held >= 0) return;
  const POINT origin = clientOrigin(*window->parent);
  const RECT rect = barRect(*window, bar);
  const POINT inParent = {at.x - origin.x, at.y - origin.y};
  const LONG place = along(bar, inParent) - (bar == SB_VERT ? rect.top : rect.left);
  if (!isBlocked(all.bars[bar].disabled, partAt(lookOf(*window, bar), place))) Press(window, bar).follow(at);
}

} // namespace platform

using namespace platform;

namespace {

bool isRecord(const SCROLLINFO *info) {
  return info && (info->cbSize == sizeof *info || info->cbSize == sizeof *info - sizeof info->nTrackPos) &&
         !(info->fMask & ~(SIF_ALL | SIF_DISABLENOSCROLL));
}

} // namespace

int SetScrollInfo(HWND window, int bar, const SCROLLINFO *info, BOOL redraw) {
  return locked<int>(0, [&]() -> int {
    const WindowRef target = windowOf(window);
    if (!target || !target->parent || !isBar(bar) || !isRecord(info)) return 0;
    return onThreadOf<int>(*target, 0, [&] { return setInfo(target, bar, *info, redraw); });
  });
}

BOOL GetScrollInfo(HWND window, int bar, SCROLLINFO *info) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    const ScrollBar *const values = target && isRecord(info) ? barOf(*target, bar) : nullptr;
    if (!values) return FALSE;
    if (info->fMask & SIF_RANGE) info->nMin = values->min, info->nMax = values->max;
    if (info->fMask & SIF_PAGE) info->nPage = static_cast<UINT>(values->page);
    if (info->fMask & SIF_POS) info->nPos = values->pos;
    const ScrollBars &all = *target->scroll;
    const bool isHeld = all.held == bar && all.part == BarPart::thumb;
    if (info->fMask & SIF_TRACKPOS && info->cbSize == sizeof *info)
      info->nTrackPos = isHeld ? all.trackPos : values->pos;
    return TRUE;
  });
}

int SetScrollPos(HWND window, int bar, int position, BOOL redraw) {
  const int before = GetScrollPos(window, bar);
  const SCROLLINFO info = {sizeof info, SIF_POS, 0, 0, 0, position, 0};
  SetScrollInfo(window, bar, &info, redraw);
  return before;
}

int GetScrollPos(HWND window, int bar) {
  SCROLLINFO info = {sizeof info, SIF_POS, 0, 0, 0, 0, 0};
  GetScrollInfo(window, bar, &info);
  return info.nPos;
}

BOOL SetScrollRange(HWND window, int bar, int min, int max, BOOL redraw) {
  const SCROLLINFO info = {sizeof info, SIF_RANGE, min, max, 0, 0, 0};
  SetScrollInfo(window, bar, &info, redraw);
  return TRUE;
}

BOOL GetScrollRange(HWND window, int bar, int *min, int *max) {
  SCROLLINFO info = {sizeof info, SIF_RANGE, 0, 0, 0, 0, 0};
  GetScrollInfo(window, bar, &info);
  if (min) *min = info.nMin;
  if (max) *max = info.nMax;
  return TRUE;
}

BOOL ShowScrollBar(HWND window, int bar, BOOL show) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !target->parent || !(isBar(bar) || bar == SB_BOTH)) return FALSE;
    const DWORD styles = bar == SB_BOTH ? WS_HSCROLL | WS_VSCROLL : kStyles[bar];
    return onThreadOf<BOOL>(*target, FALSE, [&] { return showBars(target, styles, show), TRUE; });
  });
}

BOOL EnableScrollBar(HWND window, UINT bar, UINT arrows) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !target->parent || arrows > ESB_DISABLE_BOTH) return FALSE;
    return onThreadOf<BOOL>(*target, FALSE, [&]() -> BOOL {
      bool changed = false;
      for (const int one : {SB_HORZ, SB_VERT})
        if (bar == SB_BOTH || bar == static_cast<UINT>(one)) changed |= enableArrows(*target, one, arrows);
      return changed;
    });
  });
}
