// Doubly linked chains of words. A list has no own record: operations that can change the head return it.

#include "containers/containers.h"

#include "frame/memory.h"

namespace {

WqList *makeNode(WqWord data) {
  auto *node = static_cast<WqList *>(WqMem_Alloc(sizeof(WqList)));
  if (node) node->data = data;
  return node;
}

void freeData(WqWord data) { WqMem_Free(reinterpret_cast<void *>(data)); }

// Puts a node between two neighbours. Either may be null.
void link(WqList *prev, WqList *node, WqList *next) {
  node->prev = prev;
  node->next = next;
  if (prev) prev->next = node;
  if (next) next->prev = node;
}

WqList *lastNode(WqList *head) {
  while (head && head->next) head = head->next;
  return head;
}

// Frees every node that holds the data. Result: whether there was such a node.
bool removeElement(WqList **head, WqWord data) {
  bool found = false;
  for (WqList *node = *head; node;) {
    WqList *next = node->next;
    if (node->data == data) {
      *head = WqList_Remove(node, *head);
      found = true;
    }
    node = next;
  }
  return found;
}

} // namespace

void WqList_Init(WqList *node) {
  if (node) *node = {};
}

void WqList_Term(WqList *) {}

WqList *WqList_AddN(WqList *position, WqWord data) {
  WqList *node = makeNode(data);
  if (node && position) link(position, node, position->next);
  return node;
}

WqList *WqList_AddP(WqList *position, WqWord data) {
  WqList *node = makeNode(data);
  if (node && position) link(position->prev, node, position);
  return node;
}

WqList *WqList_AddTail(WqList *head, WqWord data) { return WqList_AddN(lastNode(head), data); }

WqList *WqList_ConnectTail(WqList *head, WqList *node) {
  link(lastNode(head), node, nullptr);
  return node;
}

WqList *WqList_ConnectN(WqList *node, WqList *position, WqList *head) {
  if (!head) {
    link(nullptr, node, nullptr);
    return node;
  }
  if (!position) position = lastNode(head);
  link(position, node, position->next);
  return head;
}

WqList *WqList_ConnectP(WqList *node, WqList *position, WqList *head) {
  if (!head) {
    link(nullptr, node, nullptr);
    return node;
  }
  if (!position) position = head;
  link(position->prev, node, position);
  return position == head ? node : head;
}

WqList *WqList_DisConnect(WqList *node, WqList *head) {
  if (node == head) {
    head = node->next;
    if (head) head->prev = nullptr;
  } else {
    if (node->prev) node->prev->next = node->next;
    if (node->next) node->next->prev = node->prev;
  }
  node->prev = nullptr;
  node->next = nullptr;
  return head;
}

WqList *WqList_DisConnectElement(WqList *head, WqWord data) {
  WqList *node = WqList_Find(head, data);
  return node ? WqList_DisConnect(node, head) : head;
}

WqList *WqList_Remove(WqList *node, WqList *head) {
  head = WqList_DisConnect(node, head);
  WqMem_Free(node);
  return head;
}

WqList *WqList_RemoveWith(WqList *node, WqList *head) {
  freeData(node->data);
  return WqList_Remove(node, head);
}

WqList *WqList_RemoveElement(WqList *head, WqWord data) {
  removeElement(&head, data);
  return head;
}

WqList *WqList_RemoveElementWith(WqList *head, WqWord data) {
  if (removeElement(&head, data)) freeData(data);
  return head;
}

WqList *WqList_RemoveAll(WqList *head) {
  while (head) {
    WqList *next = head->next;
    WqMem_Free(head);
    head = next;
  }
  return nullptr;
}

void WqList_RemoveAllWith(WqList *head) {
  for (const WqList *node = head; node; node = node->next) freeData(node->data);
  WqList_RemoveAll(head);
}

WqList *WqList_Find(WqList *head, WqWord data) {
  while (head && head->data != data) head = head->next;
  return head;
}
