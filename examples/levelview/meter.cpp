#include "meter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>

namespace {

constexpr size_t kLanes = 256; // samples that are metered side by side
constexpr size_t kRows = 4096; // of lanes, for which the sums of narrow samples have room

// Sums of one channel. Those of whole numbers are exact: squares of up to 32 bits are kept in two halves, which have
// room for 2^32 of them.
struct WholeTotal {
  int64_t sum = 0;
  uint64_t low = 0, high = 0;

  void merge(const WholeTotal &other) { sum += other.sum, low += other.low, high += other.high; }
  double mean(double count) const { return static_cast<double>(sum) / count; }
  double meanSquare(double count) const {
    const double carried = static_cast<double>(high + (low >> 32));
    return (std::ldexp(carried, 32) + static_cast<double>(low & UINT32_MAX)) / count;
  }
};

// What a sum of doubles loses is summed beside it (Neumaier, 1974).
struct RealSum {
  double sum = 0, lost = 0;

  void add(double value) {
    const double total = sum + value;
    lost += std::abs(sum) >= std::abs(value) ? sum - total + value : value - total + sum;
    sum = total;
  }
};

struct RealTotal {
  RealSum sum, squares;

  void merge(const RealTotal &other) {
    for (const double part : {other.sum.sum, other.sum.lost}) sum.add(part);
    for (const double part : {other.squares.sum, other.squares.lost}) squares.add(part);
  }
  double mean(double count) const { return (sum.sum + sum.lost) / count; }
  double meanSquare(double count) const { return (squares.sum + squares.lost) / count; }
};

// How samples of 8 and 16 bits are summed in a lane.
template <typename Sample> struct Narrow {
  using Total = WholeTotal;
  static constexpr Sample kLow = std::numeric_limits<Sample>::min(), kHigh = std::numeric_limits<Sample>::max();
  static constexpr int32_t kZero = kLow < 0 ? 0 : (kHigh + 1) / 2; // 8 bits have no sign
  static constexpr double kFull = (kHigh - kLow + 1) / 2;

  std::vector<int32_t> sums = std::vector<int32_t>(kLanes);
  std::vector<uint64_t> squares = std::vector<uint64_t>(kLanes);

  void add(const Sample *row, size_t lanes) {
    int32_t *const laneSums = sums.data();
    uint64_t *const laneSquares = squares.data();
    for (size_t lane = 0; lane < lanes; ++lane) {
      const int32_t value = row[lane] - kZero;
      laneSums[lane] += value;
      laneSquares[lane] += static_cast<uint32_t>(value * value);
    }
  }
  void moveTo(Total &total, size_t lane) {
    total.merge({sums[lane], squares[lane] & UINT32_MAX, squares[lane] >> 32});
    sums[lane] = 0, squares[lane] = 0;
  }
};

template <typename Sample> struct Lanes : Narrow<Sample> {};

template <> struct Lanes<int32_t> {
  using Total = WholeTotal;
  static constexpr int32_t kLow = INT32_MIN, kHigh = INT32_MAX, kZero = 0;
  static constexpr double kFull = 2147483648.0;

  std::vector<int64_t> sums = std::vector<int64_t>(kLanes);
  std::vector<uint64_t> low = std::vector<uint64_t>(kLanes), high = std::vector<uint64_t>(kLanes);

  void add(const int32_t *row, size_t lanes) {
    int64_t *const laneSums = sums.data();
    uint64_t *const laneLow = low.data(), *const laneHigh = high.data();
    for (size_t lane = 0; lane < lanes; ++lane) {
      const uint32_t size = row[lane] < 0 ? 0u - static_cast<uint32_t>(row[lane]) : static_cast<uint32_t>(row[lane]);
      const uint64_t square = uint64_t{size} * size;
      laneSums[lane] += row[lane];
      laneLow[lane] += square & UINT32_MAX;
      laneHigh[lane] += square >> 32;
    }
  }
  void moveTo(Total &total, size_t lane) {
    total.merge({sums[lane], low[lane], high[lane]});
    sums[lane] = 0, low[lane] = 0, high[lane] = 0;
  }
};

template <> struct Lanes<float> {
  using Total = RealTotal;
  static constexpr float kLow = -1, kHigh = 1, kZero = 0;
  static constexpr double kFull = 1;

  std::vector<double> sums = std::vector<double>(kLanes), squares = std::vector<double>(kLanes);

  void add(const float *row, size_t lanes) {
    double *const laneSums = sums.data(), *const laneSquares = squares.data();
    for (size_t lane = 0; lane < lanes; ++lane) {
      const double value = row[lane];
      laneSums[lane] += value;
      laneSquares[lane] += value * value;
    }
  }
  void moveTo(Total &total, size_t lane) {
    total.sum.add(sums[lane]), total.squares.add(squares[lane]);
    sums[lane] = 0, squares[lane] = 0;
  }
};

// Frames are taken as rows of lanes. A lane is always of one channel, and the compiler makes vectors of a row's lanes.
template <typename Sample> class MeterOf final : public Meter {
 public:
  // unused: bits at the lower end of a sample.
  MeterOf(size_t channels, uint32_t unused) : channels_(channels), totals_(channels) {
    if constexpr (std::is_integral_v<Sample>) highest_ = static_cast<Sample>(Kind::kHigh >> unused << unused);
  }

  void add(const void *samples, size_t frames) override {
    const auto *at = static_cast<const Sample *>(samples);
    while (frames > 0) {
      // the last frames fill no row
      const size_t perRow = std::max<size_t>(1, frames >= kLanes / channels_ ? kLanes / channels_ : 1);
      const size_t rows = std::min(kRows, frames / perRow);
      addRows(at, rows, perRow * channels_);
      at += rows * perRow * channels_;
      frames -= rows * perRow;
      frames_ += rows * perRow;
    }
  }

  void merge(const Meter &other) override {
    const auto &others = static_cast<const MeterOf &>(other);
    frames_ += others.frames_;
    for (size_t channel = 0; channel < channels_; ++channel) {
      Channel &own = totals_[channel];
      const Channel &more = others.totals_[channel];
      own.total.merge(more.total);
      own.low = std::min(own.low, more.low), own.high = std::max(own.high, more.high);
      own.clipped += more.clipped;
    }
  }

  std::vector<Levels> levels() const override {
    std::vector<Levels> levels(channels_);
    if (frames_ == 0) return levels;
    const double count = static_cast<double>(frames_), full = Kind::kFull;
    for (size_t channel = 0; channel < channels_; ++channel) {
      const Channel &own = totals_[channel];
      const double low = static_cast<double>(own.low) - Kind::kZero, high = static_cast<double>(own.high) - Kind::kZero;
      levels[channel] = {std::max({0.0, -low, high}) / full, std::sqrt(own.total.meanSquare(count)) / full,
                         own.total.mean(count) / full, own.clipped};
    }
    return levels;
  }

 private:
  using Kind = Lanes<Sample>;
  struct Channel {
    typename Kind::Total total;
    Sample low = std::numeric_limits<Sample>::max(), high = std::numeric_limits<Sample>::lowest();
    uint64_t clipped = 0;
  };

  void addRows(const Sample *samples, size_t rows, size_t lanes) {
    Sample *const low = low_.data(), *const high = high_.data();
    std::copy_n(samples, lanes, low), std::copy_n(samples, lanes, high);
    for (size_t row = 0; row < rows; ++row) {
      const Sample *const at = samples + row * lanes;
      for (size_t lane = 0; lane < lanes; ++lane) {
        low[lane] = at[lane] < low[lane] ? at[lane] : low[lane];
        high[lane] = at[lane] > high[lane] ? at[lane] : high[lane];
      }
      sums_.add(at, lanes);
    }
    bool clips = false;
    for (size_t lane = 0; lane < lanes; ++lane) {
      Channel &channel = totals_[lane % channels_];
      sums_.moveTo(channel.total, lane);
      channel.low = std::min(channel.low, low[lane]), channel.high = std::max(channel.high, high[lane]);
      clips = clips || isClipped(low[lane]) || isClipped(high[lane]);
    }
    if (clips) countClipped(samples, rows, lanes); // rare, so it is no part of the loop above
  }
  void countClipped(const Sample *samples, size_t rows, size_t lanes) {
    uint32_t *const counts = clipped_.data();
    std::fill_n(counts, lanes, 0u);
    for (size_t row = 0; row < rows; ++row)
      for (size_t lane = 0; lane < lanes; ++lane) counts[lane] += isClipped(samples[row * lanes + lane]);
    for (size_t lane = 0; lane < lanes; ++lane) totals_[lane % channels_].clipped += counts[lane];
  }
  bool isClipped(Sample sample) const { return (sample <= Kind::kLow) | (sample >= highest_); }

  const size_t channels_; // up to kLanes
  Sample highest_ = Kind::kHigh;
  std::vector<Channel> totals_;
  uint64_t frames_ = 0;
  std::vector<Sample> low_ = std::vector<Sample>(kLanes), high_ = std::vector<Sample>(kLanes);
  std::vector<uint32_t> clipped_ = std::vector<uint32_t>(kLanes);
  Kind sums_;
};

// Samples of three bytes are made longer, some thousands at a time.
class PackedMeter final : public Meter {
 public:
  explicit PackedMeter(size_t channels) : channels_(channels), meter_(channels, 8) {}

  void add(const void *samples, size_t frames) override {
    const auto *at = static_cast<const uint8_t *>(samples);
    const size_t piece = kLanes / channels_ * 64;
    while (frames > 0) {
      const size_t some = std::min(piece, frames), count = some * channels_;
      lengthen(at, count);
      meter_.add(longer_.data(), some);
      at += 3 * count;
      frames -= some;
    }
  }
  void merge(const Meter &other) override { meter_.merge(static_cast<const PackedMeter &>(other).meter_); }
  std::vector<Levels> levels() const override { return meter_.levels(); }

 private:
  // Four samples are three words.
  void lengthen(const uint8_t *bytes, size_t count) {
    int32_t *const longer = longer_.data();
    size_t i = 0;
    for (; i + 4 <= count; i += 4, bytes += 12) {
      uint32_t words[3];
      std::memcpy(words, bytes, sizeof words);
      longer[i] = static_cast<int32_t>(words[0] << 8);
      longer[i + 1] = static_cast<int32_t>((words[0] >> 16 & 0xFF00) | words[1] << 16);
      longer[i + 2] = static_cast<int32_t>((words[1] >> 8 & 0xFFFF00) | words[2] << 24);
      longer[i + 3] = static_cast<int32_t>(words[2] & 0xFFFFFF00);
    }
    for (; i < count; ++i, bytes += 3)
      longer[i] = static_cast<int32_t>(uint32_t{bytes[0]} << 8 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 24);
  }

  const size_t channels_;
  MeterOf<int32_t> meter_;
  std::vector<int32_t> longer_ = std::vector<int32_t>(kLanes * 64);
};

uint32_t unusedBits(SampleType type, uint32_t bits) {
  const auto all = static_cast<uint32_t>(8 * sampleBytes(type));
  return bits > 0 && bits < all ? all - bits : 0;
}

} // namespace

size_t sampleBytes(SampleType type) {
  constexpr size_t kBytes[] = {1, 2, 3, 4, 4};
  return kBytes[static_cast<size_t>(type)];
}

std::unique_ptr<Meter> makeMeter(SampleType type, size_t channels, uint32_t bits) {
  const uint32_t unused = unusedBits(type, bits);
  switch (type) {
  case SampleType::uint8: return std::make_unique<MeterOf<uint8_t>>(channels, unused);
  case SampleType::int16: return std::make_unique<MeterOf<int16_t>>(channels, unused);
  case SampleType::int24: return std::make_unique<PackedMeter>(channels);
  case SampleType::int32: return std::make_unique<MeterOf<int32_t>>(channels, unused);
  default: return std::make_unique<MeterOf<float>>(channels, unused);
  }
}
