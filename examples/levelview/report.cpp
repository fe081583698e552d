#include "report.h"

#include "look.h"
#include "terminal.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr uint32_t kStride = 1u << 20; // frames between two looks at the clock

template <size_t bytes> Levels measureChannel(const Recording &recording, size_t channel, Progress &progress) {
  const size_t channels = recording.samples().channels;
  const uint8_t *at = recording.samples().data + bytes * channel;
  int64_t peak = 0;
  double squares = 0;
  for (uint32_t frame = 0; frame < recording.frames(); ++frame, at += bytes * channels) {
    const int64_t value = sampleAt<bytes>(at);
    peak = std::max(peak, value < 0 ? -value : value);
    squares += static_cast<double>(value) * static_cast<double>(value);
    if (frame % kStride == 0)
      progress.update(static_cast<uint64_t>(recording.frames()) * channel + frame,
                      static_cast<uint64_t>(recording.frames()) * channels);
  }
  const double fullScale = static_cast<double>(INT64_C(1) << (8 * bytes - 1));
  return {static_cast<double>(peak) / fullScale, std::sqrt(squares / recording.frames()) / fullScale};
}

Levels measureChannel(const Recording &recording, size_t channel, Progress &progress) {
  switch (recording.samples().bits) {
  case 8: return measureChannel<1>(recording, channel, progress);
  case 16: return measureChannel<2>(recording, channel, progress);
  default: return measureChannel<4>(recording, channel, progress);
  }
}

double dbvOf(double partOfFullScale) { return WqUnit_VTodBV(partOfFullScale * WqUnit_GetRange()); }

std::string channelText(size_t channel, const Levels &levels) {
  const double peakVolts = levels.peak * WqUnit_GetRange();
  const double rmsVolts = levels.rms * WqUnit_GetRange();
  std::string text;
  const auto add = [&](const char *key, int decimals, double value) {
    text += format("ch%u.%s: %.*f\n", static_cast<unsigned>(channel), key, decimals, value);
  };
  add("peak_v", 6, peakVolts);
  add("rms_v", 6, rmsVolts);
  add("peak_dbv", 2, dbvOf(levels.peak));
  add("rms_dbv", 2, dbvOf(levels.rms));
  add("peak_db", 2, WqUnit_RetRange_dBV(dbvOf(levels.peak)));
  add("peak_percent", 2, WqUnit_RetRange_Power(peakVolts) * 100.0);
  add("rms_percent", 2, WqUnit_RetRange_Power(rmsVolts) * 100.0);
  return text;
}

} // namespace

Report measure(const std::string &name, const Recording &recording) {
  Report report{name,
                recording.samples(),
                recording.frames(),
                recording.bytes(),
                recording.declaredBytes(),
                recording.foundBytes(),
                {}};
  report.format.data = report.format.writePos = report.format.endPos = nullptr;
  Progress progress(name);
  for (size_t channel = 0; channel < report.format.channels; ++channel)
    report.channels.push_back(measureChannel(recording, channel, progress));
  return report;
}

std::string reportText(const Report &report) {
  std::string text;
  const auto add = [&](const char *key, uint32_t value) {
    text += format("%s: %u\n", key, static_cast<unsigned>(value));
  };
  add("rate", report.format.sampleRate);
  add("channels", report.format.channels);
  add("bits", report.format.bits);
  add("frames", report.frames);
  add("bytes", report.bytes);
  text += format("duration_ms: %.3f\n", report.milliseconds());
  if (report.foundBytes < report.declaredBytes)
    text += format("truncated: declared %u bytes, found %u\n", static_cast<unsigned>(report.declaredBytes),
                   static_cast<unsigned>(report.foundBytes));
  for (size_t channel = 0; channel < report.channels.size(); ++channel)
    text += channelText(channel + 1, report.channels[channel]);
  return text;
}

void printTable(const std::vector<Report> &reports, std::FILE *out) {
  std::fprintf(out, "%10s %3s %4s %14s %9s %9s  %s\n", "rate", "ch", "bits", "duration_ms", "peak_dbv", "rms_dbv",
               "file");
  for (const Report &report : reports) {
    Levels loudest;
    for (const Levels &levels : report.channels)
      loudest = {std::max(loudest.peak, levels.peak), std::max(loudest.rms, levels.rms)};
    std::fprintf(out, "%10u %3u %4u %14.3f %9.2f %9.2f  %s\n", static_cast<unsigned>(report.format.sampleRate),
                 static_cast<unsigned>(report.format.channels), static_cast<unsigned>(report.format.bits),
                 report.milliseconds(), dbvOf(loudest.peak), dbvOf(loudest.rms), shown(report.name).c_str());
  }
}
