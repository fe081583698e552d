// Points, sizes and rectangles: which edges count as inside, what becomes of inverted and empty rectangles, and that
// arithmetic wraps at the ends of 32 bits.

#include "wq.h"

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr int32_t kMin = INT32_MIN;
constexpr int32_t kMax = INT32_MAX;
constexpr RECT kZero = {0, 0, 0, 0};
constexpr RECT kBox = {0, 0, 10, 10};
constexpr RECT kTall = {10, 20, 30, 50};
constexpr RECT kTurned = {30, 50, 10, 20};
constexpr RECT kWorld = {kMin, kMin, kMax, kMax};

using Edges = std::array<LONG, 4>;
using Pair = std::array<LONG, 2>;

Edges edges(const RECT &rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }
Pair pair(const POINT &point) { return {point.x, point.y}; }
Pair pair(const SIZE &size) { return {size.cx, size.cy}; }

} // namespace

TEST(WqPoint, IsPlacedAgainstARectangleAndMovedIntoIt) {
  // clang-format off
  const struct { POINT point; RECT rect; uint32_t code; Pair clipped; } rows[] = {
      {{10, 20}, kTall, WQ_HIT_INSIDE, {10, 20}}, {{30, 50}, kTall, WQ_HIT_INSIDE, {30, 50}}, // all edges are inside
      {{9, 20}, kTall, 0x42000000, {10, 20}}, {{31, 50}, kTall, 0x81000000, {30, 50}}, // one beyond each edge
      {{10, 19}, kTall, 0x42000000, {10, 20}}, {{30, 51}, kTall, 0x81000000, {30, 50}},
      {{20, -1}, kBox, 0x42000000, {10, 0}}, {{-1, 20}, kBox, 0x81000000, {0, 10}}, // the vertical position decides
      {{kMin, kMax}, kWorld, WQ_HIT_INSIDE, {kMin, kMax}},
      {{5, 5}, {5, 5, 5, 5}, WQ_HIT_INSIDE, {5, 5}}, // no width, yet it holds its point
      {{20, 30}, kTurned, 0x42000000, {10, 20}}, {{5, 60}, kTurned, 0x81000000, {10, 20}}}; // right and bottom act last
  // clang-format on
  for (const auto &row : rows) {
    SCOPED_TRACE(&row - rows);
    POINT point;
    WqPoint_Copy(&point, &row.point);
    EXPECT_EQ(WqPoint_Hit(&point, &row.rect), row.code);
    EXPECT_EQ(WqRect_IsIn(&row.rect, &point), row.code == 0 ? 1 : 0);
    WqPoint_Clip(&point, &row.rect);
    EXPECT_EQ(pair(point), row.clipped);
  }
}

TEST(WqSize, IsTakenFromARectangleInTwoWays) {
  // clang-format off
  const struct { RECT rect; Pair absolute, inclusive; } rows[] = { // |right - left|, and right - left + 1
      {kBox, {10, 10}, {11, 11}}, {{10, 10, 0, 0}, {10, 10}, {-9, -9}}, {kWorld, {1, 1}, {0, 0}},
      {{kMin, 0, 0, kMax}, {kMin, kMax}, {kMin + 1, kMin}}}; // the most negative value has no absolute value
  // clang-format on
  for (const auto &row : rows) {
    SIZE size = {77, 77};
    WqRect_toSize(&row.rect, &size);
    EXPECT_EQ(pair(size), row.absolute) << &row - rows;
    WqSize_Rect(&size, &row.rect);
    EXPECT_EQ(pair(size), row.inclusive) << &row - rows;
  }
}

TEST(WqSize, IsSetMovedAndClipped) {
  POINT point;
  SIZE size;
  WqPoint_Set(&point, kMin, kMax);
  EXPECT_EQ(pair(point), (Pair{kMin, kMax}));
  WqSize_Set(&size, 3, -4), WqSize_Init(&size), WqSize_Term(&size);
  EXPECT_EQ(pair(size), (Pair{3, -4})) << "the two last ones don't touch the record";
  WqSize_Offset(&size, -5, 10);
  EXPECT_EQ(pair(size), (Pair{-2, 6}));
  const SIZE narrow = {-3, 7}, low = {0, kMin};
  WqSize_Clip(&size, &narrow), WqSize_Clip(&size, &low);
  EXPECT_EQ(pair(size), (Pair{-3, kMin}));
  WqSize_Offset(&size, kMin, -1);
  EXPECT_EQ(pair(size), (Pair{kMax - 2, kMax}));
}

TEST(WqRect, IsComparedWithAnother) {
  // clang-format off
  const struct { RECT rect, other; int cornerInside, wholeInside; } rows[] = { // of the other one
      {kBox, kBox, 1, 1}, {{10, 10, 20, 20}, {0, 0, 30, 30}, 0, 0}, // surrounded: no corner of the other is inside
      {{10, 0, 20, 30}, {0, 10, 30, 20}, 0, 0}, {kBox, {-5, 10, 0, 20}, 1, 0}, // crossing, and touching corners
      {kBox, {10, 10, 20, 20}, 1, 0}, {kBox, {-5, -5, 0, 0}, 1, 0}, {kBox, {10, -5, 15, 0}, 1, 0},
      {kBox, {11, 10, 20, 20}, 0, 0}, {kBox, {10, 11, 20, 20}, 0, 0}, {kBox, {-5, -5, -1, 0}, 0, 0},
      {kBox, {-5, -5, 0, -1}, 0, 0}, {kBox, {-1, 0, 10, 10}, 1, 0}, // one edge too far, each of the four
      {kBox, {0, -1, 10, 10}, 1, 0}, {kBox, {0, 0, 11, 10}, 1, 0}, {kBox, {0, 0, 10, 11}, 1, 0},
      {kBox, {8, 8, 2, 2}, 1, 1}, {kTurned, {40, 60, 0, 10}, 0, 1}}; // inverted ones are compared as they stand
  // clang-format on
  for (const auto &row : rows) {
    EXPECT_EQ(WqRect_Hit(&row.rect, &row.other), row.cornerInside) << &row - rows;
    EXPECT_EQ(WqRect_IsInRect(&row.rect, &row.other), row.wholeInside) << &row - rows;
  }
  EXPECT_EQ(WqRect_isSame(&kTall, &kTall), 1);
  for (const RECT &other : {RECT{11, 20, 30, 50}, {10, 21, 30, 50}, {10, 20, 31, 50}, {10, 20, 30, 51}})
    EXPECT_EQ(WqRect_isSame(&kTall, &other), 0) << other.left;
}

TEST(WqRect, IsCombinedWithAnother) {
  // clang-format off
  const struct { void (*combine)(RECT *, const RECT *); RECT rect, other; Edges result; } rows[] = {
      {WqRect_Union, {10, 10, 20, 20}, kZero, {0, 0, 20, 20}}, // an empty one widens too
      {WqRect_Union, {10, 10, 20, 20}, {15, 5, 18, 40}, {10, 5, 20, 40}},
      {WqRect_Union, kTall, kTurned, {10, 20, 30, 50}},

      {WqRect_Limit, {10, 10, 20, 20}, kZero, {10, 10, 20, 20}},
      {WqRect_Limit, {2, 2, 8, 8}, {0, 5, 10, 5}, {2, 2, 8, 8}}, // one row or column counts as empty
      {WqRect_Limit, {2, 2, 8, 8}, {10, 0, 0, 10}, {2, 2, 8, 8}},
      {WqRect_Limit, {2, 2, 8, 8}, {-1, 3, 5, 9}, {-1, 2, 8, 9}},
      {WqRect_Limit, {8, 8, 2, 2}, {4, 4, 5, 5}, {4, 4, 5, 5}},

      {WqRect_Clip, {0, 0, 10, 10}, {20, 20, 30, 30}, {20, 20, 20, 20}}, // outside: left and top survive
      {WqRect_Clip, {40, 40, 50, 50}, {20, 20, 30, 30}, {40, 40, 40, 40}},
      {WqRect_Clip, {0, 25, 40, 28}, {20, 20, 30, 30}, {20, 25, 30, 28}},
      {WqRect_Clip, {30, 30, 10, 10}, {0, 0, 20, 20}, {30, 30, 30, 30}},
      {WqRect_Clip, {2, 2, 8, 8}, {5, 0, 5, 10}, {2, 2, 8, 8}},
      {WqRect_Clip, {2, 2, 8, 8}, {10, 10, 0, 0}, {2, 2, 8, 8}},

      {WqRect_SubMargin, kTall, {-1, -2, 3, 4}, {11, 22, 27, 46}},
      {WqRect_SubMargin, {kMin, kMax, 0, -2}, {1, -1, kMin, kMax}, {kMax, kMin, kMin, kMax}},

      {WqRect_Center, {70, 80, 75, 85}, kBox, {2, 2, 7, 7}},
      {WqRect_Center, {0, 0, 15, 15}, kBox, {-2, -2, 13, 13}}, // the excess is cut toward zero
      {WqRect_Center, {1, 2, 5, 12}, {100, 200, 120, 230}, {108, 210, 112, 220}},
      {WqRect_Center, kWorld, kBox, {5, 5, 4, 4}},
      {WqRect_Center, {0, 0, 1, 1}, {kMax, kMin, kMin + 3, kMin + 1}, {kMin, kMin, kMin + 1, kMin + 1}}};
  // clang-format on
  for (const auto &row : rows) {
    RECT rect = row.rect;
    row.combine(&rect, &row.other);
    EXPECT_EQ(edges(rect), row.result) << &row - rows;
  }

  RECT rect;
  WqRect_Set(&rect, 30, 50, 10, 20);
  WqRect_Clip(&rect, nullptr), WqRect_Limit(&rect, nullptr), WqRect_Center(nullptr, &kBox), WqRect_InAlign(1, 2, 3);
  EXPECT_EQ(edges(rect), edges(kTurned));
  WqRect_Offset(&rect, 5, -60);
  EXPECT_EQ(edges(rect), (Edges{35, -10, 15, -40}));
  rect = kWorld;
  WqRect_Offset(&rect, 1, -1);
  EXPECT_EQ(edges(rect), (Edges{kMin + 1, kMax, kMin, kMax - 1}));
}
