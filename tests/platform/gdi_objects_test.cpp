// Contexts, objects, mapping, regions, bitmaps and copying.

#include "platform/canvas.h"
#include "support/handles.h"

#include <algorithm>
#include <cstring>
#include <random>

using GdiObjects = HandlesTest;

struct Picture : Canvas {
  using Canvas::Canvas;
  explicit Picture(int size) : Canvas(size, size) {}
  // Rows of 4, a letter for each pixel: black, white, red, green, blue, grey, others.
  std::string text() const {
    constexpr COLORREF kColors[] = {0, 0xFFFFFF, 0xFF, 0xFF00, 0xFF0000, 0x808080};
    std::string all;
    for (int i = 0; i < 12; ++i)
      all += ".#rgbe?"[std::find(kColors, std::end(kColors), GetPixel(dc, i % 4, i / 4)) - kColors];
    return all;
  }
};

TEST_F(GdiObjects, OutliveTheirDeletionWhileTheyAreSelected) {
  const Picture a(2), b(2);
  LOGPEN pen{};
  const HGDIOBJ made = CreatePen(PS_DOT, -3, 0x2030405), old = GetStockObject(BLACK_PEN);
  EXPECT_EQ(SelectObject(a.dc, made), old);
  EXPECT_EQ(SelectObject(b.dc, made), old);
  EXPECT_TRUE(DeleteObject(made));
  EXPECT_EQ(SelectObject(a.dc, old), made);
  EXPECT_EQ(SelectObject(a.dc, made), old) << "still there, as the other context has it";
  EXPECT_EQ(SelectObject(a.dc, old), made);
  EXPECT_TRUE(GetObjectA(made, sizeof pen, &pen));
  EXPECT_EQ(pen.lopnWidth.x, 3);
  EXPECT_EQ(pen.lopnColor, COLORREF{0x2030405});
  EXPECT_EQ(SelectObject(b.dc, old), made);
  EXPECT_FALSE(GetObjectA(made, sizeof pen, &pen)) << "nobody has it any more";
  EXPECT_FALSE(SelectObject(b.dc, made));

  EXPECT_FALSE(SelectObject(b.dc, a.bitmap)) << "a bitmap is in one context";
  EXPECT_FALSE(SelectObject(a.dc, nullptr));
  EXPECT_FALSE(CreateHatchBrush(12, 0));
  EXPECT_TRUE(DeleteObject(GetStockObject(GRAY_BRUSH)));
  EXPECT_TRUE(GetObjectA(GetStockObject(GRAY_BRUSH), 0, nullptr)) << "stock objects stay";
  EXPECT_EQ(SetROP2(a.dc, 17), 0);
  EXPECT_EQ(SetROP2(a.dc, R2_NOT), R2_COPYPEN);
  EXPECT_EQ(GetROP2(a.dc), R2_NOT);
}

TEST_F(GdiObjects, ContextsGoBackTheWayTheyCame) {
  const HDC screen = GetDC(nullptr), display = CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  EXPECT_EQ(GetDeviceCaps(screen, LOGPIXELSX), 96);
  EXPECT_FALSE(ReleaseDC(nullptr, display));
  EXPECT_TRUE(DeleteDC(display));
  EXPECT_FALSE(DeleteDC(display));
  EXPECT_TRUE(ReleaseDC(nullptr, screen));
  EXPECT_FALSE(ReleaseDC(nullptr, screen));
}

TEST_F(GdiObjects, MapAndClip) {
  Picture a(6);
  // mode, extents of window and viewport, origins of both, a logical point and its device point
  const int maps[][13] = {{MM_ANISOTROPIC, 4, 4, 10, -6, 0, 0, 7, 0, 1, 1, 10, -1},
                          {MM_TEXT, 7, 7, 9, 9, 1, 2, 2, 4, 5, 5, 6, 7}};
  for (const auto &[mode, x, y, right, down, fromX, fromY, toX, toY, atX, atY, thenX, thenY] : maps) {
    POINT point{atX, atY};
    SetMapMode(a.dc, mode), SetWindowExtEx(a.dc, x, y, nullptr), SetViewportExtEx(a.dc, right, down, nullptr);
    SetWindowOrgEx(a.dc, fromX, fromY, nullptr), SetViewportOrgEx(a.dc, toX, toY, nullptr);
    EXPECT_TRUE(LPtoDP(a.dc, &point, 1));
    EXPECT_EQ(std::make_pair(point.x, point.y), std::make_pair(LONG{thenX}, LONG{thenY})) << mode;
  }
  RECT r{};
  const HRGN first = CreateRectRgn(4, 4, 0, 0), second = CreateRectRgn(2, 2, 9, 3), result = CreateRectRgn(0, 0, 0, 0);
  using Box = std::vector<LONG>; // and the kind before it
  const Box combined[] = {{2, 2, 2, 4, 3}, {3, 0, 0, 9, 4}, {3, 0, 0, 9, 4}, {3, 0, 0, 4, 4}};
  EXPECT_EQ(GetClipRgn(a.dc, result), 0);
  EXPECT_EQ(CombineRgn(result, first, nullptr, RGN_OR), ERROR);
  for (int mode = RGN_AND; mode < RGN_COPY; ++mode) {
    SelectClipRgn(a.dc, first), ExtSelectClipRgn(a.dc, second, mode), CombineRgn(result, first, second, mode);
    for (const bool clip : {false, true}) {
      if (clip) GetClipRgn(a.dc, result);
      EXPECT_EQ(combined[mode - 1], (Box{GetRgnBox(result, &r), r.left, r.top, r.right, r.bottom})) << mode << clip;
    }
  }
  EXPECT_EQ(SelectClipRgn(a.dc, nullptr), SIMPLEREGION);
  EXPECT_EQ(ExtSelectClipRgn(a.dc, nullptr, RGN_AND), ERROR);
  EXPECT_EQ(ExcludeClipRect(a.dc, 2, 0, 1, -1) + IntersectClipRect(a.dc, -1, -2, 2, 0), 2 * COMPLEXREGION);
  EXPECT_EQ((Box{GetClipBox(a.dc, &r), r.left, r.top, r.right, r.bottom}), (Box{COMPLEXREGION, -1, -2, 2, 0}));
  PatBlt(a.dc, -9, -9, 99, 99, WHITENESS), SetViewportOrgEx(a.dc, 1, 2, nullptr);
  EXPECT_EQ(a.text(), "###.##......");
  for (const HRGN region : {first, second, result}) DeleteObject(region);
}

// How files are read is told in the tests of the library's bitmaps.
TEST_F(GdiObjects, BitmapsComeFromAllForms) {
  using namespace std::string_literals;
  const std::string codes = "\1\2\0\3\1\5\4\0\0\0\0\2\1\0\2\3\0\1"s; // a run, single ones, a new row, a jump, a run
  // bits, height, compression and its size, bytes, pixels: none for a form that there isn't
  const std::tuple<WORD, LONG, DWORD, DWORD, std::string, const char *> rows[] = {
      {8, -3, BI_RGB, 0, "\0\1\2\3\4\5\0\0\1\1\1\1"s, ".#rgbe..####"},
      {4, 3, BI_RGB, 0, "\1\x23\0\0\x45\0\0\0\x11\x11\0\0"s, "####be...#rg"},
      {1, -3, BI_RGB, 0, "\x50\0\0\0\xF0\0\0\0\0\0\0\0"s, ".#.#####...."},
      {16, 1, BI_RGB, 0, "\0\x7C\xE0\3\x1F\0\xFF\x7F"s, "rgb#????????"},
      {16, 1, BI_BITFIELDS, 0, "\0\x0F\xF0\0\x0F\0\xFF\x0F"s, "rgb#????????"},
      {24, 1, BI_RGB, 0, "\0\0\xFF\0\xFF\0\xFF\0\0\x80\x80\x80"s, "rgbe????????"},
      {8, 3, BI_RLE8, 18, codes, ".....gg.r#eb"},
      {4, 3, BI_RLE4, 4, "\4\x25\0\1"s, "........rere"},
      {8, 3, BI_RLE8, 0, codes, ""},
      {24, 1, BI_BITFIELDS, 0, codes, ""}};
  const HDC screen = GetDC(nullptr);
  for (const auto &[bits, height, compression, size, bytes, pixels] : rows) {
    BITMAPINFO info[8]{};
    info->bmiHeader = {40, 4, height, 1, bits, compression, size, 0, 0, 6, 0};
    const DWORD colors[] = {0, 0xFFFFFF, 0xFF0000, 0xFF00, 0xFF, 0x808080}, masks[] = {0xF00, 0xF0, 0xF};
    std::memcpy(info->bmiColors, compression == BI_BITFIELDS ? masks : colors, compression == BI_BITFIELDS ? 12 : 24);
    const HBITMAP made = CreateDIBitmap(screen, &info->bmiHeader, CBM_INIT, bytes.data(), info, DIB_RGB_COLORS);
    EXPECT_EQ(made ? Picture(made).text() : "", pixels) << bits;
  }
  ReleaseDC(nullptr, screen);
  const auto resource = [](int id, int width) {
    const HINSTANCE program = GetModuleHandleA(nullptr);
    return Picture(LoadImageA(program, MAKEINTRESOURCEA(id), IMAGE_BITMAP, width, 0, 0)).text().substr(0, 8);
  };
  EXPECT_EQ(resource(101, 0) + resource(101, 1) + resource(102, 0) + resource(102, 8),
            "rgb?.e#?r???.???.#..????..##????");
}

TEST_F(GdiObjects, PixelsAreReadInRows) {
  using namespace std::string_literals;
  const Picture picture(CreateBitmap(3, 4, 1, 32, nullptr));
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 3; ++x) SetPixel(picture.dc, x, y, RGB('0' + x, 'a' + y, '!'));
  const auto row = [](char y) { return "!"s + y + "0!" + y + "1!" + y + "2..."; };
  const std::string black(12, '.');
  // bits, width, height, first row, rows, pixels: NUL is a point, what was not written a hash
  const std::tuple<WORD, LONG, LONG, UINT, UINT, std::string> rows[] = {
      {24, 3, 4, 0, 4, row('d') + row('c') + row('b') + row('a')},
      {24, 3, -4, 0, 4, row('a') + row('b') + row('c') + row('d')},
      {24, 3, 4, 1, 2, row('c') + row('b')},
      {24, 3, 4, 2, 9, row('b') + row('a')},
      {24, 3, 2, 0, 4, row('b') + row('a')},
      {24, 3, 6, 0, 6, black + black + row('d') + row('c') + row('b') + row('a')},
      {32, 3, 4, 3, 1, "!a0.!a1.!a2."},
      {24, 5, 4, 3, 1, "!a0!a1!a2......."},
      {24, 2, 4, 3, 1, "!a0!a1.."},
      {5, 3, 4, 0, 4, ""}};
  for (const auto &[bits, width, height, first, count, pixels] : rows) {
    BITMAPINFO info{};
    info.bmiHeader = {40, width, height, 1, bits, BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes(100, '#');
    const int copied =
        GetDIBits(picture.dc, static_cast<HBITMAP>(picture.bitmap), first, count, bytes.data(), &info, 0);
    std::replace(bytes.begin(), bytes.end(), '\0', '.');
    const size_t pitch = static_cast<size_t>((width * bits + 31) / 32 * 4);
    const size_t ofBitmap = std::min<size_t>(pixels.size() / pitch, 4); // not those that are black
    EXPECT_EQ(static_cast<size_t>(copied), ofBitmap) << bits << ' ' << width << ' ' << height;
    EXPECT_EQ(bytes, pixels + std::string(100 - pixels.size(), '#')) << bits << ' ' << width << ' ' << height;
    EXPECT_EQ(info.bmiHeader.biSizeImage, copied ? pitch * static_cast<size_t>(std::abs(height)) : 0) << bits;
  }
  BITMAPINFO form[4]{};
  form->bmiHeader.biSize = 40;
  EXPECT_NE(GetDIBits(picture.dc, static_cast<HBITMAP>(picture.bitmap), 0, 0, nullptr, form, 0), 0);
  const BITMAPINFOHEADER &told = form->bmiHeader;
  EXPECT_EQ(std::tuple(told.biWidth, told.biHeight, told.biPlanes, told.biBitCount, told.biSizeImage),
            std::tuple(3, 4, 1, 32, 48u));
}

TEST_F(GdiObjects, StringsOfTheProgramAreLoaded) { // a text that has no room is cut at a whole character
  const auto loaded = [](HINSTANCE instance, UINT id, int size) {
    char room[32];
    std::memset(room, '#', sizeof room);
    const int length = LoadStringA(instance, id, room, size);
    EXPECT_EQ(room[std::max(size, 0)], '#');
    return std::to_string(length) + ":" + std::string(room, size_t(length > 0 ? length : 0)) +
           room[std::max(length, 0)];
  };
  const auto text = [](const std::string &whole) { return std::to_string(whole.size()) + ":" + whole + '\0'; };
  const HINSTANCE program = GetModuleHandleA(nullptr);
  EXPECT_EQ(loaded(program, 1, 31), text("plain; [text]"));
  EXPECT_EQ(loaded(nullptr, 2, 8), text("\x83\\\x95\\ \x8E\xA6"));
  EXPECT_EQ(loaded(program, 2, 7), text("\x83\\\x95\\ "));
  EXPECT_EQ(loaded(program, 2, 4), text("\x83\\"));
  EXPECT_EQ(loaded(program, 3, 31), text("a \"quote\"\n\\b\tc"));
  EXPECT_EQ(loaded(program, 4, 31) + loaded(reinterpret_cast<HINSTANCE>(0x12340000), 1, 31), text("") + text(""));
  EXPECT_EQ(loaded(program, 1, 1) + loaded(program, 1, 0), text("") + "-1:#");
}

TEST_F(GdiObjects, BlitsCombineAndMove) {
  constexpr DWORD kPattern = 0x5A3CC3;
  std::mt19937 random;
  Picture a(9), b(9);
  SelectObject(b.dc, CreateSolidBrush(kPattern));
  const auto noise = [&](const Picture &in) {
    std::vector<DWORD> all(81);
    for (int i = 0; i < 81; ++i) SetPixel(in.dc, i % 9, i / 9, all[size_t(i)] = random() & 0xFFFFFF);
    return all;
  };
  for (DWORD i = 0; i < 600; ++i) { // from another picture with all operations, copies within one in all directions
    const DWORD table = i % 2 ? i / 2 % 256 : SRCCOPY >> 16;
    const int dx = int(random() % 4) - 1, dy = int(random() % 4) - 1;
    const bool within = i % 4 == 2;
    const auto other = noise(a), old = noise(b), &source = within ? old : other;
    BitBlt(b.dc, 1, 1, 6, 6, within ? b.dc : a.dc, 1 + dx, 1 + dy, table << 16);
    for (int k = 0; k < 36; ++k) {
      const int at = (1 + k / 6) * 9 + 1 + k % 6;
      const DWORD from = source[size_t(at + 9 * dy + dx)], to = old[size_t(at)];
      DWORD expected = 0;
      for (int bit = 0; bit < 24; ++bit)
        expected |= (table >> (4 * (kPattern >> bit & 1) + 2 * (from >> bit & 1) + (to >> bit & 1)) & 1) << bit;
      ASSERT_EQ(GetPixel(b.dc, at % 9, at / 9), expected) << table << ' ' << at;
    }
    ASSERT_EQ(GetPixel(b.dc, 0, 3), old[27]) << "beside it";
    ASSERT_EQ(GetPixel(b.dc, 7, 7), old[70]) << "below it";
  }
  DeleteObject(SelectObject(b.dc, GetStockObject(WHITE_BRUSH)));
}

// A brush with gaps takes no part in operations of source and destination.
TEST_F(GdiObjects, ABlitWithoutAPatternLeavesTheBrushOut) {
  Picture from(8), to(8);
  const HBRUSH hatched = CreateHatchBrush(HS_DIAGCROSS, RGB(255, 0, 0));
  SelectObject(to.dc, hatched);
  SetBkMode(to.dc, TRANSPARENT);
  for (DWORD table = 0; table < 256; table += 0x11) { // of each the same for either bit of the pattern
    from.fill(RGB(0, 0, 0)), to.fill(RGB(255, 255, 255));
    SetPixel(from.dc, 3, 4, RGB(255, 255, 255));
    BitBlt(to.dc, 0, 0, 8, 8, from.dc, 0, 0, table << 16);
    int wrong = 0;
    for (int i = 0; i < 64; ++i) {
      const bool source = i % 8 == 3 && i / 8 == 4, white = table >> (source ? 3 : 1) & 1;
      wrong += GetPixel(to.dc, i % 8, i / 8) != (white ? RGB(255, 255, 255) : RGB(0, 0, 0));
    }
    EXPECT_EQ(wrong, 0) << "pixels of operation " << table;
  }
  SelectObject(to.dc, GetStockObject(WHITE_BRUSH));
  DeleteObject(hatched);
}
