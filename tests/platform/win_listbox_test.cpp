#include "support/aside.h"
#include "support/desktop.h"
#include "support/handles.h"
#include "support/input.h"

#include <cstring>

constexpr DWORD kUsual = LBS_NOTIFY | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT | WS_VSCROLL;
constexpr WPARAM kId = 77;

// A list box with room for four items. What its parent hears is written down, but for drawing.
class WinListBox : public DesktopTest {
 protected:
  const HWND parent = make("P", WS_POPUP | WS_VISIBLE, 100, 100, 400, 400);
  HWND list = nullptr;
  std::string heard, drawn;
  LRESULT toKey = -1;

  void SetUp() override {
    SetForegroundWindow(parent), pump(50);
    answer = [this](HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT &result) {
      return hear(message, wParam, lParam, result);
    };
  }
  bool hear(UINT message, WPARAM wParam, LPARAM lParam, LRESULT &result) {
    const auto say = [this](const std::string &what, LPARAM number) { heard += what + std::to_string(number) + ' '; };
    const auto *const gone = reinterpret_cast<const DELETEITEMSTRUCT *>(lParam);
    const auto *const item = reinterpret_cast<const DRAWITEMSTRUCT *>(lParam);
    result = TRUE;
    switch (message) {
    case WM_COMMAND:
      EXPECT_EQ(LOWORD(wParam), kId);
      EXPECT_EQ(reinterpret_cast<HWND>(lParam), list);
      return say("note ", static_cast<short>(HIWORD(wParam))), true;
    case WM_VKEYTOITEM: say("key ", LOWORD(wParam)), say("on ", HIWORD(wParam)), result = toKey; return true;
    case WM_DELETEITEM:
      EXPECT_EQ(gone->hwndItem, list);
      return say("delete ", gone->itemID), say("with ", static_cast<LPARAM>(gone->itemData)), true;
    case WM_DRAWITEM:
      drawn += std::to_string(item->itemID) + ':' + std::to_string(item->itemAction) + ':' +
               std::to_string(item->itemState) + ' ' + rectText(item->rcItem) + ' ';
      return true;
    default: return false;
    }
  }
  void open(DWORD style = kUsual, int width = 100) {
    if (list) DestroyWindow(list);
    list = CreateWindowExA(0, "LISTBOX", "", WS_CHILD | WS_VISIBLE | style, 10, 10, width, 80, parent,
                           reinterpret_cast<HMENU>(kId), nullptr, nullptr);
    ASSERT_NE(list, nullptr);
    ask(LB_SETITEMHEIGHT, 0, 18);
    heard.clear(), drawn.clear();
  }
  LRESULT ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageA(list, message, wParam, lParam);
  }
  LRESULT ask(UINT message, int index, const char *text) const {
    return ask(message, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
  }
  void fill(int count) const {
    for (int i = 0; i < count; ++i) ask(LB_ADDSTRING, 0, ("line " + std::to_string(i)).c_str());
  }
  std::string text(int index) const {
    char room[64] = "-";
    return ask(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(room)) < 0 ? "none" : room;
  }
  std::string all() const {
    std::string texts;
    for (int i = 0; i < ask(LB_GETCOUNT); ++i) texts += (i ? " " : "") + text(i);
    return texts;
  }
  // "cur 1 top 0 caret 1", and what is selected of several.
  std::string state() const {
    std::string now = "cur " + std::to_string(ask(LB_GETCURSEL)) + " top " + std::to_string(ask(LB_GETTOPINDEX)) +
                      " caret " + std::to_string(ask(LB_GETCARETINDEX));
    int items[16];
    const LRESULT count = ask(LB_GETSELITEMS, std::size(items), reinterpret_cast<LPARAM>(items));
    for (int i = 0; i < count; ++i) now += (i ? "," : " of ") + std::to_string(items[i]);
    EXPECT_EQ(count, ask(LB_GETSELCOUNT));
    return now;
  }
  // "hidden" or range, page and position.
  std::string bar(int which) const {
    SCROLLINFO info = {sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(list, which, &info);
    const DWORD style = static_cast<DWORD>(GetWindowLongA(list, GWL_STYLE));
    if (!(style & (which == SB_VERT ? WS_VSCROLL : WS_HSCROLL))) return "hidden";
    return std::to_string(info.nMin) + ".." + std::to_string(info.nMax) + " page " + std::to_string(info.nPage) +
           " at " + std::to_string(info.nPos);
  }
  std::string after(const std::function<void()> &act) {
    heard.clear();
    act(), pump(20);
    return std::exchange(heard, {}) + state();
  }
  std::string holding(Key key, const std::function<void()> &act) {
    return after([&] {
      if (key.first) press(key);
      act();
      if (key.first) release(key);
    });
  }
  std::string tapped(BYTE key, Key with = {}) {
    return holding(with, [=] { tap({key, 0}); });
  }
  std::string clicked(int x, int y, Key with = {}) {
    Sleep(GetDoubleClickTime() + 20);
    return holding(with, [&] { move(list, x, y), click(); });
  }
};

TEST_F(WinListBox, LinesComeGoAndAreFound) {
  open();
  struct Step {
    UINT message;
    int index;
    const char *text;
    LRESULT result;
    const char *expected; // lines and current line then
  };
  const Step steps[] = {{LB_ADDSTRING, 0, "two", 0, "two cur -1"},
                        {LB_INSERTSTRING, 0, "One", 0, "One two cur -1"},
                        {LB_INSERTSTRING, -1, "Three", 2, "One two Three cur -1"},
                        {LB_INSERTSTRING, 99, "bad", LB_ERR, "One two Three cur -1"},
                        {LB_FINDSTRING, -1, "t", 1, "One two Three cur -1"},
                        {LB_FINDSTRING, 1, "T", 2, "One two Three cur -1"},
                        {LB_FINDSTRINGEXACT, -1, "thre", LB_ERR, "One two Three cur -1"},
                        {LB_SELECTSTRING, -1, "o", 0, "One two Three cur 0"},
                        {LB_DELETESTRING, 0, nullptr, 2, "two Three cur -1"}, // the selected one
                        {LB_SETCURSEL, 1, nullptr, 1, "two Three cur 1"},
                        {LB_INSERTSTRING, 0, "front", 0, "front two Three cur 2"},
                        {LB_DELETESTRING, 0, nullptr, 2, "two Three cur 1"},
                        {LB_DELETESTRING, 40, nullptr, LB_ERR, "two Three cur 1"},
                        {LB_SETCURSEL, -1, nullptr, LB_ERR, "two Three cur -1"}};
  for (size_t i = 0; i < std::size(steps); ++i) {
    EXPECT_EQ(ask(steps[i].message, steps[i].index, steps[i].text), steps[i].result) << "step " << i;
    EXPECT_EQ(all() + " cur " + std::to_string(ask(LB_GETCURSEL)), steps[i].expected) << "step " << i;
  }
  EXPECT_EQ(ask(LB_GETTEXTLEN, 1), 5);
  EXPECT_EQ(ask(LB_GETTEXTLEN, 50), LB_ERR);
  EXPECT_EQ(text(6), "none");
  EXPECT_EQ(ask(LB_SETITEMDATA, 1, 555), TRUE);
  EXPECT_EQ(ask(LB_SETITEMDATA, 70, 5), LB_ERR);
  ask(LB_DELETESTRING, 0);
  EXPECT_EQ(ask(LB_GETITEMDATA, 0), 555) << "it goes with its line";
  EXPECT_EQ(heard, "");
  ask(LB_RESETCONTENT);
  EXPECT_EQ(heard, "delete 0 with 555 ") << "only of lines with a word";
  EXPECT_EQ(ask(LB_GETCOUNT), 0);
}

TEST_F(WinListBox, SortedLinesStandInTheOrderOfWords) {
  open(LBS_SORT);
  for (const char *line : {"pear", "Apple", "banana", "apple", "a_b", "a b", "ab", "a1"}) ask(LB_ADDSTRING, 0, line);
  EXPECT_EQ(all(), "a b a_b a1 ab apple Apple banana pear");
}

TEST_F(WinListBox, SeveralAreSelected) {
  open(kUsual | LBS_MULTIPLESEL), fill(10);
  struct Step {
    UINT message;
    int wParam;
    LPARAM lParam;
    const char *expected;
  };
  const Step steps[] = {{LB_SETSEL, TRUE, 3, "cur 3 top 0 caret 3 of 3"},
                        {LB_SETSEL, TRUE, 5, "cur 5 top 2 caret 5 of 3,5"},
                        {LB_SETSEL, TRUE, 50, "cur 5 top 2 caret 5 of 3,5"},
                        {LB_SETCURSEL, 3, 0, "cur 5 top 2 caret 5 of 3,5"},
                        {LB_SELITEMRANGE, TRUE, MAKELPARAM(6, 8), "cur 5 top 2 caret 5 of 3,5,6,7,8"},
                        {LB_SELITEMRANGEEX, 7, 30, "cur 5 top 2 caret 5 of 3,5,6,7,8,9"},
                        {LB_SETSEL, FALSE, -1, "cur 5 top 2 caret 5"},
                        {LB_SETSEL, TRUE, -1, "cur 5 top 2 caret 5 of 0,1,2,3,4,5,6,7,8,9"}};
  for (size_t i = 0; i < std::size(steps); ++i) {
    ask(steps[i].message, static_cast<WPARAM>(steps[i].wParam), steps[i].lParam);
    EXPECT_EQ(state(), steps[i].expected) << "step " << i;
  }
  ask(LB_SETSEL, FALSE, -1), ask(LB_SETSEL, TRUE, 3), ask(LB_DELETESTRING, 2);
  EXPECT_EQ(ask(LB_GETSEL, 2), 1) << "the selection goes with its items";
  EXPECT_EQ(heard, "") << "what the program does it isn't told";
}

TEST_F(WinListBox, BarsFollowWhatIsThere) {
  open(kUsual | WS_HSCROLL);
  EXPECT_EQ(bar(SB_VERT) + ", " + bar(SB_HORZ), "hidden, hidden");
  fill(4);
  EXPECT_EQ(bar(SB_VERT), "hidden");
  fill(26);
  EXPECT_EQ(bar(SB_VERT), "0..29 page 4 at 0");
  constexpr WPARAM kHalf = MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA / 2)); // parts of a notch add up
  const struct {
    UINT message;
    WPARAM wParam;
    LRESULT top;
  } steps[] = {
      {LB_SETTOPINDEX, 10, 10},     {LB_SETTOPINDEX, 29, 26},    {LB_SETCURSEL, 20, 20},
      {LB_SETCURSEL, 28, 25},       {LB_SETCURSEL, 26, 25},      {WM_VSCROLL, SB_PAGEUP, 21},
      {WM_VSCROLL, SB_LINEUP, 20},  {WM_VSCROLL, SB_TOP, 0},     {WM_VSCROLL, SB_LINEDOWN, 1},
      {WM_VSCROLL, SB_PAGEDOWN, 5}, {WM_VSCROLL, SB_BOTTOM, 26}, {WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 23}};
  for (size_t i = 0; i < std::size(steps); ++i) {
    ask(steps[i].message, steps[i].wParam);
    EXPECT_EQ(ask(LB_GETTOPINDEX), steps[i].top) << "step " << i;
  }
  for (int times = 0; times < 2; ++times) ask(WM_MOUSEWHEEL, kHalf);
  EXPECT_EQ(bar(SB_VERT), "0..29 page 4 at 26");
  RECT row{};
  EXPECT_EQ(ask(LB_GETITEMRECT, 27, reinterpret_cast<LPARAM>(&row)), 1);
  EXPECT_EQ(row.bottom - row.top, 18);
  EXPECT_EQ(ask(LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row)), 0) << "out of sight";
  ask(LB_SETTOPINDEX, 3);
  EXPECT_EQ(ask(LB_ITEMFROMPOINT, 0, MAKELPARAM(5, 20)), 4);
  EXPECT_EQ(ask(LB_SETITEMHEIGHT, 0, 10), LB_OKAY);
  EXPECT_EQ(bar(SB_VERT), "0..29 page 8 at 3");
  EXPECT_EQ(ask(LB_SETITEMHEIGHT, 0, 300), LB_ERR);
  EXPECT_EQ(ask(LB_GETITEMHEIGHT), 10);
  ask(LB_RESETCONTENT);
  EXPECT_EQ(bar(SB_VERT), "hidden");

  ask(LB_SETHORIZONTALEXTENT, 500);
  EXPECT_EQ(bar(SB_HORZ), "0..499 page 100 at 0");
  ask(WM_HSCROLL, SB_PAGERIGHT), ask(WM_HSCROLL, SB_LINERIGHT);
  EXPECT_EQ(bar(SB_HORZ), "0..499 page 100 at 101");
  ask(WM_HSCROLL, SB_RIGHT);
  EXPECT_EQ(bar(SB_HORZ), "0..499 page 100 at 400");
  ask(LB_SETHORIZONTALEXTENT, 10);
  EXPECT_EQ(bar(SB_HORZ), "hidden");
  open(kUsual | WS_HSCROLL | LBS_DISABLENOSCROLL), fill(1);
  EXPECT_NE(bar(SB_VERT), "hidden");
  EXPECT_NE(bar(SB_HORZ), "hidden");
  open(WS_BORDER), SetWindowPos(list, nullptr, 0, 0, 100, 85, SWP_NOMOVE | SWP_NOZORDER);
  GetWindowRect(list, &row);
  EXPECT_EQ(row.bottom - row.top, 2 + 4 * 18) << "it is cut to whole lines";
}

TEST_F(WinListBox, TheOwnerDraws) {
  open(LBS_OWNERDRAWFIXED | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT);
  for (const LPARAM number : {42, 43}) ask(LB_ADDSTRING, 0, number);
  UpdateWindow(list);
  EXPECT_EQ(std::exchange(drawn, {}), "0:1:0 0,0,100,18 1:1:0 0,18,100,36 ");
  ask(LB_SETCURSEL, 1), UpdateWindow(list);
  EXPECT_EQ(std::exchange(drawn, {}), "1:2:1 0,18,100,36 ");
  SetFocus(list), UpdateWindow(list);
  EXPECT_EQ(std::exchange(drawn, {}), "1:4:17 0,18,100,36 ");
  EXPECT_EQ(std::exchange(heard, {}), "note 4 ");
  EXPECT_EQ(ask(LB_GETITEMDATA, 0), 42);
  ask(LB_DELETESTRING, 0);
  EXPECT_EQ(std::exchange(heard, {}), "delete 0 with 42 ");
}

TEST_F(WinListBox, KeysGoThroughTheLines) {
  open(), fill(30);
  EXPECT_EQ(after([&] { SetFocus(list); }), "note 4 cur -1 top 0 caret 0");
  const struct {
    BYTE key;
    const char *expected;
  } kKeys[] = {{VK_DOWN, "note 1 cur 0 top 0 caret 0"},  {VK_RIGHT, "note 1 cur 1 top 0 caret 1"},
               {VK_NEXT, "note 1 cur 4 top 1 caret 4"},  {VK_NEXT, "note 1 cur 7 top 4 caret 7"},
               {VK_PRIOR, "note 1 cur 4 top 4 caret 4"}, {VK_END, "note 1 cur 29 top 26 caret 29"},
               {VK_HOME, "note 1 cur 0 top 0 caret 0"},  {VK_LEFT, "note 1 cur 0 top 0 caret 0"},
               {'L', "note 1 cur 1 top 0 caret 1"}};
  for (const auto &[key, expected] : kKeys) EXPECT_EQ(tapped(key), expected) << static_cast<int>(key);
  EXPECT_EQ(after([&] { SetFocus(parent); }), "note 5 cur 1 top 0 caret 1");

  open(kUsual | LBS_WANTKEYBOARDINPUT);
  fill(30), ask(LB_SETCURSEL, 3), SetFocus(list);
  EXPECT_EQ(tapped(VK_UP), "key 38 on 3 note 1 cur 2 top 0 caret 2");
  toKey = -2;
  EXPECT_EQ(tapped(VK_UP), "key 38 on 2 cur 2 top 0 caret 2");
  toKey = 12;
  EXPECT_EQ(tapped(VK_UP), "key 38 on 2 note 1 cur 12 top 9 caret 12");

  open(kUsual | LBS_EXTENDEDSEL);
  fill(10), SetFocus(list);
  EXPECT_EQ(tapped(VK_DOWN), "note 1 cur 1 top 0 caret 1 of 1");
  EXPECT_EQ(tapped(VK_DOWN, kShift), "note 1 cur 2 top 0 caret 2 of 1,2");
  EXPECT_EQ(tapped(VK_HOME), "note 1 cur 0 top 0 caret 0 of 0");
}

TEST_F(WinListBox, TheMouseSelects) {
  open();
  fill(30), ask(LB_SETTOPINDEX, 9);
  EXPECT_EQ(clicked(5, 20), "note 4 note 1 cur 10 top 9 caret 10");
  EXPECT_EQ(clicked(5, 40), "note 1 cur 11 top 9 caret 11");
  Sleep(GetDoubleClickTime() + 20);
  EXPECT_EQ(after([&] { move(list, 5, 20), click(), click(); }), "note 1 note 2 cur 10 top 9 caret 10");
  Sleep(GetDoubleClickTime() + 20);
  EXPECT_EQ(after([&] { button(MOUSEEVENTF_LEFTDOWN), pump(20), move(list, 5, 60); }), "cur 12 top 9 caret 12");
  move(list, 5, 300), pump(1000);
  EXPECT_GE(ask(LB_GETTOPINDEX), 11) << "beyond the edge it scrolls";
  EXPECT_EQ(after([] { button(MOUSEEVENTF_LEFTUP); }).substr(0, 7), "note 1 ");
  EXPECT_EQ(GetCapture(), nullptr);

  open(kUsual | LBS_MULTIPLESEL);
  fill(10), SetFocus(list);
  clicked(5, 20);
  EXPECT_EQ(clicked(5, 40), "note 1 cur 2 top 0 caret 2 of 1,2");
  EXPECT_EQ(clicked(5, 20), "note 1 cur 1 top 0 caret 1 of 2");
  open(kUsual | LBS_EXTENDEDSEL);
  fill(10), SetFocus(list);
  const auto selected = [&](const std::string &now) { return now.substr(now.find(" of ") + 4); };
  EXPECT_EQ(selected(clicked(5, 5)), "0");
  EXPECT_EQ(selected(clicked(5, 40, kShift)), "0,1,2");
  EXPECT_EQ(selected(clicked(5, 20, kControl)), "0,2");
  EXPECT_EQ(selected(clicked(5, 60)), "3");
}

TEST_F(WinListBox, ItsOwnerMayEndItWhileItAsks) {
  open(LBS_OWNERDRAWFIXED | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT);
  ask(LB_ADDSTRING, 0, LPARAM{42});
  answer = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT &) {
    return message == WM_DELETEITEM && DestroyWindow(list);
  };
  ask(LB_DELETESTRING, 0);
  EXPECT_FALSE(IsWindow(list));
  list = nullptr, open(), fill(3);
  answer = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT &) { return message == WM_COMMAND && DestroyWindow(list); };
  move(list, 5, 20), click(), pump(20);
  EXPECT_FALSE(IsWindow(list));
}

TEST_F(WinListBox, LinesAndSelectionAreSeen) {
  open(LBS_NOINTEGRALHEIGHT);
  fill(2), ask(LB_SETCURSEL, 1), UpdateWindow(list);
  const auto pixel = [&](int y) {
    const HDC dc = GetDC(list);
    const COLORREF color = GetPixel(dc, 95, y);
    ReleaseDC(list, dc);
    return color;
  };
  EXPECT_EQ(pixel(5), GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(pixel(20), GetSysColor(COLOR_HIGHLIGHT));
  EXPECT_EQ(pixel(70), GetSysColor(COLOR_WINDOW));
  ask(LB_SETCURSEL, 0), UpdateWindow(list);
  EXPECT_EQ(pixel(5), GetSysColor(COLOR_HIGHLIGHT));
  EXPECT_EQ(pixel(20), GetSysColor(COLOR_WINDOW));
  const HBRUSH green = CreateSolidBrush(RGB(0, 255, 0));
  answer = [&](HWND, UINT message, WPARAM, LPARAM lParam, LRESULT &result) {
    if (message != WM_CTLCOLORLISTBOX) return false;
    EXPECT_EQ(reinterpret_cast<HWND>(lParam), list);
    return result = reinterpret_cast<LRESULT>(green), true;
  };
  InvalidateRect(list, nullptr, TRUE), UpdateWindow(list);
  EXPECT_EQ(pixel(70), onWine() ? GetSysColor(COLOR_WINDOW) : RGB(0, 255, 0)); // Wine leaves the rest white
  answer = nullptr;
  DeleteObject(green);
  ask(WM_SETREDRAW, FALSE), ask(LB_RESETCONTENT), UpdateWindow(list);
  EXPECT_EQ(pixel(5), GetSysColor(COLOR_HIGHLIGHT));
  ask(WM_SETREDRAW, TRUE), InvalidateRect(list, nullptr, TRUE), UpdateWindow(list);
  EXPECT_EQ(pixel(5), GetSysColor(COLOR_WINDOW));
}

TEST_F(WinListBox, ManyLinesOfAnyThreadStayCheap) {
  open();
  const int kLines = onWine() ? 1000 : 100000; // Wine moves all of them for each that goes
  const std::string line(40, 'x');
  fill(100);
  const size_t before = residentBytes();
  for (int i = 0; i < kLines; ++i) ask(LB_ADDSTRING, 0, line.c_str());
  const size_t bytes = static_cast<size_t>(kLines) * line.size();
  EXPECT_LE(onWindows() ? 0 : residentBytes(), before + 2 * bytes);
  EXPECT_EQ(ask(LB_GETCOUNT), kLines + 100);
  EXPECT_EQ(ask(LB_SETCURSEL, kLines + 99), kLines + 99);
  for (int i = 0; i < kLines; ++i) ask(LB_DELETESTRING, 0);
  EXPECT_EQ(ask(LB_GETCOUNT), 100);
  EXPECT_EQ(this->text(99), line);
  const auto outcome = aside([this] { return ask(LB_ADDSTRING, 0, "from elsewhere"); });
  for (const DWORD start = GetTickCount(); !outcome->done && GetTickCount() - start < 5000;) pump(1);
  ASSERT_TRUE(outcome->done);
  EXPECT_EQ(outcome->result, 100);
  EXPECT_EQ(this->text(100), "from elsewhere");
}
