// The one lock of the desktop half. Every function of the API holds it while it works on windows and queues, and gives it
// up whole, however deep it was taken, while a procedure of the program runs and while a thread waits. So procedures may
// call the API, and threads may send to one another, without waiting for each other's locks.
#pragma once

#include "platform/kernel/errors.h"

#include <type_traits>

namespace platform {

class DesktopLock {
 public:
  DesktopLock();
  ~DesktopLock();
  DesktopLock(const DesktopLock &) = delete;
  DesktopLock &operator=(const DesktopLock &) = delete;

 private:
  template <typename Result, typename Body> friend Result locked(Result failure, Body body);
  friend class CallOut;

  bool thrown_ = false; // by the program, through this level
  DesktopLock *outer_;  // null for one that the program has called
};

// The lock given up, until the end of the scope.
class DesktopUnlock {
 public:
  DesktopUnlock();
  ~DesktopUnlock();
  DesktopUnlock(const DesktopUnlock &) = delete;
  DesktopUnlock &operator=(const DesktopUnlock &) = delete;

 private:
  int depth_;
};

// A call of a procedure of the program's: without the lock, and what it throws is nothing of the layer's.
class CallOut {
 public:
  CallOut();
  ~CallOut();
  CallOut(const CallOut &) = delete;
  CallOut &operator=(const CallOut &) = delete;

  // The procedure has returned; else it has thrown.
  void returned() { returned_ = true; }

 private:
  DesktopLock *const level_;
  const int depth_;
  bool returned_ = false;
};

template <typename Procedure, typename... Arguments>
auto callOut(Procedure procedure, Arguments... arguments) -> decltype(procedure(arguments...)) {
  CallOut call;
  if constexpr (std::is_void_v<decltype(procedure(arguments...))>) {
    procedure(arguments...);
    call.returned();
  } else {
    const auto result = procedure(arguments...);
    call.returned();
    return result;
  }
}

// Runs the body of an API function under the lock. Memory that runs out in the layer is an error of the API; what a
// procedure of the program throws goes on to the program.
template <typename Result, typename Body> Result locked(Result failure, Body body) {
  DesktopLock lock;
  try {
    return body();
  } catch (const std::exception &) {
    if (lock.thrown_) {
      if (lock.outer_) lock.outer_->thrown_ = true;
      throw;
    }
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return failure;
  }
}

} // namespace platform
