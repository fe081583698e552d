#include "platform/desktop/messages/timers.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"

#include <algorithm>

namespace platform {

Timers::Timer *Timers::find(HWND window, UINT_PTR id) {
  const auto at = std::find_if(timers_.begin(), timers_.end(),
                               [&](const Timer &timer) { return timer.window == window && timer.id == id; });
  return at == timers_.end() ? nullptr : &*at;
}

UINT_PTR Timers::set(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure) {
  Timer *timer = find(window, id);
  if (!timer) {
    if (!window) {
      do nextId_ = nextId_ > 1 ? nextId_ - 1 : 0x7FFF;
      while (find(nullptr, nextId_));
      id = nextId_;
    }
    timer = &timers_.emplace_back();
  }
  const std::chrono::milliseconds length(std::clamp(period, USER_TIMER_MINIMUM, 0x7FFFFFFFu));
  *timer = {window, id, length, procedure, Clock::now() + length};
  return window && id == 0 ? 1 : id;
}

bool Timers::kill(HWND window, UINT_PTR id) {
  const Timer *timer = find(window, id);
  if (!timer) return false;
  timers_.erase(timers_.begin() + (timer - timers_.data()));
  return true;
}

void Timers::killAll(HWND window) {
  std::erase_if(timers_, [&](const Timer &timer) { return timer.window == window; });
}

std::optional<Timers::Clock::time_point> Timers::next() const {
  if (timers_.empty()) return std::nullopt;
  return std::min_element(timers_.begin(), timers_.end(), [](const Timer &a, const Timer &b) { return a.due < b.due; })
      ->due;
}

bool Timers::has(HWND window, UINT_PTR id, TIMERPROC procedure) const {
  return std::any_of(timers_.begin(), timers_.end(), [&](const Timer &timer) {
    return timer.window == window && timer.id == id && timer.procedure == procedure;
  });
}

} // namespace platform

using namespace platform;

namespace {

// The queue with a window's timers, or the caller's for a null window. Null, with the last error set, for an invalid
// handle.
Queue *timerQueue(HWND window) { return window ? above::queueOfWindowOrFail(window) : currentQueue().get(); }

} // namespace

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure) {
  return locked<UINT_PTR>(0, [&]() -> UINT_PTR {
    Queue *const queue = timerQueue(window);
    if (!queue) return 0;
    const UINT_PTR result = queue->timers.set(window, id, period, procedure);
    queue->wake(); // the thread may wait for a later moment
    return result;
  });
}

BOOL KillTimer(HWND window, UINT_PTR id) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    Queue *const queue = timerQueue(window);
    if (!queue) return FALSE;
    return queue->timers.kill(window, id) ? TRUE : failWith(ERROR_INVALID_PARAMETER);
  });
}
