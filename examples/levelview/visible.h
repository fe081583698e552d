// Which part of a recording is on the screen, and how far it is drawn out.
#pragma once

#include "wq.h"

#include <cstdint>

// A frame's place in time is a point; it may lie at any pixel, or between two. Pixels count from the left edge of the
// wave.
class Visible {
 public:
  static constexpr double kNearest = 1.0 / 16; // frames per pixel

  // Shows the whole of a recording.
  void setFrames(uint32_t frames);
  // Sets the wave's width in pixels. The left edge stays, and who sees the whole goes on to see it.
  void setWidth(LONG width);

  uint32_t frames() const { return frames_; }
  LONG width() const { return width_; }
  double framesPerPixel() const { return framesPerPixel_; }
  double start() const { return start_; }
  double end() const; // at most that of the recording
  // 1 for the whole recording, 2 for a half.
  double factor() const { return coarsest() / framesPerPixel_; }

  double frameAt(double pixel) const { return start_ + pixel * framesPerPixel_; }
  double pixelOf(double frame) const { return (frame - start_) / framesPerPixel_; }
  // The frame that is drawn nearest to a pixel.
  uint32_t nearest(LONG pixel) const;

  // All stop at the ends of the recording.
  void moveTo(double start);
  void scroll(double pixels) { moveTo(start_ + pixels * framesPerPixel_); }
  void center(double frame) { moveTo(frame - width_ * framesPerPixel_ / 2); }
  // Shows less for factors above 1, more for others. What lies at the pixel stays there.
  void zoom(double factor, double pixel);

 private:
  double coarsest() const;

  uint32_t frames_ = 0;
  LONG width_ = 1;
  double framesPerPixel_ = kNearest;
  double start_ = 0;
};
