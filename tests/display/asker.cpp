// Asks for files as a program does, and writes what comes of it on standard output.
//   asker KIND TITLE [FOLDER]   KIND: open, several, save, folder; listen and change have a hook; cancel, quit end it
// Lines: what is seen of the dialog while it is open, what the hook and the callback hear, and "done RESULT ERROR
// CHOICE".

#include "platform/platform.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace {

HWND owner;
std::string kind;
int refusals = 1;
const char *captionByCallback;

void tell(const std::string &line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

// The dialog of this thread: one that is seen, or one that only stands for another.
HWND dialog() {
  for (HWND window = GetWindow(GetDesktopWindow(), GW_CHILD); window; window = GetWindow(window, GW_HWNDNEXT)) {
    char name[32] = "";
    GetClassNameA(window, name, sizeof name);
    if (std::string(name) == "#32770") return window;
  }
  return nullptr;
}

void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
  static int ticks;
  static HWND told;
  const HWND window = dialog();
  if (!window) return;
  if (window != told) {
    char caption[80] = "";
    GetWindowTextA(window, caption, sizeof caption);
    tell(std::string(IsWindowVisible(window) ? "seen" : "unseen") + (IsWindowEnabled(owner) ? ", owner enabled" : "") +
         (GetWindow(window, GW_OWNER) == owner ? ", owned " : ", ") + caption);
    told = window;
    ticks = 0;
  }
  if (++ticks < 5) return;
  if (kind == "quit") PostQuitMessage(7);
  const bool asks = GetDlgItem(window, IDYES) != nullptr;
  const int answer = !asks ? IDCANCEL : refusals-- > 0 ? IDNO : IDYES;
  if (kind == "cancel" || IsWindowVisible(window)) PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(answer), 0);
  ticks = 0;
}

UINT_PTR CALLBACK hook(HWND window, UINT message, WPARAM, LPARAM lParam) {
  if (message != WM_NOTIFY) return 0;
  const UINT code = reinterpret_cast<OFNOTIFYA *>(lParam)->hdr.code;
  if (code == CDN_INITDONE) tell("hook begins");
  if (code == CDN_INITDONE && kind == "change")
    CreateWindowExA(0, "asker", "", WS_CHILD | WS_VISIBLE, 0, 0, 9, 9, window, nullptr, nullptr, nullptr);
  if (code != CDN_FILEOK) return 0;
  char path[MAX_PATH] = "";
  SendMessageA(GetParent(window), CDM_GETSPEC, sizeof path, reinterpret_cast<LPARAM>(path));
  tell("hook hears " + std::string(path));
  if (refusals-- <= 0) return 0;
  SetWindowLongPtrA(window, DWLP_MSGRESULT, 1);
  return 1;
}

int CALLBACK browsed(HWND window, UINT message, LPARAM list, LPARAM data) {
  char path[MAX_PATH] = "";
  if (message == BFFM_INITIALIZED) {
    SendMessageA(window, BFFM_SETSELECTIONA, TRUE, data);
    SetWindowTextA(window, captionByCallback);
  } else if (message == BFFM_SELCHANGED && SHGetPathFromIDListA(reinterpret_cast<LPCITEMIDLIST>(list), path)) {
    tell("callback hears " + std::string(path));
  }
  return 0;
}

int askFolder(const char *title, const char *folder) {
  BROWSEINFOA how{};
  how.hwndOwner = owner;
  how.lpszTitle = title;
  if (folder) {
    how.lpszTitle = "prompt";
    captionByCallback = title;
    how.lpfn = browsed, how.lParam = reinterpret_cast<LPARAM>(folder);
  }
  const LPITEMIDLIST list = SHBrowseForFolderA(&how);
  char path[MAX_PATH] = "";
  if (list) SHGetPathFromIDListA(list, path);
  tell("done " + std::to_string(list != nullptr) + " 0 " + path);
  return 0;
}

int askFiles(const char *title, const char *folder) {
  char files[600] = "given.wav";
  OPENFILENAMEA choice{};
  choice.lStructSize = sizeof choice;
  choice.hwndOwner = owner;
  choice.lpstrFilter = "Wave\0*.wav;*.aif\0All\0*.*\0";
  choice.nFilterIndex = 2;
  choice.lpstrFile = files;
  choice.nMaxFile = kind == "small" ? 4 : sizeof files;
  if (kind == "small") files[0] = 0;
  choice.lpstrTitle = title;
  choice.lpstrInitialDir = folder;
  choice.lpstrDefExt = "dat";
  choice.lpfnHook = hook;
  choice.Flags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY;
  if (kind == "several") choice.Flags |= OFN_ALLOWMULTISELECT;
  if (kind == "listen" || kind == "change") choice.Flags |= OFN_ENABLEHOOK;
  const BOOL chosen = (kind == "save" ? GetSaveFileNameA : GetOpenFileNameA)(&choice);
  std::string all;
  if (chosen)
    for (const char *at = files; *at; at += std::strlen(at) + 1) {
      all += (all.empty() ? "" : "|") + std::string(at);
      if (kind != "several") break;
    }
  tell("done " + std::to_string(chosen) + " " + std::to_string(CommDlgExtendedError()) + " " + all);
  if (chosen) tell("name at " + std::to_string(choice.nFileOffset) + ", filter " + std::to_string(choice.nFilterIndex));
  if (chosen && kind == "open")
    if (FILE *const file = platformOpenStream(files, "rb")) tell("opened"), std::fclose(file);
  return 0;
}

} // namespace

int main(int argc, char *argv[]) {
  if (argc < 3) return 2;
  kind = argv[1];
  WNDCLASSA made{};
  made.lpfnWndProc = DefWindowProcA;
  made.lpszClassName = "asker";
  RegisterClassA(&made);
  owner = CreateWindowExA(0, "asker", "asker", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 300, 200, nullptr, nullptr,
                          nullptr, nullptr);
  SetTimer(nullptr, 0, 40, tick);
  const char *const folder = argc > 3 ? argv[3] : nullptr;
  return kind == "folder" ? askFolder(argv[2], folder) : askFiles(argv[2], folder);
}
