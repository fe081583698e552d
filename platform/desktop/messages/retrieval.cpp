// Getting messages from the queue, dispatching, sending and posting them.

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"
#include "platform/desktop/messages/input.h"
#include "platform/desktop/screen/above.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr std::chrono::milliseconds kEventsPause(5);

// The arguments of GetMessageA or PeekMessageA.
struct Filter final : InputFilter {
  Filter(HWND window, UINT first, UINT last) : window(window), first(first), last(last) {}

  const HWND window; // null for all; -1 for messages of the thread only
  const UINT first, last;

  static constexpr intptr_t kThread = -1;
  bool ofThread() const { return reinterpret_cast<intptr_t>(window) == kThread; }
  bool wants(HWND handle) const {
    if (!window || handle == window) return true;
    return ofThread() ? !handle : above::isIn(handle, window);
  }
  bool wants(UINT message) const { return (first == 0 && last == 0) || (message >= first && message <= last); }
  bool wants(HWND handle, UINT message) const override { return wants(message) && wants(handle); }
  bool wantsAny(UINT from, UINT to) const { return (first == 0 && last == 0) || (first <= to && last >= from); }
};

bool takePosted(Queue &queue, const Filter &filter, bool remove, MSG &message) {
  const auto at = std::find_if(queue.posted.begin(), queue.posted.end(),
                               [&](const MSG &one) { return filter.wants(one.hwnd, one.message); });
  if (at == queue.posted.end()) return false;
  message = *at;
  if (remove) queue.posted.erase(at);
  return true;
}

bool takeQuit(Queue &queue, bool remove, MSG &message) {
  if (!queue.quit) return false;
  message = messageFor(nullptr, WM_QUIT, static_cast<WPARAM>(queue.quitStatus), 0);
  if (remove) queue.quit = false;
  return true;
}

bool takePaint(Queue &queue, const Filter &filter, MSG &message) {
  if (!filter.wants(WM_PAINT) || filter.ofThread()) return false;
  const HWND window = above::nextToPaint(queue, filter.window);
  if (!window) return false;
  message = messageFor(window, WM_PAINT, 0, 0);
  return true;
}

bool takeTimer(Queue &queue, const Filter &filter, bool remove, MSG &message) {
  if (!filter.wants(WM_TIMER)) return false;
  const auto found = queue.timers.take(remove, [&](HWND window) { return filter.wants(window); });
  if (!found) return false;
  message = messageFor(found->hwnd, WM_TIMER, found->wParam, found->lParam);
  return true;
}

// A resting pointer gets a WM_MOUSEMOVE if another window may be under it.
void moveResting(Queue &queue) {
  lookUnderPointer();
  if (!std::exchange(queue.pointerDue, false) || !queue.input.empty()) return;
  moveWhereItIs();
}

bool takeInput(Queue &queue, const Filter &filter, bool remove, MSG &message) {
  if (!filter.wantsAny(WM_NCMOUSEMOVE, WM_MOUSELEAVE) || filter.ofThread()) return false;
  moveResting(queue);
  return takeInputMessage(queue, filter, remove, message);
}

// Carries out the user's deeds on whole windows, but only those in the queue now: a window may be moved again and
// again.
void carryOutDeeds(Queue &queue) {
  for (size_t left = queue.deeds.size(); left > 0 && !queue.deeds.empty(); --left) {
    const Report deed = std::move(queue.deeds.front());
    queue.deeds.pop_front();
    above::carryOut(deed);
  }
}

// Runs the Qt event loop of the program between messages, but not too often.
void runEvents() {
  if (!hasScreen() || !theScreen().runsHere()) return;
  static Queue::Moment last; // static is enough: a program has one such thread
  const Queue::Moment now = std::chrono::steady_clock::now();
  if (now - last < kEventsPause) return;
  last = now;
  const DesktopUnlock unlocked;
  theScreen().runEvents();
}

bool take(Queue &queue, const Filter &filter, bool remove, MSG &message) {
  queue.serveSent();
  runEvents();
  carryOutDeeds(queue);
  const bool taken = takePosted(queue, filter, remove, message) || takeQuit(queue, remove, message) ||
                     takeInput(queue, filter, remove, message) || takePosted(queue, filter, remove, message) ||
                     takePaint(queue, filter, message) || takeTimer(queue, filter, remove, message);
  if (taken) queue.messageTime = message.time;
  return taken;
}

} // namespace

std::optional<Queue::Moment> above::dispatchWaiting() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam)); // for the message loop that runs next
      return std::nullopt;
    }
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  const DesktopLock lock;
  return currentQueue()->timers.next();
}

} // namespace platform

using namespace platform;

BOOL PeekMessageA(MSG *message, HWND window, UINT first, UINT last, UINT remove) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    Queue &queue = *currentQueue();
    const Filter filter(window, first, last);
    if (window && !filter.ofThread() && !above::queueOfWindowOrFail(window)) return FALSE;
    if (take(queue, filter, remove & PM_REMOVE, *message)) return TRUE;
    above::flushDrawn(); // the program may draw and peek for ever
    return FALSE;
  });
}

BOOL GetMessageA(MSG *message, HWND window, UINT first, UINT last) {
  return locked<BOOL>(-1, [&]() -> BOOL {
    Queue &queue = *currentQueue();
    const Filter filter(window, first, last);
    if (window && !filter.ofThread() && !above::queueOfWindowOrFail(window)) return -1;
    while (!take(queue, filter, true, *message)) queue.wait(queue.timers.next());
    return message->message != WM_QUIT;
  });
}

LRESULT DispatchMessageA(const MSG *message) {
  return locked<LRESULT>(0, [&]() -> LRESULT {
    if (message->message == WM_TIMER && message->lParam) {
      const auto procedure = reinterpret_cast<TIMERPROC>(message->lParam);
      const Queue *const queue = message->hwnd ? above::queueOfWindow(message->hwnd) : currentQueue().get();
      if (!queue || !queue->timers.has(message->hwnd, message->wParam, procedure)) return 0; // killed meanwhile
      callOut(procedure, message->hwnd, WM_TIMER, message->wParam, GetTickCount());
      return 0;
    }
    if (!message->hwnd) return 0;
    return above::call(message->hwnd, message->message, message->wParam, message->lParam);
  });
}

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return locked<LRESULT>(0, [&] { return above::send(window, message, wParam, lParam); });
}

LRESULT SendMessageTimeoutA(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT, UINT timeout,
                            ULONG_PTR *result) {
  return locked<LRESULT>(0, [&]() -> LRESULT {
    Queue *const queue = above::queueOfWindowOrFail(window);
    if (!queue) return 0;
    LRESULT answer;
    if (queue == currentQueue().get()) {
      answer = above::call(window, message, wParam, lParam);
    } else {
      const auto sent = std::make_shared<Sent>(Sent{window, message, wParam, lParam, {}, 0, false, nullptr});
      if (!sendTo(*queue, sent, std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout)))
        return failWith(ERROR_TIMEOUT);
      answer = sent->result;
    }
    if (result) *result = static_cast<ULONG_PTR>(answer);
    return 1;
  });
}

BOOL SendNotifyMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    Queue *const queue = above::queueOfWindowOrFail(window);
    if (!queue) return FALSE;
    if (queue == currentQueue().get())
      above::call(window, message, wParam, lParam);
    else
      sendNotice(*queue, std::make_shared<Sent>(Sent{window, message, wParam, lParam, {}, 0, false, nullptr}));
    return TRUE;
  });
}

BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!window) return post(*currentQueue(), messageFor(nullptr, message, wParam, lParam));
    Queue *const queue = above::queueOfWindowOrFail(window);
    return queue && post(*queue, messageFor(window, message, wParam, lParam));
  });
}

BOOL PostThreadMessageA(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const std::shared_ptr<Queue> queue = queueOf(thread);
    if (!queue) return failWith(ERROR_INVALID_THREAD_ID);
    return post(*queue, messageFor(nullptr, message, wParam, lParam));
  });
}

void PostQuitMessage(int status) {
  locked<int>(0, [&] {
    Queue &queue = *currentQueue();
    queue.quit = true;
    queue.quitStatus = status;
    queue.wake();
    return 0;
  });
}

BOOL InSendMessage() {
  return locked<BOOL>(FALSE, []() -> BOOL { return currentQueue()->serving > 0; });
}
