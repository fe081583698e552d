// Text: widths, drawing, and layout in rectangles. Lengths are told in cells and lines of a font whose characters are
// one or two cells wide, so that they hold for whatever file stands for it.
#include "platform/canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>
#include <thread>

namespace {

#define NI "\x93\xFA"
#define HON "\x96\x7B"
#define GO "\x8C\xEA"

constexpr COLORREF kWhite = RGB(255, 255, 255), kBlue = RGB(0, 0, 255);
constexpr UINT kOne = DT_SINGLELINE | DT_MODIFYSTRING, kBreak = DT_WORDBREAK;

std::string box(LONG left, LONG top, LONG right, LONG bottom) {
  return std::to_string(left) + ' ' + std::to_string(top) + ' ' + std::to_string(right) + ' ' + std::to_string(bottom);
}

struct GdiText : testing::Test {
  const Canvas canvas = Canvas(240, 90);
  const HDC dc = canvas.dc;
  TEXTMETRICA metrics{};
  LONG cell = 0, line = 0;

  GdiText() { SetBkColor(dc, kBlue), choose(-20); }
  // bits: 1 for a line below, 2 for one through
  void choose(LONG height, LONG width = 0, LONG weight = 400, LONG escapement = 0, int bits = 0,
              const char *face = "\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E") {
    LOGFONTA font{height,           width, escapement, escapement, weight, 0, (bits & 1) != 0, (bits & 2) != 0,
                  SHIFTJIS_CHARSET, 0,     0,          0,          0,      ""};
    memcpy(font.lfFaceName, face, strlen(face));
    DeleteObject(SelectObject(dc, CreateFontIndirectA(&font)));
    EXPECT_TRUE(GetTextMetricsA(dc, &metrics));
    cell = metrics.tmAveCharWidth;
    line = metrics.tmHeight;
  }
  // This and the next two return the edges of all that is not white.
  std::string ink() {
    RECT edges{999, 999, 0, 0};
    for (LONG x = 0; x < 240; ++x)
      for (LONG y = 0; y < 90; ++y)
        if (GetPixel(dc, x, y) != kWhite)
          edges = {std::min(edges.left, x), std::min(edges.top, y), x + 1, std::max(edges.bottom, y + 1)};
    return box(edges.left, edges.top, edges.right, edges.bottom);
  }
  LONG width(const std::string &text) {
    SIZE size{};
    EXPECT_TRUE(GetTextExtentPoint32A(dc, text.data(), static_cast<int>(text.size()), &size)) << text;
    EXPECT_EQ(size.cy, line) << text;
    return size.cx;
  }
  std::string run(const std::string &text, int x = 80, int y = 40) {
    PatBlt(dc, 0, 0, 240, 90, WHITENESS);
    EXPECT_TRUE(TextOutA(dc, x, y, text.data(), static_cast<int>(text.size())));
    return ink();
  }
  std::string laid(const char *text, RECT rect, UINT format) {
    PatBlt(dc, 0, 0, 240, 90, WHITENESS);
    DrawTextA(dc, text, -1, &rect, format);
    return ink();
  }
};

TEST_F(GdiText, MeasuresCharactersByTheirCodes) {
  const std::pair<std::string, LONG> texts[] = {{"iW.", 3}, {NI "\xB1\xDF", 4}, {"a" NI "b", 4}, {"a\x93 b\x93", 6}};
  for (const auto &[text, cells] : texts) EXPECT_EQ(width(text), cells * cell) << text;
  EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, 20);
  choose(-12, 10, FW_BOLD);
  EXPECT_EQ(metrics.tmWeight, LONG{FW_BOLD});
  EXPECT_GT(cell, 9);
  SetMapMode(dc, MM_ANISOTROPIC);
  SetViewportExtEx(dc, 3, 2, nullptr);
  choose(-10);
  EXPECT_EQ(width("abcdef"), 20) << "60 pixels, 3 pixels a unit";
}

TEST_F(GdiText, PlacesAndDecoratesRuns) { // the background is exactly the run
  const LONG rows[][4] = {{TA_RIGHT, -4 * cell, 0, -4 * cell},
                          {TA_CENTER, -2 * cell, 0, 0},
                          {TA_LEFT, 0, 0, 4 * cell},
                          {TA_BOTTOM, 0, -line, 4 * cell},
                          {TA_BASELINE, 0, -metrics.tmAscent, 4 * cell}};
  for (const auto &[align, dx, dy, step] : rows) {
    POINT at{};
    SetTextAlign(dc, static_cast<UINT>(align) | TA_UPDATECP);
    MoveToEx(dc, 90, 50, nullptr);
    EXPECT_EQ(run(NI "ab"), box(90 + dx, 50 + dy, 90 + dx + 4 * cell, 50 + dy + line)) << align;
    MoveToEx(dc, 0, 0, &at);
    EXPECT_EQ(at.x, 90 + step) << align;
  }
  SetTextAlign(dc, TA_LEFT);
  PatBlt(dc, 0, 0, 240, 90, WHITENESS);
  IntersectClipRect(dc, 85, 43, 100, 50);
  EXPECT_EQ(run(NI "ab"), box(85, 43, 100, 50));
  SelectClipRgn(dc, nullptr);
  SetBkMode(dc, TRANSPARENT);
  choose(-20, 0, 400, 0, 1);
  EXPECT_EQ(run("   "), box(80, 42 + metrics.tmAscent, 80 + 3 * cell, 43 + metrics.tmAscent));
  choose(-20, 0, 400, 900, 2); // upwards; the line to the left of the base line
  const std::string upwards = run("   ");
  const LONG left = 71 + metrics.tmAscent; // some processors round the ends to a pixel higher
  EXPECT_TRUE(upwards == box(left, 40 - 3 * cell, left + 2, 40) || upwards == box(left, 39 - 3 * cell, left + 2, 39));
}

TEST_F(GdiText, LaysTextOutInLines) {
  const struct {
    const char *text;
    UINT format;
    LONG room, lines, cells; // room in cells; what the text takes
    const char *shortened;
  } rows[] = {
      {"abc\r\n&e\n", DT_NOPREFIX, 10, 2, 3, ""},
      {"abc def ghijkl", kBreak, 10, 2, 8, ""},
      {"abcdefghijklmnop", kBreak | DT_EDITCONTROL, 10, 2, 10, ""},
      {"a bcdefghijklmnop q", kBreak, 10, 3, 15, ""},
      {NI HON GO NI HON "\x81\x42" GO, kBreak, 10, 2, 8, ""},            // no full stop begins a line
      {NI HON GO NI "\x81\x75" HON GO "\x81\x76", kBreak, 10, 2, 8, ""}, // no bracket is left behind
      {"abcdefgh\ti", DT_EXPANDTABS | kBreak | DT_SINGLELINE, 5, 1, 17, ""},
      {"&a&&b&c&", 0, 10, 1, 5, ""},
      {NI HON GO NI HON GO, kOne | DT_END_ELLIPSIS, 10, 1, 9, NI HON GO "..."},
      {"abcdefghijk\nxyz", DT_MODIFYSTRING | DT_WORD_ELLIPSIS, 10, 2, 10, "abcdefg..."},
      {"dir/sub/file", kOne | DT_PATH_ELLIPSIS, 10, 1, 10, "di.../file"},
      {"abc", kOne | DT_PATH_ELLIPSIS, 1, 1, 6, "...abc"},
  };
  for (const auto &row : rows) {
    std::string text = row.text + std::string(1, '\0') + "~~~~";
    RECT rect{10, 10, 10 + row.room * cell, 20};
    EXPECT_EQ(DrawTextA(dc, text.data(), -1, &rect, row.format | DT_CALCRECT), row.lines * line) << row.text;
    EXPECT_EQ(box(10, 10, rect.right, rect.bottom), box(10, 10, 10 + row.cells * cell, 10 + row.lines * line))
        << row.text;
    EXPECT_STREQ(text.c_str(), *row.shortened ? row.shortened : row.text);
    EXPECT_EQ(text.back(), '~');
  }
}

TEST_F(GdiText, DrawsLinesWithinTheRectangle) {
  const RECT rect{20, 10, 20 + 9 * cell, 10 + 3 * line};
  const auto at = [&](LONG x, LONG y) { return box(20 + x, 10 + y, 20 + x + 2 * cell, 10 + y + line); };
  EXPECT_EQ(laid(NI, rect, DT_RIGHT | DT_BOTTOM), at(7 * cell, 0)); // only a single line goes down
  EXPECT_EQ(laid(NI, rect, DT_RIGHT | DT_BOTTOM | DT_SINGLELINE), at(7 * cell, 2 * line));
  EXPECT_EQ(laid(NI, rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE), at(7 * cell / 2, line));
  EXPECT_EQ(laid("\t" NI, rect, DT_EXPANDTABS | DT_TABSTOP | 4 << 8), at(4 * cell, 0));
  RECT narrow{20, 10, 20 + cell, 10 + line};
  EXPECT_EQ(laid(NI, narrow, 0), box(20, 10, 20 + cell, 10 + line));
  EXPECT_EQ(laid(NI, narrow, DT_NOCLIP), at(0, 0));
  EXPECT_EQ(DrawTextA(dc, "a\nb\nc", -1, &narrow, 0), 2 * line); // one that begins at the end is still counted
  EXPECT_EQ(DrawTextA(dc, "a\nb\nc", -1, &narrow, DT_EDITCONTROL), line);
  SetBkMode(dc, TRANSPARENT);
  const LONG below = 11 + metrics.tmAscent; // the mark of a prefixed blank
  EXPECT_EQ(laid(" & ", rect, 0), box(20 + cell, below, 20 + 2 * cell - 1, below + 1));
}

TEST_F(GdiText, HasJapaneseForEveryFaceAndTakesBadArguments) {
  for (const char *face : {"MS UI Gothic", "Arial", "Courier New", "Times New Roman", "No Such Face", ""}) {
    std::string dots[2];
    choose(-24, 0, 400, 0, 0, face);
    for (const bool second : {false, true}) {
      run(second ? NI : HON, 0, 0);
      for (int at = 0; at < 1600; ++at) dots[second] += GetPixel(dc, at % 40, at / 40) == kBlue ? '.' : '#';
    }
    EXPECT_NE(dots[0], dots[1]) << face; // not the mark of missing ones
  }
  RECT rect{1, 2, 3, 4};
  EXPECT_FALSE(TextOutA(nullptr, 0, 0, "a", 1));
  EXPECT_FALSE(TextOutA(dc, 0, 0, "a", -1));
  EXPECT_FALSE(CreateFontIndirectA(nullptr));
  EXPECT_EQ(DrawTextA(dc, "abc", 0, &rect, DT_CALCRECT), 0);
  EXPECT_EQ(rect.right, 3) << "as it was";
  EXPECT_EQ(DrawTextA(dc, "", -1, &rect, DT_CALCRECT), line);
  EXPECT_EQ(box(rect.left, rect.top, rect.right, rect.bottom), "1 2 1 2");
  EXPECT_EQ(run(std::string(9999, '\x93'), -100000, INT_MAX), box(999, 999, 0, 0));
  std::thread([&] { EXPECT_NE(run(NI), box(999, 999, 0, 0)); }).join();
}

// A cell height means the largest characters whose cell isn't higher, the cell rounded as a whole.
TEST_F(GdiText, CellHeightsAreNotExceeded) {
  constexpr LONG kEm = 2048; // the cell of so big characters tells the proportions
  const auto sizes = [&](LONG height) {
    choose(height);
    return box(metrics.tmAscent, metrics.tmDescent, metrics.tmInternalLeading, metrics.tmAveCharWidth);
  };
  choose(-kEm);
  const LONG cell = line;
  for (LONG height = 1; height <= 100; ++height) {
    LONG em = 100;
    while (em > 1 && (em * cell * 2 + kEm) / (2 * kEm) > height) --em;
    EXPECT_EQ(sizes(height), sizes(-em)) << height;
  }
}

TEST_F(GdiText, TextBetweenTabsIsBrokenAndShortenedForItself) {
  constexpr UINT kTabs = DT_EXPANDTABS, kWords = DT_WORD_ELLIPSIS | DT_MODIFYSTRING;
  const struct {
    const char *text;
    UINT format;
    LONG lines, cells; // in a room of 10 cells
    const char *shortened;
  } rows[] = {
      {"a bcd\te f", kBreak | kTabs, 2, 10, ""},      // broken behind the tab
      {"abcdefghijkl\tm", kBreak | kTabs, 2, 12, ""}, // the tab begins a line
      {"a\t\tb c", kBreak | kTabs, 1, 19, ""},        // what begins beyond the room stays whole
      {"abcdefghijkl\nm", kBreak, 3, 12, ""},         // an empty line follows the word without room
      {"a bcdefghijkl m", kBreak | kWords, 3, 10, "bcdefgh..."},
      {"a bcdefghijkl m", kBreak | kWords | kTabs, 2, 10, "bcdefgh..."}, // dots end the paragraph
      {"abcdefghijkl m", kBreak | kWords | DT_EDITCONTROL, 2, 10, "abcdefg..."},
      {"a\tbcdefg", kTabs | DT_WORD_ELLIPSIS, 1, 11, ""},
      {"abcdefghijkl\tm", kTabs | DT_END_ELLIPSIS, 1, 17, ""}, // only the last piece
  };
  for (const auto &row : rows) {
    std::string text = row.text + std::string(8, '\0');
    RECT rect{0, 0, 10 * cell, 200};
    EXPECT_EQ(DrawTextA(dc, text.data(), -1, &rect, row.format | DT_CALCRECT), row.lines * line) << row.text;
    EXPECT_EQ(rect.right, row.cells * cell) << row.text << ' ' << row.format;
    EXPECT_STREQ(text.c_str(), *row.shortened ? row.shortened : row.text);
  }
  const RECT rect{20, 10, 20 + 2 * cell + 1, 10 + 4 * line}; // where lines lie
  EXPECT_EQ(laid("ab  c", rect, DT_RIGHT | kBreak | DT_EDITCONTROL), box(21, 10, 21 + 2 * cell, 10 + 3 * line));
  const LONG middle = (41 - cell) / 2, down = 10 + 2 * line - line / 2; // a half is to the left
  EXPECT_EQ(laid("abc", rect, DT_CENTER | DT_NOCLIP), box(middle, 10, middle + 3 * cell, 10 + line));
  EXPECT_EQ(laid("a", rect, DT_SINGLELINE | DT_VCENTER | DT_BOTTOM), box(20, down, 20 + cell, down + line));
}

} // namespace
