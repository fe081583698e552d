// When a process ends, its handlers and the destructors of its static objects run, the latest first. Qt makes such
// objects whenever it first needs them, and Qt's thread still works with them. So no handler is sure to run before all
// of Qt's. Two things run before any handler: the destructors of the ending thread's thread_local data, and exit
// itself, since a program may define a function in front of the C library's.

#include "platform/desktop/screen/qt/ending.h"

#include <atomic>
#include <cstdlib>
#include <dlfcn.h>
#include <unistd.h>

namespace platform {

namespace {

std::atomic<void (*)(const int *)> whatEnds = nullptr;

auto findExit() { return reinterpret_cast<decltype(&exit)>(dlsym(RTLD_NEXT, "exit")); }

// Looked up early: a forked child may find the dynamic linker locked by a thread that doesn't exist there.
const auto realExit = findExit();

void processEnds(const int *status) {
  if (void (*const ending)(const int *) = whatEnds) ending(status);
}

// For the return from main, after which the C library doesn't call this exit. The object is the first of the main
// thread's data, and so it is destroyed last.
struct MainThread {
  ~MainThread() {
    if (gettid() == getpid()) processEnds(nullptr);
  }
};
thread_local MainThread mainThread;
[[maybe_unused]] const MainThread *const made = &mainThread; // made when the program starts, on its main thread

} // namespace

void whenProcessEnds(void (*ending)(const int *status)) { whatEnds = ending; }

} // namespace platform

extern "C" __attribute__((visibility("default"))) void exit(int status) noexcept {
  platform::processEnds(&status);
  (platform::realExit ? platform::realExit : platform::findExit())(status); // null before static initialization
  __builtin_unreachable();
}
