// Chained hash tables on 32-bit keys. Three levels: a bucket's list node, the entry it holds, and the caller's value.

#include "containers/containers.h"

#include "frame/memory.h"

namespace {

WqHashEntry *entryOf(const WqList *node) { return reinterpret_cast<WqHashEntry *>(node->data); }

WqList **bucketOf(const WqHash *hash, uint32_t key) { return &hash->buckets[WqHash_Ix(hash, key)]; }

inline WqList *find(const WqHash *hash, uint32_t key) {
  if (!hash->buckets) return nullptr;
  WqList *node = *bucketOf(hash, key);
  while (node && entryOf(node)->key != key) node = node->next;
  return node;
}

template <auto removeNode> void removeKey(WqHash *hash, uint32_t key) {
  WqList *node = WqHash_FindList(hash, key);
  if (!node) return;
  WqList **head = bucketOf(hash, key);
  *head = removeNode(node, *head);
}

} // namespace

void WqHash_Init(WqHash *hash, uint32_t bucketCount) {
  hash->buckets = static_cast<WqList **>(WqMem_AllocArray(sizeof(WqList *), bucketCount));
  hash->bucketCount = bucketCount;
}

void WqHash_Term(WqHash *hash) {
  WqMem_Free(hash->buckets);
  hash->buckets = nullptr;
}

// Most keys are ids below the number of buckets and need no division. For the registries' number of buckets the divisor
// is a constant.
uint32_t WqHash_Ix(const WqHash *hash, uint32_t key) {
  if (key < hash->bucketCount) return key;
  if (hash->bucketCount == 255) return key % 255;
  return hash->bucketCount ? key % hash->bucketCount : 0;
}

WqList *WqHash_FindList(const WqHash *hash, uint32_t key) { return find(hash, key); }

WqHashEntry *WqHash_FindData(const WqHash *hash, uint32_t key) {
  const WqList *node = find(hash, key);
  return node ? entryOf(node) : nullptr;
}

int WqHash_Insert(WqHash *hash, uint32_t key, WqWord data) {
  if (WqHashEntry *present = WqHash_FindData(hash, key)) {
    present->data = data;
    return 1;
  }
  if (!hash->buckets) return 0;
  auto *entry = static_cast<WqHashEntry *>(WqMem_Alloc(sizeof(WqHashEntry)));
  if (!entry) return 0;
  *entry = {data, key};
  WqList **head = bucketOf(hash, key);
  WqList *node = WqList_AddP(*head, reinterpret_cast<WqWord>(entry));
  if (!node) {
    WqMem_Free(entry);
    return 0;
  }
  *head = node;
  return 1;
}

void WqHash_Remove(WqHash *hash, uint32_t key) { removeKey<WqList_Remove>(hash, key); }
void WqHash_RemoveWith(WqHash *hash, uint32_t key) { removeKey<WqList_RemoveWith>(hash, key); }

void WqHash_RemoveAll(WqHash *hash) {
  for (uint32_t ix = 0; hash->buckets && ix < hash->bucketCount; ++ix) {
    WqList_RemoveAllWith(hash->buckets[ix]);
    hash->buckets[ix] = nullptr;
  }
}

void WqHash_RemoveAllWith(WqHash *hash) {
  for (uint32_t ix = 0; hash->buckets && ix < hash->bucketCount; ++ix)
    for (const WqList *node = hash->buckets[ix]; node; node = node->next)
      WqMem_Free(reinterpret_cast<void *>(entryOf(node)->data));
  WqHash_RemoveAll(hash);
}
