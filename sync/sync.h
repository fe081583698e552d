/* Time, and waiting objects. */
#ifndef WQ_SYNC_SYNC_H
#define WQ_SYNC_SYNC_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqTime: calendar time and stopwatch ------------------------------------------------------------------------- */

typedef struct WqTime {
  SYSTEMTIME date;   /* local time; set by WqTime_Local or the caller */
  uint32_t tick;     /* the last reading of the platform's tick, in milliseconds; wraps at 32 bits */
  uint32_t prevTick; /* the reading before the last */
  int32_t elapsed;   /* milliseconds over all readings; negative after 24.8 days */
} WqTime;

/* Zeroes the record and takes a first reading. */
WQ_API void WqTime_Init(WqTime *time);

/* Does nothing. */
WQ_API void WqTime_Term(WqTime *time);

/* Stores the local time in date. */
WQ_API void WqTime_Local(WqTime *time);

/* Takes a reading and adds the time since the last one to elapsed. Without WqTime_Init the call only takes a first
 * reading. */
WQ_API void WqTime_TickCount(WqTime *time);

/* Result: a's reading minus b's, in milliseconds, modulo 32 bits. */
WQ_API uint32_t WqTime_DiffCount(const WqTime *a, const WqTime *b);

/* Compare year, month and day, or hour, minute and second. Day of week and milliseconds are ignored.
 * Result: -1 if a comes first, 1 if b does, 0 if they are equal. */
WQ_API int32_t WqTime_CompDate(const WqTime *a, const WqTime *b);
WQ_API int32_t WqTime_CompTime(const WqTime *a, const WqTime *b);

/* Writes the date in the user's short format.
 * text: room for the longest such text, 80 bytes.
 * Result: the bytes written with the NUL; 0 for an invalid date. */
WQ_API int32_t WqTime_DateFormat(const WqTime *time, char *text);

/* Writes the time of date as "12:34:56".
 * text: room for 18 bytes.
 * Result: the number of characters. */
WQ_API int32_t WqTime_TimeFormat(const WqTime *time, char *text);

/* Write elapsed as "hours:minutes:seconds", with any number of hours, or as "minutes:seconds.hundredths", without
 * hours.
 * text: room for 16 bytes.
 * Result: the number of characters. */
WQ_API int32_t WqTime_TickCountFormat(const WqTime *time, char *text);
WQ_API int32_t WqTime_TickCountMillisecFormat(const WqTime *time, char *text);

/* ---- WqSync: a lock inside the process ---------------------------------------------------------------------------
 *
 * All functions of this family and the following ones may run on several threads at once, except those that start or
 * end a record. */

#define WQ_SYNC_READY 1u   /* WqSync.state: initialised */
#define WQ_SYNC_DELETED 2u /* ended */
#define WQ_SYNC_ENTERED 4u /* locked at least once */

typedef struct WqSync {
  CRITICAL_SECTION section;
  uint32_t state; /* WQ_SYNC_...; bits are only ever set */
} WqSync;

/* Makes the lock.
 * sync: zeroed by the caller. A record that was ended stays ended until it is zeroed again. */
WQ_API void WqSync_Init(WqSync *sync);

/* Ends the lock. */
WQ_API void WqSync_Term(WqSync *sync);

/* Waits for the lock and takes it; a thread may take it several times.
 * Result: 1; 0 for a record that isn't initialised or was ended. */
WQ_API int WqSync_Lock(WqSync *sync);

/* Gives the lock back, once for each WqSync_Lock. Without a lock before nothing happens. */
WQ_API void WqSync_Unlock(WqSync *sync);

/* ---- WqMutex: a lock between processes ---------------------------------------------------------------------------
 *
 * Waits return the platform's values: 0 if the object was got, 0x80 if it was got after its owner died, 0x102 if time
 * ran out, 0xFFFFFFFF on failure, such as for a null handle. */

typedef struct WqMutex {
  HANDLE handle; /* null if there is none */
  char name[260];
} WqMutex;

/* Makes a named mutex, or opens an existing one.
 * owned: not 0 makes the caller the owner of a new mutex at once. name: for the whole machine; cut at 259 bytes.
 * Result: 1 or 0. */
WQ_API int WqMutex_Init(WqMutex *mutex, int owned, const char *name);

/* Opens an existing mutex.
 * Result: 1 or 0; the name is stored in any case. */
WQ_API int WqMutex_Open(WqMutex *mutex, const char *name);

/* Result: 1 if a mutex of that name exists in any process, else 0. */
WQ_API int WqMutex_IsExist(const char *name);

/* Waits for the mutex without limit.
 * Result: the wait's value. */
WQ_API uint32_t WqMutex_Lock(WqMutex *mutex);

/* Gives the mutex back.
 * Result: not 0 on success; 0 if the thread doesn't own the mutex. */
WQ_API BOOL WqMutex_Unock(WqMutex *mutex);

/* Closes the handle. */
WQ_API void WqMutex_Term(WqMutex *mutex);

/* ---- WqSignal: a flag to wait for -------------------------------------------------------------------------------- */

typedef struct WqSignal {
  HANDLE handle;
} WqSignal;

/* Sets the handle to null. */
WQ_API void WqSignal_Init(WqSignal *signal);

/* Makes the flag, or opens an existing one of that name.
 * name: may be null. set: not 0 sets a new flag.
 * Result: 1 or 0. */
WQ_API int WqSignal_Create(WqSignal *signal, const char *name, int set);

/* Set or clear the flag. While it is set, all waiting threads pass.
 * Result: not 0 on success. */
WQ_API BOOL WqSignal_SetGo(WqSignal *signal);
WQ_API BOOL WqSignal_SetStop(WqSignal *signal);

/* Wait until the flag is set, without limit or for a time; the flag stays set.
 * milliseconds: 0xFFFFFFFF waits without limit.
 * Result: the wait's value, as for WqMutex. */
WQ_API uint32_t WqSignal_Wait(WqSignal *signal);
WQ_API uint32_t WqSignal_WaitTime(WqSignal *signal, uint32_t milliseconds);

/* Closes the handle. */
WQ_API void WqSignal_Term(WqSignal *signal);

/* ---- WqSemaphore: an interface without behaviour ----------------------------------------------------------------- */

typedef struct WqSemaphore {
  uint32_t words[3]; /* not used */
} WqSemaphore;

/* Zeroes the record. */
WQ_API void WqSemaphore_Init(WqSemaphore *semaphore);

/* Result: always 0. */
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
