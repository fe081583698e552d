// Keys, buttons and moves of the pointer, as the user makes them.
#pragma once

#include "platform/platform.h"

#include <utility>

using Key = std::pair<BYTE, BYTE>; // and its place on the keyboard
constexpr Key kA{'A', 0x1E}, kShift{VK_SHIFT, 0x2A}, kControl{VK_CONTROL, 0x1D}, kAlt{VK_MENU, 0x38};

inline void press(Key key, DWORD flags = 0) { keybd_event(key.first, key.second, flags, 0); }
inline void release(Key key, DWORD flags = 0) { press(key, flags | KEYEVENTF_KEYUP); }
inline void tap(Key key, DWORD flags = 0) { press(key, flags), release(key, flags); }
inline void button(DWORD flags, int data = 0) { mouse_event(flags, 0, 0, static_cast<DWORD>(data), 0); }
inline void click() { button(MOUSEEVENTF_LEFTDOWN), button(MOUSEEVENTF_LEFTUP); }

// Puts the pointer on a point of a client area.
inline void move(HWND window, int x, int y) {
  POINT point{x, y};
  if (ClientToScreen(window, &point)) SetCursorPos(point.x, point.y);
}
