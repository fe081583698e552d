// Properties of windows, and their relations to one another.

#include "platform/desktop/lock.h"
#include "platform/desktop/windows/classes.h"
#include "platform/desktop/windows/window.h"

#include <algorithm>
#include <unistd.h>

using namespace platform;

BOOL IsWindow(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL { return windowOf(window) != nullptr; });
}

DWORD GetWindowThreadProcessId(HWND window, DWORD *process) {
  return locked<DWORD>(0, [&]() -> DWORD {
    const WindowRef target = windowOf(window);
    if (!target) return 0;
    if (process) *process = static_cast<DWORD>(getpid());
    return target->queue->thread;
  });
}

BOOL IsChild(HWND parent, HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef below = windowOf(window);
    const WindowRef above = windowOrNone(parent);
    if (!below || !above) return FALSE;
    for (const Window *up = below.get(); up->parent && up->isChild(); up = up->parent)
      if (up->parent == above.get()) return TRUE;
    return FALSE;
  });
}

BOOL IsWindowVisible(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    return target && isVisible(*target);
  });
}

BOOL IsWindowEnabled(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    return target && !target->is(WS_DISABLED);
  });
}

BOOL IsIconic(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    return target && target->is(WS_MINIMIZE);
  });
}

BOOL IsZoomed(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    return target && target->is(WS_MAXIMIZE);
  });
}

HWND GetDesktopWindow() {
  return locked<HWND>(nullptr, [] { return desktopWindow().handle; });
}

HWND GetParent(HWND window) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef target = windowOf(window);
    if (!target) return nullptr;
    if (target->isChild()) return handleOf(target->parent);
    return target->is(WS_POPUP) ? handleOf(target->owner) : nullptr;
  });
}

HWND GetWindow(HWND window, UINT relation) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef target = windowOf(window);
    if (!target) return nullptr;
    if (relation == GW_OWNER) return handleOf(target->owner);
    if (relation == GW_CHILD) return target->children.empty() ? nullptr : target->children.front()->handle;
    if (!target->parent) return nullptr;
    const std::vector<Window *> &all = target->parent->children;
    const auto at = std::find(all.begin(), all.end(), target.get());
    switch (relation) {
    case GW_HWNDFIRST: return all.front()->handle;
    case GW_HWNDLAST: return all.back()->handle;
    case GW_HWNDNEXT: return at + 1 == all.end() ? nullptr : at[1]->handle;
    case GW_HWNDPREV: return at == all.begin() ? nullptr : at[-1]->handle;
    default: SetLastError(ERROR_INVALID_PARAMETER); return nullptr;
    }
  });
}

HWND GetAncestor(HWND window, UINT relation) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef target = windowOf(window);
    if (!target || !target->parent) return nullptr;
    switch (relation) {
    case GA_PARENT: return target->parent->handle;
    case GA_ROOT: return rootOf(*target).handle;
    case GA_ROOTOWNER: {
      Window *root = &rootOf(*target);
      while (root->owner) root = &rootOf(*root->owner);
      return root->handle;
    }
    default: SetLastError(ERROR_INVALID_PARAMETER); return nullptr;
    }
  });
}

HWND FindWindowA(LPCSTR className, LPCSTR title) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    for (const Window *window : desktopWindow().children)
      if ((!className || findClass(className) == window->windowClass) && (!title || window->text == title))
        return window->handle;
    return nullptr;
  });
}

HWND GetDlgItem(HWND parent, int id) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    const WindowRef target = windowOf(parent);
    if (!target) return nullptr;
    for (const Window *child : target->children)
      if (child->id == id) return child->handle;
    return nullptr;
  });
}

int GetClassNameA(HWND window, LPSTR text, int size) {
  return locked<int>(0, [&]() -> int {
    const WindowRef target = windowOf(window);
    if (!target || size <= 0) return 0;
    const size_t length = target->windowClass->name.copy(text, static_cast<size_t>(size) - 1);
    text[length] = '\0';
    return static_cast<int>(length);
  });
}
