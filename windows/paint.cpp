// The answer to WM_PAINT: everything is drawn on a bitmap of the client area. If anything was drawn, the part that
// needs paint is copied to the window.

#include "windows/windows_private.h"

#include "drawing/drawing.h"
#include "frame/main.h"
#include "windows/above.h"

namespace {

// A memory context with a bitmap of the client area's size. The record draws on it until the end of the scope.
class Buffer {
 public:
  Buffer(WqDc *dc, HWND hwnd) : dc_(dc), window_(dc->hdc), memory_(CreateCompatibleDC(window_)) {
    RECT client = {};
    GetClientRect(hwnd, &client);
    bitmap_ = CreateCompatibleBitmap(window_, client.right, client.bottom);
    before_ = SelectObject(memory_, bitmap_);
    dc_->hdc = memory_;
  }
  ~Buffer() {
    if (before_) SelectObject(memory_, before_);
    DeleteObject(bitmap_);
    DeleteDC(memory_);
    dc_->hdc = window_;
  }
  Buffer(const Buffer &) = delete;
  Buffer &operator=(const Buffer &) = delete;

  // Copies the visible part that needs paint.
  void show() const {
    RECT rect;
    if (!before_ || GetClipBox(window_, &rect) == ERROR || !IntersectRect(&rect, &rect, &dc_->paint.rcPaint)) return;
    BitBlt(window_, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, memory_, rect.left, rect.top,
           SRCCOPY);
  }

 private:
  WqDc *dc_;
  HDC window_;
  HDC memory_;
  HBITMAP bitmap_;
  HGDIOBJ before_; // null without a bitmap to draw on
};

void drawBackground(const WqWnd *wnd, WqDc *dc) {
  WqBmpDraw copy;
  WqBmpDraw_Init(&copy, WqBmpTbl_Get(static_cast<uint32_t>(wnd->bkgrndBmp), dc->hdc));
  const POINT corner = {};
  WqBmpDraw_Param(&copy, &corner, &wnd->bkgrndPos, &wnd->bkgrndSize);
  WqBmpDraw_SrcCopy(&copy, dc->hdc);
  WqBmpDraw_Term(&copy);
  dc->draw.drawn = 1;
}

void drawBuffered(WqWnd *wnd, WqMsg *msg, WqDc *dc) {
  const Buffer buffer(dc, msg->hwnd);
  WqDcDraw_BackMode(&dc->draw, TRANSPARENT);
  WqColorPal_Select(&wqMain.palette, dc->hdc);
  if (wnd->flags & WQ_DS_BKGRND) drawBackground(wnd, dc);
  if (wnd->userProc) {
    WqMsg_Set(msg, msg->hwnd, WQM_PAINT, reinterpret_cast<WPARAM>(dc), 0);
    wqCallUserProc(wnd, msg);
  }
  if (wnd->flags & WQ_DS_MBB) wqMbbProc(msg); // draws only at WQM_PAINT
  if (dc->draw.drawn) buffer.show();
}

} // namespace

void wqPaint(WqWnd *wnd, WqMsg *msg) {
  WqDc dc;
  WqDc_Init(&dc, wnd);
  WqDc_Get(&dc, WQ_DC_CLIENT | WQ_DC_PAINT);
  if (wnd->hwnd == msg->hwnd) drawBuffered(wnd, msg, &dc); // otherwise BeginPaint has ended the window
  WqDc_Release(&dc);
  WqDc_Term(&dc);
}
