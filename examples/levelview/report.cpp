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
  add("crest_db", 2, levels.rms > 0 ? dbvOf(levels.peak) - dbvOf(levels.rms) : 0);
  add("dc_percent", 4, levels.dc * 100.0);
  text += "ch" + std::to_string(channel) + ".clipped: " + std::to_string(levels.clipped) + "\n";
  return text;
}

std::string loudnessText(const Loudness &loudness) {
  std::string text;
  for (size_t channel = 0; channel < loudness.truePeaks.size(); ++channel)
    text += format("ch%u.true_peak_dbtp: %.2f\n", static_cast<unsigned>(channel + 1),
                   20 * std::log10(loudness.truePeaks[channel]));
  return text + format("loudness_lufs: %.2f\nloudness_range_lu: %.2f\n", loudness.integrated, loudness.range);
}

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
  info.rate = samples.sampleRate, info.bits = samples.bits, info.channels = samples.channels;
  info.type = samples.bits == 8 ? SampleType::uint8 : samples.bits == 16 ? SampleType::int16 : SampleType::int32;
  info.declaredBytes = recording.declaredBytes(), info.foundBytes = recording.foundBytes();
  info.frames = recording.foundFrames();
  auto meter = makeMeter(info.type, info.channels);
  meter->add(samples.data, recording.frames());
  return {name, info, recording.frames(), meter->levels(), {}};
}

std::string reportText(const Report &report) {
  std::string text;
  const SourceInfo &info = report.info;
  const auto add = [&](const char *key, uint64_t value) {
    text += std::string(key) + ": " + std::to_string(value) + '\n';
  };
  if (!info.format.empty()) text += "format: " + info.format + "\n";
  add("rate", info.rate);
  add("channels", info.channels);
  add("bits", info.bits);
  add("frames", report.frames);
  add("bytes", info.foundBytes);
  text += format("duration_ms: %.3f\n", report.milliseconds());
  if (info.isUnfinished)
    text += "unfinished: the header tells no length, found " + std::to_string(info.foundBytes) + " bytes\n";
  else if (info.foundBytes < info.declaredBytes)
    text += "truncated: declared " + std::to_string(info.declaredBytes) + " bytes, found " +
            std::to_string(info.foundBytes) + "\n";
  for (size_t channel = 0; channel < report.channels.size(); ++channel)
    text += channelText(channel + 1, report.channels[channel]);
  if (report.loudness) text += loudnessText(*report.loudness);
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
