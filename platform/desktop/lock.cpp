#include "platform/desktop/lock.h"

#include <exception>
#include <mutex>
#include <utility>

namespace platform {

namespace {

std::mutex &mutex() {
  static auto *one = new std::mutex; // outlives every thread
  return *one;
}

thread_local int depth = 0;                // how often this thread has taken the lock
thread_local DesktopLock *level = nullptr; // the innermost since the program was called last

} // namespace

DesktopLock::DesktopLock() : outer_(std::exchange(level, this)) {
  if (depth++ == 0) mutex().lock();
}

DesktopLock::~DesktopLock() {
  level = outer_;
  if (--depth == 0) mutex().unlock();
}

DesktopUnlock::DesktopUnlock() : depth_(std::exchange(depth, 0)) {
  if (depth_ > 0) mutex().unlock();
}

DesktopUnlock::~DesktopUnlock() {
  if (depth_ > 0) mutex().lock();
  depth = depth_;
}

CallOut::CallOut() : level_(std::exchange(level, nullptr)), exceptions_(std::uncaught_exceptions()) {}

CallOut::~CallOut() {
  level = level_;
  if (level_ && std::uncaught_exceptions() > exceptions_) level_->thrown_ = true;
}

} // namespace platform
