// The one lock of the desktop half. Every function of the API holds the lock while it works on windows and queues. The
// lock is given up whole, however deep it was taken, while a procedure of the program runs and while a thread waits. So
// procedures may call the API, and threads may send to one another, without a deadlock.
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

  bool thrown_ = false; // the program threw an exception through this level
  DesktopLock *outer_;  // null for a function that the program has called
};

// Gives up the lock until the end of the scope.
class DesktopUnlock {
 public:
  DesktopUnlock();
  ~DesktopUnlock();
  DesktopUnlock(const DesktopUnlock &) = delete;
  DesktopUnlock &operator=(const DesktopUnlock &) = delete;

 private:
  int depth_;
};

// A call of one of the program's procedures: without the lock, and its exceptions count as the program's.
class CallOut {
 public:
  CallOut();
  ~CallOut();
  CallOut(const CallOut &) = delete;
  CallOut &operator=(const CallOut &) = delete;

  // Marks that the procedure has returned. Without this mark it has thrown.
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

// Runs the body of an API function under the lock. If the layer runs out of memory, the function fails. An exception
// from a procedure of the program passes through to the program.
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
