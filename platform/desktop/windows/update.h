// What is to be painted.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

enum class Children { byStyle, all, none };

// Adds to, or takes from, what a window and its children have to paint. region: in client coordinates.
void invalidate(Window &window, const QRegion &region, bool erase, bool frame, Children children);
void validate(Window &window, const QRegion &region, Children children);
// Nothing of the window itself needs paint.
void takeUpdate(Window &window);
// Nothing of the window and its children needs paint.
void validateTree(Window &window);
// The next window of a queue that has something to paint, parents first. top: asks for it and its children only.
Window *nextToPaint(Queue &queue, HWND top);

// The part of the window's client area that is seen, or of the whole window, in coordinates of the surface.
QRegion visibleClient(const Window &window);
// Where other contexts can read from a context of its client area: other windows in front don't count, they are seen there.
QRect readableClient(const Window &window);
QRegion visibleWhole(const Window &window);

// Sends WM_NCPAINT and WM_ERASEBKGND to a window where they are due.
void eraseNow(const WindowRef &window);
// Sends WM_PAINT to a window and its children where it is due. all: to every child, not only to those that their parent
// leaves out when it draws.
void paintNow(const WindowRef &window, bool all);

} // namespace platform
