// The pointer, the buttons and the keys as they are now; queues hold them as of their last message.
#pragma once

#include "platform/desktop/messages/queue.h"

namespace platform {

using Keys = std::array<BYTE, 256>; // bit 7 down, bit 0 toggled

struct Devices {
  std::optional<POINT> pointer;
  Serial pointerSerial = 0;                           // of movements by the program
  std::pair<HWND, LPARAM> told;                       // the window that heard of the pointer last, and where
  HWND pointerTop = nullptr;                          // the top-level window that the desktop has seen under it
  bool restsElsewhere = false;                        // perhaps: something has changed where it is
  bool programMoved = false;                          // it last, and the desktop has told nothing since
  std::chrono::steady_clock::time_point pointerAsked; // where it is, of the desktop
  Keys keys{};
  std::array<bool, 256> pressedSince{}; // for GetAsyncKeyState
  uint64_t actions = 0;
  std::weak_ptr<Queue> capturing;
};

Devices &devices();

POINT cursorPosition();

struct Button {
  UINT down, up, doubleClick;
  BYTE key;
  WPARAM flag;
};
// The button of a message; null for another message.
const Button *buttonOf(UINT message);
// MK_... of what is down.
WPARAM mouseFlags(const Keys &keys);

inline bool isDown(const Keys &keys, int key) { return keys[static_cast<size_t>(key)] & 0x80; }
// Of keys of which there are two the one that stands for either, which messages carry.
BYTE generalKey(BYTE key);
// Presses or releases what an action does.
void applyKeys(Keys &keys, const Input &input);

} // namespace platform
