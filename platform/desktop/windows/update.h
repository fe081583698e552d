// Update regions.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

enum class Children { byStyle, all, none };

// Add to, or subtract from, the update regions of a window and its children. region: in client coordinates.
void invalidate(Window &window, const QRegion &region, bool erase, bool frame, Children children);
void validate(Window &window, const QRegion &region, Children children);
// Empties the window's own update region.
void takeUpdate(Window &window);
// Empties the update regions of the window and its children.
void validateTree(Window &window);
// The next window of a queue that needs paint, parents first. top: only this window and its children.
Window *nextToPaint(Queue &queue, HWND top);

// The visible part of the client area or of the whole window, in coordinates of the surface.
QRegion visibleClient(const Window &window);
// The area that other contexts can read from a context of the client area. Windows in front count as part of it, since
// the screen shows them there.
QRect readableClient(const Window &window);
QRegion visibleWhole(const Window &window);

// Sends WM_NCPAINT and WM_ERASEBKGND to a window if they are due.
void eraseNow(const WindowRef &window);
// Sends WM_PAINT to a window and its children if it is due. all: to every child, not only to children of windows with
// WS_CLIPCHILDREN.
void paintNow(const WindowRef &window, bool all);

} // namespace platform
