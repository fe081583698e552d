// Visibility and state: ShowWindow, and the data for restoring windows.

#include "platform/desktop/windows/states.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/windows/focus.h"
#include "platform/desktop/windows/placing.h"

#include <optional>

namespace platform {

namespace {

constexpr POINT kMinimizedPlace = {-32000, -32000}; // outside of every screen
constexpr SIZE kMinimizedSize = {160, 24};
constexpr UINT kSamePlace = SWP_NOSIZE | SWP_NOMOVE;
constexpr UINT kInBackground = SWP_NOACTIVATE | SWP_NOZORDER;

bool isMinimizing(int command) {
  return command == SW_MINIMIZE || command == SW_SHOWMINIMIZED || command == SW_SHOWMINNOACTIVE;
}

RECT rectAt(POINT corner, SIZE size) { return {corner.x, corner.y, corner.x + size.cx, corner.y + size.cy}; }

RECT maximizedPlace(const WindowRef &window) {
  const MINMAXINFO limits = sizeLimits(window);
  return rectAt(limits.ptMaxPosition, {limits.ptMaxSize.x, limits.ptMaxSize.y});
}

// The change that a command makes.
struct Change {
  UINT flags = 0; // for the window's place
  RECT place{};
};

// Changes between minimized, maximized and normal.
Change changeState(const WindowRef &window, int command) {
  const bool wasMinimized = window->is(WS_MINIMIZE);
  if (wasMinimized) {
    if (isMinimizing(command)) return {kSamePlace, window->rect};
    if (!send(window, WM_QUERYOPEN)) return {kSamePlace | SWP_NOACTIVATE, {}};
  } else if (!window->is(WS_MAXIMIZE)) {
    window->normal = window->rect;
  }
  Change change{kStateChanged | SWP_FRAMECHANGED | (wasMinimized ? SWP_NOCOPYBITS : 0u), {}};
  if (isMinimizing(command)) {
    window->restoreMaximized = window->is(WS_MAXIMIZE);
    window->style = (window->style & ~WS_MAXIMIZE) | WS_MINIMIZE;
    change.place = rectAt(kMinimizedPlace, kMinimizedSize);
    change.flags |= SWP_NOCOPYBITS;
    return change;
  }
  if (command == SW_SHOWNOACTIVATE) window->restoreMaximized = false;
  const bool maximizes = command == SW_SHOWMAXIMIZED || (wasMinimized && window->restoreMaximized);
  change.place = maximizes ? maximizedPlace(window) : window->normal;
  window->style &= ~(WS_MINIMIZE | WS_MAXIMIZE);
  if (maximizes) window->style |= WS_MAXIMIZE;
  return change;
}

// Result: nothing if the command changes nothing.
std::optional<Change> changeFor(const WindowRef &window, int command) {
  const bool visible = window->is(WS_VISIBLE), child = window->isChild();
  const bool usual = !(window->style & (WS_MINIMIZE | WS_MAXIMIZE));
  Change change;
  switch (command) {
  case SW_HIDE:
    if (!visible) return std::nullopt;
    return Change{SWP_HIDEWINDOW | kSamePlace | (child ? kInBackground : 0u), {}};
  case SW_SHOW:
  case SW_SHOWNA:
    if (command == SW_SHOW && visible) return std::nullopt;
    change.flags = SWP_SHOWWINDOW | kSamePlace | (command == SW_SHOWNA ? SWP_NOACTIVATE : 0u);
    if (child) change.flags |= kInBackground;
    return change;
  case SW_SHOWMAXIMIZED:
    if (visible && window->is(WS_MAXIMIZE)) return std::nullopt;
    change = changeState(window, command);
    break;
  case SW_MINIMIZE:
  case SW_SHOWMINIMIZED:
  case SW_SHOWMINNOACTIVE:
    if (visible && window->is(WS_MINIMIZE)) return std::nullopt;
    change = changeState(window, command);
    if (command != SW_SHOWMINIMIZED) change.flags |= kInBackground;
    change.flags |= SWP_SHOWWINDOW | SWP_FRAMECHANGED;
    return change;
  default: // restores the previous state, or shows the window as it is
    if (usual && visible) return std::nullopt;
    change = usual ? Change{kSamePlace | (child ? kInBackground : 0u), {}} : changeState(window, command);
    if (command == SW_SHOWNOACTIVATE) change.flags |= kInBackground;
  }
  if (!visible) change.flags |= SWP_SHOWWINDOW;
  return change;
}

// Takes the focus from a window and the windows in it.
void leaveFocus(const WindowRef &window) {
  const WindowRef focus = windowOrNone(window->queue->focus);
  if (focus && (focus == window || isDescendant(*focus, *window))) setFocus(nullptr);
}

// The first showing sends the messages that creation left out.
void tellSize(const WindowRef &window) {
  if (!window->alive || !window->needsSize) return;
  window->needsSize = false;
  const RECT area = window->clientArea();
  send(window, WM_SIZE, sizeKind(*window), lParamOf(area.right, area.bottom));
  send(window, WM_MOVE, 0, lParamOf(window->client.left, window->client.top));
}

void moveOn(const WindowRef &window) {
  if (isActive(*window)) activateAnother(*window);
  if (window->alive && isFocus(*window)) setFocus(window->isChild() ? refOf(window->parent) : nullptr);
}

void placeAs(const WindowRef &window, const Change &change) {
  const RECT &place = change.place;
  setWindowPos(window,
               {nullptr, HWND_TOP, static_cast<int>(place.left), static_cast<int>(place.top),
                static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top), change.flags});
}

} // namespace

bool showWindow(const WindowRef &window, int command) {
  if (command == SW_SHOWDEFAULT || command == SW_RESTORE) command = SW_SHOWNORMAL;
  const bool wasVisible = window->is(WS_VISIBLE), wasMinimized = window->is(WS_MINIMIZE), shows = command != SW_HIDE;
  if (isMinimizing(command) && !(wasVisible && wasMinimized)) leaveFocus(window);
  const std::optional<Change> change = changeFor(window, command);
  if (!change || !window->alive) return wasVisible;

  if ((shows != wasVisible || command == SW_SHOWNA) && !(change->flags & kStateChanged)) {
    send(window, WM_SHOWWINDOW, shows);
    if (!window->alive) return wasVisible;
  }
  if (window->parent && !isVisible(*window->parent) && !(change->flags & kStateChanged))
    window->style = shows ? window->style | WS_VISIBLE : window->style & ~WS_VISIBLE;
  else
    placeAs(window, *change);
  if (!window->alive) return wasVisible;
  if (!shows) {
    moveOn(window);
    return wasVisible;
  }
  tellSize(window);
  if (!window->alive || !wasMinimized) return wasVisible;
  setFocus(window); // leaves the minimized state, or is shown for the first time
  if (window->alive && window->isTopLevel() && !(change->flags & SWP_NOACTIVATE))
    send(window, WM_ACTIVATE, WA_ACTIVE, 0);
  return wasVisible;
}

void startInState(const WindowRef &window, DWORD wanted) {
  if (!(wanted & (WS_MINIMIZE | WS_MAXIMIZE))) return;
  window->style &= ~(WS_MINIMIZE | WS_MAXIMIZE);
  Change change = changeState(window, wanted & WS_MINIMIZE ? SW_SHOWMINIMIZED : SW_SHOWMAXIMIZED);
  change.flags |= SWP_NOACTIVATE;
  if (window->alive) placeAs(window, change);
}

WPARAM sizeKind(const Window &window) {
  return window.is(WS_MINIMIZE) ? SIZE_MINIMIZED : window.is(WS_MAXIMIZE) ? SIZE_MAXIMIZED : SIZE_RESTORED;
}

} // namespace platform

using namespace platform;

BOOL ShowWindow(HWND window, int command) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !target->parent) return FALSE;
    return onThreadOf<BOOL>(*target, FALSE, [&] { return showWindow(target, command); });
  });
}

BOOL ShowWindowAsync(HWND window, int command) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !target->parent) return FALSE;
    if (target->queue == currentQueue()) return showWindow(target, command);
    const auto sent = std::make_shared<Sent>();
    sent->work = [target, command] { showWindow(target, command); };
    sendNotice(*target->queue, sent);
    return TRUE;
  });
}

BOOL GetWindowPlacement(HWND window, WINDOWPLACEMENT *placement) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !placement) return FALSE;
    const bool normal = !(target->style & (WS_MINIMIZE | WS_MAXIMIZE));
    const UINT flags = target->is(WS_MINIMIZE) && target->restoreMaximized ? WPF_RESTORETOMAXIMIZED : 0;
    *placement = {sizeof(WINDOWPLACEMENT), flags, 0, {-1, -1}, {-1, -1}, normal ? target->rect : target->normal};
    placement->showCmd = static_cast<UINT>(target->is(WS_MINIMIZE)   ? SW_SHOWMINIMIZED
                                           : target->is(WS_MAXIMIZE) ? SW_SHOWMAXIMIZED
                                                                     : SW_SHOWNORMAL);
    return TRUE;
  });
}
