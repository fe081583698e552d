// Endurance: what is done a great many times leaves nothing behind.
#pragma once

#include "support/handles.h"
#include "wq.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

// How often something is done: as often as WQ_WEAR says, or so often. A multiple of 100.
inline int wearTimes(int otherwise) {
  const char *const ordered = std::getenv("WQ_WEAR");
  return ((ordered ? std::atoi(ordered) : otherwise) + 99) / 100 * 100;
}

// Runs something so often, and holds that the second half of the runs left nothing but so many blocks for each run.
inline void wear(int times, const std::function<void(int)> &run, uint32_t kept = 0) {
  const int half = times / 2;
  for (int i = 0; i < half; ++i) run(i);
  const size_t resident = residentBytes();
  const std::vector<size_t> handles = openHandles();
  const uint32_t blocks = wqMain.allocCount, stay = kept * static_cast<uint32_t>(times - half);
  for (int i = half; i < times; ++i) run(i);
  EXPECT_EQ(openHandles(), handles);
  EXPECT_EQ(wqMain.allocCount, blocks + stay);
  EXPECT_LE(residentBytes(), resident + size_t{stay} * 64 + (1u << 20));
}
