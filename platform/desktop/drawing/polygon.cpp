// Insides of shapes, row by row.

#include "platform/desktop/drawing/polygon.h"

#include <cmath>

namespace platform {

namespace {

using Wide = __int128; // products of distances of 33 bits and more

// One side of a polygon, walked downwards. At each row it knows the first pixel at or right of it.
class Side {
 public:
  Side(POINT from, POINT to)
      : top_(from.y < to.y ? from : to), bottom_(std::max(from.y, to.y)), turn_(from.y < to.y ? 1 : -1),
        height_(int64_t{bottom_} - top_.y) {
    const int64_t run = (int64_t{to.x} - from.x) * turn_;
    step_ = run / height_ - (run % height_ < 0);
    part_ = run - step_ * height_;
    x_ = top_.x;
  }

  int top() const { return top_.y; }
  int bottom() const { return bottom_; }
  int64_t x() const { return x_; }
  int turn() const { return turn_; }

  void goTo(int row) {
    const int64_t rows = int64_t{row} - top_.y;
    const Wide parts = Wide{part_} * rows;
    const auto whole = static_cast<int64_t>((parts + height_ - 1) / height_);
    x_ = top_.x + step_ * rows + whole;
    over_ = static_cast<int64_t>(Wide{whole} * height_ - parts);
  }
  void next() {
    x_ += step_;
    over_ -= part_;
    if (over_ < 0) {
      over_ += height_;
      ++x_;
    }
  }

 private:
  POINT top_;
  int bottom_, turn_;
  int64_t height_, step_, part_;
  int64_t x_, over_ = 0; // over_: how far the pixel lies right of the side, in parts of its height
};

std::vector<Side> sidesOf(std::span<const POINT> points) {
  std::vector<Side> sides;
  sides.reserve(points.size());
  for (size_t i = 0; i < points.size(); ++i) {
    const POINT &from = points[i], &to = points[i + 1 < points.size() ? i + 1 : 0];
    if (from.y != to.y) sides.emplace_back(from, to);
  }
  std::sort(sides.begin(), sides.end(), [](const Side &a, const Side &b) { return a.top() < b.top(); });
  return sides;
}

void addRow(Spans &spans, const std::vector<Side> &active, int row, int mode, QPoint origin) {
  int inside = 0;
  for (size_t i = 0; i + 1 < active.size(); ++i) {
    inside += mode == WINDING ? active[i].turn() : i % 2 ? -1 : 1;
    if (inside) spans.add(row + origin.y(), active[i].x() + origin.x(), active[i + 1].x() + origin.x());
  }
}

} // namespace

void addPolygon(Spans &spans, std::span<const POINT> points, int mode, QPoint origin) {
  const std::vector<Side> sides = sidesOf(points);
  const QRect limits = spans.limits().translated(-origin);
  const auto leftOf = [](const Side &a, const Side &b) { return a.x() < b.x(); };
  std::vector<Side> active;
  active.reserve(sides.size());
  auto next = sides.begin();
  int row = limits.top();
  while (row <= limits.bottom()) {
    std::erase_if(active, [row](const Side &side) { return side.bottom() <= row; });
    if (active.empty() && next != sides.end()) row = std::max(row, next->top());
    for (; next != sides.end() && next->top() <= row; ++next) {
      if (next->bottom() <= row) continue;
      active.push_back(*next);
      active.back().goTo(row);
    }
    if (active.empty() && next == sides.end()) return;
    int end = next == sides.end() ? limits.bottom() + 1 : std::min(limits.bottom() + 1, next->top());
    for (const Side &side : active) end = std::min(end, side.bottom());
    for (; row < end; ++row) { // the sides stay the same
      if (!std::is_sorted(active.begin(), active.end(), leftOf)) std::stable_sort(active.begin(), active.end(), leftOf);
      addRow(spans, active, row, mode, origin);
      for (Side &side : active) side.next();
    }
  }
}

EllipseRows::EllipseRows(int width, int height) : width_(width), height_(height) {
  constexpr int kWalked = 1 << 15;
  if (width <= kWalked && height <= kWalked) walk();
}

// Goes from the end of the middle row inwards and outwards, one pixel at a time, always to the one whose error is
// least: the sum of both squares, each over its own axis, less one, times all denominators. A very flat ellipse is at
// its middle column before it is at its last row, and ends there.
void EllipseRows::walk() {
  rows_.assign(static_cast<size_t>(height_) / 2 + 1, Row{width_, 0});
  const int64_t across = width_ - 1, down = height_ - 1, even = down % 2;
  int64_t inward = 4 * (1 - across) * down * down, outward = 4 * (even + 1) * across * across;
  int64_t error = inward + outward + even * across * across;
  size_t row = 0;
  for (int free = 0; free <= (width_ - 1) / 2 && row < rows_.size();) {
    Row &now = rows_[row];
    if (now.line == 0) now.margin = free;
    ++now.line;
    const int64_t twice = 2 * error;
    if (twice >= inward) {
      ++free;
      error += inward += 8 * down * down;
    }
    if (twice <= outward) {
      ++row;
      error += outward += 8 * across * across;
    }
  }
}

EllipseRows::Row EllipseRows::rowOf(int row) const {
  const int fromMiddle = row < height_ / 2 ? (height_ - 1) / 2 - row : row - height_ / 2;
  if (!rows_.empty()) return rows_[static_cast<size_t>(fromMiddle)];
  const Row here = computed(fromMiddle), outer = computed(fromMiddle + 1);
  return {here.margin, std::max(1, outer.margin - here.margin)};
}

EllipseRows::Row EllipseRows::computed(int fromMiddle) const {
  const double a = (width_ - 1) / 2.0, b = (height_ - 1) / 2.0;
  const double y = fromMiddle + (height_ % 2 ? 0 : 0.5);
  const double x = y >= b ? 0 : a * std::sqrt(1 - y * y / (b * b));
  return {static_cast<int>(std::lround(a - x)), 1};
}

} // namespace platform
