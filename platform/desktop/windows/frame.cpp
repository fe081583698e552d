#include "platform/desktop/windows/frame.h"

#include "platform/desktop/windows/contexts.h"
#include "platform/desktop/windows/scroll.h"

#include <algorithm>

namespace platform {

namespace {

constexpr LONG kBorder = 1;     // a plain line
constexpr LONG kEdge = 2;       // a raised or sunken edge
constexpr LONG kSizeBorder = 1; // a sizing frame is this much wider than a dialog's
constexpr LONG kCorner = 16;    // a corner of a sizing frame is this long on each side

LONG edgeWidth(DWORD style, DWORD exStyle) {
  LONG width = 0;
  if ((exStyle & (WS_EX_STATICEDGE | WS_EX_DLGMODALFRAME)) == WS_EX_STATICEDGE)
    width = kBorder;
  else if ((exStyle & WS_EX_DLGMODALFRAME) || (style & (WS_THICKFRAME | WS_DLGFRAME)))
    width = kEdge;
  if (style & WS_THICKFRAME) width += kSizeBorder;
  if ((style & (WS_BORDER | WS_DLGFRAME)) || (exStyle & WS_EX_DLGMODALFRAME)) width += kBorder;
  return width;
}

LONG captionHeight(DWORD style, DWORD exStyle) {
  if ((style & WS_CAPTION) != WS_CAPTION) return 0;
  return GetSystemMetrics(exStyle & WS_EX_TOOLWINDOW ? SM_CYSMCAPTION : SM_CYCAPTION);
}

// Draws a line of one pixel inside a rectangle, and takes the line off the rectangle.
void drawRing(Dc &dc, RECT &rect, COLORREF topLeft, COLORREF bottomRight) {
  fill(dc, {rect.left, rect.top, rect.right - 1, rect.top + 1}, topLeft);
  fill(dc, {rect.left, rect.top, rect.left + 1, rect.bottom - 1}, topLeft);
  fill(dc, {rect.right - 1, rect.top, rect.right, rect.bottom}, bottomRight);
  fill(dc, {rect.left, rect.bottom - 1, rect.right, rect.bottom}, bottomRight);
  rect = {rect.left + 1, rect.top + 1, rect.right - 1, rect.bottom - 1};
}

} // namespace

DWORD edgeStyle(DWORD style, DWORD exStyle) {
  const bool thick = style & (WS_DLGFRAME | WS_THICKFRAME) && !(exStyle & WS_EX_STATICEDGE);
  return thick || exStyle & WS_EX_DLGMODALFRAME ? exStyle | WS_EX_WINDOWEDGE : exStyle & ~WS_EX_WINDOWEDGE;
}

Frame frameOf(DWORD style, DWORD exStyle) {
  const LONG outer = edgeWidth(style, exStyle);
  const LONG inner = exStyle & WS_EX_CLIENTEDGE ? kEdge : 0;
  return {outer + inner, outer + inner + captionHeight(style, exStyle), outer + inner, outer + inner};
}

RECT clientWithin(const RECT &rect, DWORD style, DWORD exStyle) {
  if (style & WS_MINIMIZE) return {rect.left, rect.top, rect.left, rect.top};
  const Frame frame = frameOf(style, exStyle);
  RECT client = {rect.left + frame.left, rect.top + frame.top, rect.right - frame.right, rect.bottom - frame.bottom};
  client.right = std::max(client.right, client.left);
  client.bottom = std::max(client.bottom, client.top);
  const LONG beside = GetSystemMetrics(SM_CXVSCROLL), below = GetSystemMetrics(SM_CYHSCROLL);
  if (style & WS_VSCROLL && client.right - client.left >= beside) client.right -= beside;
  if (style & WS_HSCROLL && client.bottom - client.top > below) client.bottom -= below;
  return client;
}

RECT contentOf(const Window &window) {
  RECT content = window.client;
  if (hasBar(window, SB_VERT)) content.right = barRect(window, SB_VERT).right;
  if (hasBar(window, SB_HORZ)) content.bottom = barRect(window, SB_HORZ).bottom;
  return content;
}

LRESULT hitTest(const Window &window, POINT point) {
  const POINT parent = window.parent ? clientOrigin(*window.parent) : POINT{0, 0};
  const RECT whole = offset(window.rect, parent.x, parent.y);
  const RECT client = offset(window.client, parent.x, parent.y);
  if (!contains(whole, point)) return HTNOWHERE;
  if (window.is(WS_MINIMIZE)) return HTCAPTION;
  if (contains(client, point)) return HTCLIENT;
  if (const LRESULT bar = hitBars(window, {point.x - parent.x, point.y - parent.y}); bar != HTNOWHERE) return bar;

  const LONG edge = edgeWidth(window.style, window.exStyle);
  const RECT inside = {whole.left + edge, whole.top + edge, whole.right - edge, whole.bottom - edge};
  if (!contains(inside, point)) {
    if (!window.is(WS_THICKFRAME) || window.is(WS_MAXIMIZE)) return HTBORDER;
    const bool left = point.x < whole.left + kCorner, right = point.x >= whole.right - kCorner;
    const bool top = point.y < whole.top + kCorner, bottom = point.y >= whole.bottom - kCorner;
    const bool upper = point.y < inside.top, lower = point.y >= inside.bottom;
    if (upper || lower) return (upper ? HTTOP : HTBOTTOM) + (left ? 1 : right ? 2 : 0);
    const int side = point.x < inside.left ? HTLEFT : HTRIGHT;
    if (top) return side == HTLEFT ? HTTOPLEFT : HTTOPRIGHT;
    if (bottom) return side == HTLEFT ? HTBOTTOMLEFT : HTBOTTOMRIGHT;
    return side;
  }
  const LONG caption = captionHeight(window.style, window.exStyle);
  if (point.y >= inside.top + caption) return HTBORDER;
  if (!window.is(WS_SYSMENU)) return HTCAPTION;
  // the boxes, from the right
  const LONG box = caption - 1;
  if (point.x >= inside.right - box) return HTCLOSE;
  if (window.exStyle & WS_EX_TOOLWINDOW) return HTCAPTION;
  if (point.x < inside.left + box) return HTSYSMENU;
  if (!(window.style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX))) return HTCAPTION;
  if (point.x >= inside.right - 2 * box) return HTMAXBUTTON;
  if (point.x >= inside.right - 3 * box) return HTMINBUTTON;
  return HTCAPTION;
}

void drawFrame(Window &window) {
  drawBars(window);
  if (window.isTopLevel()) return;
  const OpenDc open(openWholeDc(window));
  Dc &dc = open.dc();
  RECT rect = {0, 0, window.width(), window.height()};
  const COLORREF face = GetSysColor(COLOR_BTNFACE), shadow = GetSysColor(COLOR_BTNSHADOW);
  const COLORREF light = GetSysColor(COLOR_BTNHIGHLIGHT), dark = GetSysColor(COLOR_3DDKSHADOW);
  const LONG edge = edgeWidth(window.style, window.exStyle);
  if (edge > 1) {
    drawRing(dc, rect, face, dark);
    drawRing(dc, rect, light, shadow);
    for (LONG ring = 2; ring < edge; ++ring) drawRing(dc, rect, face, face);
  } else if (edge == 1 && (window.exStyle & WS_EX_STATICEDGE)) {
    drawRing(dc, rect, shadow, light);
  } else if (edge == 1) {
    const COLORREF line = GetSysColor(COLOR_WINDOWFRAME);
    drawRing(dc, rect, line, line);
  }
  if (const LONG caption = captionHeight(window.style, window.exStyle)) {
    fill(dc, {rect.left, rect.top, rect.right, rect.top + caption}, GetSysColor(COLOR_ACTIVECAPTION));
    rect.top += caption;
  }
  if (window.exStyle & WS_EX_CLIENTEDGE) {
    drawRing(dc, rect, shadow, light);
    drawRing(dc, rect, dark, face);
  }
}

} // namespace platform

using namespace platform;

BOOL AdjustWindowRectEx(RECT *rect, DWORD style, BOOL menu, DWORD exStyle) {
  const Frame frame = frameOf(style, exStyle);
  *rect = {rect->left - frame.left, rect->top - frame.top, rect->right + frame.right, rect->bottom + frame.bottom};
  if (menu) rect->top -= GetSystemMetrics(SM_CYMENU);
  return TRUE;
}
