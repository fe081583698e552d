// The pixels of a top-level window: one image that holds its client area and all its children, and the Qt window that
// shows it where there is a display.
#pragma once

#include "platform/desktop/window.h"

#include <QImage>

namespace platform {

class DesktopWindow;

class Surface : public std::enable_shared_from_this<Surface> {
 public:
  explicit Surface(Window &window);
  ~Surface();
  Surface(const Surface &) = delete;
  Surface &operator=(const Surface &) = delete;

  // The image, which has the client area's size; its pixels stay when that changes. Areas beyond kLargest pixels in a
  // direction are not kept.
  QImage &image();
  void drawn(const QRegion &region);
  void drawn(const QRect &rect);
  // Moves pixels within the image.
  void copy(const QRegion &source, int dx, int dy);

  // What the desktop is told of the window. All do nothing where there is no display.
  void show();
  void hide();
  void place();
  void raise();
  void activate();
  void retitle();
  void restyle();
  void flush();

  // The window is gone; what still draws draws nowhere.
  void orphan();

 private:
  static constexpr int kLargest = 16384;
  Window *window_;
  QImage image_;
  QRegion dirty_;
  std::unique_ptr<DesktopWindow> shown_;
};

// Brings everything drawn to the screen.
void flushSurfaces();

} // namespace platform
