// Icons and cursors: which image is taken, how it is drawn, what is told of it, and who destroys it.

#include "gdi_resources.h"
#include "platform/platform.h"
#include "support/files.h"
#include "support/handles.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using namespace std::string_literals;

constexpr COLORREF kGround = RGB(0x30, 0x60, 0x90);

const HINSTANCE kProgram = GetModuleHandleA(nullptr);

std::string hex(DWORD number) {
  char text[9];
  std::snprintf(text, sizeof text, "%06x", static_cast<unsigned>(number));
  return text;
}

// A context with a bitmap of one colour. Colours are told as RRGGBB.
struct Sheet {
  explicit Sheet(int size, UINT bits = 32, COLORREF ground = kGround) : size(size) {
    SelectObject(dc, bitmap = CreateBitmap(size, size, 1, bits, nullptr));
    const RECT all{0, 0, size, size};
    const HBRUSH brush = CreateSolidBrush(ground);
    FillRect(dc, &all, brush);
    DeleteObject(brush);
    // an icon keeps its colours whatever these are
    SetTextColor(dc, RGB(1, 2, 3));
    SetBkColor(dc, RGB(4, 5, 6));
    SetROP2(dc, R2_NOT);
  }
  ~Sheet() {
    DeleteDC(dc);
    DeleteObject(bitmap);
  }
  std::string at(int x, int y) const {
    const COLORREF color = GetPixel(dc, x, y);
    return color == kGround
               ? "ground"
               : hex(static_cast<DWORD>(GetRValue(color) << 16 | GetGValue(color) << 8 | GetBValue(color)));
  }
  // Pixels of a row from the left.
  std::string row(int y, int count) const {
    std::string all;
    for (int x = 0; x < count; ++x) all += (x ? " " : "") + at(x, y);
    return all;
  }
  // The rectangle of what isn't ground.
  std::string changed() const {
    RECT box{size, size, 0, 0};
    for (int y = 0; y < size; ++y)
      for (int x = 0; x < size; ++x)
        if (GetPixel(dc, x, y) != kGround)
          box = {std::min<LONG>(box.left, x), std::min<LONG>(box.top, y), std::max<LONG>(box.right, x + 1),
                 std::max<LONG>(box.bottom, y + 1)};
    return std::to_string(box.left) + "," + std::to_string(box.top) + " " + std::to_string(box.right) + "," +
           std::to_string(box.bottom);
  }
  const int size;
  const HDC dc = CreateCompatibleDC(nullptr);
  HBITMAP bitmap;
};

std::string sizeOf(HBITMAP bitmap) {
  BITMAP told{};
  if (!bitmap || !GetObjectA(bitmap, sizeof told, &told)) return "none";
  return std::to_string(told.bmWidth) + "x" + std::to_string(told.bmHeight) + "x" + std::to_string(told.bmBitsPixel);
}

// Pixels of a bitmap, row by row.
std::string pixelsOf(HBITMAP bitmap, int width, int height) {
  const HDC dc = CreateCompatibleDC(nullptr);
  SelectObject(dc, bitmap);
  std::string all;
  for (int i = 0; i < width * height; ++i) {
    const COLORREF color = GetPixel(dc, i % width, i / width);
    all += (i ? " " : "") + hex(static_cast<DWORD>(GetRValue(color) << 16 | GetGValue(color) << 8 | GetBValue(color)));
  }
  DeleteDC(dc);
  return all;
}

// The bitmaps of an icon, which go at the end.
struct Info : ICONINFO {
  explicit Info(HICON icon) : ICONINFO{}, told(GetIconInfo(icon, this) != FALSE) {}
  ~Info() {
    DeleteObject(hbmMask);
    DeleteObject(hbmColor);
  }
  // "icon 16,16 mask 32x32x1 color 32x32x32": the hot spot, and the bitmaps
  std::string text() const {
    if (!told) return "none";
    return (fIcon ? "icon " : "cursor ") + std::to_string(static_cast<int>(xHotspot)) + "," +
           std::to_string(static_cast<int>(yHotspot)) + " mask " + sizeOf(hbmMask) + " color " + sizeOf(hbmColor);
  }
  const bool told;
};

std::string infoOf(HANDLE icon) { return Info(static_cast<HICON>(icon)).text(); }

HICON load(int id, int size, UINT flags = 0, UINT type = IMAGE_ICON) {
  return static_cast<HICON>(LoadImageA(kProgram, MAKEINTRESOURCEA(id), type, size, size, flags));
}

// An icon of two times two pixels: opaque, transparent by the mask, half transparent by the alpha, and blue.
struct Made {
  explicit Made(bool alpha, BOOL icon = TRUE) {
    const DWORD pixels[] = {0xFFFF0000, 0x00FFFFFF, 0x8000FF00, 0xFF0000FF};
    DWORD plain[4];
    for (int i = 0; i < 4; ++i) plain[i] = pixels[i] & 0xFFFFFF;
    const BYTE bits[] = {0x40, 0, 0x80, 0};
    mask = CreateBitmap(2, 2, 1, 1, bits);
    color = CreateBitmap(2, 2, 1, 32, alpha ? pixels : plain);
    ICONINFO info{icon, 1, 0, mask, color};
    handle = CreateIconIndirect(&info);
  }
  ~Made() {
    DestroyIcon(handle);
    DeleteObject(mask);
    DeleteObject(color);
  }
  HBITMAP mask, color;
  HICON handle;
};

struct GdiIcons : testing::Test {
  ~GdiIcons() override { EXPECT_EQ(openHandles(), before); }
  const std::vector<size_t> before = openHandles();
};

} // namespace

TEST_F(GdiIcons, TheImageOfTheNearestSizeWithMostColorsIsLoaded) {
  // size asked for, size of the icon, colour of the image that it is from
  const std::tuple<int, UINT, int, const char *> rows[] = {{32, 0, 32, "ff0000"},
                                                           {16, 0, 16, "0000ff"},
                                                           {20, 0, 20, "000000"},
                                                           {24, 0, 24, "800000"},
                                                           {28, 0, 28, "000080"},
                                                           {40, 0, 40, "808000"},
                                                           {48, 0, 48, "ff8000"},
                                                           {64, 0, 64, "ff8000"},
                                                           {17, 0, 17, "0000ff"},
                                                           {47, 0, 47, "ff8000"},
                                                           {6, 0, 6, "0000ff"},
                                                           {0, 0, 32, "ff0000"},
                                                           {0, LR_DEFAULTSIZE, 32, "ff0000"},
                                                           {24, LR_DEFAULTSIZE, 24, "800000"}};
  const TempFolder folder;
  const std::string name = folder.file("a.ico");
  writeFile(name, readFile("gdi_icon.ico"));
  for (const auto &[asked, flags, size, color] : rows)
    for (const bool file : {false, true}) {
      const HANDLE icon = file ? LoadImageA(nullptr, name.c_str(), IMAGE_ICON, asked, asked, flags | LR_LOADFROMFILE)
                               : LoadImageA(kProgram, MAKEINTRESOURCEA(GDI_ICON), IMAGE_ICON, asked, asked, flags);
      const Sheet sheet(64);
      DrawIconEx(sheet.dc, 0, 0, static_cast<HICON>(icon), 0, 0, 0, nullptr, DI_NORMAL);
      EXPECT_EQ(sheet.changed(), "0,0 "s + std::to_string(size) + "," + std::to_string(size)) << asked << ' ' << file;
      EXPECT_EQ(sheet.at(size / 2, size / 2), color) << asked << ' ' << file;
      EXPECT_TRUE(DestroyIcon(static_cast<HICON>(icon))) << asked << ' ' << file;
    }
  EXPECT_EQ(infoOf(LoadCursorA(kProgram, MAKEINTRESOURCEA(GDI_CURSOR))), "cursor 3,4 mask 32x64x1 color none");
  // the hot spot goes with the size
  const std::pair<int, const char *> cursors[] = {{0, "cursor 3,4 mask 32x64x1 color none"},
                                                  {48, "cursor 7,9 mask 48x48x1 color 48x48x32"},
                                                  {96, "cursor 14,18 mask 96x96x1 color 96x96x32"},
                                                  {16, "cursor 1,2 mask 16x32x1 color none"}};
  for (const auto &[size, expected] : cursors) {
    const HICON cursor = load(GDI_CURSOR, size, 0, IMAGE_CURSOR);
    EXPECT_EQ(infoOf(cursor), expected) << size;
    DestroyCursor(cursor);
  }
}

TEST_F(GdiIcons, WhatIsNoIconIsNotLoaded) {
  const auto failed = [](const char *what, HANDLE handle) { EXPECT_EQ(handle, nullptr) << what; };
  failed("a cursor as icon", LoadIconA(kProgram, MAKEINTRESOURCEA(GDI_CURSOR)));
  failed("an icon as cursor", LoadCursorA(kProgram, MAKEINTRESOURCEA(GDI_ICON)));
  failed("an unknown number", LoadIconA(kProgram, MAKEINTRESOURCEA(9)));
  failed("of the system", LoadIconA(nullptr, MAKEINTRESOURCEA(GDI_ICON)));
  failed("of no instance", LoadIconA(reinterpret_cast<HINSTANCE>(0x12340000), MAKEINTRESOURCEA(GDI_ICON)));
  failed("a number of none of the system's", LoadIconA(nullptr, MAKEINTRESOURCEA(32519)));
  failed("of no cursor either", LoadCursorA(nullptr, MAKEINTRESOURCEA(32511)));
  failed("a name", LoadIconA(kProgram, "103"));
  const HICON icon = LoadIconA(kProgram, "#103");
  EXPECT_NE(icon, nullptr);
  EXPECT_EQ(icon, LoadIconA(kProgram, MAKEINTRESOURCEA(103)));
}

TEST_F(GdiIcons, BrokenFilesAreRefused) {
  const std::string whole = readFile("gdi_icon.ico");
  const std::string head = whole.substr(0, 4) + "\1\0"s,
                    entry = whole.substr(6 + 2 * 16, 16); // of 16 x 16, 256 colours
  const auto number = [](size_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> 8 * i);
    return bytes;
  };
  const auto value = [&](const std::string &bytes, size_t at) {
    DWORD result;
    std::memcpy(&result, bytes.data() + at, sizeof result);
    return result;
  };
  const std::string image = whole.substr(value(entry, 12), value(entry, 8));
  const auto file = [&](const std::string &bytes, size_t size, size_t offset) {
    return head + entry.substr(0, 8) + number(size) + number(offset) + bytes;
  };
  const std::string png = whole.substr(value(whole, 6 + 8 * 16 + 12)); // the last image
  const std::string good = file(image, image.size(), 22);
  std::string coded = good;
  coded[22 + 16] = 1; // run-length codes
  const std::pair<const char *, std::string> rows[] = {
      {"empty", ""},
      {"no images", whole.substr(0, 4) + "\0\0"s},
      {"only the list", good.substr(0, 22)},
      {"an image that is cut", good.substr(0, good.size() - 40)},
      {"an image that is said to be longer", file(image, image.size() + 1, 22)},
      {"an image far behind the end", file(image, image.size(), 0xFFFFFFF0)},
      {"an image that begins in the list", file(image, image.size(), 4)},
      {"an image of codes", coded},
      {"a PNG that is cut", file(png.substr(0, 60), 60, 22)},
      {"a bitmap", "BM" + std::string(300, '\0')}};
  const TempFolder folder;
  const std::string name = folder.file("b.ico");
  const auto loaded = [&] {
    return static_cast<HICON>(LoadImageA(nullptr, name.c_str(), IMAGE_ICON, 16, 16, LR_LOADFROMFILE));
  };
  for (const auto &[what, bytes] : rows) {
    writeFile(name, bytes);
    EXPECT_EQ(loaded(), nullptr) << what;
  }
  writeFile(name, good);
  const HICON icon = loaded();
  EXPECT_EQ(infoOf(icon), "icon 8,8 mask 16x16x1 color 16x16x32");
  DestroyIcon(icon);
  SetLastError(0);
  EXPECT_EQ(LoadImageA(nullptr, folder.file("none.ico").c_str(), IMAGE_ICON, 0, 0, LR_LOADFROMFILE), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
  // without a mask everything is opaque
  writeFile(name, file(image.substr(0, image.size() - 64), image.size() - 64, 22));
  const HICON bare = loaded();
  const Sheet sheet(16);
  DrawIcon(sheet.dc, 0, 0, bare);
  DestroyIcon(bare);
  EXPECT_EQ(sheet.at(2, 0), "000000");
}

TEST_F(GdiIcons, MaskAndPictureCombine) {
  // size, what is drawn, the left of the top row, the left pixel of the last row
  const std::string turned = "ffffff ground cf9f6f ", image = "ffffff 000000 ffffff ",
                    mask = "000000 ffffff ffffff 000000", blended = "ffffff ground 98b0c8 ";
  const std::tuple<int, UINT, std::string, const char *> rows[] = {{16, DI_NORMAL, turned + "0000ff", "00ff00"},
                                                                   {16, DI_IMAGE, image + "0000ff", "00ff00"},
                                                                   {16, DI_MASK, mask, "000000"},
                                                                   {20, DI_NORMAL, turned + "000000", "000000"},
                                                                   {20, DI_IMAGE, image + "000000", "000000"},
                                                                   {20, DI_MASK, mask, "000000"},
                                                                   {24, DI_NORMAL, turned + "800000", "00ff00"},
                                                                   {28, DI_NORMAL, turned + "000080", "00ff00"},
                                                                   {40, DI_NORMAL, turned + "808000", "00ff00"},
                                                                   {40, DI_IMAGE, image + "808000", "00ff00"},
                                                                   {32, DI_NORMAL, blended + "ff0000", "00ff00"},
                                                                   {32, DI_IMAGE, blended + "ff0000", "00ff00"},
                                                                   {32, DI_MASK, mask, "000000"},
                                                                   {48, DI_NORMAL, blended + "ff8000", "00ff00"},
                                                                   {48, DI_MASK, mask, "000000"},
                                                                   {32, 0, "ground ground ground ground", "ground"}};
  for (const auto &[size, flags, top, last] : rows) {
    const HICON icon = load(GDI_ICON, size);
    const Sheet sheet(50);
    EXPECT_TRUE(DrawIconEx(sheet.dc, 0, 0, icon, 0, 0, 0, nullptr, flags)) << size << ' ' << flags;
    EXPECT_EQ(sheet.row(0, 4), top) << size << ' ' << flags;
    EXPECT_EQ(sheet.at(0, size - 1), last) << size << ' ' << flags;
    DestroyIcon(icon);
  }
  // on one bit only white stays white
  const std::pair<COLORREF, const char *> grounds[] = {{RGB(0, 0, 0), "ffffff 000000 ffffff 000000"},
                                                       {RGB(255, 255, 255), "ffffff ffffff 000000 000000"}};
  const HICON icon = load(GDI_ICON, 16);
  for (const auto &[ground, expected] : grounds) {
    const Sheet sheet(16, 1, ground);
    DrawIconEx(sheet.dc, 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(sheet.row(0, 4), expected) << ground;
  }
  // a brush fills the ground first
  const HBRUSH brush = CreateSolidBrush(RGB(0x10, 0x20, 0x40));
  const Sheet sheet(20);
  DrawIconEx(sheet.dc, 1, 2, icon, 0, 0, 0, brush, DI_NORMAL);
  EXPECT_EQ(sheet.row(2, 5), "ground ffffff 102040 efdfbf 0000ff");
  EXPECT_EQ(sheet.changed(), "1,2 17,18");
  DeleteObject(brush);
  DestroyIcon(icon);
}

TEST_F(GdiIcons, AlphaBlends) {
  const DWORD pixels[] = {0x01FFFFFF, 0x40C0FF10, 0x7FC0FF10, 0xFEC0FF10}; // over 306090
  const BYTE none[] = {0, 0};
  const HBITMAP mask = CreateBitmap(4, 1, 1, 1, none), color = CreateBitmap(4, 1, 1, 32, pixels);
  ICONINFO info{TRUE, 0, 0, mask, color};
  const HICON icon = CreateIconIndirect(&info);
  const Sheet sheet(4);
  DrawIconEx(sheet.dc, 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL);
  EXPECT_EQ(sheet.row(0, 4), "316190 548870 78af50 bffe11");
  DestroyIcon(icon);
  DeleteObject(mask);
  DeleteObject(color);
}

TEST_F(GdiIcons, DrawingStretches) {
  const HICON icon = load(GDI_ICON, 16), blending = load(GDI_ICON, 32);
  struct Row {
    const char *what;
    HICON icon;
    int x, y, width, height;
    UINT flags;
    const char *changed;
    int pixelX, pixelY;
    const char *pixel;
  };
  const Row rows[] = {
      {"twice", icon, 1, 2, 32, 32, DI_NORMAL, "1,2 33,34", 6, 3, "cf9f6f"},
      {"the usual size", icon, 1, 2, 0, 0, DI_NORMAL | DI_DEFAULTSIZE, "1,2 33,34", 1, 33, "00ff00"},
      {"wide and of the usual height", icon, 0, 0, 48, 0, DI_NORMAL | DI_DEFAULTSIZE, "0,0 48,32", 2, 1, "ffffff"},
      {"twice, blended", blending, 1, 2, 64, 64, DI_NORMAL, "1,2 65,66", 6, 3, "98b0c8"},
      {"half", icon, 3, 3, 8, 8, DI_NORMAL, "3,3 11,11", 7, 7, "0000ff"},
      {"half, blended", blending, 3, 3, 16, 16, DI_NORMAL, "3,3 19,19", 12, 12, "ff0000"},
      {"turned round", icon, 30, 40, -32, -32, DI_NORMAL, "-1,9 31,41", 30, 40, "ffffff"},
      {"turned over", icon, 0, 40, 32, -32, DI_NORMAL, "0,9 32,41", 1, 40, "ffffff"}};
  for (const Row &row : rows) {
    const Sheet sheet(70);
    DrawIconEx(sheet.dc, row.x, row.y, row.icon, row.width, row.height, 0, nullptr, row.flags);
    const bool cut = row.changed[0] == '-'; // the left edge of the sheet
    EXPECT_EQ(sheet.changed(), cut ? "0"s + (row.changed + 2) : row.changed) << row.what;
    EXPECT_EQ(sheet.at(row.pixelX, row.pixelY), row.pixel) << row.what;
  }
  // where pixels come together, the last of a row is taken and the first of a column
  std::vector<DWORD> places(16 * 16);
  for (DWORD i = 0; i < 256; ++i) places[i] = i % 16 << 16 | i / 16 << 8 | 0x55;
  const BYTE none[32] = {};
  ICONINFO info{TRUE, 0, 0, CreateBitmap(16, 16, 1, 1, none), CreateBitmap(16, 16, 1, 32, places.data())};
  const HICON grid = CreateIconIndirect(&info);
  const Sheet small(10);
  DrawIconEx(small.dc, 0, 0, grid, 6, 6, 0, nullptr, DI_NORMAL);
  EXPECT_EQ(small.row(0, 6), "020055 040055 070055 0a0055 0c0055 0f0055");
  EXPECT_EQ(small.row(3, 2), "020855 040855");
  EXPECT_EQ(small.row(5, 2), "020d55 040d55");
  DestroyIcon(grid);
  DeleteObject(info.hbmMask);
  DeleteObject(info.hbmColor);
  // mapped, and clipped; the usual size counts logical units
  const Sheet sheet(70);
  SetMapMode(sheet.dc, MM_ANISOTROPIC);
  SetViewportExtEx(sheet.dc, 2, 2, nullptr);
  IntersectClipRect(sheet.dc, 0, 0, 20, 30);
  DrawIcon(sheet.dc, 1, 1, icon);
  SetMapMode(sheet.dc, MM_TEXT);
  SelectClipRgn(sheet.dc, nullptr);
  EXPECT_EQ(sheet.changed(), "2,2 40,60");
  EXPECT_EQ(sheet.at(3, 3), "ffffff");
  EXPECT_EQ(sheet.at(6, 3), "ground");
  EXPECT_EQ(sheet.at(10, 3), "cf9f6f");
  DestroyIcon(icon);
  DestroyIcon(blending);
}

TEST_F(GdiIcons, AreMadeOfBitmapsAndToldAsBitmaps) {
  const Made blending(true), plain(false), cursor(true, FALSE);
  EXPECT_EQ(infoOf(blending.handle), "icon 1,1 mask 2x2x1 color 2x2x32");
  EXPECT_EQ(infoOf(cursor.handle), "cursor 1,0 mask 2x2x1 color 2x2x32");
  const auto drawn = [](HICON icon) {
    const Sheet sheet(2);
    DrawIconEx(sheet.dc, 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL);
    return sheet.row(0, 2) + " " + sheet.row(1, 2);
  };
  EXPECT_EQ(drawn(blending.handle), "ff0000 ground 18b048 0000ff");
  EXPECT_EQ(drawn(plain.handle), "ff0000 cf9f6f 309f90 0000ff");
  Info info(blending.handle);
  EXPECT_EQ(pixelsOf(info.hbmMask, 2, 2), "000000 ffffff ffffff 000000");
  EXPECT_EQ(pixelsOf(info.hbmColor, 2, 2), "ff0000 ffffff 00ff00 0000ff");
  // the bitmaps that it is told as make the same again
  const HICON again = CreateIconIndirect(&info);
  EXPECT_EQ(drawn(again), "ff0000 ground 18b048 0000ff");
  DestroyIcon(again);

  const BYTE halves[] = {0x40, 0, 0x80, 0, 0xC0, 0, 0x40, 0};
  const HBITMAP both = CreateBitmap(2, 4, 1, 1, halves), black = CreateBitmap(2, 2, 1, 1, halves + 4);
  ICONINFO mono{TRUE, 0, 0, both, nullptr};
  const HICON icon = CreateIconIndirect(&mono);
  EXPECT_EQ(drawn(icon), "ffffff cf9f6f ground ffffff");
  EXPECT_EQ(infoOf(icon), "icon 1,1 mask 2x4x1 color none");
  EXPECT_EQ(pixelsOf(Info(icon).hbmMask, 2, 4), pixelsOf(both, 2, 4));
  DestroyIcon(icon);
  ICONINFO small{TRUE, 0, 0, black, blending.color}; // a mask of another size is stretched
  const HICON stretched = CreateIconIndirect(&small);
  EXPECT_EQ(infoOf(stretched), "icon 1,1 mask 2x2x1 color 2x2x32");
  DestroyIcon(stretched);
  ICONINFO none{TRUE, 0, 0, nullptr, blending.color};
  EXPECT_EQ(CreateIconIndirect(&none), nullptr);
  DeleteObject(both);
  DeleteObject(black);

  const HCURSOR made = CreateCursor(kProgram, 1, 5, 2, 2, halves, halves + 4);
  EXPECT_EQ(infoOf(made), "cursor 1,5 mask 2x4x1 color none");
  EXPECT_EQ(drawn(made), "ffffff cf9f6f ground ffffff");
  EXPECT_TRUE(DestroyCursor(made));
}

// A bitmap's alpha is only what it was made with.
TEST_F(GdiIcons, DrawingOnABitmapTakesItsAlphaAway) {
  const HDC dc = CreateCompatibleDC(nullptr);
  const DWORD pixels[] = {0x80FF0000, 0x80FF0000};
  const BYTE opaque[] = {0, 0};
  const HBITMAP mask = CreateBitmap(2, 1, 1, 1, opaque), color = CreateBitmap(2, 1, 1, 32, pixels);
  const HGDIOBJ old = SelectObject(dc, color);
  const RECT all{0, 0, 2, 1};
  FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  SelectObject(dc, old);
  DeleteDC(dc);
  ICONINFO info{TRUE, 0, 0, mask, color};
  const HICON icon = CreateIconIndirect(&info);
  const Sheet sheet(2);
  DrawIconEx(sheet.dc, 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL);
  EXPECT_EQ(sheet.row(0, 2), "000000 000000");
  DestroyIcon(icon);
  DeleteObject(mask);
  DeleteObject(color);
}

TEST_F(GdiIcons, SharedOnesStay) {
  const auto shared = [](int size) { return load(GDI_ICON, size, LR_SHARED); };
  const HICON icon = LoadIconA(kProgram, MAKEINTRESOURCEA(GDI_ICON));
  EXPECT_EQ(LoadIconA(kProgram, MAKEINTRESOURCEA(GDI_ICON)), icon);
  EXPECT_EQ(shared(32), icon);
  EXPECT_EQ(shared(16), shared(16));
  EXPECT_NE(shared(16), icon);
  EXPECT_TRUE(DestroyIcon(icon));
  EXPECT_EQ(infoOf(icon), "icon 16,16 mask 32x32x1 color 32x32x32");
  const HICON own = load(GDI_ICON, 32);
  EXPECT_NE(own, icon);
  EXPECT_TRUE(DestroyIcon(own));
  EXPECT_FALSE(DestroyIcon(own)) << "the second time";
  const Sheet sheet(2);
  EXPECT_EQ(infoOf(own), "none");
  EXPECT_FALSE(DrawIcon(sheet.dc, 0, 0, own)) << "a destroyed one";
  EXPECT_EQ(CopyIcon(own), nullptr) << "a destroyed one";
  EXPECT_FALSE(DestroyIcon(nullptr));
  // it is no drawing object
  const HICON other = load(GDI_ICON, 16);
  EXPECT_FALSE(DeleteObject(other));
  EXPECT_EQ(GetObjectA(other, 0, nullptr), 0);
  EXPECT_EQ(SelectObject(sheet.dc, other), nullptr);
  EXPECT_EQ(infoOf(other), "icon 8,8 mask 16x16x1 color 16x16x32");
  EXPECT_TRUE(DestroyIcon(other));
}

TEST_F(GdiIcons, CopiesAreOnesOwn) {
  const HICON icon = LoadIconA(kProgram, MAKEINTRESOURCEA(GDI_ICON));
  const auto centre = [](HANDLE of) {
    const Sheet sheet(2);
    DrawIconEx(sheet.dc, -5, -5, static_cast<HICON>(of), 0, 0, 0, nullptr, DI_NORMAL);
    return sheet.at(1, 1);
  };
  struct Row {
    int size;
    UINT flags;
    const char *info, *color;
  };
  const Row rows[] = {{0, 0, "icon 16,16 mask 32x32x1 color 32x32x32", "ff0000"},
                      {24, 0, "icon 12,12 mask 24x24x1 color 24x24x32", "ff0000"},
                      {24, LR_COPYFROMRESOURCE, "icon 12,12 mask 24x24x1 color 24x24x32", "800000"},
                      {16, LR_COPYFROMRESOURCE | LR_COPYDELETEORG, "icon 8,8 mask 16x16x1 color 16x16x32", "0000ff"}};
  for (const Row &row : rows) {
    const HANDLE copy = CopyImage(icon, IMAGE_ICON, row.size, row.size, row.flags);
    EXPECT_NE(copy, icon) << row.size << ' ' << row.flags;
    EXPECT_EQ(infoOf(copy), row.info) << row.size << ' ' << row.flags;
    EXPECT_EQ(centre(copy), row.color) << row.size << ' ' << row.flags;
    EXPECT_TRUE(DestroyIcon(static_cast<HICON>(copy))) << row.size << ' ' << row.flags;
  }
  EXPECT_EQ(infoOf(icon), "icon 16,16 mask 32x32x1 color 32x32x32")
      << "a shared one stays when it is copied and deleted";
  const HICON copy = CopyIcon(icon);
  const HANDLE moved = CopyImage(copy, IMAGE_ICON, 40, 40, LR_COPYDELETEORG);
  EXPECT_EQ(infoOf(copy), "none");
  EXPECT_EQ(infoOf(moved), "icon 20,20 mask 40x40x1 color 40x40x32");
  DestroyIcon(static_cast<HICON>(moved));
  EXPECT_EQ(CopyImage(copy, IMAGE_ICON, 0, 0, 0), nullptr) << "of one that is gone";

  const DWORD pixels[] = {0xFFFF0000, 0x00FFFFFF, 0x8000FF00, 0x000000FF};
  const HBITMAP bitmap = CreateBitmap(2, 2, 1, 32, pixels);
  const HANDLE same = CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0),
               wide = CopyImage(bitmap, IMAGE_BITMAP, 4, 2, LR_COPYDELETEORG);
  EXPECT_EQ(pixelsOf(static_cast<HBITMAP>(same), 2, 2), "ff0000 ffffff 00ff00 0000ff");
  EXPECT_EQ(pixelsOf(static_cast<HBITMAP>(wide), 4, 1), "ff0000 ff8080 ffffff ffffff");
  EXPECT_EQ(sizeOf(bitmap), "none");
  DeleteObject(same);
  DeleteObject(wide);
}

// What they look like is the system's; that they are pictures, and which size they have, isn't.
TEST_F(GdiIcons, TheSystemHasIconsAndCursors) {
  const LPCSTR names[] = {IDI_APPLICATION, IDI_HAND, IDI_QUESTION, IDI_EXCLAMATION, IDI_ASTERISK};
  std::vector<std::string> looks;
  for (const LPCSTR name : names) {
    const auto number = reinterpret_cast<uintptr_t>(name);
    const HICON icon = LoadIconA(nullptr, name);
    EXPECT_EQ(LoadIconA(nullptr, name), icon) << number;
    EXPECT_EQ(LoadImageA(nullptr, name, IMAGE_ICON, 32, 32, LR_SHARED), icon) << number;
    EXPECT_EQ(infoOf(icon), "icon 16,16 mask 32x32x1 color 32x32x32") << number;
    EXPECT_TRUE(DestroyIcon(icon)) << number;
    for (const int size : {16, 32, 48}) {
      const HANDLE own = LoadImageA(nullptr, name, IMAGE_ICON, size, size, 0);
      const Sheet sheet(48);
      DrawIconEx(sheet.dc, 0, 0, static_cast<HICON>(own), 0, 0, 0, nullptr, DI_NORMAL);
      EXPECT_EQ(sheet.at(0, 0), "ground") << number << ' ' << size;
      EXPECT_NE(sheet.at(size / 2, size / 2), "ground") << number << ' ' << size;
      std::string look;
      for (int y = 0; y < size; ++y) look += sheet.row(y, size);
      looks.push_back(look);
      EXPECT_TRUE(DestroyIcon(static_cast<HICON>(own))) << number << ' ' << size;
    }
  }
  for (size_t i = 0; i < looks.size(); ++i)
    for (size_t k = 0; k < i; ++k) EXPECT_NE(looks[i], looks[k]) << i << ' ' << k;

  for (const LPCSTR name : {IDC_ARROW, IDC_IBEAM, IDC_WAIT, IDC_CROSS, IDC_UPARROW, IDC_SIZENWSE, IDC_SIZENESW,
                            IDC_SIZEWE, IDC_SIZENS, IDC_SIZEALL, IDC_NO, IDC_HAND, IDC_APPSTARTING, IDC_HELP}) {
    const HCURSOR cursor = LoadCursorA(nullptr, name);
    EXPECT_EQ(LoadCursorA(nullptr, name), cursor) << reinterpret_cast<uintptr_t>(name);
    const Info info(cursor);
    EXPECT_TRUE(info.told) << reinterpret_cast<uintptr_t>(name);
    EXPECT_EQ(info.text().substr(0, 7), "cursor ");
    EXPECT_LT(info.xHotspot, DWORD{32}) << reinterpret_cast<uintptr_t>(name);
    EXPECT_LT(info.yHotspot, DWORD{32}) << reinterpret_cast<uintptr_t>(name);
    EXPECT_EQ(sizeOf(info.hbmMask).substr(0, 3), "32x") << reinterpret_cast<uintptr_t>(name);
  }
  EXPECT_NE(static_cast<HANDLE>(LoadIconA(nullptr, IDI_HAND)), static_cast<HANDLE>(LoadCursorA(nullptr, IDC_IBEAM)));
}
