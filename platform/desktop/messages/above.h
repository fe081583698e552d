// What messages ask of windows, which are handles here. The floor of windows defines these functions; each is called under
// the desktop's lock.
#pragma once

#include "platform/desktop/messages/queue.h"

namespace platform::above {

// The queue of a window's thread, good as long as the lock is held; null, without an error, for a handle that is none.
Queue *queueOfWindow(HWND window);
// The same, with the error for a bad handle set.
Queue *queueOfWindowOrFail(HWND window);
// Calls the window's procedure on this thread, which is the window's own. 0, with the error set, when there is no such
// window any more.
LRESULT call(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Sends a message, to another thread too. The same for a handle that is none.
LRESULT send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Whether a window is another one or lies in it.
bool isIn(HWND window, HWND ancestor);
// The next window of a queue that has something to paint. top: it or one in it; null for all.
HWND nextToPaint(Queue &queue, HWND top);

// The window under a point, of those that take part in input, with what WM_NCHITTEST answers. top: the top-level window
// that the desktop has seen there, or null.
HWND windowAt(POINT point, HWND top, LRESULT &hit);
// The same by place alone, without asking any window.
HWND placedAt(POINT point, HWND top);
POINT clientOrigin(HWND window);
bool takesDoubleClicks(HWND window);
// What a press brings with it before its message: the parents are told, and the top-level window becomes active.
// Result: whether the message comes through.
bool announcePress(HWND window, UINT message, LRESULT hit, POINT at);

// The thread of the window that has the keyboard; null when none of the program's has.
Queue *keyboardQueue();

// Does in the program what the user has done to a window as a whole.
void carryOut(const Report &deed);
// The clipboard is another program's now.
void takeClipboard(const ClipboardTaken &report);
// The windows of a thread go; nobody hears of it.
void endThread(Queue &queue);

} // namespace platform::above
