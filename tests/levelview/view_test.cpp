// What the viewer works out before it draws: the table of peaks, the part that is seen, its columns, its rulers.

#include "columns.h"
#include "rulers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

// A recording of noise over the whole range, its samples as signed numbers too; the second channel off centre.
struct Noise {
  Noise(uint32_t bits, uint32_t channelCount, uint32_t frameCount) : channels(channelCount), frames(frameCount) {
    WqPcmBuf_Init(&samples);
    EXPECT_TRUE(WqPcmBuf_Alloc(&samples, 48000, frames, bits, channels));
    const int64_t fullScale = INT64_C(1) << (bits - 1);
    for (size_t i = 0; i < static_cast<size_t>(frames) * channels; ++i) {
      const int64_t value = static_cast<int64_t>(random() >> (32 - bits)) - fullScale;
      values.push_back(i == frames / 2 * 2 ? -fullScale : i % 2 == 0 ? value : value / 3 - fullScale / 7);
      const auto word = static_cast<uint32_t>(bits == 8 ? values[i] + 128 : values[i]);
      WqPcmBuf_Add(&samples, &word, bits / 8);
    }
  }
  ~Noise() { WqPcmBuf_Term(&samples); }
  // Looks at each sample.
  void expect(const Extents &extents, uint32_t from, uint32_t to) const {
    for (size_t channel = 0; channel < channels; ++channel) {
      Extent plain;
      for (size_t at = from * channels + channel; at < to * channels; at += channels) {
        plain.low = std::min(plain.low, static_cast<int32_t>(values[at]));
        plain.high = std::max(plain.high, static_cast<int32_t>(values[at]));
        plain.squares += static_cast<double>(values[at] * values[at]);
      }
      EXPECT_EQ(std::tuple(extents[channel].low, extents[channel].high), std::tuple(plain.low, plain.high))
          << from << " to " << to;
      EXPECT_NEAR(extents[channel].squares, plain.squares, plain.squares * 1e-6) << from << " to " << to;
    }
  }
  std::mt19937 random;
  uint32_t channels, frames;
  std::vector<int64_t> values;
  WqPcmBuf samples;
};

Visible zoomed(uint32_t frames, LONG width, double factor, double start) {
  Visible visible;
  visible.setFrames(frames);
  visible.setWidth(width);
  visible.zoom(factor, 0);
  visible.moveTo(start);
  return visible;
}

std::string labels(const Ticks &ticks) {
  std::string text;
  for (const Tick &tick : ticks)
    if (!tick.label.empty()) text += tick.label + "@" + std::to_string(tick.at) + " ";
  return text;
}

} // namespace

TEST(PeaksTest, AgreeWithThePlainSamples) {
  for (const uint32_t bits : {8u, 16u, 32u})
    for (const uint32_t channels : {1u, 2u}) {
      SCOPED_TRACE(testing::Message() << bits << " bits, " << channels << " channels");
      Noise noise(bits, channels, 140001); // two entries on the third level, and a rest
      Peaks peaks(noise.samples);
      for (noise.samples.writePos = noise.samples.data; noise.samples.writePos < noise.samples.endPos; peaks.update())
        noise.samples.writePos += std::min<ptrdiff_t>(7777, noise.samples.endPos - noise.samples.writePos);
      const auto check = [&](uint32_t from, uint32_t to) { noise.expect(peaks.of(from, to), from, to); };
      check(0, noise.frames);
      for (int i = 0; i < 40; ++i) {
        const auto from = static_cast<uint32_t>(noise.random() % noise.frames);
        check(from, from + static_cast<uint32_t>(noise.random() % std::min(i * i * 99 + 1u, noise.frames - from)));
      }
    }
}

TEST(ColumnsTest, HoldTheSamplesUnderThem) {
  Noise noise(16, 2, 140001);
  Peaks peaks(noise.samples);
  peaks.update();
  for (const double factor : {1.0, 3.7, 250.0}) {
    const Visible visible = zoomed(noise.frames, 500, factor, 1234.5);
    const Columns columns = columnsOf(peaks, visible, 7, 507);
    for (LONG pixel = 7; pixel < 500; ++pixel) {
      const auto from = static_cast<uint32_t>(visible.frameAt(pixel)) - 1;
      noise.expect(columns[static_cast<size_t>(pixel - 7)], from, static_cast<uint32_t>(visible.frameAt(pixel + 1)));
    }
    EXPECT_EQ(columns.back()[0].empty(), factor == 1) << "behind the end";
  }
  const Visible wide = zoomed(noise.frames, 20, 1, 0); // columns of whole blocks
  const Columns columns = columnsOf(peaks, wide, 0, 20);
  EXPECT_EQ(columns[10][0].low, -32768);
  for (const Extents &part : loudParts(columns, peaks, wide, 0, 48000))
    EXPECT_NEAR(part[0].high, 18918, 600) << "full scale by the root of 3";
}

TEST(VisibleTest, ZoomsAboutAPointAndStopsAtTheEnds) {
  Visible visible = zoomed(100000, 500, 1, 0);
  visible.zoom(2.5, 320);
  EXPECT_NEAR(visible.frameAt(320), 64000, 1e-6);
  visible.zoom(1e9, 320);
  visible.moveTo(1e9);
  EXPECT_EQ(visible.framesPerPixel(), 1.0 / 16);
  EXPECT_EQ(visible.end(), 100000);
  visible.zoom(1e-9, 0);
  visible.setWidth(250);
  EXPECT_EQ(visible.framesPerPixel(), 400) << "who sees the whole goes on to see it";
}

// Along 300 pixels, where a digit has 7.
TEST(RulersTest, TakeRoundSteps) {
  const Visible part = zoomed(60 * 48000, 300, 250, 48000), whole = zoomed(600 * 48000, 300, 1, 0);
  EXPECT_EQ(labels(timeTicks(part, 48000, 7)), "1000@0 1050@63 1100@125 1150@188 1200@250 ");
  EXPECT_EQ(labels(frameTicks(part, 7)), "48000@0 50000@52 52000@104 54000@156 56000@208 58000@260 ");
  EXPECT_EQ(labels(timeTicks(whole, 48000, 7)), "0:00@0 2:00@60 4:00@120 6:00@180 8:00@240 ");
  for (double zoom = 1; zoom < 1e7; zoom *= 1.7) { // labels never meet
    const Visible visible = zoomed(3000000000u, 700, zoom, 1e9);
    for (const Ticks &ticks : {timeTicks(visible, 44100, 7), frameTicks(visible, 7)})
      for (LONG free = 0; const Tick &tick : ticks) {
        EXPECT_TRUE(tick.label.empty() || tick.at >= free) << zoom << ' ' << tick.label;
        if (!tick.label.empty()) free = tick.at + static_cast<LONG>(tick.label.size()) * 7;
      }
  }
  EXPECT_EQ(timeText(59.996, TimeUnit::clock, 2) + timeText(3725.5, TimeUnit::clock, 0), "1:00.0062:06");
}

TEST(RulersTest, TellLevelsByTheRange) {
  EXPECT_EQ(labels(percentTicks(40, 12)), "0 %@0 50@20 -50@-20 100@40 -100@-40 ");
  EXPECT_EQ(labels(levelTicks(100, 12)), "0@100 -2@79 -5@56 -8@40 -15@18 ");
  EXPECT_EQ(labels(scaleTicks(0, -80, 80, 12)), "0@0 -20@20 -40@40 -60@60 -80@80 ");
  WqUnit_SetRange(12.5); // 21.94 dBV
  EXPECT_EQ(labels(levelTicks(60, 12)), "21@54 15@27 ");
  WqUnit_SetRange(1);
}
