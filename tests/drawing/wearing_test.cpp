// Endurance: paint passes, selections, and entries made and removed.

#include "drawing/canvas.h"
#include "support/wear.h"
#include "windows/objects.h"

class DrawingWearTest : public ObjectTest {
 protected:
  const int times_ = wearTimes(4000);
};

TEST_F(DrawingWearTest, PaintPassesLeaveNothing) {
  int passes = 0;
  Window &wnd = made(nullptr, {100, 100, 150, 150});
  wnd.on = [&](const WqMsg &msg) {
    if (msg.msg != WQM_PAINT) return 0;
    WqDcDraw *draw = &reinterpret_cast<WqDc *>(msg.wParam)->draw;
    const RECT rect = {0, 0, 50, 50};
    const POINT to = {40, 30};
    WqDcDraw_FillRect(draw, &rect, static_cast<uint32_t>(++passes & 15));
    WqDcDraw_InitLine(draw, 1, 0xFF123456), WqDcDraw_LineTo(draw, &to);
    WqDcDraw_InitText(draw, 1, WQ_COLOR_RED), WqDcDraw_Text(draw, "-12.5 dBV", &rect, DT_SINGLELINE);
    return 1;
  };
  const int before = passes;
  wear(times_, [&](int) { InvalidateRect(wnd.hwnd, nullptr, FALSE), UpdateWindow(wnd.hwnd); });
  EXPECT_EQ(passes, before + times_);
}

TEST_F(DrawingWearTest, SelectionsAndEntriesLeaveNothing) {
  const HDC screen = GetDC(nullptr), memory = CreateCompatibleDC(screen);
  ReleaseDC(nullptr, screen);
  WqDc dc;
  WqFont font;
  WqFont_Init(&font), WqFont_Param(&font, "Arial", 12, 0), WqFont_LogDef(&font), WqFontTbl_Insert(1, &font);
  WqDc_Init(&dc, nullptr), WqDc_Get(&dc, WQ_DC_EXTERNAL), dc.hdc = memory;
  const HGDIOBJ pen = SelectObject(memory, GetStockObject(BLACK_PEN));
  wear(times_, [&](int i) { // by id and direct
    const uint32_t colour = i % 2 ? 0xFF000000u | static_cast<uint32_t>(i) : static_cast<uint32_t>(i / 2 % 16);
    ASSERT_TRUE(WqDcObj_SelectStylePen(&dc.obj, 1, colour, PS_SOLID));
    ASSERT_TRUE(WqDcObj_SelectBrush(&dc.obj, colour));
    ASSERT_TRUE(WqDcObj_SelectFont(&dc.obj, 1, colour));
    if (i % 50 == 49) WqDcObj_Term(&dc.obj), WqDcObj_Init(&dc.obj), WqDcObj_Dc(&dc.obj, &dc);
  });
  WqPen newPen;
  WqBrush brush;
  wear(times_ / 10, [&](int i) {
    const uint32_t id = 100 + static_cast<uint32_t>(i % (times_ / 20));
    WqPen_Init(&newPen), WqPen_Param(&newPen, PS_SOLID, 1, id), WqPenTbl_Insert(id, &newPen);
    WqBrush_Init(&brush), WqBrush_Param(&brush, WQ_BRUSH_HATCHED, id), WqBrushTbl_Insert(id, &brush);
    WqColorTbl_Insert(id, 0x123456), WqFontTbl_Insert(id, &font);
    ASSERT_TRUE(WqPenTbl_Get(id) && WqBrushTbl_Get(id));
    ASSERT_TRUE(WqFontTbl_Get(id) && WqColorTbl_Get(id) == 0x123456);
    WqPenTbl_Remove(id), WqBrushTbl_Remove(id), WqFontTbl_Remove(id);
  });
  SelectObject(memory, pen), dc.hdc = nullptr, WqDc_Term(&dc), DeleteDC(memory);
}
