// The table of minima, maxima and squares for the viewer's wave, made for a long recording in memory. The peer copies
// the same bytes: its time tells the speed of memory.

#include "examples/levelview/peaks.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <random>

namespace {

constexpr uint32_t kSize = 500'000'000; // bytes of sample data
constexpr uint32_t kRate = 48000;
constexpr uint32_t kBits = 16;
constexpr uint32_t kChannels = 2;

class Recording {
 public:
  Recording() {
    WqPcmBuf_Init(&samples_);
    if (!WqPcmBuf_Alloc(&samples_, kRate, kSize / (kBits / 8 * kChannels), kBits, kChannels)) return;
    std::minstd_rand random(1);
    while (samples_.writePos < samples_.endPos) {
      const auto sample = static_cast<uint32_t>(random());
      WqPcmBuf_Add(&samples_, &sample, sizeof sample);
    }
  }
  ~Recording() { WqPcmBuf_Term(&samples_); }
  Recording(const Recording &) = delete;
  Recording &operator=(const Recording &) = delete;
  const WqPcmBuf &samples() const { return samples_; }

 private:
  WqPcmBuf samples_;
};

const WqPcmBuf &samples() {
  static const Recording recording;
  return recording.samples();
}

void finish(benchmark::State &state) { state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(kSize)); }

void makeTable(benchmark::State &state) {
  if (!samples().data) return state.SkipWithError("not enough memory");
  for (auto _ : state) {
    Peaks peaks(samples());
    peaks.update();
    const Extents whole = peaks.of(0, samples().frames);
    benchmark::DoNotOptimize(whole[0].high);
  }
  finish(state);
}

void copyBytes(benchmark::State &state) {
  if (!samples().data) return state.SkipWithError("not enough memory");
  const auto copy = std::make_unique<uint8_t[]>(kSize);
  for (auto _ : state) {
    std::memcpy(copy.get(), samples().data, kSize);
    benchmark::ClobberMemory();
  }
  finish(state);
}

const bool registered = [] {
  const auto add = [](const char *name, auto *run) {
    benchmark::RegisterBenchmark(name, run)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);
  };
  add("peak table, 500 MB/ours", makeTable);
  add("peak table, 500 MB/memcpy", copyBytes);
  return true;
}();

} // namespace
