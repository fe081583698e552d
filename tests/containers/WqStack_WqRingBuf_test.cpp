#include "containers/model.h"
#include "support/allocation.h"
#include "support/library.h"

#include <cstring>
#include <deque>
#include <string>

namespace {

using StackTest = LibraryTest;
using RingBufTest = LibraryTest;

TEST_F(StackTest, WordsComeBackInReverse) {
  WqStack stack;
  std::memset(&stack, 0xFF, sizeof stack);
  WqStack_Init(&stack);
  for (const WqWord value : {WqWord{1}, WqWord{0}, ~WqWord{0}}) {
    EXPECT_EQ(WqStack_Push(&stack, value), 1);
    AllocationFailure failure(1);
    EXPECT_EQ(WqStack_Push(&stack, 9), 0);
  }
  WqWord word = 77;
  for (const Words &left : {Words{~WqWord{0}, 0, 1}, Words{0, 1}, Words{1}}) {
    EXPECT_EQ(words(stack.head), left);
    EXPECT_EQ(stack.count, left.size());
    EXPECT_EQ(WqStack_Pop(&stack, &word), 1);
    EXPECT_EQ(word, left[0]);
  }
  EXPECT_EQ(WqStack_Pop(&stack, &word), 0);
  EXPECT_EQ(word, 1u); // as before
  for (const WqWord value : {5u, 6u}) WqStack_Push(&stack, value);
  WqStack_Term(&stack); // frees the nodes, takes no value for a block, and keeps the count
  EXPECT_EQ(stack.count, 2u);
}

// The bytes held, read from the record itself.
std::string held(const WqRingBuf &ring) {
  std::string bytes;
  for (uint32_t ix = 0; ix < ring.count; ++ix)
    bytes += static_cast<char>(ring.buffer[(ring.readIx + ix) % ring.capacity]);
  return bytes;
}

int putBlock(WqRingBuf &ring, const std::string &bytes) {
  return WqRingBuf_PutBlock(&ring, bytes.data(), static_cast<uint32_t>(bytes.size()));
}

TEST_F(RingBufTest, BlocksThatAreTooLongOrEmpty) {
  WqRingBuf ring;
  WqRingBuf_Init(&ring, 4);
  EXPECT_EQ(WqRingBuf_Putc(&ring, 0xFF), 1);
  for (const uint32_t size : {3u, UINT32_MAX, UINT32_MAX - 1}) // large ones wrap the sum round to 0 and to less
    EXPECT_EQ(WqRingBuf_PutBlock(&ring, "xyz", size), 0);
  EXPECT_EQ(WqRingBuf_PutBlock(&ring, nullptr, 0), 1); // UBSan looks at what is handed on
  EXPECT_EQ(WqRingBuf_Getc(&ring), 255);
  WqRingBuf_Term(&ring);
}

TEST_F(RingBufTest, WithoutABufferItTakesAndGivesNothing) {
  WqRingBuf ring;
  for (const uint32_t capacity : {0u, 4u}) {
    std::memset(&ring, 0xFF, sizeof ring);
    AllocationFailure failure(1);
    WqRingBuf_Init(&ring, capacity);
    for (int end = 0; end < 2; ++end) { // never made, and given back
      EXPECT_EQ(std::tuple(ring.buffer, ring.capacity, ring.count), std::tuple(nullptr, 0u, 0u));
      EXPECT_EQ(WqRingBuf_Getc(&ring), -1);
      EXPECT_FALSE(WqRingBuf_Putc(&ring, 1) || WqRingBuf_Ungetc(&ring, 1) || WqRingBuf_PutBlock(&ring, "", 0));
      EXPECT_EQ(failure.happened(), capacity > 0);
      WqRingBuf_Init(&ring, 4);
      EXPECT_EQ(std::string(ring.buffer, ring.buffer + 4), std::string(4, '\0'));
      EXPECT_EQ(putBlock(ring, "ab"), 1);
      WqRingBuf_Term(&ring);
    }
  }
}

TEST_F(RingBufTest, ARandomRunAgreesWithADeque) {
  Dice dice;
  for (const uint32_t capacity : {1u, 2u, 5u, 64u}) {
    SCOPED_TRACE(capacity);
    WqRingBuf ring;
    WqRingBuf_Init(&ring, capacity);
    std::deque<uint8_t> model;
    for (uint32_t step = 0; step < 3000; ++step) {
      const auto byte = static_cast<uint8_t>(dice(256));
      const bool full = model.size() == capacity;
      const uint32_t action = dice(8);
      if (dice(100) == 0) {
        const uint8_t *buffer = ring.buffer;
        WqRingBuf_Flush(&ring), model.clear();
        ASSERT_EQ(ring.buffer, buffer);
      } else if (action < 3) {
        ASSERT_EQ((action < 2 ? WqRingBuf_Putc : WqRingBuf_Ungetc)(&ring, byte), full ? 0 : 1);
        if (!full) model.insert(action < 2 ? model.end() : model.begin(), byte);
      } else if (action < 4) {
        const std::string block = std::string("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ").substr(0, dice(capacity / 2 + 2));
        const bool fits = model.size() + block.size() < capacity; // a byte stays free behind a block
        ASSERT_EQ(putBlock(ring, block), fits ? 1 : 0);
        if (fits) model.insert(model.end(), block.begin(), block.end());
      } else {
        ASSERT_EQ(WqRingBuf_Getc(&ring), model.empty() ? -1 : model.front());
        if (!model.empty()) model.pop_front();
      }
      ASSERT_LT(ring.readIx, capacity) << step;
      ASSERT_EQ(ring.writeIx, (ring.readIx + ring.count) % capacity) << step;
      ASSERT_EQ(held(ring), std::string(model.begin(), model.end())) << step;
    }
    WqRingBuf_Term(&ring);
  }
}

} // namespace
