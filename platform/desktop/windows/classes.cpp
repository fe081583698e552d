#include "platform/desktop/windows/classes.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/windows/above.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace platform {

namespace {

std::map<std::string, std::shared_ptr<WindowClass>> &classes() {
  static auto *all = new std::map<std::string, std::shared_ptr<WindowClass>>;
  return *all;
}

std::string folded(LPCSTR name) {
  std::string key = name;
  std::transform(key.begin(), key.end(), key.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return key;
}

// Whether a class name is a number in place of a string.
bool isNumber(LPCSTR name) { return reinterpret_cast<uintptr_t>(name) <= 0xFFFF; }

} // namespace

std::shared_ptr<WindowClass> findClass(LPCSTR name) {
  if (isNumber(name)) return nullptr;
  static bool registered = false;
  if (!std::exchange(registered, true)) above::registerSystemClasses();
  const auto at = classes().find(folded(name));
  return at == classes().end() ? nullptr : at->second;
}

} // namespace platform

using namespace platform;

ATOM RegisterClassA(const WNDCLASSA *windowClass) {
  return locked<ATOM>(0, [&]() -> ATOM {
    if (!windowClass || isNumber(windowClass->lpszClassName) || windowClass->cbWndExtra < 0) {
      SetLastError(ERROR_INVALID_PARAMETER);
      return 0;
    }
    if (findClass(windowClass->lpszClassName)) {
      SetLastError(ERROR_CLASS_ALREADY_EXISTS);
      return 0;
    }
    auto made = std::make_shared<WindowClass>();
    made->name = windowClass->lpszClassName;
    made->style = windowClass->style;
    made->procedure = windowClass->lpfnWndProc;
    made->extra = windowClass->cbWndExtra;
    made->instance = windowClass->hInstance;
    made->icon = windowClass->hIcon;
    made->cursor = windowClass->hCursor;
    made->background = windowClass->hbrBackground;
    classes()[folded(windowClass->lpszClassName)] = made;
    static ATOM atom = 0xC000;
    return ++atom;
  });
}
