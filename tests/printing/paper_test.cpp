// What is drawn on paper: read and looked at in the file that comes of it.

#include "printing/prints.h"

#include <cmath>
#include <cstring>

namespace {

class PaperTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!hasFilePrinter()) GTEST_SKIP() << "there is no printer that writes files";
    before_ = openHandles();
    open(600);
  }
  void TearDown() override {
    if (dc) DeleteDC(dc);
    for (const HGDIOBJ object : objects_) DeleteObject(object);
    if (IsSkipped()) return;
    EXPECT_EQ(openHandles(), before_);
  }

  // A context whose pixels are so many in an inch.
  void open(short dpi) {
    if (dc) DeleteDC(dc);
    DEVMODEA mode{};
    mode.dmSize = sizeof mode, mode.dmFields = DM_PRINTQUALITY, mode.dmPrintQuality = dpi;
    dc = CreateDCA(nullptr, "PDF", nullptr, &mode);
    ASSERT_NE(dc, nullptr);
    ASSERT_EQ(GetDeviceCaps(dc, LOGPIXELSY), dpi);
  }
  static int begin(HDC on, const char *file, const char *name = "Test") {
    const DOCINFOA info = {sizeof info, name, file, nullptr, 0};
    return StartDocA(on, &info);
  }
  // Prints one page into a file.
  template <typename Draw> void print(const char *file, Draw draw) {
    ASSERT_GT(begin(dc, file), 0);
    ASSERT_GT(StartPage(dc), 0);
    draw(dc);
    ASSERT_GT(EndPage(dc), 0);
    ASSERT_GT(EndDoc(dc), 0);
  }
  template <typename Object> Object keep(Object object) {
    objects_.push_back(object);
    return object;
  }
  HFONT font(LONG height, const char *face, LONG weight = FW_NORMAL, BYTE italic = 0) {
    LOGFONTA description{};
    description.lfHeight = height, description.lfWeight = weight, description.lfItalic = italic;
    std::strcpy(description.lfFaceName, face);
    return keep(CreateFontIndirectA(&description));
  }
  static void out(HDC on, int x, int y, const char *text) { TextOutA(on, x, y, text, int(std::strlen(text))); }

  const PrintFolder folder_;
  HDC dc = nullptr;

 private:
  std::vector<size_t> before_;
  std::vector<HGDIOBJ> objects_;
};

constexpr COLORREF kWhite = RGB(255, 255, 255);
const char kJapanese[] = "\x93\xfa\x96\x7b\x8c\xea \xb6\xc5"; // 日本語 and half-width katakana

} // namespace

TEST_F(PaperTest, TextIsReadWhereItStands) {
  LONG width = 0;
  print("text.pdf", [&](HDC on) {
    SelectObject(on, font(-100, "Arial"));
    out(on, 300, 200, "Level(1) -6.02\\dBV");
    SIZE size{};
    GetTextExtentPoint32A(on, "Level(1) -6.02\\dBV", 18, &size);
    width = size.cx;
    SelectObject(on, font(-100, "MS Gothic", FW_BOLD, 1));
    out(on, 300, 500, kJapanese);
    SetTextAlign(on, TA_RIGHT | TA_BOTTOM);
    out(on, 3000, 900, "right");
    SetTextAlign(on, TA_LEFT | TA_TOP);
    RECT box = {300, 1000, 1100, 2000};
    DrawTextA(on, "words that need more lines than one", -1, &box, DT_WORDBREAK);
  });
  const std::string text = textOf("text.pdf");
  for (const char *part : {"Level(1) -6.02\\dBV", "日本語 ｶﾅ", "right", "words that", "lines than one"})
    EXPECT_NE(text.find(part), std::string::npos) << part << " in\n" << text;
  const std::vector<Word> words = wordsOf("text.pdf", 600);
  ASSERT_GE(words.size(), 5u);
  EXPECT_NEAR(words[0].left, 300, 2);
  EXPECT_NEAR(words[1].right, 300 + width, 6) << "the widths that were told before";
  const auto right = std::find_if(words.begin(), words.end(), [](const Word &word) { return word.text == "right"; });
  ASSERT_NE(right, words.end());
  EXPECT_NEAR(right->right, 3000, 6);
}

// More characters than one font of the file has room for, all of which can be read.
TEST_F(PaperTest, ManyCharactersAreReadTooInAllTheirFonts) {
  std::string expected;
  print("many.pdf", [&](HDC on) {
    SelectObject(on, font(-60, "MS Gothic"));
    for (int row = 0; row < 20; ++row) {
      char text[41] = "";
      for (int i = 0; i < 20; ++i) {
        text[2 * i] = char(0x89 + row / 8); // the first ideographs of the standard
        text[2 * i + 1] = char(0x9F + (row % 4) * 20 + i);
      }
      out(on, 200, 200 + 100 * row, text);
    }
  });
  std::string text = textOf("many.pdf");
  text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\n' || c == '\f'; }),
             text.end());
  EXPECT_EQ(text.size(), 3u * 20 * 20) << text;
  EXPECT_EQ(text.find("\xEF\xBF\xBD"), std::string::npos) << "a character without a meaning";
}

// The same calls on a bitmap of a screen's resolution and on such a page. Edges may differ by a pixel.
TEST_F(PaperTest, ShapesLookAsOnABitmap) {
  open(96);
  const auto draw = [&](HDC on) {
    const RECT all = {0, 0, 700, 500};
    FillRect(on, &all, HBRUSH(GetStockObject(WHITE_BRUSH)));
    SelectObject(on, keep(CreatePen(PS_SOLID, 4, RGB(0, 128, 0))));
    SelectObject(on, keep(CreateSolidBrush(RGB(200, 100, 0))));
    Rectangle(on, 20, 20, 120, 100), Ellipse(on, 140, 20, 300, 120), RoundRect(on, 320, 20, 480, 120, 60, 40);
    const POINT star[] = {{560, 20}, {620, 180}, {500, 80}, {640, 80}, {510, 180}};
    SetPolyFillMode(on, ALTERNATE), Polygon(on, star, 5);
    MoveToEx(on, 20, 200, nullptr), LineTo(on, 480, 260);
    const POINT curve[] = {{200, 100}, {300, 400}, {480, 300}};
    MoveToEx(on, 20, 300, nullptr), PolyBezierTo(on, curve, 3);
    SelectObject(on, GetStockObject(NULL_PEN)), Ellipse(on, 560, 200, 680, 300);
    HDC memory = CreateCompatibleDC(on);
    const HGDIOBJ old = SelectObject(memory, keep(CreateCompatibleBitmap(on, 64, 48)));
    for (int y = 0; y < 48; ++y)
      for (int x = 0; x < 64; ++x) SetPixel(memory, x, y, RGB(x * 4, y * 5, 128));
    BitBlt(on, 20, 400, 64, 48, memory, 0, 0, SRCCOPY), BitBlt(on, 100, 400, 32, 24, memory, 32, 24, SRCCOPY);
    SelectObject(memory, old), DeleteDC(memory);
    const HRGN clip = CreateRectRgn(200, 400, 300, 450);
    SelectClipRgn(on, clip), ExcludeClipRect(on, 240, 420, 260, 430);
    Ellipse(on, 180, 380, 320, 470);
    SelectClipRgn(on, nullptr), DeleteObject(clip);
    SelectObject(on, GetStockObject(BLACK_PEN)), Rectangle(on, 400, 400, 460, 460);
    RECT edge = {500, 400, 560, 460};
    DrawEdge(on, &edge, EDGE_RAISED, BF_RECT | BF_MIDDLE);
  };
  print("shapes.pdf", draw);
  EXPECT_EQ(bitmapsIn("shapes.pdf"), "64x48 32x24 ") << "all the rest is no bitmap";

  HDC memory = CreateCompatibleDC(nullptr);
  const HGDIOBJ bitmap = CreateBitmap(700, 500, 1, 32, nullptr), old = SelectObject(memory, bitmap);
  draw(memory);
  const PageImage page = pageOf("shapes.pdf", 1, 96);
  ASSERT_EQ(page.width, GetDeviceCaps(dc, HORZRES));
  const auto isNear = [](int a, int b) { return std::abs(a - b) < 9; };
  const auto alike = [&](COLORREF a, COLORREF b) {
    return isNear(GetRValue(a), GetRValue(b)) && isNear(GetGValue(a), GetGValue(b)) &&
           isNear(GetBValue(a), GetBValue(b));
  };
  int colored = 0, missing = 0;
  for (int y = 1; y < 499; ++y)
    for (int x = 1; x < 699; ++x) {
      const COLORREF color = GetPixel(memory, x, y);
      bool found = false;
      for (int i = 0; i < 9; ++i) found = found || alike(page.at(x - 1 + i % 3, y - 1 + i / 3), color);
      colored += color != kWhite;
      missing += !found;
    }
  EXPECT_GT(colored, 60000);
  EXPECT_LT(missing, 60) << "pixels that are nowhere near";
  EXPECT_EQ(page.at(250, 425), kWhite) << "outside the clip";
  EXPECT_EQ(page.at(220, 425), RGB(200, 100, 0)) << "inside";
  SelectObject(memory, old), DeleteDC(memory), DeleteObject(bitmap);
}

TEST_F(PaperTest, HatchesAndDashesHaveTheSizeOfAScreens) {
  print("marks.pdf", [&](HDC on) {
    SetBkColor(on, RGB(255, 255, 0));
    for (int style = HS_HORIZONTAL; style <= HS_DIAGCROSS; ++style) {
      SelectObject(on, keep(CreateHatchBrush(style, RGB(255, 0, 0))));
      SetBkMode(on, style % 2 ? OPAQUE : TRANSPARENT);
      PatBlt(on, 300 + 600 * style, 300, 500, 500, PATCOPY);
    }
    SetBkMode(on, TRANSPARENT);
    SelectObject(on, keep(CreatePen(PS_DASH, 1, RGB(0, 0, 0))));
    MoveToEx(on, 300, 1200, nullptr), LineTo(on, 300 + 24 * 50 * 6, 1200);
  });
  EXPECT_EQ(bitmapsIn("marks.pdf"), "");
  const PageImage page = pageOf("marks.pdf", 1, 96);
  const double unit = 96.0 / 600;
  const int kRed[] = {8, 8, 8, 8, 15, 16}; // of the 64 places of a square, about
  for (int style = HS_HORIZONTAL; style <= HS_DIAGCROSS; ++style) {
    double red = 0; // it alone has no green
    const int left = int((300 + 600 * style) * unit) + 4, top = int(300 * unit) + 4;
    for (int y = 0; y < 64; ++y)
      for (int x = 0; x < 64; ++x) {
        const COLORREF color = page.at(left + x, top + y);
        red += (255 - GetGValue(color)) / 255.0;
        EXPECT_TRUE(style % 2 == 0 || GetBValue(color) == 0) << "no yellow ground at " << x << "," << y;
      }
    EXPECT_NEAR(red, kRed[style] * 64, 256) << style;
  }
}

TEST_F(PaperTest, MasksLeaveHolesAndAddedPicturesFillThem) {
  open(96);
  HDC mask = CreateCompatibleDC(nullptr), picture = CreateCompatibleDC(nullptr);
  const HGDIOBJ oldMask = SelectObject(mask, keep(CreateBitmap(20, 20, 1, 32, nullptr))),
                oldPicture = SelectObject(picture, keep(CreateBitmap(20, 20, 1, 32, nullptr)));
  PatBlt(mask, 0, 0, 20, 20, WHITENESS), PatBlt(mask, 5, 5, 10, 10, BLACKNESS); // black is where the picture goes
  PatBlt(picture, 0, 0, 20, 20, BLACKNESS);
  SelectObject(picture, keep(CreateSolidBrush(RGB(0, 0, 255)))), PatBlt(picture, 5, 5, 10, 10, PATCOPY);
  print("masks.pdf", [&](HDC on) {
    SelectObject(on, keep(CreateSolidBrush(RGB(0, 255, 0)))), PatBlt(on, 100, 100, 100, 100, PATCOPY);
    for (const auto &[x, operation] : {std::pair(120, SRCPAINT), {160, SRCINVERT}})
      BitBlt(on, x, 120, 20, 20, mask, 0, 0, SRCAND), BitBlt(on, x, 120, 20, 20, picture, 0, 0, operation);
    PatBlt(on, 100, 180, 20, 20, DSTINVERT);
  });
  const PageImage page = pageOf("masks.pdf", 1, 96);
  for (const int x : {120, 160})
    EXPECT_EQ((std::vector{page.at(x + 10, 130), page.at(x + 2, 122), page.at(x + 18, 138)}),
              (std::vector{RGB(0, 0, 255), RGB(0, 255, 0), RGB(0, 255, 0)}));
  EXPECT_EQ(page.at(110, 190), RGB(0, 0, 0)) << "paper counts as white";
  SelectObject(mask, oldMask), SelectObject(picture, oldPicture), DeleteDC(mask), DeleteDC(picture);
}

TEST_F(PaperTest, TheSameCallsMakeTheSameBytes) {
  const auto draw = [&](HDC on) {
    for (const char *face : {"Arial", "MS Gothic", "Times New Roman"}) {
      SelectObject(on, font(-80, face));
      out(on, 300, 300, kJapanese), out(on, 300, 600, "text");
    }
    SelectObject(on, GetStockObject(LTGRAY_BRUSH)), Ellipse(on, 300, 1000, 900, 1500);
  };
  std::string bytes[2];
  for (int i = 0; i < 2; ++i) {
    print("same.pdf", draw);
    bytes[i] = readFile("same.pdf");
    const size_t date = bytes[i].find("/CreationDate (D:");
    ASSERT_NE(date, std::string::npos);
    bytes[i].erase(date, 40);
  }
  EXPECT_EQ(bytes[0], bytes[1]);
  EXPECT_EQ(PrintFolder::names(), "same.pdf ") << "an output file that is named is replaced";
}

TEST_F(PaperTest, AFileHasItsNameOnlyWhenItIsWhole) {
  ASSERT_GT(begin(dc, nullptr, "My/Report.pdf"), 0);
  EXPECT_LT(begin(dc, nullptr), 0) << "one document at a time";
  ASSERT_GT(StartPage(dc), 0);
  EXPECT_LT(StartPage(dc), 0);
  EXPECT_EQ(ResetDCA(dc, nullptr), nullptr) << "within a page";
  ASSERT_GT(EndPage(dc), 0);
  EXPECT_LT(EndPage(dc), 0);
  EXPECT_FALSE(fileExists("My_Report.pdf"));
  ASSERT_GT(EndDoc(dc), 0);
  EXPECT_LT(EndDoc(dc), 0);
  for (const char *text : {"one", "two"}) print(nullptr, [&](HDC on) { out(on, 300, 300, text); });
  EXPECT_NE(textOf("Test (2).pdf").find("two"), std::string::npos);

  ASSERT_GT(begin(dc, nullptr), 0);
  ASSERT_GT(StartPage(dc), 0);
  EXPECT_GT(AbortDoc(dc), 0);
  EXPECT_LT(AbortDoc(dc), 0);
  ASSERT_GT(begin(dc, nullptr), 0);
  ASSERT_GT(EndDoc(dc), 0) << "no page, no file";
  ASSERT_GT(begin(dc, "lost.pdf"), 0);
  DeleteDC(dc), dc = nullptr;
  EXPECT_EQ(PrintFolder::names(), "My_Report.pdf Test (2).pdf Test.pdf ");
}

TEST_F(PaperTest, WhatCanNotBeWrittenIsRefused) {
  std::filesystem::create_directory("folder.pdf");
  for (const char *name : {"no folder/a.pdf", "folder.pdf", "a?.pdf"}) {
    SetLastError(0);
    EXPECT_LT(begin(dc, name), 0) << name;
    EXPECT_NE(GetLastError(), 0u) << name;
  }
  EXPECT_LT(StartPage(dc), 0);
  ASSERT_GT(begin(dc, nullptr, "folder"), 0); // a name that is found taken at the end
  ASSERT_GT(StartPage(dc), 0);
  std::filesystem::rename("folder.pdf", "another");
  EXPECT_GT(EndDoc(dc), 0) << "which ends the page too";
  EXPECT_EQ(PrintFolder::names(), "another folder.pdf ");
}

static int asked;
static BOOL CALLBACK abortsAtTheSecond(HDC, int) { return ++asked < 2; }

TEST_F(PaperTest, AnAbortProcedureEndsADocument) {
  asked = 0;
  EXPECT_GT(SetAbortProc(dc, abortsAtTheSecond), 0);
  ASSERT_GT(begin(dc, "aborted.pdf"), 0);
  ASSERT_GT(StartPage(dc), 0);
  EXPECT_GT(EndPage(dc), 0);
  ASSERT_GT(StartPage(dc), 0);
  EXPECT_EQ(EndPage(dc), SP_APPABORT);
  EXPECT_LT(StartPage(dc), 0);
  EXPECT_EQ(PrintFolder::names(), "");
}

TEST_F(PaperTest, PagesMayDifferInSize) {
  DEVMODEA mode{};
  mode.dmSize = sizeof mode, mode.dmFields = DM_ORIENTATION | DM_PAPERSIZE;
  mode.dmOrientation = DMORIENT_LANDSCAPE, mode.dmPaperSize = DMPAPER_A5;
  ASSERT_GT(begin(dc, "sizes.pdf"), 0);
  ASSERT_GT(StartPage(dc), 0);
  ASSERT_GT(EndPage(dc), 0);
  ASSERT_EQ(ResetDCA(dc, &mode), dc);
  const LONG width = GetDeviceCaps(dc, HORZRES), height = GetDeviceCaps(dc, VERTRES);
  EXPECT_EQ(std::tuple(GetDeviceCaps(dc, HORZSIZE), GetDeviceCaps(dc, VERTSIZE)), std::tuple(210, 148));
  RECT all{};
  GetClipBox(dc, &all);
  EXPECT_EQ(all.right, width);
  ASSERT_GT(StartPage(dc), 0);
  PatBlt(dc, width - 100, height - 100, 100, 100, BLACKNESS);
  ASSERT_GT(EndDoc(dc), 0);
  const PageImage first = pageOf("sizes.pdf", 1, 96), second = pageOf("sizes.pdf", 2, 96);
  EXPECT_EQ(std::tuple(first.width, first.height, second.width), std::tuple(794, 1123, 794));
  EXPECT_NEAR(second.height, 560, 1);
  EXPECT_EQ(second.at(second.width - 4, second.height - 4), 0u);
}

TEST_F(PaperTest, ManyPagesAndDocumentsLeaveNothing) {
  const auto pages = [&](int count) {
    ASSERT_GT(begin(dc, "many.pdf"), 0);
    for (int i = 0; i < count; ++i) {
      ASSERT_GT(StartPage(dc), 0);
      for (int line = 0; line < 20; ++line) out(dc, 300, 200 + 100 * line, "some text of a page");
      ASSERT_GT(EndPage(dc), 0);
    }
    ASSERT_GT(EndDoc(dc), 0);
  };
  pages(500);
  const size_t resident = residentBytes();
  pages(5000);
  EXPECT_LE(residentBytes(), resident + (2u << 20));
  EXPECT_EQ(pagesIn("many.pdf"), 5000);
  for (int i = 0; i < 200; ++i) pages(1);
  EXPECT_LE(residentBytes(), resident + (2u << 20));
  EXPECT_EQ(PrintFolder::names(), "many.pdf ");
}
