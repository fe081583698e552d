// Update regions, and the next window for WM_PAINT.

#include "platform/desktop/windows/update.h"

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/windows/contexts.h"
#include "platform/desktop/windows/frame.h"
#include "platform/desktop/windows/onscreen.h"

#include <algorithm>

namespace platform {

namespace {

// All changes of an update region go through here, so that the counts up the tree stay right.
void setUpdate(Window &window, QRegion region) {
  const bool before = !window.update.isEmpty();
  window.update = std::move(region);
  const bool after = !window.update.isEmpty();
  if (before == after) return;
  for (Window *up = &window; up; up = up->parent) up->dirtyBelow += after ? size_t{1} : ~size_t{0};
}

bool goesDown(const Window &window, Children children) {
  return children == Children::all || (children == Children::byStyle && !window.is(WS_CLIPCHILDREN));
}

// A region of a parent's client area, in the child's coordinates.
QRegion inChild(const QRegion &region, const Window &child) {
  return region.translated(-child.client.left, -child.client.top);
}

void addUpdate(Window &window, const QRegion &region, bool erase, bool frame, Children children) {
  if (!window.is(WS_VISIBLE) || window.is(WS_MINIMIZE)) return;
  const QRegion own = region & toQt(window.clientArea());
  if (!own.isEmpty()) {
    setUpdate(window, window.update | own);
    window.erase |= erase;
  }
  if (frame) window.frameDirty = true;
  if (!goesDown(window, children)) return;
  const QRegion below = region & toQt(window.clientArea());
  for (Window *child : window.children) {
    if (!below.intersects(toQt(child->rect))) continue;
    addUpdate(*child, inChild(below, *child), true, true, Children::all);
  }
}

// The part of a window inside its ancestors' client areas, in its client coordinates.
RECT withinAncestors(const Window &window) {
  RECT seen = offset(window.rect, -window.client.left, -window.client.top);
  POINT origin{0, 0};
  for (const Window *one = &window; one->parent && one->parent->parent; one = one->parent) {
    origin = {origin.x - one->client.left, origin.y - one->client.top};
    seen = intersected(seen, offset(one->parent->clientArea(), origin.x, origin.y));
  }
  return seen;
}

Window *findDirty(const Queue &queue, Window &window) {
  if (window.dirtyBelow == 0 || !window.is(WS_VISIBLE) || window.is(WS_MINIMIZE)) return nullptr;
  if (!window.update.isEmpty() && window.queue.get() == &queue) return &window;
  for (Window *child : window.children)
    if (Window *found = findDirty(queue, *child)) return found;
  return nullptr;
}

// A region without the windows in front of a window, in coordinates of the surface.
QRegion withoutCover(const Window &window, QRegion region) {
  QRegion seen = std::move(region);
  for (const Window *one = &window; one->parent && one->parent->parent && !seen.isEmpty(); one = one->parent) {
    const Window &parent = *one->parent;
    const POINT origin = originInSurface(parent);
    seen &= toQt(offset(parent.clientArea(), origin.x, origin.y));
    if (!one->is(WS_CLIPSIBLINGS)) continue;
    for (const Window *sibling : parent.children) {
      if (sibling == one) break;
      if (!sibling->is(WS_VISIBLE) || sibling->exStyle & WS_EX_TRANSPARENT) continue;
      const QRect cover = toQt(offset(sibling->rect, origin.x, origin.y));
      if (seen.intersects(cover)) seen -= cover;
    }
  }
  return seen;
}

// The windows of a tree that need paint, parents first.
// all: visits every child, not only children of windows with WS_CLIPCHILDREN.
void collectDue(const Window &window, bool all, std::vector<WindowRef> &due) {
  if (!window.is(WS_VISIBLE) || window.dirtyBelow == 0) return;
  if (!window.update.isEmpty()) due.push_back(refOf(&window));
  if (!all && !window.is(WS_CLIPCHILDREN)) return;
  for (const Window *child : window.children) collectDue(*child, all, due);
}

} // namespace

void invalidate(Window &window, const QRegion &region, bool erase, bool frame, Children children) {
  if (!window.parent || !isOpen(window)) return;
  const RECT seen = withinAncestors(window);
  addUpdate(window, isIn(fromQt(region.boundingRect()), seen) ? region : region & toQt(seen), erase, frame, children);
  window.queue->wake();
}

void validate(Window &window, const QRegion &region, Children children) {
  if (!window.update.isEmpty()) setUpdate(window, window.update - region);
  if (window.update.isEmpty()) window.erase = window.eraseRefused = false;
  if (window.dirtyBelow == 0 || !goesDown(window, children)) return;
  for (Window *child : window.children) validate(*child, inChild(region, *child), children);
}

void takeUpdate(Window &window) {
  if (!window.update.isEmpty()) setUpdate(window, {});
  window.erase = window.eraseRefused = false;
}

void validateTree(Window &window) {
  takeUpdate(window);
  window.frameDirty = false;
  for (Window *child : window.children) validateTree(*child);
}

Window *nextToPaint(Queue &queue, HWND top) {
  const WindowRef from = windowOrNone(top);
  if (top && (!from || !isVisible(*from))) return nullptr;
  return findDirty(queue, from ? *from : desktopWindow());
}

QRegion visibleClient(const Window &window) {
  if (!isOpen(window)) return {};
  const POINT origin = originInSurface(window);
  QRegion seen = visibleWhole(window) & toQt(offset(window.clientArea(), origin.x, origin.y));
  if (window.is(WS_CLIPCHILDREN))
    for (const Window *child : window.children)
      if (child->is(WS_VISIBLE) && !(child->exStyle & WS_EX_TRANSPARENT))
        seen -= toQt(offset(child->rect, origin.x, origin.y));
  return seen;
}

QRect readableClient(const Window &window) {
  if (!isOpen(window)) return {};
  const POINT origin = originInSurface(window);
  return toQt(offset(intersected(withinAncestors(window), window.clientArea()), origin.x, origin.y));
}

namespace {

// The part of a top-level window's pixels that the screen shows.
RECT onScreenPart(const Window &window) {
  const LONG left = window.client.left, top = window.client.top;
  return intersected(offset(contentOf(window), -left, -top), offset(seenArea(), -left, -top));
}

} // namespace

QRegion visibleWhole(const Window &window) {
  if (!isOpen(window)) return {};
  if (!window.parent) return QRegion(toQt(window.clientArea()));
  if (window.isTopLevel()) return QRegion(toQt(onScreenPart(window))); // the desktop draws the frame
  const POINT origin = originInSurface(*window.parent);
  return withoutCover(window, toQt(intersected(offset(window.rect, origin.x, origin.y), onScreenPart(rootOf(window)))));
}

void eraseNow(const WindowRef &window) {
  if (!window->is(WS_VISIBLE)) return;
  if (window->frameDirty) {
    window->frameDirty = false;
    send(window, WM_NCPAINT, 1, 0);
  }
  if (window->alive && window->erase && !window->update.isEmpty()) {
    window->erase = false;
    const POINT origin = originInSurface(*window);
    const OpenDc dc(openClientDc(*window, window->update.translated(origin.x, origin.y)));
    window->eraseRefused = !send(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.handle()), 0);
  }
  // without WS_CLIPCHILDREN the window draws over its children, which are erased later
  if (!window->alive || !window->is(WS_CLIPCHILDREN)) return;
  for (const WindowRef &child : childrenOf(*window))
    if (child->alive) eraseNow(child);
}

void paintNow(const WindowRef &window, bool all) {
  if (window->dirtyBelow == 0 || !isVisible(*window)) return;
  std::vector<WindowRef> due;
  collectDue(*window, all, due);
  for (const WindowRef &one : due)
    if (one && one->alive && !one->update.isEmpty() && isVisible(*one)) send(one, WM_PAINT);
}

} // namespace platform

using namespace platform;

namespace {

QRegion regionOf(const Window &window, const RECT *rect) { return QRegion(rectOf(rect ? *rect : window.clientArea())); }

bool redraw(const WindowRef &window, const RECT *rect, UINT flags) {
  const Children children = flags & RDW_ALLCHILDREN  ? Children::all
                            : flags & RDW_NOCHILDREN ? Children::none
                                                     : Children::byStyle;
  if (flags & RDW_INVALIDATE)
    invalidate(*window, regionOf(*window, rect), flags & RDW_ERASE, flags & RDW_FRAME, children);
  else if (flags & RDW_VALIDATE)
    validate(*window, regionOf(*window, rect), children);
  if (flags & RDW_NOERASE) window->erase = false;
  if (flags & RDW_UPDATENOW)
    paintNow(window, flags & RDW_ALLCHILDREN);
  else if (flags & RDW_ERASENOW)
    eraseNow(window);
  return true;
}

} // namespace

BOOL RedrawWindow(HWND window, const RECT *rect, HRGN, UINT flags) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = window ? windowOf(window) : refOf(&desktopWindow());
    return target && redraw(target, rect, flags);
  });
}

BOOL InvalidateRect(HWND window, const RECT *rect, BOOL erase) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!window) { // the whole screen
      for (const WindowRef &top : childrenOf(desktopWindow()))
        redraw(top, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_ERASE | RDW_FRAME);
      return TRUE;
    }
    const WindowRef target = windowOf(window);
    return target && redraw(target, rect, RDW_INVALIDATE | (erase ? RDW_ERASE : 0u));
  });
}

BOOL ValidateRect(HWND window, const RECT *rect) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    return target && redraw(target, rect, RDW_VALIDATE);
  });
}

BOOL UpdateWindow(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    return target && redraw(target, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  });
}

BOOL GetUpdateRect(HWND window, RECT *rect, BOOL erase) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target) return FALSE;
    const bool due = !target->update.isEmpty();
    if (rect) *rect = due ? fromQt(target->update.boundingRect()) : RECT{0, 0, 0, 0};
    if (erase) eraseNow(target);
    return due;
  });
}
