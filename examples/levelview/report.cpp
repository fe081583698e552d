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

std::string number(uint32_t value) { return format("%u", static_cast<unsigned>(value)); }

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

std::vector<Figure> formatFigures(const Report &report) {
  std::vector<Figure> figures = {{"rate", "Frames a second", number(report.format.sampleRate)},
                                 {"channels", "Channels", number(report.format.channels)},
                                 {"bits", "Bits of a sample", number(report.format.bits)},
                                 {"frames", "Frames", number(report.frames)},
                                 {"bytes", "Bytes", number(report.bytes)},
                                 {"duration_ms", "Duration, ms", format("%.3f", report.milliseconds())}};
  if (report.foundBytes < report.declaredBytes)
    figures.push_back({"truncated", "Cut short",
                       "declared " + number(report.declaredBytes) + " bytes, found " + number(report.foundBytes)});
  return figures;
}

std::vector<Figure> levelFigures(const Levels &levels) {
  const double peakVolts = levels.peak * WqUnit_GetRange(), rmsVolts = levels.rms * WqUnit_GetRange();
  return {{"peak_v", "Peak, V", format("%.6f", peakVolts)},
          {"rms_v", "RMS, V", format("%.6f", rmsVolts)},
          {"peak_dbv", "Peak, dBV", format("%.2f", dbvOf(levels.peak))},
          {"rms_dbv", "RMS, dBV", format("%.2f", dbvOf(levels.rms))},
          {"peak_db", "Peak, dB of full scale", format("%.2f", WqUnit_RetRange_dBV(dbvOf(levels.peak)))},
          {"peak_percent", "Peak, % of full scale", format("%.2f", WqUnit_RetRange_Power(peakVolts) * 100)},
          {"rms_percent", "RMS, % of full scale", format("%.2f", WqUnit_RetRange_Power(rmsVolts) * 100)}};
}

std::string reportText(const Report &report) {
  std::string text;
  for (const Figure &figure : formatFigures(report)) text += format("%s: %s\n", figure.key, figure.value.c_str());
  for (size_t channel = 0; channel < report.channels.size(); ++channel)
    for (const Figure &figure : levelFigures(report.channels[channel]))
      text += format("ch%u.%s: %s\n", static_cast<unsigned>(channel + 1), figure.key, figure.value.c_str());
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
