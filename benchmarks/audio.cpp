// A long WAV file, read and written whole. It stays in the page cache, so the disk has no influence. Reading includes
// making and freeing the block; writing makes a new file.

#include "wq.h"

#include <benchmark/benchmark.h>

#ifdef HAVE_SNDFILE
#include <sndfile.h>
#endif

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace {

constexpr uint32_t kSize = 500'000'000; // bytes of sample data
constexpr uint32_t kRate = 48000;
constexpr uint32_t kBits = 16;
constexpr uint32_t kChannels = 2;
constexpr size_t kHeader = 44;

// The samples, in memory and in a file. The program removes its files at its end.
class Samples {
 public:
  Samples() {
    WqPcmBuf_Init(&buf);
    std::error_code error;
    const std::string folder = std::filesystem::temp_directory_path(error).string();
    if (error) return;
    if (!WqPcmBuf_Alloc(&buf, kRate, kSize / (kBits / 8 * kChannels), kBits, kChannels)) return;
    std::minstd_rand random(1);
    while (buf.writePos < buf.endPos) {
      const auto sample = static_cast<uint32_t>(random());
      WqPcmBuf_Add(&buf, &sample, sizeof sample);
    }
    std::random_device seed;
    input = folder + "/wq_benchmark_" + std::to_string(seed()) + ".wav";
    output = input + ".out";
    ready = WqPcmBuf_WriteWavFile(&buf, input.c_str()) == 1;
  }
  ~Samples() {
    WqPcmBuf_Term(&buf);
    std::remove(input.c_str());
    std::remove(output.c_str());
  }
  Samples(const Samples &) = delete;
  Samples &operator=(const Samples &) = delete;

  WqPcmBuf buf;
  std::string input;
  std::string output;
  bool ready = false;
};

const Samples &samples() {
  static const Samples made;
  return made;
}

uint32_t readOurs(const char *name) {
  WqPcmBuf buf;
  WqPcmBuf_Init(&buf);
  const uint32_t count = WqPcmBuf_ReadWavFile(&buf, name);
  benchmark::DoNotOptimize(buf.data);
  WqPcmBuf_Term(&buf);
  return count;
}

uint32_t readPlain(const char *name) {
  std::FILE *file = std::fopen(name, "rb");
  if (!file) return 0;
  std::array<char, kHeader> header;
  void *data = std::calloc(1, kSize);
  size_t count = 0;
  if (data && std::fread(header.data(), 1, kHeader, file) == kHeader) count = std::fread(data, 1, kSize, file);
  benchmark::DoNotOptimize(data);
  std::free(data);
  std::fclose(file);
  return static_cast<uint32_t>(count);
}

uint32_t writeOurs(const char *name) { return WqPcmBuf_WriteWavFile(&samples().buf, name) == 1 ? kSize : 0; }

uint32_t writePlain(const char *name) {
  std::FILE *file = std::fopen(name, "wb");
  if (!file) return 0;
  const std::array<char, kHeader> header{};
  std::fwrite(header.data(), 1, kHeader, file);
  const size_t count = std::fwrite(samples().buf.data, 1, kSize, file);
  return std::fclose(file) == 0 ? static_cast<uint32_t>(count) : 0;
}

#ifdef HAVE_SNDFILE
uint32_t readSndfile(const char *name) {
  SF_INFO info{};
  SNDFILE *file = sf_open(name, SFM_READ, &info);
  if (!file) return 0;
  void *data = std::calloc(1, kSize);
  const sf_count_t count = data ? sf_read_raw(file, data, kSize) : 0;
  benchmark::DoNotOptimize(data);
  std::free(data);
  sf_close(file);
  return static_cast<uint32_t>(count);
}

uint32_t writeSndfile(const char *name) {
  SF_INFO info{};
  info.samplerate = kRate;
  info.channels = kChannels;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  SNDFILE *file = sf_open(name, SFM_WRITE, &info);
  if (!file) return 0;
  const sf_count_t count = sf_write_raw(file, samples().buf.data, kSize);
  return sf_close(file) == 0 ? static_cast<uint32_t>(count) : 0;
}
#endif

void finish(benchmark::State &state, uint32_t count) {
  if (count != kSize) state.SkipWithError("the file could not be read or written whole");
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(kSize));
}

void reading(benchmark::State &state, uint32_t (*read)(const char *name)) {
  const std::string &name = samples().input;
  uint32_t count = samples().ready ? kSize : 0;
  for (auto _ : state) count = std::min(count, read(name.c_str()));
  finish(state, count);
}

void writing(benchmark::State &state, uint32_t (*write)(const char *name)) {
  const std::string &name = samples().output;
  uint32_t count = samples().ready ? kSize : 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::remove(name.c_str());
    state.ResumeTiming();
    count = std::min(count, write(name.c_str()));
  }
  finish(state, count);
}

const bool registered = [] {
  const auto add = [](const char *name, auto *run, uint32_t (*work)(const char *name)) {
    benchmark::RegisterBenchmark(name, run, work)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);
  };
  add("WAV read, 500 MB/ours", reading, readOurs);
  add("WAV read, 500 MB/fread", reading, readPlain);
#ifdef HAVE_SNDFILE
  add("WAV read, 500 MB/libsndfile", reading, readSndfile);
#endif
  add("WAV write, 500 MB/ours", writing, writeOurs);
  add("WAV write, 500 MB/fwrite", writing, writePlain);
#ifdef HAVE_SNDFILE
  add("WAV write, 500 MB/libsndfile", writing, writeSndfile);
#endif
  return true;
}();

} // namespace
