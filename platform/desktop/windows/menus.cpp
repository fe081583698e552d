// The system menu of windows.

#include "platform/desktop/lock.h"
#include "platform/desktop/windows/window.h"

#include <algorithm>
#include <map>

namespace platform {

namespace {

std::map<HMENU, HWND> &systemMenus() {
  static auto *all = new std::map<HMENU, HWND>;
  return *all;
}

SystemMenu *menuOf(HMENU handle) {
  const auto at = systemMenus().find(handle);
  const WindowRef window = at == systemMenus().end() ? nullptr : windowOrNone(at->second);
  return window ? window->menu.get() : nullptr;
}

std::pair<UINT, UINT> *itemOf(SystemMenu &menu, UINT item, UINT flags) {
  if (flags & MF_BYPOSITION) return item < menu.items.size() ? &menu.items[item] : nullptr;
  const auto at = std::find_if(menu.items.begin(), menu.items.end(),
                               [&](const auto &one) { return one.first == item && !(one.second & MF_SEPARATOR); });
  return at == menu.items.end() ? nullptr : &*at;
}

} // namespace

} // namespace platform

using namespace platform;

HMENU GetSystemMenu(HWND window, BOOL revert) {
  return locked<HMENU>(nullptr, [&]() -> HMENU {
    const WindowRef target = windowOf(window);
    if (!target) return nullptr;
    if (revert) {
      if (target->menu) systemMenus().erase(target->menu->handle);
      target->menu.reset();
      return nullptr;
    }
    if (!target->menu && !target->is(WS_SYSMENU)) return nullptr;
    if (!target->menu) {
      static uintptr_t last = 0x30000;
      target->menu = std::make_unique<SystemMenu>();
      target->menu->handle = reinterpret_cast<HMENU>(++last);
      target->menu->items = {{SC_RESTORE, MF_ENABLED},  {SC_MOVE, MF_ENABLED},     {SC_SIZE, MF_ENABLED},
                             {SC_MINIMIZE, MF_ENABLED}, {SC_MAXIMIZE, MF_ENABLED}, {0, MF_SEPARATOR},
                             {SC_CLOSE, MF_DEFAULT}};
      std::erase_if(systemMenus(), [](const auto &one) { return !windowOrNone(one.second); });
      systemMenus()[target->menu->handle] = window;
    }
    return target->menu->handle;
  });
}

BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags) {
  return locked<BOOL>(-1, [&]() -> BOOL {
    SystemMenu *target = menuOf(menu);
    std::pair<UINT, UINT> *found = target ? itemOf(*target, item, flags) : nullptr;
    if (!found) return -1;
    constexpr UINT kState = MF_GRAYED | MF_DISABLED;
    const UINT old = found->second & kState;
    found->second = (found->second & ~kState) | (flags & kState);
    return static_cast<BOOL>(old);
  });
}

UINT GetMenuState(HMENU menu, UINT item, UINT flags) {
  return locked<UINT>(0xFFFFFFFFu, [&]() -> UINT {
    SystemMenu *target = menuOf(menu);
    const std::pair<UINT, UINT> *found = target ? itemOf(*target, item, flags) : nullptr;
    return found ? found->second : 0xFFFFFFFFu;
  });
}
