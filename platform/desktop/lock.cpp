#include "platform/desktop/lock.h"

#include <mutex>
#include <utility>

namespace platform {

namespace {

std::mutex &mutex() {
  static auto *one = new std::mutex; // outlives every thread
  return *one;
}

// Every call of the API reads this record. With this TLS model no call into the dynamic linker is needed.
struct Thread {
  int depth = 0;                // how often this thread has taken the lock
  DesktopLock *level = nullptr; // the innermost level since the last call of the program
};
thread_local constinit Thread thread __attribute__((tls_model("initial-exec")));

} // namespace

DesktopLock::DesktopLock() : outer_(std::exchange(thread.level, this)) {
  if (thread.depth++ == 0) mutex().lock();
}

DesktopLock::~DesktopLock() {
  thread.level = outer_;
  if (--thread.depth == 0) mutex().unlock();
}

DesktopUnlock::DesktopUnlock() : depth_(std::exchange(thread.depth, 0)) {
  if (depth_ > 0) mutex().unlock();
}

DesktopUnlock::~DesktopUnlock() {
  if (depth_ > 0) mutex().lock();
  thread.depth = depth_;
}

CallOut::CallOut() : level_(std::exchange(thread.level, nullptr)), depth_(std::exchange(thread.depth, 0)) {
  if (depth_ > 0) mutex().unlock();
}

CallOut::~CallOut() {
  if (depth_ > 0) mutex().lock();
  thread.depth = depth_;
  thread.level = level_;
  if (!returned_ && level_) level_->thrown_ = true;
}

} // namespace platform
