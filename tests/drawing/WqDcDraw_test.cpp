// Zoomed drawing: the conversion, and each operation held against the platform's own call in device units.

#include "drawing/canvas.h"
#include "support/allocation.h"

using WqDcDrawTest = CanvasTest;

TEST_F(WqDcDrawTest, EachOperationIsThePlatformsOnConvertedCoordinates) {
  const POINT base = {1, 2}, from[] = {{3, 3}, {21, 5}, {15, 22}, {3, 19}}, corner = {4, 5};
  const POINT to[] = {{6, 7}, {33, 10}, {24, 35}, {6, 31}};
  const RECT rect = {3, 2, 21, 19}, wide = {1, 3, 25, 10}, high = {2, 1, 9, 25}, device = {6, 5, 33, 31};
  RECT out; // changed by the platform
  const HDC hdc = canvas;
  WqDcDraw *draw = &dc.draw;
  const uint32_t red = WQ_COLOR_RED;
  const auto brush = [] { return WqBrushTbl_Get(WQ_COLOR_RED); };
  // clang-format off
#define PAIR(library, platform) {#library, [&] { WqDcDraw_##library; }, [&] { platform; }}
  const struct { std::string name; std::function<void()> library, platform; } rows[] = {
      PAIR(FrameRect(draw, &rect, red), FrameRect(hdc, &device, brush())),
      PAIR(FillRect(draw, &rect, red), FillRect(hdc, &device, brush())),
      PAIR(RoundRect(draw, &rect, &corner, red), (SelectObject(hdc, brush()), RoundRect(hdc, 6, 5, 33, 31, 7, 10))),
      PAIR(Circle(draw, &wide), Ellipse(hdc, 15, 7, 25, 17)), PAIR(Circle(draw, &high), Ellipse(hdc, 4, 16, 15, 26)),
      PAIR(Ellipse(draw, &rect), Ellipse(hdc, 6, 5, 33, 31)),
      PAIR(PolyBezier(draw, from + 1, 3), PolyBezierTo(hdc, to + 1, 3)),
      PAIR(PolyLine(draw, from, 4), Polyline(hdc, to, 4)), PAIR(Polygon(draw, from, 4), Polygon(hdc, to, 4)),
      PAIR(PolyLine(draw, nullptr, 0), ), PAIR(LineTo(draw, &from[2]), LineTo(hdc, 24, 35)),
      PAIR(Line(draw, &from[2], &from[1]), (MoveToEx(hdc, 24, 35, nullptr), LineTo(hdc, 33, 10))),
      PAIR(DrawEdge(draw, &rect, EDGE_RAISED, BF_RECT | BF_MIDDLE),
           DrawEdge(hdc, &(out = device), EDGE_RAISED, BF_RECT | BF_MIDDLE)),
      PAIR(FocusRect(draw, &rect), DrawFocusRect(hdc, &device)),
      PAIR(FrameControl(draw, &rect, DFC_BUTTON, DFCS_CHECKED),
           DrawFrameControl(hdc, &(out = device), DFC_BUTTON, DFCS_CHECKED)),
      PAIR(Text(draw, "Wq", &rect, DT_RIGHT), DrawTextA(hdc, "Wq", -1, &(out = device), DT_RIGHT)),
      PAIR(MoveTo(draw, &from[1]), MoveToEx(hdc, 33, 10, nullptr))};
  // clang-format on
  WqDcDraw_Zoom(draw, 150.0), WqDcDraw_Bp(draw, &base), SetTextColor(hdc, 0xFFFFFF);
  for (const auto &[name, library, platform] : rows) {
    const bool moves = name.starts_with("Move");
    const auto drawnBy = [&](const std::function<void()> &act) {
      clear(), MoveToEx(hdc, 20, 20, nullptr), SelectObject(hdc, GetStockObject(GRAY_BRUSH)), act();
      return moves && LineTo(hdc, 0, 0), look();
    };
    draw->drawn = 0;
    const std::string byLibrary = drawnBy(library);
    EXPECT_TRUE(byLibrary == drawnBy(platform)) << name << ": other pixels";
    EXPECT_EQ(draw->drawn, moves ? 0u : 1u) << name;
    EXPECT_EQ((clear(), look()) == byLibrary, name.find("nullptr") != name.npos) << name << ": something is drawn";
  }
  EXPECT_EQ(wqMain.brushTbl.buckets[WQ_COLOR_RED]->next, nullptr) << "one brush for all";
}

TEST_F(WqDcDrawTest, ConversionsPensFontsAndModes) {
  WqDcDraw *draw = &dc.draw;
  // clang-format off
  const struct { double percent; POINT base, from, to; } rows[] = {{150, {10, 20}, {3, 3}, {15, 25}},
      {50, {0, 0}, {1, 2}, {1, 1}}, {50, {0, 0}, {3, -3}, {2, -1}}, {100, {10, 20}, {5, 5}, {15, 25}},
      {1, {0, -1}, {101, -101}, {2, -2}}, {100, {0, 0}, {-7, 2147483647}, {-7, 2147483647}}};
  // clang-format on
  for (const auto &[percent, base, from, to] : rows) {
    POINT point;
    SIZE size = {from.x, from.y};
    RECT rect = {from.x, from.y, from.x, from.y};
    WqDcDraw_Zoom(draw, percent), WqDcDraw_Bp(draw, &base), WqDcDraw_ConvRect(draw, &rect, &rect);
    WqDcDraw_ConvPoint(draw, &from, &point), WqDcDraw_ConvSize(draw, &size, &size);
    EXPECT_EQ(rectText(rect), rectText({to.x, to.y, to.x, to.y}));
    EXPECT_EQ(rectText({point.x, point.y, size.cx, size.cy}), rectText({to.x, to.y, to.x, to.y}));
    EXPECT_EQ(draw->drawn, 0u);
  }
  const POINT from = {0, 1}, to = {3, 1};
  WqDcDraw_InitLine(draw, 3, WQ_COLOR_GREEN), WqDcDraw_Zoom(draw, 1000.0), WqDcDraw_Line(draw, &from, &to);
  for (const int y : {8, 9, 11, 12}) EXPECT_EQ(GetPixel(canvas, 15, y), y % 4 ? 0xFF00u : 0u) << "3 wide, not zoomed";
  WqDcDraw_InitLine(draw, 1, WQ_COLOR_RED), WqDcDraw_Line(draw, &from, &to);
  for (int x = 0; x < 30; ++x) EXPECT_EQ(GetPixel(canvas, x, 10), 0xFFu) << "no dashes";
  WqFont font;
  WqFont_Init(&font), WqFont_Param(&font, "Arial", 20, 0), WqFont_LogDef(&font), WqFontTbl_Insert(7, &font);
  WqDcDraw_InitText(draw, 7, 0xFF123456), WqDcDraw_Zoom(draw, 200.0);
  EXPECT_EQ(std::tuple(selected(SYSTEM_FONT), GetTextColor(canvas)), std::tuple(HGDIOBJ(WqFontTbl_Get(7)), 0x123456u));
  RECT rect = {5, 6, 7, 8}, expected = {10, 12, 14, 16};
  draw->drawn = 0, DrawTextA(canvas, "one\ntwo", -1, &expected, DT_CALCRECT | DT_SINGLELINE);
  WqDcDraw_GetTextRect(draw, "one\ntwo", &rect, DT_SINGLELINE);
  EXPECT_EQ(rectText(rect), rectText(expected));
  EXPECT_EQ(std::tuple(rect.left, rect.bottom > 16, draw->drawn), std::tuple(10, true, 1u));

  WqDcDraw_ForeMode(draw, R2_XORPEN), WqDcDraw_BackMode(draw, TRANSPARENT);
  const auto modes = [&] { return std::tuple(draw->foreMode, draw->prevForeMode, draw->backMode, draw->prevBackMode); };
  EXPECT_EQ(std::tuple(GetROP2(canvas), GetBkMode(canvas)), std::tuple(R2_XORPEN, TRANSPARENT));
  EXPECT_EQ(modes(), std::tuple(R2_XORPEN, R2_COPYPEN, TRANSPARENT, OPAQUE));
  WqDcDraw_Init(draw), WqDcDraw_Dc(draw, &dc);
  EXPECT_EQ(modes(), std::tuple(R2_XORPEN, R2_XORPEN, TRANSPARENT, TRANSPARENT));
  AllocationFailure failure(1);
  WqDcDraw_PolyLine(draw, &from, 1);
  EXPECT_TRUE(failure.happened());
  EXPECT_EQ(std::tuple(draw->drawn, draw->zoom), std::tuple(0u, 1.0));
}
