// Lists of window objects. A message to the objects of a list may end some of their windows.

#include "windows/windows_private.h"

#include "frame/memory.h"

namespace {

WqWord word(const WqWnd *wnd) { return reinterpret_cast<WqWord>(wnd); }

void removeNode(WqList **list, WqList *node) {
  *list = wqDisconnect(node, *list);
  WqMem_Free(node);
}

} // namespace

void WqWndLst_Add(WqList **list, WqWnd *wnd) {
  if (WqList *node = WqList_AddP(*list, word(wnd))) *list = node;
}

void WqWndLst_Remove(WqList **list, WqWnd *wnd) {
  while (WqList *node = WqList_Find(*list, word(wnd))) removeNode(list, node);
}

void WqWndLst_RemoveAll(WqList **list) {
  while (*list) removeNode(list, *list);
}

void WqWndLst_SendAll(WqList **list, uint32_t mask, uint32_t msg, WPARAM wParam, LPARAM lParam) {
  for (WqWalk walk(*list); WqList *node = walk.node; walk.passOver(node)) {
    const auto *wnd = reinterpret_cast<const WqWnd *>(node->data);
    if (wnd->msgReq & mask) SendMessageA(wnd->hwnd, msg, wParam, lParam);
  }
}
