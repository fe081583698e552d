// The meter sums whole numbers exactly, whatever their width, however many channels take turns, and however the frames
// are cut into parts.

#include "meter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

namespace {

struct Row {
  const char *name;
  SampleType type;
  size_t channels;
  uint32_t bits; // that the numbers use; 0 for floats
};

// A number of that many bits as it stands in memory, in the highest bits of its type.
void store(const Row &row, int64_t number, unsigned char *at) {
  if (row.type == SampleType::float32) {
    const float value = std::ldexp(static_cast<float>(number), -15);
    return static_cast<void>(std::memcpy(at, &value, sizeof value));
  }
  const size_t bytes = sampleBytes(row.type);
  if (row.type == SampleType::uint8) number += 128;
  const uint64_t value = static_cast<uint64_t>(number) << (8 * bytes - row.bits);
  for (size_t i = 0; i < bytes; ++i) at[i] = static_cast<unsigned char>(value >> 8 * i);
}

class Sum { // of whole numbers, in decimal places that a long double keeps
 public:
  void add(int64_t number) {
    const auto value = static_cast<long double>(number);
    sum_ += value, squares_ += value * value;
    most_ = std::max(most_, std::abs(number)), ++count_;
  }
  Levels levels(long double full) const {
    const auto count = static_cast<long double>(count_);
    return {static_cast<double>(static_cast<long double>(most_) / full),
            static_cast<double>(std::sqrt(squares_ / count) / full), static_cast<double>(sum_ / count / full), 0};
  }

 private:
  long double sum_ = 0, squares_ = 0;
  int64_t most_ = 0;
  uint64_t count_ = 0;
};

} // namespace

TEST(Meter, AgreesWithASumByHand) {
  constexpr size_t kFrames = 300'000; // more than a block of rows, and no whole number of rows
  for (const Row &row : {Row{"8 bits", SampleType::uint8, 1, 8},
                         {"8 bits, stereo", SampleType::uint8, 2, 8},
                         {"16 bits", SampleType::int16, 1, 16},
                         {"16 bits, 3 channels", SampleType::int16, 3, 16},
                         {"24 bits, packed", SampleType::int24, 2, 24},
                         {"24 bits, 5 channels", SampleType::int24, 5, 24},
                         {"20 bits of 32", SampleType::int32, 2, 20},
                         {"32 bits", SampleType::int32, 1, 32},
                         {"32 bits, 64 channels", SampleType::int32, 64, 32},
                         {"float", SampleType::float32, 7, 0}}) {
    SCOPED_TRACE(row.name);
    const uint32_t width = row.bits ? row.bits : 16;
    const int64_t full = INT64_C(1) << (width - 1);
    std::mt19937_64 random(width + row.channels);
    std::uniform_int_distribution<int64_t> number(-full, full - 1);
    const size_t bytes = sampleBytes(row.type), count = kFrames / row.channels * row.channels;
    std::vector<unsigned char> samples(count * bytes);
    std::vector<Sum> sums(row.channels);
    std::vector<uint64_t> clipped(row.channels);
    for (size_t i = 0; i < count; ++i) {
      const size_t channel = i % row.channels;
      // the channels differ, and now and then one clips
      const int64_t value =
          i % 4999 == 0 ? (i % 2 ? full - 1 : -full) : number(random) / static_cast<int64_t>(channel + 1);
      store(row, value, &samples[i * bytes]);
      sums[channel].add(value);
      clipped[channel] += value == -full || (value == full - 1 && row.type != SampleType::float32);
    }
    const auto meter = makeMeter(row.type, row.channels, row.bits), other = makeMeter(row.type, row.channels, row.bits);
    const size_t frameBytes = bytes * row.channels, frames = count / row.channels, part = frames / 3;
    meter->add(samples.data(), part);
    other->add(&samples[part * frameBytes], frames - part);
    meter->merge(*other);
    const std::vector<Levels> levels = meter->levels();
    for (size_t channel = 0; channel < row.channels; ++channel) {
      SCOPED_TRACE(testing::Message() << "channel " << channel);
      const Levels expected = sums[channel].levels(static_cast<long double>(full));
      EXPECT_DOUBLE_EQ(levels[channel].peak, expected.peak);
      EXPECT_DOUBLE_EQ(levels[channel].rms, expected.rms);
      EXPECT_NEAR(levels[channel].dc, expected.dc, 1e-15);
      EXPECT_EQ(levels[channel].clipped, clipped[channel]);
    }
  }
}

TEST(Meter, HasRoomForTheLargestSumsAndNothingWithoutFrames) {
  const std::vector<int32_t> lowest(size_t{1} << 20, INT32_MIN);
  const auto meter = makeMeter(SampleType::int32, 1);
  EXPECT_EQ(meter->levels().at(0).rms, 0);
  for (int i = 0; i < 64; ++i) meter->add(lowest.data(), lowest.size()); // 2^26 squares of 2^62
  const Levels levels = meter->levels().at(0);
  EXPECT_EQ(levels.rms, 1);
  EXPECT_EQ(levels.dc, -1);
  EXPECT_EQ(levels.clipped, 64 * lowest.size());
}
