#include "rulers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kSlack = 1e-9; // of a step, against rounding

struct Step {
  double size;
  int parts; // that short ticks divide it into
};

Step decimalStep(double least) {
  const double size = roundStep(least);
  const double lead = size / std::pow(10, std::floor(std::log10(size) + kSlack));
  return {size, lead < 4 && lead > 1.5 ? 4 : 5};
}

// In seconds: whole minutes and hours are round too.
Step clockStep(double least) {
  constexpr Step kSteps[] = {{15, 3},  {30, 3},   {60, 6},   {120, 4},  {300, 5},
                             {600, 5}, {1200, 4}, {1800, 3}, {3600, 6}, {7200, 4}};
  const Step decimal = decimalStep(least);
  if (decimal.size <= 10) return decimal;
  for (const Step &step : kSteps)
    if (step.size >= least) return step;
  return {3600 * roundStep(least / 3600), 5};
}

int decimalsOf(double step) { return std::max(0, static_cast<int>(std::ceil(-std::log10(step) - kSlack))); }

// Ticks of an even ruler.
// from: the value at its first pixel. stepFor: the Step that is not below a value. text: what is written at a value.
template <typename StepFor, typename Text>
Ticks evenTicks(double from, double perPixel, LONG length, LONG digit, StepFor stepFor, Text text) {
  Step step = stepFor(perPixel * digit * 4);
  const auto widest = [&] {
    return (static_cast<double>(text(from + perPixel * length, step.size).size()) + 2) * digit;
  };
  while (step.size < widest() * perPixel) step = stepFor(step.size * 1.01);
  Ticks ticks;
  const double part = step.size / step.parts;
  for (double count = std::ceil(from / part - kSlack) + 0.0;; ++count) {
    const LONG at = rounded((count * part - from) / perPixel);
    if (at >= length) return ticks;
    const bool isLong = std::fmod(count, step.parts) == 0;
    ticks.push_back({at, isLong ? text(count * part, step.size) : ""});
  }
}

// Pixels above the middle of a lane.
double heightOf(double level, LONG half) { return half * WqUnit_RetRange_Power(WqUnit_dBVToV(level)); }

// The roundest level that lies less than a line below a height.
double roundLevel(double height, LONG half, LONG line) {
  const double limit = WqUnit_VTodBV(height / half * WqUnit_GetRange());
  for (const double step : {10.0, 5.0, 2.0}) {
    const double level = std::floor(limit / step + kSlack) * step;
    if (heightOf(level, half) > height - line) return level;
  }
  return std::floor(limit + kSlack);
}

} // namespace

double roundStep(double least) {
  const double power = std::pow(10, std::floor(std::log10(least)));
  for (const double lead : {1.0, 2.0, 5.0})
    if (lead * power >= least * (1 - kSlack)) return lead * power;
  return 10 * power;
}

TimeUnit timeUnit(double seconds) {
  return seconds <= 10 ? TimeUnit::milliseconds : seconds <= 100 ? TimeUnit::seconds : TimeUnit::clock;
}

TimeUnit timeUnit(const Visible &visible, double rate) { return timeUnit((visible.end() - visible.start()) / rate); }

const char *timeUnitName(TimeUnit unit) {
  constexpr const char *kNames[] = {"ms", "s", "min:s"};
  return kNames[static_cast<size_t>(unit)];
}

std::string timeText(double seconds, TimeUnit unit, int decimals) {
  if (unit == TimeUnit::milliseconds) return format("%.*f", decimals, seconds * 1000);
  if (unit == TimeUnit::seconds) return format("%.*f", decimals, seconds);
  // rounded before it is divided: 59.99 shall not become 0:60.0
  const double parts = std::pow(10, decimals), rounded = std::round(seconds * parts);
  const double minutes = std::floor(rounded / (60 * parts));
  return format("%.0f:%0*.*f", minutes, decimals > 0 ? 3 + decimals : 2, decimals,
                (rounded - minutes * 60 * parts) / parts);
}

std::string levelText(double level) { return std::isinf(level) ? "-\x81\x87" : format("%.2f", level); }

Ticks timeTicks(const Visible &visible, double rate, LONG digit) {
  const TimeUnit unit = timeUnit(visible, rate);
  const double unitsPerSecond = unit == TimeUnit::milliseconds ? 1000 : 1;
  const auto text = [&](double value, double step) { return timeText(value / unitsPerSecond, unit, decimalsOf(step)); };
  return evenTicks(visible.start() / rate * unitsPerSecond, visible.framesPerPixel() / rate * unitsPerSecond,
                   visible.width(), digit, unit == TimeUnit::clock ? clockStep : decimalStep, text);
}

Ticks frameTicks(const Visible &visible, LONG digit) {
  const auto stepFor = [](double least) {
    const Step step = decimalStep(std::max(least, 1.0));
    return Step{step.size, step.size > 1 ? step.parts : 1}; // there is nothing between two samples
  };
  const auto text = [](double value, double) { return format("%.0f", value); };
  return evenTicks(visible.start(), visible.framesPerPixel(), visible.width(), digit, stepFor, text);
}

Ticks percentTicks(LONG half, LONG line) {
  Ticks ticks;
  const double step = half > 0 ? roundStep(std::max(150.0 * line / half, 1.0)) : 1000;
  for (int i = 0; i * step <= 100; ++i)
    for (const double sign : {1.0, -1.0}) {
      if (i == 0 && sign < 0) continue;
      const double percent = i * step;
      ticks.push_back({rounded(half * sign * percent / 100), format(i == 0 ? "0 %%" : "%.0f", sign * percent)});
    }
  return ticks;
}

Ticks levelTicks(LONG half, LONG line) {
  Ticks ticks;
  for (double height = half; height >= line;) {
    const double level = roundLevel(height, half, line);
    const LONG at = rounded(heightOf(level, half));
    if (at < line) break;
    ticks.push_back({at, format("%.0f", level)});
    height = at - line * (ticks.size() == 1 ? 1.5 : 1); // the first one moves down into the lane
  }
  return ticks;
}

Ticks scaleTicks(double top, double bottom, LONG height, LONG line) {
  Ticks ticks;
  if (height < line) return ticks;
  const double perPixel = (top - bottom) / height;
  const Step step = decimalStep(std::max(1.5 * line * perPixel, 1.0));
  const double part = step.size / step.parts;
  for (double count = std::floor(top / part + kSlack); count * part >= bottom - kSlack; --count) {
    const bool isLong = std::fmod(count, step.parts) == 0;
    ticks.push_back({rounded((top - count * part) / perPixel), isLong ? format("%.0f", count * part + 0.0) : ""});
  }
  return ticks;
}

void drawTicks(WqDc &dc, const Look &look, const RECT &row, LONG left, const Ticks &ticks) {
  for (const Tick &tick : ticks) {
    const LONG x = left + tick.at, text = x + look.gap;
    const bool isLong = !tick.label.empty();
    vertical(dc, x, isLong ? row.top : row.bottom - look.shortTick, row.bottom - 1, colourTick);
    if (isLong && text + static_cast<LONG>(tick.label.size()) * look.digit <= row.right) // no label is cut
      write(dc, tick.label, box(text, row.top, row.right, row.bottom - look.shortTick), DT_LEFT);
  }
}
