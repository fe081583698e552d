// The system's own numbers and things: metrics, colours, the cursor, the system menu, layered windows, modules.

#include "platform/desktop/desktop.h"
#include "platform/desktop/drawing/icons.h"
#include "platform/desktop/drawing/objects.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/surface.h"
#include "platform/desktop/window.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <iterator>
#include <map>

namespace platform {

namespace {

// The classic look: numbers that no theme changes.
int fixedMetric(int index) {
  switch (index) {
  case SM_CXVSCROLL:
  case SM_CYHSCROLL: return 16;
  case SM_CYCAPTION: return 19;
  case SM_CXBORDER:
  case SM_CYBORDER: return 1;
  case SM_CXFIXEDFRAME:
  case SM_CYFIXEDFRAME: return 3;
  case SM_CXICON:
  case SM_CYICON:
  case SM_CXCURSOR:
  case SM_CYCURSOR: return 32;
  case SM_CYMENU: return 19;
  case SM_MOUSEPRESENT:
  case SM_MOUSEWHEELPRESENT: return 1;
  case SM_CXMIN:
  case SM_CXMINTRACK: return 112;
  case SM_CYMIN:
  case SM_CYMINTRACK: return 27;
  case SM_CXSIZE:
  case SM_CYSIZE: return 18;
  case SM_CXFRAME:
  case SM_CYFRAME:
  case SM_CXDOUBLECLK:
  case SM_CYDOUBLECLK:
  case SM_CXDRAG:
  case SM_CYDRAG: return 4;
  case SM_CMOUSEBUTTONS: return 3;
  case SM_CXEDGE:
  case SM_CYEDGE: return 2;
  case SM_CXSMICON:
  case SM_CYSMICON:
  case SM_CYSMCAPTION: return 16;
  default: return 0;
  }
}

constexpr COLORREF kColors[] = {
    RGB(212, 208, 200), RGB(58, 110, 165),  RGB(10, 36, 106),   RGB(128, 128, 128), // scroll bar ... inactive caption
    RGB(212, 208, 200), RGB(255, 255, 255), RGB(0, 0, 0),       RGB(0, 0, 0),       // menu ... menu text
    RGB(0, 0, 0),       RGB(255, 255, 255), RGB(212, 208, 200), RGB(212, 208, 200), // window text ... inactive border
    RGB(128, 128, 128), RGB(10, 36, 106),   RGB(255, 255, 255), RGB(212, 208, 200), // workspace ... button face
    RGB(128, 128, 128), RGB(128, 128, 128), RGB(0, 0, 0),       RGB(212, 208, 200), // button shadow ...
    RGB(255, 255, 255), RGB(64, 64, 64),    RGB(212, 208, 200), RGB(0, 0, 0),       // button highlight ... info text
    RGB(255, 255, 225), RGB(181, 181, 181), RGB(0, 0, 128),     RGB(166, 202, 240), // info background ...
    RGB(192, 192, 192), RGB(10, 36, 106),   RGB(212, 208, 200),                     // ... menu bar
};

std::array<HBRUSH, std::size(kColors)> colorBrushes{};

HBRUSH colorBrush(int index) {
  HBRUSH &brush = colorBrushes[static_cast<size_t>(index)];
  if (!brush) brush = static_cast<HBRUSH>(openStock(std::make_shared<Brush>(BS_SOLID, kColors[index])));
  return brush;
}

bool isNumber(LPCSTR name) { return reinterpret_cast<uintptr_t>(name) <= 0xFFFF; }

Qt::CursorShape shapeOf(HCURSOR cursor) {
  switch (reinterpret_cast<uintptr_t>(cursor) - kSystemCursors) {
  case 32513: return Qt::IBeamCursor;
  case 32514: return Qt::WaitCursor;
  case 32515: return Qt::CrossCursor;
  case 32642: return Qt::SizeFDiagCursor;
  case 32643: return Qt::SizeBDiagCursor;
  case 32644: return Qt::SizeHorCursor;
  case 32645: return Qt::SizeVerCursor;
  case 32646: return Qt::SizeAllCursor;
  case 32649: return Qt::PointingHandCursor;
  default: return Qt::ArrowCursor;
  }
}

HCURSOR currentCursor = nullptr;

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

constexpr const char *kModules[] = {"user32", "gdi32", "kernel32"};

std::string moduleName(LPCSTR name) {
  std::string text = name;
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (text.ends_with(".dll")) text.resize(text.size() - 4);
  return text;
}

HMODULE moduleAt(size_t index) { return reinterpret_cast<HMODULE>(0x10000 * (index + 1)); }

} // namespace

} // namespace platform

using namespace platform;

int GetSystemMetrics(int index) {
  return locked<int>(0, [&]() -> int {
    const auto screen = [] { return screenSize(); };
    const auto area = [] { return workArea(); };
    switch (index) {
    case SM_CXSCREEN:
    case SM_CXVIRTUALSCREEN: return screen().cx;
    case SM_CYSCREEN:
    case SM_CYVIRTUALSCREEN: return screen().cy;
    case SM_CXFULLSCREEN: return area().right - area().left;
    case SM_CYFULLSCREEN: return area().bottom - area().top - fixedMetric(SM_CYCAPTION);
    case SM_CXMAXIMIZED: return area().right - area().left + 2 * fixedMetric(SM_CXFRAME);
    case SM_CYMAXIMIZED: return area().bottom - area().top + 2 * fixedMetric(SM_CYFRAME);
    case SM_CXMAXTRACK: return screen().cx + 2 * fixedMetric(SM_CXFRAME) + 4;
    case SM_CYMAXTRACK: return screen().cy + 2 * fixedMetric(SM_CYFRAME) + 4;
    default: return fixedMetric(index);
    }
  });
}

DWORD GetSysColor(int index) { return index >= 0 && index < static_cast<int>(std::size(kColors)) ? kColors[index] : 0; }

HBRUSH GetSysColorBrush(int index) {
  return locked<HBRUSH>(nullptr, [&]() -> HBRUSH {
    return index >= 0 && index < static_cast<int>(std::size(kColors)) ? colorBrush(index) : nullptr;
  });
}

HCURSOR SetCursor(HCURSOR cursor) {
  return locked<HCURSOR>(nullptr, [&] {
    if (cursor != currentCursor) showCursor(shapeOf(cursor), cursor == nullptr);
    return std::exchange(currentCursor, cursor);
  });
}

HMODULE GetModuleHandleA(LPCSTR name) {
  if (!name) return reinterpret_cast<HMODULE>(uintptr_t{0x400000}); // the program itself
  const auto *at = std::find(std::begin(kModules), std::end(kModules), moduleName(name));
  if (at != std::end(kModules)) return moduleAt(static_cast<size_t>(at - kModules));
  SetLastError(ERROR_MOD_NOT_FOUND);
  return nullptr;
}

HMODULE LoadLibraryA(LPCSTR name) {
  if (name) return GetModuleHandleA(name);
  SetLastError(ERROR_INVALID_PARAMETER);
  return nullptr;
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name) {
  if (module == moduleAt(0) && !isNumber(name) && std::strcmp(name, "SetLayeredWindowAttributes") == 0)
    return reinterpret_cast<FARPROC>(reinterpret_cast<void *>(SetLayeredWindowAttributes));
  SetLastError(ERROR_PROC_NOT_FOUND);
  return nullptr;
}

BOOL FreeLibrary(HMODULE module) { return module != nullptr; }

BOOL SetLayeredWindowAttributes(HWND window, COLORREF key, BYTE alpha, DWORD flags) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target) return FALSE;
    if (!(target->exStyle & WS_EX_LAYERED)) return failWith(ERROR_INVALID_PARAMETER);
    target->colorKey = key;
    if (flags & LWA_ALPHA) target->alpha = alpha;
    target->layeredFlags = flags;
    if (target->surface) target->surface->restyle();
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
                             {SC_CLOSE, MF_ENABLED}};
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
