#include "platform/desktop/dialogs/clip.h"

#include "platform/winapi/clipboard.h"
#include "platform/winapi/memory.h"

#include <cstring>

namespace platform {

void copyText(HWND window, const std::string &text) {
  if (text.empty() || !OpenClipboard(window)) return;
  EmptyClipboard();
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
  if (void *const room = GlobalLock(memory)) {
    std::memcpy(room, text.c_str(), text.size() + 1);
    GlobalUnlock(memory);
    if (!SetClipboardData(CF_TEXT, memory)) GlobalFree(memory);
  }
  CloseClipboard();
}

std::string pastedText(HWND window) {
  if (!OpenClipboard(window)) return "";
  const HANDLE memory = GetClipboardData(CF_TEXT);
  std::string text;
  if (const void *const words = memory ? GlobalLock(memory) : nullptr) {
    text.assign(static_cast<const char *>(words), strnlen(static_cast<const char *>(words), GlobalSize(memory)));
    GlobalUnlock(memory);
  }
  CloseClipboard();
  return text;
}

} // namespace platform
