#include "report.h"

#include "look.h"
#include "terminal.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

namespace {

constexpr size_t kPiece = 1u << 20; // bytes

// One of several threads that take turns to read, and measure what they have read side by side.
class Measuring {
 public:
  Measuring(Source &source, Progress &progress) : source_(source), progress_(progress) {}

  std::unique_ptr<Meter> work() {
    const SourceInfo &info = source_.info();
    const size_t frameBytes = sampleBytes(info.type) * info.channels;
    std::vector<char> piece(std::max(kPiece, frameBytes));
    auto meter = makeMeter(info.type, info.channels, info.bits);
    while (const size_t frames = read(piece.data(), piece.size() / frameBytes)) meter->add(piece.data(), frames);
    return meter;
  }
  uint64_t frames() const { return frames_; }

 private:
  size_t read(void *samples, size_t frames) {
    const std::lock_guard lock(mutex_);
    const size_t got = source_.read(samples, frames);
    frames_ += got;
    progress_.update(frames_, source_.info().frames);
    return got;
  }

  Source &source_;
  Progress &progress_;
  std::mutex mutex_;
  uint64_t frames_ = 0;
};

double dbvOf(double partOfFullScale) { return WqUnit_VTodBV(partOfFullScale * WqUnit_GetRange()); }

} // namespace

Report measure(const std::string &name, Source &source) {
  Progress progress(name);
  Measuring measuring(source, progress);
  std::vector<std::future<std::unique_ptr<Meter>>> others;
  for (unsigned i = 1; i < std::thread::hardware_concurrency(); ++i)
    others.push_back(std::async(std::launch::async, [&] { return measuring.work(); }));
  const std::unique_ptr<Meter> all = measuring.work();
  for (auto &other : others) all->merge(*other.get());
  return {name, source.info(), measuring.frames(), all->levels(), {}};
}

Report measure(const std::string &name, const Recording &recording) {
  const WqPcmBuf &samples = recording.samples();
  SourceInfo info;
  info.format = "WAV, " + std::to_string(samples.bits) + "-bit PCM";
  info.rate = samples.sampleRate, info.bits = samples.bits, info.channels = samples.channels;
  info.type = samples.bits == 8 ? SampleType::uint8 : samples.bits == 16 ? SampleType::int16 : SampleType::int32;
  info.declaredBytes = recording.declaredBytes(), info.foundBytes = recording.foundBytes();
  info.frames = recording.foundFrames();
  auto meter = makeMeter(info.type, info.channels);
  meter->add(samples.data, recording.frames());
  return {name, info, recording.frames(), meter->levels(), {}};
}

std::vector<Figure> formatFigures(const Report &report) {
  const SourceInfo &info = report.info;
  std::vector<Figure> figures = {{"format", "Format", info.format},
                                 {"rate", "Frames a second", std::to_string(info.rate)},
                                 {"channels", "Channels", std::to_string(info.channels)},
                                 {"bits", "Bits of a sample", std::to_string(info.bits)},
                                 {"frames", "Frames", std::to_string(report.frames)},
                                 {"bytes", "Bytes", std::to_string(info.foundBytes)},
                                 {"duration_ms", "Duration, ms", format("%.3f", report.milliseconds())}};
  const std::string found = ", found " + std::to_string(info.foundBytes);
  if (info.isUnfinished)
    figures.push_back({"unfinished", "Unfinished", "the header tells no length" + found + " bytes"});
  else if (info.foundBytes < info.declaredBytes)
    figures.push_back({"truncated", "Cut short", "declared " + std::to_string(info.declaredBytes) + " bytes" + found});
  if (report.loudness) {
    figures.push_back({"loudness_lufs", "Loudness, LUFS", format("%.2f", report.loudness->integrated)});
    figures.push_back({"loudness_range_lu", "Loudness range, LU", format("%.2f", report.loudness->range)});
  }
  return figures;
}

std::vector<Figure> levelFigures(const Levels &levels) {
  const double peakVolts = levels.peak * WqUnit_GetRange(), rmsVolts = levels.rms * WqUnit_GetRange();
  const double crest = levels.rms > 0 ? dbvOf(levels.peak) - dbvOf(levels.rms) : 0;
  std::vector<Figure> figures = {
      {"peak_v", "Peak, V", format("%.6f", peakVolts)},
      {"rms_v", "RMS, V", format("%.6f", rmsVolts)},
      {"peak_dbv", "Peak, dBV", format("%.2f", dbvOf(levels.peak))},
      {"rms_dbv", "RMS, dBV", format("%.2f", dbvOf(levels.rms))},
      {"peak_db", "Peak, dB of full scale", format("%.2f", WqUnit_RetRange_dBV(dbvOf(levels.peak)))},
      {"peak_percent", "Peak, % of full scale", format("%.2f", WqUnit_RetRange_Power(peakVolts) * 100)},
      {"rms_percent", "RMS, % of full scale", format("%.2f", WqUnit_RetRange_Power(rmsVolts) * 100)},
      {"crest_db", "Crest factor, dB", format("%.2f", crest)},
      {"dc_percent", "Mean, % of full scale", format("%.4f", levels.dc * 100)},
      {"clipped", "Samples at full scale", std::to_string(levels.clipped)}};
  if (levels.truePeak)
    figures.push_back({"true_peak_dbtp", "True peak, dBTP", format("%.2f", 20 * std::log10(*levels.truePeak))});
  return figures;
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
    std::fprintf(out, "%10u %3u %4u %14.3f %9.2f %9.2f  %s\n", static_cast<unsigned>(report.info.rate),
                 static_cast<unsigned>(report.info.channels), static_cast<unsigned>(report.info.bits),
                 report.milliseconds(), dbvOf(loudest.peak), dbvOf(loudest.rms), shown(report.name).c_str());
  }
}
