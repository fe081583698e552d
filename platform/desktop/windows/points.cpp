// Rectangles and points of windows, in screen and client coordinates.

#include "platform/desktop/lock.h"
#include "platform/desktop/windows/window.h"

using namespace platform;

BOOL GetWindowRect(HWND window, RECT *rect) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !rect) return FALSE;
    *rect = screenRect(*target);
    return TRUE;
  });
}

BOOL GetClientRect(HWND window, RECT *rect) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !rect) return FALSE;
    *rect = target->clientArea();
    return TRUE;
  });
}

int MapWindowPoints(HWND from, HWND to, POINT *points, UINT count) {
  return locked<int>(0, [&]() -> int {
    const WindowRef source = from ? windowOf(from) : nullptr;
    const WindowRef target = to ? windowOf(to) : nullptr;
    if ((from && !source) || (to && !target)) return 0;
    POINT shift = source ? clientOrigin(*source) : POINT{0, 0};
    if (target) {
      const POINT origin = clientOrigin(*target);
      shift = {shift.x - origin.x, shift.y - origin.y};
    }
    for (UINT i = 0; i < count; ++i) points[i] = {points[i].x + shift.x, points[i].y + shift.y};
    return MAKELONG(shift.x, shift.y);
  });
}

BOOL ClientToScreen(HWND window, POINT *point) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !point) return FALSE;
    const POINT origin = clientOrigin(*target);
    *point = {point->x + origin.x, point->y + origin.y};
    return TRUE;
  });
}

BOOL ScreenToClient(HWND window, POINT *point) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !point) return FALSE;
    const POINT origin = clientOrigin(*target);
    *point = {point->x - origin.x, point->y - origin.y};
    return TRUE;
  });
}
