// Numeric functions on 64-bit floats, and the rounding of coordinate conversions.

#include "audio/audio.h"

#include "audio/audio_private.h"

#include <cmath>

namespace {

int32_t sum(int32_t a, int32_t b) { return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b)); }

} // namespace

int32_t WqMath_Abs(int32_t value) { return value < 0 ? static_cast<int32_t>(0 - static_cast<uint32_t>(value)) : value; }

double WqMath_Fabs(double value) { return std::fabs(value); }
double WqMath_Floor(double value) { return std::floor(value); }
double WqMath_Ceil(double value) { return std::ceil(value); }
double WqMath_Log10(double value) { return std::log10(value); }
double WqMath_Pow(double base, double exponent) { return std::pow(base, exponent); }
double WqMath_Sqrt(double value) { return std::sqrt(value); }
double WqMath_Cos(double radians) { return std::cos(radians); }
double WqMath_Sin(double radians) { return std::sin(radians); }

int32_t WqMath_FloorInt(double value) {
  const int32_t whole = wqTruncate(value);
  return value - whole < 0 ? sum(whole, -1) : whole;
}

int32_t WqMath_CeilInt(double value) {
  const int32_t whole = wqTruncate(value);
  return value - whole > 0 ? sum(whole, 1) : whole;
}
