// Window objects: their properties, their creation and their end. The geometry is in layout.cpp.

#include "windows/windows_private.h"

#include "drawing/drawing.h"
#include "frame/main.h"
#include "frame/memory.h"
#include "text/double_byte.h"

namespace {

constexpr char kClassName[] = "WQ_WND_CLASS";

void setLiveBits(HWND hwnd, int index, uint32_t bits) {
  SetWindowLongA(hwnd, index, GetWindowLongA(hwnd, index) | static_cast<LONG>(bits));
}

HWND makeWindow(WqWnd *wnd) {
  WqWndParam *param = wnd->createParam;
  if (!param->className[0]) wqCopyFitting(param->className, kClassName);
  SIZE size;
  WqSize_Rect(&size, &wnd->rect);
  return CreateWindowExA(param->exStyle, param->className, param->title, param->style, wnd->rect.left, wnd->rect.top,
                         size.cx, size.cy, wnd->parent ? wnd->parent->hwnd : nullptr, nullptr, wqMain.instance, wnd);
}

// Reads the place that the platform gave the window.
void readRect(WqWnd *wnd) {
  RECT rect;
  GetWindowRect(wnd->hwnd, &rect);
  POINT corners[] = {{rect.left, rect.top}, {rect.right, rect.bottom}};
  MapWindowPoints(nullptr, wnd->parent ? wnd->parent->hwnd : nullptr, corners, 2);
  wnd->rect = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
}

} // namespace

void WqWnd_Init(WqWnd *wnd) {
  *wnd = {};
  WqList *node = WqList_AddP(wqMain.wndList, reinterpret_cast<WqWord>(wnd));
  if (!node) return; // without an entry no layout would find the window
  wqMain.wndList = node;
  wnd->createParam = static_cast<WqWndParam *>(WqMem_Alloc(sizeof(WqWndParam)));
  if (!wnd->createParam) return;
  wnd->id = WQ_ID_BASE;
  wnd->bkgrndBmp = -1;
}

void WqWnd_Term(WqWnd *wnd) {
  WqMem_Free(wnd->createParam);
  wnd->createParam = nullptr;
}

void WqWnd_ClassName(WqWnd *wnd, const char *className) {
  if (wnd->createParam) wqCopyFitting(wnd->createParam->className, className);
}

void WqWnd_ID(WqWnd *wnd, uint32_t id) { wnd->id |= id; }

void WqWnd_Ds(WqWnd *wnd, uint32_t bits) { wnd->flags |= bits; }

void WqWnd_ClearSnap(WqWnd *wnd, uint32_t bits) { wnd->flags &= ~bits; }

void WqWnd_Parent(WqWnd *wnd, WqWnd *parent) { wnd->parent = parent; }

void WqWnd_Style(WqWnd *wnd, uint32_t bits) {
  if (wnd->createParam)
    wnd->createParam->style |= bits;
  else if (wnd->hwnd)
    setLiveBits(wnd->hwnd, GWL_STYLE, bits);
}

void WqWnd_ExStyle(WqWnd *wnd, uint32_t bits) {
  if (wnd->createParam)
    wnd->createParam->exStyle |= bits;
  else if (wnd->hwnd)
    setLiveBits(wnd->hwnd, GWL_EXSTYLE, bits);
}

void WqWnd_Title(WqWnd *wnd, const char *title) {
  if (wnd->createParam)
    wqCopyFitting(wnd->createParam->title, title);
  else if (wnd->hwnd)
    SetWindowTextA(wnd->hwnd, title);
}

void WqWnd_UserProc(WqWnd *wnd, WqUserProc userProc) { wnd->userProc = userProc; }

void WqWnd_BkgrndBitmap(WqWnd *wnd, int32_t bitmapId, const SIZE *size, const POINT *position) {
  wnd->bkgrndBmp = bitmapId;
  wnd->bkgrndSize = *size;
  wnd->bkgrndPos = *position;
}

void WqWnd_InitHeapParam(WqWnd *wnd, const WqWndParam *param) {
  if (!wnd->createParam) return;
  *wnd->createParam = *param;
  wnd->createParam->className[sizeof param->className - 1] = '\0';
  wnd->createParam->title[sizeof param->title - 1] = '\0';
}

int WqWnd_Config(WqWnd *) { return 1; }

BOOL WqWnd_OrderTop(WqWnd *wnd) { return SetWindowPos(wnd->hwnd, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE); }

int WqWnd_RegClass(HINSTANCE instance) {
  WNDCLASSA windowClass = {};
  windowClass.style = CS_DBLCLKS;
  windowClass.lpfnWndProc = WqWnd_DefProc;
  windowClass.hInstance = instance;
  windowClass.hIcon = LoadIconA(nullptr, IDI_APPLICATION);
  windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(uintptr_t{COLOR_WINDOW + 1});
  windowClass.lpszClassName = kClassName;
  return RegisterClassA(&windowClass) != 0;
}

HWND WqWnd_Create(WqWnd *wnd) {
  if (!wnd->createParam) return nullptr;
  // The window procedure has stored the handle already, but only for windows of our class. A window may also have ended
  // during its creation without the platform's telling.
  const HWND made = makeWindow(wnd);
  wnd->hwnd = IsWindow(made) ? made : nullptr;
  WqWnd_Term(wnd);
  if (!wnd->hwnd) return nullptr;
  readRect(wnd);
  SetWindowLongA(wnd->hwnd, GWL_ID, static_cast<LONG>(wnd->id));
  if (wnd->flags & WQ_DS_LAYOUT) {
    WqWnd_SetMsgReq(wnd, WQ_MSGREQ_LAYOUT);
    SendMessageA(wnd->hwnd, WQM_LAYOUT, 0, 0);
  }
  WqTooltip_AddWnd(wnd);
  return wnd->hwnd;
}

int WqWnd_Show(WqWnd *wnd, int show) {
  if (show) {
    if (!wnd->hwnd && !WqWnd_Create(wnd)) return 0;
    ShowWindow(wnd->hwnd, SW_SHOWNORMAL);
    return 1;
  }
  if (!wnd->hwnd) return 0;
  if (wnd->id & WQ_ID_HIDE) {
    ShowWindow(wnd->hwnd, SW_HIDE);
    return 1;
  }
  DestroyWindow(wnd->hwnd);
  wnd->hwnd = nullptr;
  return 1;
}

// The function is looked up at run time, since a platform may lack it.
void WqWnd_Layered(WqWnd *wnd, uint32_t percent) {
  WqWnd_ExStyle(wnd, WS_EX_LAYERED);
  if (!wnd->hwnd) return;
  HMODULE library = LoadLibraryA("user32");
  if (!library) return;
  const auto address = reinterpret_cast<void (*)()>(GetProcAddress(library, "SetLayeredWindowAttributes"));
  if (const auto setAttributes = reinterpret_cast<BOOL(WINAPI *)(HWND, COLORREF, BYTE, DWORD)>(address))
    setAttributes(wnd->hwnd, 0, static_cast<BYTE>((percent & 0xFF) * 255 / 100), LWA_ALPHA);
  FreeLibrary(library);
}

void WqWnd_LayeredOff(WqWnd *wnd) {
  if (!wnd->hwnd) return;
  const auto exStyle = static_cast<DWORD>(GetWindowLongA(wnd->hwnd, GWL_EXSTYLE));
  SetWindowLongA(wnd->hwnd, GWL_EXSTYLE, static_cast<LONG>(exStyle & ~DWORD{WS_EX_LAYERED}));
}

void WqWnd_Enable(WqWnd *wnd, int enable) {
  if (wnd->hwnd) EnableWindow(wnd->hwnd, enable);
}

void WqWnd_Focus(WqWnd *wnd) {
  if (wnd->hwnd) SetFocus(wnd->hwnd);
}

void WqWnd_SetMsgReq(WqWnd *wnd, uint32_t mask) {
  if (!wnd->parent) return;
  WqWndLst_Add(&wnd->parent->dependants, wnd);
  wnd->msgReq |= mask;
}

void WqWnd_DelMsgReq(WqWnd *wnd, uint32_t mask) {
  wnd->msgReq &= ~mask;
  if (wnd->parent) WqWndLst_Remove(&wnd->parent->dependants, wnd);
}

HDC WqWnd_GetDC(WqWnd *wnd) { return wnd->hwnd ? GetDC(wnd->hwnd) : nullptr; }

void WqWnd_InvalidateRect(WqWnd *wnd, const RECT *rect) {
  if (wnd->hwnd) InvalidateRect(wnd->hwnd, rect, FALSE);
}

void WqWnd_Update(WqWnd *wnd) {
  if (wnd->hwnd) UpdateWindow(wnd->hwnd);
}

void WqWnd_EnableMenuItem(WqWnd *wnd, uint32_t item, int disable) {
  if (!wnd->hwnd) return;
  EnableMenuItem(GetSystemMenu(wnd->hwnd, FALSE), item, MF_BYCOMMAND | (disable ? MF_DISABLED : MF_ENABLED));
}
