#include "lane.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kDotsFrom = 1.0 / 8; // frames per pixel, and fewer

} // namespace

Lane::Lane(const Recording &recording, const Visible &visible, const Look &look, size_t channel, const RECT &area)
    : recording_(recording), visible_(visible), look_(look), channel_(channel), area_(area) {}

LONG Lane::yOf(double sample) const { return middle() - rounded(sample * half() / recording_.fullScale()); }

void Lane::drawColumns(WqDc &dc, LONG from, const Columns &columns, Colour colour) const {
  initLine(dc, colour);
  for (size_t i = 0; i < columns.size(); ++i) {
    const Extent &extent = columns[i][channel_];
    if (extent.empty()) continue;
    const LONG x = area_.left + from + static_cast<LONG>(i);
    const POINT top = {x, yOf(extent.high)}, bottom = {x, yOf(extent.low) + 1}; // a line leaves its last pixel out
    WqDcDraw_Line(&dc.draw, &top, &bottom);
  }
}

void Lane::drawSamples(WqDc &dc, LONG from, LONG to) const {
  const double last = visible_.frames() - 1.0;
  const auto frameAt = [&](double frame) { return static_cast<uint32_t>(std::clamp(frame, 0.0, last)); };
  const uint32_t first = frameAt(visible_.frameAt(from) - 1), end = frameAt(visible_.frameAt(to) + 2);
  std::vector<POINT> points;
  for (uint32_t frame = first; frame <= end; ++frame)
    points.push_back({area_.left + rounded(visible_.pixelOf(frame)), yOf(recording_.value(frame, channel_))});
  initLine(dc, colourRms);
  WqDcDraw_PolyLine(&dc.draw, points.data(), static_cast<int32_t>(points.size()));
  if (visible_.framesPerPixel() > kDotsFrom) return;
  for (const POINT &point : points) {
    const LONG left = point.x - look_.dot / 2, top = point.y - look_.dot / 2;
    fill(dc, {left, top, left + look_.dot, top + look_.dot}, colourDot);
  }
}
