// Opens the files that its arguments name, as an application does: opener exist|create FILE...
// Its exit status tells how many it could open.

#include "platform/platform.h"

#include <cstring>

int main() {
  const bool creates = __argc > 1 && std::strcmp(__argv[1], "create") == 0;
  int opened = 0;
  for (int i = 2; i < __argc; ++i) {
    const HANDLE file = CreateFileA(__argv[i], GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    creates ? CREATE_NEW : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE && CloseHandle(file)) ++opened;
  }
  return opened;
}
