// The clock, the calendar, and dates in the user's format.

#include "platform/kernel/codepage.h"
#include "platform/kernel/errors.h"

#include <chrono>
#include <cstring>
#include <ctime>
#include <langinfo.h>
#include <locale.h>
#include <string>
#include <thread>

namespace platform {

namespace {

constexpr WORD kFirstYear = 1601;
constexpr WORD kLastYear = 30827;

SYSTEMTIME calendarTime(const tm &local) {
  const auto word = [](int value) { return static_cast<WORD>(value); };
  return {word(local.tm_year + 1900), word(local.tm_mon + 1), word(local.tm_wday), word(local.tm_mday),
          word(local.tm_hour),        word(local.tm_min),     word(local.tm_sec),  0};
}

int daysOf(int year, int month) {
  constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && leap ? 29 : days[month - 1];
}

bool isDate(const SYSTEMTIME &date) {
  return date.wYear >= kFirstYear && date.wYear <= kLastYear && date.wMonth >= 1 && date.wMonth <= 12 &&
         date.wDay >= 1 && date.wDay <= daysOf(date.wYear, date.wMonth);
}

// The date in the format of the user's locale, whatever locale the program has set.
std::string shortDate(const SYSTEMTIME &date) {
  static const locale_t user = newlocale(LC_ALL_MASK, "", nullptr);
  tm parts{};
  parts.tm_year = date.wYear - 1900;
  parts.tm_mon = date.wMonth - 1;
  parts.tm_mday = date.wDay;
  char text[80];
  if (!user) return {text, std::strftime(text, sizeof text, "%Y-%m-%d", &parts)};
  const size_t length = strftime_l(text, sizeof text, nl_langinfo_l(D_FMT, user), &parts, user);
  return {text, length};
}

} // namespace

} // namespace platform

using namespace platform;

DWORD GetTickCount() {
  timespec now;
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<DWORD>(static_cast<uint64_t>(now.tv_sec) * 1000 + static_cast<uint64_t>(now.tv_nsec) / 1000000);
}

// The calendar is asked once a second, so that a log of many events doesn't pay for it each time.
void GetLocalTime(SYSTEMTIME *time) {
  thread_local time_t second = -1;
  thread_local SYSTEMTIME known;
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  if (now.tv_sec != second) {
    tm local{};
    localtime_r(&now.tv_sec, &local);
    known = calendarTime(local);
    second = now.tv_sec;
  }
  *time = known;
  time->wMilliseconds = static_cast<WORD>(now.tv_nsec / 1000000);
}

int GetDateFormatA(LCID, DWORD, const SYSTEMTIME *date, LPCSTR format, LPSTR text, int size) {
  return guarded(0, [&]() -> int {
    SYSTEMTIME now;
    if (!date) GetLocalTime(&now);
    const SYSTEMTIME &shown = date ? *date : now;
    if (format || !isDate(shown) || size < 0 || (size > 0 && !text)) {
      SetLastError(format ? ERROR_NOT_SUPPORTED : ERROR_INVALID_PARAMETER);
      return 0;
    }
    const std::string form = codePageFromUtf8(shortDate(shown));
    const int length = static_cast<int>(form.size() + 1);
    if (size == 0) return length;
    if (size < length) {
      SetLastError(ERROR_INSUFFICIENT_BUFFER);
      return 0;
    }
    std::memcpy(text, form.c_str(), form.size() + 1);
    return length;
  });
}

void Sleep(DWORD milliseconds) {
  if (milliseconds == INFINITE)
    for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
