// Message boxes, opened and answered.

#include "desktop/desktop.h"

#ifndef _WIN32
#include "platform/testing.h"
#endif

namespace {

int answered;

// Whoever sees boxes or not, they stay open until they are answered here.
void keepOpen([[maybe_unused]] BOOL open) {
#ifndef _WIN32
  platformKeepDialogsOpen(open);
#endif
}

int answer(WqWnd *, WqMsg *message) {
  if (message->msg != WM_APP) return 0;
  ++answered;
  SendMessageA(GetActiveWindow(), WM_COMMAND, IDYES, 0);
  return 1;
}

double openAndClose() {
  WqWnd owner;
  WqWnd_Init(&owner);
  owner.rect = {0, 0, 300, 200};
  WqWnd_Style(&owner, WS_POPUP | WS_VISIBLE);
  require(WqWnd_Create(&owner) != nullptr, "a window cannot be made");
  owner.userProc = answer;
  WqWnd_WaitQueEmpty();
  keepOpen(TRUE);
  int shown = 0;
  const double seconds = secondsPerIteration([&] {
    ++shown;
    PostMessageA(owner.hwnd, WM_APP, 0, 0);
    require(MessageBoxA(owner.hwnd, "A text of a line", "Caption", MB_YESNO | MB_ICONQUESTION) == IDYES,
            "a box was answered otherwise");
  });
  keepOpen(FALSE);
  require(answered == shown, "a box was not answered");
  DestroyWindow(owner.hwnd);
  WqWnd_WaitQueEmpty();
  return seconds;
}

} // namespace

void addBoxes(std::vector<Subject> &subjects) { subjects.push_back({"message box opened and answered", openAndClose}); }
