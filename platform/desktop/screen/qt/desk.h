// The part of the screen on Qt's thread: the shown windows, the active one, and the pointer.
#pragma once

#include "platform/desktop/screen/qt/wish.h"
#include "platform/desktop/screen/reports.h"

#include <QObject>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <atomic>
#include <deque>
#include <map>
#include <memory>
#include <mutex>

class QWindow;

namespace platform {

class ShownWindow;

class Desk : public QObject {
 public:
  Desk();
  ~Desk() override;
  // Removes everything that belongs to Qt.
  void close();

  ScreenInfo info();

  // Null for an unknown window.
  ShownWindow *find(HWND window);
  ShownWindow &findOrMake(HWND window);
  void hide(ShownWindow &window);
  void remove(HWND window);
  // Links windows with their owners, after one of them has appeared.
  void linkOwned();
  // A window has appeared that the desktop may activate.
  void appeared() { active_.expectAnswer(); }

  void activate(HWND window, Serial serial);
  void setPointer(const Pointer &pointer);
  void movePointer(POINT to, Serial serial);
  void findPointer();
  // May be called on any thread. Result: whether the caller must have flushSoon called.
  bool flushWaits() { return !flushWaits_.exchange(true); }
  void flushSoon();

  // Conversions between the program's pixels and Qt's units.
  QRect toQt(const QRect &program) const;
  QRegion toQt(const QRegion &program) const;
  QRect toProgram(const QRect &qt) const;
  POINT toProgram(const QPointF &qt) const;
  double ratio() const { return ratio_; } // the program's pixels in one of Qt's units

  // Whether the desktop puts windows where the program wants them.
  bool placesWindows() const { return !wayland_; }
  // Whether there is no window manager to minimize and maximize windows.
  bool isUnmanaged();

  // Has late() called when the next wish is due.
  void wait();
  // The user has pressed a mouse button in one of the windows.
  void pressed();
  // Reports a movement of the pointer, unless it follows from the program's own movement.
  void moved(HWND window, POINT at);
  void left(HWND window, const QPointF &last, const QSize &size);

  const Pointer &pointer() const { return pointer_; }

 private:
  void late();
  void watchScreens();
  void learnScreen();
  void focusChanged(QWindow *window);
  Wish<HWND>::Rule activation();

  const bool wayland_;
  double ratio_ = 1;
  std::map<HWND, std::unique_ptr<ShownWindow>> windows_;
  Wish<HWND> active_;
  QTimer wishes_, flush_, learn_;
  QPointer<QScreen> watched_;
  std::atomic<bool> flushWaits_{false}; // the timer is running
  Pointer pointer_;
  Serial pointerSerial_ = 0;
  struct Echo {
    POINT at;
    std::chrono::steady_clock::time_point until;
  };
  std::deque<Echo> echoes_; // of the program's movements

  std::mutex infoMutex_;
  ScreenInfo info_{};
};

} // namespace platform
