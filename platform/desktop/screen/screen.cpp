// Chooses the screen.

#include "platform/desktop/screen/screen.h"

#include "platform/desktop/screen/null/nullscreen.h"
#include "platform/desktop/screen/qt/qtscreen.h"

#include <atomic>
#include <mutex>

namespace platform {

namespace {

std::atomic<Screen *> screen = nullptr; // never destroyed: threads use it until the process ends
std::atomic<bool> realPixels = false;

std::mutex &startMutex() {
  static auto *one = new std::mutex;
  return *one;
}

} // namespace

Screen &theScreen() {
  if (Screen *const there = screen) return *there;
  const std::lock_guard lock(startMutex());
  if (!screen) {
    std::unique_ptr<Screen> started = startQtScreen();
    screen = (started ? std::move(started) : makeNullScreen()).release();
  }
  return *screen;
}

bool hasScreen() { return screen != nullptr; }

bool useRealPixels() {
  const std::lock_guard lock(startMutex());
  if (screen) return realPixels;
  return realPixels = true;
}

bool usesRealPixels() { return realPixels; }

} // namespace platform
