// Creates and destroys windows.

#include "platform/desktop/drawing/surface.h"
#include "platform/desktop/guards.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"
#include "platform/desktop/windows/classes.h"
#include "platform/desktop/windows/clipboard.h"
#include "platform/desktop/windows/focus.h"
#include "platform/desktop/windows/frame.h"
#include "platform/desktop/windows/onscreen.h"
#include "platform/desktop/windows/placing.h"
#include "platform/desktop/windows/states.h"
#include "platform/desktop/windows/update.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace platform {

namespace {

WPARAM noticeOf(UINT event, LONG_PTR id) { return static_cast<WPARAM>(static_cast<DWORD>(MAKELONG(event, id))); }

void notifyParent(const WindowRef &window, UINT event) {
  send(refOf(window->parent), WM_PARENTNOTIFY, noticeOf(event, window->id), lParamOf(window->handle));
}

// Tells a child's ancestors that it was created or destroyed.
void notifyParents(const WindowRef &window, UINT event) {
  WindowRef child = window;
  const LPARAM handle = lParamOf(window->handle);
  const WPARAM what = noticeOf(event, window->id);
  while (child->alive && child->isChild() && !(child->exStyle & WS_EX_NOPARENTNOTIFY)) {
    const WindowRef parent = refOf(child->parent);
    if (!parent || !parent->parent) break;
    send(parent, WM_PARENTNOTIFY, what, handle);
    child = parent;
  }
}

// Removes a window from all records. It gets no more messages.
void discard(const WindowRef &window) {
  validateTree(*window);
  for (Window *one : window->owned) one->owner = nullptr;
  if (window->owner) std::erase(window->owner->owned, window.get());
  forgetOnClipboard(window->handle);
  closeOnScreen(*window);
  if (window->surface) window->surface->orphan();
  forgetWindow(*window->queue, window->handle);
  unlink(*window);
  closeWindow(*window);
}

void sendDestroy(const WindowRef &window) {
  if (isActive(*window)) activateAnother(*window);
  if (window->alive) settleClipboard(window);
  if (!window->alive) return;
  send(window, WM_DESTROY);
  if (!window->alive) return;
  for (const WindowRef &child : childrenOf(*window))
    if (child && child->alive && child->parent == window.get()) sendDestroy(child);
}

void finish(const WindowRef &window) {
  for (const WindowRef &child : childrenOf(*window))
    if (child && child->alive && child->parent == window.get()) finish(child);
  if (!window->alive) return;
  send(window, WM_NCDESTROY);
  if (window->alive) discard(window);
}

void destroy(const WindowRef &window) {
  if (window->destroying) return;
  window->destroying = true;
  if (window->isChild()) notifyParents(window, WM_DESTROY);
  if (window->alive && window->is(WS_VISIBLE)) {
    if (window->isChild())
      showWindow(window, SW_HIDE);
    else
      setWindowPos(window, {nullptr, nullptr, 0, 0, 0, 0,
                            SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW});
  }
  if (!window->alive) return;
  while (!window->owned.empty()) {
    const WindowRef one = refOf(window->owned.back());
    destroy(one);
    if (one->alive) std::erase(window->owned, one.get()); // it is being destroyed already, further up the stack
    if (!window->alive) return;
  }
  sendDestroy(window);
  if (window->alive) finish(window);
}

// The style of a window that is created with a wanted style.
DWORD createdStyle(DWORD style) {
  if ((style & (WS_CHILD | WS_POPUP)) == 0) style |= WS_CAPTION; // overlapped windows have a caption
  if (!(style & WS_CHILD) || (style & WS_POPUP)) style |= WS_CLIPSIBLINGS;
  return style;
}

int nextDefault(int &last) { // windows without a given place form a cascade
  last = last >= 200 ? 22 : last + 22;
  return last;
}

struct Creation {
  CREATESTRUCTA create;
  std::shared_ptr<WindowClass> windowClass;
  WindowRef parent;
};

WindowRef makeRecord(const Creation &creation) {
  const CREATESTRUCTA &create = creation.create;
  auto window = std::make_shared<Window>();
  window->windowClass = creation.windowClass;
  window->procedure = creation.windowClass->procedure;
  window->queue = currentQueue();
  window->instance = create.hInstance;
  window->extra.resize(static_cast<size_t>(creation.windowClass->extra));
  window->style = createdStyle(static_cast<DWORD>(create.style)) & ~WS_VISIBLE;
  window->exStyle = create.dwExStyle;
  window->rect = {create.x, create.y, create.x + create.cx, create.y + create.cy};
  window->client = window->normal = window->rect;
  if (window->isChild()) window->id = reinterpret_cast<LONG_PTR>(create.hMenu);
  if (!openWindow(window)) return nullptr;
  Window &desktop = desktopWindow();
  if (window->isChild()) {
    Window &parent = *creation.parent;
    link(*window, parent, parent.children.empty() ? nullptr : parent.children.back()); // below its siblings
  } else {
    if (creation.parent) {
      window->owner = &rootOf(*creation.parent);
      window->owner->owned.push_back(window.get());
      window->exStyle |= window->owner->exStyle & WS_EX_TOPMOST; // as high as its owner
    }
    const bool topmost = window->exStyle & WS_EX_TOPMOST;
    Window *above = nullptr;
    for (Window *one : desktop.children)
      if (!topmost && (one->exStyle & WS_EX_TOPMOST)) above = one;
    link(*window, desktop, above);
    window->surface = std::make_shared<Surface>(window->handle);
    window->needsSize = (window->style & (WS_CHILD | WS_POPUP)) == 0;
  }
  return window;
}

bool limitSize(const WindowRef &window) {
  if (!window->is(WS_THICKFRAME) && (window->style & (WS_POPUP | WS_CHILD))) return true;
  const MINMAXINFO limits = sizeLimits(window);
  if (!window->alive) return false;
  window->rect.right =
      window->rect.left + std::clamp(window->width(), limits.ptMinTrackSize.x, limits.ptMaxTrackSize.x);
  window->rect.bottom =
      window->rect.top + std::clamp(window->height(), limits.ptMinTrackSize.y, limits.ptMaxTrackSize.y);
  return true;
}

// Sends the messages of a creation. Result: whether the window lives.
bool introduce(const WindowRef &window, CREATESTRUCTA &create) {
  if (!limitSize(window)) return false;
  if (!send(window, WM_NCCREATE, 0, addressOf(create)) || !window->alive) return false;
  const POINT origin = clientOrigin(*window->parent);
  RECT client = offset(window->rect, origin.x, origin.y); // in screen coordinates, unlike later calls
  send(window, WM_NCCALCSIZE, FALSE, addressOf(client));
  if (!window->alive) return false;
  client = offset(client, -origin.x, -origin.y);
  window->client = {client.left, client.top, std::max(client.left, client.right), std::max(client.top, client.bottom)};
  if (send(window, WM_CREATE, 0, addressOf(create)) == -1 || !window->alive) return false;
  if (!window->needsSize) {
    const RECT area = window->clientArea();
    send(window, WM_SIZE, SIZE_RESTORED, lParamOf(area.right, area.bottom));
    if (window->alive) send(window, WM_MOVE, 0, lParamOf(window->client.left, window->client.top));
  }
  return window->alive;
}

// Waits if windows open and close faster than the desktop shows them, so that they don't pile up.
void waitForScreen() {
  if (!hasScreen() || !theScreen().isBehind()) return;
  const DesktopUnlock unlocked;
  theScreen().catchUp();
}

HWND createWindow(Creation &creation) {
  CREATESTRUCTA &create = creation.create;
  const DWORD wanted = static_cast<DWORD>(create.style);
  const WindowRef window = makeRecord(creation);
  if (!window) return nullptr;
  const HWND handle = window->handle;
  const OnThrow unborn([&] { // no message tells of the end
    if (window->alive) discard(window);
  });
  if (!introduce(window, create)) {
    if (window->alive) finish(window);
    return nullptr;
  }
  if (window->exStyle & WS_EX_ACCEPTFILES) lookOnScreen(rootOf(*window));
  startInState(window, wanted);
  if (window->alive && window->isChild() && !(window->exStyle & WS_EX_NOPARENTNOTIFY)) notifyParent(window, WM_CREATE);
  if (window->alive && (wanted & WS_VISIBLE) && !window->is(WS_VISIBLE))
    showWindow(window, (wanted & (WS_MINIMIZE | WS_MAXIMIZE)) == WS_MINIMIZE ? SW_SHOWMINIMIZED : SW_SHOW);
  return window->alive ? handle : nullptr;
}

} // namespace

void above::endThread(Queue &queue) {
  std::vector<WindowRef> own;
  const auto collect = [&](auto &self, const Window &window) -> void {
    for (const Window *child : window.children) {
      if (child->queue.get() == &queue) own.push_back(refOf(child));
      self(self, *child);
    }
  };
  collect(collect, desktopWindow());
  // innermost first, and without messages: no thread can handle them
  std::for_each(own.rbegin(), own.rend(), [](const WindowRef &window) { discard(window); });
  closeClipboardOf(queue.thread);
}

} // namespace platform

using namespace platform;

HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, int x, int y, int width, int height,
                     HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    Creation creation;
    creation.windowClass = findClass(className);
    if (!creation.windowClass) {
      SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
      return nullptr;
    }
    const bool child = (style & (WS_CHILD | WS_POPUP)) == WS_CHILD;
    if (!child) waitForScreen();
    creation.parent = parent ? windowOf(parent) : nullptr;
    if (parent && !creation.parent) return nullptr;
    if (child && !creation.parent) {
      SetLastError(ERROR_TLW_WITH_WSCHILD);
      return nullptr;
    }
    static int lastDefault = 0;
    if (x == CW_USEDEFAULT) {
      x = child ? 0 : nextDefault(lastDefault);
      y = child ? 0 : x;
    }
    if (width == CW_USEDEFAULT) {
      const RECT area = theScreen().info().workArea;
      width = child ? 0 : static_cast<int>((area.right - area.left) * 3 / 4);
      height = child ? 0 : static_cast<int>((area.bottom - area.top) * 3 / 4);
    }
    constexpr int kFarthest = INT_MAX / 4; // edges and their sums must not overflow
    x = std::clamp(x, -kFarthest, kFarthest);
    y = std::clamp(y, -kFarthest, kFarthest);
    const DWORD created = createdStyle(style);
    creation.create = {parameter,
                       instance,
                       menu,
                       parent,
                       std::clamp(height, 0, kFarthest),
                       std::clamp(width, 0, kFarthest),
                       y,
                       x,
                       static_cast<LONG>(style),
                       title,
                       className,
                       edgeStyle(created, exStyle)};
    return createWindow(creation);
  });
}

BOOL DestroyWindow(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target) return FALSE;
    if (!target->parent || target->queue != currentQueue()) return failWith(ERROR_ACCESS_DENIED);
    destroy(target);
    return TRUE;
  });
}
