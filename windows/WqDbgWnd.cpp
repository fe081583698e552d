// The debug window. Its functions take no record, so that they can be called from anywhere.

#include "windows/windows.h"

#include "drawing/dc.h"
#include "drawing/resources.h"
#include "files/files.h"
#include "frame/main.h"
#include "text/double_byte.h"
#include "text/text.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char kSection[] = "StartUp", kKey[] = "DbgWnd";
constexpr char kDefaultPlace[] = "0,0,200,200,1"; // edges, and whether the window is made at the start
constexpr char kFace[] = "\x82\x6c\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4e"; // MS Gothic
constexpr int32_t kFontSize = 12;
constexpr DWORD kListStyle = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY |
                             LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT | LBS_WANTKEYBOARDINPUT | LBS_DISABLENOSCROLL;
constexpr uint32_t kItemsOnALine = 8;

struct DebugWindow {
  WqWnd wnd; // first member: the window procedure takes the record as its window object
  HWND listBox;
  WqFont font;
  int32_t showAtStart;
};

DebugWindow debugWindow;

LRESULT sendToList(UINT msg, WPARAM wParam, LPARAM lParam) {
  return debugWindow.listBox ? SendMessageA(debugWindow.listBox, msg, wParam, lParam) : 0;
}

// Makes the list box if the window has none yet.
void makeList() {
  const HWND window = debugWindow.wnd.hwnd;
  if (debugWindow.listBox || !window) return;
  debugWindow.listBox =
      CreateWindowExA(0, "LISTBOX", "", kListStyle, 0, 0, 100, 100, window, nullptr, wqMain.instance, nullptr);
  if (!debugWindow.listBox) return;
  sendToList(WM_SETFONT, reinterpret_cast<WPARAM>(debugWindow.font.handle), 0);
  ShowWindow(debugWindow.listBox, SW_SHOW);
}

void paint(const WqWnd *wnd, const WqMsg *msg) {
  RECT area = {};
  GetClientRect(wnd->hwnd, &area);
  WqDcDraw_FillRect(&reinterpret_cast<WqDc *>(msg->wParam)->draw, &area, 0);
}

void layOut(const WqWnd *wnd) {
  RECT area = {};
  GetClientRect(wnd->hwnd, &area);
  SetWindowPos(debugWindow.listBox, nullptr, 1, 1, static_cast<int>(area.right - 1), static_cast<int>(area.bottom - 1),
               SWP_NOZORDER);
}

int32_t procedure(WqWnd *wnd, WqMsg *msg) {
  if (msg->msg == WM_SYSCOMMAND && LOWORD(msg->wParam) == SC_CLOSE) {
    WqDbgWnd_Show(0); // its lines stay
    return 1;
  }
  wnd->result = 0;
  switch (msg->msg) {
  case WQM_PAINT:
    paint(wnd, msg);
    wnd->result = 1;
    return 1;
  case WQM_LAYOUT:
    if (debugWindow.listBox) layOut(wnd);
    return 0;
  case WQM_KEY: {
    WqMsg copy = *msg;
    copy.hwnd = wqMain.mainWnd;
    if (copy.hwnd) WqMsg_Post(&copy);
    return 0;
  }
  default: return 0;
  }
}

void savePlace(WqCfg *cfg) {
  RECT rect = {};
  GetWindowRect(debugWindow.wnd.hwnd, &rect);
  char text[64];
  int32_t length = WqStr_Rect(text, &rect);
  text[length++] = ',';
  WqStr_Int(text + length, debugWindow.showAtStart);
  WqCfg_Str(cfg, kKey, text, nullptr, sizeof text);
}

void loadPlace(WqCfg *cfg) {
  char text[256];
  WqCfg_Str(cfg, kKey, text, kDefaultPlace, sizeof text);
  RECT rect = {};
  const char *cursor = WqScan_Rect(text, &rect);
  if (!IsRectEmpty(&rect)) WqWnd_Rect(&debugWindow.wnd, &rect);
  WqScan_Int(WqScan_Conma(cursor), &debugWindow.showAtStart);
}

// Adds lines of items. Each begins with the number of its first item.
template <typename Item> void dump(const void *data, uint32_t count) {
  constexpr int kDigits = 2 * sizeof(Item);
  char line[16 + kItemsOnALine * (kDigits + 1)];
  for (uint32_t first = 0; first < count; first += kItemsOnALine) {
    int length = std::snprintf(line, sizeof line, "%08X:", first);
    for (uint32_t i = first; i < count && i - first < kItemsOnALine; ++i) {
      Item item; // a copy, since data may be unaligned
      std::memcpy(&item, static_cast<const char *>(data) + size_t{i} * sizeof item, sizeof item);
      length += std::snprintf(line + length, sizeof line - static_cast<size_t>(length), "%0*X ", kDigits,
                              static_cast<unsigned>(item));
    }
    WqDbgWnd_Print(line);
    if (count - first <= kItemsOnALine) return; // first must not wrap
  }
}

} // namespace

void WqDbgWnd_Init() {
  debugWindow = {};
  WqWnd *const wnd = &debugWindow.wnd;
  WqWnd_Init(wnd);
  WqWnd_UserProc(wnd, procedure);
  WqWnd_ID(wnd, WQ_ID_HIDE | 0x00200000u);
  WqWnd_Parent(wnd, nullptr);
  WqWnd_Style(wnd, WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME);
  WqWnd_ExStyle(wnd, WS_EX_TOOLWINDOW);
  const POINT corner = {0, 0};
  WqWnd_Pos(wnd, &corner);
  const SIZE size = {300, 200};
  WqWnd_Size(wnd, &size);
  WqWnd_Title(wnd, "Debug Window");
  WqFont_Init(&debugWindow.font);
  WqFont_Param(&debugWindow.font, kFace, kFontSize, 0);
  WqFont_LogDef(&debugWindow.font);
  WqFont_Create(&debugWindow.font);
  debugWindow.showAtStart = 1;
}

void WqDbgWnd_Config(WqCfg *cfg) {
  WqCfg_Sect(cfg, kSection);
  if (cfg->mode == WQ_CFG_READ)
    loadPlace(cfg);
  else if (debugWindow.wnd.hwnd)
    savePlace(cfg);
  if (!debugWindow.showAtStart) return;
  WqWnd_Create(&debugWindow.wnd);
  makeList();
}

void WqDbgWnd_Term() {
  WqWnd_Show(&debugWindow.wnd, 0);
  WqFont_Term(&debugWindow.font);
  WqWnd_Term(&debugWindow.wnd);
}

void WqDbgWnd_Show(int show) {
  WqWnd_Show(&debugWindow.wnd, show);
  makeList();
}

BOOL WqDbgWnd_IsShow() { return IsWindowVisible(debugWindow.wnd.hwnd); }

void WqDbgWnd_TopMost() { WqWnd_ExStyle(&debugWindow.wnd, WS_EX_TOPMOST); }

void WqDbgWnd_Clear() { sendToList(LB_RESETCONTENT, 0, 0); }

void WqDbgWnd_Print(const char *text) { sendToList(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)); }

int32_t WqDbgWnd_Format(const char *format, ...) {
  char line[256];
  char text[sizeof line + 1] = ""; // one byte more, so that a cut character shows
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  wqCopyFitting(line, text);
  WqDbgWnd_Print(line);
  return static_cast<int32_t>(std::strlen(line));
}

void WqDbgWnd_DumpHex2(const void *data, uint32_t count) { dump<uint8_t>(data, count); }
void WqDbgWnd_DumpHex4(const void *data, uint32_t count) { dump<uint16_t>(data, count); }
void WqDbgWnd_DumpHex8(const void *data, uint32_t count) { dump<uint32_t>(data, count); }

void WqInvalidateRectDbg(HWND hwnd, const RECT *rect, int erase) {
  const bool dark = std::rand() & 1; // random, so that flashes in a row are visible
  if (!hwnd)
    WqDbgWnd_Print("WqInvalidateRect(); Invalidate whole Desctop! \n");
  else if (GetCurrentThreadId() != GetWindowThreadProcessId(hwnd, nullptr))
    WqDbgWnd_Print("WqInvalidateRect(); current thread != window thread.\n");
  if (erase) WqDbgWnd_Print("WqInvalidateRect(); Background erased.\n");
  RECT area = {};
  if (rect)
    area = *rect;
  else
    GetClientRect(hwnd, &area);
  const HDC dc = GetDC(hwnd);
  const HGDIOBJ pen = SelectObject(dc, GetStockObject(dark ? WHITE_PEN : BLACK_PEN));
  const HGDIOBJ brush = SelectObject(dc, GetStockObject(dark ? BLACK_BRUSH : WHITE_BRUSH));
  Rectangle(dc, static_cast<int>(area.left), static_cast<int>(area.top), static_cast<int>(area.right),
            static_cast<int>(area.bottom));
  SelectObject(dc, pen);
  SelectObject(dc, brush);
  ReleaseDC(hwnd, dc);
}
