// COM: threads enter and leave it, and nothing else of it is here.

#include "platform/winapi/com.h"

namespace {

thread_local unsigned entered = 0;

} // namespace

HRESULT CoInitialize(LPVOID reserved) {
  if (reserved) return E_INVALIDARG;
  return entered++ == 0 ? S_OK : S_FALSE;
}

void CoUninitialize() {
  if (entered > 0) --entered;
}
