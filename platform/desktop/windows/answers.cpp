// The windows' part of messages: the functions of messages/above.h.

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"
#include "platform/desktop/windows/focus.h"
#include "platform/desktop/windows/update.h"

#include <QVarLengthArray>

namespace platform {

namespace {

bool takesPart(const Window &window) {
  if (!window.is(WS_VISIBLE) || window.passesInput) return false;
  if (window.isChild() && window.is(WS_DISABLED)) return false;
  return !((window.exStyle & WS_EX_LAYERED) && (window.exStyle & WS_EX_TRANSPARENT));
}

// Shows the windows under a point to a visitor, from the innermost to the outermost, until the visitor answers true.
// point: in client coordinates of the parent. Result: whether the visitor has answered true.
template <typename Visitor> bool visitIn(Window &child, POINT point, Visitor &visit) {
  if (!takesPart(child) || !contains(child.rect, point)) return false;
  if (!child.is(WS_MINIMIZE) && !child.is(WS_DISABLED) && contains(child.client, point))
    for (Window *inner : child.children)
      if (visitIn(*inner, {point.x - child.client.left, point.y - child.client.top}, visit)) return true;
  return visit(child);
}

// Visits the window that the desktop sees at the point first: the desktop knows which window is in front. Then come the
// other windows, in the program's own order.
template <typename Visitor> void visitAt(POINT point, HWND top, Visitor visit) {
  Window *const known = recordOf(top);
  Window *const front = known && known->isTopLevel() ? known : nullptr;
  if (front) {
    bool any = false;
    const auto inFront = [&](Window &window) { return any = true, visit(window); };
    if (visitIn(*front, point, inFront) || (any && !theScreen().info().placesWindows)) return;
  }
  for (Window *window : desktopWindow().children)
    if (window != front && visitIn(*window, point, visit)) return;
}

// All windows at a point, collected before any of them is asked. They are few.
using Found = QVarLengthArray<WindowRef, 16>;
Found collectAt(POINT point, HWND top) {
  Found found;
  visitAt(point, top, [&](const Window &window) { return found.push_back(refOf(&window)), false; });
  return found;
}

} // namespace

Queue *above::queueOfWindow(HWND window) {
  const Window *const target = recordOf(window);
  return target ? target->queue.get() : nullptr;
}

Queue *above::queueOfWindowOrFail(HWND window) {
  Queue *const queue = queueOfWindow(window);
  if (!queue) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
  return queue;
}

LRESULT above::call(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  Window *const target = recordOf(window);
  if (target) return callProcedure(*target, message, wParam, lParam);
  SetLastError(ERROR_INVALID_WINDOW_HANDLE);
  return 0;
}

LRESULT above::send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const WindowRef target = windowOf(window);
  return target ? platform::send(target, message, wParam, lParam) : 0;
}

bool above::isIn(HWND window, HWND ancestor) {
  const WindowRef target = windowOrNone(window), top = windowOrNone(ancestor);
  return target && top && (target == top || isDescendant(*target, *top));
}

HWND above::nextToPaint(Queue &queue, HWND top) { return handleOf(platform::nextToPaint(queue, top)); }

HWND above::windowAt(POINT point, HWND top, LRESULT &hit) {
  hit = HTNOWHERE;
  for (const WindowRef &window : collectAt(point, top)) {
    if (!window->alive) continue;
    if (window->is(WS_DISABLED)) {
      hit = HTERROR;
      return window->handle;
    }
    if (window->queue != currentQueue()) {
      hit = HTCLIENT;
      return window->handle;
    }
    hit = platform::send(window, WM_NCHITTEST, 0, lParamOf(point.x, point.y));
    if (hit != HTTRANSPARENT) return window->alive ? window->handle : nullptr;
  }
  return nullptr;
}

HWND above::placedAt(POINT point, HWND top) {
  HWND first = nullptr;
  visitAt(point, top, [&](const Window &window) { return first = window.handle, true; });
  return first;
}

POINT above::clientOrigin(HWND window) {
  const Window *const target = recordOf(window);
  return target ? platform::clientOrigin(*target) : POINT{0, 0};
}

bool above::takesDoubleClicks(HWND window) {
  const WindowRef target = windowOrNone(window);
  return target && (target->windowClass->style & CS_DBLCLKS);
}

bool above::announcePress(HWND pressed, UINT message, LRESULT hit, POINT at) {
  const WindowRef window = windowOrNone(pressed);
  for (WindowRef child = window; child && child->alive && child->isChild(); child = refOf(child->parent)) {
    if (child->exStyle & WS_EX_NOPARENTNOTIFY) break;
    const WindowRef parent = refOf(child->parent);
    const POINT origin = platform::clientOrigin(*parent);
    platform::send(parent, WM_PARENTNOTIFY, message, lParamOf(at.x - origin.x, at.y - origin.y));
  }
  if (!window || !window->alive) return false;
  if (isActive(*window)) return true;
  const WindowRef root = refOf(&rootOf(*window));
  const LRESULT answer = platform::send(window, WM_MOUSEACTIVATE, wParamOf(root->handle),
                                        lParamOf(static_cast<LONG>(hit), static_cast<LONG>(message)));
  const bool activates = answer != MA_NOACTIVATE && answer != MA_NOACTIVATEANDEAT;
  if (activates && root->alive && !isActive(*root) && !(root->exStyle & WS_EX_NOACTIVATE))
    activate(root, Cause::mouse, true);
  return window->alive && answer != MA_ACTIVATEANDEAT && answer != MA_NOACTIVATEANDEAT;
}

} // namespace platform

using namespace platform;

HWND WindowFromPoint(POINT point) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    LRESULT hit;
    const HWND found = above::windowAt(point, nullptr, hit);
    return found ? found : desktopWindow().handle;
  });
}

HWND ChildWindowFromPoint(HWND parent, POINT point) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef window = windowOf(parent);
    if (!window || !contains(window->clientArea(), point)) return nullptr;
    for (const Window *child : window->children) // also hidden and disabled ones
      if (contains(child->rect, point)) return child->handle;
    return parent;
  });
}
