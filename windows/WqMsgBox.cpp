// Message boxes over the main window.

#include "windows/windows.h"

#include "frame/main.h"

namespace {

constexpr int kTextSize = 256; // bytes of a resource or a window's title, with the NUL

// アプリケーションメッセージ, for a main window without a title
constexpr const char *kNoTitle = "\x83\x41\x83\x76\x83\x8A\x83\x50\x81\x5B\x83\x56\x83\x87\x83\x93"
                                 "\x83\x81\x83\x62\x83\x5A\x81\x5B\x83\x57";

} // namespace

int WqMsgBox_Show(const char *text, const char *caption, uint32_t style) {
  char title[kTextSize] = "";
  if (!caption) {
    GetWindowTextA(wqMain.mainWnd, title, kTextSize);
    caption = title[0] ? title : kNoTitle;
  }
  return MessageBoxA(wqMain.mainWnd, text, caption, style);
}

int WqMsgBox_ShowFromID(uint32_t id, const char *caption, uint32_t style) {
  char text[kTextSize] = "";
  LoadStringA(wqMain.instance, id, text, kTextSize);
  return WqMsgBox_Show(text, caption, style);
}

int WqMsgBox_Information(uint32_t id, const char *caption) {
  return WqMsgBox_ShowFromID(id, caption, MB_TASKMODAL | MB_ICONINFORMATION);
}

int WqMsgBox_FatalError(uint32_t id, const char *caption) {
  return WqMsgBox_ShowFromID(id, caption, MB_TASKMODAL | MB_ICONHAND);
}
