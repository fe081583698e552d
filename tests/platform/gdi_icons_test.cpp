// Icons and cursors: which image is taken, how it is drawn, what is told of it, and who destroys it.

#include "platform/canvas.h"
#include "platform/gdi_resources.h"
#include "support/files.h"
#include "support/handles.h"

#include <cstring>
#include <string>
#include <tuple>
#include <utility>

namespace {

using namespace std::string_literals;
using GdiIcons = HandlesTest;

constexpr COLORREF kGround = RGB(0x30, 0x60, 0x90);

const HINSTANCE kProgram = GetModuleHandleA(nullptr);

// Colours are told as RRGGBB.
std::string nameOf(COLORREF color) {
  char text[9];
  std::snprintf(text, sizeof text, "%02x%02x%02x", GetRValue(color), GetGValue(color), GetBValue(color));
  return color == kGround ? "ground" : text;
}

// Pixels of a row, or of several that follow it, from the left.
std::string pixelsOf(HDC dc, int y, int width, int height = 1) {
  std::string all;
  for (int i = 0; i < width * height; ++i) all += (i ? " " : "") + nameOf(GetPixel(dc, i % width, y + i / width));
  return all;
}

std::string pixelsOf(HBITMAP bitmap, int width, int height) {
  const HDC dc = CreateCompatibleDC(nullptr);
  SelectObject(dc, bitmap);
  const std::string all = pixelsOf(dc, 0, width, height);
  DeleteDC(dc);
  return all;
}

struct Sheet : Canvas {
  explicit Sheet(int size, UINT bits = 32, COLORREF ground = kGround) : Canvas(size, size, bits) {
    fill(ground);
    // an icon keeps its colours whatever these are
    SetTextColor(dc, RGB(1, 2, 3));
    SetBkColor(dc, RGB(4, 5, 6));
    SetROP2(dc, R2_NOT);
  }
  Sheet &draw(HANDLE icon, UINT flags = DI_NORMAL, int x = 0, int y = 0, int width = 0, int height = 0,
              HBRUSH brush = nullptr) {
    EXPECT_TRUE(DrawIconEx(dc, x, y, static_cast<HICON>(icon), width, height, 0, brush, flags));
    return *this;
  }
  std::string at(int x, int y) const { return nameOf(GetPixel(dc, x, y)); }
  std::string row(int y, int count) const { return pixelsOf(dc, y, count); }
  // The rectangle of what isn't ground.
  std::string changed() const {
    RECT box{width, height, 0, 0};
    for (LONG y = 0; y < height; ++y)
      for (LONG x = 0; x < width; ++x)
        if (GetPixel(dc, x, y) != kGround)
          box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), std::max(box.bottom, y + 1)};
    return std::to_string(box.left) + "," + std::to_string(box.top) + " " + std::to_string(box.right) + "," +
           std::to_string(box.bottom);
  }
};

std::string drawn(HANDLE icon) { return pixelsOf(Sheet(2).draw(icon).dc, 0, 2, 2); }

std::string sizeOf(HBITMAP bitmap) {
  BITMAP told{};
  if (!bitmap || !GetObjectA(bitmap, sizeof told, &told)) return "none";
  return std::to_string(told.bmWidth) + "x" + std::to_string(told.bmHeight) + "x" + std::to_string(told.bmBitsPixel);
}

// The bitmaps of an icon, which go at the end.
struct Info : ICONINFO {
  explicit Info(HICON icon) : ICONINFO{}, told(GetIconInfo(icon, this) != FALSE) {}
  ~Info() { DeleteObject(hbmMask), DeleteObject(hbmColor); }
  const bool told;
};

// "icon 16,16 mask 32x32x1 color 32x32x32": the hot spot, and the bitmaps
std::string infoOf(HANDLE icon) {
  const Info info(static_cast<HICON>(icon));
  if (!info.told) return "none";
  return (info.fIcon ? "icon " : "cursor ") + std::to_string(info.xHotspot) + "," + std::to_string(info.yHotspot) +
         " mask " + sizeOf(info.hbmMask) + " color " + sizeOf(info.hbmColor);
}

// The same of one of a number of pixels as in the resources.
std::string info(int size, const char *kind = "icon") {
  const std::string half = std::to_string(size / 2), side = std::to_string(size), box = side + "x" + side;
  return kind + " "s + half + "," + half + " mask " + box + "x1 color " + box + "x32";
}

// An icon or a cursor that goes at the end.
struct Icon {
  explicit Icon(HANDLE made) : handle(static_cast<HICON>(made)) {}
  Icon(int id, int size, UINT flags = 0, UINT type = IMAGE_ICON)
      : Icon(LoadImageA(kProgram, MAKEINTRESOURCEA(id), type, size, size, flags)) {}
  ~Icon() { EXPECT_TRUE(DestroyIcon(handle)); }
  Icon(const Icon &) = delete;
  Icon &operator=(const Icon &) = delete;
  operator HICON() const { return handle; }
  const HICON handle;
};

// One of two times two pixels: opaque, transparent by the mask, half transparent by the alpha, and blue.
HICON makeIcon(bool alpha, BOOL isIcon = TRUE, int maskHeight = 2) {
  const DWORD opacity = alpha ? 0xFFFFFFFF : 0xFFFFFF;
  const DWORD pixels[] = {0xFFFF0000 & opacity, 0x00FFFFFF, 0x8000FF00 & opacity, 0xFF0000FF & opacity};
  const BYTE bits[] = {0x40, 0, 0x80, 0};
  const Canvas mask(CreateBitmap(2, maskHeight, 1, 1, bits)), color(CreateBitmap(2, 2, 1, 32, pixels));
  ICONINFO info{isIcon, 1, 0, static_cast<HBITMAP>(mask.bitmap), static_cast<HBITMAP>(color.bitmap)};
  return CreateIconIndirect(&info);
}

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
      SCOPED_TRACE(std::to_string(asked) + (file ? " of the file" : ""));
      const Icon icon(LoadImageA(file ? nullptr : kProgram, file ? name.c_str() : MAKEINTRESOURCEA(GDI_ICON),
                                 IMAGE_ICON, asked, asked, flags | (file ? LR_LOADFROMFILE : 0)));
      Sheet sheet(64);
      EXPECT_EQ(sheet.draw(icon).changed(), "0,0 "s + std::to_string(size) + "," + std::to_string(size));
      EXPECT_EQ(sheet.at(size / 2, size / 2), color);
    }
  EXPECT_EQ(infoOf(LoadCursorA(kProgram, MAKEINTRESOURCEA(GDI_CURSOR))), "cursor 3,4 mask 32x64x1 color none");
  // the hot spot goes with the size
  const std::pair<int, const char *> cursors[] = {{0, "cursor 3,4 mask 32x64x1 color none"},
                                                  {48, "cursor 7,9 mask 48x48x1 color 48x48x32"},
                                                  {96, "cursor 14,18 mask 96x96x1 color 96x96x32"},
                                                  {16, "cursor 1,2 mask 16x32x1 color none"}};
  for (const auto &[size, expected] : cursors)
    EXPECT_EQ(infoOf(Icon(GDI_CURSOR, size, 0, IMAGE_CURSOR).handle), expected) << size;
}

TEST_F(GdiIcons, WhatIsNoIconIsNotLoaded) {
  const std::pair<const char *, HANDLE> none[] = {
      {"a cursor as icon", LoadIconA(kProgram, MAKEINTRESOURCEA(GDI_CURSOR))},
      {"an icon as cursor", LoadCursorA(kProgram, MAKEINTRESOURCEA(GDI_ICON))},
      {"an unknown number", LoadIconA(kProgram, MAKEINTRESOURCEA(9))},
      {"of the system", LoadIconA(nullptr, MAKEINTRESOURCEA(GDI_ICON))},
      {"of no instance", LoadIconA(reinterpret_cast<HINSTANCE>(0x12340000), MAKEINTRESOURCEA(GDI_ICON))},
      {"a name", LoadIconA(kProgram, "103")}};
  for (const auto &[what, handle] : none) EXPECT_EQ(handle, nullptr) << what;
  EXPECT_EQ(LoadIconA(kProgram, "#103"), LoadIconA(kProgram, MAKEINTRESOURCEA(GDI_ICON)));
}

TEST_F(GdiIcons, BrokenFilesAreRefused) {
  const std::string whole = readFile("gdi_icon.ico");
  const auto entry = [&](size_t i) { return whole.substr(6 + i * 16, 16); };
  const auto image = [&](size_t i) {
    DWORD place[2]; // size and offset
    std::memcpy(place, entry(i).data() + 8, sizeof place);
    return whole.substr(place[1], place[0]);
  };
  // a file of this image alone, with what its entry says of size and offset
  const auto file = [&](const std::string &bytes, DWORD size, DWORD offset = 22) {
    const DWORD place[] = {size, offset};
    return whole.substr(0, 4) + "\1\0"s + entry(2).substr(0, 8) +
           std::string(reinterpret_cast<const char *>(place), sizeof place) + bytes;
  };
  const std::string square = image(2); // of 16 x 16, 256 colours
  const auto size = static_cast<DWORD>(square.size());
  const std::string good = file(square, size);
  std::string coded = good;
  coded[22 + 16] = 1; // run-length codes
  const std::pair<const char *, std::string> rows[] = {{"empty", ""},
                                                       {"only the list", good.substr(0, 22)},
                                                       {"an image that is cut", good.substr(0, good.size() - 40)},
                                                       {"an image that is said to be longer", file(square, size + 1)},
                                                       {"an image far behind the end", file(square, size, 0xFFFFFFF0)},
                                                       {"an image of codes", coded},
                                                       {"a PNG that is cut", file(image(8).substr(0, 60), 60)},
                                                       {"a bitmap", "BM" + std::string(300, '\0')}};
  const TempFolder folder;
  const std::string name = folder.file("b.ico");
  const auto loaded = [&](const std::string &bytes) {
    writeFile(name, bytes);
    return LoadImageA(nullptr, name.c_str(), IMAGE_ICON, 16, 16, LR_LOADFROMFILE);
  };
  for (const auto &[what, bytes] : rows) EXPECT_EQ(loaded(bytes), nullptr) << what;
  EXPECT_EQ(infoOf(Icon(loaded(good)).handle), info(16));
  const Icon bare(loaded(file(square.substr(0, size - 64), size - 64)));
  EXPECT_EQ(Sheet(16).draw(bare).at(1, 0), "000000") << "without a mask everything is opaque";
  EXPECT_EQ(LoadImageA(nullptr, folder.file("none.ico").c_str(), IMAGE_ICON, 0, 0, LR_LOADFROMFILE), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
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
                                                                   {24, DI_NORMAL, turned + "800000", "00ff00"},
                                                                   {28, DI_NORMAL, turned + "000080", "00ff00"},
                                                                   {40, DI_NORMAL, turned + "808000", "00ff00"},
                                                                   {40, DI_IMAGE, image + "808000", "00ff00"},
                                                                   {32, DI_NORMAL, blended + "ff0000", "00ff00"},
                                                                   {32, DI_IMAGE, blended + "ff0000", "00ff00"},
                                                                   {32, DI_MASK, mask, "000000"},
                                                                   {48, DI_NORMAL, blended + "ff8000", "00ff00"},
                                                                   {32, 0, "ground ground ground ground", "ground"}};
  for (const auto &[size, flags, top, last] : rows) {
    const Icon icon(GDI_ICON, size);
    Sheet sheet(50);
    EXPECT_EQ(sheet.draw(icon, flags).row(0, 4), top) << size << ' ' << flags;
    EXPECT_EQ(sheet.at(0, size - 1), last) << size << ' ' << flags;
  }
  const Icon icon(GDI_ICON, 16);
  for (const auto &[ground, expected] :
       {std::pair{RGB(0, 0, 0), "ffffff 000000 ffffff 000000"}, {RGB(255, 255, 255), "ffffff ffffff 000000 000000"}})
    EXPECT_EQ(Sheet(16, 1, ground).draw(icon).row(0, 4), expected) << "on one bit only white stays white";
  const HBRUSH brush = CreateSolidBrush(RGB(0x10, 0x20, 0x40));
  Sheet sheet(20);
  EXPECT_EQ(sheet.draw(icon, DI_NORMAL, 1, 2, 0, 0, brush).row(2, 5), "ground ffffff 102040 efdfbf 0000ff")
      << "a brush fills the ground first";
  EXPECT_EQ(sheet.changed(), "1,2 17,18");
  DeleteObject(brush);
}

// A bitmap's alpha is only what it was made with.
TEST_F(GdiIcons, AlphaBlendsUntilSomebodyDrawsOnTheBitmap) {
  const DWORD pixels[] = {0x01FFFFFF, 0x40C0FF10, 0x7FC0FF10, 0xFEC0FF10}; // over 306090
  const BYTE none[] = {0, 0};
  const Canvas mask(CreateBitmap(4, 1, 1, 1, none)), color(CreateBitmap(4, 1, 1, 32, pixels));
  ICONINFO info{TRUE, 0, 0, static_cast<HBITMAP>(mask.bitmap), static_cast<HBITMAP>(color.bitmap)};
  const Icon icon(CreateIconIndirect(&info));
  EXPECT_EQ(Sheet(4).draw(icon).row(0, 4), "316190 548870 78af50 bffe11");
  color.fill(RGB(0, 0, 0));
  const Icon filled(CreateIconIndirect(&info));
  EXPECT_EQ(Sheet(4).draw(filled).row(0, 4), "000000 000000 000000 000000");
}

TEST_F(GdiIcons, DrawingStretches) {
  const Icon icon(GDI_ICON, 16), blending(GDI_ICON, 32);
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
      {"turned round", icon, 30, 40, -32, -32, DI_NORMAL, "0,9 31,41", 30, 40, "ffffff"}, // from -1
      {"turned over", icon, 0, 40, 32, -32, DI_NORMAL, "0,9 32,41", 1, 40, "ffffff"}};
  for (const Row &row : rows) {
    Sheet sheet(70);
    EXPECT_EQ(sheet.draw(row.icon, row.flags, row.x, row.y, row.width, row.height).changed(), row.changed) << row.what;
    EXPECT_EQ(sheet.at(row.pixelX, row.pixelY), row.pixel) << row.what;
  }
  const Sheet sheet(70); // mapped: the usual size counts logical units
  SetMapMode(sheet.dc, MM_ANISOTROPIC), SetViewportExtEx(sheet.dc, 2, 2, nullptr);
  DrawIcon(sheet.dc, 1, 1, icon);
  SetMapMode(sheet.dc, MM_TEXT);
  EXPECT_EQ(sheet.changed(), "2,2 66,66");
  EXPECT_EQ(sheet.at(10, 3), "cf9f6f");
}

TEST_F(GdiIcons, AreMadeOfBitmapsAndToldAsBitmaps) {
  const Icon blending(makeIcon(true)), plain(makeIcon(false)), cursor(makeIcon(true, FALSE));
  EXPECT_EQ(infoOf(blending), info(2));
  EXPECT_EQ(infoOf(cursor), "cursor 1,0 mask 2x2x1 color 2x2x32");
  EXPECT_EQ(drawn(blending), "ff0000 ground 18b048 0000ff");
  EXPECT_EQ(drawn(plain), "ff0000 cf9f6f 309f90 0000ff");
  EXPECT_EQ(infoOf(Icon(makeIcon(true, TRUE, 1))), info(2)) << "a mask of another size is stretched";
  Info told(blending);
  EXPECT_EQ(pixelsOf(told.hbmMask, 2, 2), "000000 ffffff ffffff 000000");
  EXPECT_EQ(pixelsOf(told.hbmColor, 2, 2), "ff0000 ffffff 00ff00 0000ff");
  EXPECT_EQ(drawn(Icon(CreateIconIndirect(&told))), "ff0000 ground 18b048 0000ff") << "they make the same again";

  const BYTE halves[] = {0x40, 0, 0x80, 0, 0xC0, 0, 0x40, 0};
  const Canvas both(CreateBitmap(2, 4, 1, 1, halves));
  ICONINFO mono{TRUE, 0, 0, static_cast<HBITMAP>(both.bitmap), nullptr};
  const Icon icon(CreateIconIndirect(&mono)), made(CreateCursor(kProgram, 1, 5, 2, 2, halves, halves + 4));
  for (const HICON one : {icon.handle, made.handle}) EXPECT_EQ(drawn(one), "ffffff cf9f6f ground ffffff");
  EXPECT_EQ(infoOf(made), "cursor 1,5 mask 2x4x1 color none");
  EXPECT_EQ(infoOf(icon), "icon 1,1 mask 2x4x1 color none");
  mono = {TRUE, 0, 0, nullptr, told.hbmColor};
  EXPECT_EQ(CreateIconIndirect(&mono), nullptr) << "without a mask";
}

TEST_F(GdiIcons, SharedOnesStay) {
  const auto shared = [](int size) {
    return LoadImageA(kProgram, MAKEINTRESOURCEA(GDI_ICON), IMAGE_ICON, size, size, LR_SHARED);
  };
  const HICON icon = LoadIconA(kProgram, MAKEINTRESOURCEA(GDI_ICON));
  EXPECT_EQ(LoadIconA(kProgram, MAKEINTRESOURCEA(GDI_ICON)), icon);
  EXPECT_EQ(shared(32), icon);
  EXPECT_EQ(shared(16), shared(16));
  EXPECT_NE(shared(16), icon);
  EXPECT_TRUE(DestroyIcon(icon));
  EXPECT_EQ(infoOf(icon), info(32));
  HICON gone;
  {
    const Icon own(GDI_ICON, 32);
    EXPECT_NE(gone = own, icon);
  }
  const Sheet sheet(2);
  EXPECT_EQ(infoOf(gone), "none");
  EXPECT_FALSE(DestroyIcon(gone));
  EXPECT_FALSE(DrawIcon(sheet.dc, 0, 0, gone));
  // it is no drawing object
  const Icon other(GDI_ICON, 16);
  EXPECT_FALSE(DeleteObject(other.handle));
  EXPECT_EQ(SelectObject(sheet.dc, other.handle), nullptr);
  EXPECT_EQ(infoOf(other), info(16));
}

TEST_F(GdiIcons, CopiesAreOnesOwn) {
  const HICON icon = LoadIconA(kProgram, MAKEINTRESOURCEA(GDI_ICON));
  const std::tuple<int, UINT, int, const char *> rows[] = {
      {0, 0, 32, "ff0000"}, {24, 0, 24, "ff0000"}, {24, LR_COPYFROMRESOURCE, 24, "800000"}};
  for (const auto &[asked, flags, size, color] : rows) {
    const Icon copy(CopyImage(icon, IMAGE_ICON, asked, asked, flags));
    EXPECT_EQ(infoOf(copy), info(size)) << asked << ' ' << flags;
    EXPECT_EQ(Sheet(2).draw(copy, DI_NORMAL, -5, -5).at(1, 1), color) << asked << ' ' << flags;
  }
  const HICON copy = CopyIcon(icon);
  EXPECT_EQ(infoOf(Icon(CopyImage(copy, IMAGE_ICON, 40, 40, LR_COPYDELETEORG))), info(40));
  EXPECT_EQ(infoOf(copy), "none");
  const DWORD pixels[] = {0xFFFF0000, 0x00FFFFFF};
  const HBITMAP bitmap = CreateBitmap(2, 1, 1, 32, pixels);
  const Canvas wide(CopyImage(bitmap, IMAGE_BITMAP, 4, 1, LR_COPYDELETEORG));
  EXPECT_EQ(pixelsOf(wide.dc, 0, 4), "ff0000 ff8080 ffffff ffffff");
  EXPECT_EQ(sizeOf(bitmap), "none");
}

// What they look like is the system's; that they are different pictures, and which size they have, isn't.
TEST_F(GdiIcons, TheSystemHasIconsAndCursors) {
  std::map<std::string, std::string> looks;
  for (const LPCSTR name : {IDI_APPLICATION, IDI_HAND, IDI_QUESTION, IDI_EXCLAMATION, IDI_ASTERISK}) {
    const std::string number = std::to_string(reinterpret_cast<uintptr_t>(name));
    const HICON icon = LoadIconA(nullptr, name);
    EXPECT_EQ(LoadIconA(nullptr, name), icon) << number;
    EXPECT_EQ(LoadImageA(nullptr, name, IMAGE_ICON, 32, 32, LR_SHARED), icon) << number;
    EXPECT_EQ(infoOf(icon), info(32)) << number;
    EXPECT_TRUE(DestroyIcon(icon)) << number;
    for (const int size : {16, 32, 48}) {
      const std::string which = number + " of " + std::to_string(size);
      const Icon own(LoadImageA(nullptr, name, IMAGE_ICON, size, size, 0));
      Sheet sheet(48);
      EXPECT_EQ(sheet.draw(own).at(0, 0), "ground") << which;
      EXPECT_NE(sheet.at(size / 2, size / 2), "ground") << which;
      const auto [other, isNew] = looks.try_emplace(pixelsOf(sheet.dc, 0, 48, 48), which);
      EXPECT_TRUE(isNew) << which << " looks like " << other->second;
    }
  }
  for (const LPCSTR name : {IDC_ARROW, IDC_IBEAM, IDC_WAIT, IDC_CROSS, IDC_UPARROW, IDC_SIZENWSE, IDC_SIZENESW,
                            IDC_SIZEWE, IDC_SIZENS, IDC_SIZEALL, IDC_NO, IDC_HAND, IDC_APPSTARTING, IDC_HELP}) {
    SCOPED_TRACE(reinterpret_cast<uintptr_t>(name));
    const HCURSOR cursor = LoadCursorA(nullptr, name);
    EXPECT_EQ(LoadCursorA(nullptr, name), cursor);
    const Info info(cursor);
    ASSERT_TRUE(info.told);
    EXPECT_FALSE(info.fIcon);
    EXPECT_LT(info.xHotspot, DWORD{32});
    EXPECT_LT(info.yHotspot, DWORD{32});
    EXPECT_EQ(sizeOf(info.hbmMask).substr(0, 3), "32x");
  }
}
