// The dialogs for files, and the record with their texts.

#include "windows/windows.h"

#include "files/files.h"
#include "frame/main.h"
#include "text/double_byte.h"

#include <cstring>

namespace {

constexpr size_t kText = sizeof WqFileDialog::fileName;

UINT_PTR CALLBACK ignore(HWND, UINT, WPARAM, LPARAM) { return 0; }

// Copies as many whole characters as fit.
template <size_t size> void copy(char (&to)[size], const char *text) {
  const size_t length = wqFittingLength(text, size - 1);
  std::memcpy(to, text, length);
  to[length] = '\0';
}

// Appends bytes to the filter. The caller leaves a byte for the end of the list.
void append(WqFileDialog *dialog, const char *text, size_t length) {
  std::memcpy(dialog->filterEnd, text, length);
  dialog->filterEnd += length;
}

// Restores the current folder at the end of the scope: a dialog may change it.
class KeepsFolder {
 public:
  KeepsFolder() { GetCurrentDirectoryA(sizeof folder_, folder_); }
  ~KeepsFolder() { SetCurrentDirectoryA(folder_); }
  KeepsFolder(const KeepsFolder &) = delete;
  KeepsFolder &operator=(const KeepsFolder &) = delete;

 private:
  char folder_[kText] = "";
};

} // namespace

void WqFileDialog_Init(WqFileDialog *dialog) {
  *dialog = {};
  dialog->ofn.lpstrTitle = dialog->title;
  dialog->ofn.lpstrFile = dialog->fileName;
  dialog->ofn.lpstrDefExt = dialog->defExt;
  dialog->ofn.lpstrInitialDir = dialog->dir;
  dialog->ofn.lpstrFilter = dialog->filter;
  dialog->filterEnd = dialog->filter;
  GetCurrentDirectoryA(sizeof dialog->dir, dialog->dir);
}

void WqFileDialog_Term(WqFileDialog *) {}

void WqFileDialog_SetOC(WqFileDialog *dialog, uint32_t mode) { WqFileDialog_SetOCEx(dialog, mode, 0); }

void WqFileDialog_SetOCEx(WqFileDialog *dialog, uint32_t mode, uint32_t flags) {
  if (!dialog) return;
  dialog->mode = mode & (WQ_FILEDIALOG_OPEN | WQ_FILEDIALOG_KEPT);
  OPENFILENAMEA &ofn = dialog->ofn;
  ofn.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
  ofn.hwndOwner = wqMain.mainWnd;
  ofn.hInstance = nullptr;
  ofn.nMaxFile = kText;
  ofn.nMaxFileTitle = kText;
  ofn.lpfnHook = ignore;
  ofn.Flags = OFN_HIDEREADONLY | OFN_ENABLEHOOK | OFN_FILEMUSTEXIST | OFN_NONETWORKBUTTON | OFN_EXPLORER | flags;
  if (!(mode & WQ_FILEDIALOG_OPEN)) ofn.Flags |= OFN_OVERWRITEPROMPT;
}

void WqFileDialog_Title(WqFileDialog *dialog, const char *text) {
  if (dialog && text) copy(dialog->title, text);
}

void WqFileDialog_FileName(WqFileDialog *dialog, const char *text) {
  if (dialog && text) copy(dialog->fileName, text);
}

void WqFileDialog_Dir(WqFileDialog *dialog, const char *text) {
  if (dialog && text) copy(dialog->dir, text);
}

void WqFileDialog_AddExt(WqFileDialog *dialog, const char *name, const char *extension, int32_t isDefault) {
  if (!dialog || !name || !extension) return;
  if (isDefault) copy(dialog->defExt, extension);
  const size_t named = std::strlen(name), length = std::strlen(extension);
  const auto used = static_cast<size_t>(dialog->filterEnd - dialog->filter);
  if (used + named + 2 * length + 8 > sizeof dialog->filter - 1) return;
  append(dialog, name, named);
  append(dialog, "(*.", 3);
  append(dialog, extension, length);
  append(dialog, ")", 2);
  append(dialog, "*.", 2);
  append(dialog, extension, length + 1);
}

int WqFileDialog_Show(WqFileDialog *dialog) {
  if (dialog->mode & WQ_FILEDIALOG_SHOWN) return 0;
  char before[kText];
  std::memcpy(before, dialog->fileName, kText);
  dialog->mode |= WQ_FILEDIALOG_SHOWN;
  int chosen = 0;
  {
    const KeepsFolder kept;
    chosen = (dialog->mode & WQ_FILEDIALOG_OPEN ? GetOpenFileNameA : GetSaveFileNameA)(&dialog->ofn);
  }
  EnableWindow(wqMain.mainWnd, TRUE);
  SetFocus(wqMain.mainWnd);
  dialog->mode &= ~WQ_FILEDIALOG_SHOWN;
  if (chosen)
    WqDir_GetFromPath(dialog->fileName, dialog->dir);
  else
    std::memcpy(dialog->fileName, before, kText);
  return chosen;
}

int WqFileDialog_IsReadOnly(const WqFileDialog *dialog) { return dialog->ofn.Flags & OFN_READONLY ? 1 : 0; }
