// The desktop that windows stand on: the screen, and Qt's application object where there is a display.
#pragma once

#include "platform/desktop/queue.h"

#include <Qt>

namespace platform {

// Whether windows are shown to anybody.
bool hasDisplay();
// Makes the application object if it isn't there yet. The calling thread becomes the desktop's.
void startApplication();

SIZE screenSize();
// The part of the screen that panels leave free.
RECT workArea();

// The thread of the application object.
bool isDesktopThread(const Queue &queue);
// Lets Qt deliver what came from the desktop. Cheap when there is nothing, and when it was asked a moment ago.
void pollDesktop(Queue &queue);
void waitForDesktop(const std::optional<std::chrono::steady_clock::time_point> &until);
// From any thread: ends the wait of the desktop's thread if that is the queue's.
void wakeDesktop(const Queue &queue);

// The cursor over the windows of this application.
void showCursor(Qt::CursorShape shape, bool hidden);

// A thread is about to end: its windows go, and nobody waits for it any more.
void endThread(Queue &queue);

std::shared_ptr<struct WindowClass> findClass(LPCSTR name);

} // namespace platform
