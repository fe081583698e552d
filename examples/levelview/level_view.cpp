#include "level_view.h"

#include "ids.h"
#include "rulers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kScale = 80; // dB from the range down

double highest() { return WqUnit_VTodBV(WqUnit_GetRange()); }

} // namespace

LevelView::LevelView(WqWnd *parent, const Scene &scene, const Look &look) : Pane(parent), scene_(scene), look_(look) {}

void LevelView::measure() {
  const Recording &recording = scene_.recording;
  const double full = recording.fullScale(), volts = WqUnit_GetRange() / full;
  const Extents whole = scene_.peaks.of(0, recording.frames());
  for (size_t channel = 0; channel < recording.channels(); ++channel) {
    const Extent &extent = whole[channel];
    const double peak = std::max<double>(extent.high, -static_cast<double>(extent.low));
    const double rms = WqMath_Sqrt(extent.squares / recording.frames());
    levels_[channel] = {WqUnit_VTodBV(peak * volts), WqUnit_VTodBV(rms * volts), peak >= full - 1};
  }
  invalidate();
}

// A line of text, counted from the bottom.
RECT LevelView::row(LONG above) const {
  const RECT whole = client();
  const LONG bottom = whole.bottom - look_.gap - above * look_.line;
  return box(2 * look_.gap, bottom - look_.line, whole.right - 2 * look_.gap, bottom);
}

RECT LevelView::barArea() const {
  const RECT next = row(1);
  return box(next.left, look_.line + look_.gap, next.right, next.top - 2 * look_.gap);
}

void LevelView::resized() {
  tip(TIP_BARS, barArea());
  tip(TIP_PEAK, row(1));
  tip(TIP_RMS, row(0));
}

// A channel's part of a row, right of the names.
RECT LevelView::cell(const RECT &row, size_t channel) const {
  const LONG left = row.left + 4 * look_.digit + look_.gap, count = static_cast<LONG>(scene_.recording.channels());
  const LONG width = (row.right - left) / count, index = static_cast<LONG>(channel);
  return box(left + index * width, row.top, left + (index + 1) * width, row.bottom);
}

LONG LevelView::barTop(const RECT &cell, double level) const {
  const double part = std::clamp((highest() - level) / kScale, 0.0, 1.0);
  return cell.top + rounded(part * (cell.bottom - cell.top));
}

void LevelView::paint(WqDc &dc, const RECT &) {
  const RECT whole = client();
  fill(dc, whole, colourPanel);
  vertical(dc, 0, 0, whole.bottom, colourEdge);
  const RECT titles = box(2 * look_.gap, 0, whole.right - 2 * look_.gap, look_.line), scale = barArea();
  write(dc, "dBV", titles, DT_LEFT, colourDimText);
  paintScale(dc, scale);
  if (!scene_.ready() || scene_.recording.frames() == 0) return;
  for (size_t channel = 0; channel < scene_.recording.channels(); ++channel) {
    write(dc, format("ch%u", static_cast<unsigned>(channel + 1)), cell(titles, channel), DT_CENTER, colourText,
          fontBold);
    paintBars(dc, cell(scale, channel), levels_[channel]);
  }
  paintNumbers(dc, row(1), "peak", &Levels::peak);
  paintNumbers(dc, row(0), "RMS", &Levels::rms);
}

void LevelView::paintScale(WqDc &dc, const RECT &scale) const {
  const LONG text = scale.left + 3 * look_.digit;
  for (const Tick &tick : scaleTicks(highest(), highest() - kScale, scale.bottom - scale.top, look_.line)) {
    const LONG y = scale.top + tick.at;
    if (tick.label.empty()) continue;
    horizontal(dc, text + look_.gap, scale.right - 1, y, colourHidden);
    write(dc, tick.label, box(scale.left - look_.gap, y - look_.line / 2, text, y + look_.line / 2), DT_RIGHT);
  }
}

// The peak's bar beside that of the RMS, each in the colour it has in the wave.
void LevelView::paintBars(WqDc &dc, const RECT &cell, const Levels &levels) const {
  const LONG width = (cell.right - cell.left) / 4, middle = (cell.left + cell.right) / 2;
  const auto bar = [&](LONG left, LONG right, double level, Colour colour) {
    fill(dc, box(left, cell.top, right, cell.bottom), colourLane);
    fill(dc, box(left, barTop(cell, level), right, cell.bottom), colour);
  };
  bar(middle - width, middle - 1, levels.peak, colourPeak);
  bar(middle + 1, middle + width, levels.rms, colourRms);
  if (levels.clipped) fill(dc, box(middle - width, cell.top - look_.gap, middle - 1, cell.top), colourClip);
}

void LevelView::paintNumbers(WqDc &dc, const RECT &row, const char *name, double Levels::*level) const {
  write(dc, name, row, DT_LEFT, colourDimText);
  for (size_t channel = 0; channel < scene_.recording.channels(); ++channel)
    write(dc, levelText(levels_[channel].*level), cell(row, channel), DT_RIGHT);
}
