// Shapes with round sides.
#pragma once

#include "platform/desktop/drawing/shapes.h"

namespace platform {

// A box whose corners are quarters of an ellipse; with corners as big as the box it is an ellipse itself.
// The box is in device coordinates.
class RoundBox {
 public:
  RoundBox(const QRect &box, int cornerWidth, int cornerHeight);

  const QRect &box() const { return box_; }
  // Pixels that a row of the box leaves free at either side, and those of the line round it.
  int margin(int y) const;
  int line(int y) const;
  void addInside(Spans &spans, QPoint origin) const;
  // The line round it, one pixel wide.
  void addOutline(Spans &spans, QPoint origin) const;
  // The same line from point to point, for dashes.
  std::vector<POINT> path() const;

 private:
  QRect box_;
  int cornerHeight_;
  EllipseRows corner_;
};

} // namespace platform
