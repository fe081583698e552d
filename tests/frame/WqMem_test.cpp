#include "support/allocation.h"
#include "support/library.h"

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#ifdef __SANITIZE_ADDRESS__
// Requests that nobody can meet are answered with null, as they are without the sanitizer.
extern "C" PLATFORM_EXPORT const char *__asan_default_options() { return "allocator_may_return_null=1"; }
#endif

namespace {

using MemTest = LibraryTest;

bool allZero(const void *block, size_t size) {
  return std::string(static_cast<const char *>(block), size) == std::string(size, '\0');
}

TEST_F(MemTest, BlocksAreZeroedAndCounted) {
  const uint32_t live = wqMain.allocCount;
  for (size_t size = 1; size <= 5000; size = size * 3 + 1)
    for (int round = 0; round < 3; ++round) { // later rounds get memory that was written to
      void *block = WqMem_Alloc(size);
      void *array = WqMem_AllocArray(size, 3);
      EXPECT_EQ(wqMain.allocCount, live + 2);
      EXPECT_TRUE(allZero(block, size) && allZero(array, size * 3)) << size;
      std::memset(block, 0xFF, size), std::memset(array, 0xFF, size * 3);
      WqMem_Term(); // frees nothing
      EXPECT_EQ(wqMain.allocCount, live + 2);
      for (void *each : {block, array, static_cast<void *>(nullptr)}) WqMem_Free(each);
      EXPECT_EQ(wqMain.allocCount, live);
    }
  constexpr size_t large = SIZE_MAX / 2 + 9; // doubled, it wraps to 16
  for (void *none : {WqMem_Alloc(0), WqMem_AllocArray(0, 5), WqMem_AllocArray(5, 0), WqMem_AllocArray(2, large),
                     WqMem_AllocArray(large, 2)})
    EXPECT_EQ(none, nullptr);
  for (const bool array : {false, true}) {
    AllocationFailure failure(1);
    EXPECT_EQ(array ? WqMem_AllocArray(4, 2) : WqMem_Alloc(8), nullptr);
    EXPECT_TRUE(failure.happened());
  }
  EXPECT_EQ(wqMain.allocCount, live);
  WqMem_Init();
  EXPECT_EQ(std::exchange(wqMain.allocCount, live), 0u);
}

TEST_F(MemTest, ResizingKeepsTheBytesAndNeverCounts) {
  const uint32_t live = wqMain.allocCount;
  auto *block = static_cast<char *>(WqMem_Realloc(nullptr, 10));
  std::memcpy(block, "0123456789", 10);
  block = static_cast<char *>(WqMem_Realloc(block, 100000));
  EXPECT_EQ(std::string(block, 10), "0123456789");
  block = static_cast<char *>(WqMem_Realloc(block, 4));
  {
    AllocationFailure failure(1);
    EXPECT_EQ(WqMem_Realloc(block, 200000), nullptr);
    EXPECT_TRUE(failure.happened());
  }
  EXPECT_EQ(std::string(block, 4), "0123"); // the old block stays
  EXPECT_EQ(WqMem_Realloc(block, 0), nullptr);
  EXPECT_EQ(wqMain.allocCount, live);
}

TEST_F(MemTest, CopyAndZeroTouchTheirRangeAlone) {
  const std::string pattern = "0123456789abcdefghijklmnopqrstuvwxyz";
  for (size_t from = 0; from < 6; ++from)
    for (size_t to = 0; to <= from; ++to) // the ranges overlap, the destination below the source
      for (const size_t size : {0, 1, 5, 8, 23}) {
        std::string bytes = pattern, expected = pattern;
        EXPECT_EQ(WqMem_Copy(&bytes[to], &bytes[from], size), &bytes[to]);
        EXPECT_EQ(bytes, expected.replace(to, size, pattern, from, size)) << size;
        WqMem_Zero(&bytes[to], size);
        EXPECT_EQ(bytes, expected.replace(to, size, size, '\0')) << size;
      }
}

using PoolTest = LibraryTest;
using Sizes = std::vector<uint32_t>;

// The storage sizes of a pool's chunks in order, with its links checked.
Sizes chunks(const WqMemBlock &pool) {
  Sizes result;
  const WqMemBlockNode *prev = nullptr;
  for (const WqMemBlockNode *node = pool.first; node; node = node->next) {
    EXPECT_EQ(node->prev, prev);
    result.push_back(node->elem->size);
    prev = node;
  }
  EXPECT_EQ(pool.last, prev);
  return result;
}

TEST_F(PoolTest, AChunkGivesPiecesRoundedTo16) {
  WqMemBlockElem elem;
  WqMemBlockElem_Init(&elem, 100);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(elem.cursor, elem.base);
    std::memset(elem.base, 0xFF, elem.size);
    // each request, and how much is used after it
    const std::pair<uint32_t, ptrdiff_t> requests[] = {
        {0, 0},           {1, 16},          {16, 32},         {17, 64}, {37, 64}, {0xFFFFFFF0, 64},
        {0xFFFFFFF1, 64}, {0xFFFFFFFF, 64}, {0x80000000, 64}, {32, 96}, {1, 96},  {0, 96}};
    for (const auto &[size, used] : requests) {
      uint8_t *cursor = elem.cursor;
      const bool fits = size == 0 || elem.base + used > cursor;
      EXPECT_EQ(WqMemBlockElem_Alloc(&elem, size), fits ? cursor : nullptr) << size;
      EXPECT_EQ(elem.cursor - elem.base, used) << size;
    }
    WqMemBlockElem_Clear(&elem);
  }
  WqMemBlockElem_Term(&elem);

  AllocationFailure failure(1);
  WqMemBlockElem_Init(&elem, 100);
  EXPECT_TRUE(!elem.base && !elem.cursor);
  for (const uint32_t size : {0u, 1u, 1u}) EXPECT_EQ(WqMemBlockElem_Alloc(&elem, size), nullptr);
  WqMemBlockElem_Term(&elem);
}

// Where a request is met: in which chunk, counted from 0, and at which offset; {-1, 0} for a refusal.
using Place = std::pair<int, ptrdiff_t>;

Place take(WqMemBlock &pool, uint32_t size) {
  const auto *piece = static_cast<const uint8_t *>(WqMemBlock_Alloc(&pool, size));
  if (!piece) return {-1, 0};
  int chunk = 0;
  for (const WqMemBlockNode *node = pool.first; node != pool.current; node = node->next) ++chunk;
  return {chunk, piece - pool.current->elem->base};
}

TEST_F(PoolTest, GrowsByChunksAndGivesTheSamePiecesAfterClear) {
  const uint32_t live = wqMain.allocCount;
  WqMemBlock pool;
  WqMemBlock_Init(&pool, 4096);
  for (int round = 0; round < 2; ++round) {
    AllocationFailure failure(round); // once grown, no call of the allocator
    for (int ix = 0; ix < 4096; ++ix) ASSERT_EQ(take(pool, 1), Place(ix / 256, ix % 256 * 16));
    EXPECT_EQ(take(pool, 0), Place(15, 4096));
    EXPECT_FALSE(failure.happened());
    EXPECT_EQ(chunks(pool), Sizes(16, 4096));
    for (const WqMemBlockNode *node = pool.first; node; node = node->next) std::memset(node->elem->base, 0xFF, 4096);
    WqMemBlock_Clear(&pool);
  }
  EXPECT_EQ(wqMain.allocCount, live); // a pool's memory isn't counted
  WqMemBlock_Term(&pool);
}

TEST_F(PoolTest, LargeRequestsAndSpacePassedBy) {
  WqMemBlock pool;
  WqMemBlock_Init(&pool, 100);
  const std::pair<uint32_t, Place> growing[] = {{50, {0, 0}},   {60, {1, 0}}, // leaves 36 of the first chunk unused
                                                {20, {1, 64}},  {97, {2, 0}}, // rounds up to more than a chunk
                                                {5000, {3, 0}}, {0xFFFFFFF1, {-1, 0}}, {0xFFFFFFFF, {-1, 0}}};
  const std::pair<uint32_t, Place> again[] = {{112, {2, 0}}, // the first chunk that it fits
                                              {16, {3, 0}},  // and none before that
                                              {4992, {3, 16}},
                                              {1, {4, 0}}};
  for (const auto &[size, place] : growing) EXPECT_EQ(take(pool, size), place) << size;
  EXPECT_EQ(chunks(pool), (Sizes{100, 100, 112, 5008}));
  std::memset(pool.last->elem->base, 0xFF, 5008);
  WqMemBlock_Clear(&pool);
  for (const auto &[size, place] : again) EXPECT_EQ(take(pool, size), place) << size;
  EXPECT_EQ(chunks(pool), (Sizes{100, 100, 112, 5008, 100}));

  WqMemBlcok_Dispose(&pool);
  EXPECT_EQ(std::tuple(pool.first, pool.last, pool.current, pool.elemSize),
            std::tuple(nullptr, nullptr, nullptr, 100u));
  WqMemBlock_Term(&pool);
}

TEST_F(PoolTest, WithoutMemoryThePoolStays) {
  for (int n = 1; n <= 3; ++n) { // a chunk's node, its record and its storage
    WqMemBlock pool;
    AllocationFailure noFirst(n);
    WqMemBlock_Init(&pool, 64);
    EXPECT_TRUE(noFirst.happened());
    EXPECT_EQ(chunks(pool), Sizes{});
    for (const int chunk : {0, 1}) EXPECT_EQ(take(pool, 64), Place(chunk, 0)); // the first request tries again
    WqMemBlock_Clear(&pool);
    AllocationFailure noThird(n);
    EXPECT_EQ(take(pool, 80), Place(-1, 0));
    EXPECT_TRUE(noThird.happened());
    EXPECT_EQ(take(pool, 32), Place(0, 0)); // goes on where it stood
    EXPECT_EQ(take(pool, 80), Place(2, 0));
    EXPECT_EQ(chunks(pool), (Sizes{64, 64, 80}));
    WqMemBlock_Term(&pool);
  }
}

} // namespace
