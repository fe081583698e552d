#include "columns.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kSteady = 50; // times a second

// The frame at a place between two columns. Where columns hold many blocks of the peaks they take whole ones: the
// difference can't be seen, and the samples themselves can stay out of reach.
uint32_t frameAt(const Visible &visible, double pixel) {
  const double at = std::clamp<double>(std::floor(visible.frameAt(pixel)), 0, visible.frames());
  const auto frame = static_cast<uint32_t>(at);
  const bool whole = visible.framesPerPixel() >= 16 * Peaks::kBlock && frame < visible.frames();
  return whole ? frame - frame % Peaks::kBlock : frame;
}

} // namespace

Columns columnsOf(const Peaks &peaks, const Visible &visible, LONG from, LONG to) {
  Columns columns;
  uint32_t first = frameAt(visible, from), before = first > 0 ? first - 1 : 0;
  for (LONG pixel = from; pixel < to; ++pixel) {
    const uint32_t end = frameAt(visible, pixel + 1);
    columns.push_back(first < end ? peaks.of(before, end) : Extents());
    first = end;
    before = end > 0 ? end - 1 : 0;
  }
  return columns;
}

Columns loudParts(const Columns &columns, const Peaks &peaks, const Visible &visible, LONG from, double rate) {
  Columns parts = columns;
  const double beside = std::max(rate / kSteady / visible.framesPerPixel() - 1, 0.0) / 2; // pixels
  for (Extents &part : parts) {
    const uint32_t first = frameAt(visible, from - beside), end = frameAt(visible, ++from + beside);
    if (first == end) continue;
    const Extents around = beside > 0 ? peaks.of(first, end) : part;
    for (size_t channel = 0; channel < part.size(); ++channel) {
      const auto rms = static_cast<int32_t>(std::lround(WqMath_Sqrt(around[channel].squares / (end - first))));
      part[channel].low = std::max(part[channel].low, -rms);
      part[channel].high = std::min(part[channel].high, rms);
    }
  }
  return parts;
}
