// Modules: programs look up functions that some systems lack.

#include "platform/kernel/errors.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <iterator>
#include <string>

namespace platform {

namespace {

bool isNumber(LPCSTR name) { return reinterpret_cast<uintptr_t>(name) <= 0xFFFF; }

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
