// The viewer's window: a wave area, a strip for levels on its right, a status strip along the bottom.
#pragma once

#include "settings.h"
#include "wq.h"

#include <string>

class Viewer {
 public:
  // file: in the library's encoding. settings: give the place of the window, and take it when the window ends.
  Viewer(const std::string &file, Settings &settings);
  Viewer(const Viewer &) = delete;
  Viewer &operator=(const Viewer &) = delete;

  // Shows the window until the user closes it. Result: whether there was a window.
  bool run();
  // Writes a picture of the window with a client area of this size, without waiting for anybody.
  // Result: whether the picture was written.
  bool snapshot(const std::string &pictureFile, const SIZE &size);

 private:
  enum Part { wave, levels, status, partCount };

  bool open();
  void addPart(Part part);
  void rememberPlace();
  static int32_t frameProc(WqWnd *wnd, WqMsg *msg);
  static int32_t partProc(WqWnd *wnd, WqMsg *msg);

  // Window objects stay where they are until the library ends, so the viewer stays too.
  struct Frame {
    WqWnd wnd; // first, so that the window object leads to the viewer
    Viewer *viewer;
  } frame_;
  struct Strip {
    WqWnd wnd;
    COLORREF color;
  } parts_[partCount];
  Settings &settings_;
};
