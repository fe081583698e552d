// Files that the user drops: who gets them, and what WM_DROPFILES brings.

#include "platform/desktop/windows/drops.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"
#include "platform/kernel/codepage.h"
#include "platform/kernel/globalmem.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace platform {

namespace {

constexpr UINT kCount = 0xFFFFFFFF; // asks for the number of files

using Bytes = std::span<const uint8_t>;

struct Drop {
  BlockBytes block;
  DROPFILES head{};

  size_t unit() const { return head.fWide ? sizeof(WCHAR) : 1; }
  Bytes names() const { return block.span().subspan(std::min<size_t>(head.pFiles, block.size)); }
};

std::optional<Drop> dropOf(HDROP handle) {
  Drop drop{bytesOf(handle)};
  if (drop.block.size < sizeof drop.head) return std::nullopt;
  std::memcpy(&drop.head, drop.block.at.get(), sizeof drop.head);
  return drop;
}

// The name that a block of names begins with, without its end mark, which may be missing.
Bytes firstName(Bytes names, size_t unit) {
  constexpr uint8_t kEnd[sizeof(WCHAR)] = {};
  size_t size = 0;
  while (size + unit <= names.size() && std::memcmp(&names[size], kEnd, unit) != 0) size += unit;
  return names.first(size);
}

// Goes through the names up to one of a number. count: gets how many there were before it, or all.
// Result: that one; empty when there is none.
Bytes findName(const Drop &drop, UINT number, UINT &count) {
  Bytes rest = drop.names();
  for (count = 0;; ++count) {
    const Bytes name = firstName(rest, drop.unit());
    if (name.empty() || count == number) return name;
    rest = rest.subspan(std::min(name.size() + drop.unit(), rest.size()));
  }
}

std::string textOf(const Drop &drop, Bytes name) {
  if (!drop.head.fWide) return {reinterpret_cast<const char *>(name.data()), name.size()};
  std::u16string wide(name.size() / sizeof(WCHAR), u'\0'); // the bytes may lie at an odd place
  if (!name.empty()) std::memcpy(wide.data(), name.data(), name.size());
  return textFromUtf16(wide);
}

UINT queryFile(const Drop &drop, UINT number, LPSTR room, UINT size) {
  UINT count = 0;
  const Bytes name = findName(drop, number, count);
  if (number == kCount) return count;
  if (name.empty()) return 0;
  const std::string text = textOf(drop, name);
  const auto length = static_cast<UINT>(text.size());
  if (!room || size == 0) return length;
  const UINT copied = std::min(length, size - 1);
  std::memcpy(room, text.data(), copied);
  room[copied] = '\0';
  return copied;
}

// The innermost window at a point that takes files; null for none, and for a point in a window that takes no input.
Window *takerAt(HWND top, POINT at) {
  Window *window = recordOf(above::placedAt(at, top));
  for (const Window *up = window; up; up = up->parent)
    if (up->is(WS_DISABLED)) return nullptr;
  while (window && !(window->exStyle & WS_EX_ACCEPTFILES)) window = window->isChild() ? window->parent : nullptr;
  return window;
}

HGLOBAL makeDrop(const DROPFILES &head, const std::vector<std::string> &files) {
  std::string bytes(reinterpret_cast<const char *>(&head), sizeof head);
  for (const std::string &file : files) bytes.append(file.c_str(), file.size() + 1);
  bytes += '\0';
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  if (!block) return nullptr;
  std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
  GlobalUnlock(block);
  return block;
}

} // namespace

bool takesFiles(const Window &window) {
  return window.exStyle & WS_EX_ACCEPTFILES || std::any_of(window.children.begin(), window.children.end(),
                                                           [](const Window *one) { return takesFiles(*one); });
}

void dropFiles(const FilesDropped &dropped) {
  const Window *const taker = takerAt(dropped.window, dropped.at);
  if (!taker) return;
  const POINT origin = clientOrigin(*taker);
  DROPFILES head{};
  head.pFiles = sizeof head;
  head.pt = {dropped.at.x - origin.x, dropped.at.y - origin.y};
  const RECT area = taker->clientArea();
  head.fNC = !PtInRect(&area, head.pt);
  if (head.fNC) head.pt = dropped.at;
  const HGLOBAL drop = makeDrop(head, dropped.files);
  if (drop && !post(*taker->queue, messageFor(taker->handle, WM_DROPFILES, reinterpret_cast<WPARAM>(drop), 0)))
    GlobalFree(drop);
}

} // namespace platform

using namespace platform;

void DragAcceptFiles(HWND window, BOOL accepts) {
  const LONG style = GetWindowLongA(window, GWL_EXSTYLE), bit = WS_EX_ACCEPTFILES;
  SetWindowLongA(window, GWL_EXSTYLE, accepts ? style | bit : style & ~bit);
}

UINT DragQueryFileA(HDROP drop, UINT number, LPSTR name, UINT size) {
  return locked<UINT>(0, [&]() -> UINT {
    const std::optional<Drop> held = dropOf(drop);
    return held ? queryFile(*held, number, name, size) : 0;
  });
}

BOOL DragQueryPoint(HDROP drop, POINT *point) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const std::optional<Drop> held = dropOf(drop);
    if (!held || !point) return FALSE;
    *point = held->head.pt;
    return !held->head.fNC;
  });
}

void DragFinish(HDROP drop) { GlobalFree(drop); }
