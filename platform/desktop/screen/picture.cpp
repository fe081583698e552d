#include "platform/desktop/screen/picture.h"

#include <cstring>

namespace platform {

void copyPixels(const QImage &from, QImage &to, const QRect &part) {
  const size_t bytes = sizeof(QRgb) * static_cast<size_t>(part.width());
  for (int y = part.top(); y <= part.bottom(); ++y)
    std::memcpy(reinterpret_cast<QRgb *>(to.scanLine(y)) + part.left(),
                reinterpret_cast<const QRgb *>(from.constScanLine(y)) + part.left(), bytes);
}

// A wholly new image is shared, not copied: a program usually draws its next image into other memory.
bool Picture::take(const QImage &image, const QRegion &changed) {
  const std::lock_guard lock(mutex_);
  const bool known = !changed_.isEmpty();
  const QRegion parts = changed & image.rect();
  if (image_.size() != image.size() || parts == QRegion(image.rect()))
    image_ = image;
  else
    for (const QRect &part : parts) copyPixels(image, image_, part);
  changed_ |= parts;
  return !known && !changed_.isEmpty();
}

QRegion Picture::takeChanged() {
  const std::lock_guard lock(mutex_);
  return std::exchange(changed_, {});
}

} // namespace platform
