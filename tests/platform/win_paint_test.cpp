#include "support/desktop.h"

using WinPaint = DesktopTest;

constexpr DWORD kPopup = WS_POPUP | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

static void spoil(HWND window, int left, int top, int right, int bottom, BOOL erase = FALSE) {
  const RECT rect{left, top, right, bottom};
  InvalidateRect(window, &rect, erase);
}

TEST_F(WinPaint, SpoiltPartsAreJoinedAndErasedOnce) {
  const HWND a = make("A", kPopup, 100, 100, 300, 200);
  const RECT part{0, 0, 100, 50};
  play("PE",
       {{[&] { spoil(a, 10, 10, 20, 20), spoil(a, 30, 30, 40, 40); }, "A< PAINT 10,10,40,40"},
        {[&] { spoil(a, 10, 10, 20, 20, TRUE), spoil(a, 30, 30, 40, 40); }, "A< PAINT 10,10,40,40\nA: ERASE"},
        {[&] { spoil(a, -50, -50, 5, 5), spoil(a, 500, 500, 600, 600); }, "A< PAINT 0,0,5,5"},
        {[&] { spoil(a, 0, 0, 100, 100), ValidateRect(a, &part); }, "A< PAINT 0,50,100,100"},
        {[&] { InvalidateRect(a, nullptr, TRUE), ValidateRect(a, nullptr), spoil(a, 1, 1, 5, 5); }, "A< PAINT 1,1,5,5"},
        {[&] { spoil(a, 1, 1, 5, 5, TRUE), GetUpdateRect(a, nullptr, TRUE); }, "A: ERASE\nA< PAINT 1,1,5,5"},
        {[&] { EnableWindow(a, FALSE), spoil(a, 1, 1, 5, 5), UpdateWindow(a); }, "A: PAINT 1,1,5,5"},
        {[&] { ShowWindow(a, SW_HIDE), spoil(a, 1, 1, 5, 5), pump(), ShowWindow(a, SW_SHOWNA); },
         "A: ERASE\nA< PAINT 0,0,300,200"}});
}

TEST_F(WinPaint, AChangeSpoilsWhatItUncoversInOrder) {
  for (const DWORD clip : {DWORD{0}, DWORD{WS_CLIPCHILDREN}}) {
    const HWND a = make("A", kPopup | clip, 100, 100, 300, 200), c = make("C", kChild, 20, 20, 100, 80, a);
    const HWND d = make("D", kChild, 150, 20, 80, 80, a), g = make("G", kChild, 10, 10, 30, 30, c);
    const std::string both = "C< PAINT 0,0,100,80\nG< PAINT 0,0,30,30";
    play("P", {{[&] { InvalidateRect(a, nullptr, FALSE); },
                "A< PAINT 0,0,300,200" + (clip ? "" : "\n" + both + "\nD< PAINT 0,0,80,80")},
               {[&] { InvalidateRect(c, nullptr, FALSE); }, both},
               {[&] { spoil(g, 0, 0, 5, 5), spoil(d, 0, 0, 5, 5), spoil(c, 0, 0, 5, 5), spoil(a, 0, 0, 5, 5); },
                "A< PAINT 0,0,5,5\nC< PAINT 0,0,5,5\nG< PAINT 0,0,5,5\nD< PAINT 0,0,5,5"},
               {[&] { RedrawWindow(a, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN), UpdateWindow(c); },
                "C: PAINT 0,0,100,80\nG: PAINT 0,0,30,30\nA< PAINT 0,0,300,200\nD< PAINT 0,0,80,80"},
               {[&] { ShowWindow(c, SW_HIDE), spoil(c, 0, 0, 9, 9), spoil(g, 0, 0, 9, 9); }, "A< PAINT 20,20,120,100"},
               {[&] { ShowWindow(c, SW_SHOW); }, both},
               {[&] { MoveWindow(c, 30, 30, 100, 80, TRUE); }, "A< PAINT 20,20,120,100"},
               {[&] { SetWindowPos(c, nullptr, 20, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOCOPYBITS); },
                "A< PAINT 30,30,130,110\n" + both},
               {[&] { MoveWindow(c, 20, 20, 120, 100, TRUE); }, "C< PAINT 0,0,120,100"},
               {[&] { MoveWindow(c, 20, 20, 100, 80, TRUE); }, "A< PAINT 20,20,140,120"},
               {[&] { MoveWindow(c, 25, 25, 90, 70, FALSE), MoveWindow(a, 0, 0, 300, 200, TRUE); }, ""},
               {[&] { MoveWindow(a, 0, 0, 310, 200, TRUE); }, "A< PAINT 300,0,310,200"},
               {[&] { DestroyWindow(d); }, "A< PAINT 150,20,230,100"}});
    DestroyWindow(a);
  }
}

TEST_F(WinPaint, StylesDecideWhatIsSpoilt) {
  const HWND a = make("A", kPopup, 100, 100, 300, 200, nullptr, CS_HREDRAW | CS_VREDRAW);
  const HWND x = make("X", kChild | WS_CLIPSIBLINGS, 10, 10, 60, 60, a);
  const HWND y = make("Y", kChild | WS_CLIPSIBLINGS, 40, 40, 60, 60, a); // below X
  play("P",
       {{[&] { SetWindowPos(y, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE); }, "Y< PAINT 0,0,30,30"},
        {[&] { MoveWindow(y, 150, 40, 60, 60, TRUE); }, "A< PAINT 40,40,100,100\nX< PAINT 30,30,60,60"},
        {[&] { MoveWindow(y, 40, 40, 60, 60, TRUE); }, "A< PAINT 150,40,210,100"},
        {[&] { DestroyWindow(y); }, "A< PAINT 40,40,100,100\nX< PAINT 30,30,60,60"},
        {[&] { MoveWindow(a, 0, 0, 310, 200, TRUE); }, "A< PAINT 0,0,310,200\nX< PAINT 0,0,60,60"},
        {[&] { MoveWindow(a, 9, 9, 310, 200, TRUE), MoveWindow(x, 10, 10, 50, 60, TRUE); }, "A< PAINT 60,10,70,70"}});
}

TEST_F(WinPaint, ThePaintRecordTellsWhatIsLeftToDo) {
  const HWND a = make("A", kPopup, 100, 100, 300, 200);
  std::string seen;
  int repeats = 3; // that do nothing about the update region, so that the message comes again
  answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT &result) {
    result = 0;
    if (message != WM_PAINT) return message == WM_ERASEBKGND; // which leaves the erasing to the painter
    for (int i = 0; !repeats && i < 2; ++i) {                 // the second finds nothing
      PAINTSTRUCT paint{};
      EXPECT_NE(BeginPaint(window, &paint), nullptr);
      EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
      EXPECT_TRUE(EndPaint(window, &paint));
      seen += rectText(paint.rcPaint) + (paint.fErase ? " erase; " : "; ");
    }
    return repeats == 0 || repeats-- > 0;
  };
  spoil(a, 1, 2, 3, 4, TRUE), pump(), spoil(a, 5, 6, 7, 8), pump();
  EXPECT_EQ(seen, "0,0,300,200 erase; 0,0,0,0; 5,6,7,8; 0,0,0,0; ");
}

// Paints in a procedure, and tells of each window which part was left to do and which part it may draw on.
class WinClip : public DesktopTest {
 protected:
  std::string seen;

  void SetUp() override {
    answer = [this](HWND window, UINT message, WPARAM, LPARAM, LRESULT &) {
      if (message != WM_PAINT) return false;
      PAINTSTRUCT paint{};
      RECT clip{}, update{};
      GetUpdateRect(window, &update, FALSE);
      GetClipBox(BeginPaint(window, &paint), &clip);
      seen += names[window] + ' ' + rectText(update) + " in " + rectText(paint.rcPaint) + '\n';
      EXPECT_EQ(rectText(clip), rectText(paint.rcPaint)) << names[window];
      return EndPaint(window, &paint) != FALSE;
    };
  }
  std::string painted(const std::function<void()> &act) {
    pump(50), seen.clear(), act(), pump(50);
    return seen;
  }
};

TEST_F(WinClip, WhatNobodySeesIsNotPainted) {
  const HWND a = make("A", kPopup, 100, 100, 300, 200), beside = make("O", kChild, 400, 20, 100, 80, a);
  const HWND above = make("N", kChild, -300, -300, 100, 80, a), half = make("H", kChild, 250, 150, 100, 100, a);
  const HWND clipped = make("I", kChild, 60, 60, 30, 30, half), empty = make("E", kChild, 0, 0, 0, 0, a);
  EXPECT_EQ(painted([&] { RedrawWindow(a, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN); }),
            "A 0,0,300,200 in 0,0,300,200\nH 0,0,50,50 in 0,0,50,50\n");
  EXPECT_EQ(painted([&] { InvalidateRect(half, nullptr, FALSE); }), "H 0,0,50,50 in 0,0,50,50\n");
  for (const HWND unseen : {beside, above, clipped, empty})
    EXPECT_EQ(painted([&] { InvalidateRect(unseen, nullptr, FALSE), UpdateWindow(unseen); }), "") << names[unseen];
  const HWND w = make("W", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 400, 300, 200),
             k = make("K", kChild, 20, 20, 100, 80, w);
  EXPECT_EQ(painted([&] { ShowWindow(w, SW_MINIMIZE); }), "");
  EXPECT_EQ(painted([&] { InvalidateRect(w, nullptr, TRUE), InvalidateRect(k, nullptr, TRUE), UpdateWindow(w); }), "");
  EXPECT_FALSE(GetUpdateRect(w, nullptr, FALSE));
  EXPECT_FALSE(GetUpdateRect(k, nullptr, FALSE));
  EXPECT_EQ(painted([&] { ShowWindow(w, SW_RESTORE); }), "W 0,0,292,173 in 0,0,292,173\nK 0,0,100,80 in 0,0,100,80\n");
}

TEST_F(WinClip, OnlyWhatIsSeenIsPainted) {
  const HWND a = make("A", kPopup, 100, 100, 300, 200);
  make("C", kChild, 20, 20, 100, 80, a);
  const HWND t = make("T", kChild | WS_CLIPSIBLINGS, 60, 60, 60, 60, a); // below C
  EXPECT_EQ(painted([&] { InvalidateRect(t, nullptr, FALSE); }), "T 0,0,60,60 in 0,40,60,60\n");
  DestroyWindow(t);
  const std::string all = "A 0,0,300,200 in 0,0,300,200\nC 0,0,100,80 in 0,0,100,80\n";
  const HWND cover = make("V", kPopup, 150, 50, 100, 400); // other top-level windows have pixels of their own
  EXPECT_EQ(painted([&] { InvalidateRect(a, nullptr, FALSE); }), all);
  DestroyWindow(cover);
  // Wine cuts at places that 32 divides
  EXPECT_EQ(painted([&] { MoveWindow(a, -50, -40, 300, 200, TRUE), InvalidateRect(a, nullptr, FALSE); }),
            onWine() ? "A 0,0,300,200 in 32,32,300,200\nC 0,0,100,80 in 12,12,100,80\n"
                     : "A 0,0,300,200 in 50,40,300,200\nC 0,0,100,80 in 30,20,100,80\n");
  EXPECT_EQ(painted([&] { MoveWindow(a, 1200, 950, 300, 200, TRUE), InvalidateRect(a, nullptr, FALSE); }),
            onWine() ? "A 0,0,300,200 in 0,0,96,96\nC 0,0,100,80 in 0,0,76,76\n"
                     : "A 0,0,300,200 in 0,0,80,74\nC 0,0,100,80 in 0,0,60,54\n");
  EXPECT_EQ(painted([&] { MoveWindow(a, 100, 100, 300, 200, TRUE), InvalidateRect(a, nullptr, FALSE); }), all);
  SetWindowLongA(a, GWL_STYLE, static_cast<LONG>(kPopup | WS_CLIPCHILDREN));
  EXPECT_EQ(painted([&] { spoil(a, 10, 30, 50, 50); }), "A 10,30,50,50 in 10,30,20,50\n");
}

TEST_F(WinPaint, AContextOfAWholeWindowBeginsAtItsFrame) {
  const HWND a = make("A", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 300, 200);
  const HWND c = make("C", kChild | WS_BORDER, 20, 20, 100, 80, a);
  const HBRUSH red = CreateSolidBrush(RGB(255, 0, 0)), blue = CreateSolidBrush(RGB(0, 0, 255));
  pump(50);
  const auto fill = [](HDC dc, RECT rect, HBRUSH brush) { FillRect(dc, &rect, brush); };
  const auto box = [](HDC dc) {
    RECT rect{};
    GetClipBox(dc, &rect);
    return rectText(rect);
  };
  HDC dc = GetDC(a);
  EXPECT_EQ(box(dc), "0,0,292,173");
  fill(dc, {0, 0, 292, 173}, red), ReleaseDC(a, dc), dc = GetDCEx(a, nullptr, DCX_WINDOW);
  EXPECT_EQ(box(dc), "0,0,300,200");
  EXPECT_EQ(GetPixel(dc, 4, 23), RGB(255, 0, 0)); // the client area's first
  EXPECT_EQ(GetPixel(dc, 300, 200), CLR_INVALID);
  fill(dc, {4, 23, 14, 33}, blue), fill(dc, {50, 60, 52, 62}, blue), fill(dc, {0, 0, 300, 4}, blue);
  ReleaseDC(a, dc), dc = GetDC(a);
  std::string row; // from above and left of the first mark, downwards
  for (int i = 0; i < 4; ++i) row += GetPixel(dc, 45 + i, 36 + i) == RGB(0, 0, 255) ? 'b' : 'r';
  EXPECT_EQ(row, "rbbr");
  EXPECT_EQ(GetPixel(dc, 9, 9), RGB(0, 0, 255));
  EXPECT_EQ(GetPixel(dc, 20, 0), RGB(255, 0, 0)) << "the frame's is the frame's";
  ReleaseDC(a, dc), dc = GetDC(c);
  EXPECT_EQ(box(dc), "0,0,98,78");
  ReleaseDC(c, dc), dc = GetDCEx(c, nullptr, DCX_WINDOW);
  EXPECT_EQ(box(dc), "0,0,100,80");
  fill(dc, {1, 1, 2, 2}, blue), ReleaseDC(c, dc), dc = GetDC(c);
  EXPECT_EQ(GetPixel(dc, 0, 0), RGB(0, 0, 255));
  ReleaseDC(c, dc), DeleteObject(red), DeleteObject(blue);
}

// A window's picture has its children in it, which are kept out of its drawing.
TEST_F(WinPaint, ChildrenAreReadButNotDrawnOver) {
  const HWND a = make("A", kPopup | WS_CLIPCHILDREN, 100, 100, 200, 100), c = make("C", kChild, 100, 0, 100, 100, a);
  const HBRUSH red = CreateSolidBrush(RGB(255, 0, 0)), blue = CreateSolidBrush(RGB(0, 0, 255));
  pump(50);
  const RECT all = {0, 0, 200, 100};
  const HDC child = GetDC(c), shown = GetDC(a), memory = CreateCompatibleDC(shown);
  const HBITMAP picture = CreateCompatibleBitmap(shown, 200, 100);
  const HGDIOBJ before = SelectObject(memory, picture);
  FillRect(child, &all, blue);
  FillRect(shown, &all, red);
  EXPECT_TRUE(BitBlt(memory, 0, 0, 200, 100, shown, 0, 0, SRCCOPY));
  EXPECT_EQ(GetPixel(memory, 50, 50), RGB(255, 0, 0));
  EXPECT_EQ(GetPixel(memory, 150, 50), RGB(0, 0, 255));
  EXPECT_EQ(GetPixel(shown, 150, 50), RGB(0, 0, 255));
  SelectObject(memory, before);
  DeleteDC(memory), ReleaseDC(a, shown), ReleaseDC(c, child);
  for (const HGDIOBJ object : {HGDIOBJ(picture), HGDIOBJ(red), HGDIOBJ(blue)}) DeleteObject(object);
}
