// Minima, maxima and squares of a recording, ready for any range of frames: a drawing of a hundred million frames looks
// at some thousands of numbers.
#pragma once

#include "wq.h"

#include <array>
#include <cstdint>
#include <vector>

// What the samples of one channel reach over some frames, as signed numbers.
struct Extent {
  int32_t low = INT32_MAX;
  int32_t high = INT32_MIN; // below low: there are no frames
  double squares = 0;       // their sum, to about seven digits

  bool empty() const { return high < low; }
};

using Extents = std::array<Extent, 2>; // of each channel

// A pyramid: the lowest level has an entry for each block, each level above one for 16 entries.
class Peaks {
 public:
  static constexpr uint32_t kBlock = 256; // frames

  // samples: the recording, which stays where it is; its block may come later.
  explicit Peaks(const WqPcmBuf &samples) : samples_(samples) {}
  Peaks(const Peaks &) = delete;
  Peaks &operator=(const Peaks &) = delete;

  // Another recording is there, of which nothing has been taken in.
  void clear() { levels_.clear(); }
  // Takes in the samples that were stored since the last time.
  void update();

  // What the frames from `from' to before `to' reach. They have been taken in.
  Extents of(uint32_t from, uint32_t to) const;

 private:
  static constexpr uint32_t kFanOut = 16;

  Extents scan(uint32_t from, uint32_t to) const;
  void addTo(size_t level, const Extents &extents);

  const WqPcmBuf &samples_;
  std::vector<std::vector<Extents>> levels_; // whole blocks only
};
