// Intrusive trees: the caller's records, linked and unlinked, never allocated.

#include "containers/containers.h"

namespace {

// Puts a node under a parent, behind a sibling, or first for a null sibling.
void place(WqTree *parent, WqTree *sibling, WqTree *node) {
  node->parent = parent;
  node->prev = sibling;
  node->next = sibling ? sibling->next : parent->firstChild;
  (node->prev ? node->prev->next : parent->firstChild) = node;
  (node->next ? node->next->prev : parent->lastChild) = node;
  ++parent->childCount;
}

// Whether a node is among its parent's children. A node that was taken out keeps its links.
bool isHeld(const WqTree *node) {
  return node->parent && (node->prev ? node->prev->next : node->parent->firstChild) == node;
}

} // namespace

void WqTree_Init(WqTree *node) {
  if (node) *node = {};
}

void WqTree_Term(WqTree *) {}

void WqTree_AddPrev(WqTree *reference, WqTree *node) {
  if (node && reference->parent) place(reference->parent, reference->prev, node);
}

void WqTree_AddNext(WqTree *reference, WqTree *node) {
  if (node && reference->parent) place(reference->parent, reference, node);
}

void WqTree_AddTop(WqTree *parent, WqTree *node) {
  if (node) place(parent, nullptr, node);
}

void WqTree_AddBottom(WqTree *parent, WqTree *node) {
  if (node) place(parent, parent->lastChild, node);
}

void WqTree_Disconnect(WqTree *node) {
  if (node->prev) node->prev->next = node->next;
  if (node->next) node->next->prev = node->prev;
  WqTree *parent = node->parent;
  if (!parent) return;
  if (parent->firstChild == node) parent->firstChild = node->next;
  if (parent->lastChild == node) parent->lastChild = node->prev;
  --parent->childCount;
}

// Looks at nothing above the two parents. Where a subtree was taken out of a tree, that memory may be freed.
int WqTree_Swap(WqTree *a, WqTree *b) {
  if (!a || !b || a == b || !isHeld(a) || !isHeld(b)) return 0;
  if (a->parent == b || b->parent == a) return 0;
  if (a->prev == b) {
    WqTree_Disconnect(a);
    place(b->parent, b->prev, a);
    return 1;
  }
  const bool neighbours = a->next == b;
  WqTree *oldParent = a->parent;
  WqTree *oldPrev = a->prev;
  WqTree_Disconnect(a);
  place(b->parent, b, a);
  if (neighbours) return 1;
  WqTree_Disconnect(b);
  place(oldParent, oldPrev, b);
  return 1;
}

uint32_t WqTree_NofParent(const WqTree *node) {
  uint32_t count = 0;
  while ((node = node->parent) != nullptr) ++count;
  return count;
}
