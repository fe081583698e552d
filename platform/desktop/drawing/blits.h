// Rectangles of pixels that are copied and stretched.
#pragma once

#include "platform/desktop/drawing/dc.h"

#include <algorithm>

namespace platform {

// One direction of a rectangle in an image. One that goes backwards has the pixel it begins with and not the one at its
// end, as one that goes forward.
struct Extent {
  int64_t from, length; // never below 0
  bool flipped;

  Extent(int64_t begin, int64_t end)
      : from(end < begin ? end + 1 : begin), length(end < begin ? begin - end : end - begin), flipped(end < begin) {}
};

// A rectangle in an image whose edges come in any order.
struct Box {
  Extent x, y;

  bool empty() const { return x.length == 0 || y.length == 0; }
  QRect rect() const {
    const auto edge = [](int64_t value) { return static_cast<LONG>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX)); };
    return rectOf({edge(x.from), edge(y.from), edge(x.from + x.length), edge(y.from + y.length)});
  }
};

// From one direction of the destination to the source's.
class Way {
 public:
  struct Range {
    int64_t first, last;
  };

  Way(const Extent &to, const Extent &from) : to_(to), from_(from) {}

  bool straight() const { return to_.length == from_.length && to_.flipped == from_.flipped; }
  int64_t shift() const { return from_.from - to_.from; }
  // The pixels of the source that come together in one; a single one, again and again, where the source is shorter.
  Range source(int64_t at) const {
    const int64_t step = to_.flipped ? to_.from + to_.length - 1 - at : at - to_.from;
    Range range{};
    if (from_.length > to_.length)
      range = {startOf(step), startOf(step + 1) - 1};
    else
      range.first = range.last = ((2 * step + 1) * from_.length - 1) / (2 * to_.length);
    const int64_t end = from_.from + from_.length - 1;
    if (from_.flipped) return {end - range.last, end - range.first};
    return {from_.from + range.first, from_.from + range.last};
  }
  // The first and the last place whose source lies within bounds; none when the first comes behind the last.
  std::pair<int, int> within(int first, int last, int sourceFirst, int sourceLast) const {
    const auto inside = [&](int64_t at) {
      const Range range = source(at);
      return range.first >= sourceFirst && range.last <= sourceLast;
    };
    int64_t low = std::max<int64_t>(first, to_.from), high = std::min<int64_t>(last, to_.from + to_.length - 1);
    while (low <= high && !inside(low)) ++low;
    while (low <= high && !inside(high)) --high;
    return {static_cast<int>(low), static_cast<int>(high)};
  }

 private:
  // Where the part of the source begins that a step stands for, rounded to the nearest pixel. What comes together in a
  // single pixel is, to the platform, all but the last one.
  int64_t startOf(int64_t step) const {
    if (to_.length == 1 && !to_.flipped) return step * (from_.length - 1);
    return (2 * step * from_.length + to_.length) / (2 * to_.length);
  }

  Extent to_, from_;
};

// A logical rectangle in the image of a context.
Box boxOf(const Dc &dc, int x, int y, int width, int height);

// Fills an image with another of other size. Where pixels come together, the bits stay that all of them have.
void stretch(const QImage &from, QImage &to);

} // namespace platform
