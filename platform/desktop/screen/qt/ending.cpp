// When a process ends, its handlers and the destructors of its static objects run, the last one made first. Qt makes some
// of its own whenever it first needs them, so that no handler is sure to be before all of theirs, while Qt's thread still
// works with them. Two things come before all handlers: the data of the thread that ends the process go first, and exit
// itself is a function of the program's that may stand before that of the C library.

#include "platform/desktop/screen/qt/ending.h"

#include <atomic>
#include <cstdlib>
#include <dlfcn.h>
#include <unistd.h>

namespace platform {

namespace {

std::atomic<void (*)(const int *)> whatEnds = nullptr;

auto findExit() { return reinterpret_cast<decltype(&exit)>(dlsym(RTLD_NEXT, "exit")); }

// Found while nothing ends: a forked child may find the dynamic linker locked by a thread that it doesn't have.
const auto realExit = findExit();

void processEnds(const int *status) {
  if (void (*const ending)(const int *) = whatEnds) ending(status);
}

// For the return from the main function, which the C library follows up by itself. It is made first of the main thread's
// data, and so goes last.
struct MainThread {
  ~MainThread() {
    if (gettid() == getpid()) processEnds(nullptr);
  }
};
thread_local MainThread mainThread;
[[maybe_unused]] const MainThread *const made = &mainThread; // as the program starts, on its main thread

} // namespace

void whenProcessEnds(void (*ending)(const int *status)) { whatEnds = ending; }

} // namespace platform

extern "C" __attribute__((visibility("default"))) void exit(int status) noexcept {
  platform::processEnds(&status);
  (platform::realExit ? platform::realExit : platform::findExit())(status); // null before the program has started
  __builtin_unreachable();
}
