#include "containers/model.h"
#include "support/allocation.h"
#include "support/library.h"

namespace {

using ListTest = LibraryTest;

WqList *makeList(const Words &data) {
  WqList *head = nullptr;
  for (const WqWord word : data) {
    WqList *node = WqList_AddTail(head, word);
    if (!head) head = node;
  }
  EXPECT_EQ(words(head), data);
  return head;
}

WqList *nodeAt(WqList *head, size_t place) {
  for (; head && place > 0; --place) head = head->next;
  return head;
}

WqWord block() { return asWord(WqMem_Alloc(8)); }
void freeBlock(WqWord block) { WqMem_Free(reinterpret_cast<void *>(block)); }

TEST_F(ListTest, NodesGoInAndOutAtEveryPlace) {
  const struct {
    WqList *(*leave)(WqList *node, WqList *head);
    uint32_t freed; // 1: the node; 2: its data too
  } ways[] = {
      {WqList_DisConnect, 0},
      {[](WqList *node, WqList *head) { return WqList_DisConnectElement(head, node->data); }, 0},
      {WqList_Remove, 1},
      {[](WqList *node, WqList *head) { return WqList_RemoveElement(head, node->data); }, 1},
      {WqList_RemoveWith, 2},
      {[](WqList *node, WqList *head) { return WqList_RemoveElementWith(head, node->data); }, 2},
  };
  WqList *head = nullptr;
  Words model;
  Dice dice;
  for (int step = 0; step < 3000; ++step) {
    const size_t place = dice(static_cast<uint32_t>(model.size()) + 1);
    WqList *position = nodeAt(head, place); // null behind the last node
    const bool behind = dice(2) == 0;
    const auto add = behind ? WqList_AddN : WqList_AddP;
    const uint32_t action = dice(8);
    if (action < 4 && model.size() < 6) {
      const WqWord data = block();
      size_t at = model.size();
      WqList *node;
      for (auto *any : {WqList_AddN, WqList_AddP, WqList_AddTail}) {
        AllocationFailure failure(1);
        ASSERT_EQ(any(head, data), nullptr);
        ASSERT_EQ(words(head), model);
      }
      if (action == 0) {
        node = WqList_AddTail(head, data);
      } else if (action == 1 && position) {
        node = add(position, data);
        at = place + behind;
      } else {
        node = add(nullptr, data); // stands alone
        ASSERT_EQ(words(node), Words{data});
        node->prev = node->next = node; // what its links hold doesn't matter
        if (action == 2) {
          ASSERT_EQ(WqList_ConnectTail(head, node), node);
        } else {
          at = position ? place + behind : behind ? model.size() : 0;
          ASSERT_EQ((behind ? WqList_ConnectN : WqList_ConnectP)(node, position, head), at == 0 ? node : head);
        }
      }
      if (at == 0) head = node;
      model.insert(model.begin() + static_cast<ptrdiff_t>(at), data);
    } else if (position) {
      const auto &way = ways[dice(6)];
      const WqWord data = position->data;
      const uint32_t live = wqMain.allocCount;
      head = way.leave(position, head);
      ASSERT_EQ(live - wqMain.allocCount, way.freed) << step;
      if (way.freed == 0) {
        ASSERT_EQ(words(position), Words{data}) << step; // both its links are clear
        WqMem_Free(position);
      }
      if (way.freed < 2) freeBlock(data);
      model.erase(model.begin() + static_cast<ptrdiff_t>(place));
    }
    ASSERT_EQ(words(head), model) << step;
  }
  WqList_RemoveAllWith(head);
}

TEST_F(ListTest, DataThatStandsSeveralTimesOrNowhere) {
  WqList *head = makeList({7, 5, 7, 6, 7});
  WqList *first = WqList_Find(head, 7);
  EXPECT_EQ(first, head);
  head = WqList_DisConnectElement(head, 7);
  EXPECT_EQ(words(head), (Words{5, 7, 6, 7}));
  head = WqList_RemoveElement(WqList_ConnectP(first, nullptr, head), 7);
  const WqWord shared = block();
  EXPECT_EQ(WqList_RemoveElementWith(makeList({shared, shared}), shared), nullptr); // frees it once

  const WqWord absent = block();
  for (WqList *list : {head, static_cast<WqList *>(nullptr)}) {
    EXPECT_EQ(WqList_Find(list, absent), nullptr);
    EXPECT_EQ(WqList_DisConnectElement(list, absent), list);
    EXPECT_EQ(WqList_RemoveElement(list, absent), list);
    EXPECT_EQ(WqList_RemoveElementWith(list, absent), list);
  }
  EXPECT_EQ(words(head), (Words{5, 6}));
  EXPECT_EQ(WqList_Find(head, 6), head->next);
  EXPECT_EQ(WqList_RemoveAll(head), nullptr);
  freeBlock(absent); // nobody else has freed it
  WqList_RemoveAllWith(nullptr);
}

} // namespace
