// Pens, brushes, fonts and bitmaps: their records, their registries, what is made of BMP files, and blits.

#include "drawing/canvas.h"
#include "support/allocation.h"
#include "support/files.h"

#include <filesystem>

constexpr uint32_t kId = 0x12345678;

static std::string word(uint32_t value) { return {reinterpret_cast<const char *>(&value), 4}; }

// Colour i of a table is red i, green 0x10 + i, blue 0x20 + i.
static std::string table(unsigned count) {
  std::string bytes;
  for (unsigned i = 0; i < count; ++i) bytes += word((i << 16) | (0x1000 + (i << 8)) | (0x20 + i));
  return bytes;
}

class ResourcesTest : public CanvasTest {
 protected:
  // The picture that a file gives, "none" when it gives none.
  std::string shown(const std::string &file, LONG side = 2) {
    WqBmpFile bmp;
    writeFile(name_, file), WqBmpFile_Init(&bmp, name_.c_str());
    bmp.handle = reinterpret_cast<HBITMAP>(uintptr_t{1}); // of nothing
    WqBmpFile_Create(&bmp, canvas);
    if (!bmp.handle) return "none";
    clear(), blit(bmp.handle, {}, {}, {side, side}, WqBmpDraw_SrcCopy);
    WqBmpFile_Term(&bmp), WqBmpFile_Delete(&bmp);
    return look(side, side);
  }
  void blit(HBITMAP bitmap, POINT src, POINT dst, SIZE size, void (*act)(const WqBmpDraw *, HDC)) const {
    WqBmpDraw draw;
    WqBmpDraw_Init(&draw, bitmap), WqBmpDraw_Param(&draw, &src, &dst, &size), act(&draw, canvas);
  }

  const TempFolder folder_;
  const std::string name_ = folder_.file("a.bmp");
};

TEST_F(ResourcesTest, RegistriesMakeLateAndRemove) {
  WqPen pen;
  WqBrush brush;
  WqFont font;
  WqBmpFile bmp;
  WqPen_Init(&pen), WqPen_Param(&pen, PS_DASH, 3, 0xFF112233), WqBmpFile_Init(&bmp, name_.c_str());
  WqBrush_Init(&brush), WqBrush_Param(&brush, WQ_BRUSH_HATCHED, WQ_COLOR_GREEN);
  WqFont_Init(&font), WqFont_Param(&font, "Arial", 12, 1), WqFont_LogDef(&font);
  writeFile(name_, bmpFile({2, 2, 1, 0, BI_RGB, table(2), word(0x40) + word(0x80)}));
  // clang-format off
#define KIND(kind, record, ...) \
  {[&] { kind##_Insert(kId, &record); }, kind##_Remove, [&] { return kind##_Get(kId __VA_ARGS__); }}
  const struct { std::function<void()> insert; void (*remove)(uint32_t); std::function<HGDIOBJ()> get; } rows[] = {
      KIND(WqPenTbl, pen), KIND(WqBrushTbl, brush), KIND(WqFontTbl, font), KIND(WqBmpTbl, bmp, , canvas)};
  // clang-format on
  for (const auto &row : rows) {
    SCOPED_TRACE(&row - rows);
    const uint32_t blocks = wqMain.allocCount;
    const HGDIOBJ unknown = row.get();
    row.remove(kId), row.insert(), row.remove(kId);
    EXPECT_TRUE(!unknown && !row.get());
    EXPECT_EQ(wqMain.allocCount, blocks);
    row.insert();
    const HGDIOBJ object = row.get(), again = row.get();
    row.insert(); // over the other one, which somebody may hold
    const HGDIOBJ second = row.get();
    EXPECT_EQ(object, again);
    EXPECT_TRUE(second && second != object);
    EXPECT_EQ(wqMain.allocCount, blocks + 3);
    EXPECT_TRUE(GetObjectA(object, 0, nullptr) && DeleteObject(object));
    row.remove(kId);
    EXPECT_TRUE(!row.get() && !GetObjectA(second, 0, nullptr));
    EXPECT_EQ(wqMain.allocCount, blocks);
    for (int n = 1, failed = 1; failed; ++n, row.remove(kId)) {
      AllocationFailure failure(n);
      row.insert();
      const HGDIOBJ made = row.get();
      failed = failure.happened();
      EXPECT_EQ(made == nullptr, failed != 0) << n;
    }
    row.insert(), row.get(); // for the end of the library
  }
  LOGPEN pens = {};
  LOGBRUSH brushes = {};
  GetObjectA(WqPenTbl_Get(kId), sizeof pens, &pens), GetObjectA(WqBrushTbl_Get(kId), sizeof brushes, &brushes);
  EXPECT_EQ(std::tuple(pens.lopnStyle, pens.lopnWidth.x, pens.lopnColor, pen.log.lopnWidth.y),
            std::tuple(UINT{PS_DASH}, 3, COLORREF{0x112233}, 3));
  EXPECT_EQ(std::tuple(brushes.lbStyle, brushes.lbHatch, brushes.lbColor & 0xFFFFFF),
            std::tuple(UINT{BS_HATCHED}, ULONG_PTR{HS_HORIZONTAL}, COLORREF{0xFF00}));
}

TEST_F(ResourcesTest, RecordsDescribe) {
  const std::string lead(300, '\x83'), cut = "a" + lead.substr(0, 30); // the 32nd byte would begin a character
  // clang-format off
  const struct { std::string face, fits; uint32_t style; LONG weight; } fonts[] = {
      {"Arial", "Arial", 1, 700}, {"a" + lead, cut, 2, 400}, {lead, lead.substr(0, 30), 3, 700}, {"", "", 0, 400}};
  // clang-format on
  for (const auto &[face, fits, style, weight] : fonts) {
    WqFont font;
    WqFont_Init(&font), font.log.lfItalic = 1, font.log.lfEscapement = 5;
    WqFont_Param(&font, face.c_str(), 12, style), WqFont_LogDef(&font);
    const LOGFONTA &log = font.log;
    EXPECT_EQ(log.lfFaceName + std::string("|") + font.face, fits + '|' + fits);
    EXPECT_EQ(std::tuple(log.lfEscapement, log.lfHeight, log.lfWeight), std::tuple(5, -12, weight)) << face;
    EXPECT_EQ(std::tuple(log.lfItalic, log.lfCharSet, log.lfOutPrecision), std::tuple(1, 1, 4)) << face;
    EXPECT_EQ(WqFont_Create(&font), font.handle);
    WqFont_LogEscapDef(&font, 450), WqFont_Delete(&font);
    EXPECT_EQ(std::tuple(log.lfEscapement, font.handle), std::tuple(LONG{450}, HFONT{}));
  }
  BITMAPINFOHEADER header = {};
  const uint32_t counts[][3] = {{1, 0, 2}, {4, 0, 16}, {8, 0, 256}, {16, 0, 65536}, {24, 0, 2}, {8, 7, 7}, {24, 9, 9}};
  for (const auto &[bits, used, colours] : counts) {
    header.biBitCount = static_cast<WORD>(bits), header.biClrUsed = used;
    EXPECT_EQ(WqBmpFile_ColNum(nullptr, &header), colours) << bits;
  }
  WqBmpFile file;
  WqBmpFile_Init(&file, ("a" + lead).c_str()), WqBmpFile_Create(&file, canvas);
  EXPECT_EQ(file.path, "a" + lead.substr(0, 258));
  EXPECT_EQ(file.handle, nullptr) << "no such file";
}

TEST_F(ResourcesTest, BmpFilesAreShown) {
  const auto two = [](uint32_t first, uint32_t second) { return word(first) + word(second); };
  const auto three = [&](uint32_t first, uint32_t second, uint32_t third) { return two(first, second) + word(third); };
  const std::string few = table(5), sixteen = table(16), rows8 = two(0x201, 0x403), rows4 = two(0x21, 0x43);
  const std::string rows24 = two(0x64636261, 0x6665) + two(0x6A696867, 0x6C6B), masks565 = three(0xF800, 0x7E0, 0x1F);
  const std::string four = "231303 241404/211101 221202/", is24 = "676869 6A6B6C/616263 646566/";
  const std::string redFirst = three(0xFF, 0xFF00, 0xFF0000), checks = "FF00 FF00FF/FF00FF FF00/", none = "none";
  const std::string stripes = "221202 221202/211101 211101/";
  const auto masked = [](std::string masks) { return BmpParts{1, 1, 16, 0, BI_BITFIELDS, masks, word(0)}; };
  const auto coded = [&](std::string code) { return BmpParts{2, 2, 8, 5, BI_RLE8, few, code}; };
  // clang-format off
  const struct { BmpParts parts; std::string shown; } files[] = {
      {{2, 2, 8, 5, BI_RGB, few, rows8}, four}, {{2, 2, 24, 0, BI_RGB, "", rows24}, is24},
      {{2, 2, 1, 0, BI_RGB, table(2), two(0x40, 0x80)}, "211101 201000/201000 211101/"},
      {{2, 2, 4, 0, BI_RGB, sixteen, two(0x12, 0x34)}, four},
      {{2, 2, 4, 3, BI_RGB, table(3), rows4}, "0 0/221202 211101/"}, // of black beside them
      {{2, 2, 4, 20, BI_RGB, table(20), two(0x12, 0x34)}, four}, // colours to spare
      {{2, 2, 4, 0, BI_RGB, sixteen, rows4, 8}, "2E1E0E 2E1E0E/2E1E0E 2E1E0E/"}, // a gap is taken for pixels
      {{2, 2, 8, 5, BI_RGB, few, rows8, 0, 40, 60}, four}, {{2, 2, 8, 5, BI_RGB, few, rows8, 3, 124}, four},
      {{2, -2, 8, 5, BI_RGB, few, two(0x403, 0x201)}, four}, {{2, 2, 24, 0, BI_RGB, "", rows24, 5}, is24},
      {{2, 2, 24, 2, BI_RGB, table(2), rows24}, is24}, {{2, 2, 16, 0, BI_RGB, "", two(0x03E07C1F, 0x7C1F03E0)}, checks},
      {{2, 2, 16, 0, BI_BITFIELDS, masks565, two(0x07E0F81F, 0xF81F07E0)}, checks},
      {{1, 2, 32, 0, BI_RGB, "", two(0xFF636261, 0x696867)}, "676869 0/616263 0/"},
      {{1, 2, 32, 0, BI_BITFIELDS, redFirst, two(0xFF010203, 4)}, "4 0/10203 0/"},
      {coded(three(0x02010101, 0x03010000, 0x01000401)), four}, {coded(two(0x0102, 0x01000202)), stripes},
      {{2, 2, 4, 0, BI_RLE4, sixteen, two(0x1202, 0x01003402)}, four},
      {coded(two(0x00010200, 0x01000201)), "0 0/0 221202/"}, // a jump
      {coded(two(0x0104, 0x01000202)), stripes}, // a row filled up to four pixels
      {{3, 1, 8, 5, BI_RLE8, few, two(0x02010300, 0x01000003)}, "211101 221202/0 0/"},
      {{2, 2, 8, 5, BI_RLE8, few, two(0x0102, 0x01000202), 6}, stripes},
      {masked(three(3, 6, 8)), none}, {masked(three(5, 8, 16)), none}, {masked(three(0x10000, 1, 2)), none},
      {masked(three(0, 1, 2)), none}, {{2, -2, 8, 5, BI_RLE8, few, two(0x0102, 0x01000202)}, none},
      {{2, 2, 4, 0, BI_RLE8, sixteen, two(0x0102, 0x01000202)}, none}};
  // In the first two files, a word at a place. The second has its pixels where 0 says too, behind the header.
  const struct { int file; size_t at; std::vector<uint32_t> words; } patches[] = {
      {0, 14, {0, 11, 13, 39, 0xFFFFFFFF}}, {0, 18, {0, 0x80000000, 0x7FFFFFFF, 5}}, {0, 22, {0, 0x80000000, 3}},
      {0, 26, {0x80000, 0x20001, 1, 0x180001}}, {0, 30, {2, 3, 4}}, {0, 46, {0xFFFFFFFF, 0x40000000, 6}},
      {1, 10, {50, 55, 0xFFFFFFF0}}, {1, 18, {3, 0x55555556, 0x7FFFFFFF}}, {1, 22, {3, 0x20000000, 0x80000001}}};
  // clang-format on
  for (const auto &[parts, expected] : files) {
    const std::string whole = bmpFile(parts);
    SCOPED_TRACE(&parts - &files->parts);
    EXPECT_EQ(shown(whole), expected);
    const bool plain = parts.compression != BI_RLE8 && parts.compression != BI_RLE4;
    for (size_t size = 0; size < whole.size() - parts.gap && expected != none && plain;
         size += size + 12 < whole.size() ? 7 : 1)
      ASSERT_EQ(shown(whole.substr(0, size)), none) << "cut at " << size;
  }
  EXPECT_EQ(shown(bmpFile(files[1].parts).replace(10, 4, word(0))), is24);
  for (const auto &[file, at, words] : patches)
    for (const uint32_t value : words)
      EXPECT_EQ(shown(bmpFile(files[file].parts).replace(at, 4, word(value))), none)
          << file << ' ' << at << ' ' << value;
}

// A coded picture in two rows, and what is left of it where its file ends early or its codes leave the rectangle.
TEST_F(ResourcesTest, CodedFilesAreShownAsFarAsTheyGo) {
  const auto file = [](const std::string &codes, DWORD compression = BI_RLE8) {
    return bmpFile({2, 2, static_cast<WORD>(compression == BI_RLE8 ? 8 : 4), 5, compression, table(5), codes});
  };
  const std::string one = "211101", two = "221202", three = "231303", four = "241404", black = "0 0/";
  const std::string row = one + ' ' + two + '/', upper = three + ' ' + four + '/', ones = one + ' ' + one + '/';
  const std::string codes("\1\1\1\2\0\0\1\3\1\4\0\1", 12);
  const std::string bySize[] = {"none",      "none",      black + one + " 0/", black + one + " 0/", black + row,
                                black + row, black + row, black + row,         three + " 0/" + row, three + " 0/" + row,
                                upper + row, upper + row, upper + row};
  for (size_t size = 0; size <= codes.size(); ++size)
    EXPECT_EQ(shown(file(codes.substr(0, size))), bySize[size]) << size;
  const struct {
    const char *what;
    std::string codes, shown;
  } rows[] = {
      {"a run past the right edge", {"\1\1\1\2\7\3\0\0\2\4\0\1", 12}, four + ' ' + four + '/' + row},
      {"single pixels past the right edge", {"\0\5\1\2\3\3\3\0\0\0\2\4\0\1", 14}, four + ' ' + four + '/' + row},
      {"a jump past the right edge", {"\0\2\5\0\2\1\0\1", 8}, black + black},
      {"a row above the top", {"\2\1\0\0\2\1\0\0\2\3\0\1", 12}, ones + ones},
      {"no end behind the last row", {"\2\1\0\0\2\1\0\0", 8}, ones + ones},
      {"a jump above the top", {"\2\1\0\2\0\x9\2\3\0\1", 10}, black + ones},
      {"single pixels cut short", {"\2\1\0\0\0\4\1\2", 8}, black + ones},
      {"a jump cut short", {"\2\1\0\2\1", 5}, black + ones},
      {"bytes behind the end", {"\2\1\0\1\0\0\2\2", 8}, black + ones},
  };
  for (const auto &[what, coded, expected] : rows) EXPECT_EQ(shown(file(coded)), expected) << what;
  EXPECT_EQ(shown(file("\7\x12", BI_RLE4)), black + row);
}

// The oldest header has sizes of 16 bits, all colours that the depth allows, and three bytes for each.
TEST_F(ResourcesTest, FilesWithTheOldestHeaderAreShown) {
  const auto file = [](WORD bits, const std::string &behind, DWORD offBits = 0) {
    const BITMAPCOREHEADER core{12, 2, 2, 1, bits};
    std::string bytes = std::string(10, '\0') + word(offBits);
    return bytes.append(reinterpret_cast<const char *>(&core), sizeof core) + behind;
  };
  std::string colours;
  for (unsigned i = 0; i < 16; ++i) colours += word((i << 16) | (0x1000 + (i << 8)) | (0x20 + i)).substr(0, 3);
  const std::string four = "231303 241404/211101 221202/", rows = word(0x12) + word(0x34);
  EXPECT_EQ(shown(file(4, colours + rows)), four);
  EXPECT_EQ(shown(file(4, colours + rows, 26 + 48)), four);
  EXPECT_EQ(shown(file(4, colours + "gap" + rows, 26 + 51)), four);
  EXPECT_EQ(shown(file(4, colours + rows, 26 + 47)), "none") << "pixels in the table";
  EXPECT_EQ(shown(file(4, colours + rows.substr(1))), "none") << "cut short";
  EXPECT_EQ(shown(file(8, colours + rows)), "none") << "too few colours";
  EXPECT_EQ(shown(file(1, colours.substr(3, 6) + word(0x40) + word(0x80))), "221202 211101/211101 221202/");
  EXPECT_EQ(shown(file(24, word(0x64636261) + word(0x6665) + word(0x6A696867) + word(0x6C6B))),
            "676869 6A6B6C/616263 646566/");
}

// A size that wraps in 32 bits made a block of no bytes. Elsewhere the file would have to be read whole.
TEST_F(ResourcesTest, AFileOfNearlyFourGigabytesIsRefused) {
  if (sizeof(void *) > 4) GTEST_SKIP() << "sizes don't wrap here";
  for (const uint64_t size : {0xFFFFFFFDull, 0xFFFFFFFEull}) {
    const std::string whole = bmpFile({2, 2, 8, 5, BI_RGB, table(5), word(0x201) + word(0x403)});
    writeFile(name_, whole);
    std::filesystem::resize_file(name_, size);
    WqBmpFile bmp;
    WqBmpFile_Init(&bmp, name_.c_str());
    WqBmpFile_Create(&bmp, canvas);
    EXPECT_EQ(bmp.handle, nullptr) << size;
    WqBmpFile_Delete(&bmp);
  }
}

TEST_F(ResourcesTest, BlitsTakeAMask) {
  const HDC source = CreateCompatibleDC(canvas);
  const HBITMAP bitmap = CreateCompatibleBitmap(canvas, 5, 3);
  const HGDIOBJ before = SelectObject(source, bitmap);
  const COLORREF pixels[] = {0x1, 0x2, 0xFFFFFF, 0, 0}; // a picture and its mask, below a margin
  for (int i = 0; i < 15; ++i) SetPixel(source, i % 5, i / 5, i < 5 ? 0x777777 : pixels[i % 5]);
  clear(WHITENESS);
  const std::string row = look(4, 1), masked = "FFFFFF FFFFFF 2 FFFFFF/";
  for (const HBITMAP one : {bitmap, HBITMAP{}}) // selected elsewhere, and none
    for (const auto act : {WqBmpDraw_SrcCopy, WqBmpDraw_SrcCopyWithMask}) blit(one, {}, {1, 1}, {2, 2}, act);
  EXPECT_EQ(look(4, 2), row + row) << "nothing";
  SelectObject(source, before), blit(bitmap, {0, 1}, {1, 1}, {2, 2}, WqBmpDraw_SrcCopyWithMask);
  EXPECT_EQ(look(4, 4), row + masked + masked + row);
  blit(bitmap, {0, 1}, {1, 1}, {2, 2}, WqBmpDraw_SrcCopy);
  EXPECT_EQ(look(4, 2), row + "FFFFFF 1 2 FFFFFF/");
  DeleteDC(source), DeleteObject(bitmap);
}
