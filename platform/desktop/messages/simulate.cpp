// Input that a program makes in place of the user.

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/devices.h"
#include "platform/desktop/messages/input.h"

#include <algorithm>

using namespace platform;

namespace {

POINT onScreen(LONG x, LONG y) {
  const RECT all = theScreen().info().all;
  return {std::clamp(x, all.left, all.right - 1), std::clamp(y, all.top, all.bottom - 1)};
}

void movePointer(POINT to) {
  devices().programMoved = true;
  theScreen().movePointer(to, ++devices().pointerSerial);
}

} // namespace

BOOL SetCursorPos(int x, int y) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    Input input{Input::Kind::mouse};
    input.message = WM_MOUSEMOVE;
    input.at = onScreen(x, y);
    const POINT old = cursorPosition();
    movePointer(input.at);
    if (input.at.x != old.x || input.at.y != old.y) addInput(std::move(input));
    return TRUE;
  });
}

void mouse_event(DWORD flags, DWORD x, DWORD y, DWORD data, ULONG_PTR) {
  locked<int>(0, [&] {
    Input input{Input::Kind::mouse};
    input.at = cursorPosition();
    if (flags & MOUSEEVENTF_MOVE) {
      const SIZE screen = theScreen().info().size;
      auto dx = static_cast<LONG>(x), dy = static_cast<LONG>(y);
      if (flags & MOUSEEVENTF_ABSOLUTE) {
        // absolute coordinates have 65536 steps across the screen and down it
        input.at = onScreen(static_cast<LONG>(static_cast<int64_t>(dx) * screen.cx >> 16),
                            static_cast<LONG>(static_cast<int64_t>(dy) * screen.cy >> 16));
      } else {
        constexpr LONG kFarthest = 1 << 20;
        input.at = onScreen(input.at.x + std::clamp(dx, -kFarthest, kFarthest),
                            input.at.y + std::clamp(dy, -kFarthest, kFarthest));
      }
      input.message = WM_MOUSEMOVE;
      movePointer(input.at);
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
      input.message = WM_MOUSEWHEEL;
      input.delta = static_cast<int>(data);
      addInput(input);
    }
    return 0;
  });
}

void keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR) {
  locked<int>(0, [&] {
    Input input{Input::Kind::key};
    input.message = flags & KEYEVENTF_KEYUP ? WM_KEYUP : WM_KEYDOWN;
    input.key = key;
    input.scan = static_cast<WORD>(scan | (flags & KEYEVENTF_EXTENDEDKEY ? 0x100 : 0));
    addInput(std::move(input));
    return 0;
  });
}
