// Functions that the screen needs from the floors above it, which define them. They run on the screen's thread, which
// holds no lock then.
#pragma once

#include "platform/desktop/screen/reports.h"

namespace platform::above {

// Hands a report of the desktop to the thread that it concerns.
void take(Report report);
// The data of an offer to the clipboard, as one of its types.
// mayWait: whether to wait a while for an owner that has promised the data. Result: nothing if there are no data any
// more.
std::optional<std::string> clipboardData(const std::string &type, Serial offer, bool mayWait);
// Brings drawn pixels to the screen that have waited for a while.
void flushDrawn();
// Dispatches the messages of this thread, on which the program's own event loop runs.
// Result: the time of the next timer.
std::optional<std::chrono::steady_clock::time_point> dispatchWaiting();

} // namespace platform::above
