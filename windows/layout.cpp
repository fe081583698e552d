// The geometry of window objects: the layout step, snapping, and the functions that begin a layout. A layout recurses
// once for each window in a chain of snaps. So WqWnd_Rect and WqWnd_Align must keep their stack frames small.

#include "windows/windows_private.h"

#include "drawing/drawing.h"
#include "drawing/wrapping.h"
#include "frame/main.h"

namespace {

struct Side {
  uint32_t snapBit;
  uint32_t keepBit;
  WqWnd *WqWnd::*target;
  int32_t WqWnd::*margin;
  LONG RECT::*edge;
  LONG RECT::*opposite; // of the window itself; the side snaps to the target's opposite edge
  LONG SIZE::*extent;
  bool first; // the first of the two sides along its axis
};

// In the order of snapping: of two sides that keep the size, the later one wins.
constexpr Side kSides[] = {
    {WQ_DS_SNAP_L, WQ_DS_KEEP_W, &WqWnd::snapLeft, &WqWnd::marginLeft, &RECT::left, &RECT::right, &SIZE::cx, true},
    {WQ_DS_SNAP_R, WQ_DS_KEEP_W, &WqWnd::snapRight, &WqWnd::marginRight, &RECT::right, &RECT::left, &SIZE::cx, false},
    {WQ_DS_SNAP_T, WQ_DS_KEEP_H, &WqWnd::snapTop, &WqWnd::marginTop, &RECT::top, &RECT::bottom, &SIZE::cy, true},
    {WQ_DS_SNAP_B, WQ_DS_KEEP_H, &WqWnd::snapBottom, &WqWnd::marginBottom, &RECT::bottom, &RECT::top, &SIZE::cy, false},
};

void snapSides(WqWnd *wnd) {
  SIZE size;
  WqRect_toSize(&wnd->rect, &size);
  RECT client = {};
  const bool hasClient = wnd->parent && wnd->parent->hwnd && GetClientRect(wnd->parent->hwnd, &client);
  RECT rect = wnd->rect;
  for (const Side &side : kSides) {
    if (!(wnd->flags & side.snapBit)) continue;
    const WqWnd *target = wnd->*side.target;
    if (target)
      rect.*side.edge = wqSum(target->rect.*side.opposite, wnd->*side.margin);
    else if (hasClient)
      rect.*side.edge = wqSum(client.*side.edge, wnd->*side.margin);
    if (!(wnd->flags & side.keepBit)) continue;
    const LONG extent = size.*side.extent;
    rect.*side.opposite = side.first ? wqSum(rect.*side.edge, extent) : wqDifference(rect.*side.edge, extent);
  }
  wnd->rect = rect;
}

bool follows(const WqWnd *wnd, const WqWnd *target) {
  return wnd->snapLeft == target || wnd->snapTop == target || wnd->snapRight == target || wnd->snapBottom == target;
}

// Moves the window to its object's rect. Flags tell the platform what stays, so that it does no more than needed.
void moveWindow(const WqWnd *wnd, const RECT *old) {
  HWND hwnd = wnd->hwnd; // the move may end the window
  const RECT rect = wnd->rect;
  SIZE oldSize;
  SIZE size;
  WqRect_toSize(old, &oldSize);
  WqRect_toSize(&rect, &size);
  UINT flags = SWP_NOZORDER;
  if (rect.left == old->left && rect.top == old->top)
    flags |= SWP_NOMOVE;
  else if (size.cx == oldSize.cx && size.cy == oldSize.cy)
    flags |= SWP_NOSIZE;
  const bool sized = !(flags & SWP_NOSIZE);
  SetWindowPos(hwnd, nullptr, rect.left, rect.top, sized ? wqDifference(rect.right, rect.left) : 0,
               sized ? wqDifference(rect.bottom, rect.top) : 0, flags);
  if (sized || !(wnd->flags & WQ_DS_NO_MOVE_PAINT)) InvalidateRect(hwnd, nullptr, FALSE);
}

} // namespace

void wqTellDependants(WqWnd *wnd) {
  if (!wnd->dependants || WqLayoutMark::isSet(wnd)) return;
  const WqLayoutMark mark(wnd);
  WqWndLst_SendAll(&wnd->dependants, WQ_MSGREQ_LAYOUT, WQM_LAYOUT, reinterpret_cast<WPARAM>(wnd->hwnd), 0);
}

void WqWnd_Rect(WqWnd *wnd, const RECT *rect) {
  if (!wnd) return;
  const RECT old = wnd->rect;
  if (rect) wnd->rect = *rect;
  WqRect_Limit(&wnd->rect, &wnd->maxRect);
  WqRect_Clip(&wnd->rect, &wnd->minRect);
  if (wnd->flags & WQ_DS_LAYOUT) WqWnd_Align(wnd);
  if (wnd->hwnd && !WqRect_isSame(&wnd->rect, &old)) moveWindow(wnd, &old);
}

void WqWnd_Align(WqWnd *wnd) {
  snapSides(wnd);
  const WqLayoutMark mark(wnd);
  for (const WqList *node = wqMain.wndList; node; node = node->next) {
    auto *follower = reinterpret_cast<WqWnd *>(node->data);
    if (!follows(follower, wnd) || WqLayoutMark::isSet(follower)) continue;
    WqWnd_Rect(follower, nullptr);
    wqTellDependants(follower);
  }
}

void WqWnd_Resize(WqWnd *wnd, const RECT *rect) {
  WqWnd_Rect(wnd, rect);
  wqTellDependants(wnd);
}

void WqWnd_Pos(WqWnd *wnd, const POINT *offset) {
  RECT rect = wnd->rect;
  WqRect_Offset(&rect, offset->x, offset->y);
  WqWnd_Rect(wnd, &rect);
}

void WqWnd_Top(WqWnd *wnd, int32_t top) {
  RECT rect = wnd->rect;
  rect.top = top;
  WqWnd_Rect(wnd, &rect);
}

void WqWnd_Left(WqWnd *wnd, int32_t left) {
  RECT rect = wnd->rect;
  rect.left = left;
  WqWnd_Rect(wnd, &rect);
}

void WqWnd_Size(WqWnd *wnd, const SIZE *size) {
  RECT rect = wnd->rect;
  rect.right = wqSum(rect.left, size->cx);
  rect.bottom = wqSum(rect.top, size->cy);
  WqWnd_Rect(wnd, &rect);
}

void WqWnd_Width(WqWnd *wnd, int32_t width) {
  RECT rect = wnd->rect;
  rect.right = wqDifference(wqSum(rect.left, width), 1);
  WqWnd_Rect(wnd, &rect);
}

void WqWnd_Height(WqWnd *wnd, int32_t height) {
  RECT rect = wnd->rect;
  rect.bottom = wqDifference(wqSum(rect.top, height), 1);
  WqWnd_Rect(wnd, &rect);
}

void WqWnd_Max(WqWnd *wnd, const RECT *rect) {
  wnd->maxRect = *rect;
  if (wnd->hwnd) WqWnd_Rect(wnd, nullptr);
}

void WqWnd_Min(WqWnd *wnd, const RECT *rect) {
  wnd->minRect = *rect;
  if (wnd->hwnd) WqWnd_Rect(wnd, nullptr);
}

void WqWnd_SnapL(WqWnd *wnd, WqWnd *target) {
  wnd->flags |= WQ_DS_SNAP_L;
  wnd->snapLeft = target;
}

void WqWnd_SnapT(WqWnd *wnd, WqWnd *target) {
  wnd->flags |= WQ_DS_SNAP_T;
  wnd->snapTop = target;
}

void WqWnd_SnapR(WqWnd *wnd, WqWnd *target) {
  wnd->flags |= WQ_DS_SNAP_R;
  wnd->snapRight = target;
}

void WqWnd_SnapB(WqWnd *wnd, WqWnd *target) {
  wnd->flags |= WQ_DS_SNAP_B;
  wnd->snapBottom = target;
}

void WqWnd_SnapMargin(WqWnd *wnd, const RECT *margin) {
  wnd->marginLeft = margin->left;
  wnd->marginTop = margin->top;
  wnd->marginRight = margin->right;
  wnd->marginBottom = margin->bottom;
}

void WqWnd_MaxSize(WqWnd *, WqWord, WqWord) {}

void WqWnd_MixSize(WqWnd *, WqWord, WqWord) {}

void WqWnd_Center(WqWnd *wnd, WqWnd *other) {
  HWND around = other && other->hwnd ? other->hwnd : GetDesktopWindow();
  RECT own;
  RECT reference;
  if (!wnd->hwnd || !GetWindowRect(wnd->hwnd, &own) || !GetWindowRect(around, &reference)) return;
  const LONG width = own.right - own.left;
  const LONG height = own.bottom - own.top;
  const LONG dx = (reference.right - reference.left - width) / 2;
  const LONG dy = (reference.bottom - reference.top - height) / 2;
  MoveWindow(wnd->hwnd, reference.left + dx, reference.top + dy, width, height, TRUE);
  WqRect_Offset(&wnd->rect, dx, dy);
}

int WqWnd_HitTest(WqWnd *wnd, const POINT *point) {
  POINT inClient = *point;
  RECT client;
  if (!wnd->hwnd || !ScreenToClient(wnd->hwnd, &inClient) || !GetClientRect(wnd->hwnd, &client)) return 0;
  return WqRect_IsIn(&client, &inClient);
}
