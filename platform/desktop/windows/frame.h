// The frame round a client area. It follows from the style with fixed metrics, the classic look's.
#pragma once

#include "platform/winapi.h"

namespace platform {

struct Window;

// Widths of the frame's sides.
struct Frame {
  LONG left, top, right, bottom;
};

Frame frameOf(DWORD style, DWORD exStyle);
// The extended style with what the system keeps of edges in it.
DWORD edgeStyle(DWORD style, DWORD exStyle);
// The client area that a window rectangle leaves.
RECT clientWithin(const RECT &rect, DWORD style, DWORD exStyle);
// The client area of a top-level window with the scroll bars beside it: what the screen shows of it.
RECT contentOf(const Window &window);
// Where a point of the screen lies in a window: HTCLIENT, HTCAPTION, ...
LRESULT hitTest(const Window &window, POINT point);
// Draws the frame of a child window, and any window's scroll bars; the desktop draws the frames of top-level windows.
void drawFrame(Window &window);

} // namespace platform
