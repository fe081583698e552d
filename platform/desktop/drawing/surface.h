// The pixels of a top-level window: one image that holds its client area and all windows in it. What is drawn on it
// reaches the screen when the program waits, or shortly after.
#pragma once

#include "platform/desktop/screen/picture.h"
#include "platform/winapi.h"

#include <memory>

namespace platform {

class Surface {
 public:
  // window: which the screen knows by this handle.
  explicit Surface(HWND window) : window_(window) {}
  ~Surface();
  Surface(const Surface &) = delete;
  Surface &operator=(const Surface &) = delete;

  // Pixels stay where they are. Areas beyond kLargest pixels in a direction are not kept.
  void resize(QSize size);
  // It is made when it is first asked for.
  QImage &image();

  void drawn(const QRegion &region);
  void drawn(const QRect &rect);
  // Moves pixels within the image.
  void copy(const QRegion &source, int dx, int dy);

  // From the first call on, what is drawn is taken to the screen.
  const std::shared_ptr<Picture> &picture();
  // Takes what was drawn to the screen.
  void flush();
  // The window is gone; what still draws draws where nobody looks.
  void orphan();

 private:
  static constexpr int kLargest = 16384;
  void wait();

  const HWND window_;
  QSize size_;
  QImage image_;
  QRegion dirty_;
  std::shared_ptr<Picture> picture_; // null as long as nobody looks
};

} // namespace platform
