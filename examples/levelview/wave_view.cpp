#include "wave_view.h"

#include <algorithm>

namespace {

constexpr double kLoudFrom = 32; // frames in a column that make a mean

} // namespace

WaveView::WaveView(WqWnd *parent, const Scene &scene, const Look &look, Control &control)
    : Pane(parent), scene_(scene), look_(look), control_(control) {}

RECT WaveView::wave() const {
  const RECT whole = client();
  return box(look_.levelRuler, 2 * look_.ruler + look_.gap, whole.right - look_.levelRuler, whole.bottom - look_.gap);
}

Lane WaveView::lane(size_t channel) const {
  const RECT all = wave();
  const auto count = static_cast<LONG>(scene_.recording.channels()), index = static_cast<LONG>(channel);
  const LONG pitch = (all.bottom - all.top + look_.gap) / count;
  const LONG top = all.top + index * pitch;
  return {scene_, look_, channel, box(all.left, top, all.right, top + pitch - look_.gap)};
}

LONG WaveView::pixelAt(POINT screen) const {
  ScreenToClient(window(), &screen);
  const RECT all = wave();
  return std::clamp<LONG>(screen.x, all.left, std::max(all.right - 1, all.left)) - all.left;
}

void WaveView::movePointer(std::optional<LONG> from, std::optional<LONG> to) {
  const RECT all = wave();
  for (const std::optional<LONG> &pixel : {from, to}) {
    if (!pixel) continue;
    const RECT line = {all.left + *pixel, all.top, all.left + *pixel + 1, all.bottom};
    invalidate(&line);
  }
}

void WaveView::resized() {
  Visible visible = scene_.visible;
  const RECT all = wave();
  visible.setWidth(all.right - all.left);
  control_.show(visible);
}

void WaveView::moved(const POINT &at) {
  const RECT all = wave();
  const RECT inside = {all.left, all.top, all.right - 1, all.bottom - 1}; // for WqRect_IsIn edges are inside
  const bool over = WqRect_IsIn(&inside, &at) != 0;
  control_.point(over ? std::optional(at.x - all.left) : std::nullopt);
}

void WaveView::pressed(const POINT &at) { grabbed_ = scene_.visible.frameAt(at.x - wave().left); }

void WaveView::dragged(const POINT &at) {
  Visible visible = scene_.visible;
  visible.moveTo(grabbed_ - (at.x - wave().left) * visible.framesPerPixel());
  control_.show(visible);
}

void WaveView::paint(WqDc &dc, const RECT &dirty) {
  fill(dc, dirty, colourGround);
  if (!scene_.ready()) return paintProgress(dc);
  const RECT all = wave();
  if (dirty.top < all.top) paintRulers(dc);
  if (dirty.left < all.left || dirty.right > all.right)
    for (size_t channel = 0; channel < scene_.recording.channels(); ++channel) paintLevels(dc, lane(channel));
  const RECT lanes = common(all, dirty);
  if (!IsRectEmpty(&lanes)) paintLanes(dc, lanes);
}

void WaveView::paintProgress(WqDc &dc) const {
  const RECT whole = client();
  const LONG x = whole.right / 6, y = whole.bottom / 2;
  const RECT bar = box(x, y, whole.right - x, y + look_.line);
  write(dc, format("Reading %s: %u %%", scene_.name.c_str(), scene_.percent),
        box(0, y - 2 * look_.line, whole.right, y), DT_CENTER);
  fill(dc, bar, colourLane);
  fill(dc, box(x, y, x + (bar.right - x) * static_cast<LONG>(scene_.percent) / 100, bar.bottom), colourPeak);
  WqDcDraw_FrameRect(&dc.draw, &bar, colourTick);
}

void WaveView::paintRulers(WqDc &dc) const {
  const RECT all = wave();
  const LONG right = client().right;
  const double rate = scene_.recording.rate();
  const RECT times = box(0, 0, right, look_.ruler), frames = box(0, look_.ruler, right, 2 * look_.ruler);
  const auto unit = [&](const RECT &row, const char *name) {
    write(dc, name, box(row.left, row.top, all.left - look_.gap, row.bottom), DT_RIGHT, colourDimText);
  };
  unit(times, timeUnitName(timeUnit(scene_.visible, rate)));
  unit(frames, "sample");
  drawTicks(dc, look_, times, all.left, timeTicks(scene_.visible, rate, look_.digit));
  drawTicks(dc, look_, frames, all.left, frameTicks(scene_.visible, look_.digit));
}

// dBV on the left, percent of the range on the right.
void WaveView::paintLevels(WqDc &dc, const Lane &lane) const {
  const RECT &area = lane.area();
  if (area.bottom - area.top < look_.line) return;
  const auto row = [&](LONG left, LONG right, LONG y) { // a line of text, moved into the lane
    const LONG top = std::clamp<LONG>(y - look_.line / 2, area.top, area.bottom - look_.line);
    return box(left, top, right, top + look_.line);
  };
  const LONG leftText = area.left - look_.tick - look_.gap, rightText = area.right + look_.tick + look_.gap;
  const auto level = [&](const Tick &tick, LONG y) {
    horizontal(dc, area.left - look_.tick, area.left - 1, y, colourTick);
    write(dc, tick.label, row(0, leftText, y), DT_RIGHT);
  };
  for (const Tick &tick : levelTicks(lane.half(), look_.line)) {
    level(tick, lane.middle() - tick.at);
    level(tick, lane.middle() + tick.at);
  }
  write(dc, "dBV", row(0, leftText, lane.middle()), DT_RIGHT, colourDimText);
  for (const Tick &tick : percentTicks(lane.half(), look_.line)) {
    horizontal(dc, area.right, area.right + look_.tick - 1, lane.middle() - tick.at, colourTick);
    write(dc, tick.label, row(rightText, client().right, lane.middle() - tick.at), DT_LEFT);
  }
}

void WaveView::paintGrid(WqDc &dc, const Lane &lane, const RECT &dirty, const Ticks &times) const {
  const RECT &area = lane.area();
  const LONG end = area.left + rounded(std::min<double>(scene_.visible.pixelOf(scene_.visible.frames()), dirty.right));
  fill(dc, box(dirty.left, area.top, std::min(end, dirty.right), area.bottom), colourLane);
  for (const Tick &tick : times)
    if (const LONG x = area.left + tick.at; !tick.label.empty() && x >= dirty.left && x < dirty.right)
      vertical(dc, x, area.top, area.bottom - 1, colourGrid);
  for (const Tick &tick : percentTicks(lane.half(), look_.line))
    horizontal(dc, dirty.left, dirty.right - 1, lane.middle() - tick.at, tick.at == 0 ? colourCentre : colourGrid);
}

// Only the columns that are dirty.
void WaveView::paintLanes(WqDc &dc, const RECT &dirty) {
  const Visible &visible = scene_.visible;
  const LONG left = wave().left, from = dirty.left - left, to = dirty.right - left;
  const double density = visible.framesPerPixel(), rate = scene_.recording.rate();
  Columns columns, loud;
  if (density >= 1) columns = columnsOf(scene_.peaks, visible, from, to);
  if (density >= kLoudFrom) loud = loudParts(columns, scene_.peaks, visible, from, rate);
  const Ticks times = timeTicks(visible, rate, look_.digit);
  for (size_t channel = 0; channel < scene_.recording.channels(); ++channel) {
    const Lane lane = this->lane(channel);
    const RECT part = common(lane.area(), dirty);
    if (IsRectEmpty(&part)) continue;
    WqDcRgn_Create(&dc.rgn, &part);
    paintGrid(dc, lane, dirty, times);
    lane.drawColumns(dc, from, columns, colourPeak);
    lane.drawColumns(dc, from, loud, colourRms);
    if (density < 1 && visible.frames() > 0) lane.drawSamples(dc, from, to);
    WqDcRgn_Delete(&dc.rgn);
  }
  if (scene_.pointer) vertical(dc, left + *scene_.pointer, dirty.top, dirty.bottom - 1, colourCursor);
}
