// The window procedure of every window object. It finds the object, sends the library's own messages, calls the button
// bar and the user procedure, and handles the messages that both leave. The functions that drain the message queue are
// here too.
//
// A message may end its window. The object stays valid then, but its handle is invalid, and messages to it have no
// effect.

#include "windows/windows_private.h"

#include "drawing/drawing.h"
#include "frame/main.h"
#include "windows/above.h"

namespace {

// The last answer to a press by WQM_MOUSE, until the release.
LRESULT mouseCaptured;

int32_t lowPart(LPARAM value) { return static_cast<int16_t>(LOWORD(value)); }
int32_t highPart(LPARAM value) { return static_cast<int16_t>(HIWORD(value)); }

WqWnd *boundObject(HWND hwnd) { return reinterpret_cast<WqWnd *>(GetWindowLongPtrA(hwnd, GWLP_USERDATA)); }

// Links the window and its object, from WM_CREATE on.
WqWnd *bind(HWND hwnd, LPARAM lParam) {
  auto *wnd = static_cast<WqWnd *>(reinterpret_cast<const CREATESTRUCTA *>(lParam)->lpCreateParams);
  SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(wnd));
  if (wnd) wnd->hwnd = hwnd;
  return wnd;
}

LRESULT sendToMainWnd(UINT msg, WPARAM wParam, LPARAM lParam) {
  return wqMain.mainWnd ? SendMessageA(wqMain.mainWnd, msg, wParam, lParam) : 0;
}

LRESULT platformDefault(const WqMsg *msg) { return DefWindowProcA(msg->hwnd, msg->msg, msg->wParam, msg->lParam); }

// Hides the tip.
void resetTooltip() {
  if (!wqMain.tooltip.hwnd) return;
  SendMessageA(wqMain.tooltip.hwnd, TTM_ACTIVATE, FALSE, 0);
  SendMessageA(wqMain.tooltip.hwnd, TTM_ACTIVATE, TRUE, 0);
}

LRESULT sendMouse(HWND hwnd, WPARAM event) {
  POINT point = {};
  GetCursorPos(&point);
  ScreenToClient(hwnd, &point);
  return SendMessageA(hwnd, WQM_MOUSE, event, reinterpret_cast<LPARAM>(&point));
}

void pressMouse(HWND hwnd) {
  mouseCaptured = sendMouse(hwnd, WQ_MOUSE_PRESS);
  if (mouseCaptured) SetCapture(hwnd);
}

void releaseMouse(HWND hwnd) {
  if (!mouseCaptured) return;
  ReleaseCapture();
  sendMouse(hwnd, WQ_MOUSE_RELEASE);
  mouseCaptured = 0;
}

// Sends the library's messages before the user procedure gets a mouse or key message.
void noticeInput(const WqMsg *msg) {
  switch (msg->msg) {
  case WM_MOUSEMOVE:
    if (mouseCaptured) sendMouse(msg->hwnd, WQ_MOUSE_DRAG);
    sendToMainWnd(WQM_MOUSE_MOVED, 0x300, 0);
    break;
  case WM_LBUTTONDOWN:
    resetTooltip();
    sendToMainWnd(WQM_BUTTON_DOWN, 0, 0);
    pressMouse(msg->hwnd);
    break;
  case WM_LBUTTONUP: releaseMouse(msg->hwnd); break;
  case WM_RBUTTONDOWN:
  case WM_KEYDOWN:
  case WM_KEYUP: resetTooltip(); break;
  default: break;
  }
}

void noticeWheel(const WqMsg *msg) {
  WqWheel wheel = {static_cast<int16_t>(HIWORD(msg->wParam)) / -WHEEL_DELTA, lowPart(msg->lParam),
                   highPart(msg->lParam), LOWORD(msg->wParam)};
  sendToMainWnd(WQM_WHEEL, reinterpret_cast<WPARAM>(&wheel), 0);
}

void limitTrack(const RECT *limit, POINT *track) {
  if (IsRectEmpty(limit)) return;
  SIZE size;
  WqRect_toSize(limit, &size);
  *track = {size.cx, size.cy};
}

void endWindow(WqWnd *wnd, WqMsg *msg) {
  if (wnd->parent && wnd->parent->hwnd)
    SendMessageA(wnd->parent->hwnd, WQM_CHILD_DESTROYED, reinterpret_cast<WPARAM>(wnd), static_cast<LPARAM>(wnd->id));
  if (wnd->hwnd) WqTooltip_RemoveWnd(wnd);
  if (boundObject(msg->hwnd) != wnd) return; // the parent has ended the window a second time, in a nested call
  WqWndLst_RemoveAll(&wnd->dependants);
  wnd->msgReq = 0;
  if (wnd->parent) WqWndLst_Remove(&wnd->parent->dependants, wnd);
  SetWindowLongPtrA(msg->hwnd, GWLP_USERDATA, 0);
  if (wnd->id & WQ_ID_QUIT) PostQuitMessage(0);
  wqCallUserProc(wnd, msg);
  wnd->hwnd = nullptr;
}

// After its own change of size the window has its place already. For any other sender the window takes its place now.
void layOut(WqWnd *wnd, HWND teller) {
  if (teller != wnd->hwnd) WqWnd_Rect(wnd, nullptr);
  wqTellDependants(wnd);
}

void postLayout(const WqMsg *msg) {
  if (msg->wParam == SIZE_RESTORED ||
      msg->wParam == SIZE_MAXIMIZED) // for WM_SIZING these values are "no edge" and "right edge"
    PostMessageA(msg->hwnd, WQM_LAYOUT, reinterpret_cast<WPARAM>(msg->hwnd), 0);
}

// Gives the tooltip the title, if msg is its request.
bool giveTitle(const WqMsg *msg) {
  auto *info = reinterpret_cast<NMTTDISPINFOA *>(msg->lParam);
  if (info->hdr.code != TTN_NEEDTEXTA) return false;
  WqTooltip_WindowText(info, msg->hwnd);
  return true;
}

LRESULT sendContext(const WqMsg *msg) {
  POINT point = {lowPart(msg->lParam), highPart(msg->lParam)};
  return SendMessageA(msg->hwnd, WQM_CONTEXT, reinterpret_cast<WPARAM>(&point), 0);
}

LRESULT sendKey(const WqMsg *msg) {
  uint32_t modifiers = 0;
  if (GetKeyState(VK_CONTROL) < 0) modifiers |= WQ_KEY_CONTROL;
  if (GetKeyState(VK_SHIFT) < 0) modifiers |= WQ_KEY_SHIFT;
  if (GetKeyState(VK_MENU) < 0) modifiers |= WQ_KEY_ALT;
  return sendToMainWnd(WQM_KEY, msg->wParam, static_cast<LPARAM>(modifiers));
}

// Handles a message that the user procedure has left.
LRESULT defaultHandling(WqWnd *wnd, const WqMsg *msg) {
  switch (msg->msg) {
  case WM_SIZE:
  case WM_SIZING: postLayout(msg); return 1;
  case WM_ERASEBKGND: return 1;
  case WM_NOTIFY: return giveTitle(msg) ? 1 : platformDefault(msg);
  case WM_CONTEXTMENU: return sendContext(msg) ? 1 : platformDefault(msg);
  case WM_KEYDOWN: return sendKey(msg) ? 1 : platformDefault(msg);
  case WQM_LAYOUT: layOut(wnd, reinterpret_cast<HWND>(msg->wParam)); return 0;
  case WQM_MOUSE: return 0;
  default: return platformDefault(msg);
  }
}

// Dispatches all messages in the thread's queue, except the dropped ones.
template <typename Dropped> void drainQueue(Dropped isDropped) {
  for (MSG msg; PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE);) {
    if (isDropped(msg)) continue;
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}

} // namespace

int32_t wqCallUserProc(WqWnd *wnd, WqMsg *msg) {
  if (!wnd->userProc) return 0;
  const WqLayoutPause pause;
  return wnd->userProc(wnd, msg);
}

LRESULT CALLBACK WqWnd_DefProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  WqMsg msg;
  WqMsg_Set(&msg, hwnd, message, wParam, lParam);
  WqWnd *wnd = message == WM_CREATE ? bind(hwnd, lParam) : boundObject(hwnd);
  if (!wnd) return platformDefault(&msg);
  switch (message) {
  case WM_PAINT: wqPaint(wnd, &msg); return 0;
  case WM_DESTROY: endWindow(wnd, &msg); return 1;
  case WM_GETMINMAXINFO:
    limitTrack(&wnd->maxRect, &reinterpret_cast<MINMAXINFO *>(lParam)->ptMaxTrackSize);
    limitTrack(&wnd->minRect, &reinterpret_cast<MINMAXINFO *>(lParam)->ptMinTrackSize);
    return 0;
  case WM_MOUSEWHEEL: noticeWheel(&msg); return 0;
  case WM_MOUSEMOVE:
  case WM_LBUTTONDOWN:
  case WM_LBUTTONUP:
  case WM_RBUTTONDOWN:
  case WM_KEYDOWN:
  case WM_KEYUP:
    noticeInput(&msg);
    if (boundObject(hwnd) != wnd) return 0; // the window has ended, and its user procedure has got its last message
    break;
  default: break;
  }
  if (wnd->flags & WQ_DS_MBB) {
    if (const uint32_t answer = wqMbbProc(&msg)) return static_cast<LRESULT>(answer);
    if (boundObject(hwnd) != wnd) return 0; // a notification has ended the window
  }
  if (wqCallUserProc(wnd, &msg)) return wnd->result;
  return defaultHandling(wnd, &msg);
}

void WqWnd_WaitQueEmpty() {
  drainQueue([](const MSG &) { return false; });
}

void WqWnd_RemoveQueMsg(uint32_t number) {
  drainQueue([number](const MSG &msg) {
    if (msg.message != number) return false;
    if (number == WM_PAINT) ValidateRect(msg.hwnd, nullptr); // otherwise it comes again
    return true;
  });
}

void WqWnd_RemoveQueTimerMsg(UINT_PTR timerId) {
  drainQueue([timerId](const MSG &msg) { return msg.message == WM_TIMER && msg.wParam == timerId; });
}
