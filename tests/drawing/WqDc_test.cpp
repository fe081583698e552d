// Contexts got and given back, clips, units, and what the selection cache saves, makes and puts back.

#include "drawing/canvas.h"
#include "support/allocation.h"

using WqDcTest = CanvasTest;

static std::string clipOf(HDC hdc) {
  RECT box = {};
  return GetClipBox(hdc, &box), rectText(box);
}

TEST_F(WqDcTest, EachModeGetsAndGivesBackItsContext) {
  constexpr uint32_t kPaint = WQ_DC_CLIENT | WQ_DC_PAINT;
  WqWnd top, wnd; // a child, whose frame is part of the picture on every system
  WqWnd_Init(&top), WqWnd_Style(&top, WS_POPUP | WS_VISIBLE), top.rect = {100, 100, 399, 299};
  WqWnd_Init(&wnd), WqWnd_Style(&wnd, WS_CHILD | WS_VISIBLE | WS_CAPTION), wnd.rect = {10, 10, 209, 109};
  WqWnd_Parent(&wnd, &top);
  ASSERT_TRUE(WqWnd_Create(&top) && WqWnd_Create(&wnd));
  RECT client, part = {10, 10, 20, 20};
  GetClientRect(wnd.hwnd, &client);
  const std::string screen = rectText({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)});
  // clang-format off
  enum Kind { unknown, outside, display, window }; // no mode, nothing got, got without and with a window
  const struct { uint32_t mode; Kind kind; std::string clip; } rows[] = {{0, unknown, ""}, {3, unknown, ""},
      {5, unknown, ""}, {6, unknown, ""}, {7, unknown, ""}, {17, unknown, ""}, {WQ_DC_DISPLAY, display, screen},
      {0x21, display, screen}, {WQ_DC_WINDOW, window, "0,0,200,100"}, {WQ_DC_CLIENT, window, rectText(client)},
      {kPaint, window, "10,10,20,20"}, {0x44, window, rectText(client)}, {WQ_DC_PRINTER, outside, ""},
      {WQ_DC_EXTERNAL, outside, ""}};
  // clang-format on
  for (const auto &[mode, kind, clip] : rows)
    for (int i = 0; i < 4; ++i) {
      const bool owned = i & 1, released = i & 2, paints = mode == kPaint, none = kind == unknown;
      const bool got = kind == display || (kind == window && owned);
      WqDc one;
      WqDc_Init(&one, owned ? &wnd : nullptr), one.hdc = one.paint.hdc = canvas, one.mode = none ? mode : 0;
      ValidateRect(wnd.hwnd, nullptr), InvalidateRect(wnd.hwnd, &part, FALSE), WqDc_Get(&one, mode);
      EXPECT_EQ(std::tuple(one.mode, one.hdc == canvas, one.hdc != nullptr), std::tuple(mode, none, got || none));
      EXPECT_EQ(got ? clipOf(one.hdc) : "nothing", got ? clip : "nothing") << mode;
      EXPECT_EQ(paints ? one.paint.hdc : one.hdc, one.hdc);
      EXPECT_EQ(GetUpdateRect(wnd.hwnd, nullptr, FALSE), !(paints && got));
      if (paints && got && !released) WqDc_EndPaint(&one); // which leaves the record as it is
      if (released) WqDc_Release(&one);
      EXPECT_EQ(one.hdc && one.mode == mode, none || (got && !released)) << mode;
      if (none) one.hdc = nullptr;
      WqDc_Term(&one); // gives back what was not released, but for a client area's
      EXPECT_EQ(one.hdc != nullptr, kind == window && mode != WQ_DC_WINDOW && got && !released) << mode;
      EXPECT_TRUE(!one.hdc || paints || ReleaseDC(wnd.hwnd, one.hdc)) << "it is still to be released";
    }
  DestroyWindow(top.hwnd);
}

TEST_F(WqDcTest, AClipReplacesAndComesBack) {
  const RECT rect = {5, 5, 30, 30}, hole = {8, 8, 10, 10};
  const HRGN region = CreateRectRgn(0, 0, 1, 1);
  for (const bool clipped : {false, true}) {
    if (clipped) IntersectClipRect(canvas, 2, 2, 20, 20);
    WqDcRgn_Create(&dc.rgn, &rect), WqDc_ExcludeRect(&dc, &hole), WqDc_Exclude(&dc, 5, 5, 30, 7), clear(WHITENESS);
    for (const auto &[x, y, drawn] : {std::tuple(9, 9, false), {10, 10, true}, {7, 8, true}, {9, 10, true}})
      EXPECT_EQ(GetPixel(canvas, x, y), drawn ? 0xFFFFFFu : 0u) << x << ": edges are outside";
    EXPECT_EQ(clipOf(canvas), "5,7,30,30");
    WqDcRgn_Delete(&dc.rgn);
    EXPECT_EQ(clipOf(canvas) + (GetClipRgn(canvas, region) ? " clip" : ""), clipped ? "2,2,20,20 clip" : "0,0,40,40");
  }
  DeleteObject(region);
}

TEST_F(WqDcTest, UnitsConvert) {
  WqDcMap &map = dc.map;
  const int32_t display = WqDcMap_LogPix(nullptr);
  EXPECT_EQ(std::tuple(display, map.displayPixPerMm), std::tuple(GetDeviceCaps(canvas, LOGPIXELSY), map.pixPerMm));
  EXPECT_EQ(WqDcMap_Update(&map, 600), display);
  EXPECT_EQ(WqDcMap_Update(&map, 96), 600);
  EXPECT_EQ(map.dpi, 96.0);
  // clang-format off
#define STEM(name) WqDcMap_##name, WqDcMap_##name##_SIZE, WqDcMap_##name##_POINT, WqDcMap_##name##_RECT
  const struct {
    int32_t (*one)(const WqDcMap *, int32_t);
    void (*toSize)(const WqDcMap *, SIZE *), (*toPoint)(const WqDcMap *, POINT *), (*toRect)(const WqDcMap *, RECT *);
    RECT from; std::string to;
  } stems[] = {
      {STEM(MmToPix), {2540, 100, -100, 79}, "96,4,-3,3"}, {STEM(PixToMm), {3, 96, 1, -1}, "79,2540,26,-26"},
      {STEM(MmToPoint), {2540, 100, -100, 1}, "72,2,-2,0"}, {STEM(PixToPoint), {96, 1, 10, -10}, "72,0,7,-7"},
      {STEM(PointToPix), {72, 3, -1, 1}, "96,4,-1,1"}, {STEM(PointToMm), {72, 1, -1, 3}, "2540,35,-35,105"}};
  // clang-format on
  for (const auto &[one, toSize, toPoint, toRect, from, to] : stems) {
    RECT rect = from;
    SIZE size = {from.left, from.top};
    POINT point = {from.right, from.bottom};
    toSize(&map, &size), toPoint(&map, &point), toRect(&map, &rect);
    EXPECT_EQ(rectText(rect), to);
    EXPECT_EQ(rectText({size.cx, size.cy, point.x, point.y}), to);
    EXPECT_EQ(rectText({one(&map, from.left), one(&map, from.top), one(&map, from.right), one(&map, from.bottom)}), to);
  }
  WqDcMap_Update(&map, 600);
  EXPECT_EQ(std::tuple(WqDcMap_MmToPix(&map, 2540), WqDcMap_MmToPixP(&map, 2540)), std::tuple(600, display));
  EXPECT_EQ(WqDcMap_MmToPixP(&map, 100), (100 * display + 2539) / 2540) << "rounded up";
  WqDcMap_Mode(&map, MM_ANISOTROPIC);
  EXPECT_EQ(std::tuple(map.mapMode, map.prevMapMode, GetMapMode(canvas)),
            std::tuple(MM_ANISOTROPIC, MM_TEXT, MM_ANISOTROPIC));
  SetMapMode(canvas, MM_LOMETRIC), WqDcMap_Dc(&map, &dc);
  EXPECT_EQ(std::tuple(map.dc, map.mapMode, map.prevMapMode), std::tuple(&dc, MM_LOMETRIC, MM_LOMETRIC));
}

TEST_F(WqDcTest, SelectionsByIdAreKeptAndPutBack) {
  const HGDIOBJ pen = selected(BLACK_PEN), brush = selected(NULL_BRUSH), font = selected(SYSTEM_FONT);
  WqDcObj &obj = dc.obj;
  const HPEN red = WqDcObj_SelectStylePen(&obj, 3, WQ_COLOR_RED, PS_SOLID);
  ASSERT_NE(red, nullptr);
  EXPECT_EQ(std::tuple(selected(BLACK_PEN), obj.flags), std::tuple(HGDIOBJ(red), WQ_DCOBJ_PEN));
  EXPECT_EQ(WqDcObj_SelectStylePen(&obj, 3, WQ_COLOR_RED, PS_SOLID), red);
  EXPECT_EQ(WqPenTbl_Get(3u << 16 | WQ_COLOR_RED), red);
  LOGPEN dotted = {};
  const HPEN first = WqDcObj_SelectStylePen(&obj, 1, 1, PS_DOT);
  GetObjectA(first, sizeof dotted, &dotted);
  EXPECT_EQ(dotted.lopnStyle, UINT{PS_DOT});
  EXPECT_EQ(WqDcObj_SelectStylePen(&obj, 1, 1 | PS_DOT, PS_SOLID), first) << "one id";
  EXPECT_EQ(obj.saved.count, 1u);
  WqFont plain;
  WqFont_Init(&plain), WqFont_Param(&plain, "Arial", 12, 0), WqFont_LogDef(&plain), WqFontTbl_Insert(7, &plain);
  EXPECT_EQ(WqDcObj_SelectFont(&obj, 8, WQ_COLOR_BLUE), nullptr) << "nobody has entered it";
  EXPECT_EQ(std::tuple(selected(SYSTEM_FONT), GetTextColor(canvas) & 0xFFFFFF), std::tuple(font, COLORREF{0xFF0000}));
  obj.flags &= ~WQ_DCOBJ_FONT;
  EXPECT_NE(WqDcObj_SelectFont(&obj, 7, 0), nullptr);
  EXPECT_EQ(std::tuple(selected(SYSTEM_FONT), obj.saved.count), std::tuple(HGDIOBJ(WqFontTbl_Get(7)), 2u));
  WqBrush entered;
  for (const auto &[id, style] : {std::pair(5u, WQ_BRUSH_HATCHED), {6u, 0x100}})
    WqBrush_Init(&entered), WqBrush_Param(&entered, style, WQ_COLOR_RED), WqBrushTbl_Insert(id, &entered);
  EXPECT_EQ(WqBrushTbl_Get(6), nullptr) << "a style that makes no brush";
  for (const auto &[colour, style] : {std::pair(5u, BS_HATCHED), {6u, BS_SOLID}, {7u, BS_SOLID}}) {
    const HBRUSH one = WqDcObj_SelectBrush(&obj, colour);
    LOGBRUSH found = {};
    EXPECT_TRUE(one && GetObjectA(one, sizeof found, &found));
    EXPECT_EQ(std::tuple(WqBrushTbl_Get(colour), found.lbStyle), std::tuple(one, UINT(style))) << colour;
    EXPECT_EQ(std::tuple(selected(NULL_BRUSH), WqDcObj_SelectBrush(&obj, colour)), std::tuple(HGDIOBJ(one), one));
  }
  EXPECT_EQ(std::tuple(obj.saved.count, obj.temporary.count), std::tuple(3u, 0u));
  WqDcObj_Term(&obj);
  EXPECT_EQ(std::tuple(selected(BLACK_PEN), selected(NULL_BRUSH), selected(SYSTEM_FONT)), std::tuple(pen, brush, font));
}

TEST_F(WqDcTest, DirectColoursMakeObjectsAndAreNotPutBack) {
  const HGDIOBJ pen = selected(BLACK_PEN), brush = selected(NULL_BRUSH), font = selected(SYSTEM_FONT);
  WqDcObj &obj = dc.obj;
  WqFont plain;
  WqFont_Init(&plain), WqFont_Param(&plain, "Arial", 12, 0), WqFont_LogDef(&plain), WqFontTbl_Insert(7, &plain);
  for (const bool gone : {true, false}) {
    WqDcObj_Init(&obj), WqDcObj_Dc(&obj, &dc);
    HGDIOBJ made[] = {nullptr, nullptr, WqDcObj_SelectBrush(&obj, 0xFF010203)};
    for (int i = 0; i < 2; ++i) made[i] = WqDcObj_SelectStylePen(&obj, 1, 0xFF010203, 0);
    EXPECT_TRUE(made[0] && made[0] != made[1]);
    EXPECT_EQ(std::tuple(selected(NULL_BRUSH), obj.temporary.count), std::tuple(made[2], 3u));
    WqDcObj_SelectStylePen(&obj, 1, 1, 0), WqDcObj_SelectFont(&obj, 7, 0xFF010203), SelectObject(canvas, brush);
    EXPECT_EQ(std::tuple(obj.saved.count, GetTextColor(canvas)), std::tuple(0u, COLORREF{0x010203}));
    if (gone) obj.flags = 0, SelectObject(canvas, font), WqDcObj_SelectFont(&obj, 7, 1), dc.hdc = nullptr;
    WqDcObj_Term(&obj), WqDcObj_Term(&obj), dc.hdc = canvas; // the second finds nothing
    for (const HGDIOBJ object : made) EXPECT_EQ(GetObjectA(object, 0, nullptr), 0) << "deleted";
    EXPECT_EQ(selected(SYSTEM_FONT), WqFontTbl_Get(7));
    EXPECT_EQ(selected(BLACK_PEN), WqPenTbl_Get(1u << 16 | 1));
    SelectObject(canvas, pen), SelectObject(canvas, font);
  }
}

TEST_F(WqDcTest, WithoutMemoryWhatIsSelectedStays) {
  const HGDIOBJ pen = selected(BLACK_PEN), brush = selected(NULL_BRUSH);
  WqDcObj &obj = dc.obj;
  for (const uint32_t colour : {WQ_COLOR_RED, 0xFF010203u})
    for (int n = 1, failed = 1; failed; ++n) {
      WqPenTbl_Remove(3u << 16 | colour), WqBrushTbl_Remove(colour);
      AllocationFailure failure(n);
      const HPEN newPen = WqDcObj_SelectStylePen(&obj, 3, colour, 0);
      const HBRUSH newBrush = WqDcObj_SelectBrush(&obj, colour);
      failed = failure.happened();
      EXPECT_TRUE(failed || (newPen && newBrush)) << n;
      EXPECT_EQ(selected(BLACK_PEN), newPen ? newPen : pen) << n;
      EXPECT_EQ(selected(NULL_BRUSH), newBrush ? newBrush : brush) << n;
      WqDcObj_Term(&obj), WqDcObj_Init(&obj), WqDcObj_Dc(&obj, &dc);
      SelectObject(canvas, pen), SelectObject(canvas, brush);
    }
}
