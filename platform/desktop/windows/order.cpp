#include "platform/desktop/windows/order.h"

#include <algorithm>

namespace platform {

namespace {

bool isTopmost(const Window &window) { return window.exStyle & WS_EX_TOPMOST; }

// Whether a window goes with another in the order: it is the other, or owned by it at some remove.
bool belongsTo(const Window &window, const Window &other) {
  for (const Window *one = &window; one; one = one->owner)
    if (one == &other) return true;
  return false;
}

// The sibling below which a window goes, for one of the HWND_... words or a sibling; null for the top.
Window *placeInOrder(Window &window, HWND after) {
  const std::vector<Window *> &siblings = window.parent->children;
  const auto lastOf = [&](auto accepts) {
    Window *last = nullptr;
    for (Window *sibling : siblings)
      if (sibling != &window && accepts(*sibling)) last = sibling;
    return last;
  };
  if (after == HWND_BOTTOM) return lastOf([](const Window &) { return true; });
  if (after == HWND_TOPMOST) return nullptr;
  if (after == HWND_TOP || after == HWND_NOTOPMOST)
    return isTopmost(window) ? nullptr : lastOf([](const Window &one) { return isTopmost(one); });
  return windowOrNone(after).get();
}

void relink(Window &window, Window *above) {
  Window &parent = *window.parent;
  unlink(window);
  link(window, parent, above);
}

} // namespace

void reorder(Window &window, HWND after) {
  if (after == HWND_TOPMOST) window.exStyle |= WS_EX_TOPMOST;
  if (after == HWND_NOTOPMOST || after == HWND_BOTTOM) window.exStyle &= ~WS_EX_TOPMOST;
  Window *above = placeInOrder(window, after);
  if (above == &window) return;
  if (window.isTopLevel() && above && isTopmost(*above) != isTopmost(window) && after != HWND_BOTTOM) {
    // among its own kind
    above = isTopmost(window) ? nullptr : placeInOrder(window, HWND_TOP);
  }
  relink(window, above);
  if (window.owned.empty()) return;
  std::vector<Window *> owned; // from the lowest to the highest
  for (auto at = window.parent->children.rbegin(); at != window.parent->children.rend(); ++at)
    if (*at != &window && belongsTo(**at, window)) owned.push_back(*at);
  for (Window *one : owned) {
    const std::vector<Window *> &siblings = window.parent->children;
    const auto self = std::find(siblings.begin(), siblings.end(), &window);
    if (std::find(siblings.begin(), self, one) != self) continue; // above it already
    if (isTopmost(window)) one->exStyle |= WS_EX_TOPMOST;
    relink(*one, self == siblings.begin() ? nullptr : self[-1]);
  }
}

bool isInPlace(Window &window, HWND after) {
  if (after == HWND_TOPMOST && !isTopmost(window)) return false;
  if (after == HWND_NOTOPMOST && !isTopmost(window)) return true;
  if (after == HWND_NOTOPMOST) return false;
  const std::vector<Window *> &siblings = window.parent->children;
  const auto self = std::find(siblings.begin(), siblings.end(), &window);
  const Window *above = self == siblings.begin() ? nullptr : self[-1];
  const Window *wanted = placeInOrder(window, after);
  if (after == HWND_TOP && wanted != above && above && belongsTo(*above, window)) {
    // only what it owns stands above it
    return std::all_of(siblings.begin(), self,
                       [&](const Window *one) { return isTopmost(*one) || belongsTo(*one, window); });
  }
  return wanted == above;
}

} // namespace platform
