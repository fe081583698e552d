/* Time: a counter of milliseconds, the calendar, dates as text. */
#ifndef PLATFORM_WINAPI_TIME_H
#define PLATFORM_WINAPI_TIME_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct _FILETIME {
  DWORD dwLowDateTime, dwHighDateTime;
} FILETIME;

typedef struct _SYSTEMTIME {
  WORD wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
} SYSTEMTIME;

#define LOCALE_USER_DEFAULT 0x400u
#define DATE_SHORTDATE 1u

PLATFORM_API DWORD WINAPI GetTickCount(void);
PLATFORM_API void WINAPI GetLocalTime(SYSTEMTIME *time);
PLATFORM_API int WINAPI GetDateFormatA(LCID locale, DWORD flags, const SYSTEMTIME *date, LPCSTR format, LPSTR text,
                                       int size);

#ifdef __cplusplus
}
#endif

#endif
