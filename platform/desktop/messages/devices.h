// The current state of pointer, buttons and keys. A queue has its own copy, as of its last message.
#pragma once

#include "platform/desktop/messages/queue.h"

namespace platform {

using Keys = std::array<BYTE, 256>; // bit 7 down, bit 0 toggled

struct Devices {
  std::optional<POINT> pointer;
  Serial pointerSerial = 0;                           // counts the program's movements of the pointer
  std::pair<HWND, LPARAM> told;                       // the window that last got a mouse message, and its place
  HWND pointerTop = nullptr;                          // the top-level window under the pointer, as the desktop sees it
  bool restsElsewhere = false;                        // another window may be under the resting pointer
  bool programMoved = false;                          // the program moved the pointer last; no report since
  std::chrono::steady_clock::time_point pointerAsked; // when the desktop was last asked for its place
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
// The button of a message; null for any other message.
const Button *buttonOf(UINT message);
// The MK_... flags of the pressed buttons and keys.
WPARAM mouseFlags(const Keys &keys);

inline bool isDown(const Keys &keys, int key) { return keys[static_cast<size_t>(key)] & 0x80; }
// The code that messages carry: for one of two like keys, the code for both.
BYTE generalKey(BYTE key);
// Presses or releases the keys of an action.
void applyKeys(Keys &keys, const Input &input);

} // namespace platform
