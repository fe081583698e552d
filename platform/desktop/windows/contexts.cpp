#include "platform/desktop/windows/contexts.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/windows/update.h"

namespace platform {

HDC openClientDc(const Window &window, const QRegion &region) {
  const POINT origin = originInSurface(window);
  return openWindowDc(window.handle, surfaceOf(window), QPoint(origin.x, origin.y), region & visibleClient(window),
                      readableClient(window));
}

HDC openWholeDc(const Window &window) {
  const POINT client = originInSurface(window);
  const QPoint origin(client.x + window.rect.left - window.client.left, client.y + window.rect.top - window.client.top);
  const bool framed = window.isTopLevel() && isOpen(window);
  const QRegion visible = framed ? QRegion(QRect(origin, toQt(window.rect).size())) : visibleWhole(window);
  return openWindowDc(window.handle, surfaceOf(window), origin, visible, visible.boundingRect());
}

} // namespace platform

using namespace platform;

HDC BeginPaint(HWND window, PAINTSTRUCT *paint) {
  return locked<HDC>(nullptr, [&]() -> HDC {
    const WindowRef target = windowOf(window);
    if (!target || !paint) return nullptr;
    *paint = {};
    if (target->frameDirty) {
      target->frameDirty = false;
      send(target, WM_NCPAINT, 1, 0);
    }
    const POINT origin = originInSurface(*target);
    const QRegion due = target->update.translated(origin.x, origin.y);
    const bool erase = target->erase && !due.isEmpty();
    paint->fErase = target->eraseRefused;
    takeUpdate(*target);
    paint->hdc = openClientDc(*target, due);
    if (erase) paint->fErase = !send(target, WM_ERASEBKGND, reinterpret_cast<WPARAM>(paint->hdc), 0);
    const QRegion clip = due & visibleClient(*target);
    paint->rcPaint = fromQt(clip.boundingRect().translated(-origin.x, -origin.y));
    if (clip.isEmpty()) paint->rcPaint = {0, 0, 0, 0};
    return paint->hdc;
  });
}

BOOL EndPaint(HWND, const PAINTSTRUCT *paint) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!paint) return FALSE;
    releaseDc(paint->hdc);
    return TRUE;
  });
}

HDC GetDC(HWND window) { return GetDCEx(window, nullptr, 0); }

HDC GetDCEx(HWND window, HRGN, DWORD flags) {
  return locked<HDC>(nullptr, [&]() -> HDC {
    const WindowRef target = window ? windowOf(window) : refOf(&desktopWindow());
    if (!target) return nullptr;
    return flags & DCX_WINDOW ? openWholeDc(*target) : openClientDc(*target, visibleClient(*target));
  });
}

int ReleaseDC(HWND, HDC dc) {
  return locked<int>(0, [&] { return releaseDc(dc) ? 1 : 0; });
}
