// The user's input. Actions come from the screen, or from mouse_event and keybd_event, and wait in a queue. An action
// becomes a message only when a thread asks for one, since only then its window is known. Finding the window asks
// windows, whose procedures may take messages too. So an action is known by its number, not by its place in the queue.

#include "platform/desktop/messages/input.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"
#include "platform/desktop/messages/devices.h"
#include "platform/desktop/screen/keyboard.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr UINT kDoubleClickTime = 500;

LPARAM pointOf(POINT point) { return static_cast<LPARAM>(MAKELPARAM(point.x, point.y)); }

// ---- Actions of the mouse

// Whether a press makes a double click with the one before it.
bool isDoubleClick(Queue &queue, HWND window, UINT message, LRESULT hit, const Input &input) {
  const MSG &last = queue.lastClick;
  const bool twice = (hit != HTCLIENT || above::takesDoubleClicks(window)) && last.message == message &&
                     last.hwnd == window && input.time - last.time < kDoubleClickTime &&
                     std::abs(last.pt.x - input.at.x) < GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
                     std::abs(last.pt.y - input.at.y) < GetSystemMetrics(SM_CYDOUBLECLK) / 2;
  queue.lastClick = {};
  if (!twice) {
    queue.lastClick.hwnd = window;
    queue.lastClick.message = message;
    queue.lastClick.time = input.time;
    queue.lastClick.pt = input.at;
  }
  return twice;
}

// The window that an action concerns.
struct Target {
  HWND window = nullptr; // null if no window of this thread
  LRESULT hit = HTCLIENT;
  bool captured = false;
};

Target targetOf(Queue &queue, const Input &input) {
  if (input.kind != Input::Kind::mouse) return {queue.focus ? queue.focus : queue.active, HTCLIENT, false};
  if (queue.capture) return {queue.capture, HTCLIENT, true};
  Target target;
  target.window = above::windowAt(input.at, input.top, target.hit);
  if (above::queueOfWindow(target.window) != &queue) target.window = nullptr;
  return target;
}

MSG mouseMessage(Queue &queue, const Input &input, const Target &target) {
  const bool client = target.hit == HTCLIENT;
  POINT at = input.at;
  if (client) {
    const POINT origin = above::clientOrigin(target.window);
    at = {at.x - origin.x, at.y - origin.y};
  }
  const UINT message = client ? input.message : input.message - WM_MOUSEFIRST + WM_NCMOUSEMOVE;
  return messageFor(target.window, message, client ? mouseFlags(queue.keys) : static_cast<WPARAM>(target.hit),
                    pointOf(at));
}

MSG wheelMessage(Queue &queue, const Input &input, HWND window) {
  const auto delta = static_cast<WORD>(static_cast<short>(input.delta));
  return messageFor(window, input.message, MAKEWPARAM(mouseFlags(queue.keys), delta), pointOf(input.at));
}

MSG keyMessage(const Queue &queue, const Input &input, HWND window) {
  const bool down = input.message == WM_KEYDOWN;
  const BYTE key = generalKey(input.key);
  const bool isAlt = key == VK_MENU, isF10 = key == VK_F10;
  const bool alt = isDown(queue.keys, VK_MENU) || (down && isAlt);
  const bool control = isDown(queue.keys, VK_CONTROL);
  // Alt goes up as a system key only if no other key was pressed meanwhile
  const bool system = !queue.focus || isF10 || (!down && isAlt ? queue.altAlone : alt && !control);
  const WORD scan = key == VK_SHIFT ? input.scan & 0xFF : input.scan; // no Shift key counts as extended
  LPARAM details = 1 | static_cast<LPARAM>(scan) << 16;
  if (alt && (down || !isAlt) && !isF10) details |= 1 << 29;
  if (isDown(queue.keys, key)) details |= 1 << 30;
  if (!down) details |= static_cast<LPARAM>(UINT32_C(1) << 31);
  const UINT message = system ? (down ? WM_SYSKEYDOWN : WM_SYSKEYUP) : input.message;
  return messageFor(window, message, key, static_cast<LPARAM>(static_cast<LONG>(details)));
}

// The message that an action would become. Nothing changes by looking.
MSG messageOf(Queue &queue, const Input &input, const Target &target) {
  MSG made{};
  switch (input.kind) {
  case Input::Kind::mouse: made = mouseMessage(queue, input, target); break;
  case Input::Kind::wheel: made = wheelMessage(queue, input, target.window); break;
  case Input::Kind::key: made = keyMessage(queue, input, target.window); break;
  case Input::Kind::text: made = messageFor(target.window, WM_CHAR, 0, 1); break;
  }
  made.time = input.time;
  if (input.kind == Input::Kind::mouse || input.kind == Input::Kind::wheel) made.pt = input.at;
  return made;
}

// Does what comes before a mouse message when it is taken: cursor, activation, double clicks.
// Result: whether the message reaches the program.
bool takeMouse(Queue &queue, const Input &input, const Target &target, MSG &message) {
  const Button *const button = buttonOf(input.message);
  const bool pressed = button && input.message == button->down;
  const LPARAM what = MAKELPARAM(target.hit, input.message);
  if (target.hit == HTERROR || target.hit == HTNOWHERE) {
    above::send(target.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(target.window), what);
    return false;
  }
  devices().told = {target.window, message.lParam};
  applyKeys(queue.keys, input);
  message.wParam = target.hit == HTCLIENT ? mouseFlags(queue.keys) : static_cast<WPARAM>(target.hit);
  if (pressed && isDoubleClick(queue, target.window, input.message, target.hit, input))
    message.message += button->doubleClick - button->down;
  if (target.captured) return true;
  if (pressed && !above::announcePress(target.window, input.message, target.hit, input.at)) return false;
  above::send(target.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(target.window), what);
  return above::queueOfWindow(target.window) != nullptr;
}

void takeKey(Queue &queue, const Input &input) {
  const BYTE key = generalKey(input.key);
  applyKeys(queue.keys, input);
  queue.typed = input.text;
  queue.hasTyped = input.typed;
  if (input.message == WM_KEYDOWN) queue.altAlone = key == VK_MENU;
}

// Result: whether the message reaches the program.
bool takeAction(Queue &queue, const Input &input, const Target &target, MSG &message) {
  switch (input.kind) {
  case Input::Kind::mouse: return takeMouse(queue, input, target, message);
  case Input::Kind::wheel:
    above::send(target.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(target.window),
                MAKELPARAM(HTCLIENT, input.message));
    return above::queueOfWindow(target.window) != nullptr;
  case Input::Kind::key: takeKey(queue, input); return true;
  case Input::Kind::text:
    for (const char c : input.text) post(queue, messageFor(target.window, WM_CHAR, static_cast<BYTE>(c), 1));
    return false;
  }
  return false;
}

// The first action with a higher number.
std::deque<Input>::iterator actionAfter(Queue &queue, uint64_t number) {
  return std::find_if(queue.input.begin(), queue.input.end(),
                      [number](const Input &input) { return input.number > number; });
}

bool eraseAction(Queue &queue, uint64_t number) {
  return std::erase_if(queue.input, [number](const Input &input) { return input.number == number; }) > 0;
}

// The queue of the thread whose windows an action concerns; null for none.
Queue *receiver(const Input &input) {
  if (input.kind != Input::Kind::mouse) {
    if (Queue *const queue = above::keyboardQueue()) return queue;
  } else {
    if (const auto queue = devices().capturing.lock(); queue && queue->capture) return queue.get();
    if (Queue *const queue = above::queueOfWindow(above::placedAt(input.at, input.top))) return queue;
  }
  return input.top ? nullptr : currentQueue().get();
}

} // namespace

void addInput(Input input) {
  Devices &all = devices();
  input.time = GetTickCount();
  input.number = ++all.actions;
  if (input.kind == Input::Kind::mouse) all.pointer = input.at;
  applyKeys(all.keys, input);
  if (input.kind == Input::Kind::key && input.message == WM_KEYDOWN) all.pressedSince[input.key] = true;
  Queue *const queue = receiver(input);
  if (!queue) return;
  const bool moves = input.kind == Input::Kind::mouse && input.message == WM_MOUSEMOVE;
  if (moves && !queue->input.empty() && queue->input.back().kind == Input::Kind::mouse &&
      queue->input.back().message == WM_MOUSEMOVE)
    queue->input.back() = std::move(input); // only the newest place counts
  else
    queue->input.push_back(std::move(input));
  queue->wake();
}

bool takeInputMessage(Queue &queue, const InputFilter &filter, bool remove, MSG &message) {
  uint64_t last = 0; // number of the action in hand
  for (auto at = actionAfter(queue, last); at != queue.input.end(); at = actionAfter(queue, last)) {
    const Input input = *at;
    last = input.number;
    const Target target = targetOf(queue, input);
    if (input.kind == Input::Kind::mouse && queue.tracked && queue.tracked != target.window && remove)
      leaveTracked(queue);
    if (!target.window) {
      if (eraseAction(queue, last)) applyKeys(queue.keys, input);
      continue;
    }
    message = messageOf(queue, input, target);
    if (!filter.wants(message.hwnd, message.message)) continue;
    if (!remove && input.kind != Input::Kind::text) return true;
    if (!eraseAction(queue, last)) continue; // a procedure has taken it meanwhile
    if (takeAction(queue, input, target, message)) return true;
    if (!queue.posted.empty()) return false; // typed characters, or posted by a procedure
  }
  return false;
}

bool pointerIsElsewhere() { return theScreen().isSeen() && !devices().pointerTop && !devices().programMoved; }

void changedUnderPointer() { devices().restsElsewhere = true; }

void goneUnderPointer(HWND window) {
  if (devices().pointerTop == window) devices().pointerTop = nullptr;
}

void lookUnderPointer() {
  if (!std::exchange(devices().restsElsewhere, false) || pointerIsElsewhere()) return;
  const POINT at = cursorPosition();
  const HWND under = above::placedAt(at, devices().pointerTop);
  Queue *const queue = above::queueOfWindow(under);
  if (!queue) return;
  const POINT origin = above::clientOrigin(under);
  if (devices().told == std::pair(under, pointOf({at.x - origin.x, at.y - origin.y}))) return;
  queue->pointerDue = true;
  queue->wake();
}

void moveWhereItIs() {
  Input input{Input::Kind::mouse};
  input.message = WM_MOUSEMOVE;
  input.at = cursorPosition();
  input.top = devices().pointerTop;
  addInput(std::move(input));
}

} // namespace platform

using namespace platform;

UINT GetDoubleClickTime() { return kDoubleClickTime; }

BOOL TranslateMessage(const MSG *message) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const bool key = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
    if (!key) return message->message == WM_KEYUP || message->message == WM_SYSKEYUP;
    Queue &queue = *currentQueue();
    std::string text = std::exchange(queue.typed, {});
    if (!std::exchange(queue.hasTyped, false)) {
      const auto vk = static_cast<BYTE>(message->wParam);
      const bool control = isDown(queue.keys, VK_CONTROL);
      const char typed = control && vk >= 'A' && vk <= 'Z'
                             ? static_cast<char>(vk - 'A' + 1)
                             : characterOf(vk, isDown(queue.keys, VK_SHIFT), queue.keys[VK_CAPITAL] & 1);
      if (typed && !(control && isDown(queue.keys, VK_MENU))) text = typed;
    }
    const UINT kind = message->message == WM_KEYDOWN ? WM_CHAR : WM_SYSCHAR;
    for (const char c : text) post(queue, messageFor(message->hwnd, kind, static_cast<BYTE>(c), message->lParam));
    return TRUE;
  });
}
