// The clipboard as the program's windows see it: who has it open, who owns it, who is told of changes. Everything here is
// used under the desktop's lock. Waiting gives the lock up, so whatever was looked up before is looked up again.
//
// The desktop's clipboard belongs to one program at a time. As long as that is this one, what lies there is in `content`,
// and the screen only knows the types that it can have; else the screen is asked for the types and data when somebody
// wants to know them.
#pragma once

#include "platform/desktop/clipboard/content.h"
#include "platform/desktop/windows/window.h"

namespace platform {

struct Clipboard {
  ClipContent content;
  bool ofOthers = true;    // another program has put it there
  bool known = false;      // its types are in content
  uint32_t takeovers = 0;  // by others
  Serial offer = 0;        // of what the screen was told last
  bool changed = false;    // since it was opened
  bool takenSince = false; // by another program

  bool open = false;
  HWND openFor = nullptr;
  DWORD opener = 0; // thread
  HWND owner = nullptr;
  int rendering = 0; // promises that the owner is asked for, on its thread
  DWORD sequence = 1;

  std::vector<HWND> listeners;
  HWND viewer = nullptr; // the first of the chain
};

Clipboard &clipboard();

// Whether the calling thread has it open; ERROR_CLIPBOARD_NOT_OPEN is set else.
bool isOpener();
// Asks another program for its types, unless they are known.
void learnTypes();
// The data of a format. Waits for whoever has them. Null when there are none.
HANDLE clipDataFor(UINT format);

// Tells the desktop and the program's windows of a change.
void announceClipboard();
// Sends a window a message, without waiting where another thread handles it.
void tell(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// An owner is about to end: it may keep its promises now.
void settleClipboard(const WindowRef &window);
// A window has ended, or a thread.
void forgetOnClipboard(HWND window);
void closeClipboardOf(DWORD thread);

} // namespace platform
