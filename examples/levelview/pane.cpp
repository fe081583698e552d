#include "pane.h"

namespace {

POINT mousePoint(LPARAM lParam) { return {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))}; }

// Without being asked the platform doesn't tell that the mouse has left.
void watchMouse(HWND hwnd) {
  TRACKMOUSEEVENT track{};
  track.cbSize = sizeof track;
  track.dwFlags = TME_LEAVE;
  track.hwndTrack = hwnd;
  TrackMouseEvent(&track);
}

} // namespace

Pane::Pane(WqWnd *parent) {
  holder_.pane = this;
  WqWnd_Init(wnd());
  WqWnd_Parent(wnd(), parent);
  WqWnd_Style(wnd(), WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS);
  WqWnd_UserProc(wnd(), procedure);
}

RECT Pane::client() const {
  RECT rect{};
  GetClientRect(window(), &rect);
  return rect;
}

void Pane::tip(uint32_t id, const RECT &part) {
  if (!window()) return; // it is being made
  WqTooltip_Remove(window(), id);
  WqTooltip_AddRect(window(), &part, id);
}

int32_t Pane::procedure(WqWnd *wnd, WqMsg *msg) {
  const bool handled = reinterpret_cast<Holder *>(wnd)->pane->handle(*msg);
  if (handled) wnd->result = 1;
  return handled;
}

// Result: whether the message ends here, with the answer 1.
bool Pane::handle(const WqMsg &msg) {
  switch (msg.msg) {
  case WQM_PAINT: {
    auto &dc = *reinterpret_cast<WqDc *>(msg.wParam);
    paint(dc, dc.paint.rcPaint);
    return true;
  }
  case WQM_MOUSE: return handleMouse(msg.wParam, *reinterpret_cast<const POINT *>(msg.lParam));
  case WQM_MBB_NOTIFY:
    notified(static_cast<uint32_t>(msg.wParam), *reinterpret_cast<WqMbbBtn *>(msg.lParam));
    return true;
  case WM_SIZE: resized(); return false; // the layout goes on
  case WM_MOUSEMOVE:
    watchMouse(msg.hwnd);
    moved(mousePoint(msg.lParam));
    return false;
  case WM_MOUSELEAVE: left(); return false;
  default: return false;
  }
}

bool Pane::handleMouse(WPARAM event, const POINT &at) {
  if (event == WQ_MOUSE_PRESS) pressed(at);
  if (event == WQ_MOUSE_DRAG) dragged(at);
  return true; // of a press: drags shall follow
}
