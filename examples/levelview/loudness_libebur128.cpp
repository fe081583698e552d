#include "loudness.h"

#include <ebur128.h>

#include <cstring>

namespace {

constexpr size_t kFrames = 1 << 15; // of a piece

struct EndState {
  void operator()(ebur128_state *state) const { ebur128_destroy(&state); }
};
using State = std::unique_ptr<ebur128_state, EndState>;

// Samples that libebur128 doesn't take, as numbers of 32 bits.
std::vector<int> lengthened(SampleType type, const char *samples, size_t count) {
  const size_t bytes = sampleBytes(type);
  std::vector<int> longer(count);
  for (size_t i = 0; i < count; ++i, samples += bytes) {
    uint32_t value = 0;
    std::memcpy(reinterpret_cast<char *>(&value) + sizeof value - bytes, samples, bytes);
    if (type == SampleType::uint8) value ^= 1u << 31; // which count from 128
    longer[i] = static_cast<int>(value);
  }
  return longer;
}

int add(ebur128_state *state, SampleType type, const char *samples, size_t frames) {
  switch (type) {
  case SampleType::int16: return ebur128_add_frames_short(state, reinterpret_cast<const short *>(samples), frames);
  case SampleType::int32: return ebur128_add_frames_int(state, reinterpret_cast<const int *>(samples), frames);
  case SampleType::float32: return ebur128_add_frames_float(state, reinterpret_cast<const float *>(samples), frames);
  default: return ebur128_add_frames_int(state, lengthened(type, samples, frames * state->channels).data(), frames);
  }
}

} // namespace

std::optional<Loudness> measureLoudness(Source &source) {
  const SourceInfo &info = source.info();
  const State state(ebur128_init(static_cast<unsigned>(info.channels), info.rate,
                                 EBUR128_MODE_I | EBUR128_MODE_LRA | EBUR128_MODE_TRUE_PEAK));
  if (!state) return std::nullopt;
  std::vector<char> samples(kFrames * info.channels * sampleBytes(info.type));
  while (const size_t frames = source.read(samples.data(), kFrames))
    if (add(state.get(), info.type, samples.data(), frames) != EBUR128_SUCCESS) return std::nullopt;
  Loudness loudness;
  if (ebur128_loudness_global(state.get(), &loudness.integrated) != EBUR128_SUCCESS) return std::nullopt;
  if (ebur128_loudness_range(state.get(), &loudness.range) != EBUR128_SUCCESS) return std::nullopt;
  for (unsigned channel = 0; channel < info.channels; ++channel)
    ebur128_true_peak(state.get(), channel, &loudness.truePeaks.emplace_back());
  return loudness;
}
