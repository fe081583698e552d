// Conversions between code pages and UTF-16.

#include "platform/kernel/codepage.h"
#include "platform/kernel/errors.h"

#include <algorithm>
#include <cstring>

using namespace platform;

namespace {

// Copies a converted text to the caller's room. Size 0 asks for the room needed.
template <typename Unit, typename Text> int handOut(const Text &text, Unit *room, int size) {
  const int length = static_cast<int>(text.size());
  if (size == 0) return length;
  if (length > size) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return 0;
  }
  std::copy_n(text.data(), text.size(), room);
  return length;
}

bool knows(UINT codePage) { return codePage == CP_ACP || codePage == 932 || codePage == CP_UTF8; }

// Whether the arguments of a conversion are valid.
bool areUsable(const void *text, int length, const void *room, int size) {
  return text && length != 0 && size >= 0 && (size == 0 || (room && room != text));
}

} // namespace

int MultiByteToWideChar(UINT codePage, DWORD, LPCSTR text, int length, WCHAR *wide, int size) {
  return guarded(0, [&] {
    if (!knows(codePage) || !areUsable(text, length, wide, size)) return failWith(ERROR_INVALID_PARAMETER);
    const std::string_view bytes(text, length < 0 ? std::strlen(text) + 1 : static_cast<size_t>(length));
    const bool utf8 = codePage == CP_UTF8;
    return handOut(utf16FromUtf8(utf8 ? std::string(bytes) : utf8FromCodePage(bytes)), wide, size);
  });
}

// Code page 932 loses nothing either, so the default character is never used.
int WideCharToMultiByte(UINT codePage, DWORD, const WCHAR *wide, int length, LPSTR text, int size, LPCSTR defaultText,
                        BOOL *usedDefault) {
  return guarded(0, [&] {
    const bool wantsDefault = defaultText || usedDefault; // invalid with UTF-8, which has a code for every character
    if (!knows(codePage) || !areUsable(wide, length, text, size) || (codePage == CP_UTF8 && wantsDefault))
      return failWith(ERROR_INVALID_PARAMETER);
    std::u16string units;
    for (const WCHAR *at = wide; length < 0 || at < wide + length; ++at) {
      units += static_cast<char16_t>(*at);
      if (length < 0 && *at == 0) break;
    }
    if (usedDefault) *usedDefault = FALSE;
    const std::string utf8 = utf8FromUtf16(units);
    return handOut(codePage == CP_UTF8 ? utf8 : codePageFromUtf8(utf8), text, size);
  });
}

UINT GetConsoleOutputCP() { return CP_UTF8; }

BOOL IsDBCSLeadByte(BYTE byte) { return isLeadByte(byte); }
