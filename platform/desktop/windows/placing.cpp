// Position and size: SetWindowPos with its messages, and the areas that need paint afterwards.

#include "platform/desktop/windows/placing.h"

#include "platform/desktop/drawing/surface.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/messages/input.h"
#include "platform/desktop/windows/focus.h"
#include "platform/desktop/windows/frame.h"
#include "platform/desktop/windows/onscreen.h"
#include "platform/desktop/windows/order.h"
#include "platform/desktop/windows/update.h"

#include <algorithm>

namespace platform {

namespace {

constexpr LONG kFarthest = 32767;
constexpr UINT kUnchanged = SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | kNoClientSize | kNoClientMove;

// The place of a window's pixels before or after a change, in coordinates of the surface.
struct Seen {
  QRegion whole;
  POINT client;
  SIZE size;

  explicit Seen(const Window &window)
      : whole(visibleWhole(window)), client(originInSurface(window)), size{window.client.right - window.client.left,
                                                                           window.client.bottom - window.client.top} {}
};

// Collects the update regions of a window and its children, in coordinates of the surface.
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

// After a change, keeps the pixels that are still right, at their new place, and invalidates the rest.
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

bool isOrderWord(HWND after) {
  return after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST || after == HWND_NOTOPMOST;
}

bool isPlace(const WINDOWPOS &position) {
  return (position.flags & SWP_NOZORDER) || isOrderWord(position.hwndInsertAfter) ||
         windowOrNone(position.hwndInsertAfter);
}

// Makes the flags say what really changes: WM_WINDOWPOSCHANGING may have changed all members.
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
  // a window that becomes active comes to the front
  const bool comesForward = !window.isChild() && !(flags & (SWP_NOACTIVATE | SWP_HIDEWINDOW)) && !isActive(window);
  const bool changesKind = !(flags & SWP_NOZORDER) &&
                           (position.hwndInsertAfter == HWND_TOPMOST || position.hwndInsertAfter == HWND_NOTOPMOST);
  if (comesForward && !changesKind) {
    flags &= ~SWP_NOZORDER;
    position.hwndInsertAfter = HWND_TOP;
  }
  if (flags & SWP_NOZORDER) return;
  const WindowRef sibling = isOrderWord(position.hwndInsertAfter) ? nullptr : windowOrNone(position.hwndInsertAfter);
  const bool stranger = sibling && sibling->parent != window.parent; // has no effect
  if (stranger || isInPlace(window, position.hwndInsertAfter)) flags |= SWP_NOZORDER;
}

// Asks the window for its new client area, if that can have changed.
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

// Makes the change, and invalidates pixels.
void apply(const WindowRef &window, const WINDOWPOS &position, const RECT &rect, const RECT &client) {
  const UINT flags = position.flags;
  const bool redraws = !(flags & SWP_NOREDRAW);
  const Seen before(*window);
  QRegion due;
  if (redraws) collectUpdates(*window, due);
  if (!(flags & SWP_NOZORDER)) reorder(*window, position.hwndInsertAfter);
  window->rect = rect;
  window->client = client;
  if (window->surface) window->surface->resize(toQt(contentOf(*window)).size());
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

// Tells the screen.
void takeToScreen(Window &window, UINT flags, HWND after) {
  if (!window.surface) return;
  if (flags & SWP_HIDEWINDOW)
    hideOnScreen(window);
  else if (flags & SWP_SHOWWINDOW)
    showOnScreen(window);
  else
    placeOnScreen(window);
  if (flags & SWP_NOZORDER) return;
  bandsOnScreen();
  if (after == HWND_BOTTOM)
    lowerOnScreen(window);
  else if (window.parent->children.front() == &window)
    raiseOnScreen(window);
}

} // namespace

void raise(Window &window) {
  if (isInPlace(window, HWND_TOP)) return;
  reorder(window, HWND_TOP);
  bandsOnScreen();
  raiseOnScreen(window);
}

bool setWindowPos(const WindowRef &window, WINDOWPOS position) {
  if (!window->parent) return false; // the desktop stays where it is
  if (!isPlace(position)) return failWith(ERROR_INVALID_WINDOW_HANDLE);
  const Window *old = window->parent;
  position.hwnd = window->handle;
  if (!(position.flags & SWP_NOSENDCHANGING)) send(window, WM_WINDOWPOSCHANGING, 0, addressOf(position));
  if (!window->alive || window->parent != old) return false;

  RECT rect = window->rect;
  if (position.flags & SWP_NOMOVE) position.x = rect.left, position.y = rect.top;
  if (position.flags & SWP_NOSIZE) position.cx = window->width(), position.cy = window->height();
  if (!isPlace(position)) position.flags |= SWP_NOZORDER; // WM_WINDOWPOSCHANGING may have set an invalid place
  const bool wasActive = isActive(*window);
  settleFlags(*window, position);
  rect = {position.x, position.y, position.x + position.cx, position.y + position.cy};
  RECT client;
  calculate(window, position, rect, client);
  if (!window->alive || window->parent != old) return false;

  apply(window, position, rect, client);
  const UINT flags = position.flags;
  takeToScreen(*window, flags, position.hwndInsertAfter);
  if (window->is(WS_VISIBLE) || (flags & SWP_HIDEWINDOW)) changedUnderPointer();

  if (!(flags & (SWP_NOACTIVATE | SWP_HIDEWINDOW)) && !wasActive) {
    if (window->isChild())
      send(window, WM_CHILDACTIVATE);
    else
      activate(window, Cause::program, true);
    if (!window->alive) return true;
  }
  if (!(flags & SWP_NOREDRAW)) {
    const bool resized = (flags & (SWP_FRAMECHANGED | kStateChanged | SWP_HIDEWINDOW)) || !(flags & SWP_NOSIZE);
    const bool own = (flags & SWP_SHOWWINDOW) || window->isTopLevel();
    if (own && (resized || (flags & SWP_SHOWWINDOW))) eraseNow(window);
    if (!own && (resized || !(flags & SWP_NOZORDER))) eraseNow(refOf(window->parent));
    // the parent doesn't draw the frame of a child that shrank
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
  const RECT area = theScreen().info().workArea;
  MINMAXINFO limits{};
  limits.ptMaxSize = {area.right - area.left, area.bottom - area.top};
  limits.ptMaxPosition = {area.left, area.top};
  if (window->isChild()) { // a maximized child fills its parent
    const RECT parent = window->parent->clientArea();
    limits.ptMaxSize = {parent.right, parent.bottom};
    limits.ptMaxPosition = {0, 0};
  }
  if (window->is(WS_THICKFRAME) || (window->style & (WS_CAPTION | WS_CHILD)) == WS_CAPTION) {
    const LONG edge = frame.left;
    limits.ptMaxSize = {limits.ptMaxSize.x + 2 * edge, limits.ptMaxSize.y + 2 * edge};
    limits.ptMaxPosition = {limits.ptMaxPosition.x - edge, limits.ptMaxPosition.y - edge};
  }
  limits.ptMinTrackSize = {GetSystemMetrics(SM_CXMINTRACK), GetSystemMetrics(SM_CYMINTRACK)};
  if (!window->is(WS_CAPTION)) limits.ptMinTrackSize = {2 * frame.left, 2 * frame.left};
  limits.ptMaxTrackSize = {GetSystemMetrics(SM_CXMAXTRACK), GetSystemMetrics(SM_CYMAXTRACK)};
  if (theScreen().isSeen()) // a desktop without captions gives the whole screen to the client area
    limits.ptMaxTrackSize.y += frame.top;
  send(window, WM_GETMINMAXINFO, 0, addressOf(limits));
  limits.ptMaxTrackSize.x = std::max(limits.ptMaxTrackSize.x, limits.ptMinTrackSize.x);
  limits.ptMaxTrackSize.y = std::max(limits.ptMaxTrackSize.y, limits.ptMinTrackSize.y);
  window->limits = limits;
  return limits;
}

} // namespace platform

using namespace platform;

BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target) return FALSE;
    const WINDOWPOS position = {window, after, x, y, width, height, flags & ~SWP_ASYNCWINDOWPOS};
    if ((flags & SWP_ASYNCWINDOWPOS) && target->queue != currentQueue()) {
      const auto sent = std::make_shared<Sent>();
      sent->work = [target, position] { setWindowPos(target, position); };
      sendNotice(*target->queue, sent);
      return TRUE;
    }
    return onThreadOf<BOOL>(*target, FALSE, [&] { return setWindowPos(target, position); });
  });
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
  return SetWindowPos(window, nullptr, x, y, width, height,
                      SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0u : SWP_NOREDRAW));
}
