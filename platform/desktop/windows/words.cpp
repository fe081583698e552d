// The words of windows: styles, procedure, owner, and the application's own; also their text and their parent.

#include "platform/desktop/drawing/surface.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/windows/frame.h"
#include "platform/desktop/windows/onscreen.h"
#include "platform/desktop/windows/placing.h"
#include "platform/desktop/windows/states.h"
#include "platform/desktop/windows/update.h"

#include <algorithm>
#include <cstring>

using namespace platform;

namespace {

// Whether an owner would make a window its own owner.
bool belongsToOwner(const Window &window, const Window &owner) {
  for (const Window *up = &owner; up; up = up->owner)
    if (up == &window) return true;
  return false;
}

bool isAncestorOrSelf(const Window &window, const Window &other) {
  return &window == &other || isDescendant(other, window);
}

void *extraWord(Window &window, int index, size_t size) {
  if (index < 0 || static_cast<size_t>(index) + size > window.extra.size()) return nullptr;
  return window.extra.data() + index;
}

LONG_PTR getWord(HWND handle, int index, size_t size) {
  const WindowRef window = windowOf(handle);
  if (!window) return 0;
  switch (index) {
  case GWL_WNDPROC: return reinterpret_cast<LONG_PTR>(window->procedure);
  case GWL_HINSTANCE: return reinterpret_cast<LONG_PTR>(window->instance);
  case GWL_HWNDPARENT: return lParamOf(window->isTopLevel() ? handleOf(window->owner) : handleOf(window->parent));
  case GWL_ID: return window->id;
  case GWL_STYLE: return static_cast<LONG>(window->style);
  case GWL_EXSTYLE: return static_cast<LONG>(window->exStyle);
  case GWL_USERDATA: return window->userData;
  default: break;
  }
  if (const void *word = extraWord(*window, index, size)) {
    LONG_PTR value = 0;
    std::memcpy(&value, word, size);
    return size == sizeof(LONG) ? static_cast<LONG>(value) : value;
  }
  SetLastError(ERROR_INVALID_INDEX);
  return 0;
}

LONG_PTR setStyle(const WindowRef &window, int index, DWORD value) {
  DWORD &style = index == GWL_STYLE ? window->style : window->exStyle;
  STYLESTRUCT change = {style, value};
  const DWORD old = style;
  send(window, WM_STYLECHANGING, static_cast<WPARAM>(index), addressOf(change));
  if (!window->alive) return static_cast<LONG>(old);
  if (index == GWL_STYLE) {
    const bool child = change.styleNew & WS_CHILD;
    if (!child || (change.styleNew & WS_POPUP)) change.styleNew |= WS_CLIPSIBLINGS;
    const bool shown = change.styleNew & WS_VISIBLE, wasShown = style & WS_VISIBLE;
    if (wasShown && !shown) validateTree(*window);
    style = change.styleNew;
    window->exStyle = edgeStyle(style, window->exStyle);
    if (shown && !wasShown) showOnScreen(*window);
    if (!shown && wasShown) hideOnScreen(*window);
  } else {
    // only SetWindowPos makes a window topmost
    const DWORD topmost = style & WS_EX_TOPMOST;
    style = edgeStyle(window->style, (change.styleNew & ~WS_EX_TOPMOST) | topmost);
    if (!(style & WS_EX_LAYERED)) window->layeredFlags = 0;
  }
  change.styleNew = style;
  const bool files = index == GWL_EXSTYLE && (old ^ style) & WS_EX_ACCEPTFILES;
  lookOnScreen(files ? rootOf(*window) : *window);
  send(window, WM_STYLECHANGED, static_cast<WPARAM>(index), addressOf(change));
  return static_cast<LONG>(old);
}

LONG_PTR setWord(HWND handle, int index, LONG_PTR value, size_t size) {
  const WindowRef window = windowOf(handle);
  if (!window) return 0;
  const LONG_PTR old = getWord(handle, index, size);
  switch (index) {
  case GWL_WNDPROC: window->procedure = reinterpret_cast<WNDPROC>(value); return old;
  case GWL_HINSTANCE: window->instance = reinterpret_cast<HINSTANCE>(value); return old;
  case GWL_HWNDPARENT: {
    const WindowRef owner = windowOrNone(reinterpret_cast<HWND>(value));
    if (!window->isTopLevel()) return lParamOf(SetParent(handle, reinterpret_cast<HWND>(value)));
    if (owner && belongsToOwner(*window, rootOf(*owner))) return 0;
    if (window->owner) std::erase(window->owner->owned, window.get());
    window->owner = owner ? &rootOf(*owner) : nullptr;
    if (window->owner) window->owner->owned.push_back(window.get());
    lookOnScreen(*window);
    return old;
  }
  case GWL_ID: window->id = value; return old;
  case GWL_STYLE:
  case GWL_EXSTYLE:
    return onThreadOf<LONG_PTR>(*window, 0, [&] { return setStyle(window, index, static_cast<DWORD>(value)); });
  case GWL_USERDATA: window->userData = value; return old;
  default: break;
  }
  if (void *word = extraWord(*window, index, size)) std::memcpy(word, &value, size);
  return old;
}

} // namespace

LONG GetWindowLongA(HWND window, int index) {
  return locked<LONG>(0, [&] { return static_cast<LONG>(getWord(window, index, sizeof(LONG))); });
}

LONG SetWindowLongA(HWND window, int index, LONG value) {
  return locked<LONG>(0, [&] { return static_cast<LONG>(setWord(window, index, value, sizeof(LONG))); });
}

LONG_PTR GetWindowLongPtrA(HWND window, int index) {
  return locked<LONG_PTR>(0, [&] { return getWord(window, index, sizeof(LONG_PTR)); });
}

LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value) {
  return locked<LONG_PTR>(0, [&] { return setWord(window, index, value, sizeof(LONG_PTR)); });
}

namespace {

// A top-level window has its own surface. Any other window has a part of one.
void settleSurface(Window &window) {
  if (window.isTopLevel() && !window.surface) {
    window.surface = std::make_shared<Surface>(window.handle);
    window.surface->resize(toQt(contentOf(window)).size());
  } else if (!window.isTopLevel() && window.surface) {
    closeOnScreen(window);
    window.surface->orphan();
    window.surface.reset();
  }
}

HWND setParent(const WindowRef &window, const WindowRef &into) {
  if (!window->parent) return nullptr;
  if (isAncestorOrSelf(*window, *into)) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  const HWND old = window->parent->handle;
  const RECT place = window->rect;
  const POINT from = clientOrigin(*window->parent), to = clientOrigin(*into);
  const bool shown = showWindow(window, SW_HIDE);
  if (!window->alive || !into->alive) return nullptr;
  unlink(*window);
  link(*window, *into, nullptr);
  settleSurface(*window);
  lookOnScreen(rootOf(*window));
  // it keeps its place on the screen first, and then goes to its old coordinates in the new parent
  window->rect = offset(window->rect, from.x - to.x, from.y - to.y);
  window->client = offset(window->client, from.x - to.x, from.y - to.y);
  setWindowPos(window,
               {nullptr, HWND_TOP, static_cast<int>(place.left), static_cast<int>(place.top), 0, 0, SWP_NOSIZE});
  if (shown && window->alive) showWindow(window, SW_SHOW);
  return old;
}

} // namespace

HWND SetParent(HWND window, HWND parent) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef target = windowOf(window);
    const WindowRef into = parent ? windowOf(parent) : refOf(&desktopWindow());
    if (!target || !into) return nullptr;
    return onThreadOf<HWND>(*target, nullptr, [&] { return setParent(target, into); });
  });
}

BOOL SetWindowTextA(HWND window, LPCSTR text) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target) return FALSE;
    send(target, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    return target->alive; // false if its thread has ended
  });
}

int GetWindowTextA(HWND window, LPSTR text, int size) {
  return locked<int>(0, [&]() -> int {
    const WindowRef target = windowOf(window);
    if (!target || !text || size <= 0) return 0;
    *text = '\0';
    return static_cast<int>(send(target, WM_GETTEXT, static_cast<WPARAM>(size), reinterpret_cast<LPARAM>(text)));
  });
}

int GetWindowTextLengthA(HWND window) {
  return locked<int>(0, [&]() -> int {
    const WindowRef target = windowOf(window);
    return target ? static_cast<int>(send(target, WM_GETTEXTLENGTH)) : 0;
  });
}
