// Functions that messages need from windows, which are only handles here. The floor of windows defines these functions,
// and each is called under the desktop's lock.
#pragma once

#include "platform/desktop/messages/queue.h"

namespace platform::above {

// The queue of a window's thread, valid while the lock is held. Null, without an error, for an invalid handle.
Queue *queueOfWindow(HWND window);
// queueOfWindow with the last error set for an invalid handle.
Queue *queueOfWindowOrFail(HWND window);
// Calls a window's procedure on this thread, which is the window's own.
// Result: the procedure's; 0, with the last error set, for an invalid handle.
LRESULT call(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Sends a message to a window of any thread. Result: that of call.
LRESULT send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Whether a window is another window or lies in it.
bool isIn(HWND window, HWND ancestor);
// The next window of a queue that needs paint. top: only this window and those in it; null for all.
HWND nextToPaint(Queue &queue, HWND top);

// The window under a point, of those that take part in input. hit: gets its answer to WM_NCHITTEST.
// top: the top-level window that the desktop has seen there, or null.
HWND windowAt(POINT point, HWND top, LRESULT &hit);
// The window under a point by place alone, without asking any window.
HWND placedAt(POINT point, HWND top);
POINT clientOrigin(HWND window);
bool takesDoubleClicks(HWND window);
// Does what a press needs before its message: tells the parents and activates the top-level window.
// Result: whether the press still becomes a message.
bool announcePress(HWND window, UINT message, LRESULT hit, POINT at);

// The queue of the thread that has the keyboard; null if another program has it.
Queue *keyboardQueue();

// Carries out a deed of the user on a whole window, in the program.
void carryOut(const Report &deed);
// Notes that another program owns the clipboard now.
void takeClipboard(const ClipboardTaken &report);
// Removes the windows of a thread that ends, without any message.
void endThread(Queue &queue);

} // namespace platform::above
