// The clipboard, for the main window.

#include "frame/main.h"
#include "text/text.h"

#include <algorithm>

namespace {

constexpr UINT kFormatsWithBit = 16;  // each of the first formats has a bit
constexpr UINT kPrivateToBit = 0x1F0; // subtracted from a private format's number
constexpr UINT kWithMetafile = 0x80;  // a bit of a format's number
constexpr uint32_t kTextMask = 1u << CF_TEXT;

uint32_t bitOf(UINT format) {
  if (format < kFormatsWithBit) return 1u << format;
  const bool isPrivate = format >= CF_PRIVATEFIRST && format <= CF_PRIVATELAST;
  return isPrivate && GetClipboardOwner() == wqMain.mainWnd ? 1u << (format - kPrivateToBit) % 32 : 0;
}

void openEmpty() {
  OpenClipboard(wqMain.mainWnd);
  EmptyClipboard();
}

void remember(uint32_t format, WqWord userData, WqClipBoardProc callback) {
  wqMain.clipBoard.format = format;
  wqMain.clipBoard.userData = userData;
  wqMain.clipBoard.callback = callback;
}

void promise(UINT format) { SetClipboardData(format, nullptr); }

} // namespace

void WqClipBoard_Init(WqClipBoard *clipBoard) { *clipBoard = {}; }

void WqClipBoard_Term(WqClipBoard *) {}

void WqClipBoard_Paste(uint32_t mask) { wqMain.clipBoard.pasteMask = mask; }

void WqClipBoard_OnlyText() { wqMain.clipBoard.pasteMask = kTextMask; }

void WqClipBoard_Copy(uint32_t word) { wqMain.clipBoard.copyMask = word; }

void WqClipBoard_Cut(uint32_t word) { wqMain.clipBoard.cutMask = word; }

uint32_t WqClipBoard_GetFormat() {
  WqClipBoard &state = wqMain.clipBoard;
  state.available = 0;
  OpenClipboard(wqMain.mainWnd);
  UINT format = 0;
  for (int left = CountClipboardFormats(); left > 0; --left) {
    format = EnumClipboardFormats(format);
    if (format == 0) break; // the clipboard isn't open
    state.available |= bitOf(format);
  }
  CloseClipboard();
  return state.pasteMask & state.available;
}

int WqClipBoard_GetText(char *buffer, uint32_t size) {
  OpenClipboard(wqMain.mainWnd);
  const HGLOBAL data = GetClipboardData(CF_TEXT);
  const auto *const text = data ? static_cast<const char *>(GlobalLock(data)) : nullptr;
  if (text) {
    if (size > 0) {
      buffer[size - 1] = '\0';
      WqStr_nCopy(buffer, text, static_cast<int32_t>(std::min<uint32_t>(size - 1, INT32_MAX)));
    }
    GlobalUnlock(data);
  }
  CloseClipboard();
  return 0;
}

void WqClipBoard_Delete() {
  openEmpty();
  CloseClipboard();
}

void WqClipBoard_SetOne(uint32_t format, WqWord userData, WqClipBoardProc callback) {
  openEmpty();
  remember(format, userData, callback);
  promise(format);
  CloseClipboard();
}

void WqClipBoard_Set(uint32_t format, WqWord userData, WqClipBoardProc callback) {
  openEmpty();
  remember(format, userData, callback);
  if (format & kWithMetafile) promise(CF_ENHMETAFILE);
  promise(format);
  promise(CF_TEXT);
  CloseClipboard();
}

WqWord WqClipBoard_CallBack(WqWord arg1, WqWord arg2, WqWord arg3) {
  const WqClipBoard &state = wqMain.clipBoard;
  return state.callback ? state.callback(arg1, arg2, arg3, state.format, state.userData) : 0;
}
