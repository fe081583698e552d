// A calendar time and a stopwatch on the platform's millisecond tick.

#include "sync/sync.h"

#include "frame/memory.h"
#include "text/text.h"

#include <tuple>

namespace {

// -1 if a comes first, 1 if b comes first, 0 if they are equal.
template <typename Fields> int32_t order(const Fields &a, const Fields &b) { return a < b ? -1 : a > b ? 1 : 0; }

struct Parts {
  int32_t hours, minutes, seconds, hundredths;
};

Parts partsOf(int32_t milliseconds) {
  const int32_t seconds = milliseconds / 1000;
  const int32_t minutes = seconds / 60;
  return {minutes / 60, minutes % 60, seconds % 60, milliseconds % 1000 / 10};
}

} // namespace

void WqTime_Init(WqTime *time) {
  WqMem_Zero(time, sizeof *time);
  time->tick = GetTickCount();
  time->prevTick = time->tick;
}

void WqTime_Term(WqTime *) {}

void WqTime_Local(WqTime *time) { GetLocalTime(&time->date); }

void WqTime_TickCount(WqTime *time) {
  time->prevTick = time->tick;
  time->tick = GetTickCount();
  if (time->prevTick != 0)
    time->elapsed = static_cast<int32_t>(static_cast<uint32_t>(time->elapsed) + (time->tick - time->prevTick));
}

uint32_t WqTime_DiffCount(const WqTime *a, const WqTime *b) { return a->tick - b->tick; }

int32_t WqTime_CompDate(const WqTime *a, const WqTime *b) {
  const auto fields = [](const SYSTEMTIME &date) { return std::tie(date.wYear, date.wMonth, date.wDay); };
  return order(fields(a->date), fields(b->date));
}

int32_t WqTime_CompTime(const WqTime *a, const WqTime *b) {
  const auto fields = [](const SYSTEMTIME &date) { return std::tie(date.wHour, date.wMinute, date.wSecond); };
  return order(fields(a->date), fields(b->date));
}

int32_t WqTime_DateFormat(const WqTime *time, char *text) {
  const int length = GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time->date, nullptr, nullptr, 0);
  if (length == 0) return 0;
  return GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time->date, nullptr, text, length) ? length : 0;
}

int32_t WqTime_TimeFormat(const WqTime *time, char *text) {
  return WqStr_Format(text, "%02d:%02d:%02d", time->date.wHour, time->date.wMinute, time->date.wSecond);
}

int32_t WqTime_TickCountFormat(const WqTime *time, char *text) {
  const Parts parts = partsOf(time->elapsed);
  return WqStr_Format(text, "%02d:%02d:%02d", parts.hours, parts.minutes, parts.seconds);
}

int32_t WqTime_TickCountMillisecFormat(const WqTime *time, char *text) {
  const Parts parts = partsOf(time->elapsed);
  return WqStr_Format(text, "%02d:%02d.%02d", parts.minutes, parts.seconds, parts.hundredths);
}
