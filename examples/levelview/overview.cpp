#include "overview.h"

#include "columns.h"

#include <algorithm>
#include <cmath>

Overview::Overview(WqWnd *parent, const Scene &scene, const Look &look, Control &control)
    : Pane(parent), scene_(scene), look_(look), control_(control) {}

// As wide as the wave.
RECT Overview::area() const {
  const RECT whole = client();
  return box(look_.levelRuler, 0, whole.right - look_.levelRuler, whole.bottom - look_.gap);
}

Visible Overview::whole() const {
  Visible visible = scene_.visible;
  visible.setFrames(visible.frames());
  return visible;
}

void Overview::dragged(const POINT &at) {
  Visible visible = scene_.visible;
  visible.center(whole().frameAt(at.x - area().left));
  control_.show(visible);
}

void Overview::paint(WqDc &dc, const RECT &dirty) {
  const RECT strip = area();
  fill(dc, dirty, colourGround);
  fill(dc, strip, colourLane);
  if (!scene_.ready()) return;
  const Visible all = whole();
  const auto xOf = [&](double frame) { return strip.left + rounded(all.pixelOf(frame)); };
  const LONG first = xOf(scene_.visible.start());
  const LONG last = std::max(xOf(scene_.visible.end()), first + 2); // never too thin to be seen
  fill(dc, box(first, strip.top, last, strip.bottom), colourGrid);
  const LONG from = std::max(dirty.left, strip.left), to = std::min(dirty.right, strip.right);
  const Columns columns = columnsOf(scene_.peaks, all, from - strip.left, to - strip.left);
  const double middle = (strip.bottom - 1) / 2.0, scale = middle / scene_.recording.fullScale();
  for (LONG x = from; x < to; ++x) {
    const Extents &extents = columns[static_cast<size_t>(x - from)];
    if (extents[0].empty()) continue;
    const auto yOf = [&](int32_t sample) { return rounded(middle - sample * scale); };
    vertical(dc, x, yOf(std::max(extents[0].high, extents[1].high)), yOf(std::min(extents[0].low, extents[1].low)),
             x >= first && x < last ? colourPeak : colourHidden);
  }
  frame(dc, box(first, strip.top, last, strip.bottom), colourDimText);
}
