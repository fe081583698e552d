#include "platform/desktop/lock.h"

#include <mutex>
#include <utility>

namespace platform {

namespace {

std::mutex &mutex() {
  static auto *one = new std::mutex; // outlives every thread
  return *one;
}

thread_local int depth = 0; // how often this thread has taken the lock

} // namespace

DesktopLock::DesktopLock() {
  if (depth++ == 0) mutex().lock();
}

DesktopLock::~DesktopLock() {
  if (--depth == 0) mutex().unlock();
}

DesktopUnlock::DesktopUnlock() : depth_(std::exchange(depth, 0)) {
  if (depth_ > 0) mutex().unlock();
}

DesktopUnlock::~DesktopUnlock() {
  if (depth_ > 0) mutex().lock();
  depth = depth_;
}

} // namespace platform
