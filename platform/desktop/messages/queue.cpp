#include "platform/desktop/messages/queue.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"
#include "platform/desktop/messages/devices.h"
#include "platform/desktop/screen/above.h"

#include <algorithm>
#include <map>
#include <unistd.h>

namespace platform {

namespace {

constexpr size_t kPostLimit = 10000; // messages in a queue, as on Windows

std::map<DWORD, std::weak_ptr<Queue>> &queues() {
  static auto *all = new std::map<DWORD, std::weak_ptr<Queue>>;
  return *all;
}

thread_local constinit const std::shared_ptr<Queue> *current // this thread's, after its first use
    __attribute__((tls_model("initial-exec"))) = nullptr;

// Marks that a thread serves another one. Its end lets the sender go on, by an exception too.
class Service {
 public:
  Service(Queue &queue, Sent &sent) : queue_(queue), sent_(sent) { ++queue_.serving; }
  ~Service() {
    --queue_.serving;
    sent_.done = true;
    if (sent_.sender) sent_.sender->wake();
  }
  Service(const Service &) = delete;
  Service &operator=(const Service &) = delete;

 private:
  Queue &queue_;
  Sent &sent_;
};

} // namespace

void Queue::wake() {
  if (!current || this != current->get()) { // else this thread isn't waiting
    {
      const std::lock_guard lock(mutex_);
      woken_ = true;
    }
    condition_.notify_one();
  }
  if (hasScreen()) theScreen().wake(thread);
}

void Queue::wait(const std::optional<Moment> &until) {
  above::flushDrawn();
  const DesktopUnlock unlocked;
  if (hasScreen() && theScreen().runsHere()) return theScreen().waitForEvents(until);
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
    const std::shared_ptr<Sent> next = std::move(sent.front());
    sent.pop_front();
    const Service service(*this, *next);
    if (next->work)
      next->work();
    else
      next->result = above::call(next->window, next->message, next->wParam, next->lParam);
  }
}

void Queue::letGo() {
  for (const std::shared_ptr<Sent> &one : sent) {
    one->done = true;
    if (one->sender) one->sender->wake();
  }
  sent.clear();
}

const std::shared_ptr<Queue> &currentQueue() {
  if (current) return *current;
  // At its end a thread lets all senders that wait for it go on.
  struct Own {
    const pid_t process = getpid();
    std::shared_ptr<Queue> queue;
    ~Own() {
      current = nullptr;
      if (!queue || getpid() != process) return; // a forked child has no windows
      const DesktopLock lock;
      queue->gone = true;
      above::endThread(*queue);
      queue->letGo();
      queues().erase(queue->thread);
    }
  };
  static thread_local Own own;
  if (!own.queue) {
    own.queue = std::make_shared<Queue>(GetCurrentThreadId());
    queues()[own.queue->thread] = own.queue;
    current = &own.queue;
  }
  return own.queue;
}

std::shared_ptr<Queue> queueOf(DWORD thread) {
  const auto at = queues().find(thread);
  return at == queues().end() ? nullptr : at->second.lock();
}

std::vector<std::shared_ptr<Queue>> allQueues() {
  std::vector<std::shared_ptr<Queue>> all;
  for (const auto &[thread, queue] : queues())
    if (auto one = queue.lock()) all.push_back(std::move(one));
  return all;
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

void forgetWindow(Queue &queue, HWND window) {
  std::erase_if(queue.posted, [&](const MSG &message) { return message.hwnd == window; });
  queue.timers.killAll(window);
  for (HWND Queue::*state : {&Queue::focus, &Queue::active, &Queue::capture, &Queue::tracked})
    if (queue.*state == window) queue.*state = nullptr;
}

void sendNotice(Queue &queue, const std::shared_ptr<Sent> &sent) {
  if (queue.gone) return;
  queue.sent.push_back(sent);
  queue.wake();
}

bool sendTo(Queue &queue, const std::shared_ptr<Sent> &sent, const std::optional<Queue::Moment> &limit) {
  if (queue.gone) return false;
  const std::shared_ptr<Queue> &own = currentQueue();
  const std::shared_ptr<Queue> kept = queue.shared_from_this();
  sent->sender = own;
  sendNotice(queue, sent);
  while (!sent->done) {
    own->serveSent();
    if (sent->done) break;
    if (limit && std::chrono::steady_clock::now() >= *limit) {
      sent->sender = nullptr;
      std::erase(queue.sent, sent);
      return false;
    }
    own->wait(limit);
  }
  return true;
}

} // namespace platform
