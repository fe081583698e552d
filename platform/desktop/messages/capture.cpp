// The mouse capture, and windows that wait for the mouse to leave.

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"
#include "platform/desktop/messages/devices.h"
#include "platform/desktop/messages/input.h"

#include <utility>

namespace platform {

void leaveTracked(Queue &queue) {
  if (const HWND left = std::exchange(queue.tracked, nullptr)) post(queue, messageFor(left, WM_MOUSELEAVE, 0, 0));
}

void setCapture(Queue &queue, HWND window) {
  const HWND previous = std::exchange(queue.capture, window);
  if (window) devices().capturing = queue.weak_from_this();
  if (previous) above::send(previous, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
}

} // namespace platform

using namespace platform;

HWND GetCapture() {
  return locked<HWND>(nullptr, [] { return currentQueue()->capture; });
}

HWND SetCapture(HWND window) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    Queue &queue = *currentQueue();
    if (window && above::queueOfWindowOrFail(window) != &queue) return nullptr;
    const HWND previous = queue.capture;
    setCapture(queue, window);
    return previous;
  });
}

BOOL ReleaseCapture() {
  return locked<BOOL>(FALSE, []() -> BOOL {
    setCapture(*currentQueue(), nullptr);
    return TRUE;
  });
}

BOOL TrackMouseEvent(TRACKMOUSEEVENT *event) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    Queue *const queue = event ? above::queueOfWindowOrFail(event->hwndTrack) : nullptr;
    if (!queue) return FALSE;
    if (!(event->dwFlags & TME_LEAVE)) return TRUE;
    if (event->dwFlags & TME_CANCEL) {
      if (queue->tracked == event->hwndTrack) queue->tracked = nullptr;
      return TRUE;
    }
    LRESULT hit;
    if (above::windowAt(cursorPosition(), devices().pointerTop, hit) == event->hwndTrack)
      queue->tracked = event->hwndTrack;
    else
      post(*queue, messageFor(event->hwndTrack, WM_MOUSELEAVE, 0, 0)); // the mouse has already left
    return TRUE;
  });
}
