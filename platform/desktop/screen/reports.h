// What the desktop tells, as plain records. Windows are top-level ones; places are in the program's pixels.
#pragma once

#include "platform/desktop/screen/screen.h"

#include <variant>

namespace platform {

// The pointer is over a window, or was pressed there and is held.
struct PointerMoved {
  HWND window;
  POINT at;      // on the screen, as the program sees the window's place
  Serial serial; // of the program's last movement of the pointer that the desktop has made
};

struct ButtonChanged {
  HWND window;
  POINT at;
  UINT message; // WM_LBUTTONDOWN ...
};

struct WheelTurned {
  HWND window;
  POINT at;
  int delta; // a multiple or part of WHEEL_DELTA, away from the user
  bool sideways;
};

struct KeyChanged {
  HWND window;
  bool down;
  BYTE key;         // virtual key; 0 for one without a number, which only types
  WORD scan;        // scan code, and bit 8 for an extended key
  std::string text; // that it types, in code page 932
};

struct TextTyped { // by an input method
  HWND window;
  std::string text; // in code page 932
};

struct PointerLeft {
  HWND window;
  POINT at; // outside of it
};

// The pointer is over none of the windows.
struct PointerFound {
  POINT at;
  Serial serial;
};

// The user has moved or sized a window, or the desktop gave it another place than it was told.
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

// Null when another program has the keyboard.
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

// Another program has put something on the clipboard.
struct ClipboardTaken {
  Serial offer; // the program's last one that the desktop has taken
};

// Its size, its panels or its resolution are others than before.
struct ScreenChanged {};

// The desktop has ended. The program will.
struct ScreenGone {};

using Report =
    std::variant<PointerMoved, ButtonChanged, WheelTurned, KeyChanged, TextTyped, PointerLeft, PointerFound, Placed,
                 StateChanged, Activated, CloseAsked, FilesDropped, ClipboardTaken, ScreenChanged, ScreenGone>;

} // namespace platform
