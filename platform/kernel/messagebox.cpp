// Messages to the user of a program without a desktop: a line on standard error.

#include "platform/kernel/codepage.h"
#include "platform/kernel/errors.h"

#include <cstdio>

int MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT) {
  return platform::guarded(0, [&] {
    const std::string shown = platform::utf8FromCodePage(text ? text : "");
    const std::string title = platform::utf8FromCodePage(caption ? caption : "");
    std::fprintf(stderr, "%s: %s\n", title.c_str(), shown.c_str());
    return IDOK;
  });
}
