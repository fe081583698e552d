// One channel's wave in its lane.
#pragma once

#include "columns.h"
#include "look.h"
#include "recording.h"

#include <algorithm>

class Lane {
 public:
  Lane(const Recording &recording, const Visible &visible, const Look &look, size_t channel, const RECT &area);

  const RECT &area() const { return area_; }
  LONG middle() const { return (area_.top + area_.bottom - 1) / 2; }
  LONG half() const { return std::max<LONG>((area_.bottom - area_.top - 1) / 2, 0); } // pixels of full scale

  // Draw the columns from `from' on, or the samples there with lines between them.
  void drawColumns(WqDc &dc, LONG from, const Columns &columns, Colour colour) const;
  void drawSamples(WqDc &dc, LONG from, LONG to) const;

 private:
  LONG yOf(double sample) const;

  const Recording &recording_;
  const Visible &visible_;
  const Look &look_;
  size_t channel_;
  RECT area_;
};
