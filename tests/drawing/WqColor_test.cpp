// Colour arithmetic, the colours that ids stand for, and palettes from BMP files.

#include "drawing/canvas.h"
#include "support/files.h"

using WqColorTest = LibraryTest;
using Colours = std::vector<COLORREF>;

static Colours platformEntries(HPALETTE palette) {
  Colours colours(256);
  colours.resize(GetPaletteEntries(palette, 0, 256, reinterpret_cast<PALETTEENTRY *>(colours.data())));
  return colours;
}

// In the middle of two colours, worked out byte by byte.
static COLORREF middle(COLORREF a, COLORREF b) {
  return 0x02000000 |
         RGB((GetRValue(a) + GetRValue(b)) / 2, (GetGValue(a) + GetGValue(b)) / 2, (GetBValue(a) + GetBValue(b)) / 2);
}

TEST_F(WqColorTest, IdsStandForColours) {
  EXPECT_EQ(
      (Colours{WqColor_Neutral(0, 0xFFFFFF), WqColor_Neutral(0xFF000001, 2), WqColor_Neutral(0x10FF20, 0x300022)}),
      (Colours{0x027F7F7F, 0x02000001, 0x02207F21}));
  EXPECT_EQ((Colours{WqColor_BW(0xFFFFFF), WqColor_BW(0xFF0000FF), WqColor_BW(0xFF00), WqColor_BW(0xFF0000)}),
            (Colours{0x02FFFFFF, 0x024C4C4C, 0x02999999, 0x02191919}));
  const COLORREF face = GetSysColor(15), shadow = GetSysColor(16), light = GetSysColor(13), dark = GetSysColor(21);
  const COLORREF s171 = middle(face, light), s173 = middle(0xFFFFFF, light), s172 = middle(s171, s173);
  Colours expected = {0x02000000, 0x02FFFFFF, 0x020000FF, 0x0200FFFF, 0x0200FF00, 0x02FFFF00, 0x02FF0000, 0x02FF00FF,
                      0x02808080, 0x02C0C0C0, 0x02000080, 0x02008080, 0x02008000, 0x02808000, 0x02800000, 0x02800080};
  for (int i = 0; i < 25; ++i) expected.push_back(GetSysColor(i));
  for (const COLORREF shade : {middle(face, shadow), middle(shadow, dark), s171, s172, s173, middle(s171, s172),
                               middle(GetSysColor(12), dark), COLORREF{0}})
    expected.push_back(shade);
  for (uint32_t i = 0; i < 49; ++i) EXPECT_EQ(WqColorTbl_Get(128 + i), expected[i]) << i;
  const auto got = [](const std::vector<uint32_t> &ids) {
    Colours colours;
    for (const uint32_t id : ids) colours.push_back(WqColorTbl_Get(id));
    return colours;
  };
  EXPECT_EQ(got({0xFF112233, 0x12345681}), (Colours{0x112233, 0x02FFFFFF}));

  const uint32_t blocks = wqMain.allocCount;
  WqColorTbl_Insert(5, 0x02010203), WqColorTbl_Insert(0x12345605, 0x66DDEEFF);
  EXPECT_EQ(got({5}), Colours{0x66DDEEFF});
  EXPECT_EQ(reinterpret_cast<WqColorEntry *>(WqHash_FindData(&wqMain.colorTbl, 5)->data)->id, 0x12345605u);
  WqColorTbl_Remove(128), WqColorTbl_Remove(6), WqColorTbl_Remove(0x105);
  EXPECT_EQ(got({5, 128}), (Colours{0, 0x02000000}));
  EXPECT_EQ(wqMain.allocCount, blocks);
  WqColorTbl_Insert(129, 0x00010101), WqColorTbl_Insert(150, 7);
  EXPECT_EQ(got({129, 173}), (Colours{0x00010101, s173}));
  WqColorTbl_InitSystem(nullptr);
  EXPECT_EQ(got({129, 150}), (Colours{0x02FFFFFF, GetSysColor(6)}));
}

TEST_F(WqColorTest, PalettesFindAndAddColours) {
  WqColorPal palette;
  WqColorPal_Init(&palette, 0);
  palette.entries[3] = palette.entries[7] = {0x11, 0x22, 0x33, 0x44}, palette.baseCount = palette.count = 10;
  EXPECT_EQ(WqColorPal_FindIx(&palette, 0x99112233), 3);
  EXPECT_EQ(WqColorPal_FindIx(&palette, 0x112234), -1);
  EXPECT_EQ(WqColorPal_Add(&palette, 0x112233), 3);
  EXPECT_EQ(WqColorPal_Add(&palette, 0xFF010203), 10);
  EXPECT_EQ(WqColorPal_FindData(&palette, 10), 0x010203u);
  EXPECT_EQ(WqColorPal_FindData(&palette, 11), 0u);
  WqColorPal_InitCount(&palette);
  EXPECT_EQ(WqColorPal_FindIx(&palette, 0x010203), -1);
  for (int i = 10; i < 236; ++i) EXPECT_EQ(WqColorPal_Add(&palette, 0x500000 + static_cast<COLORREF>(i)), i);
  for (const COLORREF colour : {0x600000, 0x112233}) EXPECT_EQ(WqColorPal_Add(&palette, colour), -1) << "full";
  WqColorPal_Create(&palette);
  const Colours made = platformEntries(palette.handle);
  EXPECT_EQ(std::tuple(palette.count, made.size(), made.at(7)), std::tuple(10u, 10u, 0x112233u))
      << "what was added is gone";
  WqColorPal_Term(&palette), WqColorPal_Term(&palette);
  EXPECT_EQ(palette.handle, nullptr);
}

TEST_F(WqColorTest, PalettesComeFromFiles) {
  const TempFolder folder;
  const std::string name = folder.file("p.bmp");
  std::string greys;
  for (const int grey : {0xE6, 0xE0, 0xC0, 0x11, 0xAD, 0x80, 0x42, 0xE6})
    greys += std::string(3, static_cast<char>(grey)) + '\0';
  // clang-format off
  const struct { WORD bits; DWORD used, count; } rows[] = {{1, 0, 2}, {4, 0, 16}, {8, 0, 236}, {24, 0, 236},
      {16, 0, 77}, {16, 5, 5}, {4, 256, 236}, {8, 300, 77}, {8, 257, 77}};
  // clang-format on
  WqColorPal palette = {};
  for (const auto &row : rows) {
    palette.baseCount = palette.count = 77, palette.entries[1].rgbRed = 9, palette.entries[9].rgbRed = 9;
    writeFile(name, bmpFile({1, 1, row.bits, row.used, BI_RGB, greys})), WqColorPal_Bmp(&palette, name.c_str());
    const bool refused = row.count == 77;
    EXPECT_EQ(std::tuple(palette.count, palette.baseCount), std::tuple(row.count, row.count))
        << row.bits << ' ' << row.used;
    EXPECT_EQ(palette.entries[1].rgbRed, refused ? 9 : 0xE0);
    EXPECT_EQ(palette.entries[9].rgbRed, refused ? 9 : 0) << "black where the file has no more";
  }
  const std::string whole = bmpFile({1, 1, 8, 8, BI_RGB, greys});
  for (size_t size = 0; size <= whole.size(); ++size) { // at first none, at last the whole
    palette = {}, writeFile(name, whole.substr(0, size));
    WqColorPal_Bmp(&palette, (size == 0 ? name + "x" : name).c_str());
    EXPECT_EQ(palette.count, size < 54 ? 0u : 8u) << size;
  }
  const COLORREF face = GetSysColor(15), shadow = GetSysColor(16), white = 0xFFFFFF;
  const COLORREF light = GetSysColor(20) == white ? middle(face, white) : GetSysColor(20);
  Colours looks = {middle(light, white),
                   light,
                   face,
                   0x111111,
                   middle(face, shadow),
                   shadow,
                   middle(shadow, GetSysColor(21)),
                   0xE6E6E6};
  for (COLORREF &colour : looks) colour &= white;
  WqColorPal_Create(&palette);
  EXPECT_EQ(platformEntries(palette.handle)[0], looks[6]) << "all six taken for entry 0";
  for (int again = 0; again < 2; ++again) { // the entries keep the greys
    WqColorPal_InitReplace(&palette), WqColorPal_Create(&palette);
    EXPECT_EQ(platformEntries(palette.handle), looks);
    for (const int i : {0, 1}) EXPECT_EQ(palette.replace[i].colour >> 24, 2u);
  }
  palette.replace[3].index = 5000, WqColorPal_Create(&palette); // an index of nothing
  palette.count = 2, WqColorPal_InitReplace(&palette), WqColorPal_Term(&palette);
  EXPECT_EQ(std::tuple(palette.replace[1].index, palette.replace[2].index), std::tuple(1, -1));
}
