#include "wq.h"

#include <gtest/gtest.h>

namespace {

TEST(VerTest, ReadsFourNumbers) {
  // clang-format off
  const struct { const char *text; int result; uint32_t value; } rows[] = { // over an old value of 0xAABBCCDD
      {"1.2.3.4", 1, 0x01020304}, {" 1 .\t2\r\n. 3\x81\x40.\x81\x40 4", 1, 0x01020304}, // every kind of white space
      {"1.2.3.4 beta", 1, 0x01020304}, {"300.-1.+7.0x1F", 1, 0x2CFF071F}, // the low 8 bits, in the scanner's grammar
      {"1..3.", 1, 0x01000300}, {"1.2.3", 0, 0x010203DD}, // what was read stays
      {"1.2,3.4", 0, 0x0102CCDD}, {"1 2.3.4", 0, 0x01BBCCDD}, {"", 0, 0x00BBCCDD}};
  // clang-format on
  for (const auto &[text, result, value] : rows) {
    WqVer version{0xAABBCCDD};
    EXPECT_EQ(WqVer_Str2Ver(&version, text), result) << text;
    EXPECT_EQ(version.value, value) << text;
    WqVer_Init(&version);
    EXPECT_EQ(version.value, 0u);
  }
}

} // namespace
