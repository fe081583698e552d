// Functions that windows need from button bars and timers, and nothing else of these.
#pragma once

#include "windows/windows.h"

// Defined by the button bars. Gets the messages of window objects with WQ_DS_MBB first, and WQM_PAINT in a paint pass.
// Result: the answer to the message if it goes no further, else 0.
uint32_t wqMbbProc(const WqMsg *msg);

// Defined by the timers. Ends all timers for which isDropped returns true, without telling them, even if the service is
// stopped.
void wqDropTimers(bool (*isDropped)(const WqTimerElem *elem, const void *context), const void *context);
