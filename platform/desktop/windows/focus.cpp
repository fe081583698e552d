#include "platform/desktop/windows/focus.h"

#include "platform/desktop/guards.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"
#include "platform/desktop/windows/onscreen.h"
#include "platform/desktop/windows/placing.h"

namespace platform {

namespace {

// The window of this program that has the keyboard; null if another program has it.
HWND foreground = nullptr;

// Tells all top-level windows of a thread that the program has become active or inactive.
void tellApplication(const std::shared_ptr<Queue> &queue, bool active, DWORD other) {
  for (const WindowRef &window : childrenOf(desktopWindow()))
    if (window->alive && window->queue == queue) send(window, WM_ACTIVATEAPP, active, static_cast<LPARAM>(other));
}

HWND moveFocus(const WindowRef &window) {
  Queue &queue = *currentQueue();
  const HWND old = queue.focus, handle = handleOf(window.get());
  if (old == handle) return old;
  queue.focus = handle;
  const OnThrow stays([&] {
    if (queue.focus == handle) queue.focus = old;
  });
  if (const WindowRef before = windowOrNone(old)) {
    send(before, WM_KILLFOCUS, wParamOf(handle));
    if (queue.focus != handle) return old; // the procedure has moved the focus again
  }
  if (window) send(window, WM_SETFOCUS, wParamOf(old));
  return old;
}

bool canBeActive(const Window &window) {
  return !window.isChild() && window.is(WS_VISIBLE) && !window.is(WS_DISABLED) && !window.passesInput &&
         !(window.exStyle & WS_EX_NOACTIVATE);
}

// Gives the keyboard to a window of this thread, or takes it from the thread. Another thread that had it is told.
void takeForeground(const std::shared_ptr<Queue> &queue, HWND window, Cause cause) {
  Queue *const before = above::queueOfWindow(foreground);
  if (!window && before && before != queue.get()) return; // another thread has it already
  foreground = window;
  if (cause != Cause::desktop) activateOnScreen(windowOrNone(window).get());
  if (!before || before == queue.get()) return;
  before->deeds.emplace_back(Activated{nullptr, activationNow()});
  before->wake();
}

} // namespace

bool activate(const WindowRef &window, Cause cause, bool focuses) {
  const std::shared_ptr<Queue> &queue = currentQueue();
  const WindowRef previous = windowOrNone(queue->active);
  const HWND next = handleOf(window.get()), last = handleOf(previous.get());
  if (previous == window) {
    if (window && foreground != next) takeForeground(queue, next, cause);
    return true;
  }
  if (previous) {
    send(previous, WM_NCACTIVATE, FALSE, lParamOf(next));
    if (previous->alive)
      send(previous, WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, previous->is(WS_MINIMIZE)), lParamOf(next));
    if (queue->active != last && previous->alive) return queue->active == next;
  }
  if (window && !window->alive) return false;
  queue->active = next;
  takeForeground(queue, next, cause);
  if (!previous != !window) tellApplication(queue, window != nullptr, 0);
  if (window && window->alive && queue->active == next) {
    if (window->isTopLevel()) raise(*window);
    send(window, WM_NCACTIVATE, TRUE, lParamOf(last));
    if (window->alive)
      send(window, WM_ACTIVATE, MAKEWPARAM(cause == Cause::mouse ? WA_CLICKACTIVE : WA_ACTIVE, window->is(WS_MINIMIZE)),
           lParamOf(last));
  }
  if (focuses && queue->active == next && (!window || window->alive)) {
    const WindowRef focus = windowOrNone(queue->focus);
    if (!focus || !window || &rootOf(*focus) != window.get()) moveFocus(window);
  }
  return true;
}

HWND setFocus(const WindowRef &window) {
  Queue &queue = *currentQueue();
  if (!window) return moveFocus(nullptr);
  if (queue.focus == window->handle) return window->handle;
  WindowRef top = window;
  for (;;) {
    if (top->style & (WS_MINIMIZE | WS_DISABLED)) return nullptr;
    if (!top->isChild()) break;
    top = refOf(top->parent);
    if (!top || !top->parent) return nullptr;
  }
  if (!isActive(*top)) {
    if (!activate(top, Cause::program, false) || !window->alive || !isActive(*top)) return nullptr;
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
  activate(next, Cause::program, true);
}

void desktopActivated(const WindowRef &window) {
  if (!window || !window->is(WS_DISABLED)) {
    activate(window, Cause::desktop, true);
    return;
  }
  // a dialog has disabled this window: the keyboard goes back to the dialog
  if (const WindowRef active = windowOrNone(window->queue->active)) activateOnScreen(active.get());
}

Queue *above::keyboardQueue() { return queueOfWindow(foreground); }

} // namespace platform

using namespace platform;

BOOL EnableWindow(HWND window, BOOL enable) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target) return FALSE;
    return onThreadOf<BOOL>(*target, FALSE, [&]() -> BOOL {
      const bool wasDisabled = target->is(WS_DISABLED);
      if (enable && wasDisabled) {
        target->style &= ~WS_DISABLED;
        send(target, WM_ENABLE, TRUE);
      } else if (!enable) {
        send(target, WM_CANCELMODE);
        if (wasDisabled || !target->alive) return wasDisabled;
        target->style |= WS_DISABLED;
        if (isFocus(*target)) setFocus(nullptr);
        if (target->alive) send(target, WM_ENABLE, FALSE);
      }
      return wasDisabled;
    });
  });
}

namespace {

// A window of this thread. Null, with the last error set, for another thread's window and for an invalid handle.
WindowRef ownWindow(HWND handle) {
  WindowRef window = windowOf(handle);
  if (!window || window->queue == currentQueue()) return window;
  SetLastError(ERROR_ACCESS_DENIED);
  return nullptr;
}

} // namespace

HWND SetFocus(HWND window) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef target = window ? ownWindow(window) : nullptr;
    return window && !target ? nullptr : setFocus(target);
  });
}

HWND GetFocus() {
  return locked<HWND>(nullptr, [] { return currentQueue()->focus; });
}

HWND SetActiveWindow(HWND window) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const HWND previous = currentQueue()->active;
    const WindowRef target = window ? ownWindow(window) : nullptr;
    if (window && !target) return nullptr;
    if (target && target->isChild()) return previous;
    return activate(target, Cause::program, true) ? previous : nullptr;
  });
}

HWND GetActiveWindow() {
  return locked<HWND>(nullptr, [] { return currentQueue()->active; });
}

BOOL SetForegroundWindow(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || target->isChild()) return FALSE;
    if (target->queue == currentQueue()) return activate(target, Cause::program, true);
    const auto sent = std::make_shared<Sent>(); // its own thread activates it at its next message
    sent->work = [target] {
      if (target->alive) activate(target, Cause::program, true);
    };
    sendNotice(*target->queue, sent);
    return TRUE;
  });
}

HWND GetForegroundWindow() {
  return locked<HWND>(nullptr, [] { return windowOrNone(foreground) ? foreground : nullptr; });
}
