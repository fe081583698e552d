// Transparent windows.

#include "platform/desktop/lock.h"
#include "platform/desktop/windows/onscreen.h"

using namespace platform;

BOOL SetLayeredWindowAttributes(HWND window, COLORREF key, BYTE alpha, DWORD flags) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target) return FALSE;
    if (!(target->exStyle & WS_EX_LAYERED)) return failWith(ERROR_INVALID_PARAMETER);
    target->colorKey = key;
    if (flags & LWA_ALPHA) target->alpha = alpha;
    target->layeredFlags = flags;
    lookOnScreen(*target);
    return TRUE;
  });
}

BOOL GetLayeredWindowAttributes(HWND window, COLORREF *key, BYTE *alpha, DWORD *flags) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !(target->exStyle & WS_EX_LAYERED) || !target->layeredFlags) return FALSE;
    if (key) *key = target->colorKey;
    if (alpha) *alpha = target->alpha;
    if (flags) *flags = target->layeredFlags;
    return TRUE;
  });
}
