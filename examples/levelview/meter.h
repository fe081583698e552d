// Levels of interleaved samples, channel by channel. Parts of a recording can be metered apart, on several threads, and
// put together afterwards.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

// How samples stand in memory: in the machine's byte order, those of int24 in three bytes with the lowest first.
enum class SampleType { uint8, int16, int24, int32, float32 };

size_t sampleBytes(SampleType type);

// The levels of one channel, as parts of full scale.
struct Levels {
  double peak = 0;
  double rms = 0;
  double dc = 0;                                 // the mean
  uint64_t clipped = 0;                          // samples at either end of the range
  std::optional<double> truePeak = std::nullopt; // four times oversampled, where that was measured
};

class Meter {
 public:
  virtual ~Meter() = default;
  Meter(const Meter &) = delete;
  Meter &operator=(const Meter &) = delete;

  virtual void add(const void *samples, size_t frames) = 0;
  // Takes in what a meter for the same type and channels has metered.
  virtual void merge(const Meter &other) = 0;
  virtual std::vector<Levels> levels() const = 0;

 protected:
  Meter() = default;
};

// channels: 1 to 256. bits: that whole numbers use, from the highest on, if they are fewer than the type has; the
// others are 0.
std::unique_ptr<Meter> makeMeter(SampleType type, size_t channels, uint32_t bits = 0);
