// The clipboard as the program's windows see it: its opener, its owner, and the windows that are told of changes.
// Everything here is used under the desktop's lock. Waiting gives the lock up, so records must be looked up again after
// a wait.
//
// The desktop's clipboard belongs to one program at a time. While it is this program's, `content` holds the data, and
// the screen knows only their types. Otherwise the screen is asked for types and data when a caller needs them.
#pragma once

#include "platform/desktop/clipboard/content.h"
#include "platform/desktop/windows/window.h"

namespace platform {

struct Clipboard {
  ClipContent content;
  bool ofOthers = true;    // another program has put the content there
  bool known = false;      // content has its types
  uint32_t takeovers = 0;  // by other programs
  Serial offer = 0;        // the last one to the screen
  bool changed = false;    // since it was opened
  bool takenSince = false; // by another program

  bool open = false;
  HWND openFor = nullptr;
  DWORD opener = 0; // the thread that has opened it
  HWND owner = nullptr;
  int rendering = 0; // the number of calls in which the owner gives data it has announced, on its thread
  DWORD sequence = 1;

  std::vector<HWND> listeners;
  HWND viewer = nullptr; // the first window of the viewers' chain
};

Clipboard &clipboard();

// Whether the calling thread has opened the clipboard; if not, ERROR_CLIPBOARD_NOT_OPEN is set.
bool isOpener();
// Asks another program for its types, unless they are known already.
void learnTypes();
// The data of a format. Waits for the owner or another program if necessary. Null if there are no data.
HANDLE clipDataFor(UINT format);

// Tells the desktop and the program's windows that the content has changed.
void announceClipboard();
// Sends a message to a window, without a wait if the window is another thread's.
void tell(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// A window is about to end: if it is the owner, it may keep its promises now.
void settleClipboard(const WindowRef &window);
// Clean up after a window or a thread that has ended.
void forgetOnClipboard(HWND window);
void closeClipboardOf(DWORD thread);

} // namespace platform
