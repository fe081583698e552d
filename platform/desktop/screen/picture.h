// The pixels of a window on the screen. The program's thread brings them and the screen's thread shows them. The
// picture keeps them for the time when the program is busy.
#pragma once

#include <QImage>
#include <QRegion>

#include <mutex>
#include <utility>

namespace platform {

class Picture {
 public:
  // Takes over the changed part of an image.
  // Result: whether the screen must be told: no earlier change waits for it.
  bool take(const QImage &image, const QRegion &changed);

  // The part changed since the last call. The next change tells the screen again.
  QRegion takeChanged();

  // Hands body the image, on the screen's thread. take() waits meanwhile, perhaps with the program's locks. So body
  // must neither wait for the program nor let Qt listen to the desktop.
  template <typename Body> void read(Body body) {
    const std::lock_guard lock(mutex_);
    body(std::as_const(image_));
  }

 private:
  std::mutex mutex_;
  QImage image_;
  QRegion changed_; // not yet taken by the screen
};

// Copies a part of an image into another one of the same depth. Both images contain the part.
void copyPixels(const QImage &from, QImage &to, const QRect &part);

} // namespace platform
