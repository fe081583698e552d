#include "support/library.h"

#include <cstring>
#include <ctime>
#include <string>

namespace {

using TimeTest = LibraryTest;

TEST_F(TimeTest, Texts) {
  WqTime time{};
  char text[80];
  std::string texts;
  for (const int32_t elapsed : {0, 59999, 3599999, 3723014, 360000000, INT32_MIN}) {
    time.elapsed = elapsed;
    for (const auto format : {WqTime_TickCountFormat, WqTime_TickCountMillisecFormat})
      texts.append(text, static_cast<size_t>(format(&time, text))) += ' ';
  }
  EXPECT_EQ(texts, "00:00:00 00:00.00 00:00:59 00:59.99 00:59:59 59:59.99 01:02:03 02:03.01 "
                   "100:00:00 00:00.00 -596:-31:-23 -31:-23.-64 ");
  time.date = {2006, 11, 4, 23, 9, 5, 59, 1};
  EXPECT_TRUE(WqTime_TimeFormat(&time, text) == 8 && std::string(text) == "09:05:59") << text;
  const int32_t written = WqTime_DateFormat(&time, text);
  EXPECT_EQ(written, static_cast<int32_t>(std::strlen(text)) + 1);
  for (const char *part : {"06", "11", "23"})
    EXPECT_NE(std::strstr(text, part), nullptr) << text; // in the user's order
  time.date.wDay = 31;
  EXPECT_EQ(WqTime_DateFormat(&time, text), 0);

  WqTime_Local(&time);
  const SYSTEMTIME &date = time.date;
  std::tm local{};
  std::tie(local.tm_sec, local.tm_min, local.tm_hour) = std::tuple(date.wSecond, date.wMinute, date.wHour);
  std::tie(local.tm_mday, local.tm_mon, local.tm_year) = std::tuple(date.wDay, date.wMonth - 1, date.wYear - 1900);
  local.tm_isdst = -1;
  const std::time_t ahead = std::mktime(&local) - std::time(nullptr);
  EXPECT_TRUE(ahead >= -2 && ahead <= 1) << ahead; // the two clocks may differ in their grain
  EXPECT_TRUE(date.wDayOfWeek == local.tm_wday && date.wMilliseconds < 1000);
}

TEST_F(TimeTest, ReadingsAddUpAcrossTheWrap) {
  WqTime time, fresh{};
  std::memset(&time, 0xA5, sizeof time);
  WqTime_Init(&time);
  EXPECT_LT(GetTickCount() - time.tick, 1000u);
  EXPECT_EQ(std::tuple(time.prevTick, time.elapsed, time.date.wYear), std::tuple(time.tick, 0, 0));
  WqTime_TickCount(&fresh); // without WqTime_Init, only the base
  EXPECT_TRUE(fresh.elapsed == 0 && GetTickCount() - fresh.tick < 1000);
  for (const uint32_t step : {0u, 1000u, 0x80000000u, 0xFFFFF000u}) { // the last reading lies so far back
    const uint32_t last = time.tick = GetTickCount() - step;
    time.elapsed = INT32_MAX; // the sum wraps like the tick
    WqTime_TickCount(&time);
    EXPECT_TRUE(time.prevTick == last && time.tick - last - step < 1000) << step;
    EXPECT_EQ(static_cast<uint32_t>(time.elapsed), INT32_MAX + (time.tick - last));
  }
  std::tie(time.tick, fresh.tick) = std::tuple(0xFFFFFFF0u, 0x10u);
  EXPECT_EQ(WqTime_DiffCount(&fresh, &time), 32u);
}

TEST_F(TimeTest, DatesAndTimesCompareByTheirOwnFields) {
  const std::tuple<SYSTEMTIME, SYSTEMTIME, int, int> cases[] = {
      {{2006, 1, 2, 31, 9, 8, 7, 6}, {2006, 2, 0, 1, 9, 8, 7, 5}, -1, 0},
      {{2006, 1, 6, 31, 1, 2, 3, 4}, {2006, 1, 0, 31, 1, 2, 4, 0}, 0, -1},
      {{2006, 3, 0, 1, 10, 59, 0, 0}, {2006, 3, 9, 2, 10, 60, 0, 0}, -1, -1},
      {{65535, 0, 0, 0, 65535, 0, 0, 0}, {0, 65535, 0, 65535, 0, 65535, 65535, 0}, 1, 1}};
  for (const auto &[first, second, days, seconds] : cases) {
    const WqTime a{first, 0, 0, 0}, b{second, 0, 0, 0};
    EXPECT_TRUE(WqTime_CompDate(&a, &b) == days && WqTime_CompDate(&b, &a) == -days) << a.date.wMonth;
    EXPECT_TRUE(WqTime_CompTime(&a, &b) == seconds && WqTime_CompTime(&b, &a) == -seconds) << a.date.wMonth;
  }
}

} // namespace
