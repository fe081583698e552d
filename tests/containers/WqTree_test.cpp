#include "containers/model.h"

#include <array>
#include <cstring>
#include <map>
#include <string>
#include <utility>

namespace {

const std::string kLetters = "abcdefghi";

// A tree as "a(bc(d))", each node by the letter in its data. A link or count that doesn't agree shows as "!".
std::string show(const WqTree &node) {
  std::string text;
  uint32_t count = 0;
  const WqTree *prev = nullptr;
  for (const WqTree *child = node.firstChild; child && count < kLetters.size(); child = child->next, ++count) {
    text += (child->parent == &node && child->prev == prev ? "" : "!") + show(*child);
    prev = child;
  }
  if (node.lastChild != prev || node.childCount != count) text += "!";
  return static_cast<char>(node.data) + (text.empty() ? text : "(" + text + ")");
}

// Nodes a, b, c and so on, all free.
std::map<char, WqTree> makeNodes() {
  std::map<char, WqTree> nodes;
  for (const char letter : kLetters) {
    std::memset(&nodes[letter], 0xFF, sizeof(WqTree));
    WqTree_Init(&nodes[letter]);
    nodes[letter].data += static_cast<WqWord>(letter);
  }
  return nodes;
}

// Each node's parent, 0 for a root, and its children in order.
struct Model {
  std::map<char, char> parent;
  std::map<char, std::string> children;

  char &placeOf(char node) { return children[parent[node]][children[parent[node]].find(node)]; }
  uint32_t depth(char node) { return parent[node] ? 1 + depth(parent[node]) : 0; }
  bool within(char node, char top) {
    while (node && node != top) node = parent[node];
    return node == top;
  }
  std::string show(char node) {
    std::string text;
    for (const char child : children[node]) text += show(child);
    return node + (text.empty() ? text : "(" + text + ")");
  }
};

TEST(TreeTest, NothingToPlaceOrNowhereToPlaceIt) {
  auto n = makeNodes();
  WqTree_Init(nullptr);
  WqTree_AddTop(&n['a'], &n['b']);
  for (auto *add : {WqTree_AddPrev, WqTree_AddNext, WqTree_AddTop, WqTree_AddBottom}) add(&n['b'], nullptr);
  for (auto *add : {WqTree_AddPrev, WqTree_AddNext}) add(&n['a'], &n['c']); // a root has no siblings
  WqTree_Disconnect(&n['a']);
  EXPECT_FALSE(WqTree_Swap(&n['b'], nullptr) || WqTree_Swap(nullptr, &n['b']));
  EXPECT_EQ(show(n['a']) + show(n['c']), "a(b)c");
}

// What stays in the links of nodes that were taken out leads nowhere: in circles, and to records that are gone.
TEST(TreeTest, SwapTrustsNoLinksOfNodesTakenOut) {
  auto n = makeNodes();
  WqTree_AddTop(&n['a'], &n['b']);
  WqTree_Disconnect(&n['b']);
  for (const char child : {'a', 'c', 'd'}) WqTree_AddBottom(&n['b'], &n[child]); // now each has the other as parent
  EXPECT_EQ(WqTree_Swap(&n['c'], &n['d']), 1);
  EXPECT_EQ(show(n['b']), "b(adc)");
  EXPECT_EQ(WqTree_Swap(&n['b'], &n['d']), 0) << "a holds b no more";
  EXPECT_EQ(WqTree_Swap(&n['d'], &n['b']), 0);
  EXPECT_EQ(show(n['b']), "b(adc)");

  WqTree_AddTop(&n['c'], &n['e']);
  WqTree_AddTop(&n['d'], &n['f']);
  std::memset(&n['a'], 0xFF, sizeof(WqTree)); // its owner uses the memory for something else
  WqTree_Disconnect(&n['d']);
  WqTree_AddTop(&n['g'], &n['d']);
  WqTree_AddTop(&n['g'], &n['h']);
  n['g'].parent = &n['a'];
  EXPECT_EQ(WqTree_Swap(&n['f'], &n['h']), 1);
  EXPECT_EQ(show(n['g']), "g(fd(h))");
}

TEST(TreeTest, ARandomRunAgreesWithAModel) {
  auto nodes = makeNodes();
  Model model;
  Dice dice;
  int exchanged = 0;
  for (int step = 0; step < 8000; ++step) {
    const char a = kLetters[dice(9)];
    const char b = kLetters[dice(9)];
    const char aboveA = model.parent[a];
    const char aboveB = model.parent[b];
    WqTree *node = &nodes[a];
    const WqTree before = *node;
    const uint32_t action = dice(aboveB ? 4 : 2);
    if (!aboveA && !model.within(b, a)) {            // a and all it holds goes into b or beside it
      node->parent = node->prev = node->next = node; // what a free node's links hold doesn't matter
      std::array{WqTree_AddTop, WqTree_AddBottom, WqTree_AddPrev, WqTree_AddNext}[action](&nodes[b], node);
      model.parent[a] = action < 2 ? b : aboveB;
      std::string &siblings = model.children[model.parent[a]];
      siblings.insert(std::array{size_t{0}, siblings.size(), siblings.find(b), siblings.find(b) + 1}[action], 1, a);
    } else if (aboveA && action == 0) {
      WqTree_Disconnect(node);
      ASSERT_EQ(std::tuple(node->parent, node->prev, node->next), std::tuple(before.parent, before.prev, before.next));
      node->parent = node->prev = node->next = nullptr;
      std::erase(model.children[aboveA], a);
      model.parent[a] = 0;
    } else {
      if (aboveA != b && aboveB != a && a != b && (model.within(a, b) || model.within(b, a))) continue; // not asked for
      const bool refused = !aboveA || !aboveB || a == b || aboveA == b || aboveB == a;
      ASSERT_EQ(WqTree_Swap(node, &nodes[b]), refused ? 0 : 1) << step;
      if (!refused) {
        std::swap(model.placeOf(a), model.placeOf(b));
        std::swap(model.parent[a], model.parent[b]);
        ++exchanged;
      }
    }
    for (const char letter : kLetters) {
      ASSERT_EQ(show(nodes[letter]), model.show(letter)) << step;
      ASSERT_EQ(WqTree_NofParent(&nodes[letter]), model.depth(letter)) << step;
    }
  }
  EXPECT_GT(exchanged, 500);
}

} // namespace
