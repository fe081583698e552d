#include "look.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace {

constexpr const char *kFace = "MS UI Gothic";
constexpr int32_t kPoints = 9;
constexpr int32_t kTitlePoints = 13;
constexpr uint32_t kOnPaper = 64; // what a colour's id is raised by there

void enterColours() {
  constexpr struct {
    Colour id;
    COLORREF onScreen, onPaper;
  } kRows[] = {
      {colourGround, RGB(22, 28, 36), RGB(255, 255, 255)}, {colourLane, RGB(12, 16, 22), RGB(246, 248, 250)},
      {colourGrid, RGB(36, 46, 58), RGB(216, 222, 228)},   {colourCentre, RGB(70, 88, 106), RGB(150, 162, 174)},
      {colourPeak, RGB(46, 132, 192), RGB(110, 178, 224)}, {colourRms, RGB(126, 200, 240), RGB(20, 92, 150)},
      {colourDot, RGB(232, 244, 252), RGB(12, 40, 70)},    {colourCursor, RGB(255, 196, 72), RGB(190, 120, 0)},
      {colourPanel, RGB(30, 37, 47), RGB(238, 242, 246)},  {colourEdge, RGB(8, 11, 15), RGB(120, 132, 144)},
      {colourText, RGB(206, 216, 226), RGB(16, 20, 26)},   {colourDimText, RGB(132, 148, 164), RGB(84, 96, 108)},
      {colourTick, RGB(92, 108, 124), RGB(120, 132, 144)}, {colourHidden, RGB(58, 74, 90), RGB(190, 198, 206)},
      {colourClip, RGB(236, 84, 72), RGB(200, 44, 32)},
  };
  for (const auto &row : kRows) {
    WqColorTbl_Insert(row.id, row.onScreen);
    WqColorTbl_Insert(row.id + kOnPaper, row.onPaper);
  }
}

uint32_t shadeOf(const WqDc &dc, Colour colour) { return dc.mode == WQ_DC_PRINTER ? colour + kOnPaper : colour; }

void enterFont(Font id, int32_t height, uint32_t style) {
  WqFont font;
  WqFont_Init(&font);
  WqFont_Param(&font, kFace, height, style);
  WqFont_LogDef(&font);
  WqFontTbl_Insert(id, &font);
}

} // namespace

Look::Look() {
  WqDc dc;
  WqDc_Init(&dc, nullptr);
  WqDc_Get(&dc, WQ_DC_DISPLAY);
  const int32_t height = WqDcMap_PointToPix(&dc.map, kPoints);
  enterColours();
  enterFont(fontText, height, 0);
  enterFont(fontBold, height, WQ_FONT_BOLD);
  enterFont(fontTitle, WqDcMap_PointToPix(&dc.map, kTitlePoints), WQ_FONT_BOLD);

  digit = (widthOf(dc, "0123456789") + 9) / 10;
  line = height * 4 / 3;
  const auto millimetres = [&](double size) -> LONG {
    return WqDcMap_MmToPix(&dc.map, static_cast<int32_t>(size * 100));
  };
  gap = millimetres(0.9);
  tick = millimetres(1.4);
  shortTick = millimetres(0.7);
  dot = millimetres(1) | 1; // an odd number has a middle
  ruler = line + shortTick;
  levelRuler = std::max(5 * digit + tick, widthOf(dc, "sample")) + 2 * gap;
  button = WqDcMap_MmToPix(&dc.map, 1000) > 50 ? 2 * kButtonAt96 : kButtonAt96;
  bar = button + 2 * gap + 1;
  overview = millimetres(7);
  levels = std::max<LONG>(millimetres(32), 15 * digit + 4 * gap);
  status = 2 * line + 3 * gap;
  usual = {millimetres(211.6), millimetres(127)};
  smallest = {millimetres(84.6), millimetres(60)};
  WqDc_Release(&dc);
  WqDc_Term(&dc);
}

LONG rounded(double value) { return static_cast<LONG>(std::lround(value)); }

RECT box(LONG left, LONG top, LONG right, LONG bottom) {
  return {left, top, std::max(left, right), std::max(top, bottom)};
}

RECT common(const RECT &rect, const RECT &bound) {
  RECT shared = rect;
  WqRect_Clip(&shared, &bound);
  return shared;
}

void fill(WqDc &dc, const RECT &rect, Colour colour) { WqDcDraw_FillRect(&dc.draw, &rect, shadeOf(dc, colour)); }

void horizontal(WqDc &dc, LONG left, LONG right, LONG y, Colour colour) {
  fill(dc, box(left, y, right + 1, y + 1), colour);
}

void vertical(WqDc &dc, LONG x, LONG top, LONG bottom, Colour colour) {
  fill(dc, box(x, top, x + 1, bottom + 1), colour);
}

void write(WqDc &dc, const std::string &text, const RECT &rect, UINT align, Colour colour, Font font) {
  WqDcDraw_InitText(&dc.draw, font, shadeOf(dc, colour));
  WqDcDraw_Text(&dc.draw, text.c_str(), &rect, align | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

LONG widthOf(WqDc &dc, const std::string &text, Font font) {
  WqDcDraw_InitText(&dc.draw, font, colourText);
  RECT rect{};
  WqDcDraw_GetTextRect(&dc.draw, text.c_str(), &rect, DT_SINGLELINE | DT_NOPREFIX);
  return rect.right - rect.left;
}

void initLine(WqDc &dc, Colour colour) { WqDcDraw_InitLine(&dc.draw, 1, shadeOf(dc, colour)); }

void frame(WqDc &dc, const RECT &rect, Colour colour) { WqDcDraw_FrameRect(&dc.draw, &rect, shadeOf(dc, colour)); }

// The library takes a clip in device units.
Clip::Clip(WqDc &dc, const RECT &rect) : dc_(dc) {
  POINT corners[] = {{rect.left, rect.top}, {rect.right, rect.bottom}};
  LPtoDP(dc.hdc, corners, 2);
  const RECT device = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
  WqDcRgn_Create(&dc.rgn, &device);
}

std::string format(const char *form, ...) {
  std::array<char, 256> text{};
  va_list arguments;
  va_start(arguments, form);
  std::vsnprintf(text.data(), text.size(), form, arguments);
  va_end(arguments);
  return text.data();
}
