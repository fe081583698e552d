// The insides of polygons and ellipses, as rows of pixels.
#pragma once

#include "platform/desktop/drawing/raster.h"

#include <span>

namespace platform {

// Adds what lies inside a polygon, whose points are in device coordinates. Rows reach from the first pixel that begins
// at or right of the left edge to the last one that begins left of the right edge; the lowest corners are outside.
// mode: ALTERNATE or WINDING. origin: of device coordinates in the image.
void addPolygon(Spans &spans, std::span<const POINT> points, int mode, QPoint origin);

// An ellipse that fills a box, row by row: it is the same to the left and right.
class EllipseRows {
 public:
  EllipseRows(int width, int height);
  // Pixels that a row leaves free at either side; the whole width for a row that has none.
  int margin(int row) const { return rowOf(row).margin; }
  // Pixels of the line round the ellipse at either side.
  int line(int row) const { return rowOf(row).line; }

 private:
  struct Row {
    int margin, line;
  };
  Row rowOf(int row) const;
  Row computed(int fromMiddle) const;
  void walk();

  int width_, height_;
  std::vector<Row> rows_; // from the middle outwards; empty for an ellipse bigger than any screen
};

} // namespace platform
