#include "copier.h"

#include "picture.h"

#include <cstring>

namespace {

HGLOBAL blockOf(const std::string &text) {
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
  if (!block) return nullptr;
  std::memcpy(GlobalLock(block), text.c_str(), text.size() + 1);
  GlobalUnlock(block);
  return block;
}

// On the clipboard a line ends with a carriage return too.
std::string forClipboard(const std::string &text) {
  std::string lines;
  for (const char c : text) lines += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return lines;
}

} // namespace

void Copier::copy(HWND window) {
  const HBITMAP picture = Picture(window).take();
  WqClipBoard_Set(
      CF_BITMAP, reinterpret_cast<WqWord>(this), [](WqWord format, WqWord, WqWord, uint32_t, WqWord copier) -> WqWord {
        return reinterpret_cast<WqWord>(reinterpret_cast<Copier *>(copier)->give(static_cast<UINT>(format)));
      });
  DeleteObject(std::exchange(picture_, picture));
}

HANDLE Copier::give(UINT format) {
  return format == CF_BITMAP ? std::exchange(picture_, nullptr) : blockOf(forClipboard(report_()));
}

void Copier::render(WPARAM format) {
  const auto data = reinterpret_cast<HANDLE>(WqClipBoard_CallBack(format, 0, 0));
  if (data) SetClipboardData(static_cast<UINT>(format), data);
}

void Copier::renderAll(HWND window) {
  if (!OpenClipboard(window)) return;
  if (GetClipboardOwner() == window) {
    render(CF_BITMAP);
    render(CF_TEXT);
  }
  CloseClipboard();
}
