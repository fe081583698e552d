// The procedure of a program that is told what happens in a dialog of files. It has a window of its own in the dialog.
#pragma once

#include "platform/desktop/dialogs/dialog.h"

namespace platform {

class FileHook {
 public:
  // Makes the window, and lets the procedure begin.
  void open(HWND dialog, OPENFILENAMEA &choice);
  // Tells it. Result: whether it refuses.
  bool tell(UINT what) const;
  // Whether it has put something into its window.
  bool hasControls() const { return window_ && GetWindow(window_, GW_CHILD); }

 private:
  HWND dialog_ = nullptr, window_ = nullptr;
  OPENFILENAMEA *choice_ = nullptr;
};

} // namespace platform
