/* Time, and waiting objects. */
#ifndef WQ_SYNC_SYNC_H
#define WQ_SYNC_SYNC_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqTime: calendar time and stopwatch ------------------------------------------------------------------------- */

typedef struct WqTime {
  SYSTEMTIME date;   /* local calendar time; set by WqTime_Local or the caller */
  uint32_t tick;     /* the latest reading of the platform's tick, in milliseconds; wraps at 32 bits */
  uint32_t prevTick; /* the reading before */
  int32_t elapsed;   /* milliseconds over all readings; negative after 24.8 days */
} WqTime;

/* Zeroes the record and takes a first reading. */
WQ_API void WqTime_Init(WqTime *time);

/* Does nothing. */
WQ_API void WqTime_Term(WqTime *time);

/* Stores the local time in date. */
WQ_API void WqTime_Local(WqTime *time);

/* Takes a reading and adds the time since the last one to elapsed. A record that never saw WqTime_Init gets its first
 * reading only. */
WQ_API void WqTime_TickCount(WqTime *time);

/* Result: a's reading minus b's, in milliseconds, across the tick's wrap. */
WQ_API uint32_t WqTime_DiffCount(const WqTime *a, const WqTime *b);

/* Compare year, month and day, or hour, minute and second; day of week and milliseconds play no part.
 * Result: -1 when a comes first, 1 when b does, 0 for the same. */
WQ_API int32_t WqTime_CompDate(const WqTime *a, const WqTime *b);
WQ_API int32_t WqTime_CompTime(const WqTime *a, const WqTime *b);

/* Writes the date in the user's short form.
 * text: has room for the longest such form, 80 bytes.
 * Result: the bytes written with the NUL; 0 for a date that is none. */
WQ_API int32_t WqTime_DateFormat(const WqTime *time, char *text);

/* Writes the time of date as "12:34:56".
 * text: has room for 18 bytes.
 * Result: the number of characters. */
WQ_API int32_t WqTime_TimeFormat(const WqTime *time, char *text);

/* Write elapsed as "hours:minutes:seconds", hours without a limit, or as "minutes:seconds.hundredths" without the hours.
 * text: has room for 16 bytes.
 * Result: the number of characters. */
WQ_API int32_t WqTime_TickCountFormat(const WqTime *time, char *text);
WQ_API int32_t WqTime_TickCountMillisecFormat(const WqTime *time, char *text);

/* ---- WqSync: a lock inside the process ---------------------------------------------------------------------------
 *
 * All functions of this family and the following ones may be called from several threads at once, except for those that
 * start or end a record. */

#define WQ_SYNC_READY 1u   /* WqSync.state: initialised */
#define WQ_SYNC_DELETED 2u /* ended */
#define WQ_SYNC_ENTERED 4u /* locked at least once */

typedef struct WqSync {
  CRITICAL_SECTION section;
  uint32_t state; /* WQ_SYNC_...; bits are only ever set */
} WqSync;

/* Makes the lock.
 * sync: zeroed by the caller. A record that was ended stays so until it is zeroed again. */
WQ_API void WqSync_Init(WqSync *sync);

/* Ends the lock. */
WQ_API void WqSync_Term(WqSync *sync);

/* Waits for the lock and takes it; a thread may take it several times.
 * Result: 1; 0 for a record that isn't initialised or was ended. */
WQ_API int WqSync_Lock(WqSync *sync);

/* Gives the lock back, once for each WqSync_Lock. Before the first lock nothing happens. */
WQ_API void WqSync_Unlock(WqSync *sync);

/* ---- WqMutex: a lock between processes ---------------------------------------------------------------------------
 *
 * Waits answer the platform's values: 0 when the object was got, 0x80 when its owner died and it was got, 0x102 when time
 * ran out, 0xFFFFFFFF on failure, for a null handle among others. */

typedef struct WqMutex {
  HANDLE handle; /* null when there is none */
  char name[260];
} WqMutex;

/* Makes a named mutex, or opens it where it exists.
 * owned: not 0: the caller owns a new mutex at once. name: the whole machine's; cut at 259 bytes.
 * Result: 1 or 0. */
WQ_API int WqMutex_Init(WqMutex *mutex, int owned, const char *name);

/* Opens a mutex that exists.
 * Result: 1 or 0; the name is stored in any case. */
WQ_API int WqMutex_Open(WqMutex *mutex, const char *name);

/* Result: 1 when a mutex of that name exists in any process, else 0. */
WQ_API int WqMutex_IsExist(const char *name);

/* Waits for the mutex without limit.
 * Result: the platform's. */
WQ_API uint32_t WqMutex_Lock(WqMutex *mutex);

/* Gives the mutex back.
 * Result: not 0 on success; 0 when the thread doesn't own it. */
WQ_API BOOL WqMutex_Unock(WqMutex *mutex);

/* Closes the handle. */
WQ_API void WqMutex_Term(WqMutex *mutex);

/* ---- WqSignal: a flag to wait for -------------------------------------------------------------------------------- */

typedef struct WqSignal {
  HANDLE handle;
} WqSignal;

/* Sets the handle to null. */
WQ_API void WqSignal_Init(WqSignal *signal);

/* Makes the flag, or opens it where one of its name exists.
 * name: may be null. set: not 0: set from the start.
 * Result: 1 or 0. */
WQ_API int WqSignal_Create(WqSignal *signal, const char *name, int set);

/* Set or clear the flag. While it is set, all who wait pass.
 * Result: not 0 on success. */
WQ_API BOOL WqSignal_SetGo(WqSignal *signal);
WQ_API BOOL WqSignal_SetStop(WqSignal *signal);

/* Wait until the flag is set, without limit or for a time; the flag stays set.
 * milliseconds: 0xFFFFFFFF waits without limit.
 * Result: the platform's, as for WqMutex. */
WQ_API uint32_t WqSignal_Wait(WqSignal *signal);
WQ_API uint32_t WqSignal_WaitTime(WqSignal *signal, uint32_t milliseconds);

/* Closes the handle. */
WQ_API void WqSignal_Term(WqSignal *signal);

/* ---- WqSemaphore: an interface without behaviour ----------------------------------------------------------------- */

typedef struct WqSemaphore {
  uint32_t words[3]; /* nobody reads them */
} WqSemaphore;

/* Zeroes the record. */
WQ_API void WqSemaphore_Init(WqSemaphore *semaphore);

/* Result: 0, always. */
WQ_API int WqSemaphore_Create(WqSemaphore *semaphore, ...);
WQ_API int WqSemaphore_TryLock(WqSemaphore *semaphore, ...);

/* Do nothing. */
WQ_API void WqSemaphore_Lock(WqSemaphore *semaphore);
WQ_API void WqSemaphore_Unlock(WqSemaphore *semaphore);
WQ_API void WqSemaphore_Term(WqSemaphore *semaphore);

#ifdef __cplusplus
}
#endif

#endif
