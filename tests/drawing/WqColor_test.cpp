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

TEST_F(WqColorTest, IdsStandForColours) {
  const auto middle = WqColor_Neutral;
  EXPECT_EQ((Colours{middle(0, 0xFFFFFF), middle(0xFF000001, 2), middle(0x10FF20, 0x300022)}),
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
  EXPECT_TRUE(WqColorTbl_Get(0xFF112233) == 0x112233 && WqColorTbl_Get(0x12345681) == 0x02FFFFFF);

  const uint32_t blocks = wqMain.allocCount;
  WqColorTbl_Insert(5, 0x02010203), WqColorTbl_Insert(0x12345605, 0x66DDEEFF);
  EXPECT_EQ(WqColorTbl_Get(5), 0x66DDEEFFu);
  EXPECT_EQ(reinterpret_cast<WqColorEntry *>(WqHash_FindData(&wqMain.colorTbl, 5)->data)->id, 0x12345605u);
  WqColorTbl_Remove(128), WqColorTbl_Remove(6), WqColorTbl_Remove(0x105);
  EXPECT_TRUE(WqColorTbl_Get(5) == 0 && WqColorTbl_Get(128) == 0x02000000 && wqMain.allocCount == blocks);
  WqColorTbl_Insert(129, 0x00010101), WqColorTbl_Insert(150, 7);
  EXPECT_TRUE(WqColorTbl_Get(129) == 0x00010101 && WqColorTbl_Get(173) == s173);
  WqColorTbl_InitSystem(nullptr);
  EXPECT_TRUE(WqColorTbl_Get(129) == 0x02FFFFFF && WqColorTbl_Get(150) == GetSysColor(6));
}

TEST_F(WqColorTest, PalettesFindAndAddColours) {
  WqColorPal palette;
  WqColorPal_Init(&palette, 0);
  palette.entries[3] = palette.entries[7] = {0x11, 0x22, 0x33, 0x44}, palette.baseCount = palette.count = 10;
  EXPECT_TRUE(WqColorPal_FindIx(&palette, 0x99112233) == 3 && WqColorPal_FindIx(&palette, 0x112234) == -1);
  EXPECT_TRUE(WqColorPal_Add(&palette, 0x112233) == 3 && WqColorPal_Add(&palette, 0xFF010203) == 10);
  EXPECT_TRUE(WqColorPal_FindData(&palette, 10) == 0x010203 && WqColorPal_FindData(&palette, 11) == 0);
  WqColorPal_InitCount(&palette);
  EXPECT_TRUE(palette.count == 10 && WqColorPal_FindIx(&palette, 0x010203) == -1);
  for (int i = 10; i < 236; ++i) EXPECT_EQ(WqColorPal_Add(&palette, 0x500000 + static_cast<COLORREF>(i)), i);
  EXPECT_TRUE(WqColorPal_Add(&palette, 0x600000) == -1 && WqColorPal_Add(&palette, 0x112233) == -1);
  WqColorPal_Create(&palette);
  const Colours made = platformEntries(palette.handle);
  EXPECT_TRUE(palette.count == 10 && made.size() == 10 && made[7] == 0x112233) << "without what was added";
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
    EXPECT_TRUE(palette.count == row.count && palette.baseCount == row.count) << row.bits << ' ' << row.used;
    EXPECT_EQ(palette.entries[1].rgbRed + palette.entries[9].rgbRed, row.count == 77 ? 18 : 0xE0) << "or black";
  }
  const std::string whole = bmpFile({1, 1, 8, 8, BI_RGB, greys});
  for (size_t size = 0; size <= whole.size(); ++size) { // at first none, at last the whole
    palette = {}, writeFile(name, whole.substr(0, size));
    WqColorPal_Bmp(&palette, (size == 0 ? name + "x" : name).c_str());
    EXPECT_EQ(palette.count, size < 54 ? 0u : 8u) << size;
  }
  const COLORREF face = GetSysColor(15), shadow = GetSysColor(16), white = 0xFFFFFF;
  const COLORREF light = GetSysColor(20) == white ? WqColor_Neutral(face, white) : GetSysColor(20);
  const COLORREF between = WqColor_Neutral(face, shadow), dark = WqColor_Neutral(shadow, GetSysColor(21));
  Colours looks = {WqColor_Neutral(light, white), light, face, 0x111111, between, shadow, dark, 0xE6E6E6};
  for (COLORREF &colour : looks) colour &= white;
  WqColorPal_Create(&palette);
  EXPECT_EQ(platformEntries(palette.handle)[0], looks[6]) << "all six taken for entry 0";
  for (int again = 0; again < 2; ++again) { // the entries keep the greys
    WqColorPal_InitReplace(&palette), WqColorPal_Create(&palette);
    EXPECT_EQ(platformEntries(palette.handle), looks);
    EXPECT_TRUE(palette.replace[0].colour >> 24 == 2 && palette.replace[1].colour >> 24 == 2);
  }
  palette.replace[3].index = 5000, WqColorPal_Create(&palette); // an index of nothing
  palette.count = 2, WqColorPal_InitReplace(&palette), WqColorPal_Term(&palette);
  EXPECT_TRUE(palette.replace[1].index == 1 && palette.replace[2].index == -1);
}
