// Position, size, order and visibility: SetWindowPos and ShowWindow, with the messages that they send and what they leave
// to be painted.

#include "platform/desktop/placing.h"

#include "platform/desktop/desktop.h"
#include "platform/desktop/focus.h"
#include "platform/desktop/frame.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/surface.h"
#include "platform/desktop/update.h"

#include <algorithm>

namespace platform {

namespace {

constexpr LONG kFarthest = 32767;
constexpr POINT kMinimizedPlace = {-32000, -32000}; // where nobody sees them
constexpr UINT kUnchanged = SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | kNoClientSize | kNoClientMove;

bool isTopmost(const Window &window) { return window.exStyle & WS_EX_TOPMOST; }

// Whether a window goes with another in the order: it is the other, or owned by it at some remove.
bool belongsTo(const Window &window, const Window &other) {
  for (const Window *one = &window; one; one = one->owner)
    if (one == &other) return true;
  return false;
}

// The sibling below which a window goes, for one of the HWND_... words or a sibling; null for the top.
Window *placeInOrder(Window &window, HWND after) {
  const std::vector<Window *> &siblings = window.parent->children;
  const auto lastOf = [&](auto accepts) {
    Window *last = nullptr;
    for (Window *sibling : siblings)
      if (sibling != &window && accepts(*sibling)) last = sibling;
    return last;
  };
  if (after == HWND_BOTTOM) return lastOf([](const Window &) { return true; });
  if (after == HWND_TOPMOST) return nullptr;
  if (after == HWND_TOP || after == HWND_NOTOPMOST)
    return isTopmost(window) ? nullptr : lastOf([](const Window &one) { return isTopmost(one); });
  return windowOrNone(after).get();
}

void relink(Window &window, Window *above) {
  Window &parent = *window.parent;
  unlink(window);
  link(window, parent, above);
}

// Puts a window into the order, and what it owns above it.
void reorder(Window &window, HWND after) {
  if (after == HWND_TOPMOST) window.exStyle |= WS_EX_TOPMOST;
  if (after == HWND_NOTOPMOST || after == HWND_BOTTOM) window.exStyle &= ~WS_EX_TOPMOST;
  Window *above = placeInOrder(window, after);
  if (above == &window) return;
  if (window.isTopLevel() && above && isTopmost(*above) != isTopmost(window) && after != HWND_BOTTOM) {
    // among its own kind
    above = isTopmost(window) ? nullptr : placeInOrder(window, HWND_TOP);
  }
  relink(window, above);
  if (window.owned.empty()) return;
  std::vector<Window *> owned; // from the lowest to the highest
  for (auto at = window.parent->children.rbegin(); at != window.parent->children.rend(); ++at)
    if (*at != &window && belongsTo(**at, window)) owned.push_back(*at);
  for (Window *one : owned) {
    const std::vector<Window *> &siblings = window.parent->children;
    const auto self = std::find(siblings.begin(), siblings.end(), &window);
    if (std::find(siblings.begin(), self, one) != self) continue; // above it already
    if (isTopmost(window)) one->exStyle |= WS_EX_TOPMOST;
    relink(*one, self == siblings.begin() ? nullptr : self[-1]);
  }
}

// Whether a window stands already where an insertion would put it.
bool isInPlace(Window &window, HWND after) {
  if (after == HWND_TOPMOST && !isTopmost(window)) return false;
  if (after == HWND_NOTOPMOST && !isTopmost(window)) return true;
  if (after == HWND_NOTOPMOST) return false;
  const std::vector<Window *> &siblings = window.parent->children;
  const auto self = std::find(siblings.begin(), siblings.end(), &window);
  const Window *above = self == siblings.begin() ? nullptr : self[-1];
  const Window *wanted = placeInOrder(window, after);
  if (after == HWND_TOP && wanted != above && above && belongsTo(*above, window)) {
    // only what it owns stands above it
    return std::all_of(siblings.begin(), self,
                       [&](const Window *one) { return isTopmost(*one) || belongsTo(*one, window); });
  }
  return wanted == above;
}

// What stands where before and after a change, in coordinates of the surface.
struct Seen {
  QRegion whole;
  POINT client;
  SIZE size;

  explicit Seen(const Window &window)
      : whole(visibleWhole(window)), client(originInSurface(window)), size{window.client.right - window.client.left,
                                                                           window.client.bottom - window.client.top} {}
};

// All that waits for paint in a window and its children, in coordinates of the surface.
void collectUpdates(const Window &window, QRegion &updates) {
  if (window.dirtyBelow == 0) return;
  const POINT origin = originInSurface(window);
  updates |= window.update.translated(origin.x, origin.y);
  for (const Window *child : window.children) collectUpdates(*child, updates);
}

void invalidateInSurface(Window &window, const QRegion &region, bool frame) {
  if (region.isEmpty()) return;
  const POINT origin = originInSurface(window);
  invalidate(window, region.translated(-origin.x, -origin.y), true, frame, Children::all);
}

// After a change: keeps the pixels that are still right, at their new place, and invalidates the rest.
void refresh(Window &window, const Seen &before, const QRegion &due, UINT flags) {
  const Seen now(window);
  Surface *surface = rootOf(window).surface.get();
  QRegion right; // pixels that need no paint
  const bool sized = now.size.cx != before.size.cx || now.size.cy != before.size.cy;
  const bool redrawn = sized && ((now.size.cx != before.size.cx && (window.windowClass->style & CS_HREDRAW)) ||
                                 (now.size.cy != before.size.cy && (window.windowClass->style & CS_VREDRAW)));
  const bool keeps = !(flags & (SWP_NOCOPYBITS | SWP_SHOWWINDOW)) && !redrawn && surface;
  if (keeps) {
    const int dx = static_cast<int>(now.client.x - before.client.x),
              dy = static_cast<int>(now.client.y - before.client.y);
    QRegion source = before.whole;
    if (sized || window.isTopLevel()) source &= QRect(before.client.x, before.client.y, before.size.cx, before.size.cy);
    source = (source - due) & now.whole.translated(-dx, -dy);
    if (sized) source &= QRect(before.client.x, before.client.y, now.size.cx, now.size.cy);
    if (dx != 0 || dy != 0) surface->copy(source, dx, dy);
    right = source.translated(dx, dy);
  }
  const QRegion uncovered = before.whole - now.whole;
  if (window.parent->parent && !uncovered.isEmpty()) invalidateInSurface(*window.parent, uncovered, false);
  const QRegion fresh = now.whole - right;
  if (!fresh.isEmpty() && isVisible(window)) invalidateInSurface(window, fresh, true);
}

// A message of WM_WINDOWPOSCHANGING may change everything; after it, the flags say what really changes.
void settleFlags(Window &window, WINDOWPOS &position) {
  UINT &flags = position.flags;
  if (!isVisible(*window.parent)) flags |= SWP_NOREDRAW;
  if (window.is(WS_VISIBLE)) {
    flags &= ~SWP_SHOWWINDOW;
  } else {
    flags &= ~SWP_HIDEWINDOW;
    if (!(flags & SWP_SHOWWINDOW)) flags |= SWP_NOREDRAW;
  }
  position.cx = std::clamp(position.cx, 0, static_cast<int>(kFarthest));
  position.cy = std::clamp(position.cy, 0, static_cast<int>(kFarthest));
  if (position.cx == window.width() && position.cy == window.height()) flags |= SWP_NOSIZE;
  position.x = std::clamp(position.x, -static_cast<int>(kFarthest) - 1, static_cast<int>(kFarthest));
  position.y = std::clamp(position.y, -static_cast<int>(kFarthest) - 1, static_cast<int>(kFarthest));
  if (position.x == window.rect.left && position.y == window.rect.top) flags |= SWP_NOMOVE;
  // what becomes active comes to the front
  const bool comesForward =
      !window.isChild() && !(flags & (SWP_NOACTIVATE | SWP_HIDEWINDOW)) && window.queue->active != &window;
  const bool changesKind = !(flags & SWP_NOZORDER) &&
                           (position.hwndInsertAfter == HWND_TOPMOST || position.hwndInsertAfter == HWND_NOTOPMOST);
  if (comesForward && !changesKind) {
    flags &= ~SWP_NOZORDER;
    position.hwndInsertAfter = HWND_TOP;
  }
  if (flags & SWP_NOZORDER) return;
  const HWND after = position.hwndInsertAfter;
  const bool word = after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST || after == HWND_NOTOPMOST;
  const WindowRef sibling = word ? nullptr : windowOrNone(after);
  if ((!word && (!sibling || sibling->parent != window.parent || sibling.get() == &window)) || isInPlace(window, after))
    flags |= SWP_NOZORDER;
}

// Asks the window for its new client area where that can have changed.
void calculate(const WindowRef &window, WINDOWPOS &position, const RECT &rect, RECT &client) {
  const bool asks = (position.flags & (SWP_FRAMECHANGED | kStateChanged)) || !(position.flags & SWP_NOSIZE);
  if (!asks) {
    client = offset(window->client, rect.left - window->rect.left, rect.top - window->rect.top);
  } else {
    NCCALCSIZE_PARAMS sizes{{rect, window->rect, window->client}, &position};
    WINDOWPOS told = position;
    told.flags |= kNoClientSize | kNoClientMove;
    sizes.lppos = &told;
    send(window, WM_NCCALCSIZE, TRUE, addressOf(sizes));
    client = sizes.rgrc[0];
    client.right = std::max(client.left, client.right);
    client.bottom = std::max(client.top, client.bottom);
  }
  const RECT &old = window->client;
  if (client.left == old.left && client.top == old.top) position.flags |= kNoClientMove;
  if (client.right - client.left == old.right - old.left && client.bottom - client.top == old.bottom - old.top)
    position.flags |= kNoClientSize;
}

// The change itself, and its traces on the screen.
void apply(const WindowRef &window, const WINDOWPOS &position, const RECT &rect, const RECT &client) {
  const UINT flags = position.flags;
  const bool redraws = !(flags & SWP_NOREDRAW);
  const Seen before(*window);
  QRegion due;
  if (redraws) collectUpdates(*window, due);
  if (!(flags & SWP_NOZORDER)) reorder(*window, position.hwndInsertAfter);
  window->rect = rect;
  window->client = client;
  if (flags & SWP_SHOWWINDOW) window->style |= WS_VISIBLE;
  if (flags & SWP_HIDEWINDOW) {
    validateTree(*window);
    window->style &= ~WS_VISIBLE;
  }
  constexpr UINT kSamePlace = kUnchanged & ~UINT{SWP_NOZORDER};
  const bool moves = (flags & kSamePlace) != kSamePlace || (flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) != 0;
  const bool reorders = !(flags & SWP_NOZORDER) && !window->isTopLevel();
  if (redraws && (moves || reorders)) refresh(*window, before, due, flags);
  if (redraws && !(flags & SWP_HIDEWINDOW) && ((flags & (SWP_FRAMECHANGED | kStateChanged)) || !(flags & SWP_NOSIZE)) &&
      window->is(WS_VISIBLE))
    window->frameDirty = true;
}

// What the desktop shows of it.
void showOnDesktop(Window &window, UINT flags) {
  if (!window.surface) return;
  if (flags & SWP_HIDEWINDOW)
    window.surface->hide();
  else if ((flags & SWP_SHOWWINDOW) || ((flags & kStateChanged) && window.is(WS_VISIBLE)))
    window.surface->show();
  else
    window.surface->place();
  if (!(flags & SWP_NOZORDER)) window.surface->restyle();
  if (!(flags & SWP_NOZORDER) && window.parent->children.front() == &window) window.surface->raise();
}

} // namespace

void raise(Window &window) {
  if (isInPlace(window, HWND_TOP)) return;
  reorder(window, HWND_TOP);
  showOnDesktop(window, 0);
}

bool setWindowPos(const WindowRef &window, WINDOWPOS position) {
  if (!window->parent) return false; // the desktop stays where it is
  const Window *old = window->parent;
  position.hwnd = window->handle;
  if (!(position.flags & SWP_NOSENDCHANGING)) send(window, WM_WINDOWPOSCHANGING, 0, addressOf(position));
  if (!window->alive || window->parent != old) return false;

  RECT rect = window->rect;
  if (position.flags & SWP_NOMOVE) position.x = rect.left, position.y = rect.top;
  if (position.flags & SWP_NOSIZE) position.cx = window->width(), position.cy = window->height();
  const bool wasActive = window->queue->active == window.get();
  settleFlags(*window, position);
  rect = {position.x, position.y, position.x + position.cx, position.y + position.cy};
  RECT client;
  calculate(window, position, rect, client);
  if (!window->alive || window->parent != old) return false;

  apply(window, position, rect, client);
  const UINT flags = position.flags;
  showOnDesktop(*window, flags);

  if (!(flags & (SWP_NOACTIVATE | SWP_HIDEWINDOW)) && !wasActive) {
    if (window->isChild())
      send(window, WM_CHILDACTIVATE);
    else
      activate(window, false, true);
    if (!window->alive) return true;
  }
  if (!(flags & SWP_NOREDRAW)) {
    const bool resized = (flags & (SWP_FRAMECHANGED | kStateChanged | SWP_HIDEWINDOW)) || !(flags & SWP_NOSIZE);
    const bool own = (flags & SWP_SHOWWINDOW) || window->isTopLevel();
    if (own && (resized || (flags & SWP_SHOWWINDOW))) eraseNow(window);
    if (!own && (resized || !(flags & SWP_NOZORDER))) eraseNow(refOf(window->parent));
    // a frame that shrank has nothing else that would draw it
    if (!own && resized && window->alive && !sameRect(window->rect, window->client)) eraseNow(window);
    if (!window->alive) return true;
  }
  if ((flags & kUnchanged) != kUnchanged ||
      (flags & (SWP_FRAMECHANGED | SWP_SHOWWINDOW | SWP_HIDEWINDOW | kStateChanged))) {
    position.x = window->rect.left;
    position.y = window->rect.top;
    position.cx = window->width();
    position.cy = window->height();
    send(window, WM_WINDOWPOSCHANGED, 0, addressOf(position));
  }
  return true;
}

MINMAXINFO sizeLimits(const WindowRef &window) {
  const Frame frame = frameOf(window->style, window->exStyle);
  const RECT area = workArea();
  MINMAXINFO limits{};
  limits.ptMaxSize = {area.right - area.left, area.bottom - area.top};
  limits.ptMaxPosition = {area.left, area.top};
  if (window->is(WS_THICKFRAME) || (window->style & (WS_CAPTION | WS_CHILD)) == WS_CAPTION) {
    const LONG edge = frame.left;
    limits.ptMaxSize = {limits.ptMaxSize.x + 2 * edge, limits.ptMaxSize.y + 2 * edge};
    limits.ptMaxPosition = {limits.ptMaxPosition.x - edge, limits.ptMaxPosition.y - edge};
  }
  limits.ptMinTrackSize = {GetSystemMetrics(SM_CXMINTRACK), GetSystemMetrics(SM_CYMINTRACK)};
  if (!window->is(WS_CAPTION)) limits.ptMinTrackSize = {2 * frame.left, 2 * frame.left};
  limits.ptMaxTrackSize = {GetSystemMetrics(SM_CXMAXTRACK), GetSystemMetrics(SM_CYMAXTRACK)};
  send(window, WM_GETMINMAXINFO, 0, addressOf(limits));
  limits.ptMaxTrackSize.x = std::max(limits.ptMaxTrackSize.x, limits.ptMinTrackSize.x);
  limits.ptMaxTrackSize.y = std::max(limits.ptMaxTrackSize.y, limits.ptMinTrackSize.y);
  return limits;
}

namespace {

// The place and the flags for a change between minimized, maximized and normal.
UINT changeState(const WindowRef &window, int command, RECT &place) {
  if (window->is(WS_MINIMIZE)) {
    const bool minimizes = command == SW_MINIMIZE || command == SW_SHOWMINIMIZED || command == SW_SHOWMINNOACTIVE;
    if (minimizes) return SWP_NOSIZE | SWP_NOMOVE;
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
    place = {kMinimizedPlace.x, kMinimizedPlace.y, kMinimizedPlace.x + 160, kMinimizedPlace.y + 24};
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

bool isMinimizing(int command) {
  return command == SW_MINIMIZE || command == SW_SHOWMINIMIZED || command == SW_SHOWMINNOACTIVE;
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
    Window *focus = window->queue->focus;
    if (focus && (focus == window.get() || isDescendant(*focus, *window))) setFocus(nullptr);
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
    if (window->queue->active == window.get()) activateAnother(*window);
    if (window->alive && window->queue->focus == window.get())
      setFocus(window->isChild() ? refOf(window->parent) : nullptr);
    return wasVisible;
  }
  if (wasMinimized && !window->is(WS_MINIMIZE) && window->queue->active == window.get()) {
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

BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    return target && setWindowPos(target, {window, after, x, y, width, height, flags});
  });
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
  return SetWindowPos(window, nullptr, x, y, width, height,
                      SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0u : SWP_NOREDRAW));
}

BOOL ShowWindow(HWND window, int command) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    return target && target->parent && showWindow(target, command);
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

BOOL GetWindowRect(HWND window, RECT *rect) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !rect) return FALSE;
    *rect = screenRect(*target);
    return TRUE;
  });
}

BOOL GetClientRect(HWND window, RECT *rect) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !rect) return FALSE;
    *rect = target->clientArea();
    return TRUE;
  });
}

int MapWindowPoints(HWND from, HWND to, POINT *points, UINT count) {
  return locked<int>(0, [&]() -> int {
    const WindowRef source = from ? windowOf(from) : nullptr;
    const WindowRef target = to ? windowOf(to) : nullptr;
    if ((from && !source) || (to && !target)) return 0;
    POINT shift = source ? clientOrigin(*source) : POINT{0, 0};
    if (target) {
      const POINT origin = clientOrigin(*target);
      shift = {shift.x - origin.x, shift.y - origin.y};
    }
    for (UINT i = 0; i < count; ++i) points[i] = {points[i].x + shift.x, points[i].y + shift.y};
    return MAKELONG(shift.x, shift.y);
  });
}

BOOL ClientToScreen(HWND window, POINT *point) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !point) return FALSE;
    const POINT origin = clientOrigin(*target);
    *point = {point->x + origin.x, point->y + origin.y};
    return TRUE;
  });
}

BOOL ScreenToClient(HWND window, POINT *point) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !point) return FALSE;
    const POINT origin = clientOrigin(*target);
    *point = {point->x - origin.x, point->y - origin.y};
    return TRUE;
  });
}
