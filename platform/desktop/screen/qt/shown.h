// A top-level window of the program, shown by Qt with the program's picture in it.
#pragma once

#include "platform/desktop/screen/qt/desk.h"

#include <QBackingStore>
#include <QWindow>

namespace platform {

class ShownWindow : public QWindow {
 public:
  ShownWindow(HWND window, Desk &desk);
  ~ShownWindow() override;

  HWND id() const { return id_; }
  HWND owner() const { return look_.owner; }

  void setPicture(std::shared_ptr<Picture> picture) { picture_ = std::move(picture); }
  void setLook(const Look &look);
  void place(const Stand &stand, Serial serial);
  void setState(ShowState state, Serial serial);
  void appear();
  void vanish();
  void flush();

  // An event's point on the screen, as the program sees the window's place.
  POINT programPoint(const QPointF &local, const QPointF &global) const;

  bool takesFiles() const { return look_.takesFiles; }
  // The files of a drag that is over the window.
  std::vector<std::string> &dragged() { return dragged_; }

  void setPointerAt(const QPointF &local) { pointerAt_ = local; }
  QPointF pointerAt() const { return pointerAt_; }

  void pressed();
  // Handles wishes that are due. Result: the time of the next one.
  std::optional<std::chrono::steady_clock::time_point> late(std::chrono::steady_clock::time_point now);

 protected:
  bool event(QEvent *event) override;

 private:
  Wish<QRect>::Rule placing();
  Wish<ShowState>::Rule stating();
  bool askPlace();
  bool askState(ShowState state);
  void geometryTold();
  void stateTold(ShowState state);
  void takeDesktopsPlace();
  void keepDesktopsSize(const QRect &wanted, Serial serial);
  void tellPlace();
  void limitSize(bool unlimited);
  bool isFree() const;
  void stand();
  QRect relativeToOwner(const QRect &qt) const;

  QRect placeNow() const;
  void show(const QRegion &changed, bool all);
  void paint(const QImage &image, const QRegion &changed, const QRegion &part, bool all);
  void showAll();

  const HWND id_;
  Desk &desk_;
  Look look_;
  bool looks_ = false; // whether look_ is set
  Stand stand_;
  QPoint origin_;  // of the client area, as the program sees it, in its pixels
  QPoint stoodAt_; // the last place set by stand()
  Wish<QRect> place_;
  Wish<ShowState> state_;
  bool geometrySince_ = false;                   // a geometry report came since the last request for a state
  bool refused_ = false;                         // a Wayland compositor refused to maximize the window
  std::optional<std::pair<QRect, Serial>> deed_; // waits for a change of state that belongs to it
  QTimer tell_;
  QTimer vanished_;      // runs while the window manager may still be taking the window away
  bool appears_ = false; // when that is over
  QPointF pointerAt_;    // the last place of the pointer
  std::vector<std::string> dragged_;
  std::shared_ptr<Picture> picture_;
  QBackingStore store_;
};

// Turns input events of a window into reports.
// Result: whether the event was input.
bool reportInput(ShownWindow &window, Desk &desk, QEvent &event);
// The same for files that are dragged over a window and dropped.
bool reportDrop(ShownWindow &window, QEvent &event);

} // namespace platform
