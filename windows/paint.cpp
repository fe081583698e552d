// The answer to WM_PAINT.

#include "windows/windows_private.h"

void wqPaint(const WqWnd *wnd) {
  PAINTSTRUCT paint;
  BeginPaint(wnd->hwnd, &paint);
  EndPaint(wnd->hwnd, &paint);
}
