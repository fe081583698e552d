// Shared by the families of audio.
#pragma once

#include <cstdint>

// Truncates toward zero and keeps the low 32 bits. A value beyond 64 bits gives 0.
inline int32_t wqTruncate(double value) {
  constexpr double limit = 9223372036854775808.0; // 2 to the 63rd
  if (!(value > -limit && value < limit)) return 0;
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(static_cast<int64_t>(value))));
}

// bits / 8, rounded down, times frames times channels. A size beyond 32 bits comes as a larger number.
inline uint64_t wqPcmSize(uint32_t bits, uint32_t frames, uint32_t channels) {
  const uint64_t perFrame = static_cast<uint64_t>(bits / 8) * channels;
  return perFrame > UINT32_MAX && frames > 0 ? UINT64_MAX : perFrame * frames;
}
