// The desktop's reports, as plain records. All windows are top-level ones; places are in the program's pixels.
#pragma once

#include "platform/desktop/screen/screen.h"

#include <variant>

namespace platform {

// The pointer is over a window, or a button pressed there is held.
struct PointerMoved {
  HWND window;
  POINT at;      // on the screen, as the program sees the window's place
  Serial serial; // of the program's last pointer movement that reached the desktop
};

struct ButtonChanged {
  HWND window;
  POINT at;
  UINT message; // WM_LBUTTONDOWN ...
};

struct WheelTurned {
  HWND window;
  POINT at;
  int delta; // a multiple or fraction of WHEEL_DELTA, positive away from the user or to the right
  bool sideways;
};

struct KeyChanged {
  HWND window;
  bool down;
  BYTE key;         // virtual key; 0 for a key that only types
  WORD scan;        // scan code, and bit 8 for an extended key
  std::string text; // the characters it types, in code page 932
};

struct TextTyped { // by an input method
  HWND window;
  std::string text; // in code page 932
};

struct PointerLeft {
  HWND window;
  POINT at; // outside the window
};

// The pointer is over none of the program's windows.
struct PointerFound {
  POINT at;
  Serial serial;
};

// The user has moved or sized a window, or the desktop has given it another place than the program wanted.
struct Placed {
  HWND window;
  QRect client;
  Serial serial;
};

struct StateChanged {
  HWND window;
  ShowState state;
  Serial serial;
};

// window: null if another program has the keyboard.
struct Activated {
  HWND window;
  Serial serial;
};

struct CloseAsked {
  HWND window;
};

// The user has dropped files of another program.
struct FilesDropped {
  HWND window;
  POINT at;                       // on the screen, as the program sees the window's place
  std::vector<std::string> files; // full names in code page 932
};

// Another program has taken the clipboard.
struct ClipboardTaken {
  Serial offer; // the program's last offer that reached the desktop
};

// The size, the panels or the resolution of the screen has changed.
struct ScreenChanged {};

// The desktop has ended, so the program will end too.
struct ScreenGone {};

using Report =
    std::variant<PointerMoved, ButtonChanged, WheelTurned, KeyChanged, TextTyped, PointerLeft, PointerFound, Placed,
                 StateChanged, Activated, CloseAsked, FilesDropped, ClipboardTaken, ScreenChanged, ScreenGone>;

} // namespace platform
