// What the user does. Actions come from Qt's windows, or from mouse_event and keybd_event; they wait in a queue of their
// own, and become messages when a thread asks for one: only then is it known which window they concern.

#include "platform/desktop/input.h"

#include "platform/desktop/desktop.h"
#include "platform/desktop/focus.h"
#include "platform/desktop/frame.h"
#include "platform/desktop/keys.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/placing.h"
#include "platform/desktop/surface.h"

#include <QCursor>

#include <algorithm>

namespace platform {

namespace {

constexpr UINT kDoubleClickTime = 500;

// The cursor, and the keys and buttons as they are now; queues hold them as of their last message.
POINT cursor{-1, -1};
std::array<BYTE, 256> keysNow{};
std::array<bool, 256> pressedSince{}; // for GetAsyncKeyState

struct Button {
  UINT down, up, doubleClick;
  BYTE key;
  WPARAM flag;
};
constexpr Button kButtons[] = {{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, VK_LBUTTON, MK_LBUTTON},
                               {WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK, VK_RBUTTON, MK_RBUTTON},
                               {WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK, VK_MBUTTON, MK_MBUTTON}};

bool isDown(const std::array<BYTE, 256> &keys, int key) { return keys[static_cast<size_t>(key)] & 0x80; }

WPARAM mouseFlags(const Queue &queue) {
  WPARAM flags = 0;
  for (const Button &button : kButtons)
    if (isDown(queue.keys, button.key)) flags |= button.flag;
  if (isDown(queue.keys, VK_SHIFT)) flags |= MK_SHIFT;
  if (isDown(queue.keys, VK_CONTROL)) flags |= MK_CONTROL;
  return flags;
}

void press(std::array<BYTE, 256> &keys, BYTE key, bool down) {
  BYTE &state = keys[key];
  if (down && !(state & 0x80)) state ^= 1;
  state = static_cast<BYTE>(down ? state | 0x80 : state & 0x7F);
}

// A key with its general form: VK_LSHIFT is VK_SHIFT too.
void pressBoth(std::array<BYTE, 256> &keys, BYTE key, bool down) {
  press(keys, key, down);
  for (const auto &[left, right, both] :
       {std::array{VK_LSHIFT, VK_RSHIFT, VK_SHIFT}, std::array{VK_LCONTROL, VK_RCONTROL, VK_CONTROL},
        std::array{VK_LMENU, VK_RMENU, VK_MENU}}) {
    if (key == left || key == right)
      press(keys, static_cast<BYTE>(both), isDown(keys, left) || isDown(keys, right));
    else if (key == both)
      press(keys, static_cast<BYTE>(left), down);
  }
}

const Button *buttonOf(UINT message) {
  for (const Button &button : kButtons)
    if (message == button.down || message == button.up) return &button;
  return nullptr;
}

void applyKeys(std::array<BYTE, 256> &keys, const Input &input) {
  if (input.kind == Input::Kind::key) {
    pressBoth(keys, input.key, input.message == WM_KEYDOWN);
  } else if (const Button *button = input.kind == Input::Kind::mouse ? buttonOf(input.message) : nullptr) {
    press(keys, button->key, input.message == button->down);
  }
}

bool takesPart(const Window &window) {
  if (!window.is(WS_VISIBLE)) return false;
  if (window.isChild() && window.is(WS_DISABLED)) return false;
  return !((window.exStyle & WS_EX_LAYERED) && (window.exStyle & WS_EX_TRANSPARENT));
}

// The windows under a point from the innermost to the outermost, to be asked in turn. point: in client coordinates of the
// parent.
void collectAt(const Window &window, POINT point, std::vector<WindowRef> &found) {
  for (const Window *child : window.children) {
    if (!takesPart(*child) || !contains(child->rect, point)) continue;
    if (!child->is(WS_MINIMIZE) && !child->is(WS_DISABLED) && contains(child->client, point))
      collectAt(*child, {point.x - child->client.left, point.y - child->client.top}, found);
    found.push_back(refOf(child));
  }
}

void addText(Queue &queue, HWND window, const std::string &text) {
  for (const char c : text) post(queue, messageFor(window, WM_CHAR, static_cast<BYTE>(c), 1));
}

// Whether a press at the same place shortly after another makes a double click.
bool isDoubleClick(Queue &queue, const Window &window, UINT message, LRESULT hit, const Input &input) {
  const MSG &last = queue.lastClick;
  const bool twice = (hit != HTCLIENT || (window.windowClass->style & CS_DBLCLKS)) && last.message == message &&
                     last.hwnd == window.handle && input.time - last.time < kDoubleClickTime &&
                     std::abs(last.pt.x - input.at.x) < GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
                     std::abs(last.pt.y - input.at.y) < GetSystemMetrics(SM_CYDOUBLECLK) / 2;
  queue.lastClick = {};
  if (!twice) {
    queue.lastClick.hwnd = window.handle;
    queue.lastClick.message = message;
    queue.lastClick.time = input.time;
    queue.lastClick.pt = input.at;
  }
  return twice;
}

// What a press brings with it: the parents hear of it, and the window's top-level window becomes active.
// Result: whether the press itself comes through.
bool announcePress(const WindowRef &window, UINT message, LRESULT hit, POINT at) {
  for (WindowRef child = window; child && child->alive && child->isChild(); child = refOf(child->parent)) {
    if (child->exStyle & WS_EX_NOPARENTNOTIFY) break;
    const WindowRef parent = refOf(child->parent);
    const POINT origin = clientOrigin(*parent);
    send(parent, WM_PARENTNOTIFY, message, lParamOf(at.x - origin.x, at.y - origin.y));
  }
  if (!window->alive) return false;
  if (window.get() == window->queue->active) return true;
  const WindowRef root = refOf(&rootOf(*window));
  const LRESULT answer = send(window, WM_MOUSEACTIVATE, wParamOf(root->handle),
                              lParamOf(static_cast<LONG>(hit), static_cast<LONG>(message)));
  const bool activates = answer != MA_NOACTIVATE && answer != MA_NOACTIVATEANDEAT;
  if (activates && root->alive && root.get() != window->queue->active && !(root->exStyle & WS_EX_NOACTIVATE))
    activate(root, true, true);
  return window->alive && answer != MA_ACTIVATEANDEAT && answer != MA_NOACTIVATEANDEAT;
}

// The message of an action of the mouse. Nothing when it comes to nobody.
std::optional<MSG> mouseMessage(Queue &queue, const Input &input, bool remove) {
  LRESULT hit = HTCLIENT;
  const WindowRef captured = refOf(queue.capture);
  WindowRef window = captured ? captured : windowAt(input.at, hit);
  UINT message = input.message;
  const Button *button = buttonOf(message);
  const bool pressed = button && message == button->down;

  if (Window *left = queue.tracked; left && left != window.get() && remove) {
    queue.tracked = nullptr;
    post(queue, messageFor(left->handle, WM_MOUSELEAVE, 0, 0));
  }
  if (!window || window->queue.get() != &queue) return std::nullopt;
  if (hit == HTERROR || hit == HTNOWHERE) {
    if (remove) send(window, WM_SETCURSOR, wParamOf(window->handle), lParamOf(HTERROR, static_cast<LONG>(message)));
    return std::nullopt;
  }
  if (remove) {
    applyKeys(queue.keys, input);
    if (pressed && isDoubleClick(queue, *window, message, hit, input)) message = button->doubleClick;
  }
  const UINT shown = hit == HTCLIENT ? message : message - WM_MOUSEFIRST + WM_NCMOUSEMOVE;
  if (remove && !captured) {
    if (pressed && !announcePress(window, message, hit, input.at)) return std::nullopt;
    if (window->alive)
      send(window, WM_SETCURSOR, wParamOf(window->handle), lParamOf(static_cast<LONG>(hit), static_cast<LONG>(shown)));
    if (!window->alive) return std::nullopt;
  }
  POINT at = input.at;
  if (hit == HTCLIENT) {
    const POINT origin = clientOrigin(*window);
    at = {at.x - origin.x, at.y - origin.y};
  }
  MSG made = messageFor(window->handle, shown, hit == HTCLIENT ? mouseFlags(queue) : static_cast<WPARAM>(hit),
                        lParamOf(at.x, at.y));
  made.time = input.time;
  made.pt = input.at;
  return made;
}

std::optional<MSG> wheelMessage(Queue &queue, const Input &input) {
  const WindowRef window = refOf(queue.focus ? queue.focus : queue.active);
  if (!window) return std::nullopt;
  MSG made = messageFor(window->handle, WM_MOUSEWHEEL,
                        MAKEWPARAM(mouseFlags(queue), static_cast<WORD>(static_cast<short>(input.delta))),
                        lParamOf(input.at.x, input.at.y));
  made.time = input.time;
  made.pt = input.at;
  return made;
}

std::optional<MSG> keyMessage(Queue &queue, const Input &input, bool remove) {
  const WindowRef window = refOf(queue.focus ? queue.focus : queue.active);
  const bool down = input.message == WM_KEYDOWN;
  const bool wasDown = isDown(queue.keys, input.key);
  const bool alt = isDown(queue.keys, VK_MENU) || (down && input.key == VK_MENU);
  const bool control = isDown(queue.keys, VK_CONTROL);
  if (remove) {
    applyKeys(queue.keys, input);
    queue.typed = input.text;
    queue.hasTyped = input.typed;
  }
  if (!window) return std::nullopt;
  // Alt goes up as a key of the system only when it was pressed alone
  const bool released = !down && input.key == VK_MENU;
  const bool system = !queue.focus || (released ? queue.altAlone : alt && !control) || (down && input.key == VK_F10);
  if (remove && down) queue.altAlone = input.key == VK_MENU;
  LPARAM details = 1 | static_cast<LPARAM>(input.scan) << 16;
  if (alt && !released && input.key != VK_F10) details |= 1 << 29;
  if (wasDown) details |= 1 << 30;
  if (!down) details |= static_cast<LPARAM>(UINT32_C(1) << 31);
  const UINT message = system ? (down ? WM_SYSKEYDOWN : WM_SYSKEYUP) : input.message;
  MSG made = messageFor(window->handle, message, input.key, static_cast<LPARAM>(static_cast<LONG>(details)));
  made.time = input.time;
  return made;
}

std::optional<MSG> messageOf(Queue &queue, const Input &input, bool remove) {
  switch (input.kind) {
  case Input::Kind::mouse: return mouseMessage(queue, input, remove);
  case Input::Kind::wheel: return wheelMessage(queue, input);
  case Input::Kind::key: return keyMessage(queue, input, remove);
  case Input::Kind::text:
    if (queue.focus && remove) addText(queue, queue.focus->handle, input.text);
    return std::nullopt;
  }
  return std::nullopt;
}

// The thread whose windows an action concerns.
std::shared_ptr<Queue> receiver(const Input &input) {
  if (input.kind == Input::Kind::mouse) {
    if (currentQueue()->capture) return currentQueue();
    std::vector<WindowRef> found;
    collectAt(desktopWindow(), input.at, found);
    return found.empty() ? currentQueue() : found.front()->queue;
  }
  const WindowRef front = windowOrNone(GetForegroundWindow());
  return front ? front->queue : currentQueue();
}

} // namespace

POINT cursorPosition() {
  if (cursor.x < 0 && cursor.y < 0) {
    const SIZE screen = screenSize();
    cursor = {screen.cx / 2, screen.cy / 2};
  }
  return cursor;
}

void addInput(Input input) {
  input.time = GetTickCount();
  if (input.kind == Input::Kind::mouse) cursor = input.at;
  applyKeys(keysNow, input);
  if (input.kind == Input::Kind::key && input.message == WM_KEYDOWN) pressedSince[input.key] = true;
  Queue &queue = *receiver(input);
  const bool moves = input.kind == Input::Kind::mouse && input.message == WM_MOUSEMOVE;
  if (moves && !queue.input.empty() && queue.input.back().kind == Input::Kind::mouse &&
      queue.input.back().message == WM_MOUSEMOVE)
    queue.input.back() = std::move(input); // only the last place counts
  else
    queue.input.push_back(std::move(input));
  queue.wake();
}

WindowRef windowAt(POINT point, LRESULT &hit) {
  std::vector<WindowRef> found;
  collectAt(desktopWindow(), point, found);
  hit = HTNOWHERE;
  for (const WindowRef &window : found) {
    if (!window->alive) continue;
    if (window->is(WS_DISABLED)) {
      hit = HTERROR;
      return window;
    }
    if (window->queue != currentQueue()) {
      hit = HTCLIENT;
      return window;
    }
    hit = send(window, WM_NCHITTEST, 0, lParamOf(point.x, point.y));
    if (hit != HTTRANSPARENT) return window;
  }
  return nullptr;
}

bool takeInputMessage(Queue &queue, const std::function<bool(HWND, UINT)> &wants, bool remove, MSG &message) {
  for (size_t at = 0; at < queue.input.size();) {
    const Input input = queue.input[at];
    const std::optional<MSG> seen = messageOf(queue, input, false);
    if (seen && !wants(seen->hwnd, seen->message)) {
      ++at;
      continue;
    }
    if (!remove && seen) {
      message = *seen;
      return true;
    }
    if (at < queue.input.size()) queue.input.erase(queue.input.begin() + static_cast<ptrdiff_t>(at));
    const std::optional<MSG> made = messageOf(queue, input, true);
    if (!made) {
      if (!queue.posted.empty()) return false; // typed text
      continue;
    }
    message = *made;
    return true;
  }
  return false;
}

} // namespace platform

using namespace platform;

BOOL GetCursorPos(POINT *point) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!point) return FALSE;
    *point = cursorPosition();
    return TRUE;
  });
}

BOOL SetCursorPos(int x, int y) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const SIZE screen = screenSize();
    Input input;
    input.kind = Input::Kind::mouse;
    input.message = WM_MOUSEMOVE;
    input.at = {std::clamp<LONG>(x, 0, screen.cx - 1), std::clamp<LONG>(y, 0, screen.cy - 1)};
    const POINT old = cursorPosition();
    if (hasDisplay()) QCursor::setPos(static_cast<int>(input.at.x), static_cast<int>(input.at.y));
    if (input.at.x != old.x || input.at.y != old.y) addInput(std::move(input));
    return TRUE;
  });
}

SHORT GetKeyState(int key) {
  return locked<SHORT>(0, [&]() -> SHORT {
    const BYTE state = currentQueue()->keys[static_cast<size_t>(key & 0xFF)];
    return static_cast<SHORT>((state & 0x80 ? 0xFF80 : 0) | (state & 1));
  });
}

SHORT GetAsyncKeyState(int key) {
  return locked<SHORT>(0, [&]() -> SHORT {
    const bool since = std::exchange(pressedSince[static_cast<size_t>(key & 0xFF)], false);
    return static_cast<SHORT>((keysNow[static_cast<size_t>(key & 0xFF)] & 0x80 ? 0x8000 : 0) | (since ? 1 : 0));
  });
}

UINT GetDoubleClickTime() { return kDoubleClickTime; }

BOOL TranslateMessage(const MSG *message) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const bool key = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
    if (!key) return message->message == WM_KEYUP || message->message == WM_SYSKEYUP;
    Queue &queue = *currentQueue();
    std::string text = std::exchange(queue.typed, {});
    if (!std::exchange(queue.hasTyped, false)) {
      const auto vk = static_cast<BYTE>(message->wParam);
      const char typed = isDown(queue.keys, VK_CONTROL) && vk >= 'A' && vk <= 'Z'
                             ? static_cast<char>(vk - 'A' + 1)
                             : characterOf(vk, isDown(queue.keys, VK_SHIFT), queue.keys[VK_CAPITAL] & 1);
      if (typed) text = typed;
    }
    const UINT kind = message->message == WM_KEYDOWN ? WM_CHAR : WM_SYSCHAR;
    for (const char c : text) post(queue, messageFor(message->hwnd, kind, static_cast<BYTE>(c), message->lParam));
    return TRUE;
  });
}

BOOL TrackMouseEvent(TRACKMOUSEEVENT *event) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef window = event ? windowOf(event->hwndTrack) : nullptr;
    if (!window) return FALSE;
    if (!(event->dwFlags & TME_LEAVE)) return TRUE;
    Queue &queue = *window->queue;
    if (event->dwFlags & TME_CANCEL) {
      if (queue.tracked == window.get()) queue.tracked = nullptr;
      return TRUE;
    }
    LRESULT hit;
    if (windowAt(cursorPosition(), hit) == window)
      queue.tracked = window.get();
    else
      post(queue, messageFor(window->handle, WM_MOUSELEAVE, 0, 0)); // it isn't there any more
    return TRUE;
  });
}

HWND WindowFromPoint(POINT point) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    LRESULT hit;
    const WindowRef found = windowAt(point, hit);
    return found ? found->handle : desktopWindow().handle;
  });
}

HWND ChildWindowFromPoint(HWND parent, POINT point) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef window = windowOf(parent);
    if (!window || !contains(window->clientArea(), point)) return nullptr;
    for (const Window *child : window->children) // hidden and disabled ones too
      if (contains(child->rect, point)) return child->handle;
    return parent;
  });
}

void mouse_event(DWORD flags, DWORD x, DWORD y, DWORD data, ULONG_PTR) {
  locked<int>(0, [&] {
    Input input;
    input.kind = Input::Kind::mouse;
    input.at = cursorPosition();
    if (flags & MOUSEEVENTF_MOVE) {
      const SIZE screen = screenSize();
      auto dx = static_cast<LONG>(x), dy = static_cast<LONG>(y);
      if (flags & MOUSEEVENTF_ABSOLUTE) {
        // the screen is 65536 wide and high
        input.at = {static_cast<LONG>(static_cast<int64_t>(dx) * screen.cx >> 16),
                    static_cast<LONG>(static_cast<int64_t>(dy) * screen.cy >> 16)};
      } else {
        input.at = {input.at.x + std::clamp(dx, -screen.cx, screen.cx),
                    input.at.y + std::clamp(dy, -screen.cy, screen.cy)};
      }
      input.at = {std::clamp<LONG>(input.at.x, 0, screen.cx - 1), std::clamp<LONG>(input.at.y, 0, screen.cy - 1)};
      input.message = WM_MOUSEMOVE;
      addInput(input);
    }
    constexpr std::pair<DWORD, UINT> kActions[] = {
        {MOUSEEVENTF_LEFTDOWN, WM_LBUTTONDOWN},   {MOUSEEVENTF_LEFTUP, WM_LBUTTONUP},
        {MOUSEEVENTF_RIGHTDOWN, WM_RBUTTONDOWN},  {MOUSEEVENTF_RIGHTUP, WM_RBUTTONUP},
        {MOUSEEVENTF_MIDDLEDOWN, WM_MBUTTONDOWN}, {MOUSEEVENTF_MIDDLEUP, WM_MBUTTONUP},
    };
    for (const auto &[flag, message] : kActions) {
      if (!(flags & flag)) continue;
      input.message = message;
      addInput(input);
    }
    if (flags & MOUSEEVENTF_WHEEL) {
      input.kind = Input::Kind::wheel;
      input.delta = static_cast<int>(data);
      addInput(input);
    }
    return 0;
  });
}

void keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR) {
  locked<int>(0, [&] {
    Input input;
    input.kind = Input::Kind::key;
    input.message = flags & KEYEVENTF_KEYUP ? WM_KEYUP : WM_KEYDOWN;
    input.key = key;
    input.scan = static_cast<WORD>(scan | (flags & KEYEVENTF_EXTENDEDKEY ? 0x100 : 0));
    addInput(std::move(input));
    return 0;
  });
}
