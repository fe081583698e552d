#include "containers/model.h"
#include "support/allocation.h"
#include "support/library.h"

#include <algorithm>
#include <utility>

namespace {

using HashTest = LibraryTest;
using Bucket = std::vector<std::pair<uint32_t, WqWord>>; // key and value, newest first

Bucket bucket(const WqHash &hash, uint32_t ix) {
  Bucket result;
  for (const WqWord word : words(hash.buckets[ix])) {
    const auto *entry = reinterpret_cast<const WqHashEntry *>(word);
    result.emplace_back(entry->key, entry->data);
  }
  return result;
}

TEST_F(HashTest, WithoutMemoryTheTableStays) {
  WqHash hash;
  WqHash_Init(&hash, 255);
  WqHash_Insert(&hash, 1, 10);
  const uint32_t live = wqMain.allocCount;
  for (int n = 1; n <= 2; ++n) { // the entry, the node
    AllocationFailure failure(n);
    EXPECT_EQ(WqHash_Insert(&hash, 256, 20), 0);
    EXPECT_EQ(bucket(hash, 1), (Bucket{{1, 10}}));
    EXPECT_EQ(wqMain.allocCount, live);
  }
  EXPECT_EQ(WqHash_Insert(&hash, 256, 20), 1);
  AllocationFailure failure(1);
  EXPECT_EQ(WqHash_Insert(&hash, 1, 11), 1); // a new value for a key needs none
  EXPECT_FALSE(failure.happened());
  EXPECT_EQ(bucket(hash, 1), (Bucket{{256, 20}, {1, 11}}));
  WqHash_RemoveAll(&hash);
  WqHash_Term(&hash);

  for (const uint32_t count : {0u, 16u}) { // without buckets it holds nothing
    AllocationFailure noArray(1);
    WqHash_Init(&hash, count);
    EXPECT_EQ(noArray.happened(), count > 0);
    for (const uint32_t key : {0u, 20u}) {
      EXPECT_EQ(WqHash_Insert(&hash, key, 1), 0);
      EXPECT_TRUE(!WqHash_FindList(&hash, key) && !WqHash_FindData(&hash, key));
      WqHash_Remove(&hash, key), WqHash_RemoveWith(&hash, key);
    }
    WqHash_RemoveAll(&hash), WqHash_RemoveAllWith(&hash), WqHash_Term(&hash);
  }
}

TEST_F(HashTest, ARandomRunAgreesWithAModel) {
  for (const uint32_t count : {7u, 255u}) { // the second is that of the registries, which divide by a constant
    SCOPED_TRACE(count);
    WqHash hash;
    std::vector<Bucket> model(count);
    WqHash_Init(&hash, count);
    const uint32_t live = wqMain.allocCount;
    Dice dice;
    for (uint32_t step = 0; step < 2500; ++step) {
      uint32_t key = dice(40);
      if (key >= 20) key = UINT32_MAX - key;
      Bucket &expected = model[key % count];
      const auto ofKey = [&](const auto &element) { return element.first == key; };
      const bool present = std::any_of(expected.begin(), expected.end(), ofKey);
      WqHashEntry *entry = WqHash_FindData(&hash, key);
      ASSERT_EQ(entry != nullptr, present);
      ASSERT_EQ(present ? entry->key : key, key);
      const WqList *node = WqHash_FindList(&hash, key);
      ASSERT_EQ(node ? node->data : 0, asWord(entry));
      ASSERT_EQ(WqHash_Ix(&hash, key), key % count);
      const uint32_t action = dice(8);
      if (action < 4) {
        ASSERT_EQ(WqHash_Insert(&hash, key, step), 1);
        if (!present) expected.emplace(expected.begin(), key, step);
        std::find_if(expected.begin(), expected.end(), ofKey)->second = step;
      } else if (action < 7) {
        (action < 6 ? WqHash_RemoveWith : WqHash_Remove)(&hash, key);
        std::erase_if(expected, ofKey);
        if (action == 6) WqMem_Free(entry); // it has stayed behind
      } else if (dice(40) == 0) {
        WqHash_RemoveAll(&hash);
        model.assign(count, {});
      }
      size_t size = 0;
      for (uint32_t ix = 0; ix < count; ++ix) {
        ASSERT_EQ(bucket(hash, ix), model[ix]) << "bucket " << ix << ", step " << step;
        size += model[ix].size();
      }
      ASSERT_EQ(wqMain.allocCount, live + 2 * size) << step;
    }
    WqHash_RemoveAll(&hash);
    for (uint32_t key = 0; key < 20; ++key) WqHash_Insert(&hash, key, asWord(WqMem_Alloc(8)));
    WqHash_RemoveAllWith(&hash); // nodes, entries and values
    EXPECT_EQ(wqMain.allocCount, live);
    WqHash_Term(&hash);
  }
}

} // namespace
