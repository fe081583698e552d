#include "platform/desktop/drawing/surface.h"

#include "platform/desktop/drawing/bitmaps.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/screen/above.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <utility>
#include <vector>

namespace platform {

namespace {

// Those that were drawn on since they were taken to the screen.
std::set<Surface *> &waiting() {
  static auto *all = new std::set<Surface *>;
  return *all;
}

} // namespace

Surface::~Surface() { waiting().erase(this); }

void Surface::resize(QSize size) { size_ = size.boundedTo({kLargest, kLargest}).expandedTo({0, 0}); }

QImage &Surface::image() {
  if (image_.size() == size_) return image_;
  QImage fresh(size_, QImage::Format_RGB32);
  fresh.fill(Qt::black);
  const int rows = std::min(fresh.height(), image_.height());
  const size_t bytes = sizeof(QRgb) * static_cast<size_t>(std::min(fresh.width(), image_.width()));
  for (int y = 0; y < rows; ++y) std::memcpy(fresh.scanLine(y), image_.constScanLine(y), bytes);
  image_ = std::move(fresh);
  return image_;
}

void Surface::wait() {
  if (waiting().empty()) theScreen().flushSoon();
  waiting().insert(this);
}

void Surface::drawn(const QRegion &region) {
  if (!picture_) return;
  dirty_ |= region;
  wait();
}

// Much may be drawn before it is shown, so the shape of it all is kept simple.
void Surface::drawn(const QRect &rect) {
  constexpr int kMostParts = 32;
  if (!picture_ || rect.isEmpty()) return;
  dirty_ += rect;
  if (dirty_.rectCount() > kMostParts) dirty_ = dirty_.boundingRect();
  wait();
}

void Surface::copy(const QRegion &source, int dx, int dy) {
  QImage &pixels = image();
  ownPixels(pixels, true);
  const QRegion from = source & pixels.rect() & pixels.rect().translated(-dx, -dy);
  // in the order in which no rectangle is overwritten before it is read
  std::vector<QRect> parts(from.begin(), from.end());
  std::sort(parts.begin(), parts.end(), [&](const QRect &a, const QRect &b) {
    if (a.top() != b.top()) return dy > 0 ? a.top() > b.top() : a.top() < b.top();
    return dx > 0 ? a.left() > b.left() : a.left() < b.left();
  });
  for (const QRect &part : parts) {
    const size_t bytes = sizeof(QRgb) * static_cast<size_t>(part.width());
    for (int row = 0; row < part.height(); ++row) {
      const int y = dy > 0 ? part.bottom() - row : part.top() + row;
      auto *to = reinterpret_cast<QRgb *>(pixels.scanLine(y + dy)) + part.left() + dx;
      std::memmove(to, reinterpret_cast<const QRgb *>(pixels.constScanLine(y)) + part.left(), bytes);
    }
  }
  drawn(from.translated(dx, dy));
}

const std::shared_ptr<Picture> &Surface::picture() {
  if (!picture_) picture_ = std::make_shared<Picture>();
  drawn(QRect(QPoint(), size_));
  return picture_;
}

void Surface::flush() {
  if (picture_ && picture_->take(image(), dirty_)) theScreen().flush(window_);
  dirty_ = {};
}

void Surface::orphan() {
  picture_.reset();
  dirty_ = {};
  size_ = {0, 0};
}

void above::flushDrawn() {
  const DesktopLock lock;
  for (Surface *surface : std::exchange(waiting(), {})) surface->flush();
}

} // namespace platform
