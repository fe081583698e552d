// Moves and sizes a window by its frame, with the messages of such a drag. On a display the window manager does this
// for top-level windows. The code here is for all other windows, and for all windows without a display.

#include "platform/desktop/windows/drag.h"

#include "platform/desktop/guards.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/messages/input.h"
#include "platform/desktop/windows/focus.h"
#include "platform/desktop/windows/frame.h"
#include "platform/desktop/windows/placing.h"

#include <algorithm>

namespace platform {

namespace {

struct Sides {
  bool left, top, right, bottom;
};

Sides sidesOf(WPARAM hit) {
  return {hit == HTLEFT || hit == HTTOPLEFT || hit == HTBOTTOMLEFT,
          hit == HTTOP || hit == HTTOPLEFT || hit == HTTOPRIGHT,
          hit == HTRIGHT || hit == HTTOPRIGHT || hit == HTBOTTOMRIGHT,
          hit == HTBOTTOM || hit == HTBOTTOMLEFT || hit == HTBOTTOMRIGHT};
}

// The rectangle that the drag asks for.
RECT dragged(const RECT &start, const MINMAXINFO &limits, const Sides &sides, LONG dx, LONG dy, bool moves) {
  if (moves) return offset(start, dx, dy);
  RECT rect = {start.left + (sides.left ? dx : 0), start.top + (sides.top ? dy : 0),
               start.right + (sides.right ? dx : 0), start.bottom + (sides.bottom ? dy : 0)};
  const LONG width = std::clamp(rect.right - rect.left, limits.ptMinTrackSize.x, limits.ptMaxTrackSize.x);
  const LONG height = std::clamp(rect.bottom - rect.top, limits.ptMinTrackSize.y, limits.ptMaxTrackSize.y);
  if (sides.left)
    rect.left = rect.right - width;
  else
    rect.right = rect.left + width;
  if (sides.top)
    rect.top = rect.bottom - height;
  else
    rect.bottom = rect.top + height;
  return rect;
}

bool ends(const MSG &message) {
  return message.message == WM_LBUTTONUP || (message.message == WM_KEYDOWN && message.wParam == VK_RETURN);
}

} // namespace

void dragFrame(const WindowRef &window, WPARAM hit, LPARAM at) {
  const bool moves = hit == HTCAPTION;
  if (!moves && !window->is(WS_THICKFRAME)) return;
  if (window->is(WS_MAXIMIZE)) return;
  const POINT from = {GET_X_LPARAM(at), GET_Y_LPARAM(at)};
  const RECT start = window->rect;
  const MINMAXINFO limits = sizeLimits(window);
  if (!window->alive) return;
  const Sides sides = sidesOf(hit);
  setCapture(*window->queue, window->handle);
  const OnThrow released([&] {
    if (window->queue->capture == window->handle) window->queue->capture = nullptr;
  });
  send(window, WM_ENTERSIZEMOVE);
  MSG message;
  while (window->alive && window->queue->capture == window->handle && GetMessageA(&message, nullptr, 0, 0) > 0) {
    const bool cancelled = message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE;
    if (message.message == WM_MOUSEMOVE || cancelled) {
      RECT rect =
          cancelled ? start : dragged(start, limits, sides, message.pt.x - from.x, message.pt.y - from.y, moves);
      if (!sameRect(rect, window->rect)) {
        if (!cancelled)
          send(window, moves ? WM_MOVING : WM_SIZING, moves ? 0 : hit - HTLEFT + WMSZ_LEFT, addressOf(rect));
        if (window->alive)
          setWindowPos(window, {nullptr, nullptr, static_cast<int>(rect.left), static_cast<int>(rect.top),
                                static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top),
                                SWP_NOACTIVATE | SWP_NOZORDER | (moves ? SWP_NOSIZE : 0u)});
      }
      if (cancelled) break;
    } else if (ends(message)) {
      break;
    } else {
      const DesktopUnlock unlocked;
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
  }
  if (!window->alive) return;
  if (window->queue->capture == window->handle) setCapture(*window->queue, nullptr);
  send(window, WM_EXITSIZEMOVE);
}

} // namespace platform
