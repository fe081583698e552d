#include "platform/desktop/queue.h"

#include "platform/desktop/desktop.h"
#include "platform/desktop/input.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/update.h"
#include "platform/desktop/window.h"

#include <algorithm>
#include <map>
#include <unistd.h>

namespace platform {

namespace {

constexpr size_t kPostLimit = 10000; // messages in a queue, as on the platform

std::map<DWORD, std::weak_ptr<Queue>> &queues() {
  static auto *all = new std::map<DWORD, std::weak_ptr<Queue>>;
  return *all;
}

// What a call of GetMessageA or PeekMessageA asks for.
struct Filter {
  HWND window; // null for all; -1 for messages of the thread only
  UINT first;
  UINT last;

  static constexpr intptr_t kThread = -1;
  bool ofThread() const { return reinterpret_cast<intptr_t>(window) == kThread; }
  bool wants(HWND handle) const {
    if (!window || handle == window) return true;
    if (ofThread()) return !handle;
    const WindowRef target = windowOrNone(handle);
    const WindowRef top = windowOrNone(window);
    return target && top && isDescendant(*target, *top);
  }
  bool wants(UINT message) const { return (first == 0 && last == 0) || (message >= first && message <= last); }
  bool wantsAny(UINT from, UINT to) const { return (first == 0 && last == 0) || (first <= to && last >= from); }
};

bool takePosted(Queue &queue, const Filter &filter, bool remove, MSG &message) {
  const auto at = std::find_if(queue.posted.begin(), queue.posted.end(),
                               [&](const MSG &one) { return filter.wants(one.message) && filter.wants(one.hwnd); });
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
  const Window *window = nextToPaint(queue, filter.window);
  if (!window) return false;
  message = messageFor(window->handle, WM_PAINT, 0, 0);
  return true;
}

bool takeTimer(Queue &queue, const Filter &filter, bool remove, MSG &message) {
  if (!filter.wants(WM_TIMER)) return false;
  const auto found = queue.timers.take(remove, [&](HWND window) { return filter.wants(window); });
  if (!found) return false;
  message = messageFor(found->hwnd, WM_TIMER, found->wParam, found->lParam);
  return true;
}

bool takeInput(Queue &queue, const Filter &filter, bool remove, MSG &message) {
  if (!filter.wantsAny(WM_NCMOUSEMOVE, WM_MOUSELEAVE) || filter.ofThread()) return false;
  return takeInputMessage(
      queue, [&](HWND window, UINT kind) { return filter.wants(kind) && filter.wants(window); }, remove, message);
}

bool take(Queue &queue, const Filter &filter, bool remove, MSG &message) {
  queue.serveSent();
  if (takePosted(queue, filter, remove, message)) return true;
  pollDesktop(queue);
  queue.serveSent();
  return takePosted(queue, filter, remove, message) || takeInput(queue, filter, remove, message) ||
         takePosted(queue, filter, remove, message) || takeQuit(queue, remove, message) ||
         takePaint(queue, filter, message) || takeTimer(queue, filter, remove, message);
}

} // namespace

void Queue::wake() {
  {
    const std::lock_guard lock(mutex_);
    woken_ = true;
  }
  condition_.notify_one();
  wakeDesktop(*this);
}

void Queue::wait(const std::optional<std::chrono::steady_clock::time_point> &until) {
  if (isDesktopThread(*this)) {
    waitForDesktop(until);
    return;
  }
  const DesktopUnlock unlocked;
  std::unique_lock lock(mutex_);
  const auto come = [this] { return woken_; };
  if (until)
    condition_.wait_until(lock, *until, come);
  else
    condition_.wait(lock, come);
  woken_ = false;
}

void Queue::serveSent() {
  while (!sent.empty()) {
    const std::shared_ptr<Sent> message = sent.front();
    sent.pop_front();
    ++serving;
    if (const WindowRef window = windowOrNone(message->window))
      message->result = callProcedure(*window, message->message, message->wParam, message->lParam);
    --serving;
    message->done = true;
    message->sender->wake();
  }
}

const std::shared_ptr<Queue> &currentQueue() {
  // At the end of the thread, whoever waits for it goes on.
  struct Own {
    std::shared_ptr<Queue> queue;
    ~Own() {
      if (!queue) return;
      const DesktopLock lock;
      endThread(*queue);
      queues().erase(queue->thread);
    }
  };
  static thread_local Own own;
  if (!own.queue) {
    own.queue = std::make_shared<Queue>(GetCurrentThreadId());
    queues()[own.queue->thread] = own.queue;
  }
  return own.queue;
}

std::shared_ptr<Queue> queueOf(DWORD thread) {
  const auto at = queues().find(thread);
  return at == queues().end() ? nullptr : at->second.lock();
}

MSG messageFor(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  MSG made{};
  made.hwnd = window;
  made.message = message;
  made.wParam = wParam;
  made.lParam = lParam;
  made.time = GetTickCount();
  made.pt = cursorPosition();
  return made;
}

BOOL post(Queue &queue, const MSG &message) {
  if (queue.gone) return failWith(ERROR_INVALID_THREAD_ID);
  if (queue.posted.size() >= kPostLimit) return failWith(ERROR_NOT_ENOUGH_QUOTA);
  queue.posted.push_back(message);
  queue.wake();
  return TRUE;
}

void forgetWindow(Queue &queue, const Window &window) {
  std::erase_if(queue.posted, [&](const MSG &message) { return message.hwnd == window.handle; });
  queue.timers.killAll(window.handle);
  for (Window *Queue::*state : {&Queue::focus, &Queue::active, &Queue::capture, &Queue::tracked})
    if (queue.*state == &window) queue.*state = nullptr;
}

LRESULT send(const WindowRef &window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!window || !window->alive) return 0;
  const std::shared_ptr<Queue> &own = currentQueue();
  if (window->queue == own || window->queue->thread == 0) return callProcedure(*window, message, wParam, lParam);
  if (window->queue->gone) return 0;
  const auto sent = std::make_shared<Sent>(Sent{window->handle, message, wParam, lParam, 0, false, own});
  window->queue->sent.push_back(sent);
  window->queue->wake();
  while (!sent->done) {
    own->serveSent();
    if (!sent->done) own->wait(std::nullopt);
  }
  return sent->result;
}

} // namespace platform

using namespace platform;

DWORD GetCurrentThreadId() { return static_cast<DWORD>(gettid()); }

BOOL PeekMessageA(MSG *message, HWND window, UINT first, UINT last, UINT remove) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    Queue &queue = *currentQueue();
    const Filter filter = {window, first, last};
    if (window && !filter.ofThread() && !windowOf(window)) return FALSE;
    return take(queue, filter, remove & PM_REMOVE, *message);
  });
}

BOOL GetMessageA(MSG *message, HWND window, UINT first, UINT last) {
  return locked<BOOL>(-1, [&]() -> BOOL {
    Queue &queue = *currentQueue();
    const Filter filter = {window, first, last};
    if (window && !filter.ofThread() && !windowOf(window)) return -1;
    while (!take(queue, filter, true, *message)) queue.wait(queue.timers.next());
    return message->message != WM_QUIT;
  });
}

LRESULT DispatchMessageA(const MSG *message) {
  return locked<LRESULT>(0, [&]() -> LRESULT {
    if (message->message == WM_TIMER && message->lParam) {
      const auto procedure = reinterpret_cast<TIMERPROC>(message->lParam);
      const WindowRef window = windowOrNone(message->hwnd);
      const Queue &queue = window ? *window->queue : *currentQueue();
      if (!queue.timers.has(message->hwnd, message->wParam, procedure)) return 0; // killed since
      const DesktopUnlock unlocked;
      procedure(message->hwnd, WM_TIMER, message->wParam, GetTickCount());
      return 0;
    }
    if (!message->hwnd) return 0;
    const WindowRef window = windowOf(message->hwnd);
    return window ? callProcedure(*window, message->message, message->wParam, message->lParam) : 0;
  });
}

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return locked<LRESULT>(0, [&]() -> LRESULT {
    const WindowRef target = windowOf(window);
    return target ? send(target, message, wParam, lParam) : 0;
  });
}

BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!window) return post(*currentQueue(), messageFor(nullptr, message, wParam, lParam));
    const WindowRef target = windowOf(window);
    if (!target) return FALSE;
    return post(*target->queue, messageFor(window, message, wParam, lParam));
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
