// Where windows and button bars meet. The bars stand above the windows, whose sources know no more of them than this.
#pragma once

#include "windows/windows.h"

// Defined by the button bars. Sees the messages of window objects with WQ_DS_MBB first, in a paint pass WQM_PAINT.
// Result: the answer to the message when nobody else shall see it, else 0.
uint32_t wqMbbProc(const WqMsg *msg);

// Defined by the timers. Ends the timers for which isDropped answers true, without telling them, whether the service
// runs or not.
void wqDropTimers(bool (*isDropped)(const WqTimerElem *elem, const void *context), const void *context);
