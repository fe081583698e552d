// The device-context record, and the source of its context. The low bits of the mode tell one of five sources. Only a
// client area has a second form, for a paint.

#include "drawing/drawing.h"

#include "windows/windows.h"

namespace {

constexpr uint32_t kSource = 0x1F; // the bits of the mode for the source
constexpr uint32_t kPaint = WQ_DC_CLIENT | WQ_DC_PAINT;

bool isPaint(uint32_t mode) { return (mode & (kSource | WQ_DC_PAINT)) == kPaint; }

bool isMode(uint32_t mode) {
  switch (mode & kSource) {
  case WQ_DC_DISPLAY:
  case WQ_DC_WINDOW:
  case WQ_DC_CLIENT:
  case WQ_DC_PRINTER:
  case WQ_DC_EXTERNAL: return true;
  default: return false;
  }
}

HWND windowOf(const WqDc *dc) { return dc->wnd ? dc->wnd->hwnd : nullptr; }

HDC getWindowDc(WqDc *dc, uint32_t mode) {
  HWND hwnd = windowOf(dc);
  dc->paint = {};            // if BeginPaint fails, EndPaint must not end an older paint
  if (!hwnd) return nullptr; // the platform takes null for the screen
  if (isPaint(mode)) return BeginPaint(hwnd, &dc->paint);
  return (mode & kSource) == WQ_DC_WINDOW ? GetDCEx(hwnd, nullptr, DCX_WINDOW) : GetDC(hwnd);
}

HDC getDc(WqDc *dc, uint32_t mode) {
  switch (mode & kSource) {
  case WQ_DC_DISPLAY: return CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  case WQ_DC_WINDOW:
  case WQ_DC_CLIENT: return getWindowDc(dc, mode);
  default: return nullptr; // set from outside
  }
}

} // namespace

void WqDc_Init(WqDc *dc, WqWnd *wnd) {
  *dc = {};
  dc->wnd = wnd;
  WqDcMap_Init(&dc->map);
  WqDcMap_Dc(&dc->map, dc);
  WqDcRgn_Init(&dc->rgn);
  WqDcRgn_Dc(&dc->rgn, dc);
  WqDcDraw_Init(&dc->draw);
  WqDcDraw_Dc(&dc->draw, dc);
  WqDcObj_Init(&dc->obj);
  WqDcObj_Dc(&dc->obj, dc);
}

void WqDc_Term(WqDc *dc) {
  WqDcObj_Term(&dc->obj);
  WqDcDraw_Term(&dc->draw);
  WqDcRgn_Term(&dc->rgn);
  WqDcMap_Term(&dc->map);
  if (dc->hdc && (dc->mode & kSource) != WQ_DC_CLIENT) WqDc_Release(dc);
}

void WqDc_Get(WqDc *dc, uint32_t mode) {
  if (!isMode(mode)) return;
  dc->hdc = getDc(dc, mode);
  dc->mode = mode;
}

void WqDc_Release(WqDc *dc) {
  switch (dc->mode & kSource) {
  case WQ_DC_DISPLAY: DeleteDC(dc->hdc); break;
  case WQ_DC_WINDOW: ReleaseDC(windowOf(dc), dc->hdc); break;
  case WQ_DC_CLIENT:
    if (isPaint(dc->mode))
      WqDc_EndPaint(dc);
    else
      ReleaseDC(windowOf(dc), dc->hdc);
    break;
  case WQ_DC_PRINTER:
  case WQ_DC_EXTERNAL: break; // the context is not owned
  default: return;
  }
  dc->hdc = nullptr;
  dc->mode = 0;
}

void WqDc_BeginPaint(WqDc *dc) { WqDc_Get(dc, kPaint); }

void WqDc_EndPaint(WqDc *dc) { EndPaint(windowOf(dc), &dc->paint); }

void WqDc_ExcludeRect(WqDc *dc, const RECT *rect) {
  WqDc_Exclude(dc, rect->left, rect->top, rect->right, rect->bottom);
}

void WqDc_Exclude(WqDc *dc, int32_t left, int32_t top, int32_t right, int32_t bottom) {
  ExcludeClipRect(dc->hdc, left, top, right, bottom);
}
