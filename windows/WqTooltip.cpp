// The library's tooltip: a control of the platform, with every window object as a tool. A procedure stands before the
// control's own, because the platform leaves a tip up however far the pointer moves within a tool.

#include "windows/windows.h"

#include "frame/main.h"
#include "text/double_byte.h"
#include "text/text.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr LPARAM kLongestTip = 30000; // milliseconds

// The control's own procedure.
WNDPROC previousProc;

LRESULT sendToControl(UINT msg, WPARAM wParam, LPARAM lParam) {
  return wqMain.tooltip.hwnd ? SendMessageA(wqMain.tooltip.hwnd, msg, wParam, lParam) : 0;
}

TTTOOLINFOA toolInfo(HWND hwnd, UINT_PTR id, UINT flags) {
  TTTOOLINFOA info = {};
  info.cbSize = TTTOOLINFOA_V2_SIZE;
  info.uFlags = flags;
  info.hwnd = hwnd;
  info.uId = id;
  return info;
}

void sendTool(UINT msg, TTTOOLINFOA info) { sendToControl(msg, 0, reinterpret_cast<LPARAM>(&info)); }

void takeDown(HWND control) {
  SendMessageA(control, TTM_ACTIVATE, FALSE, 0);
  SendMessageA(control, TTM_ACTIVATE, TRUE, 0);
}

// Whether the pointer has moved farther than two clicks of a double click may be apart.
bool hasLeft(const POINT &anchor) {
  POINT point = anchor;
  GetCursorPos(&point);
  return std::abs(point.x - anchor.x) >= GetSystemMetrics(SM_CXDOUBLECLK) ||
         std::abs(point.y - anchor.y) >= GetSystemMetrics(SM_CYDOUBLECLK);
}

} // namespace

void WqTooltip_Init(WqTooltip *tooltip) { *tooltip = {}; }

void WqTooltip_Create(WqTooltip *tooltip) {
  tooltip->hwnd =
      CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, wqMain.mainWnd, nullptr, wqMain.instance, nullptr);
  if (!tooltip->hwnd) return;
  previousProc = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(tooltip->hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(WqTooltip_Proc)));
  SendMessageA(tooltip->hwnd, TTM_SETDELAYTIME, TTDT_AUTOPOP, kLongestTip);
}

void WqTooltip_Term(WqWord) {
  if (!wqMain.tooltip.hwnd) return;
  if (IsWindow(wqMain.tooltip.hwnd)) DestroyWindow(wqMain.tooltip.hwnd);
  wqMain.tooltip.hwnd = nullptr;
}

void WqTooltip_StrResInst(HINSTANCE instance) { wqMain.tooltipStrInst = instance; }

void WqTooltip_Add(HWND hwnd, WqWord id) {
  TTTOOLINFOA info = toolInfo(hwnd, id, TTF_IDISHWND | TTF_SUBCLASS);
  info.lpszText = LPSTR_TEXTCALLBACKA;
  sendTool(TTM_ADDTOOLA, info);
}

void WqTooltip_AddWnd(WqWnd *wnd) {
  if (wnd->hwnd) WqTooltip_Add(wnd->hwnd, reinterpret_cast<WqWord>(wnd->hwnd));
}

void WqTooltip_AddRect(HWND hwnd, const RECT *rect, uint32_t id) {
  TTTOOLINFOA info = toolInfo(hwnd, id, TTF_SUBCLASS);
  info.rect = *rect;
  info.hinst = wqMain.tooltipStrInst;
  info.lpszText = MAKEINTRESOURCEA(id);
  sendTool(TTM_ADDTOOLA, info);
}

void WqTooltip_Remove(HWND hwnd, WqWord id) { sendTool(TTM_DELTOOLA, toolInfo(hwnd, id, 0)); }

void WqTooltip_RemoveWnd(WqWnd *wnd) {
  if (IsWindow(wqMain.tooltip.hwnd)) WqTooltip_Remove(wnd->hwnd, reinterpret_cast<WqWord>(wnd->hwnd));
}

int WqTooltip_LoadString(NMTTDISPINFOA *info, HINSTANCE instance, uint32_t id) {
  char *text = wqMain.tooltip.text;
  text[0] = '\0';
  info->lpszText = text;
  if (!instance) instance = wqMain.tooltipStrInst;
  if (instance) LoadStringA(instance, id, text, sizeof wqMain.tooltip.text);
  return text[0] != '\0';
}

void WqTooltip_SetText(NMTTDISPINFOA *info, const char *text) {
  WqStr_nCopy(wqMain.tooltip.text, text, sizeof wqMain.tooltip.text - 1);
  wqMain.tooltip.text[sizeof wqMain.tooltip.text - 1] = '\0';
  info->lpszText = wqMain.tooltip.text;
}

void WqTooltip_Printf(NMTTDISPINFOA *info, const char *format, ...) {
  char text[sizeof wqMain.tooltip.text + 1] = ""; // one byte more, so that a cut character shows
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  wqCopyFitting(wqMain.tooltip.text, text);
  info->lpszText = wqMain.tooltip.text;
}

void WqTooltip_WindowText(NMTTDISPINFOA *info, HWND hwnd) {
  char *text = wqMain.tooltip.text;
  text[0] = '\0';
  GetWindowTextA(hwnd, text, sizeof wqMain.tooltip.text);
  info->lpszText = text[0] == '&' ? text + 1 : text;
}

LRESULT CALLBACK WqTooltip_Proc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  WqTooltip *tooltip = &wqMain.tooltip;
  switch (msg) {
  case WM_PAINT:
    tooltip->shown = 1;
    GetCursorPos(&tooltip->anchor);
    break;
  case WM_SHOWWINDOW: tooltip->shown = static_cast<uint32_t>(wParam); break;
  case TTM_RELAYEVENT:
    if (tooltip->shown && hasLeft(tooltip->anchor)) takeDown(hwnd);
    break;
  default: break;
  }
  return previousProc ? CallWindowProcA(previousProc, hwnd, msg, wParam, lParam) : 0;
}
