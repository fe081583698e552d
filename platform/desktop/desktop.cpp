#include "platform/desktop/desktop.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/surface.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr SIZE kScreen = {1280, 1024}; // where there is no display
constexpr std::chrono::milliseconds kPollInterval(5);

std::atomic<DWORD> desktopThread = 0;
QApplication *application = nullptr; // never destroyed: windows may live as long as the process
std::atomic<QAbstractEventDispatcher *> dispatcher = nullptr;

bool isSet(const char *variable) {
  const char *value = std::getenv(variable);
  return value && *value;
}

} // namespace

bool hasDisplay() {
  static const bool display = [] {
    const char *wanted = std::getenv("QT_QPA_PLATFORM");
    if (wanted && *wanted) return std::strncmp(wanted, "offscreen", 9) != 0 && std::strncmp(wanted, "minimal", 7) != 0;
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY");
  }();
  return display;
}

void startApplication() {
  if (application) return;
  if (!hasDisplay())
    qputenv("QT_QPA_PLATFORM", "offscreen");
  else if (!isSet("QT_QPA_PLATFORM") && isSet("DISPLAY"))
    qputenv("QT_QPA_PLATFORM", "xcb"); // places windows where they are told to stand
  // pixels here are the screen's own
  qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
  static int argc = 1;
  static char name[] = "wq";
  static char *argv[] = {name, nullptr};
  application = new QApplication(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  dispatcher = QAbstractEventDispatcher::instance();
  desktopThread = currentQueue()->thread;
}

SIZE screenSize() {
  if (!hasDisplay()) return kScreen;
  startApplication();
  const QSize size = QApplication::primaryScreen()->size();
  return {size.width(), size.height()};
}

RECT workArea() {
  if (!hasDisplay()) return {0, 0, kScreen.cx, kScreen.cy};
  startApplication();
  const QRect area = QApplication::primaryScreen()->availableGeometry();
  return {area.x(), area.y(), area.x() + area.width(), area.y() + area.height()};
}

bool isDesktopThread(const Queue &queue) { return application && queue.thread == desktopThread; }

void pollDesktop(Queue &queue) {
  if (!isDesktopThread(queue)) return;
  static Clock::time_point last;
  const Clock::time_point now = Clock::now();
  if (now - last < kPollInterval) return;
  last = now;
  flushSurfaces();
  const DesktopUnlock unlocked;
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void waitForDesktop(const std::optional<Clock::time_point> &until) {
  flushSurfaces();
  QTimer timer; // its end is an event, which ends the wait
  if (until) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*until - Clock::now());
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(static_cast<int>(std::clamp<int64_t>(left.count(), 0, 1 << 30)));
  }
  const DesktopUnlock unlocked;
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void wakeDesktop(const Queue &queue) {
  if (application && queue.thread == desktopThread && queue.thread != GetCurrentThreadId()) dispatcher.load()->wakeUp();
}

void showCursor(Qt::CursorShape shape, bool hidden) {
  if (!application || !hasDisplay()) return;
  const QCursor cursor(hidden ? Qt::BlankCursor : shape);
  for (QWindow *window : QGuiApplication::topLevelWindows()) window->setCursor(cursor);
}

} // namespace platform
