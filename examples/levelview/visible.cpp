#include "visible.h"

#include <algorithm>
#include <cmath>

double Visible::coarsest() const { return std::max(static_cast<double>(frames_) / width_, kNearest); }

void Visible::setFrames(uint32_t frames) {
  frames_ = frames;
  framesPerPixel_ = coarsest();
  start_ = 0;
}

void Visible::setWidth(LONG width) {
  const bool whole = framesPerPixel_ >= coarsest();
  width_ = std::max<LONG>(width, 1);
  framesPerPixel_ = whole ? coarsest() : std::min(framesPerPixel_, coarsest());
  moveTo(start_);
}

double Visible::end() const { return std::min(frameAt(width_), static_cast<double>(frames_)); }

uint32_t Visible::nearest(LONG pixel) const {
  if (frames_ == 0) return 0;
  return static_cast<uint32_t>(std::clamp(std::round(frameAt(pixel)), 0.0, frames_ - 1.0));
}

void Visible::moveTo(double start) { start_ = std::max(std::min(start, frames_ - width_ * framesPerPixel_), 0.0); }

void Visible::zoom(double factor, double pixel) {
  const double held = frameAt(pixel);
  framesPerPixel_ = std::clamp(framesPerPixel_ / factor, kNearest, coarsest());
  moveTo(held - pixel * framesPerPixel_);
}
