// The pixels that a window shows on the screen: the program's thread brings them, the screen's thread shows them, and
// keeps them for the time when the program is busy.
#pragma once

#include <QImage>
#include <QRegion>

#include <mutex>

namespace platform {

class Picture {
 public:
  // Takes over what has changed of an image.
  // Result: whether the screen is to be told: nothing waits for it yet.
  bool take(const QImage &image, const QRegion &changed);

  // Shows what waits, on the screen's thread: body gets the image and the changed region.
  template <typename Body> void showChanged(Body body) {
    const std::lock_guard lock(mutex_);
    body(image_, changed_);
    changed_ = {};
  }
  // Shows all of it.
  template <typename Body> void showAll(Body body) {
    const std::lock_guard lock(mutex_);
    changed_ = {};
    body(image_);
  }

 private:
  std::mutex mutex_;
  QImage image_;
  QRegion changed_; // since it was shown
};

} // namespace platform
