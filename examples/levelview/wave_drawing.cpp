#include "wave_drawing.h"

#include <algorithm>

namespace {

constexpr double kLoudFrom = 32; // frames in a column that make a mean

} // namespace

RECT WaveDrawing::lanes() const {
  return box(area_.left + look_.levelRuler, area_.top + 2 * look_.ruler + look_.gap, area_.right - look_.levelRuler,
             area_.bottom - look_.gap);
}

Lane WaveDrawing::lane(size_t channel) const {
  const RECT all = lanes();
  const auto count = static_cast<LONG>(scene_.recording.channels()), index = static_cast<LONG>(channel);
  const LONG pitch = (all.bottom - all.top + look_.gap) / count;
  const LONG top = all.top + index * pitch;
  return {scene_.recording, visible_, look_, channel, box(all.left, top, all.right, top + pitch - look_.gap)};
}

void WaveDrawing::paint(WqDc &dc, const RECT &dirty) const {
  fill(dc, dirty, colourGround);
  const RECT all = lanes();
  if (dirty.top < all.top) paintRulers(dc);
  if (dirty.left < all.left || dirty.right > all.right)
    for (size_t channel = 0; channel < scene_.recording.channels(); ++channel) paintLevels(dc, lane(channel));
  const RECT part = common(all, dirty);
  if (!IsRectEmpty(&part)) paintLanes(dc, part);
}

void WaveDrawing::paintRulers(WqDc &dc) const {
  const LONG left = lanes().left;
  const double rate = scene_.recording.rate();
  const RECT times = box(area_.left, area_.top, area_.right, area_.top + look_.ruler);
  const RECT frames = box(area_.left, times.bottom, area_.right, times.bottom + look_.ruler);
  const auto unit = [&](const RECT &row, const char *name) {
    write(dc, name, box(row.left, row.top, left - look_.gap, row.bottom), DT_RIGHT, colourDimText);
  };
  unit(times, timeUnitName(timeUnit(visible_, rate)));
  unit(frames, "sample");
  drawTicks(dc, look_, times, left, timeTicks(visible_, rate, look_.digit));
  drawTicks(dc, look_, frames, left, frameTicks(visible_, look_.digit));
}

// dBV on the left, percent of the range on the right.
void WaveDrawing::paintLevels(WqDc &dc, const Lane &lane) const {
  const RECT &area = lane.area();
  if (area.bottom - area.top < look_.line) return;
  const auto row = [&](LONG left, LONG right, LONG y) { // a line of text, moved into the lane
    const LONG top = std::clamp<LONG>(y - look_.line / 2, area.top, area.bottom - look_.line);
    return box(left, top, right, top + look_.line);
  };
  const LONG leftText = area.left - look_.tick - look_.gap, rightText = area.right + look_.tick + look_.gap;
  const auto level = [&](const Tick &tick, LONG y) {
    horizontal(dc, area.left - look_.tick, area.left - 1, y, colourTick);
    write(dc, tick.label, row(area_.left, leftText, y), DT_RIGHT);
  };
  for (const Tick &tick : levelTicks(lane.half(), look_.line)) {
    level(tick, lane.middle() - tick.at);
    level(tick, lane.middle() + tick.at);
  }
  write(dc, "dBV", row(area_.left, leftText, lane.middle()), DT_RIGHT, colourDimText);
  for (const Tick &tick : percentTicks(lane.half(), look_.line)) {
    horizontal(dc, area.right, area.right + look_.tick - 1, lane.middle() - tick.at, colourTick);
    write(dc, tick.label, row(rightText, area_.right, lane.middle() - tick.at), DT_LEFT);
  }
}

void WaveDrawing::paintGrid(WqDc &dc, const Lane &lane, const RECT &dirty, const Ticks &times) const {
  const RECT &area = lane.area();
  const LONG end = area.left + rounded(std::min<double>(visible_.pixelOf(visible_.frames()), dirty.right));
  fill(dc, box(dirty.left, area.top, std::min(end, dirty.right), area.bottom), colourLane);
  for (const Tick &tick : times)
    if (const LONG x = area.left + tick.at; !tick.label.empty() && x >= dirty.left && x < dirty.right)
      vertical(dc, x, area.top, area.bottom - 1, colourGrid);
  for (const Tick &tick : percentTicks(lane.half(), look_.line))
    horizontal(dc, dirty.left, dirty.right - 1, lane.middle() - tick.at, tick.at == 0 ? colourCentre : colourGrid);
}

// Only the columns that are dirty.
void WaveDrawing::paintLanes(WqDc &dc, const RECT &dirty) const {
  const LONG left = lanes().left, from = dirty.left - left, to = dirty.right - left;
  const double density = visible_.framesPerPixel(), rate = scene_.recording.rate();
  Columns columns, loud;
  if (density >= 1) columns = columnsOf(scene_.peaks, visible_, from, to);
  if (density >= kLoudFrom) loud = loudParts(columns, scene_.peaks, visible_, from, rate);
  const Ticks times = timeTicks(visible_, rate, look_.digit);
  for (size_t channel = 0; channel < scene_.recording.channels(); ++channel) {
    const Lane lane = this->lane(channel);
    const RECT part = common(lane.area(), dirty);
    if (IsRectEmpty(&part)) continue;
    const Clip clip(dc, part);
    paintGrid(dc, lane, dirty, times);
    lane.drawColumns(dc, from, columns, colourPeak);
    lane.drawColumns(dc, from, loud, colourRms);
    if (density < 1 && visible_.frames() > 0) lane.drawSamples(dc, from, to);
  }
}
