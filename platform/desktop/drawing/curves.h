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
  // Calls draw with rectangles: of what lies inside, and of the line round it.
  template <typename Draw> void inside(const QRect &limits, Draw draw) const;
  template <typename Draw> void outline(const QRect &limits, Draw draw) const;
  // The same line from point to point, for dashes and wide pens.
  // near: rows outside it are left out.
  std::vector<POINT> path(const QRect &near) const;

 private:
  QRect between(const QRect &limits) const;
  bool outermost(int y) const;

  QRect box_;
  int cornerHeight_;
  EllipseRows corner_;
};

} // namespace platform
