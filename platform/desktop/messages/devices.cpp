#include "platform/desktop/messages/devices.h"

#include "platform/desktop/lock.h"

#include <utility>

namespace platform {

namespace {

constexpr std::chrono::milliseconds kPointerAge(20); // how long a place of the pointer outside the windows counts

constexpr Button kButtons[] = {{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, VK_LBUTTON, MK_LBUTTON},
                               {WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK, VK_RBUTTON, MK_RBUTTON},
                               {WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK, VK_MBUTTON, MK_MBUTTON}};

void press(Keys &keys, BYTE key, bool down) {
  BYTE &state = keys[key];
  if (down && !(state & 0x80)) state ^= 1;
  state = static_cast<BYTE>(down ? state | 0x80 : state & 0x7F);
}

// A key that exists twice, and the code for both.
struct Pair {
  BYTE left, right, both;
};
constexpr Pair kPairs[] = {
    {VK_LSHIFT, VK_RSHIFT, VK_SHIFT}, {VK_LCONTROL, VK_RCONTROL, VK_CONTROL}, {VK_LMENU, VK_RMENU, VK_MENU}};

void pressBoth(Keys &keys, BYTE key, WORD scan, bool down) {
  press(keys, key, down);
  for (const Pair &pair : kPairs) {
    if (key == pair.left || key == pair.right)
      press(keys, pair.both, isDown(keys, pair.left) || isDown(keys, pair.right));
    else if (key == pair.both)
      press(keys, pair.both != VK_SHIFT && (scan & 0x100) ? pair.right : pair.left, down);
  }
}

} // namespace

Devices &devices() {
  static auto *one = new Devices;
  return *one;
}

POINT cursorPosition() {
  Devices &all = devices();
  if (!all.pointer) all.pointer = theScreen().info().pointer;
  return *all.pointer;
}

const Button *buttonOf(UINT message) {
  for (const Button &button : kButtons)
    if (message == button.down || message == button.up) return &button;
  return nullptr;
}

WPARAM mouseFlags(const Keys &keys) {
  WPARAM flags = 0;
  for (const Button &button : kButtons)
    if (isDown(keys, button.key)) flags |= button.flag;
  if (isDown(keys, VK_SHIFT)) flags |= MK_SHIFT;
  if (isDown(keys, VK_CONTROL)) flags |= MK_CONTROL;
  return flags;
}

BYTE generalKey(BYTE key) {
  for (const Pair &pair : kPairs)
    if (key == pair.left || key == pair.right) return pair.both;
  return key;
}

void applyKeys(Keys &keys, const Input &input) {
  if (input.kind == Input::Kind::key)
    pressBoth(keys, input.key, input.scan, input.message == WM_KEYDOWN);
  else if (const Button *button = input.kind == Input::Kind::mouse ? buttonOf(input.message) : nullptr)
    press(keys, button->key, input.message == button->down);
}

} // namespace platform

using namespace platform;

BOOL GetCursorPos(POINT *point) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!point) return FALSE;
    *point = cursorPosition();
    if (!theScreen().isSeen() || devices().pointerTop) return TRUE;
    const auto now = std::chrono::steady_clock::now();
    if (now - devices().pointerAsked < kPointerAge) return TRUE;
    devices().pointerAsked = now;
    theScreen().findPointer();
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
    const auto at = static_cast<size_t>(key & 0xFF);
    const bool since = std::exchange(devices().pressedSince[at], false);
    return static_cast<SHORT>((devices().keys[at] & 0x80 ? 0x8000 : 0) | (since ? 1 : 0));
  });
}
