// Lines, shapes, edges and controls, pixel for pixel.

#include "platform/canvas.h"
#include "support/handles.h"

#include <algorithm>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using GdiRaster = HandlesTest;

constexpr COLORREF kGround = RGB(0, 0, 255), kPen = RGB(255, 0, 0), kBrush = RGB(0, 255, 0), kBack = RGB(255, 255, 0);

// A blue bitmap with a red pen, a green brush and a yellow background.
struct Board : Canvas {
  explicit Board(int width = 12, int height = 9, UINT bits = 32) : Canvas(width, height, bits) {
    SelectObject(dc, brush);
    SetBkColor(dc, kBack);
    use(PS_SOLID, 1);
    fill(kGround);
  }
  ~Board() { SelectObject(dc, GetStockObject(BLACK_PEN)), DeleteObject(pen), DeleteObject(brush); }
  void use(int style, int thick, COLORREF color = kPen) {
    const HPEN made = CreatePen(style, thick, color);
    SelectObject(dc, made);
    DeleteObject(std::exchange(pen, made));
  }
  void line(int x, int y, int toX, int toY) const {
    EXPECT_TRUE(MoveToEx(dc, x, y, nullptr));
    EXPECT_TRUE(LineTo(dc, toX, toY));
  }
  // Rows, each with a slash: . ground, p pen, b brush, k background; a number says how many of a letter there are.
  std::string text() const {
    const std::pair<COLORREF, char> letters[] = {{kGround, '.'}, {kPen, 'p'}, {kBrush, 'b'}, {kBack, 'k'}, {0, '?'}};
    std::string all;
    for (int y = 0; y < height; ++y, all += '/')
      for (int x = 0, run = 1; x < width; ++x, ++run) {
        const COLORREF color = GetPixel(dc, x, y);
        if (x + 1 < width && GetPixel(dc, x + 1, y) == color) continue;
        const auto *const letter = std::find_if(std::begin(letters), std::end(letters) - 1,
                                                [&](const auto &entry) { return entry.first == color; });
        all += (run > 1 ? std::to_string(run) : "") + letter->second;
        run = 0;
      }
    return all;
  }
  const HBRUSH brush = CreateSolidBrush(kBrush);
  HPEN pen = nullptr;
};

TEST_F(GdiRaster, ThinLinesTakeTheNearestPixelsAndLeaveTheLastOut) {
  const auto nearest = [](int step, int part, int whole) { // to step x part / whole; a half goes up and to the left
    const int twice = 2 * step * part - whole, by = 2 * whole;
    return twice >= 0 ? (twice + by - 1) / by : -(-twice / by);
  };
  Board board(25, 25);
  for (int i = 0; i < 25 * 25; ++i) {
    const int dx = i % 25 - 12, dy = i / 25 - 12, steps = std::max(std::abs(dx), std::abs(dy));
    board.fill(kGround);
    board.line(12, 12, 12 + dx, 12 + dy);
    int found = 0;
    for (int step = 0; step < steps; ++step)
      found += GetPixel(board.dc, 12 + nearest(step, dx, steps), 12 + nearest(step, dy, steps)) == kPen;
    EXPECT_EQ(found, steps) << dx << ',' << dy;
    EXPECT_EQ(board.count(kPen), steps) << dx << ',' << dy;
  }
  for (const int away : {26, 3000, 40000000}) { // what is seen doesn't depend on how far away the ends are
    board.fill(kGround);
    board.line(away, 12 + away / 2, -away, 12 - away / 2);
    EXPECT_EQ(board.count(kPen), 25) << away;
    EXPECT_EQ(GetPixel(board.dc, 1, 12), kPen) << away;
    EXPECT_EQ(GetPixel(board.dc, 24, 24), kPen) << away;
  }
}

TEST_F(GdiRaster, DashesGoOnAlongAPolyline) {
  const std::pair<int, std::string> styles[] = {{PS_DASH, "18p6k18p6k"},
                                                {PS_DOT, "3p3k3p3k3p3k3p3k3p3k3p3k3p3k3p3k"},
                                                {PS_DASHDOT, "9p6k3p6k9p6k3p6k"},
                                                {PS_DASHDOTDOT, "9p3k3p3k3p3k9p3k3p3k3p3k"}};
  for (const auto &[style, row] : styles) {
    Board board(48, 3);
    board.use(style, 1);
    const POINT points[] = {{0, 0}, {7, 0}, {19, 0}, {48, 0}};
    EXPECT_TRUE(Polyline(board.dc, points, 4));
    SetBkMode(board.dc, TRANSPARENT);
    board.line(0, 1, 48, 1);
    board.use(style, 3); // a wide pen has no dashes
    std::string gaps = row;
    std::replace(gaps.begin(), gaps.end(), 'k', '.');
    EXPECT_EQ(board.text(), row + "/" + gaps + "/48./");
  }
}

TEST_F(GdiRaster, ShapesKeepTheirEdges) {
  const POINT gon[] = {{1, 1}, {9, 1}, {9, 6}, {1, 6}};
  const POINT star[] = {{5, 0}, {8, 8}, {0, 3}, {10, 3}, {2, 8}};
  const RECT box{2, 2, 6, 5}, flat{2, 2, 9, 2};
  const std::pair<std::function<void(Board &)>, const char *> cases[] = {
      {[&](Board &b) { FillRect(b.dc, &box, b.brush); }, "12./12./2.4b6./2.4b6./2.4b6./12./12./12./12./"},
      {[&](Board &b) { FillRect(b.dc, &flat, b.brush); }, "12./12./12./12./12./12./12./12./12./"},
      {[&](Board &b) { FrameRect(b.dc, &box, b.brush); }, "12./12./2.4b6./2.b2.b6./2.4b6./12./12./12./12./"},
      {[](Board &b) { Rectangle(b.dc, 6, 5, 2, 2); }, "12./12./2.4p6./2.p2bp6./2.4p6./12./12./12./12./"},
      {[](Board &b) { SelectObject(b.dc, GetStockObject(NULL_PEN)), Rectangle(b.dc, 2, 2, 6, 5); },
       "12./12./2.3b7./2.3b7./12./12./12./12./12./"},
      {[](Board &b) { b.use(PS_INSIDEFRAME, 2), Rectangle(b.dc, 2, 2, 9, 8); },
       "12./12./2.7p3./2.7p3./2.2p3b2p3./2.2p3b2p3./2.7p3./2.7p3./12./"},
      {[](Board &b) { b.use(PS_SOLID, 3), b.line(3, 4, 8, 4); }, "12./12./12./3.6p3./2.8p2./3.6p3./12./12./12./"},
      {[&](Board &b) { Polygon(b.dc, gon, 4); }, "12./.9p2./.p7bp2./.p7bp2./.p7bp2./.p7bp2./.9p2./12./12./"},
      {[&](Board &b) { SetPolyFillMode(b.dc, WINDING), Polygon(b.dc, star, 5); },
       "5.p6./5.p6./4.pbp5./11p./.3p2bpb2p2./3.2pb2p4./3.pbpbp4./2.3p.3p3./2.p5.p3./"},
      {[&](Board &b) { Polygon(b.dc, star, 5); },
       "5.p6./5.p6./4.pbp5./11p./.3p2.pb2p2./3.2p.2p4./3.pbpbp4./2.3p.3p3./2.p5.p3./"},
      {[](Board &b) {
         SetROP2(b.dc, R2_XORPEN), Rectangle(b.dc, 2, 2, 6, 5), SetROP2(b.dc, R2_NOT), b.line(0, 3, 12, 3);
       },
       "12./12./2.4?6./2kb2pb6k/2.4?6./12./12./12./12./"},
      {[](Board &b) {
         const HGDIOBJ hatch = CreateHatchBrush(HS_FDIAGONAL, kPen);
         const RECT all{1, 0, 12, 9};
         SetBrushOrgEx(b.dc, 1, 0, nullptr), FillRect(b.dc, &all, static_cast<HBRUSH>(hatch)), DeleteObject(hatch);
       },
       ".p7kp2k/.kp7kpk/.2kp7kp/.3kp7k/.4kp6k/.5kp5k/.6kp4k/.7kp3k/.p7kp2k/"},
      {[](Board &b) { Ellipse(b.dc, 1, 1, 9, 8); }, "12./3.4p5./2.p4bp4./.p6bp3./.p6bp3./.p6bp3./2.p4bp4./3.4p5./12./"},
      {[](Board &b) { RoundRect(b.dc, 1, 1, 11, 8, 4, 4); },
       "12./2.8p2./.p8bp./.p8bp./.p8bp./.p8bp./.p8bp./2.8p2./12./"},
      {[](Board &b) {
         SetMapMode(b.dc, MM_ANISOTROPIC), SetViewportExtEx(b.dc, -2, 2, nullptr),
             SetViewportOrgEx(b.dc, 11, 0, nullptr), Rectangle(b.dc, 1, 1, 4, 4), SetMapMode(b.dc, MM_TEXT),
             SetViewportOrgEx(b.dc, 0, 0, nullptr);
       },
       "12./2.7p3./2.7p3./2.2p3b2p3./2.2p3b2p3./2.2p3b2p3./2.7p3./2.7p3./12./"},
  };
  for (const auto &[draw, rows] : cases) {
    Board board;
    draw(board);
    EXPECT_EQ(board.text(), rows) << rows;
  }
}

TEST_F(GdiRaster, EdgesAndFocusFrames) {
  const auto shades = [](Board &board) { // from light to dark; the two in the middle are one in some looks
    std::string all;
    constexpr int kShades[] = {COLOR_BTNHIGHLIGHT, COLOR_3DLIGHT, COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_3DDKSHADOW};
    for (int i = 0; i < 6 * 5; ++i) {
      const COLORREF color = GetPixel(board.dc, i % 6, i / 6);
      const auto *found =
          std::find_if(kShades, std::end(kShades), [&](int shade) { return GetSysColor(shade) == color; });
      all += found == std::end(kShades) ? '.' : "01134"[found - kShades];
    }
    return all;
  };
  const std::tuple<UINT, UINT, const char *, RECT> cases[] = {
      {EDGE_RAISED, BF_RECT, "11111410003410..34133334444444", {0, 0, 6, 5}},
      {EDGE_SUNKEN, BF_RECT | BF_MIDDLE, "333330344410341110311110000000", {0, 0, 6, 5}},
      {EDGE_ETCHED, BF_TOP | BF_RIGHT | BF_ADJUST, "333330000030....30....30....30", {0, 2, 4, 5}},
      {EDGE_BUMP, BF_BOTTOM | BF_LEFT | BF_FLAT, "31....31....31....311111333333", {0, 0, 6, 5}},
      {BDR_SUNKENOUTER, BF_DIAGONAL | BF_TOP | BF_RIGHT | BF_ADJUST, "....3....3....3....3....3.....", {0, 1, 5, 5}},
  };
  for (const auto &[edge, flags, picture, inner] : cases) {
    Board board(6, 5);
    RECT rect{0, 0, 6, 5};
    EXPECT_TRUE(DrawEdge(board.dc, &rect, edge, flags));
    EXPECT_EQ(shades(board), picture) << edge << ' ' << flags;
    EXPECT_EQ((std::vector{rect.left, rect.top, rect.right, rect.bottom}),
              (std::vector{inner.left, inner.top, inner.right, inner.bottom}))
        << edge << ' ' << flags;
  }
  Board board;
  const RECT rect{1, 1, 10, 7};
  const std::string before = board.text();
  EXPECT_TRUE(DrawFocusRect(board.dc, &rect));
  EXPECT_EQ(board.text(), "12./.k.k.k.k.k2./12./.k7.k2./12./.k7.k2./2.k.k.k.k3./12./12./");
  EXPECT_TRUE(DrawFocusRect(board.dc, &rect)); // a second time takes it away
  EXPECT_EQ(board.text(), before);
}

TEST_F(GdiRaster, TakesWhateverNumbersThereAre) {
  Board board(25, 9);
  constexpr int kNumbers[] = {-32768, -1, 0, 5, 32767};
  for (const int width : {1, 3}) {
    board.use(PS_SOLID, width);
    for (int i = 0; i < 5 * 5; ++i) {
      const int a = kNumbers[i % 5], b = kNumbers[i / 5];
      const RECT rect{a, b, b, a};
      const POINT points[] = {{a, b}, {b, a}, {a, a}, {b, b}};
      RECT edge = rect;
      EXPECT_TRUE(FillRect(board.dc, &rect, board.brush));
      EXPECT_TRUE(Rectangle(board.dc, a, b, b, a));
      DrawFocusRect(board.dc, &rect), DrawEdge(board.dc, &edge, EDGE_RAISED, BF_RECT | BF_MIDDLE);
      Ellipse(board.dc, a, a, b, b), RoundRect(board.dc, a, a, b, b, b, a), Polygon(board.dc, points, 4);
      board.line(a, b, b, a);
      EXPECT_TRUE(PolyBezierTo(board.dc, points, 3));
    }
  }
  EXPECT_EQ(GetPixel(board.dc, 25, 0), CLR_INVALID);
  EXPECT_EQ(GetPixel(board.dc, -1, 8), CLR_INVALID);
  EXPECT_FALSE(LineTo(nullptr, 1, 1));
}

// The top byte of a colour: with its lowest bit the colour is an entry of the palette, the first one where there are
// not so many. All other bits change nothing, but for numbers in a bitmap's own table.
TEST_F(GdiRaster, ColoursComeFromThePalette) {
  const struct {
    COLORREF color, usual, own; // with the palette that a context begins with, and with one of two entries
  } rows[] = {{PALETTEINDEX(1), 0x000080, 0x302010},
              {PALETTEINDEX(5), 0x800080, 0x030201},
              {PALETTEINDEX(20), 0x000000, 0x030201},
              {0xABFF0001, 0x000080, 0x302010},
              {PALETTERGB(0x56, 0x34, 0x12), 0x123456, 0x123456},
              {0xFE123456, 0x123456, 0x123456},
              {0x10FF0005, 0x000000, 0x000000},
              {0xFFFFFFFF, 0x000000, 0x030201}};
  const struct {
    WORD version, count;
    PALETTEENTRY entries[2];
  } two{0x300, 2, {{1, 2, 3, 0}, {0x10, 0x20, 0x30, 0}}};
  const HPALETTE palette = CreatePalette(reinterpret_cast<const LOGPALETTE *>(&two));
  Board board, mono(12, 9, 1);
  mono.fill(RGB(0, 0, 0));
  const auto fillWith = [&](HBRUSH brush) { board.fill(brush); };
  const auto lineOf = [&](int thick, COLORREF color) { board.use(PS_SOLID, thick, color), board.line(0, 3, 9, 3); };
  const std::pair<const char *, std::function<void(COLORREF)>> ways[] = {
      {"pixel",
       [&](COLORREF color) {
         const COLORREF set = SetPixel(board.dc, 4, 3, color);
         EXPECT_EQ(set, GetPixel(board.dc, 4, 3));
       }},
      {"pen", [&](COLORREF color) { lineOf(1, color); }},
      {"wide pen", [&](COLORREF color) { lineOf(3, color); }},
      {"brush", [&](COLORREF color) { fillWith(CreateSolidBrush(color)); }},
      {"hatch", [&](COLORREF color) { fillWith(CreateHatchBrush(HS_HORIZONTAL, color)); }},
      {"background", [&](COLORREF color) { SetBkColor(board.dc, color), TextOutA(board.dc, 0, 0, "   ", 3); }},
      {"blit", [&](COLORREF color) {
         SetTextColor(board.dc, color), BitBlt(board.dc, 0, 0, 12, 9, mono.dc, 0, 0, SRCCOPY);
         EXPECT_EQ(GetTextColor(board.dc), color); // it stays as it was set
       }}};
  for (const auto &[color, usual, own] : rows)
    for (const auto &[name, draw] : ways)
      for (const bool owned : {false, true}) {
        const HPALETTE before = owned ? SelectPalette(board.dc, palette, FALSE) : nullptr;
        board.fill(RGB(255, 255, 255)), SetBkColor(board.dc, kBack);
        draw(color);
        const COLORREF expected = owned ? own : usual;
        EXPECT_EQ(GetPixel(board.dc, 4, 3), expected) << name << ' ' << std::hex << color << ' ' << owned;
        if (before) SelectPalette(board.dc, before, FALSE);
      }
  // on one bit a pen has the background's colour only if it is named alike
  SetBkColor(mono.dc, PALETTERGB(0xC0, 0xC0, 0xC0));
  mono.use(PS_SOLID, 1, PALETTERGB(0xC0, 0xC0, 0xC0)), mono.line(0, 3, 9, 3);
  EXPECT_EQ(GetPixel(mono.dc, 4, 3), RGB(255, 255, 255));
  mono.use(PS_SOLID, 1, PALETTEINDEX(7)), mono.line(0, 3, 9, 3);
  EXPECT_EQ(GetPixel(mono.dc, 4, 3), RGB(0, 0, 0));
  DeleteObject(palette);
}
