// Visibility and state: ShowWindow, and what windows keep for coming back.

#include "platform/desktop/lock.h"
#include "platform/desktop/windows/focus.h"
#include "platform/desktop/windows/onscreen.h"
#include "platform/desktop/windows/placing.h"

namespace platform {

namespace {

constexpr POINT kMinimizedPlace = {-32000, -32000}; // where nobody sees them
constexpr SIZE kMinimizedSize = {160, 24};

bool isMinimizing(int command) {
  return command == SW_MINIMIZE || command == SW_SHOWMINIMIZED || command == SW_SHOWMINNOACTIVE;
}

// The place and the flags for a change between minimized, maximized and normal.
UINT changeState(const WindowRef &window, int command, RECT &place) {
  if (window->is(WS_MINIMIZE)) {
    if (isMinimizing(command)) return SWP_NOSIZE | SWP_NOMOVE;
    if (!send(window, WM_QUERYOPEN)) return SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE;
  } else if (!window->is(WS_MAXIMIZE)) {
    window->normal = window->rect;
  }
  const bool wasMinimized = window->is(WS_MINIMIZE);
  UINT flags = kStateChanged;
  switch (command) {
  case SW_MINIMIZE:
  case SW_SHOWMINIMIZED:
  case SW_SHOWMINNOACTIVE:
    window->restoreMaximized = window->is(WS_MAXIMIZE);
    window->style = (window->style & ~WS_MAXIMIZE) | WS_MINIMIZE;
    place = {kMinimizedPlace.x, kMinimizedPlace.y, kMinimizedPlace.x + kMinimizedSize.cx,
             kMinimizedPlace.y + kMinimizedSize.cy};
    flags |= SWP_NOCOPYBITS;
    break;
  case SW_SHOWMAXIMIZED: {
    const MINMAXINFO limits = sizeLimits(window);
    window->style = (window->style & ~WS_MINIMIZE) | WS_MAXIMIZE;
    place = offset({0, 0, limits.ptMaxSize.x, limits.ptMaxSize.y}, limits.ptMaxPosition.x, limits.ptMaxPosition.y);
    break;
  }
  default:
    if (wasMinimized && window->restoreMaximized) {
      const MINMAXINFO limits = sizeLimits(window);
      window->style |= WS_MAXIMIZE;
      place = offset({0, 0, limits.ptMaxSize.x, limits.ptMaxSize.y}, limits.ptMaxPosition.x, limits.ptMaxPosition.y);
    } else {
      window->style &= ~WS_MAXIMIZE;
      place = window->normal;
    }
    window->style &= ~WS_MINIMIZE;
  }
  if (wasMinimized) flags |= SWP_NOCOPYBITS;
  return flags;
}

} // namespace

bool showWindow(const WindowRef &window, int command) {
  const bool wasVisible = window->is(WS_VISIBLE);
  const bool child = window->isChild();
  if (command == SW_SHOWDEFAULT || command == SW_RESTORE) command = SW_SHOWNORMAL;
  RECT place{};
  UINT flags = SWP_SHOWWINDOW;
  const bool wasMinimized = window->is(WS_MINIMIZE);

  if (command == SW_HIDE) {
    if (!wasVisible) return false;
    flags = SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE;
    if (child) flags |= SWP_NOACTIVATE | SWP_NOZORDER;
  } else if (isMinimizing(command)) {
    if (wasMinimized && wasVisible) return true;
    const WindowRef focus = windowOrNone(window->queue->focus);
    if (focus && (focus == window || isDescendant(*focus, *window))) setFocus(nullptr);
    flags |= SWP_NOACTIVATE | SWP_NOZORDER | SWP_FRAMECHANGED | changeState(window, command, place);
  } else if (command == SW_SHOWMAXIMIZED) {
    if (window->is(WS_MAXIMIZE) && wasVisible) return true;
    if (wasVisible) flags &= ~SWP_SHOWWINDOW;
    flags |= SWP_FRAMECHANGED | changeState(window, command, place);
  } else if (command == SW_SHOWNA || command == SW_SHOW) {
    if (command == SW_SHOW && wasVisible) return true;
    flags |= SWP_NOSIZE | SWP_NOMOVE;
    if (command == SW_SHOWNA) flags |= SWP_NOACTIVATE;
    if (child) flags |= SWP_NOACTIVATE | SWP_NOZORDER;
  } else {
    if (command == SW_SHOWNOACTIVATE) flags |= SWP_NOACTIVATE | SWP_NOZORDER;
    if (window->style & (WS_MINIMIZE | WS_MAXIMIZE)) {
      flags |= SWP_FRAMECHANGED | changeState(window, command, place);
      if (wasVisible) flags &= ~SWP_SHOWWINDOW;
    } else {
      if (wasVisible) return true;
      flags |= SWP_NOSIZE | SWP_NOMOVE;
    }
    if (child && !(flags & kStateChanged)) flags |= SWP_NOACTIVATE | SWP_NOZORDER;
  }
  if (!window->alive) return wasVisible;

  const bool shows = command != SW_HIDE;
  if ((shows != wasVisible || command == SW_SHOWNA) && !(flags & kStateChanged)) {
    send(window, WM_SHOWWINDOW, shows);
    if (!window->alive) return wasVisible;
  }
  if (window->parent && !isVisible(*window->parent) && !(flags & kStateChanged)) {
    if (shows)
      window->style |= WS_VISIBLE;
    else
      window->style &= ~WS_VISIBLE;
  } else {
    setWindowPos(window,
                 {nullptr, HWND_TOP, static_cast<int>(place.left), static_cast<int>(place.top),
                  static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top), flags});
  }
  if (!window->alive) return wasVisible;

  if (command == SW_HIDE) {
    if (isActive(*window)) activateAnother(*window);
    if (window->alive && isFocus(*window)) setFocus(window->isChild() ? refOf(window->parent) : nullptr);
    return wasVisible;
  }
  if (wasMinimized && !window->is(WS_MINIMIZE) && isActive(*window)) {
    setFocus(window);
    send(window, WM_ACTIVATE, WA_ACTIVE, 0);
  }
  if (window->alive && window->needsSize) {
    window->needsSize = false;
    const RECT area = window->clientArea();
    const WPARAM kind = window->is(WS_MAXIMIZE)   ? SIZE_MAXIMIZED
                        : window->is(WS_MINIMIZE) ? SIZE_MINIMIZED
                                                  : SIZE_RESTORED;
    send(window, WM_SIZE, kind, lParamOf(area.right, area.bottom));
    send(window, WM_MOVE, 0, lParamOf(window->client.left, window->client.top));
  }
  return wasVisible;
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

BOOL GetWindowPlacement(HWND window, WINDOWPLACEMENT *placement) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !placement) return FALSE;
    const bool normal = !(target->style & (WS_MINIMIZE | WS_MAXIMIZE));
    *placement = {sizeof(WINDOWPLACEMENT), 0, 0, {-1, -1}, {-1, -1}, normal ? target->rect : target->normal};
    placement->showCmd = static_cast<UINT>(target->is(WS_MINIMIZE)   ? SW_SHOWMINIMIZED
                                           : target->is(WS_MAXIMIZE) ? SW_SHOWMAXIMIZED
                                                                     : SW_SHOWNORMAL);
    return TRUE;
  });
}
