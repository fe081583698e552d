// The one lock of the desktop half. Every function of the API holds it while it works on windows and queues, and gives it
// up whole, however deep it was taken, while a window procedure runs and while a thread waits. So procedures may call
// the API, and threads may send to one another, without waiting for each other's locks.
#pragma once

#include "platform/kernel/errors.h"

namespace platform {

class DesktopLock {
 public:
  DesktopLock();
  ~DesktopLock();
  DesktopLock(const DesktopLock &) = delete;
  DesktopLock &operator=(const DesktopLock &) = delete;
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

// Runs the body of an API function under the lock.
template <typename Result, typename Body> Result locked(Result failure, Body body) {
  const DesktopLock lock;
  return guarded<Result>(failure, body);
}

} // namespace platform
