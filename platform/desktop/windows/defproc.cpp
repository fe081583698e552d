// The default window procedure.

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/input.h"
#include "platform/desktop/windows/drag.h"
#include "platform/desktop/windows/focus.h"
#include "platform/desktop/windows/frame.h"
#include "platform/desktop/windows/onscreen.h"
#include "platform/desktop/windows/placing.h"
#include "platform/desktop/windows/scroll.h"
#include "platform/desktop/windows/states.h"
#include "platform/desktop/windows/update.h"
#include "platform/kernel/codepage.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace platform {

namespace {

template <typename Record> Record &recordAt(LPARAM address) { return *reinterpret_cast<Record *>(address); }

void sendSizeAndMove(const WindowRef &window, UINT flags) {
  if (!(flags & kNoClientMove)) send(window, WM_MOVE, 0, lParamOf(window->client.left, window->client.top));
  if (window->alive && (!(flags & kNoClientSize) || (flags & kStateChanged))) {
    const RECT area = window->clientArea();
    send(window, WM_SIZE, sizeKind(*window), lParamOf(area.right, area.bottom));
  }
}

void limitChange(const WindowRef &window, WINDOWPOS &position) {
  if (position.flags & SWP_NOSIZE) return;
  if (!window->is(WS_THICKFRAME) && (window->style & (WS_POPUP | WS_CHILD))) return;
  const MINMAXINFO limits = sizeLimits(window);
  position.cx = std::min<int>(position.cx, limits.ptMaxTrackSize.x);
  position.cy = std::min<int>(position.cy, limits.ptMaxTrackSize.y);
  if (window->is(WS_MINIMIZE)) return;
  position.cx = std::max<int>(position.cx, limits.ptMinTrackSize.x);
  position.cy = std::max<int>(position.cy, limits.ptMinTrackSize.y);
}

LRESULT eraseBackground(const WindowRef &window, WPARAM wParam) {
  const HBRUSH brush = window->windowClass->background;
  if (!brush) return 0;
  const RECT area = window->clientArea();
  return FillRect(reinterpret_cast<HDC>(wParam), &area, brush);
}

LRESULT getText(const Window &window, WPARAM size, LPARAM text) {
  if (size == 0 || text == 0) return 0;
  return static_cast<LRESULT>(copyWhole(window.text, reinterpret_cast<char *>(text), size));
}

LRESULT setText(Window &window, LPARAM text) {
  window.text = text ? reinterpret_cast<const char *>(text) : "";
  lookOnScreen(window);
  return 1;
}

LRESULT mouseActivate(const WindowRef &window, WPARAM wParam, LPARAM lParam) {
  if (window->isChild()) {
    const LRESULT answer = send(refOf(window->parent), WM_MOUSEACTIVATE, wParam, lParam);
    if (answer) return answer;
  }
  return HIWORD(lParam) == WM_LBUTTONDOWN && LOWORD(lParam) == HTCAPTION ? MA_NOACTIVATE : MA_ACTIVATE;
}

// The cursor over a part of the frame.
HCURSOR frameCursor(int hit) {
  switch (hit) {
  case HTLEFT:
  case HTRIGHT: return LoadCursorA(nullptr, IDC_SIZEWE);
  case HTTOP:
  case HTBOTTOM: return LoadCursorA(nullptr, IDC_SIZENS);
  case HTTOPLEFT:
  case HTBOTTOMRIGHT: return LoadCursorA(nullptr, IDC_SIZENWSE);
  case HTTOPRIGHT:
  case HTBOTTOMLEFT: return LoadCursorA(nullptr, IDC_SIZENESW);
  default: return LoadCursorA(nullptr, IDC_ARROW);
  }
}

// Asks the parents first, but not for a sizing border. The default is the cursor of the class of the window under the
// pointer, even if another window answers.
LRESULT chooseCursor(const WindowRef &window, WPARAM wParam, LPARAM lParam) {
  const int hit = static_cast<short>(LOWORD(lParam));
  const bool sizes = hit >= HTLEFT && hit <= HTBOTTOMRIGHT;
  if (!sizes && window->isChild() && window->parent->parent &&
      send(refOf(window->parent), WM_SETCURSOR, wParam, lParam))
    return TRUE;
  if (hit != HTCLIENT) {
    SetCursor(frameCursor(hit));
    return TRUE;
  }
  const WindowRef under = windowOrNone(reinterpret_cast<HWND>(wParam));
  if (!under || !under->windowClass->cursor) return FALSE;
  SetCursor(under->windowClass->cursor);
  return TRUE;
}

LRESULT command(const WindowRef &window, WPARAM wParam, LPARAM lParam) {
  switch (wParam & 0xFFF0) {
  case SC_CLOSE: return send(window, WM_CLOSE);
  case SC_MINIMIZE: showWindow(window, SW_MINIMIZE); return 0;
  case SC_MAXIMIZE: showWindow(window, SW_SHOWMAXIMIZED); return 0;
  case SC_RESTORE: showWindow(window, SW_RESTORE); return 0;
  case SC_VSCROLL: trackBar(window, SB_VERT, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); return 0;
  case SC_HSCROLL: trackBar(window, SB_HORZ, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); return 0;
  default: return 0;
  }
}

bool closeIsDisabled(const Window &window) {
  if (!window.menu) return false;
  for (const auto &[item, state] : window.menu->items)
    if (item == SC_CLOSE) return state & (MF_GRAYED | MF_DISABLED);
  return true;
}

// A press on the frame. The desktop moves and sizes windows; the boxes of the frame act on the press.
LRESULT framePressed(const WindowRef &window, WPARAM hit, LPARAM at) {
  switch (hit) {
  case HTCAPTION:
  case HTLEFT:
  case HTRIGHT:
  case HTTOP:
  case HTTOPLEFT:
  case HTTOPRIGHT:
  case HTBOTTOM:
  case HTBOTTOMLEFT:
  case HTBOTTOMRIGHT:
    if (hit == HTCAPTION && !window->isChild()) activate(refOf(&rootOf(*window)), Cause::mouse, true);
    if (window->alive) dragFrame(window, hit, at);
    return 0;
  case HTCLOSE:
    if (!closeIsDisabled(*window)) send(window, WM_SYSCOMMAND, SC_CLOSE, at);
    return 0;
  case HTVSCROLL: return send(window, WM_SYSCOMMAND, SC_VSCROLL | hit, at);
  case HTHSCROLL: return send(window, WM_SYSCOMMAND, SC_HSCROLL | hit, at);
  case HTMINBUTTON: return send(window, WM_SYSCOMMAND, SC_MINIMIZE, at);
  case HTMAXBUTTON: return send(window, WM_SYSCOMMAND, window->is(WS_MAXIMIZE) ? SC_RESTORE : SC_MAXIMIZE, at);
  default: return 0;
  }
}

constexpr LPARAM kAltIsDown = 1 << 29;

// Alt or F10 calls the menu if no other key comes between down and up.
LRESULT systemKeyDown(const WindowRef &window, WPARAM key, LPARAM lParam) {
  BYTE &menuKey = window->queue->menuKey;
  if (lParam & kAltIsDown) {
    menuKey = key == VK_MENU && menuKey != VK_MENU ? VK_MENU : 0;
    const WindowRef root = refOf(&rootOf(*window));
    if (key == VK_F4 && !closeIsDisabled(*root))
      post(*root->queue, messageFor(root->handle, WM_SYSCOMMAND, SC_CLOSE, 0));
  } else if (key == VK_F10) {
    menuKey = VK_F10;
  }
  return 0;
}

LRESULT keyUp(const WindowRef &window, WPARAM key) {
  const BYTE menuKey = std::exchange(window->queue->menuKey, BYTE{0});
  if (menuKey && key == menuKey) send(refOf(&rootOf(*window)), WM_SYSCOMMAND, SC_KEYMENU, 0);
  return 0;
}

// Alt and a letter call the menu with that letter. Alt and blank are for the system menu, which a child doesn't have.
LRESULT systemCharacter(const WindowRef &window, WPARAM character, LPARAM lParam) {
  window->queue->menuKey = 0;
  if (!(lParam & kAltIsDown) || !character || character == VK_TAB || character == VK_ESCAPE) return 0;
  if (character == VK_SPACE && window->isChild()) return send(refOf(window->parent), WM_SYSCHAR, character, lParam);
  return send(window, WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(character));
}

LRESULT setRedraw(const WindowRef &window, WPARAM on) {
  if (on) {
    if (!window->is(WS_VISIBLE)) {
      window->style |= WS_VISIBLE;
      showOnScreen(*window);
    }
  } else {
    validateTree(*window);
    window->style &= ~WS_VISIBLE;
  }
  return 0;
}

using Answer = std::optional<LRESULT>; // nothing for a message of another group

// Messages about the window's place, state and pixels.
Answer answerPlace(const WindowRef &window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_NCCALCSIZE: {
    RECT &rect = wParam ? recordAt<NCCALCSIZE_PARAMS>(lParam).rgrc[0] : recordAt<RECT>(lParam);
    rect = clientWithin(rect, window->style, window->exStyle);
    return 0;
  }
  case WM_NCHITTEST: return hitTest(*window, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
  case WM_NCPAINT: drawFrame(*window); return 0;
  case WM_NCACTIVATE: return TRUE;
  case WM_WINDOWPOSCHANGING: limitChange(window, recordAt<WINDOWPOS>(lParam)); return 0;
  case WM_WINDOWPOSCHANGED: sendSizeAndMove(window, recordAt<WINDOWPOS>(lParam).flags); return 0;
  case WM_ERASEBKGND: return eraseBackground(window, wParam);
  case WM_PAINT: {
    PAINTSTRUCT paint;
    BeginPaint(window->handle, &paint);
    EndPaint(window->handle, &paint);
    return 0;
  }
  case WM_SETREDRAW: return setRedraw(window, wParam);
  case WM_QUERYOPEN: return TRUE;
  case WM_CLOSE: DestroyWindow(window->handle); return 0;
  default: return std::nullopt;
  }
}

// Messages about the title bar.
Answer answerTitle(const WindowRef &window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_NCCREATE: {
    const LPCSTR name = recordAt<CREATESTRUCTA>(lParam).lpszName;
    window->text = name ? name : "";
    return TRUE;
  }
  case WM_SETTEXT: return setText(*window, lParam);
  case WM_GETTEXT: return getText(*window, wParam, lParam);
  case WM_GETTEXTLENGTH: return static_cast<LRESULT>(window->text.size());
  case WM_SETICON: {
    if (wParam > 1) return 0;
    const HICON old = window->icons[wParam];
    window->icons[wParam] = reinterpret_cast<HICON>(lParam);
    lookOnScreen(*window);
    return reinterpret_cast<LRESULT>(old);
  }
  case WM_GETICON: return wParam > 1 ? 0 : reinterpret_cast<LRESULT>(window->icons[wParam]);
  default: return std::nullopt;
  }
}

LRESULT frameClickedTwice(const WindowRef &window, WPARAM hit, LPARAM at) {
  if (hit == HTVSCROLL || hit == HTHSCROLL) return framePressed(window, hit, at);
  if (hit == HTCAPTION && window->is(WS_MAXIMIZEBOX))
    send(window, WM_SYSCOMMAND, window->is(WS_MAXIMIZE) ? SC_RESTORE : SC_MAXIMIZE, at);
  return 0;
}

LRESULT askForMenu(const WindowRef &window, LPARAM at) {
  const POINT origin = clientOrigin(*window);
  send(window, WM_CONTEXTMENU, wParamOf(window->handle),
       lParamOf(GET_X_LPARAM(at) + origin.x, GET_Y_LPARAM(at) + origin.y));
  return 0;
}

Answer answerInput(const WindowRef &window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_ACTIVATE:
    if (LOWORD(wParam) != WA_INACTIVE && !window->is(WS_MINIMIZE)) setFocus(window);
    return 0;
  case WM_MOUSEACTIVATE: return mouseActivate(window, wParam, lParam);
  case WM_SETCURSOR: return chooseCursor(window, wParam, lParam);
  case WM_CANCELMODE:
    if (window->queue->capture == window->handle) setCapture(*window->queue, nullptr);
    return 0;
  case WM_SYSCOMMAND: return command(window, wParam, lParam);
  case WM_SYSKEYDOWN: return systemKeyDown(window, wParam, lParam);
  case WM_KEYUP:
  case WM_SYSKEYUP: return keyUp(window, wParam);
  case WM_SYSCHAR: return systemCharacter(window, wParam, lParam);
  case WM_NCLBUTTONDOWN: return framePressed(window, wParam, lParam);
  case WM_NCLBUTTONDBLCLK: return frameClickedTwice(window, wParam, lParam);
  case WM_RBUTTONUP: return askForMenu(window, lParam);
  case WM_CONTEXTMENU:
  case WM_MOUSEWHEEL: return window->isChild() ? send(refOf(window->parent), message, wParam, lParam) : 0;
  default: return std::nullopt;
  }
}

} // namespace

} // namespace platform

using namespace platform;

LRESULT DefWindowProcA(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  return locked<LRESULT>(0, [&]() -> LRESULT {
    const WindowRef window = windowOf(handle);
    if (!window) return 0;
    for (const auto answer : {answerInput, answerPlace, answerTitle})
      if (const Answer answered = answer(window, message, wParam, lParam)) return *answered;
    return 0;
  });
}

LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return procedure ? procedure(window, message, wParam, lParam) : 0;
}
