// Bars, fields and buttons as records: how they are built and found, what is left out where memory is short, and who
// frees them.

#include "buttonbar/bars.h"
#include "support/allocation.h"

#include <algorithm>

namespace {

// "2(21,20) 1(10)": fields with their buttons, in the order of the lists. Counts have to agree.
std::string structure(const WqMbb *bar) {
  std::string text;
  uint32_t fieldCount = 0;
  for (const WqList *fields = bar->fields; fields; fields = fields->next, ++fieldCount) {
    const auto *field = reinterpret_cast<const WqMbbField *>(fields->data);
    std::string ids;
    uint32_t count = 0;
    for (const WqList *node = field->buttons; node; node = node->next, ++count)
      ids += (count ? "," : "") + std::to_string(reinterpret_cast<const WqMbbBtn *>(node->data)->id);
    text += (fieldCount ? " " : "") + std::to_string(field->id) + '(' + ids + ')';
    EXPECT_EQ(field->buttonCount, count) << text;
  }
  EXPECT_EQ(bar->fieldCount, fieldCount);
  return text;
}

// Rows with values of their own in each field.
const WqMbbFieldDesc kFields[] = {
    {1, 7, 2, 10, 20, 30, 40}, {2, 8, 0, -5, 6, 7, 8}, {3, 9, 3, 1, 2, 3, 4}, {1, 6, 1, 0, 0, 0, 0}};
const WqMbbBtnDesc kButtons[] = {{10, 0xEEEE, 5, 0x00100003, {1, 2, 3, 4}, "one", 0x10000},
                                 {11, 0, 0xFFFFFFFF, 0, {-7, 50, 60, -8}, "", 0xFFFF},
                                 button(20, {5, 6, 7, 8}),
                                 button(21, {-9, -8, -7, -6}),
                                 button(20, {INT_MIN, 0, INT_MAX, INT_MIN}),
                                 button(10, {0, 0, 1, 1})};
constexpr uint32_t kFieldCount = 4;

} // namespace

using BarStructureTest = BarTest;

TEST_F(BarStructureTest, TablesBecomeRecords) {
  const HWND hwnd = made(nullptr, {0, 0, 50, 50}).hwnd;
  WqMbb_Config(hwnd, kFields, kButtons, kFieldCount);
  const WqMbb *bar = WqMbbTbl_Get(hwnd);
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(bar->window, hwnd);
  EXPECT_EQ(structure(bar), "1(10) 3(20,21,20) 2() 1(11,10)");

  EXPECT_EQ(WqMbb_Get(bar, 1)->bitmapId, 6) << "of two the younger one";
  const auto *field = reinterpret_cast<const WqMbbField *>(bar->fields->next->next->next->data); // the oldest
  EXPECT_EQ(std::tuple(field->bitmapId, field->originX, field->originY), std::tuple(7, 10, 20));
  EXPECT_EQ(std::tuple(field->cellWidth, field->cellHeight), std::tuple(30, 40));
  EXPECT_EQ(field->bar, bar);
  EXPECT_EQ(edges(field->rect), (Edges{-7, 0, 60, 4})) << "the least and the greatest of each edge, and the origin";
  EXPECT_EQ(edges(WqMbb_Get(bar, 2)->rect), (Edges{0, 0, 0, 0}));
  EXPECT_EQ(edges(WqMbb_Get(bar, 3)->rect), (Edges{INT_MIN, -8, INT_MAX, 8}));

  const WqMbbBtn *first = WqMbbField_Get(field, 10);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(std::tuple(first->userData, first->flags, first->options), std::tuple(5u, 0x00100003u, 0x10000u));
  EXPECT_EQ(edges(first->rect), (Edges{1, 2, 3, 4}));
  EXPECT_STREQ(first->text, "one");
  EXPECT_EQ(first->field, field);
  EXPECT_EQ(WqMbbField_Get(field, 11)->userData, 0xFFFFFFFFu) << "not stretched in a wide word";
}

TEST_F(BarStructureTest, LookUpsPassNullOn) {
  const HWND hwnd = made(nullptr, {0, 0, 50, 50}).hwnd, other = made(nullptr, {0, 0, 50, 50}).hwnd;
  EXPECT_EQ(WqMbbBtn_Get(hwnd, 1, 10), nullptr) << "no bar";
  WqMbb_Config(hwnd, kFields, kButtons, kFieldCount);
  EXPECT_EQ(WqMbbBtn_Get(hwnd, 3, 20)->rect.left, INT_MIN) << "the younger one";
  EXPECT_EQ(WqMbbBtn_Get(hwnd, 3, 10), nullptr) << "of another field";
  EXPECT_EQ(WqMbbBtn_Get(hwnd, 9, 10), nullptr);
  EXPECT_EQ(WqMbbBtn_Get(other, 1, 10), nullptr);
  WqMbb_Config(other, nullptr, nullptr, 0);
  ASSERT_NE(WqMbbTbl_Get(other), nullptr) << "an empty bar is a bar";
  EXPECT_EQ(WqMbb_Get(WqMbbTbl_Get(other), 0), nullptr);
}

TEST_F(BarStructureTest, TextsAreCutBetweenCharacters) {
  const POINT origin = {};
  const SIZE cell = {};
  const RECT rect = {};
  WqMbbField *field = WqMbbField_Create(WqMbb_Create(made(nullptr, {0, 0, 50, 50}).hwnd), 1, 1, &origin, &cell);
  const auto cut = [&](const std::string &text) {
    const std::vector<char> noMore(text.begin(), text.end()); // what lies behind it isn't to be read
    return std::string(WqMbbBtn_Create(field, 1, 0, 0, &rect, noMore.data(), 0)->text);
  };
  const std::string x(82, 'x');
  EXPECT_EQ(cut(std::string("Open\0", 5)), "Open");
  EXPECT_EQ(cut(x + std::string("y\0", 2)), x + "y");
  EXPECT_EQ(cut(x + "yz"), x + "y");
  EXPECT_EQ(cut(x + "\x82\xA0"), x) << "not half of a character";
  EXPECT_EQ(cut(x + "y\x82"), x + "y");
}

// Everything that is there is whole, at each point where memory may run short.
TEST_F(BarStructureTest, ShortMemoryLeavesOutWhole) {
  const HWND hwnd = made(nullptr, {0, 0, 50, 50}).hwnd;
  const uint32_t blocks = wqMain.allocCount;
  std::string seen;
  bool failed = true;
  for (int n = 1; failed; ++n) {
    {
      AllocationFailure failure(n);
      WqMbb_Config(hwnd, kFields, kButtons, kFieldCount);
      failed = failure.happened();
    }
    SCOPED_TRACE(n);
    const WqMbb *bar = WqMbbTbl_Get(hwnd);
    seen += (bar ? structure(bar) : "none") + "\n";
    for (const WqList *node = bar ? bar->fields : nullptr; node; node = node->next) {
      const auto *field = reinterpret_cast<const WqMbbField *>(node->data);
      RECT all = {};
      for (const WqList *each = field->buttons; each; each = each->next)
        WqRect_Union(&all, &reinterpret_cast<const WqMbbBtn *>(each->data)->rect);
      EXPECT_EQ(edges(field->rect), edges(all));
    }
    WqMbbTbl_Remove(hwnd);
    EXPECT_EQ(WqMbbTbl_Get(hwnd), nullptr);
    EXPECT_EQ(wqMain.allocCount, blocks);
  }
  const std::string whole = "1(10) 3(20,21,20) 2() 1(11,10)";
  std::string expected = "none\nnone\nnone\n";
  for (const std::string each : {"1(10) 3(20,21,20) 2()", "1(10) 3(20,21,20) 2() 1(11)", "1(10) 3(20,21,20) 2() 1(10)",
                                 "1(10) 3(20,21,20) 1(11,10)", "1(10) 2() 1(11,10)", "1(10) 3(20,21) 2() 1(11,10)",
                                 "1(10) 3(20,20) 2() 1(11,10)", "1(10) 3(21,20) 2() 1(11,10)",
                                 "3(20,21,20) 2() 1(11,10)", "1() 3(20,21,20) 2() 1(11,10)"})
    expected += each + '\n' + each + '\n'; // a record, and its node
  EXPECT_EQ(seen, expected + whole + '\n');
}

TEST_F(BarStructureTest, TheRegistryOwnsABarPerWindow) {
  const HWND a = made(nullptr, {0, 0, 50, 50}).hwnd, b = made(nullptr, {0, 0, 50, 50}).hwnd;
  const uint32_t blocks = wqMain.allocCount;
  build(a);
  WqMbb *old = WqMbbTbl_Get(a);
  build(a);
  EXPECT_NE(WqMbbTbl_Get(a), old);
  WqMbbTbl_Remove(a);
  EXPECT_EQ(WqMbbTbl_Get(a), nullptr) << "the old one doesn't come back by itself";
  WqMbbTbl_Insert(b, old);
  EXPECT_EQ(WqMbbTbl_Get(b), nullptr);
  EXPECT_EQ(WqMbbTbl_Get(a), old) << "under its own window";
  WqMbbTbl_Remove(b);
  EXPECT_EQ(WqMbbTbl_Get(a), old);
  old->window = b, WqMbbTbl_Insert(nullptr, old);
  EXPECT_EQ(WqMbbTbl_Get(b), old);
  WqMbbTbl_Remove(a);
  EXPECT_EQ(WqMbbTbl_Get(b), nullptr) << "it has gone, by all its names";
  EXPECT_EQ(wqMain.allocCount, blocks);
  DestroyWindow(a), build(a), build(b), WqMbb_Create(nullptr); // without a window, and freed by WqMain_Term
}
