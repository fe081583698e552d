// What the drawing families share.
#pragma once

#include "platform/platform.h"

#include <cstdint>

// Coordinates wrap instead of overflowing.
inline LONG wqSum(LONG a, LONG b) { return static_cast<LONG>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b)); }
inline LONG wqDifference(LONG a, LONG b) {
  return static_cast<LONG>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}
