// A paint pass: what the user procedure gets, and what of its drawing reaches the window.

#include "drawing/canvas.h"
#include "support/files.h"
#include "windows/objects.h"

using Colours = std::vector<COLORREF>;
constexpr COLORREF kOld = 0x555555;
constexpr RECT kAll = {0, 0, 50, 50};

class PaintTest : public ObjectTest {
 protected:
  // Paints a part of a window of one colour.
  // Result: its pixels then.
  static Colours painted(const Window &wnd, RECT part) {
    fillWindow(wnd.hwnd, kOld);
    ValidateRect(wnd.hwnd, nullptr), InvalidateRect(wnd.hwnd, &part, FALSE), UpdateWindow(wnd.hwnd);
    Colours pixels;
    for (const int at : {5, 15, 19, 20, 30}) pixels.push_back(pixelOf(wnd.hwnd, at, at));
    return pixels;
  }
};

TEST_F(PaintTest, WhatIsDrawnReachesTheWindow) {
  const TempFolder folder;
  const std::string blackAndRed("\1\1\1\0\0\0\xFF\0", 8), name = folder.file("b.bmp");
  WqBmpFile file;
  std::string pixels(80, '\0'); // red in the column that is to be seen
  for (size_t row = 0; row < 20; ++row) pixels[4 * row] = '\x10';
  writeFile(name, bmpFile({20, 20, 1, 0, BI_RGB, blackAndRed, pixels}));
  WqBmpFile_Init(&file, name.c_str()), WqBmpTbl_Insert(3, &file);
  const RECT part = {10, 10, 25, 20}, square = {0, 0, 20, 50};
  const POINT at = {12, 0};
  const SIZE size = {8, 18};
  using Draw = std::function<void(WqDc *)>;
  const Draw none, unmarked = [](WqDc *dc) { SetPixel(dc->hdc, 15, 15, 0xFF); };
  const Draw marked = [&](WqDc *dc) { WqDcDraw_FillRect(&dc->draw, &square, WQ_COLOR_GREEN); };
  const Colours old(5, kOld), green = {kOld, 0xFF00, 0xFF00, kOld, kOld}, red = {kOld, 0xFF, kOld, kOld, kOld};
  // clang-format off
  const struct { Draw draw; bool background; RECT part; Colours seen; } rows[] = {
      {marked, false, part, green}, {marked, false, {0, 0, 18, 18}, {0xFF00, 0xFF00, kOld, kOld, kOld}},
      {unmarked, false, kAll, old}, {none, false, kAll, old}, {marked, true, part, green},
      {none, true, {13, 0, 16, 18}, red}, {unmarked, true, {13, 0, 16, 18}, red}};
  // clang-format on
  for (const auto &row : rows) {
    SCOPED_TRACE(&row - rows);
    Window &wnd = made(nullptr, {100, 100, 150, 150});
    int passes = 0;
    if (row.background) WqWnd_Ds(&wnd, WQ_DS_BKGRND), WqWnd_BkgrndBitmap(&wnd, 3, &size, &at);
    if (!row.draw) WqWnd_UserProc(&wnd, nullptr);
    wnd.on = [&](const WqMsg &msg) {
      EXPECT_NE(msg.msg, uint32_t{WM_PAINT});
      if (msg.msg != WQM_PAINT) return 0;
      auto *dc = reinterpret_cast<WqDc *>(msg.wParam);
      RECT all = {};
      GetClipBox(dc->hdc, &all);
      EXPECT_EQ(std::tuple(msg.hwnd, msg.lParam, dc->wnd), std::tuple(wnd.hwnd, 0, &wnd));
      EXPECT_EQ(rectText(all) + ' ' + rectText(dc->paint.rcPaint), rectText(kAll) + ' ' + rectText(row.part));
      EXPECT_NE(dc->hdc, dc->paint.hdc);
      EXPECT_EQ(std::tuple(dc->draw.zoom, dc->draw.drawn, GetBkMode(dc->hdc)),
                std::tuple(1.0, row.background ? 1u : 0u, TRANSPARENT));
      EXPECT_EQ(SelectPalette(dc->hdc, wqMain.palette.handle, FALSE), wqMain.palette.handle);
      return ++passes, row.draw(dc), 0;
    };
    EXPECT_EQ(painted(wnd, row.part), row.seen);
    EXPECT_EQ(passes, row.draw ? 1 : 0);
    EXPECT_FALSE(GetUpdateRect(wnd.hwnd, nullptr, FALSE)) << "painted, whatever was drawn";
    endAll();
  }
}

TEST_F(PaintTest, APassMayEndItsWindowAndHoldAnother) {
  Window &wnd = made(nullptr, {100, 100, 150, 150});
  int passes = 0;
  wnd.result = 9;
  wnd.on = [&](const WqMsg &msg) {
    if (msg.msg != WQM_PAINT) return 0;
    if (++passes == 1) InvalidateRect(wnd.hwnd, nullptr, FALSE), UpdateWindow(wnd.hwnd);
    auto *draw = &reinterpret_cast<WqDc *>(msg.wParam)->draw; // made for the pass:
    WqDcDraw_InitLine(draw, 5, 0xFF0000FF), WqDcDraw_FillRect(draw, &kAll, 0xFFFF0000);
    return passes == 3 ? DestroyWindow(wnd.hwnd) : 1;
  };
  EXPECT_EQ(painted(wnd, kAll), Colours(5, 0xFF0000));
  EXPECT_EQ(SendMessageA(wnd.hwnd, WM_PAINT, 0, 0), 0);
  EXPECT_EQ(std::tuple(passes, wnd.hwnd), std::tuple(3, HWND{}));
}
