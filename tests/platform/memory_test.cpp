// Global memory as programs hand it on: handles, addresses, locks, sizes and the errors.
#include "platform/errors.h"
#include "support/handles.h"

#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace {

class MemoryTest : public HandlesTest {
 protected:
  static unsigned char at(HGLOBAL block, size_t place) {
    const auto *const bytes = static_cast<unsigned char *>(GlobalLock(block));
    const unsigned char byte = bytes ? bytes[place] : 0xEE;
    GlobalUnlock(block);
    return byte;
  }
  static HGLOBAL blockOf(const std::string &bytes, UINT flags = GMEM_MOVEABLE) {
    const HGLOBAL block = GlobalAlloc(flags, bytes.size());
    std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
    GlobalUnlock(block);
    return block;
  }
};

} // namespace

TEST_F(MemoryTest, AFixedBlockIsItsAddress) {
  const HGLOBAL block = GlobalAlloc(GPTR | GMEM_DDESHARE | GMEM_DISCARDABLE, 100);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(std::string(static_cast<char *>(block), 100), std::string(100, '\0'));
  EXPECT_EQ(GlobalLock(block), block);
  for (int times = 0; times < 2; ++times) EXPECT_EQ(GlobalUnlock(block), TRUE) << "there is nothing to count";
  EXPECT_EQ(GlobalHandle(block), block);
  EXPECT_EQ(GlobalFlags(block), 0u);
  EXPECT_EQ(GlobalReAlloc(block, 50, 0), block);
  EXPECT_EQ(GlobalSize(block), 50u);
  expectErrors({{"it may not move", [&] { return !GlobalReAlloc(block, 5000000, 0); }, ERROR_NOT_ENOUGH_MEMORY}});
  static_cast<char *>(block)[49] = 'x';
  const HGLOBAL moved = GlobalReAlloc(block, 5000000, GMEM_MOVEABLE | GMEM_ZEROINIT);
  ASSERT_NE(moved, nullptr);
  EXPECT_EQ(at(moved, 49), 'x');
  EXPECT_EQ(at(moved, 4999999), 0);
  EXPECT_EQ(GlobalFlags(moved), 0u) << "fixed still";
  EXPECT_EQ(GlobalFree(moved), nullptr);
}

TEST_F(MemoryTest, LocksOfAMovableBlockCount) {
  const HGLOBAL block = GlobalAlloc(GHND | GMEM_DDESHARE | GMEM_DISCARDABLE, 100);
  EXPECT_EQ(reinterpret_cast<UINT_PTR>(block) >> 31, 0u) << "a small number";
  EXPECT_EQ(GlobalFlags(block), GMEM_DDESHARE | GMEM_DISCARDABLE);
  const auto unlock = [&] { return !GlobalUnlock(block); };
  expectErrors({{"not locked", unlock, ERROR_NOT_LOCKED}});
  void *const address = GlobalLock(block);
  EXPECT_EQ(GlobalHandle(address), block);
  EXPECT_EQ(GlobalLock(block), address);
  EXPECT_EQ(GlobalFlags(block) & GMEM_LOCKCOUNT, 2u);
  EXPECT_EQ(GlobalUnlock(block), TRUE);
  expectErrors({{"the last lock", unlock, ERROR_SUCCESS}});
  for (int i = 0; i < 300; ++i) GlobalLock(block);
  int unlocked = 1;
  while (GlobalUnlock(block)) ++unlocked;
  EXPECT_EQ(unlocked, 255);
  GlobalLock(block);
  EXPECT_EQ(GlobalFree(block), nullptr) << "locked or not";
}

TEST_F(MemoryTest, AMovableBlockChangesItsSize) {
  const HGLOBAL block = blockOf("abcd");
  GlobalLock(block);
  expectErrors({{"locked", [&] { return !GlobalReAlloc(block, 1000000, 0); }, ERROR_NOT_ENOUGH_MEMORY}});
  EXPECT_EQ(GlobalReAlloc(block, 1000000, GMEM_MOVEABLE | GMEM_ZEROINIT), block);
  EXPECT_EQ(GlobalReAlloc(block, 0, GMEM_MOVEABLE), nullptr) << "locked ones aren't discarded";
  GlobalUnlock(block);
  EXPECT_EQ(GlobalSize(block), 1000000u);
  EXPECT_EQ(at(block, 3), 'd');
  EXPECT_EQ(at(block, 4), 0);
  EXPECT_EQ(at(block, 999999), 0);
  expectErrors({{"more than there is", [&] { return !GlobalReAlloc(block, ~SIZE_T{0}, GMEM_MOVEABLE); },
                 ERROR_NOT_ENOUGH_MEMORY}});
  EXPECT_EQ(GlobalReAlloc(block, 2, 0), block);
  EXPECT_EQ(at(block, 1), 'b');
  EXPECT_EQ(GlobalDiscard(block), block);
  expectErrors({{"discarded", [&] { return !GlobalLock(block); }, ERROR_DISCARDED}});
  GlobalFree(block);

  const HGLOBAL fixed = blockOf("xyz", GMEM_FIXED), movable = GlobalReAlloc(fixed, 0, GMEM_MODIFY | GMEM_MOVEABLE);
  EXPECT_NE(movable, fixed);
  EXPECT_EQ(at(movable, 2), 'z');
  GlobalFree(movable);
}

TEST_F(MemoryTest, WhatIsNoBlockIsKnown) {
  const HGLOBAL freed = GlobalAlloc(GMEM_MOVEABLE, 10), fixed = GlobalAlloc(GMEM_FIXED, 10);
  GlobalFree(freed);
  for (const HGLOBAL none : {freed, reinterpret_cast<HGLOBAL>(UINT_PTR{0x123456})})
    expectErrors({{"lock", [=] { return !GlobalLock(none); }, ERROR_INVALID_HANDLE},
                  {"unlock", [=] { return !GlobalUnlock(none); }, ERROR_INVALID_HANDLE},
                  {"size", [=] { return GlobalSize(none) == 0; }, ERROR_INVALID_HANDLE},
                  {"resize", [=] { return !GlobalReAlloc(none, 5, GMEM_MOVEABLE); }, ERROR_INVALID_HANDLE},
                  {"free", [=] { return GlobalFree(none) == none; }, ERROR_INVALID_HANDLE}});
  expectErrors({{"inside", [=] { return !GlobalHandle(static_cast<char *>(fixed) + 1); }, ERROR_INVALID_HANDLE},
                {"lock of null", [] { return !GlobalLock(nullptr); }, kUntouched},
                {"free of null", [] { return !GlobalFree(nullptr); }, kUntouched}});
  EXPECT_EQ(LocalFree(fixed), nullptr) << "a name for the same";
}

TEST_F(MemoryTest, ThreadsShareTheTable) {
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread)
    threads.emplace_back([thread] {
      for (int i = 0; i < 2000; ++i) {
        const HGLOBAL block = GlobalAlloc(i % 2 ? GMEM_MOVEABLE : GMEM_FIXED, 16);
        std::memset(GlobalLock(block), thread, 16);
        const HGLOBAL grown = GlobalReAlloc(block, 64, GMEM_MOVEABLE);
        EXPECT_EQ(at(grown, 15), thread);
        EXPECT_EQ(GlobalFree(grown), nullptr);
      }
    });
  for (std::thread &thread : threads) thread.join();
}
