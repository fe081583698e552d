// What the tests of several containers share: a list's content with its links checked, and the dice of random runs.
#pragma once

#include "wq.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using Words = std::vector<WqWord>;

// The data of a list's nodes from the head on. Links that don't agree fail the test; a ring ends after 1000 nodes.
inline Words words(const WqList *head) {
  Words result;
  const WqList *prev = nullptr;
  for (const WqList *node = head; node && result.size() < 1000; node = node->next) {
    EXPECT_EQ(node->prev, prev) << "at node " << result.size();
    result.push_back(node->data);
    prev = node;
  }
  return result;
}

inline WqWord asWord(const void *pointer) { return reinterpret_cast<WqWord>(pointer); }

// The same sequence in every run.
class Dice {
 public:
  uint32_t operator()(uint32_t sides) { return static_cast<uint32_t>(engine_() % sides); }

 private:
  std::mt19937 engine_{4711};
};
