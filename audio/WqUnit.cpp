// Levels and times of a measuring application. dBV refers to 1 V; dBu refers to the square root of 0.6 V, the voltage
// that gives 1 mW in 600 ohms.

#include "audio/audio.h"

#include "audio/audio_private.h"

namespace {

constexpr double kDbuOffset = 2.218487024307251; // from dBu to dBV; a single-precision number
constexpr double kMsecPerSample = 0.06103515625; // 1000 / 16384, exactly
constexpr double kSamplesPerMsec = 16.384;

double range = 1.0; // volts

} // namespace

void WqUnit_SetRange(double newRange) { range = newRange; }
double WqUnit_GetRange() { return range; }

double WqUnit_RetRange(double value, double divisor) { return value / divisor; }
double WqUnit_RetRange_dBV(double level) { return level - WqMath_Log10(range) * 20.0; }
double WqUnit_RetRange_Power(double value) { return value / range; }

double WqUnit_dBVToV(double level) { return WqMath_Sqrt(WqMath_Pow(10.0, level * 0.1)); }
double WqUnit_VTodBV(double volts) { return WqMath_Log10(volts) * 20.0; }

double WqUnit_dBV(double level, uint32_t kind) {
  switch (kind & 0xFF) {
  case WQ_UNIT_DB_RANGE: return level + WqMath_Log10(range) * 20.0;
  case WQ_UNIT_DBU: return level - kDbuOffset;
  default: return level;
  }
}

double WqUnit_SampleToMsec(uint32_t samples) { return samples * kMsecPerSample; }
int32_t WqUnit_MsecToSample(double milliseconds) { return wqTruncate(milliseconds * kSamplesPerMsec + 0.5); }

double WqUnit_dBToPer(double decibels) { return WqMath_Pow(10.0, decibels * -0.05) * 100.0; }
double WqUnit_PerTodB(double percent) { return WqMath_Log10(percent * 0.01) * -20.0; }
