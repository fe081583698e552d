#include "status_view.h"

#include "ids.h"
#include "rulers.h"

#include <cmath>

StatusView::StatusView(WqWnd *parent, const Scene &scene, const Look &look)
    : Pane(parent), scene_(scene), look_(look) {}

RECT StatusView::row(LONG index) const {
  const LONG top = look_.gap + index * (look_.line + look_.gap);
  return box(2 * look_.gap, top, client().right - 2 * look_.gap, top + look_.line);
}

void StatusView::resized() {
  const RECT first = row(0), second = row(1);
  const LONG middle = first.left + (first.right - first.left) * 2 / 3; // about where what is on the left ends
  tip(TIP_POINTER, box(first.left, first.top, middle, first.bottom));
  tip(TIP_SOUND, box(middle, first.top, first.right, first.bottom));
  tip(TIP_RANGE, box(second.left, second.top, middle, second.bottom));
  tip(TIP_LENGTH, box(middle, second.top, second.right, second.bottom));
}

void StatusView::movePointer() {
  const RECT first = row(0);
  invalidate(&first);
}

void StatusView::paint(WqDc &dc, const RECT &) {
  const RECT whole = client();
  fill(dc, whole, colourPanel);
  horizontal(dc, 0, whole.right - 1, 0, colourEdge);
  if (!scene_.ready()) return;
  const RECT first = row(0), second = row(1);
  LONG x = first.left;
  if (scene_.pointer && scene_.recording.frames() > 0) {
    for (const Cell &cell : underPointer()) {
      const LONG right = x + widthOf(dc, cell.widest);
      write(dc, cell.text, box(x, first.top, right, first.bottom), DT_RIGHT);
      x = right + look_.digit;
    }
  } else {
    const std::string hint = "wheel, +, -: zoom   drag, arrows: move";
    write(dc, hint, first, DT_LEFT, colourDimText);
    x += widthOf(dc, hint) + 2 * look_.digit;
  }
  write(dc, range(), second, DT_LEFT);
  const auto onTheRight = [&](const std::string &text, const RECT &row, LONG left) {
    if (widthOf(dc, text) <= row.right - left) write(dc, text, row, DT_RIGHT, colourDimText);
  };
  onTheRight(sound(), first, x);
  onTheRight(length(), second, second.left + widthOf(dc, range()) + 2 * look_.digit);
}

std::vector<StatusView::Cell> StatusView::underPointer() const {
  const Recording &recording = scene_.recording;
  const uint32_t frame = scene_.visible.nearest(*scene_.pointer);
  const TimeUnit unit = timeUnit(scene_.visible, recording.rate());
  const auto number = [](uint32_t value) { return format("#%u", static_cast<unsigned>(value)); };
  std::vector<Cell> cells = {{fineTime(frame / recording.rate(), unit), fineTime(recording.seconds(), unit)},
                             {number(frame), number(recording.frames())}};
  const double range = WqUnit_GetRange();
  for (size_t channel = 0; channel < recording.channels(); ++channel) {
    const double volts = recording.value(frame, channel) / recording.fullScale() * range;
    if (recording.channels() > 1) cells.push_back({format("ch%u", static_cast<unsigned>(channel + 1)), "   ch1"});
    cells.push_back({format("%.5f V", volts), format("%.5f V", -range)});
    cells.push_back({levelText(WqUnit_VTodBV(std::fabs(volts))) + " dBV", "-88.88 dBV"});
    cells.push_back({format("%.2f %%", WqUnit_RetRange_Power(volts) * 100), "-100.00 %"});
  }
  return cells;
}

// Fine enough to tell samples apart.
std::string StatusView::fineTime(double seconds, TimeUnit unit, bool withUnit) {
  const std::string text = timeText(seconds, unit, unit == TimeUnit::milliseconds ? 3 : 5);
  return withUnit ? text + " " + timeUnitName(unit) : text;
}

std::string StatusView::range() const {
  const Visible &visible = scene_.visible;
  const double rate = scene_.recording.rate(), density = visible.framesPerPixel();
  const TimeUnit unit = timeUnit(visible, rate);
  return fineTime(visible.start() / rate, unit, false) + " to " + fineTime(visible.end() / rate, unit) +
         format("   zoom %.*f   ", visible.factor() < 100 ? 1 : 0, visible.factor()) +
         (density >= 1 ? format("%.*f samples/pixel", density < 100 ? 1 : 0, density)
                       : format("%.1f pixels/sample", 1 / density));
}

std::string StatusView::sound() const {
  const WqPcmBuf &samples = scene_.recording.samples();
  return format("%u Hz   %u bits   %s", static_cast<unsigned>(samples.sampleRate), static_cast<unsigned>(samples.bits),
                samples.channels == 1 ? "mono" : "stereo");
}

std::string StatusView::length() const {
  const Recording &recording = scene_.recording;
  const bool cut = recording.foundBytes() < recording.declaredBytes();
  return format("%u samples   ", static_cast<unsigned>(recording.frames())) +
         fineTime(recording.seconds(), timeUnit(recording.seconds())) + (cut ? "   cut short" : "");
}
