// A child window of the viewer: a window object whose messages reach a C++ object.
#pragma once

#include "wq.h"

class Pane {
 public:
  // Prepares the window object. Snaps follow, and then WqWnd_Create.
  explicit Pane(WqWnd *parent);
  virtual ~Pane() = default;
  Pane(const Pane &) = delete;
  Pane &operator=(const Pane &) = delete;

  WqWnd *wnd() { return &holder_.wnd; }
  // Marks a part to be painted anew; all of it for null.
  void invalidate(const RECT *part = nullptr) { WqWnd_InvalidateRect(&holder_.wnd, part); }

 protected:
  HWND window() const { return holder_.wnd.hwnd; }
  RECT client() const;
  // A part of the window gets a tip, or its tip another part.
  // id: of the tip's text in the resources. part: not empty.
  void tip(uint32_t id, const RECT &part);

  // Draws at least what is dirty, all of it: there is no background.
  virtual void paint(WqDc &dc, const RECT &dirty) = 0;
  // The window has another size.
  virtual void resized() {}
  // The mouse moves, with a button or without, or leaves the window.
  virtual void moved(const POINT &) {}
  virtual void left() {}
  // The left button goes down, and moves the mouse until it comes up.
  virtual void pressed(const POINT &) {}
  virtual void dragged(const POINT &) {}
  // A button of the window's bar tells WQ_MBB_EVENT_...
  virtual void notified(uint32_t, WqMbbBtn &) {}

 private:
  static int32_t procedure(WqWnd *wnd, WqMsg *msg);
  bool handle(const WqMsg &msg);
  bool handleMouse(WPARAM event, const POINT &at);

  struct Holder {
    WqWnd wnd; // first, so that the window object leads to the pane
    Pane *pane;
  } holder_{};
};
