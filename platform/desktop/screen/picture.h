// The pixels that a window shows on the screen: the program's thread brings them, the screen's thread shows them, and
// keeps them for the time when the program is busy.
#pragma once

#include <QImage>
#include <QRegion>

#include <mutex>
#include <utility>

namespace platform {

class Picture {
 public:
  // Takes over what has changed of an image.
  // Result: whether the screen is to be told: nothing waits for it yet.
  bool take(const QImage &image, const QRegion &changed);

  // What has changed since it was asked last. The screen is told of what comes from now on.
  QRegion takeChanged();

  // The image as it is now, on the screen's thread. The program waits in take() meanwhile, perhaps with its own locks:
  // body must neither wait for the program nor let the desktop be listened to.
  template <typename Body> void read(Body body) {
    const std::lock_guard lock(mutex_);
    body(std::as_const(image_));
  }

 private:
  std::mutex mutex_;
  QImage image_;
  QRegion changed_; // which the screen has not taken yet
};

// Pixels of an image into another of the same depth, which has the part too.
void copyPixels(const QImage &from, QImage &to, const QRect &part);

} // namespace platform
