// What the user does, turned into messages.
#pragma once

#include "platform/desktop/window.h"

#include <functional>

namespace platform {

// Takes an action of the user into the queue of the thread that it concerns.
void addInput(Input input);
// The next message that comes of the actions in a queue, if there is one that the caller wants.
bool takeInputMessage(Queue &queue, const std::function<bool(HWND, UINT)> &wants, bool remove, MSG &message);

POINT cursorPosition();
// The window under a point, of those that take part in input, and what WM_NCHITTEST tells.
WindowRef windowAt(POINT point, LRESULT &hit);
// Moves or sizes a window with the mouse, from a press on its frame to the release. at: on the screen.
void dragFrame(const WindowRef &window, WPARAM hit, LPARAM at);

} // namespace platform
