// The dialog for a folder.

#include "files/files_private.h"
#include "frame/main.h"

namespace {

char dialogCaption[88]; // for begin()

// Sets the dialog's caption and its first folder. folder: a path.
int CALLBACK begin(HWND dialog, UINT message, LPARAM, LPARAM folder) {
  if (message != BFFM_INITIALIZED) return 0;
  SendMessageA(dialog, BFFM_SETSELECTIONA, TRUE, folder);
  SetWindowTextA(dialog, dialogCaption);
  return 0;
}

void giveBack(LPITEMIDLIST list) {
  IMalloc *allocator = nullptr;
  if (FAILED(SHGetMalloc(&allocator)) || !allocator) return;
  allocator->Free(list);
  allocator->Release();
}

} // namespace

int WqDir_Dlg(const char *folder, const char *caption, const char *prompt, int32_t newStyle, char *chosen) {
  wqJoin(dialogCaption, caption);
  BROWSEINFOA how = {};
  how.hwndOwner = wqMain.mainWnd;
  how.lpszTitle = prompt;
  how.ulFlags = newStyle ? BIF_NEWDIALOGSTYLE : 0;
  how.lpfn = begin;
  how.lParam = reinterpret_cast<LPARAM>(folder);
  const LPITEMIDLIST list = SHBrowseForFolderA(&how);
  if (!list) return 0;
  SHGetPathFromIDListA(list, chosen);
  giveBack(list);
  return 1;
}
