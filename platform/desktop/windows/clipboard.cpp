#include "platform/desktop/windows/clipboard.h"

#include "platform/desktop/clipboard/formats.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"

#include <algorithm>
#include <cstring>

namespace platform {

namespace {

// Ends the program's ownership and tells the owner window. The content is another program's from here on.
void giveUp() {
  Clipboard &all = clipboard();
  const HWND owner = std::exchange(all.owner, nullptr);
  all.content.clear();
  all.ofOthers = true;
  all.known = false;
  all.takenSince = false;
  ++all.sequence;
  tell(owner, WM_DESTROYCLIPBOARD);
}

void tellOfChange() {
  Clipboard &all = clipboard();
  for (const HWND listener : all.listeners)
    if (Queue *const queue = above::queueOfWindow(listener))
      post(*queue, messageFor(listener, WM_CLIPBOARDUPDATE, 0, 0));
  tell(all.viewer, WM_DRAWCLIPBOARD, wParamOf(all.owner));
}

void dropPromises() {
  Clipboard &all = clipboard();
  if (!all.content.dropPromises()) return;
  ++all.sequence;
  if (all.open)
    all.changed = true;
  else
    announceClipboard();
}

void endOwnership() {
  clipboard().owner = nullptr;
  dropPromises();
}

void close() {
  Clipboard &all = clipboard();
  all.open = false;
  all.openFor = nullptr;
  if (std::exchange(all.changed, false)) {
    all.content.addMade();
    all.takenSince = false; // the program's change is newer
    announceClipboard();
  } else if (all.takenSince) {
    giveUp();
    tellOfChange();
  }
}

// Ends the text in a block with a NUL.
void endText(UINT format, const BlockBytes &block) {
  if (!isClipText(format) || block.size == 0) return;
  const size_t unit = std::min<size_t>(format == CF_UNICODETEXT ? 2 : 1, block.size);
  std::memset(static_cast<char *>(block.at.get()) + (block.size / unit - 1) * unit, 0, unit);
}

// Makes the whole content the program's, before the program adds to what another one has put there.
void takeOver() {
  Clipboard &all = clipboard();
  learnTypes();
  std::vector<UINT> formats;
  for (const ClipItem &item : all.content.items())
    if (item.from == ClipItem::From::others) formats.push_back(item.format);
  for (const UINT format : formats) clipDataFor(format);
  if (!all.ofOthers) return;
  all.content.adopt();
  all.ofOthers = false;
}

// Whether the calling thread may put data on the clipboard: it has opened it, or its window is asked for a promise.
bool maySet() {
  const Clipboard &all = clipboard();
  const Queue *const owner = all.rendering > 0 ? above::queueOfWindow(all.owner) : nullptr;
  return (owner && owner == currentQueue().get()) || isOpener();
}

} // namespace

Clipboard &clipboard() {
  static auto *one = [] {
    auto *made = new Clipboard;
    made->ofOthers = theScreen().isSeen();
    made->known = !made->ofOthers;
    return made;
  }();
  return *one;
}

bool isOpener() {
  const Clipboard &all = clipboard();
  return (all.open && all.opener == GetCurrentThreadId()) || failWith(ERROR_CLIPBOARD_NOT_OPEN);
}

void tell(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  Queue *const queue = above::queueOfWindow(window);
  if (!queue) return;
  if (queue->thread == GetCurrentThreadId())
    above::call(window, message, wParam, lParam);
  else
    sendNotice(*queue, std::make_shared<Sent>(Sent{window, message, wParam, lParam, {}, 0, false, nullptr}));
}

void announceClipboard() {
  Clipboard &all = clipboard();
  theScreen().offerClipboard(all.content.types(), ++all.offer);
  tellOfChange();
}

void settleClipboard(const WindowRef &window) {
  Clipboard &all = clipboard();
  if (all.owner != window->handle) return;
  if (all.content.hasPromises()) send(window, WM_RENDERALLFORMATS);
  if (all.owner == window->handle) endOwnership();
}

void forgetOnClipboard(HWND window) {
  if (!hasScreen()) return;
  Clipboard &all = clipboard();
  if (all.owner == window) endOwnership();
  if (all.openFor == window) all.openFor = nullptr;
  if (all.viewer == window) all.viewer = nullptr;
  std::erase(all.listeners, window);
}

void closeClipboardOf(DWORD thread) {
  if (hasScreen() && clipboard().open && clipboard().opener == thread) close();
}

void above::takeClipboard(const ClipboardTaken &report) {
  Clipboard &all = clipboard();
  if (report.offer != all.offer) return; // the program has changed the clipboard since
  ++all.takeovers;
  all.takenSince = true;
  if (all.open) return;
  giveUp();
  tellOfChange();
}

} // namespace platform

using namespace platform;

BOOL OpenClipboard(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (window && !windowOf(window)) return FALSE;
    Clipboard &all = clipboard();
    if (all.open && all.openFor != window) return failWith(ERROR_ACCESS_DENIED);
    all.open = true;
    all.openFor = window;
    all.opener = currentQueue()->thread; // the end of this thread closes the clipboard
    return TRUE;
  });
}

BOOL CloseClipboard() {
  return locked<BOOL>(FALSE, []() -> BOOL {
    if (!isOpener()) return FALSE;
    close();
    return TRUE;
  });
}

BOOL EmptyClipboard() {
  return locked<BOOL>(FALSE, []() -> BOOL {
    if (!isOpener()) return FALSE;
    Clipboard &all = clipboard();
    tell(all.owner, WM_DESTROYCLIPBOARD);
    if (!isOpener()) return FALSE;
    all.content.clear();
    all.ofOthers = false;
    all.known = all.changed = true;
    all.owner = all.openFor;
    ++all.sequence;
    return TRUE;
  });
}

HANDLE SetClipboardData(UINT format, HANDLE data) {
  return locked<HANDLE>(nullptr, [&]() -> HANDLE {
    if (!maySet()) return nullptr;
    Clipboard &all = clipboard();
    const ClipKind kind = clipKindOf(format);
    const ClipData there = data ? clipDataOf(format, data) : ClipData();
    const bool mustHold = kind == ClipKind::block || kind == ClipKind::bitmap;
    if (format == 0 || (data && mustHold && (isNone(there) || (kind == ClipKind::block && there.block.size == 0)))) {
      SetLastError(ERROR_INVALID_HANDLE);
      return nullptr;
    }
    if (all.ofOthers) takeOver();
    endText(format, there.block);
    const ClipItem *const before = all.content.find(format);
    const bool keepsPromise = all.rendering > 0 && before && before->from == ClipItem::From::program && !before->handle;
    all.content.give(format, data, there.block);
    if (keepsPromise) return data; // a kept promise is no change
    all.changed = true;
    ++all.sequence;
    return data;
  });
}

HANDLE GetClipboardData(UINT format) {
  return locked<HANDLE>(nullptr, [&]() -> HANDLE { return isOpener() ? clipDataFor(format) : nullptr; });
}

UINT EnumClipboardFormats(UINT format) {
  return locked<UINT>(0, [&]() -> UINT {
    if (!isOpener()) return 0;
    learnTypes();
    const std::vector<ClipItem> &items = clipboard().content.items();
    SetLastError(ERROR_SUCCESS);
    if (format == 0) return items.empty() ? 0 : items.front().format;
    auto at = std::find_if(items.begin(), items.end(), [&](const ClipItem &item) { return item.format == format; });
    return at == items.end() || ++at == items.end() ? 0 : at->format;
  });
}

int CountClipboardFormats() {
  return locked<int>(0, [] {
    learnTypes();
    return static_cast<int>(clipboard().content.items().size());
  });
}

BOOL IsClipboardFormatAvailable(UINT format) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    learnTypes();
    return clipboard().content.find(format) != nullptr;
  });
}

int GetPriorityClipboardFormat(UINT *formats, int count) {
  return locked<int>(0, [&]() -> int {
    learnTypes();
    ClipContent &content = clipboard().content;
    if (content.items().empty()) return 0;
    for (int i = 0; i < count; ++i)
      if (content.find(formats[i])) return static_cast<int>(formats[i]);
    return -1;
  });
}

HWND GetClipboardOwner() {
  return locked<HWND>(nullptr, [] { return clipboard().owner; });
}

HWND GetOpenClipboardWindow() {
  return locked<HWND>(nullptr, [] { return clipboard().openFor; });
}

DWORD GetClipboardSequenceNumber() {
  return locked<DWORD>(0, [] { return clipboard().sequence; });
}

UINT RegisterClipboardFormatA(LPCSTR name) {
  return locked<UINT>(0, [&]() -> UINT {
    const UINT format = name ? registerClipFormat(name) : 0;
    return format ? format : static_cast<UINT>(failWith(ERROR_INVALID_PARAMETER));
  });
}

int GetClipboardFormatNameA(UINT format, LPSTR text, int size) {
  return locked<int>(0, [&]() -> int {
    const std::string &name = clipFormatName(format);
    if (name.empty()) return format >= 0xC000 && format <= 0xFFFF ? failWith(ERROR_INVALID_HANDLE) : 0;
    if (size <= 0) return failWith(ERROR_MORE_DATA);
    const size_t length = std::min(name.size(), static_cast<size_t>(size) - 1);
    std::memcpy(text, name.data(), length);
    text[length] = '\0';
    return length == name.size() ? static_cast<int>(length) : failWith(ERROR_MORE_DATA);
  });
}

// ---- Windows that are told of changes

BOOL AddClipboardFormatListener(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!windowOf(window)) return FALSE;
    std::vector<HWND> &listeners = clipboard().listeners;
    if (std::count(listeners.begin(), listeners.end(), window)) return failWith(ERROR_INVALID_PARAMETER);
    listeners.push_back(window);
    return TRUE;
  });
}

BOOL RemoveClipboardFormatListener(HWND window) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!windowOf(window)) return FALSE;
    return std::erase(clipboard().listeners, window) ? TRUE : failWith(ERROR_INVALID_PARAMETER);
  });
}

HWND SetClipboardViewer(HWND window) {
  return locked<HWND>(nullptr, [&]() -> HWND {
    if (window && !windowOf(window)) return nullptr;
    Clipboard &all = clipboard();
    const HWND next = std::exchange(all.viewer, window);
    tell(window, WM_DRAWCLIPBOARD, wParamOf(all.owner));
    return next;
  });
}

HWND GetClipboardViewer() {
  return locked<HWND>(nullptr, [] { return clipboard().viewer; });
}

BOOL ChangeClipboardChain(HWND window, HWND next) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    Clipboard &all = clipboard();
    if (all.viewer != window) {
      above::send(all.viewer, WM_CHANGECBCHAIN, wParamOf(window), lParamOf(next));
      return TRUE;
    }
    if (next && !windowOf(next)) return FALSE;
    all.viewer = next;
    return TRUE;
  });
}
