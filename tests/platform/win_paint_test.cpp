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
      EXPECT_TRUE(BeginPaint(window, &paint) && !GetUpdateRect(window, nullptr, FALSE) && EndPaint(window, &paint));
      seen += rectText(paint.rcPaint) + (paint.fErase ? " erase; " : "; ");
    }
    return repeats == 0 || repeats-- > 0;
  };
  spoil(a, 1, 2, 3, 4, TRUE), pump(), spoil(a, 5, 6, 7, 8), pump();
  EXPECT_EQ(seen, "0,0,300,200 erase; 0,0,0,0; 5,6,7,8; 0,0,0,0; ");
}
