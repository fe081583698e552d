// The timers of a thread.
#pragma once

#include "platform/winapi.h"

#include <chrono>
#include <optional>
#include <vector>

namespace platform {

class Timers {
 public:
  using Clock = std::chrono::steady_clock;

  // Sets a new timer, or restarts an existing one.
  // id: for a null window, 0 or an unknown id asks for a new one.
  UINT_PTR set(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure);
  bool kill(HWND window, UINT_PTR id);
  void killAll(HWND window);
  // The next moment at which a timer is due.
  std::optional<Clock::time_point> next() const;
  // Finds a due timer and starts its next period, unless remove is false.
  // accepts: whether the caller wants messages of a window.
  template <typename Accepts> std::optional<MSG> take(bool remove, Accepts accepts);
  bool has(HWND window, UINT_PTR id, TIMERPROC procedure) const;
  size_t count() const { return timers_.size(); }

 private:
  struct Timer {
    HWND window;
    UINT_PTR id;
    std::chrono::milliseconds period;
    TIMERPROC procedure;
    Clock::time_point due;
  };
  Timer *find(HWND window, UINT_PTR id);

  std::vector<Timer> timers_;
  UINT_PTR nextId_ = 0x7FFF; // counts down, to differ from ids that applications choose
};

template <typename Accepts> std::optional<MSG> Timers::take(bool remove, Accepts accepts) {
  const Clock::time_point now = Clock::now();
  Timer *first = nullptr;
  for (Timer &timer : timers_)
    if (timer.due <= now && (!first || timer.due < first->due) && accepts(timer.window)) first = &timer;
  if (!first) return std::nullopt;
  MSG message{};
  message.hwnd = first->window;
  message.message = WM_TIMER;
  message.wParam = first->id;
  message.lParam = reinterpret_cast<LPARAM>(first->procedure);
  if (remove) {
    first->due += first->period;
    if (first->due <= now) first->due = now + first->period; // missed ticks don't pile up
  }
  return message;
}

} // namespace platform
