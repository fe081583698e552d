// What the screen asks of the floors above it, which define these functions. They are called on the screen's thread,
// which holds no lock then.
#pragma once

#include "platform/desktop/screen/reports.h"

namespace platform::above {

// Takes a report of the desktop to the thread that it concerns.
void take(Report report);
// The data of an offer to the clipboard, as one of its types. mayWait: for an owner that has promised them, for a while.
// Result: nothing when there are none any more.
std::optional<std::string> clipboardData(const std::string &type, Serial offer, bool mayWait);
// Brings everything drawn to the screen that waits for a while already.
void flushDrawn();
// Dispatches the messages that wait for this thread, which is one that the program's own event loop runs on.
// Result: when the next timer is due.
std::optional<std::chrono::steady_clock::time_point> dispatchWaiting();

} // namespace platform::above
