#include "wave_view.h"

#include <algorithm>

WaveView::WaveView(WqWnd *parent, const Scene &scene, const Look &look, Control &control)
    : Pane(parent), scene_(scene), look_(look), control_(control) {}

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
  if (!scene_.ready()) {
    fill(dc, dirty, colourGround);
    return paintProgress(dc);
  }
  drawing().paint(dc, dirty);
  const RECT lanes = common(wave(), dirty);
  if (!scene_.pointer || IsRectEmpty(&lanes)) return;
  vertical(dc, wave().left + *scene_.pointer, lanes.top, lanes.bottom - 1, colourCursor);
}

void WaveView::paintProgress(WqDc &dc) const {
  const RECT whole = client();
  const LONG x = whole.right / 6, y = whole.bottom / 2;
  const RECT bar = box(x, y, whole.right - x, y + look_.line);
  write(dc, format("Reading %s: %u %%", scene_.name.c_str(), scene_.percent),
        box(0, y - 2 * look_.line, whole.right, y), DT_CENTER);
  fill(dc, bar, colourLane);
  fill(dc, box(x, y, x + (bar.right - x) * static_cast<LONG>(scene_.percent) / 100, bar.bottom), colourPeak);
  frame(dc, bar, colourTick);
}
