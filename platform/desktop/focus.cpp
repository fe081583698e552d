// Activation and focus, the state of being enabled, and the capture of the mouse.

#include "platform/desktop/focus.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/placing.h"
#include "platform/desktop/surface.h"
#include "platform/desktop/update.h"

namespace platform {

namespace {

// The window that has the keyboard in the whole application; null when another application has it.
HWND foreground = nullptr;

// Tells all top-level windows of a thread that the application comes to the front, or goes.
void tellApplication(const std::shared_ptr<Queue> &queue, bool active, DWORD other) {
  for (const WindowRef &window : childrenOf(desktopWindow()))
    if (window->alive && window->queue == queue) send(window, WM_ACTIVATEAPP, active, static_cast<LPARAM>(other));
}

HWND moveFocus(const WindowRef &window) {
  Queue &queue = *currentQueue();
  Window *previous = queue.focus;
  const HWND old = handleOf(previous);
  if (previous == window.get()) return old;
  const WindowRef before = refOf(previous);
  queue.focus = window.get();
  const HWND handle = window ? window->handle : nullptr;
  if (before) {
    send(before, WM_KILLFOCUS, wParamOf(handle));
    if (queue.focus != window.get()) return old; // the message changed it again
  }
  if (window) send(window, WM_SETFOCUS, wParamOf(old));
  return old;
}

bool canBeActive(const Window &window) {
  return !window.isChild() && window.is(WS_VISIBLE) && !window.is(WS_DISABLED) && !(window.exStyle & WS_EX_NOACTIVATE);
}

} // namespace

bool activate(const WindowRef &window, bool byMouse, bool focuses) {
  const std::shared_ptr<Queue> &queue = currentQueue();
  const WindowRef previous = refOf(queue->active);
  if (previous == window) return true;
  const HWND next = window ? window->handle : nullptr;
  const HWND last = previous ? previous->handle : nullptr;
  if (previous) {
    send(previous, WM_NCACTIVATE, FALSE, lParamOf(next));
    if (previous->alive)
      send(previous, WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, previous->is(WS_MINIMIZE)), lParamOf(next));
    if (queue->active != previous.get() && previous->alive) return queue->active == window.get();
  }
  if (window && !window->alive) return false;
  queue->active = window.get();
  foreground = next;
  if (!previous != !window) tellApplication(queue, window != nullptr, 0);
  if (window && window->alive && queue->active == window.get()) {
    if (window->isTopLevel() && window->surface) window->surface->activate();
    if (window->isTopLevel()) raise(*window);
    send(window, WM_NCACTIVATE, TRUE, lParamOf(last));
    if (window->alive)
      send(window, WM_ACTIVATE, MAKEWPARAM(byMouse ? WA_CLICKACTIVE : WA_ACTIVE, window->is(WS_MINIMIZE)),
           lParamOf(last));
  }
  if (focuses && queue->active == window.get() && (!window || window->alive)) {
    Window *focus = queue->focus;
    if (!focus || !window || &rootOf(*focus) != window.get()) moveFocus(window);
  }
  return true;
}

HWND setFocus(const WindowRef &window) {
  Queue &queue = *currentQueue();
  if (!window) return moveFocus(nullptr);
  if (queue.focus == window.get()) return window->handle;
  WindowRef top = window;
  for (;;) {
    if (top->style & (WS_MINIMIZE | WS_DISABLED)) return nullptr;
    if (!top->isChild()) break;
    top = refOf(top->parent);
    if (!top || !top->parent) return nullptr;
  }
  if (top.get() != queue.active) {
    if (!activate(top, false, false) || !window->alive || queue.active != top.get()) return nullptr;
  }
  return moveFocus(window);
}

void activateAnother(Window &window) {
  WindowRef next;
  if (window.owner && canBeActive(*window.owner)) next = refOf(window.owner);
  if (!next)
    for (Window *one : desktopWindow().children)
      if (one != &window && one->queue == window.queue && canBeActive(*one) && !one->is(WS_MINIMIZE)) {
        next = refOf(one);
        break;
      }
  activate(next, false, true);
}

void desktopActivated(const WindowRef &window) {
  Queue &queue = *currentQueue();
  if (window && window->is(WS_DISABLED)) return;
  if (queue.active != window.get()) activate(window, false, true);
}

void setCapture(Queue &queue, Window *window) {
  const WindowRef previous = refOf(queue.capture);
  queue.capture = window;
  if (previous && previous.get() != window) send(previous, WM_CAPTURECHANGED, 0, lParamOf(handleOf(window)));
}

} // namespace platform

using namespace platform;

BOOL EnableWindow(HWND window, BOOL enable) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target) return FALSE;
    const bool wasDisabled = target->is(WS_DISABLED);
    if (enable && wasDisabled) {
      target->style &= ~WS_DISABLED;
      send(target, WM_ENABLE, TRUE);
    } else if (!enable) {
      send(target, WM_CANCELMODE);
      if (wasDisabled || !target->alive) return wasDisabled;
      target->style |= WS_DISABLED;
      if (target->queue->focus == target.get()) setFocus(nullptr);
      if (target->alive) send(target, WM_ENABLE, FALSE);
    }
    return wasDisabled;
  });
}

HWND SetFocus(HWND window) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef target = window ? windowOf(window) : nullptr;
    if (window && (!target || target->queue != currentQueue())) return nullptr;
    return setFocus(target);
  });
}

HWND GetFocus() {
  return locked<HWND>(nullptr, [] { return handleOf(currentQueue()->focus); });
}

HWND SetActiveWindow(HWND window) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const HWND previous = handleOf(currentQueue()->active);
    const WindowRef target = window ? windowOf(window) : nullptr;
    if (window && (!target || target->queue != currentQueue())) return nullptr;
    if (target && target->isChild()) return previous;
    return activate(target, false, true) ? previous : nullptr;
  });
}

HWND GetActiveWindow() {
  return locked<HWND>(nullptr, [] { return handleOf(currentQueue()->active); });
}

BOOL SetForegroundWindow(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || target->isChild() || target->queue != currentQueue()) return FALSE;
    return activate(target, false, true);
  });
}

HWND GetForegroundWindow() {
  return locked<HWND>(nullptr, [] { return windowOrNone(foreground) ? foreground : nullptr; });
}

HWND SetCapture(HWND window) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef target = window ? windowOf(window) : nullptr;
    if (window && (!target || target->queue != currentQueue())) return nullptr;
    Queue &queue = *currentQueue();
    const HWND previous = handleOf(queue.capture);
    setCapture(queue, target.get());
    return previous;
  });
}

BOOL ReleaseCapture() {
  return locked<BOOL>(FALSE, []() -> BOOL {
    setCapture(*currentQueue(), nullptr);
    return TRUE;
  });
}

HWND GetCapture() {
  return locked<HWND>(nullptr, [] { return handleOf(currentQueue()->capture); });
}
