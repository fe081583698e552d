#include "report.h"

#include <algorithm>
#include <cmath>

namespace {

struct Levels {
  double peak = 0; // as parts of full scale
  double rms = 0;
};

// A sample as a signed number. Samples are little-endian; those of 8 bits count from 128.
template <size_t bytes> int64_t sampleAt(const uint8_t *at) {
  if constexpr (bytes == 1) return static_cast<int64_t>(*at) - 128;
  uint32_t sum = 0;
  for (size_t i = 0; i < bytes; ++i) sum |= static_cast<uint32_t>(at[i]) << 8 * i;
  if constexpr (bytes == 2) return static_cast<int16_t>(sum);
  return static_cast<int32_t>(sum);
}

template <size_t bytes> Levels measure(const Recording &recording, size_t channel) {
  const size_t step = bytes * recording.samples().channels;
  const uint8_t *at = recording.samples().data + bytes * channel;
  int64_t peak = 0;
  double squares = 0;
  for (uint32_t frame = 0; frame < recording.frames(); ++frame, at += step) {
    const int64_t value = sampleAt<bytes>(at);
    peak = std::max(peak, value < 0 ? -value : value);
    squares += static_cast<double>(value) * static_cast<double>(value);
  }
  const double fullScale = static_cast<double>(INT64_C(1) << (8 * bytes - 1));
  return {static_cast<double>(peak) / fullScale, std::sqrt(squares / recording.frames()) / fullScale};
}

Levels measure(const Recording &recording, uint32_t channel) {
  switch (recording.samples().bits) {
  case 8: return measure<1>(recording, channel);
  case 16: return measure<2>(recording, channel);
  default: return measure<4>(recording, channel);
  }
}

void printChannel(uint32_t channel, const Levels &levels, std::FILE *out) {
  const double peakVolts = levels.peak * WqUnit_GetRange();
  const double rmsVolts = levels.rms * WqUnit_GetRange();
  const double peakDbv = WqUnit_VTodBV(peakVolts);
  const auto print = [&](const char *key, int decimals, double value) {
    std::fprintf(out, "ch%u.%s: %.*f\n", static_cast<unsigned>(channel), key, decimals, value);
  };
  print("peak_v", 6, peakVolts);
  print("rms_v", 6, rmsVolts);
  print("peak_dbv", 2, peakDbv);
  print("rms_dbv", 2, WqUnit_VTodBV(rmsVolts));
  print("peak_db", 2, WqUnit_RetRange_dBV(peakDbv));
  print("peak_percent", 2, WqUnit_RetRange_Power(peakVolts) * 100.0);
  print("rms_percent", 2, WqUnit_RetRange_Power(rmsVolts) * 100.0);
}

} // namespace

void printReport(const Recording &recording, std::FILE *out) {
  const WqPcmBuf &samples = recording.samples();
  const auto print = [&](const char *key, uint32_t value) {
    std::fprintf(out, "%s: %u\n", key, static_cast<unsigned>(value));
  };
  print("rate", samples.sampleRate);
  print("channels", samples.channels);
  print("bits", samples.bits);
  print("frames", recording.frames());
  print("bytes", recording.bytes());
  std::fprintf(out, "duration_ms: %.3f\n", recording.frames() * 1000.0 / samples.sampleRate);
  if (recording.foundBytes() < recording.declaredBytes())
    std::fprintf(out, "truncated: declared %u bytes, found %u\n", static_cast<unsigned>(recording.declaredBytes()),
                 static_cast<unsigned>(recording.foundBytes()));
  for (uint32_t channel = 0; channel < samples.channels; ++channel)
    printChannel(channel + 1, measure(recording, channel), out);
}
