// Top-level windows stand in two bands: all topmost windows are above all others. A window stands above its owner, in
// the owner's band or in the topmost one.

#include "platform/desktop/windows/order.h"

#include <algorithm>

namespace platform {

namespace {

bool isTopmost(const Window &window) { return window.exStyle & WS_EX_TOPMOST; }

// Whether a window moves together with another one: it is the same window, or owned by it directly or indirectly.
bool belongsTo(const Window &window, const Window &other) {
  for (const Window *one = &window; one; one = one->owner)
    if (one == &other) return true;
  return false;
}

// The last sibling that a test accepts; null for none.
template <typename Accepts> Window *lastSibling(const Window &window, Accepts accepts) {
  Window *last = nullptr;
  for (Window *sibling : window.parent->children)
    if (sibling != &window && accepts(*sibling)) last = sibling;
  return last;
}

// The sibling below which a window goes. after: a HWND_... word or a sibling. Result: null for the top.
Window *placeInOrder(const Window &window, HWND after) {
  if (after == HWND_BOTTOM) return lastSibling(window, [](const Window &) { return true; });
  if (after == HWND_TOPMOST) return nullptr;
  if (after == HWND_TOP || after == HWND_NOTOPMOST)
    return after == HWND_TOP && isTopmost(window) ? nullptr : lastSibling(window, isTopmost);
  return windowOrNone(after).get();
}

// Whether a window is topmost once it stands below another one.
bool bandBelow(const Window &window, HWND after, const Window *above) {
  if (after == HWND_TOPMOST) return true;
  if (after == HWND_NOTOPMOST || after == HWND_BOTTOM || !window.isTopLevel()) return false;
  if (after == HWND_TOP) return isTopmost(window);
  if (!isTopmost(*above)) return false;
  // true between two topmost windows; a normal window below the last one begins its own band
  const std::vector<Window *> &siblings = window.parent->children;
  auto next = std::find(siblings.begin(), siblings.end(), above) + 1;
  if (next != siblings.end() && *next == &window) ++next;
  return isTopmost(window) || (next != siblings.end() && isTopmost(**next));
}

void relink(Window &window, Window *above) {
  Window &parent = *window.parent;
  unlink(window);
  link(window, parent, above);
}

void setBand(Window &window, bool topmost) {
  window.exStyle = topmost ? window.exStyle | WS_EX_TOPMOST : window.exStyle & ~WS_EX_TOPMOST;
}

// Puts the windows that a window owns above it, in their order.
// all: also those that already stand above it.
void bringOwned(Window &window, bool all) {
  const std::vector<Window *> siblings = window.parent->children;
  const auto self = std::find(siblings.begin(), siblings.end(), &window);
  for (auto at = all ? siblings.begin() : self; at != siblings.end(); ++at) {
    if (*at == &window || !belongsTo(**at, window)) continue;
    const std::vector<Window *> &now = window.parent->children;
    const auto place = std::find(now.begin(), now.end(), &window);
    relink(**at, place == now.begin() ? nullptr : place[-1]);
  }
}

} // namespace

void reorder(Window &window, HWND after) {
  Window *const above = placeInOrder(window, after);
  if (above == &window) return;
  const bool topmost = bandBelow(window, after, above), changes = topmost != isTopmost(window);
  relink(window, above);
  if (changes)
    for (Window *one : window.parent->children)
      if (belongsTo(*one, window)) setBand(*one, topmost);
  if (!window.owned.empty()) bringOwned(window, changes);
  if (!changes || topmost) return;
  // the owners of the window leave the band too
  for (Window *one = &window; one->owner && isTopmost(*one->owner); one = one->owner) {
    setBand(*one->owner, false);
    relink(*one->owner, one);
  }
}

bool isInPlace(Window &window, HWND after) {
  if (after == HWND_TOPMOST && !isTopmost(window)) return false;
  if ((after == HWND_NOTOPMOST || after == HWND_BOTTOM) && isTopmost(window)) return false;
  if (after == HWND_NOTOPMOST) return true;
  const std::vector<Window *> &siblings = window.parent->children;
  const auto self = std::find(siblings.begin(), siblings.end(), &window);
  const Window *above = self == siblings.begin() ? nullptr : self[-1];
  const Window *wanted = placeInOrder(window, after);
  if (after == HWND_TOP && wanted != above && above && belongsTo(*above, window)) {
    // only windows that it owns may stand above it
    return std::all_of(siblings.begin(), self,
                       [&](const Window *one) { return isTopmost(*one) || belongsTo(*one, window); });
  }
  return wanted == above || wanted == &window;
}

} // namespace platform
