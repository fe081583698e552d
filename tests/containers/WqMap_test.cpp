#include "containers/model.h"
#include "support/allocation.h"
#include "support/library.h"

#include <cstring>
#include <utility>

namespace {

constexpr uint32_t kActive = 0x00008000;
constexpr uint32_t kSelected = 0x00080000;

class MapTest : public LibraryTest {
 protected:
  void SetUp() override {
    LibraryTest::SetUp();
    std::memset(&map, 0xFF, sizeof map);
    WqMap_Init(&map);
  }
  void TearDown() override {
    WqMap_Term(&map);
    EXPECT_EQ(rows(), Words{});
    LibraryTest::TearDown();
  }

  // A row of two cells, of which one owns a block.
  static WqElems *makeRow(uint32_t owner = 1) {
    WqElems *row = WqElems_Init(2);
    WqElem_Set(&row->cells[0], 0, 50, 0);
    WqElem_Set(&row->cells[owner], WQ_ELEM_OWNED | 0x40, asWord(WqMem_Alloc(8)), 0);
    return row;
  }

  // The rows from the head on, with all that leads to them.
  Words rows() {
    const Words result = words(map.head);
    EXPECT_EQ(map.count, result.size());
    EXPECT_EQ(map.tail == nullptr, result.empty());
    for (uint32_t ix = 0; ix < result.size(); ++ix) {
      const WqList *node = WqMap_GetList(&map, ix);
      EXPECT_TRUE(node && node->data == result[ix]) << ix;
      EXPECT_EQ(node == map.tail, ix + 1 == result.size()) << ix;
    }
    return result;
  }

  WqMap map;
};

TEST_F(MapTest, ARowThatStandsTwice) {
  for (const uint32_t first : {0u, 2u}) { // whichever place goes first, the row is released with the other
    WqElems *row = makeRow();
    for (WqElems *added : {row, makeRow(), row}) EXPECT_EQ(WqMap_Add(&map, added, 0), 1);
    EXPECT_EQ(row->number, 3u);
    const uint32_t live = wqMain.allocCount;
    WqMap_Remove(&map, first);
    EXPECT_EQ(live - wqMain.allocCount, 1u); // the node
    WqMap_Select(&map, row);
    EXPECT_EQ(row->state, kSelected);
    WqMap_Remove(&map, first == 0 ? 1 : 0);
    EXPECT_EQ(live - wqMain.allocCount, 5u); // the other node, the row, its cells, its block
    WqMap_Term(&map);
  }
  WqElems *row = makeRow();
  for (WqElems *added : {row, makeRow(), row, row}) EXPECT_EQ(WqMap_Add(&map, added, 1), 1);
  WqMap_Swap(&map, 0, 1);
  WqMap_Swap(&map, 2, 3);
  EXPECT_EQ(rows().size(), 4u); // and the end of the test releases the row once
}

TEST_F(MapTest, RowsAndCells) {
  const WqElem cell{0x40, 2, 3, 4, 5};
  const auto fields = [](const WqElem &c) { return Words{c.kind, c.user, c.value, c.extra, c.user2}; };
  WqElems *empty = WqElems_Init(0);
  EXPECT_EQ(empty->cells, nullptr);
  WqElems_Set(empty, &cell, 0), WqElems_Term(empty), WqMem_Free(empty);

  for (int n = 1; n <= 2; ++n) { // the record, the cells: what was made is given back
    AllocationFailure failure(n);
    EXPECT_EQ(WqElems_Init(3), nullptr);
  }
  WqElems *row = WqElems_Init(3);
  EXPECT_EQ(std::tuple(row->state, row->number, row->cellCount), std::tuple(0u, 0u, 3u));
  for (const uint32_t ix : {2u, 3u, UINT32_MAX}) WqElems_Set(row, &cell, ix);
  for (uint32_t ix = 0; ix < 3; ++ix) EXPECT_EQ(fields(row->cells[ix]), ix == 2 ? fields(cell) : Words(5));
  WqElem_Set(&row->cells[2], 7, 8, ~WqWord{0});
  EXPECT_EQ(fields(row->cells[2]), (Words{7, 2, 8, ~WqWord{0}, 5}));

  void *block = WqMem_Alloc(8); // bit 0 alone makes it a cell's own
  for (auto *clear : {WqElem_Init, WqElem_Term}) {
    row->cells[1] = {WQ_ELEM_OWNED, 1, asWord(block), 1, 1};
    clear(&row->cells[1]);
    EXPECT_EQ(fields(row->cells[1]), Words(5));
  }
  WqElem_Set(&row->cells[0], ~WQ_ELEM_OWNED, asWord(block), 0);
  WqElem_Set(&row->cells[2], 0xFFFFFFFF, asWord(WqMem_Alloc(8)), 0);
  const uint32_t live = wqMain.allocCount;
  WqElems_Term(row);
  EXPECT_EQ(live - wqMain.allocCount, 2u); // the cells and one block
  EXPECT_EQ(row->cells, nullptr);
  WqElems_Term(row), WqMem_Free(row), WqMem_Free(block);
}

TEST_F(MapTest, ARandomRunAgreesWithAVector) {
  const struct {
    void (*byIndex)(WqMap *, uint32_t);
    void (*byRow)(WqMap *, const WqElems *);
    void (*ofAll)(WqMap *);
    uint32_t off, on;
  } changes[] = {{WqMap_SelectIx, WqMap_Select, [](WqMap *m) { WqMap_BitOn(m, kSelected); }, 0, kSelected},
                 {WqMap_UnselectIx, WqMap_Unselect, WqMap_UnselectAll, kSelected, 0},
                 {WqMap_ActiveIx, WqMap_Active, [](WqMap *m) { WqMap_BitOn(m, kActive); }, 0, kActive},
                 {WqMap_InactiveIx, WqMap_Inactive, WqMap_InactiveAll, kActive, 0}};
  struct Row {
    const WqList *node; // goes with its row
    WqElems *row;
    uint32_t number, state;
    WqWord cell0;
    bool operator==(const Row &) const = default;
    bool showsNumber() const { return !(row->cells[0].kind & WQ_ELEM_OWNED); } // a block gives way to no number
  };
  std::vector<Row> model;
  WqElems *stranger = makeRow();
  Dice dice;
  for (uint32_t step = 0; step < 6000; ++step) {
    const auto size = static_cast<uint32_t>(model.size());
    const uint32_t past[] = {size, UINT32_MAX};
    const uint32_t ix = size == 0 || dice(10) == 0 ? past[dice(2)] : dice(size);
    const uint32_t action = dice(12);
    if (action < 3 && size < 12) {
      const bool atHead = action == 0;
      WqElems *row = makeRow(dice(2));
      const WqWord cell0 = row->cells[0].value;
      row->state = step << 20;
      for (const int n : {1, 0}) { // refused, the map is as it was and the row still the caller's
        AllocationFailure failure(n);
        ASSERT_EQ(WqMap_Add(&map, row, atHead), 1 - n);
        ASSERT_EQ(row->number == 0 && map.count == size, n == 1);
      }
      model.insert(atHead ? model.begin() : model.end(),
                   {atHead ? map.head : map.tail, row, size + 1, step << 20, cell0});
      for (uint32_t place = 0; atHead && place < model.size(); ++place) {
        model[place].number = place + 1;
        if (model[place].showsNumber()) model[place].cell0 = place + 1;
      }
    } else if (action < 5) {
      WqMap_Remove(&map, ix);
      if (ix < size) model.erase(model.begin() + ix);
      for (size_t place = ix; place < model.size(); ++place) {
        --model[place].number;
        model[place].cell0 -= model[place].showsNumber();
      }
    } else if (action < 8) {
      const uint32_t other = dice(size + 1);
      WqMap_Swap(&map, ix, other);
      if (ix < size && other < size) std::swap(model[ix], model[other]);
    } else if (action < 11) {
      const auto &change = changes[dice(4)];
      if (action == 8) change.byIndex(&map, ix);
      if (action == 9) change.byRow(&map, ix < size ? model[ix].row : stranger);
      if (action == 10) change.ofAll(&map);
      for (uint32_t place = 0; place < size; ++place)
        if (action == 10 || place == ix) model[place].state = (model[place].state & ~change.off) | change.on;
    } else if (dice(20) == 0) {
      WqMap_Term(&map); // and it serves again
      model.clear();
    }
    ASSERT_EQ(rows().size(), model.size()) << step;
    for (uint32_t place = 0; place < model.size(); ++place) {
      WqElems *row = WqMap_Get(&map, place);
      ASSERT_NE(row, nullptr) << step;
      const Row found = {WqMap_GetList(&map, place), row, row->number, row->state, row->cells[0].value};
      ASSERT_EQ(found, model[place]) << step;
    }
    ASSERT_EQ(stranger->state, 0u) << step;
    for (const uint32_t index : {map.count, UINT32_MAX}) ASSERT_EQ(WqMap_Get(&map, index), nullptr) << step;
  }
  WqElems_Term(stranger);
  WqMem_Free(stranger);
}

} // namespace
