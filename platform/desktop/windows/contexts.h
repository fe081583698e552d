// Contexts of windows.
#pragma once

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/windows/window.h"

namespace platform {

// Of a client area. region: limits it; in coordinates of the surface.
HDC openClientDc(const Window &window, const QRegion &region);
// Of all of a window. What of a top-level window's frame is drawn on goes nowhere: it is the desktop's.
HDC openWholeDc(const Window &window);

// One that is closed at the end of the scope.
class OpenDc {
 public:
  explicit OpenDc(HDC dc) : dc_(dc) {}
  ~OpenDc() { closeDc(dc_); }
  OpenDc(const OpenDc &) = delete;
  OpenDc &operator=(const OpenDc &) = delete;

  HDC handle() const { return dc_; }
  Dc &dc() const { return *dcOf(dc_); }

 private:
  const HDC dc_;
};

} // namespace platform
