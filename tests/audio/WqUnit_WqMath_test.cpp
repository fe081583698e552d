// Levels, times and numeric functions.

#include "support/library.h"

#include <cfenv>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double k2to32 = 4294967296.0;
const double kRangeAtLoad = WqUnit_GetRange();

// The range belongs to the process, so each test starts and ends with that of the start.
class WqUnitTest : public testing::Test {
 protected:
  void SetUp() override { WqUnit_SetRange(1.0); }
  void TearDown() override { WqUnit_SetRange(1.0); }
};

} // namespace

TEST_F(WqUnitTest, RangeIsOneAtLoadAndOutlivesTheLibrarysStartAndEnd) {
  EXPECT_EQ(kRangeAtLoad, 1.0);
  WqUnit_SetRange(-2.0); // nothing is checked
  WqMain_Init(nullptr);
  WqMain_Term();
  EXPECT_EQ(WqUnit_GetRange(), -2.0);
  EXPECT_TRUE(std::isnan(WqUnit_RetRange_dBV(0.0)));
  WqUnit_SetRange(0.0);
  EXPECT_EQ(WqUnit_RetRange_dBV(0.0), kInfinity);
  EXPECT_EQ(WqUnit_dBV(0.0, WQ_UNIT_DB_RANGE), -kInfinity);
  EXPECT_EQ(WqUnit_RetRange_Power(-1.0), -kInfinity);
}

TEST_F(WqUnitTest, RelativeLevelsTakeTheRange) {
  const double rows[][3] = {// range, level, level - 20 log10(range)
                            {1.0, -3.5, -3.5},
                            {10.0, 0.0, -20.0},
                            {0.001, -60.0, 0.0},
                            {2.0, 0.0, -6.020599913}};
  for (const auto &[range, level, relative] : rows) {
    WqUnit_SetRange(range);
    EXPECT_NEAR(WqUnit_RetRange_dBV(level), relative, 1e-9);
    for (const uint32_t kind : {1u, 0xFFFFFF01u}) EXPECT_NEAR(WqUnit_dBV(relative, kind), level, 1e-9);
    for (const uint32_t kind : {0u, 3u, 4u, 255u, 0x100u}) EXPECT_EQ(WqUnit_dBV(level, kind), level) << kind;
  }
  EXPECT_EQ(WqUnit_RetRange_Power(5.0), 2.5);
  EXPECT_EQ(WqUnit_RetRange(5.0, 10.0), 0.5) << "the range takes no part";
  EXPECT_EQ(WqUnit_RetRange(-1.0, 0.0), -kInfinity);
  EXPECT_EQ(WqUnit_dBV(0.0, 0x102), -2.218487024307251) << "not the exact offset, which differs in the 7th digit";
}

TEST_F(WqUnitTest, LevelsBecomeVoltsAndPercentAndComeBack) {
  WqUnit_SetRange(7.0); // takes no part in any of these
  for (const auto &[dbv, volts] : {std::pair(0.0, 1.0), {20.0, 10.0}, {-120.0, 1e-6}, {6.020599913279624, 2.0}}) {
    EXPECT_NEAR(WqUnit_dBVToV(dbv) / volts, 1.0, 1e-12) << dbv;
    EXPECT_NEAR(WqUnit_VTodBV(volts), dbv, 1e-12) << volts;
    EXPECT_NEAR(WqUnit_dBToPer(-dbv) / (volts * 100), 1.0, 1e-12) << "a positive level is an attenuation";
    EXPECT_NEAR(WqUnit_PerTodB(volts * 100), -dbv, 1e-12) << volts;
  }
  EXPECT_EQ(WqUnit_VTodBV(0.0), -kInfinity);
  EXPECT_TRUE(std::isnan(WqUnit_VTodBV(-1.0)));
  EXPECT_EQ(WqUnit_PerTodB(0.0), kInfinity);
  // The root is drawn from the power, so that the power is what leaves the floats first.
  EXPECT_EQ(WqUnit_dBVToV(4000.0), kInfinity);
  EXPECT_EQ(WqUnit_dBVToV(-4000.0), 0.0);
}

TEST_F(WqUnitTest, SamplesAndMillisecondsHaveAFixedRate) {
  EXPECT_EQ(WqUnit_SampleToMsec(16384), 1000.0);
  EXPECT_EQ(WqUnit_SampleToMsec(1), 0.06103515625);
  EXPECT_EQ(WqUnit_SampleToMsec(0xFFFFFFFF), 262143999.93896484375) << "samples are unsigned";
  const double rows[] = {
      1000.0,      16384,     0.01,  0,          0.04,      1, -0.04,     0, // milliseconds and samples in turn
      -1000.0,     -16383,                       // half a sample is added, then cut toward zero
      131072000.0, INT32_MIN, 1e9,   -795869184, // the low 32 bits
      1e30,        0,         -1e30, 0,          kInfinity, 0, kNoNumber, 0};
  for (size_t i = 0; i < std::size(rows); i += 2) EXPECT_EQ(WqUnit_MsecToSample(rows[i]), rows[i + 1]) << rows[i];
}

TEST(WqMath, RoundsToIntegers) {
  constexpr double largest = INT32_MAX, least = INT32_MIN;
  const double rows[] = {// value, floor and ceiling in turn
                         2.5, 2, 3, -2.5, -3, -2, 2.0, 2, 2, -2.0, -2, -2, -0.0, 0, 0, 1e-300, 0, 1, -1e-300, -1, 0,
                         largest, largest, largest, largest + 0.5, largest, least, least - 0.5, largest, least,
                         // Beyond 32 bits the low 32 bits count, and the rest is taken for a fraction.
                         largest + 1, least, least + 1, k2to32 + 1, 1, 2, -k2to32 - 1, -2, -1, 1e300, 0, 1, -1e300, -1,
                         0, kInfinity, 0, 1, kNoNumber, 0, 0};
  for (const int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD}) // none of them takes part
    for (size_t i = 0; i < std::size(rows); i += 3) {
      std::fesetround(mode);
      const int32_t floor = WqMath_FloorInt(rows[i]), ceil = WqMath_CeilInt(rows[i]);
      std::fesetround(FE_TONEAREST);
      EXPECT_EQ(floor, rows[i + 1]) << rows[i] << " in mode " << mode;
      EXPECT_EQ(ceil, rows[i + 2]) << rows[i] << " in mode " << mode;
    }
}

TEST(WqMath, CalculatesLikeTheCLibrary) {
  EXPECT_EQ(WqMath_Abs(-5), 5);
  EXPECT_EQ(WqMath_Abs(INT32_MIN), INT32_MIN);
  EXPECT_EQ(WqMath_Fabs(-1e10), 1e10);
  EXPECT_EQ(WqMath_Floor(-1e10 - 0.5), -1e10 - 1); // the float forms know no 32 bits
  EXPECT_EQ(WqMath_Ceil(1e10 + 0.5), 1e10 + 1);
  EXPECT_DOUBLE_EQ(WqMath_Log10(1000.0), 3.0);
  EXPECT_EQ(WqMath_Pow(4.0, -0.5), 0.5);
  EXPECT_EQ(WqMath_Sqrt(6.25), 2.5);
  EXPECT_NEAR(WqMath_Sin(0.5235987755982988), 0.5, 1e-15); // 30 degrees
  EXPECT_NEAR(WqMath_Cos(1.0471975511965976), 0.5, 1e-15); // 60 degrees
}
