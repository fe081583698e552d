// What of the screen lives on Qt's thread: the windows that are shown, which of them is active, and the pointer.
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
  // Everything of Qt's goes.
  void close();

  ScreenInfo info();

  // Null for a window that isn't there.
  ShownWindow *find(HWND window);
  ShownWindow &findOrMake(HWND window);
  void hide(ShownWindow &window);
  void remove(HWND window);
  // An owner or a window that it owns has come.
  void linkOwned();
  // A window has, which the desktop may activate.
  void appeared() { active_.expectAnswer(); }

  void activate(HWND window, Serial serial);
  void setPointer(const Pointer &pointer);
  void movePointer(POINT to, Serial serial);
  void findPointer();
  // From any thread. Result: whether flushSoon is to be called.
  bool flushWaits() { return !flushWaits_.exchange(true); }
  void flushSoon();

  // Between the program's pixels and Qt's units.
  QRect toQt(const QRect &program) const;
  QRegion toQt(const QRegion &program) const;
  QRect toProgram(const QRect &qt) const;
  POINT toProgram(const QPointF &qt) const;
  double ratio() const { return ratio_; } // pixels of the program in a unit of Qt's

  // Whether windows stand where they are told to.
  bool placesWindows() const { return !wayland_; }
  // Whether nobody is there who minimizes and maximizes windows.
  bool isUnmanaged();

  // A wish of a window waits for its time.
  void wait();
  // The user has pressed a button of the mouse in one of the windows.
  void pressed();
  // Tells a movement of the pointer, unless it is what the program's own one brings.
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
  std::atomic<bool> flushWaits_{false}; // for the timer
  Pointer pointer_;
  Serial pointerSerial_ = 0;
  struct Echo {
    POINT at;
    std::chrono::steady_clock::time_point until;
  };
  std::deque<Echo> echoes_; // of movements by the program

  std::mutex infoMutex_;
  ScreenInfo info_{};
};

} // namespace platform
