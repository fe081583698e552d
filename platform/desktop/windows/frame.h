// The frame round a client area. Its metrics are fixed, and only the style decides.
#pragma once

#include "platform/winapi.h"

namespace platform {

struct Window;

// Widths of the frame's sides.
struct Frame {
  LONG left, top, right, bottom;
};

Frame frameOf(DWORD style, DWORD exStyle);
// The extended style, with WS_EX_WINDOWEDGE set or cleared as the system does.
DWORD edgeStyle(DWORD style, DWORD exStyle);
// The client area within a window rectangle.
RECT clientWithin(const RECT &rect, DWORD style, DWORD exStyle);
// The part of a top-level window that the screen shows: the client area with the scroll bars beside it.
RECT contentOf(const Window &window);
// The part of a window at a point of the screen: HTCLIENT, HTCAPTION, ...
LRESULT hitTest(const Window &window, POINT point);
// Draws the scroll bars of any window and the frame of a child. The frame of a top-level window is the desktop's.
void drawFrame(Window &window);

} // namespace platform
