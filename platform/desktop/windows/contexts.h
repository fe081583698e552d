// Device contexts of windows.
#pragma once

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/windows/window.h"

namespace platform {

// Opens a context of a client area. region: limits the drawing, in coordinates of the surface.
HDC openClientDc(const Window &window, const QRegion &region);
// Opens a context of a whole window. Drawing on the frame of a top-level window has no effect: the frame is the
// desktop's.
HDC openWholeDc(const Window &window);

// A context that closes at the end of the scope.
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
