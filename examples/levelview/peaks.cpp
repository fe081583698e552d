#include "peaks.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace {

static_assert(std::endian::native == std::endian::little, "samples are taken from memory as the file has them");

// Samples are taken 16 bytes at a time, which keeps pace with the memory. Even and odd ones go apart: they are the two
// channels, or neighbours of one.
template <typename Number> using Vector [[gnu::vector_size(16)]] = Number;
using Words = Vector<uint32_t>;
using Floats = Vector<float>;

template <typename Numbers> double total(const Numbers &numbers) {
  double sum = 0;
  for (size_t i = 0; i < sizeof numbers / sizeof numbers[0]; ++i) sum += static_cast<double>(numbers[i]);
  return sum;
}

template <typename Sample> struct Squares;

template <> struct Squares<uint8_t> {
  static constexpr int32_t kZero = 128;
  Words even{}, odd{};

  void add(const Vector<uint8_t> &samples) {
    const auto pairs = reinterpret_cast<Vector<uint16_t>>(samples);
    addHalf(even, (pairs & 255) - 128);
    addHalf(odd, (pairs >> 8) - 128);
  }
  static void addHalf(Words &sum, const Vector<uint16_t> &values) {
    const auto pairs = reinterpret_cast<Words>(values * values); // 128 squared fits
    sum += (pairs & 0xFFFF) + (pairs >> 16);
  }
  std::array<double, 2> sums() const { return {total(even), total(odd)}; }
};

template <> struct Squares<int16_t> {
  static constexpr int32_t kZero = 0;
  Floats even{}, odd{};

  void add(const Vector<int16_t> &samples) {
    const auto pairs = reinterpret_cast<Vector<int32_t>>(samples);
    const Floats low = __builtin_convertvector((pairs << 16) >> 16, Floats);
    const Floats high = __builtin_convertvector(pairs >> 16, Floats);
    even += low * low;
    odd += high * high;
  }
  std::array<double, 2> sums() const { return {total(even), total(odd)}; }
};

template <> struct Squares<int32_t> {
  static constexpr int32_t kZero = 0;
  Floats both{};

  void add(const Vector<int32_t> &samples) {
    const Floats values = __builtin_convertvector(samples, Floats);
    both += values * values;
  }
  std::array<double, 2> sums() const {
    return {static_cast<double>(both[0]) + static_cast<double>(both[2]),
            static_cast<double>(both[1]) + static_cast<double>(both[3])};
  }
};

void merge(Extent &extent, const Extent &other) {
  extent.low = std::min(extent.low, other.low);
  extent.high = std::max(extent.high, other.high);
  extent.squares += other.squares;
}

void merge(Extents &extents, const Extents &others) {
  for (size_t channel = 0; channel < extents.size(); ++channel) merge(extents[channel], others[channel]);
}

// count: of samples; those of two channels take turns.
template <typename Sample> Extents scanSamples(const uint8_t *bytes, size_t count, size_t channels) {
  using Samples = Vector<Sample>;
  constexpr size_t kLanes = sizeof(Samples) / sizeof(Sample);
  Samples low = Samples{} + std::numeric_limits<Sample>::max();
  Samples high = Samples{} + std::numeric_limits<Sample>::min();
  Squares<Sample> squares;
  size_t at = 0;
  for (; at + kLanes <= count; at += kLanes) {
    Samples samples;
    std::memcpy(&samples, bytes + at * sizeof(Sample), sizeof samples);
    low = samples < low ? samples : low;
    high = samples > high ? samples : high;
    squares.add(samples);
  }
  Extents extents;
  const auto take = [&](size_t channel, int32_t least, int32_t most, double squared) {
    merge(extents[channel], {least - squares.kZero, most - squares.kZero, squared});
  };
  if (at > 0) {
    for (size_t lane = 0; lane < kLanes; ++lane) take(lane % channels, low[lane], high[lane], 0);
    for (const size_t odd : {0u, 1u}) extents[odd % channels].squares += squares.sums()[odd];
  }
  for (; at < count; ++at) {
    Sample sample;
    std::memcpy(&sample, bytes + at * sizeof sample, sizeof sample);
    const double value = static_cast<double>(sample) - squares.kZero;
    take(at % channels, sample, sample, value * value);
  }
  return extents;
}

} // namespace

Extents Peaks::scan(uint32_t from, uint32_t to) const {
  const size_t channels = samples_.channels, frameSize = samples_.bits / 8 * channels;
  const uint8_t *bytes = samples_.data + from * frameSize;
  const size_t count = (to - from) * channels;
  switch (samples_.bits) {
  case 8: return scanSamples<uint8_t>(bytes, count, channels);
  case 16: return scanSamples<int16_t>(bytes, count, channels);
  default: return scanSamples<int32_t>(bytes, count, channels);
  }
}

// A level that gets its last entry of a group gives one to the level above.
void Peaks::addTo(size_t level, const Extents &extents) {
  if (level == levels_.size()) levels_.emplace_back();
  std::vector<Extents> &blocks = levels_[level];
  blocks.push_back(extents);
  if (blocks.size() % kFanOut != 0) return;
  Extents group;
  for (auto block = blocks.end() - kFanOut; block != blocks.end(); ++block) merge(group, *block);
  addTo(level + 1, group);
}

void Peaks::update() {
  const size_t frames =
      static_cast<size_t>(samples_.writePos - samples_.data) / (size_t{samples_.bits} / 8 * samples_.channels);
  for (size_t block = levels_.empty() ? 0 : levels_[0].size(); block < frames / kBlock; ++block)
    addTo(0, scan(static_cast<uint32_t>(block * kBlock), static_cast<uint32_t>((block + 1) * kBlock)));
}

// Goes up the levels and down again: each step takes the largest block that begins there and ends in the range.
Extents Peaks::of(uint32_t from, uint32_t to) const {
  Extents extents;
  while (from < to) {
    uint64_t size = kBlock;
    if (from % size != 0 || to - from < size) {
      const uint32_t end = static_cast<uint32_t>(std::min<uint64_t>(to, (from / size + 1) * size));
      merge(extents, scan(from, end));
      from = end;
      continue;
    }
    size_t level = 0;
    for (; from % (size * kFanOut) == 0 && to - from >= size * kFanOut; ++level) size *= kFanOut;
    merge(extents, levels_[level][static_cast<size_t>(from / size)]);
    from += static_cast<uint32_t>(size);
  }
  return extents;
}
