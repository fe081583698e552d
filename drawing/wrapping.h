// Arithmetic for coordinates of records that any program may fill in: it wraps instead of overflowing.
#pragma once

#include "frame/types.h"

inline LONG wqSum(LONG a, LONG b) { return static_cast<LONG>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b)); }
inline LONG wqDifference(LONG a, LONG b) {
  return static_cast<LONG>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}
inline LONG wqProduct(LONG a, LONG b) { return static_cast<LONG>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b)); }
