#include "testsignal.h"

#include "wq.h"

#include <array>
#include <cmath>

namespace {

constexpr uint32_t kRate = 48000;
constexpr uint32_t kSeconds = 5;
constexpr double kPeak = 16384;
constexpr double kTone = 1000;
constexpr double kSweepStart = 20;
constexpr double kSweepEnd = 20000;
constexpr double kTurn = 6.283185307179586; // radians

// The phase of a sweep whose frequency grows by the same factor in each equal piece of time.
double sweepPhase(double seconds) {
  const double growth = std::log(kSweepEnd / kSweepStart) / kSeconds;
  return kTurn * kSweepStart / growth * (std::exp(growth * seconds) - 1);
}

std::array<uint8_t, 2> sampleBytes(double phase) {
  const auto value = static_cast<uint16_t>(static_cast<int16_t>(std::lround(kPeak * WqMath_Sin(phase))));
  return {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)};
}

} // namespace

bool makeTestSignal(const char *fileName) {
  WqPcmBuf samples;
  if (!WqPcmBuf_Alloc(&samples, kRate, kRate * kSeconds, 16, 2)) return false;
  for (uint32_t frame = 0; frame < samples.frames; ++frame) {
    const double seconds = static_cast<double>(frame) / kRate;
    for (const double phase : {kTurn * kTone * seconds, sweepPhase(seconds)})
      WqPcmBuf_Add(&samples, sampleBytes(phase).data(), 2);
  }
  const bool written = WqPcmBuf_WriteWavFile(&samples, fileName) != 0;
  WqPcmBuf_Term(&samples);
  return written;
}
