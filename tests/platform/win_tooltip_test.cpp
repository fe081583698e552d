// The tooltip control: its tools, when a tip comes and goes, what it says, where it stands.
#include "support/desktop.h"
#include "support/input.h"

#include <algorithm>
#include <cstring>

using Size = std::pair<LONG, LONG>;

class WinTooltip : public DesktopTest {
 protected:
  const HWND frame = make("F", WS_POPUP | WS_VISIBLE, 200, 200, 400, 300);
  HWND tip = makeTip(TTS_ALWAYSTIP | TTS_NOPREFIX);
  std::string told; // what the windows of tools were asked and told: "ask 1, show 1, "
  std::function<void(NMTTDISPINFOA &)> reply = [](NMTTDISPINFOA &info) { std::strcpy(info.szText, "asked"); };

  void SetUp() override {
    SetCursorPos(900, 800), pump(20);
    answer = [this](HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT &) {
      if (message == WM_NOTIFY) hear(wParam, *reinterpret_cast<NMTTDISPINFOA *>(lParam));
      return false;
    };
  }
  void TearDown() override { DestroyWindow(tip); }

  void hear(WPARAM id, NMTTDISPINFOA &info) {
    const UINT code = info.hdr.code;
    if (code != TTN_NEEDTEXTA && code != TTN_SHOW && code != TTN_POP) return;
    told += (code == TTN_NEEDTEXTA ? "ask " : code == TTN_SHOW ? "show " : "pop ") + std::to_string(id) + ", ";
    EXPECT_EQ(info.hdr.hwndFrom, tip);
    EXPECT_EQ(info.hdr.idFrom, id);
    if (code == TTN_NEEDTEXTA) reply(info);
  }
  std::string tellings() { return std::exchange(told, ""); }

  HWND makeTip(DWORD style, int delay = 60) {
    InitCommonControls();
    const HWND made = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, style, CW_USEDEFAULT, CW_USEDEFAULT,
                                      CW_USEDEFAULT, CW_USEDEFAULT, frame, nullptr, nullptr, nullptr);
    SendMessageA(made, TTM_SETDELAYTIME, TTDT_INITIAL, delay), SendMessageA(made, TTM_SETDELAYTIME, TTDT_RESHOW, 20);
    return made;
  }
  void renew(DWORD style, int delay = 60) { DestroyWindow(tip), tip = makeTip(style, delay); }

  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageA(tip, message, wParam, lParam);
  }
  template <class Record> LRESULT send(UINT message, WPARAM wParam, Record &record) const {
    return SendMessageA(tip, message, wParam, reinterpret_cast<LPARAM>(&record));
  }
  TTTOOLINFOA tool(UINT_PTR id, const char *text, RECT rect = {}, UINT flags = TTF_SUBCLASS) const {
    TTTOOLINFOA info{};
    info.cbSize = TTTOOLINFOA_V2_SIZE, info.uFlags = flags, info.hwnd = frame, info.uId = id, info.rect = rect;
    info.lpszText = const_cast<char *>(text), info.lParam = 77;
    return info;
  }
  TTTOOLINFOA add(UINT_PTR id, const char *text, RECT rect = {0, 0, 100, 100}, UINT flags = TTF_SUBCLASS) const {
    TTTOOLINFOA info = tool(id, text, rect, flags);
    EXPECT_TRUE(send(TTM_ADDTOOLA, 0, info));
    return info;
  }
  TTTOOLINFOA addWindow(HWND window, const char *text, UINT flags = TTF_SUBCLASS) const {
    return add(reinterpret_cast<UINT_PTR>(window), text, {}, TTF_IDISHWND | flags);
  }

  // What is up; nothing without a tip.
  std::string up() const {
    char text[2000] = "";
    if (IsWindowVisible(tip)) GetWindowTextA(tip, text, sizeof text);
    return text;
  }
  // What is up as soon as it is that, or after two seconds.
  std::string await(const std::string &text) const {
    for (const DWORD start = GetTickCount(); up() != text && GetTickCount() - start < 2000;) pump(1);
    return up();
  }
  // What comes when the pointer moves there.
  void expectTip(const std::string &text, int x = 50, int y = 50, HWND window = nullptr) const {
    move(window ? window : frame, x, y);
    EXPECT_EQ(await(text), text);
  }
  static void leave() { SetCursorPos(900, 800), pump(10); }
  // The same when it comes from outside.
  void expectFresh(const std::string &text, HWND window = nullptr) const {
    leave(), await(""), expectTip(text, 50, 50, window);
  }
  RECT place() const {
    RECT rect{};
    GetWindowRect(tip, &rect);
    return rect;
  }
  Size size() const { return {place().right - place().left, place().bottom - place().top}; }
  // The size of a tip with this text: two pixels and a frame are round it.
  Size expectedSize(const std::string &text, UINT format = DT_SINGLELINE, int width = 0) const {
    RECT rect{0, 0, width, 0};
    const HDC dc = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(send(WM_GETFONT)));
    DrawTextA(dc, text.c_str(), -1, &rect, format | DT_CALCRECT | DT_NOPREFIX);
    SelectObject(dc, before), ReleaseDC(nullptr, dc);
    return {rect.right + 6, rect.bottom + 6};
  }
};

TEST_F(WinTooltip, IsASmallHiddenWindowOfItsOwn) {
  for (const DWORD style : {DWORD{0}, DWORD{WS_CAPTION | TTS_ALWAYSTIP}}) {
    renew(style);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(tip, GWL_STYLE)) & (WS_POPUP | WS_CAPTION | WS_VISIBLE | 3),
              WS_POPUP | WS_BORDER | (style & 3));
    EXPECT_EQ(GetWindowLongA(tip, GWL_EXSTYLE), LONG{WS_EX_TOPMOST | WS_EX_TOOLWINDOW});
    EXPECT_EQ(GetWindow(tip, GW_OWNER), frame);
    EXPECT_EQ(size(), Size(0, 0));
  }
}

TEST_F(WinTooltip, DelaysFollowFromTheDoubleClick) {
  const LONG usual = static_cast<LONG>(GetDoubleClickTime());
  struct Row {
    WPARAM which;
    int time;
    std::vector<LONG> reshowAutopopInitial;
  };
  const Row rows[] = {{TTDT_AUTOMATIC, 1000, {200, 10000, 1000}},
                      {TTDT_AUTOMATIC, 0, {usual / 5, usual * 10, usual}},
                      {TTDT_AUTOPOP, 30000, {usual / 5, 30000, usual}},
                      {TTDT_INITIAL, 50, {usual / 5, 30000, 50}},
                      {TTDT_RESHOW, 0, {0, 30000, 50}},
                      {TTDT_AUTOPOP, -1, {0, usual * 10, 50}}}; // Wine takes the low word as a number without a sign
  for (const Row &row : rows) {
    if (onWine() && row.time < 0) continue;
    send(TTM_SETDELAYTIME, row.which, MAKELPARAM(row.time, 0));
    std::vector<LONG> times;
    for (const WPARAM which : {TTDT_RESHOW, TTDT_AUTOPOP, TTDT_INITIAL})
      times.push_back(static_cast<LONG>(send(TTM_GETDELAYTIME, which)));
    EXPECT_EQ(times, row.reshowAutopopInitial) << row.which << " " << row.time;
  }
}

TEST_F(WinTooltip, ToolsAreKeptByWindowAndId) {
  TTTOOLINFOA info = add(1, "first", {1, 2, 3, 4}), other = tool(1, "of another window");
  other.hwnd = tip, send(TTM_ADDTOOLA, 0, other);
  add(1, "younger");
  const auto first = [&] {
    char text[80] = "unset";
    TTTOOLINFOA asked = tool(1, text);
    if (!send(TTM_GETTOOLINFOA, 0, asked)) return std::string("none");
    return asked.lpszText + (" " + rectText(asked.rect));
  };
  EXPECT_EQ(first(), "first 1,2,3,4");
  info = tool(1, "again", {9, 9, 20, 20}), send(TTM_UPDATETIPTEXTA, 0, info), send(TTM_NEWTOOLRECTA, 0, info);
  EXPECT_EQ(first(), "again 9,9,20,20");
  send(TTM_DELTOOLA, 0, info);
  EXPECT_EQ(first(), "younger 0,0,100,100");
  for (const UINT message : {TTM_DELTOOLA, TTM_DELTOOLA, TTM_NEWTOOLRECTA, TTM_UPDATETIPTEXTA}) send(message, 0, info);
  EXPECT_EQ(first(), "none");
  EXPECT_EQ(send(TTM_GETTOOLCOUNT), 1) << "that of the other window stays";
  // records come in three sizes, of which the first has no word
  const auto shortest = static_cast<UINT>(TTTOOLINFOA_V1_SIZE);
  for (const UINT size : {shortest, UINT{TTTOOLINFOA_V2_SIZE}, UINT{sizeof info}}) {
    char text[80] = "";
    info = tool(size, text), info.cbSize = size;
    EXPECT_TRUE(send(TTM_ADDTOOLA, 0, info)) << size;
    info.lParam = 9;
    EXPECT_TRUE(send(TTM_GETTOOLINFOA, 0, info)) << size;
    EXPECT_EQ(info.lParam, size == shortest ? 9 : 77) << size;
  }
}

TEST_F(WinTooltip, ThePointIsFoundAmongManyTools) {
  std::vector<RECT> parts; // by id; the older one counts
  uint32_t number = 1;
  const auto next = [&](LONG below) {
    number = number * 1103515245 + 12345;
    return static_cast<LONG>(number >> 8) % below;
  };
  for (UINT_PTR id = 0; id < 1000; ++id) {
    const LONG x = next(500) - 50, y = next(400) - 50;
    const LONG width = id % 50 ? next(40) : next(5000), height = id % 70 ? next(40) : next(5000);
    parts.push_back({x, y, x + width, y + height});
    add(id, "part", parts.back(), 0);
  }
  addWindow(frame, "whole", 0);
  for (size_t id = 0; id < parts.size(); id += 3) { // some go, some move
    const bool goes = id % 2;
    TTTOOLINFOA info = tool(id, "", {next(400), 0, 400, next(300)});
    parts[id] = goes ? RECT{} : info.rect;
    send(goes ? TTM_DELTOOLA : TTM_NEWTOOLRECTA, 0, info);
  }
  TTHITTESTINFOA test{};
  for (int i = 0; i < 3000 && !HasFailure(); ++i) {
    test.hwnd = frame, test.pt = {next(420) - 10, next(320) - 10}, test.ti = tool(0, nullptr);
    const auto found = std::find_if(parts.begin(), parts.end(), [&](const RECT &part) {
      return test.pt.x >= part.left && test.pt.x < part.right && test.pt.y >= part.top && test.pt.y < part.bottom;
    });
    EXPECT_TRUE(send(TTM_HITTESTA, 0, test));
    EXPECT_EQ(test.ti.uId, found == parts.end() ? reinterpret_cast<UINT_PTR>(frame) : UINT_PTR(found - parts.begin()))
        << test.pt.x << ' ' << test.pt.y;
  }
  test.hwnd = tip;
  EXPECT_FALSE(send(TTM_HITTESTA, 0, test)) << "a window without tools";
}

TEST_F(WinTooltip, ComesWhenThePointerRestsAndGoesWhenItLeaves) {
  add(1, "first"), add(2, LPSTR_TEXTCALLBACKA, {100, 0, 200, 100});
  expectTip("first");
  TTTOOLINFOA current = tool(0, nullptr);
  EXPECT_TRUE(send(TTM_GETCURRENTTOOLA, 0, current));
  EXPECT_EQ(current.uId, 1u);
  expectTip("asked", 150, 50);
  EXPECT_EQ(tellings(), "show 1, pop 1, ask 2, show 2, ");
  expectTip("", 250, 50); // over no tool
  EXPECT_EQ(tellings(), "pop 2, ");
  move(frame, 150, 50), pump(10), leave(), pump(200);
  EXPECT_EQ(told, "") << "it didn't rest there";
  expectTip("first");
  SetCursorPos(900, 800); // over no window of the program's
  EXPECT_EQ(await(""), "");
  EXPECT_EQ(tellings(), "show 1, pop 1, ");
  expectTip("first");
  ShowWindow(frame, SW_HIDE); // the pointer stays
  EXPECT_EQ(await(""), "");
}

TEST_F(WinTooltip, MovesBeginTheDelaysAnew) {
  renew(TTS_ALWAYSTIP, 150), send(TTM_SETDELAYTIME, TTDT_AUTOPOP, 200), add(1, "first");
  for (int i = 0; i < 20; ++i) move(frame, 50 + i, 50), pump(20);
  EXPECT_EQ(up(), "") << "it never rested";
  EXPECT_EQ(await("first"), "first");
  for (int i = 0; i < 20; ++i) move(frame, 50 + i, 50), pump(20);
  EXPECT_EQ(up(), "first") << "it was looked at all the time";
  EXPECT_EQ(await(""), "");
  EXPECT_EQ(told, "show 1, pop 1, ");
  pump(200);
  EXPECT_EQ(up(), "") << "the pointer didn't move";
  expectTip("first", 60, 50);
}

TEST_F(WinTooltip, GoesWithAPressAndStaysAwayInADrag) {
  add(1, "first");
  for (const auto &[down, release] : {std::pair{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP},
                                      {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP},
                                      {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP}}) {
    SCOPED_TRACE(down);
    told.clear(), expectFresh("first");
    button(down), pump(10);
    EXPECT_EQ(up(), "");
    if (!onWine()) { // where a tip comes in the middle of a drag
      move(frame, 51, 50), pump(150);
      EXPECT_EQ(told, "show 1, pop 1, ");
    }
    button(release), pump(10);
  }
}

TEST_F(WinTooltip, ComesOnlyWhileActive) {
  add(1, "first");
  send(TTM_ACTIVATE, FALSE), move(frame, 50, 50), pump(150);
  EXPECT_EQ(up(), "");
  send(TTM_ACTIVATE, TRUE), pump(150);
  EXPECT_EQ(up(), "") << "the pointer didn't move";
  expectTip("first", 51, 50);
  send(TTM_ACTIVATE, FALSE), send(TTM_ACTIVATE, TRUE);
  EXPECT_EQ(up(), "");
  expectTip("first");
  send(TTM_POP);
  EXPECT_EQ(up(), "");
  EXPECT_EQ(told, "show 1, pop 1, show 1, pop 1, ");
}

TEST_F(WinTooltip, ComesWhileItsOwnerIsActiveOrAlways) {
  const HWND other = make("G", WS_POPUP | WS_VISIBLE, 700, 200, 100, 100);
  for (const bool always : {false, true})
    for (const HWND active : {frame, other}) {
      SCOPED_TRACE(always ? "always" : "when " + names[active] + " is active");
      renew(always ? TTS_ALWAYSTIP : 0), add(1, "first");
      SetForegroundWindow(active), leave(), move(frame, 50, 50), pump(always || active == frame ? 0 : 200);
      expectTip(always || active == frame ? "first" : "");
      EXPECT_EQ(GetActiveWindow(), active) << "the tip itself is never active";
    }
}

TEST_F(WinTooltip, WindowsAreToolsAndAskTheirParents) {
  const HWND child = make("C", WS_CHILD | WS_VISIBLE, 20, 20, 100, 100, frame);
  addWindow(child, LPSTR_TEXTCALLBACKA), add(1, "under it", {0, 0, 400, 300});
  expectTip("asked", 50, 50, child);
  expectTip("under it", 200, 200);
  expectTip("asked", 50, 50, child);
  DestroyWindow(child);
  EXPECT_EQ(await("under it"), "under it") << "what is there now, without a move";
  EXPECT_EQ(send(TTM_GETTOOLCOUNT), 2) << "the program takes it back itself";
  EnableWindow(frame, FALSE), leave(), pump(150), move(frame, 50, 50), pump(150);
  EXPECT_EQ(up(), "") << "a disabled window has no mouse messages";
}

TEST_F(WinTooltip, HearsOfMovesFromTheProgramToo) {
  add(1, "first", {0, 0, 100, 100}, 0);
  move(frame, 50, 50), pump(150);
  EXPECT_EQ(up(), "");
  const auto relay = [&](UINT message) {
    MSG relayed{frame, message, 0, MAKELPARAM(50, 50), 0, {0, 0}};
    send(TTM_RELAYEVENT, 0, relayed);
  };
  relay(WM_MOUSEMOVE);
  EXPECT_EQ(await("first"), "first");
  relay(WM_KEYDOWN);
  EXPECT_EQ(up(), "first");
  relay(WM_LBUTTONUP);
  EXPECT_EQ(up(), "");
  leave(), relay(WM_MOUSEMOVE), pump(150);
  EXPECT_EQ(up(), "") << "the pointer isn't there";
}

TEST_F(WinTooltip, AnswersGiveTextsInManyForms) {
  static char own[] = "its own";
  static std::string eighty(80, 'x');
  using Info = NMTTDISPINFOA;
  struct Row {
    const char *form;
    std::function<void(Info &)> reply;
    std::string shown;
  };
  std::vector<Row> rows = {
      {"pointer", [](Info &info) { info.lpszText = own; }, own},
      {"room", [](Info &info) { std::strcpy(info.szText, "short"); }, "short"},
      {"full room", [](Info &info) { std::memcpy(info.szText, eighty.data(), 80); }, eighty},
      {"number", [](Info &info) { info.hinst = GetModuleHandleA(nullptr), info.lpszText = MAKEINTRESOURCEA(7); },
       "from the table"},
      {"nothing", [](Info &) {}, ""},
      {"null", [](Info &info) { info.lpszText = nullptr; }, ""},
  };
  // Wine shows what it showed before
  if (!onWine()) rows.push_back({"number of none", [](Info &info) { info.lpszText = MAKEINTRESOURCEA(999); }, ""});
  add(1, LPSTR_TEXTCALLBACKA);
  for (const Row &row : rows) {
    SCOPED_TRACE(row.form);
    reply = [&](Info &asked) {
      EXPECT_EQ(asked.lpszText, asked.szText);
      EXPECT_STREQ(asked.szText, "");
      row.reply(asked);
    };
    told.clear(), move(frame, 50, 50), pump(row.shown.empty() ? 150 : 0);
    EXPECT_EQ(await(row.shown), row.shown);
    EXPECT_EQ(told, row.shown.empty() ? "ask 1, " : "ask 1, show 1, ");
    leave(), await("");
  }
}

TEST_F(WinTooltip, TheTextDecidesTheSize) {
  const std::string menu = "&File && &more\tCtrl+F", lines = "The quick brown fox\njumps over the lazy dog";
  struct Row {
    const char *what;
    DWORD style;
    int width;
    std::string text, shown, onWine;
  };
  const Row rows[] = {{"marks of menus", 0, -1, menu, "File & more", "&File && &more"}, // drawn without the marks
                      {"none", TTS_NOPREFIX, -1, menu, menu, menu},
                      {"lines", TTS_NOPREFIX, 1000, lines, lines, lines},
                      {"narrow ones", TTS_NOPREFIX, 40, lines, lines, lines},
                      {"one line", TTS_NOPREFIX, -1, lines, lines, ""}}; // Wine ends lines always
  for (const Row &row : rows) {
    if (onWine() && row.onWine.empty()) continue;
    SCOPED_TRACE(row.what);
    renew(TTS_ALWAYSTIP | row.style), add(1, row.text.c_str());
    EXPECT_EQ(send(TTM_SETMAXTIPWIDTH, 0, LPARAM{row.width}), -1);
    EXPECT_EQ(send(TTM_GETMAXTIPWIDTH), row.width);
    expectFresh(onWine() ? row.onWine : row.shown);
    const UINT format = row.width < 0 ? DT_SINGLELINE : DT_WORDBREAK | DT_EXTERNALLEADING;
    EXPECT_EQ(size(), expectedSize(row.shown, format, std::max(row.width, 0)));
  }
}

TEST_F(WinTooltip, WearsTheProgramsFontAndColoursInAFrame) {
  TTTOOLINFOA info = add(1, "A tip");
  RECT margin = {1, 2, 4, 8}, rect = {10, 10, 50, 30};
  const Size plain = expectedSize("A tip"), wider(plain.first + 5, plain.second + 10);
  send(TTM_SETMARGIN, 0, margin), expectTip("A tip");
  EXPECT_EQ(size(), wider);
  if (!onWine()) { // which has the size of the tip that was up last, and leaves rectangles alone
    EXPECT_EQ(send(TTM_GETBUBBLESIZE, 0, info), MAKELONG(wider.first, wider.second));
    send(TTM_ADJUSTRECT, TRUE, rect);
    EXPECT_EQ(rectText(rect), "6,5,57,41");
    send(TTM_ADJUSTRECT, FALSE, rect);
    EXPECT_EQ(rectText(rect), "10,10,50,30");
  }
  margin = {}, send(TTM_SETMARGIN, 0, margin);
  LOGFONTA log{};
  log.lfHeight = -30, log.lfCharSet = SHIFTJIS_CHARSET;
  const HFONT font = CreateFontIndirectA(&log);
  send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  send(TTM_SETTIPBKCOLOR, RGB(10, 200, 30)), send(TTM_SETTIPTEXTCOLOR, RGB(200, 0, 250));
  expectFresh("A tip"), pump(30);
  EXPECT_EQ(size(), expectedSize("A tip"));
  EXPECT_GE(size().second, 36) << "the height of the font";
  const auto [width, height] = size();
  const HDC dc = GetDCEx(tip, nullptr, DCX_WINDOW);
  EXPECT_EQ(GetPixel(dc, 1, 1), RGB(10, 200, 30)) << "the ground";
  int letters = 0;
  for (int i = 0; i < width * height; ++i) letters += GetPixel(dc, i % width, i / width) == RGB(200, 0, 250);
  EXPECT_GT(letters, 20);
  if (!onWine()) { // where the frame isn't always among the window's own pixels
    EXPECT_EQ(GetPixel(dc, width - 1, height - 1), GetSysColor(COLOR_WINDOWFRAME));
  }
  ReleaseDC(tip, dc);
  send(WM_SETFONT), DeleteObject(font);
}

TEST_F(WinTooltip, StandsBesideThePointerOnTheScreen) {
  const LONG right = GetSystemMetrics(SM_CXSCREEN), bottom = GetSystemMetrics(SM_CYSCREEN);
  SetWindowPos(frame, nullptr, 0, 0, right, bottom, SWP_NOZORDER);
  TTTOOLINFOA info = add(1, "A tip", {0, 0, right, bottom});
  const auto shownAt = [&](int x, int y) {
    send(TTM_POP), expectTip("A tip", x, y);
    return place();
  };
  EXPECT_EQ(shownAt(500, 300).left, 499) << "below the arrow";
  EXPECT_EQ(place().top, 319);
  for (const POINT point : {POINT{right - 1, 300}, POINT{right - 1, bottom - 1}, POINT{500, bottom - 1}}) {
    const RECT rect = shownAt(point.x, point.y);
    EXPECT_LE(rect.right, right);
    EXPECT_LE(rect.bottom, bottom);
    EXPECT_TRUE(rect.top > point.y || rect.bottom <= point.y) << "the pointer is free: " << rectText(rect);
  }
  if (onWine()) GTEST_SKIP() << "a pixel stands beyond the left side, and high tips far above the screen";
  EXPECT_EQ(shownAt(0, 300).left, 0);
  const std::string high = "A tip" + std::string(200, '\n') + "!";
  send(TTM_SETMAXTIPWIDTH, 0, 10);
  info.lpszText = const_cast<char *>(high.c_str()), send(TTM_UPDATETIPTEXTA, 0, info), send(TTM_POP);
  expectTip(high, 500, 300);
  EXPECT_EQ(place().top, 0);
  EXPECT_EQ(place().bottom, bottom);
}

TEST_F(WinTooltip, StandsBelowTheMiddleOfATool) {
  addWindow(make("C", WS_CHILD | WS_VISIBLE, 150, 50, 100, 50, frame), "A tip", TTF_SUBCLASS | TTF_CENTERTIP);
  expectTip("A tip", 155, 55);
  EXPECT_EQ(place().left, 400 - size().first / 2);
  EXPECT_EQ(place().top, 301);
  const int low = GetSystemMetrics(SM_CYSCREEN) - 105;
  send(TTM_POP), SetWindowPos(frame, nullptr, 200, low, 0, 0, SWP_NOSIZE), pump(10);
  expectTip("A tip", 156, 56);
  EXPECT_EQ(place().bottom, low + 50 - 1) << "or above it";
}

TEST_F(WinTooltip, IsHeldWhereTheProgramWantsIt) {
  TTTOOLINFOA held = add(1, "held", {0, 0, 100, 100}, TTF_TRACK | TTF_ABSOLUTE | TTF_SUBCLASS);
  TTTOOLINFOA other = add(2, "other", {}, TTF_TRACK | TTF_ABSOLUTE);
  const auto hold = [&](TTTOOLINFOA &info, int x, int y) {
    send(TTM_TRACKPOSITION, 0, MAKELPARAM(x, y)), send(TTM_TRACKACTIVATE, TRUE, info);
  };
  if (!onWine()) { // where the pointer brings it too
    move(frame, 50, 50), pump(150);
    EXPECT_EQ(up(), "");
  }
  leave(), told.clear(), hold(held, 500, 400);
  EXPECT_EQ(up(), "held");
  EXPECT_EQ(rectText(place()), rectText({499, 399, 499 + size().first, 399 + size().second}));
  EXPECT_EQ(tellings(), "show 1, ");
  move(frame, 50, 50), pump(150), move(frame, 51, 50), pump(50);
  if (!onWine()) click(), pump(50); // which takes it down there
  EXPECT_EQ(up(), "held") << "whatever the mouse does";
  send(TTM_TRACKPOSITION, 0, MAKELPARAM(GetSystemMetrics(SM_CXSCREEN) - 1, 20000));
  EXPECT_LE(place().right, GetSystemMetrics(SM_CXSCREEN));
  EXPECT_LE(place().bottom, GetSystemMetrics(SM_CYSCREEN));
  send(TTM_TRACKPOSITION, 0, MAKELPARAM(500, 400)), told.clear(), send(TTM_TRACKACTIVATE, TRUE, other);
  EXPECT_EQ(up(), "other");
  EXPECT_EQ(told, onWine() ? "show 2, " : "pop 1, show 2, ") << "the window hears the end of every tip";
  send(TTM_TRACKACTIVATE, FALSE, other);
  EXPECT_EQ(up(), "");
  if (onWine()) GTEST_SKIP() << "where a held tip keeps its text and place, and a negative place is a large one";
  hold(held, -50, -20);
  EXPECT_EQ(rectText(place()), rectText({0, 0, size().first, size().second}));
  held.lpszText = const_cast<char *>("with another text"), send(TTM_UPDATETIPTEXTA, 0, held);
  EXPECT_EQ(up(), "with another text");
  EXPECT_EQ(size(), expectedSize("with another text"));
  for (const UINT message : {TTM_POP, TTM_ACTIVATE, TTM_DELTOOLA}) {
    send(TTM_TRACKACTIVATE, TRUE, held);
    EXPECT_EQ(up(), "with another text");
    SendMessageA(tip, message, 0, message == TTM_DELTOOLA ? reinterpret_cast<LPARAM>(&held) : 0);
    EXPECT_EQ(up(), "") << message - WM_USER;
  }
}

TEST_F(WinTooltip, ChangesWhileItIsUp) {
  TTTOOLINFOA info = add(1, "first");
  add(2, "second", {0, 0, 200, 200});
  expectTip("first");
  info.lpszText = const_cast<char *>("first, longer"), send(TTM_UPDATETIPTEXTA, 0, info);
  EXPECT_EQ(up(), "first, longer");
  EXPECT_EQ(size(), expectedSize("first, longer"));
  info.lpszText = const_cast<char *>("set"), send(TTM_SETTOOLINFOA, 0, info);
  EXPECT_EQ(up(), "set");
  EXPECT_EQ(tellings(), "show 1, show 1, show 1, ");
  info.rect = {300, 0, 400, 100}, send(TTM_NEWTOOLRECTA, 0, info);
  EXPECT_EQ(await("second"), "second") << "the tool has gone from under the pointer";
  info = tool(2, ""), send(TTM_DELTOOLA, 0, info);
  EXPECT_EQ(up(), "");
  EXPECT_EQ(told, "pop 1, show 2, pop 2, ");
}

// What a program sees that stands before the control's own procedure.
TEST_F(WinTooltip, TellsItsStepsToAProcedureBeforeItsOwn) {
  static WNDPROC own;
  static std::string *steps;
  steps = &told;
  own = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(
      tip, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(+[](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_PAINT) *steps += "PAINT, ";
        if (message == WM_TIMER && wParam != 3) *steps += "TIMER, "; // the third only looks where the pointer is
        if (message == WM_SHOWWINDOW && !onWine()) *steps += wParam ? "SHOW, " : "HIDE, ";
        if (message == TTM_RELAYEVENT && !onWine())
          *steps += "RELAY " + std::to_string(reinterpret_cast<MSG *>(lParam)->message - WM_MOUSEFIRST) + ", ";
        return CallWindowProcA(own, window, message, wParam, lParam);
      })));
  // On Wine neither of them comes: it shows by SetWindowPos, and keeps what it sees of the mouse to itself.
  const auto without = [](std::string text) {
    if (onWine())
      for (const std::string part : {"RELAY 0, ", "RELAY 1, ", "RELAY 2, ", "SHOW, ", "HIDE, "})
        while (text.find(part) != std::string::npos) text.erase(text.find(part), part.size());
    return text;
  };
  add(1, LPSTR_TEXTCALLBACKA);
  expectTip("asked");
  EXPECT_EQ(tellings(), without("RELAY 0, TIMER, ask 1, show 1, SHOW, PAINT, "));
  answer = [this, before = answer](HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT &result) {
    if (message == WM_LBUTTONDOWN) told += "press, ";
    return before(window, message, wParam, lParam, result);
  };
  click(), pump(20);
  EXPECT_EQ(told, without("RELAY 1, pop 1, HIDE, press, RELAY 2, ")) << "before the window itself hears of it";
}

// The program may do anything when it is asked or told.
TEST_F(WinTooltip, ToolsAndTipsMayGoInTheMiddle) {
  if (onWine()) GTEST_SKIP() << "which doesn't bear it";
  HWND other{};
  TTTOOLINFOA info = tool(1, LPSTR_TEXTCALLBACKA, {0, 0, 100, 100});
  const std::map<std::string, std::function<void()>> acts = {{"tool deleted", [&] { send(TTM_DELTOOLA, 0, info); }},
                                                             {"popped", [&] { send(TTM_POP); }},
                                                             {"switched off", [&] { send(TTM_ACTIVATE, FALSE); }},
                                                             {"tip destroyed", [&] { DestroyWindow(tip); }},
                                                             {"window destroyed", [&] { DestroyWindow(other); }}};
  for (const UINT code : {TTN_NEEDTEXTA, TTN_SHOW, TTN_POP})
    for (const auto &[what, act] : acts) {
      SCOPED_TRACE(std::to_string(static_cast<int>(code)) + " " + what);
      renew(TTS_ALWAYSTIP, 10), other = make("H", WS_POPUP | WS_VISIBLE, 300, 200, 200, 200);
      info.hwnd = other, send(TTM_ADDTOOLA, 0, info);
      int times = 0;
      answer = [&](HWND window, UINT message, WPARAM, LPARAM lParam, LRESULT &) {
        if (message != WM_NOTIFY || window != other) return false;
        auto &asked = *reinterpret_cast<NMTTDISPINFOA *>(lParam);
        if (asked.hdr.code == TTN_NEEDTEXTA) asked.lpszText = const_cast<char *>("H");
        if (asked.hdr.code == code && times++ == 0) act();
        return false;
      };
      SetCursorPos(900, 800), pump(5), move(other, 50, 50);
      for (int tries = 0; tries < 100 && times == 0 && up().empty(); ++tries) pump(20);
      send(TTM_POP);
      EXPECT_GT(times, 0);
      EXPECT_EQ(up(), "");
      DestroyWindow(other);
    }
}

TEST_F(WinTooltip, WhatAWindowThrowsLeavesNoTip) {
  if (onWindows()) GTEST_SKIP() << "Windows has frames of its own there that nothing unwinds";
  add(1, LPSTR_TEXTCALLBACKA);
  for (const UINT code : {TTN_NEEDTEXTA, TTN_SHOW}) {
    SCOPED_TRACE(code);
    SetCursorPos(900, 800), await("");
    const auto before = answer;
    answer = [&](HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT &result) {
      if (message == WM_NOTIFY && reinterpret_cast<NMHDR *>(lParam)->code == code) throw 7;
      return before(window, message, wParam, lParam, result);
    };
    move(frame, 50, 50);
    EXPECT_THROW(await("asked"), int);
    EXPECT_FALSE(IsWindowVisible(tip));
    EXPECT_FALSE(send(TTM_GETCURRENTTOOLA));
    answer = before, expectTip("asked", 51, 50);
  }
}
