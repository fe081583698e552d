// The tooltip control: its tools, when a tip comes and goes, what it says, where it stands.
#include "support/desktop.h"
#include "support/input.h"

#include <algorithm>
#include <cstring>

using Edges = std::vector<LONG>;

static Edges edges(const RECT &rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

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

  virtual void hear(WPARAM id, NMTTDISPINFOA &info) {
    const UINT code = info.hdr.code;
    if (code != TTN_NEEDTEXTA && code != TTN_SHOW && code != TTN_POP) return;
    told += (code == TTN_NEEDTEXTA ? "ask " : code == TTN_SHOW ? "show " : "pop ") + std::to_string(id) + ", ";
    EXPECT_TRUE(info.hdr.hwndFrom == tip && info.hdr.idFrom == id);
    if (code == TTN_NEEDTEXTA) reply(info);
  }

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
    info.lpszText = const_cast<char *>(text);
    return info;
  }
  TTTOOLINFOA add(UINT_PTR id, const char *text, RECT rect = {}, UINT flags = TTF_SUBCLASS) const {
    TTTOOLINFOA info = tool(id, text, rect, flags);
    EXPECT_TRUE(send(TTM_ADDTOOLA, 0, info));
    return info;
  }
  std::string textOf(UINT_PTR id) const {
    char text[200] = "unset";
    TTTOOLINFOA info = tool(id, text);
    send(TTM_GETTEXTA, sizeof text, info);
    return text;
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
  RECT place() const {
    RECT rect{};
    GetWindowRect(tip, &rect);
    return rect;
  }
  SIZE size() const {
    const RECT rect = place();
    return {rect.right - rect.left, rect.bottom - rect.top};
  }
  // The size of a tip with this text: two pixels and a frame are round it.
  SIZE expectedSize(const char *text, UINT format, int width = 0) const {
    RECT rect{0, 0, width, 0};
    const HDC dc = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(send(WM_GETFONT)));
    DrawTextA(dc, text, -1, &rect, format | DT_CALCRECT | DT_NOPREFIX);
    SelectObject(dc, before), ReleaseDC(nullptr, dc);
    return {rect.right + 6, rect.bottom + 6};
  }
};

static std::pair<LONG, LONG> pairOf(SIZE size) { return {size.cx, size.cy}; }

TEST_F(WinTooltip, IsASmallHiddenWindowOfItsOwn) {
  for (const DWORD style : {DWORD{0}, DWORD{WS_CAPTION | TTS_ALWAYSTIP}, DWORD{WS_CHILD}}) {
    SCOPED_TRACE(style);
    renew(style);
    constexpr DWORD kKinds = WS_CHILD | WS_POPUP | WS_CAPTION;
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(tip, GWL_STYLE)) & (kKinds | 3), WS_POPUP | WS_BORDER | (style & 3));
    EXPECT_EQ(GetWindowLongA(tip, GWL_EXSTYLE), LONG{WS_EX_TOPMOST | WS_EX_TOOLWINDOW});
    EXPECT_EQ(GetWindow(tip, GW_OWNER), style & WS_CHILD ? nullptr : frame);
    EXPECT_FALSE(IsWindowVisible(tip));
    EXPECT_TRUE(size().cx == 0 && size().cy == 0) << rectText(place());
  }
  INITCOMMONCONTROLSEX controls = {sizeof controls - 1, ICC_BAR_CLASSES};
  EXPECT_FALSE(InitCommonControlsEx(&controls)) << "of another size";
  controls.dwSize = sizeof controls;
  EXPECT_TRUE(InitCommonControlsEx(&controls));
}

TEST_F(WinTooltip, DelaysFollowFromTheDoubleClick) {
  const LONG usual = static_cast<LONG>(GetDoubleClickTime());
  struct Row {
    WPARAM which;
    int time;
    std::vector<LONG> automaticReshowAutopopInitial;
    bool wine = true; // has it too
  };
  const Row rows[] = {{TTDT_AUTOMATIC, 1000, {1000, 200, 10000, 1000}},
                      {TTDT_AUTOMATIC, 0, {usual, usual / 5, usual * 10, usual}},
                      {TTDT_AUTOPOP, 30000, {usual, usual / 5, 30000, usual}},
                      {TTDT_INITIAL, 50, {50, usual / 5, 30000, 50}},
                      {TTDT_RESHOW, 0, {50, 0, 30000, 50}},
                      {7, 11, {50, 0, 30000, 50}},
                      // Wine takes the low word as a number without a sign
                      {TTDT_AUTOPOP, -1, {50, 0, usual * 10, 50}, false},
                      {TTDT_INITIAL, -1, {usual, 0, usual * 10, usual}, false},
                      {TTDT_RESHOW, 40000, {usual, usual / 5, usual * 10, usual}, false},
                      {TTDT_AUTOMATIC, -1, {usual, usual / 5, usual * 10, usual}, false}};
  for (const Row &row : rows) {
    if (onWine() && !row.wine) continue;
    send(TTM_SETDELAYTIME, row.which, MAKELPARAM(row.time, 0));
    std::vector<LONG> times;
    for (const WPARAM which : {TTDT_AUTOMATIC, TTDT_RESHOW, TTDT_AUTOPOP, TTDT_INITIAL})
      times.push_back(static_cast<LONG>(send(TTM_GETDELAYTIME, which)));
    EXPECT_EQ(times, row.automaticReshowAutopopInitial) << row.which << " " << row.time;
  }
  EXPECT_EQ(send(TTM_GETDELAYTIME, 7), -1);
}

TEST_F(WinTooltip, ToolsAreKeptByWindowAndId) {
  TTTOOLINFOA info = tool(1, "first", {1, 2, 3, 4}, TTF_CENTERTIP);
  info.lParam = 77;
  EXPECT_TRUE(send(TTM_ADDTOOLA, 0, info));
  add(2, LPSTR_TEXTCALLBACKA), add(3, MAKEINTRESOURCEA(7)), add(4, nullptr);
  TTTOOLINFOA other = tool(1, "of another window");
  other.hwnd = tip;
  EXPECT_TRUE(send(TTM_ADDTOOLA, 0, other));
  add(1, "younger");
  EXPECT_FALSE(send(TTM_ADDTOOLA, 0, 0));
  EXPECT_EQ(send(TTM_GETTOOLCOUNT), 6);

  const auto described = [&](UINT message, WPARAM wParam, UINT_PTR id) {
    char text[80] = "unset";
    TTTOOLINFOA asked = tool(id, text);
    if (!send(message, wParam, asked)) return std::string("none");
    const std::string what = asked.lpszText == LPSTR_TEXTCALLBACKA   ? "asks"
                             : asked.lpszText == MAKEINTRESOURCEA(7) ? "number"
                             : !asked.lpszText                       ? "nothing"
                                                                     : asked.lpszText;
    return std::to_string(asked.uId) + " " + what + " " + rectText(asked.rect) + " " + std::to_string(asked.uFlags) +
           " " + std::to_string(asked.lParam);
  };
  EXPECT_EQ(described(TTM_GETTOOLINFOA, 0, 1), "1 first 1,2,3,4 2 77");
  EXPECT_EQ(described(TTM_GETTOOLINFOA, 0, 9), "none");
  const char *const inOrder[] = {"1 first 1,2,3,4 2 77",
                                 "2 asks 0,0,0,0 16 0",
                                 "3 number 0,0,0,0 16 0",
                                 "4 nothing 0,0,0,0 16 0",
                                 "1 of another window 0,0,0,0 16 0",
                                 "1 younger 0,0,0,0 16 0",
                                 "none"};
  for (WPARAM i = 0; i < std::size(inOrder); ++i) EXPECT_EQ(described(TTM_ENUMTOOLSA, i, 0), inOrder[i]);

  info = tool(1, "changed", {5, 6, 7, 8}, TTF_SUBCLASS);
  info.lParam = 78;
  send(TTM_SETTOOLINFOA, 0, info);
  EXPECT_EQ(described(TTM_GETTOOLINFOA, 0, 1), "1 changed 5,6,7,8 16 78");
  info = tool(1, "again", {9, 9, 20, 20}, 0), info.lParam = 0;
  send(TTM_UPDATETIPTEXTA, 0, info), send(TTM_NEWTOOLRECTA, 0, info);
  EXPECT_EQ(described(TTM_GETTOOLINFOA, 0, 1), "1 again 9,9,20,20 16 78");
  for (const char *const left : {"1 younger 0,0,0,0 16 0", "none"}) {
    send(TTM_DELTOOLA, 0, info);
    EXPECT_EQ(described(TTM_GETTOOLINFOA, 0, 1), left);
  }
  EXPECT_EQ(send(TTM_GETTOOLCOUNT), 4);
  send(TTM_DELTOOLA, 0, info), send(TTM_NEWTOOLRECTA, 0, info), send(TTM_UPDATETIPTEXTA, 0, info);
  EXPECT_EQ(send(TTM_GETTOOLCOUNT), 4) << "of a tool that isn't there";
  EXPECT_FALSE(send(TTM_GETCURRENTTOOLA));
}

TEST_F(WinTooltip, RecordsHaveOneOfThreeSizes) {
  TTTOOLINFOA info = tool(1, "text");
  info.lParam = 5;
  const auto first = static_cast<UINT>(TTTOOLINFOA_V1_SIZE), second = static_cast<UINT>(TTTOOLINFOA_V2_SIZE);
  for (const UINT size : {first, second, UINT{sizeof info}}) {
    info.uId = info.cbSize = size;
    EXPECT_TRUE(send(TTM_ADDTOOLA, 0, info)) << size;
    char text[80] = "";
    TTTOOLINFOA asked = tool(size, text);
    asked.lParam = 9, asked.cbSize = size;
    EXPECT_TRUE(send(TTM_GETTOOLINFOA, 0, asked)) << size;
    EXPECT_EQ(asked.lParam, size == first ? 9 : 5) << "the first one has no such member";
  }
  EXPECT_EQ(first, sizeof(void *) == 4 ? 40u : 56u);
  EXPECT_EQ(second, sizeof(void *) == 4 ? 44u : 64u);
  if (onWine()) GTEST_SKIP() << "takes any size";
  for (const UINT size : {0u, first - 1, UINT{sizeof info} + 4}) {
    info.cbSize = size;
    EXPECT_FALSE(send(TTM_ADDTOOLA, 0, info)) << size;
  }
}

TEST_F(WinTooltip, ThePointIsFoundAmongManyTools) {
  struct Part {
    RECT rect;
    UINT_PTR id;
  };
  std::vector<Part> parts; // the older one counts
  uint32_t number = 1;
  const auto next = [&](LONG below) {
    number = number * 1103515245 + 12345;
    return static_cast<LONG>(number >> 8) % below;
  };
  for (UINT_PTR id = 1; id <= 1000; ++id) {
    const LONG x = next(500) - 50, y = next(400) - 50;
    const LONG width = id % 50 ? next(40) : next(5000), height = id % 70 ? next(40) : next(5000);
    parts.push_back({{x, y, x + width, y + height}, id});
    add(id, "part", parts.back().rect, 0);
  }
  add(reinterpret_cast<UINT_PTR>(frame), "whole", {}, TTF_IDISHWND);
  for (size_t i = 0; i < parts.size(); i += 3) { // some go, some move
    TTTOOLINFOA info = tool(parts[i].id, "", {next(400), 0, 400, next(300)});
    if (i % 2) {
      send(TTM_DELTOOLA, 0, info), parts[i].rect = {};
    } else {
      send(TTM_NEWTOOLRECTA, 0, info), parts[i].rect = info.rect;
    }
  }
  size_t wrong = 0;
  for (int i = 0; i < 3000; ++i) {
    const POINT point = {next(420) - 10, next(320) - 10};
    const auto found = std::find_if(parts.begin(), parts.end(), [&](const Part &part) {
      return point.x >= part.rect.left && point.x < part.rect.right && point.y >= part.rect.top &&
             point.y < part.rect.bottom;
    });
    TTHITTESTINFOA test{};
    test.hwnd = frame, test.pt = point, test.ti = tool(0, nullptr);
    EXPECT_TRUE(send(TTM_HITTESTA, 0, test));
    wrong += test.ti.uId != (found == parts.end() ? reinterpret_cast<UINT_PTR>(frame) : found->id);
  }
  EXPECT_EQ(wrong, 0u);
  TTHITTESTINFOA elsewhere{};
  elsewhere.hwnd = tip, elsewhere.ti = tool(0, nullptr);
  EXPECT_FALSE(send(TTM_HITTESTA, 0, elsewhere)) << "a window without tools";
}

TEST_F(WinTooltip, ComesWhenThePointerRestsAndGoesWhenItLeaves) {
  add(1, "first", {0, 0, 100, 100}), add(2, LPSTR_TEXTCALLBACKA, {100, 0, 200, 100});
  move(frame, 50, 50);
  EXPECT_EQ(await("first"), "first");
  EXPECT_EQ(told, "show 1, ");
  TTTOOLINFOA current = tool(0, nullptr);
  EXPECT_TRUE(send(TTM_GETCURRENTTOOLA, 0, current));
  EXPECT_EQ(current.uId, 1u);
  move(frame, 150, 50);
  EXPECT_EQ(await("asked"), "asked");
  EXPECT_EQ(std::exchange(told, ""), "show 1, pop 1, ask 2, show 2, ");
  move(frame, 250, 50); // over no tool
  EXPECT_EQ(await(""), "");
  EXPECT_EQ(std::exchange(told, ""), "pop 2, ");
  move(frame, 150, 50), pump(10), SetCursorPos(900, 800), pump(200);
  EXPECT_EQ(told, "") << "it didn't rest there";
  move(frame, 50, 50);
  EXPECT_EQ(await("first"), "first");
  SetCursorPos(900, 800); // over no window of the program's
  EXPECT_EQ(await(""), "");
  EXPECT_EQ(std::exchange(told, ""), "show 1, pop 1, ");
  move(frame, 50, 50);
  EXPECT_EQ(await("first"), "first");
  ShowWindow(frame, SW_HIDE); // the pointer stays
  EXPECT_EQ(await(""), "");
}

TEST_F(WinTooltip, MovesBeginTheDelaysAnew) {
  renew(TTS_ALWAYSTIP, 150), send(TTM_SETDELAYTIME, TTDT_AUTOPOP, 200);
  add(1, "first", {0, 0, 400, 100});
  for (int i = 0; i < 20; ++i) move(frame, 50 + i, 50), pump(20);
  EXPECT_EQ(up(), "") << "it never rested";
  EXPECT_EQ(await("first"), "first");
  for (int i = 0; i < 20; ++i) move(frame, 50 + i, 50), pump(20);
  EXPECT_EQ(up(), "first") << "it was looked at all the time";
  EXPECT_EQ(await(""), "");
  EXPECT_EQ(told, "show 1, pop 1, ");
  pump(200);
  EXPECT_EQ(up(), "") << "the pointer didn't move";
  move(frame, 60, 50);
  EXPECT_EQ(await("first"), "first");
}

TEST_F(WinTooltip, GoesWithAPress) {
  add(1, "first", {0, 0, 100, 100});
  for (const auto &[down, release] : {std::pair{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP},
                                      {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP},
                                      {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP}}) {
    SCOPED_TRACE(down);
    told.clear(), SetCursorPos(900, 800), pump(10), move(frame, 50, 50);
    EXPECT_EQ(await("first"), "first");
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
  add(1, "first", {0, 0, 100, 100});
  send(TTM_ACTIVATE, FALSE), move(frame, 50, 50), pump(150);
  EXPECT_EQ(up(), "");
  send(TTM_ACTIVATE, TRUE), pump(150);
  EXPECT_EQ(up(), "") << "the pointer didn't move";
  move(frame, 51, 50);
  EXPECT_EQ(await("first"), "first");
  send(TTM_ACTIVATE, FALSE), send(TTM_ACTIVATE, TRUE);
  EXPECT_EQ(up(), "");
  move(frame, 50, 50);
  EXPECT_EQ(await("first"), "first");
  send(TTM_POP);
  EXPECT_EQ(up(), "");
  EXPECT_EQ(told, "show 1, pop 1, show 1, pop 1, ");
}

TEST_F(WinTooltip, ComesWhileItsOwnerIsActiveOrAlways) {
  const HWND other = make("G", WS_POPUP | WS_VISIBLE, 700, 200, 100, 100);
  for (const bool always : {false, true})
    for (const HWND active : {frame, other}) {
      renew(always ? TTS_ALWAYSTIP : 0), add(1, "first", {0, 0, 100, 100});
      SetForegroundWindow(active), SetCursorPos(900, 800), pump(30), move(frame, 50, 50);
      if (!always && active == other) pump(200);
      const std::string expected = always || active == frame ? "first" : "";
      EXPECT_EQ(await(expected), expected) << always << " " << (active == frame);
      EXPECT_EQ(GetActiveWindow(), active) << "the tip itself is never active";
    }
}

TEST_F(WinTooltip, WindowsAreToolsAndAskTheirParents) {
  const HWND child = make("C", WS_CHILD | WS_VISIBLE, 20, 20, 100, 100, frame);
  add(reinterpret_cast<UINT_PTR>(child), LPSTR_TEXTCALLBACKA, {}, TTF_IDISHWND | TTF_SUBCLASS);
  add(1, "under it", {0, 0, 400, 300});
  move(child, 50, 50);
  EXPECT_EQ(await("asked"), "asked");
  move(frame, 200, 200);
  EXPECT_EQ(await("under it"), "under it");
  move(child, 50, 50);
  EXPECT_EQ(await("asked"), "asked");
  DestroyWindow(child);
  EXPECT_EQ(await("under it"), "under it") << "what is there now, without a move";
  EXPECT_EQ(send(TTM_GETTOOLCOUNT), 2) << "the program takes it back itself";
  EnableWindow(frame, FALSE), SetCursorPos(900, 800), pump(150), move(frame, 50, 50), pump(150);
  EXPECT_EQ(up(), "") << "a disabled window has no mouse messages";
}

TEST_F(WinTooltip, HearsOfMovesFromTheProgramToo) {
  add(1, "first", {0, 0, 100, 100}, 0);
  move(frame, 50, 50), pump(150);
  EXPECT_EQ(up(), "");
  MSG message{frame, WM_MOUSEMOVE, 0, MAKELPARAM(50, 50), 0, {0, 0}};
  send(TTM_RELAYEVENT, 0, message);
  EXPECT_EQ(await("first"), "first");
  message.message = WM_KEYDOWN, send(TTM_RELAYEVENT, 0, message);
  EXPECT_EQ(up(), "first");
  message.message = WM_LBUTTONUP, send(TTM_RELAYEVENT, 0, message);
  EXPECT_EQ(up(), "");
  SetCursorPos(900, 800), pump(10);
  message.message = WM_MOUSEMOVE, send(TTM_RELAYEVENT, 0, message), pump(150);
  EXPECT_EQ(up(), "") << "the pointer isn't there";
}

TEST_F(WinTooltip, AnswersGiveTextsInManyForms) {
  static char own[] = "its own";
  static std::string eighty(80, 'x');
  const auto number = [](NMTTDISPINFOA &info) {
    info.hinst = GetModuleHandleA(nullptr), info.lpszText = MAKEINTRESOURCEA(7);
  };
  struct Row {
    const char *form;
    std::function<void(NMTTDISPINFOA &)> reply;
    std::string shown;
  };
  const Row rows[] = {
      {"pointer", [](NMTTDISPINFOA &info) { info.lpszText = own; }, own},
      {"room", [](NMTTDISPINFOA &info) { std::strcpy(info.szText, "short"); }, "short"},
      {"full room", [](NMTTDISPINFOA &info) { std::memcpy(info.szText, eighty.data(), 80); }, eighty},
      {"number", number, "from the table"},
      {"number of none", [](NMTTDISPINFOA &info) { info.lpszText = MAKEINTRESOURCEA(999); }, ""},
      {"nothing", [](NMTTDISPINFOA &) {}, ""},
      {"null", [](NMTTDISPINFOA &info) { info.lpszText = nullptr; }, ""},
  };
  TTTOOLINFOA info = tool(1, LPSTR_TEXTCALLBACKA, {0, 0, 100, 100});
  info.lParam = 5;
  EXPECT_TRUE(send(TTM_ADDTOOLA, 0, info));
  add(2, MAKEINTRESOURCEA(8), {100, 0, 200, 100});
  for (const Row &row : rows) {
    if (onWine() && std::string(row.form) == "number of none") continue; // it shows what it showed before
    SCOPED_TRACE(row.form);
    reply = [&](NMTTDISPINFOA &asked) {
      EXPECT_TRUE(asked.lpszText == asked.szText && !asked.szText[0] && !asked.hinst);
      EXPECT_EQ(asked.uFlags, UINT{TTF_SUBCLASS});
      EXPECT_EQ(asked.lParam, 5);
      row.reply(asked);
    };
    told.clear(), move(frame, 50, 50), pump(row.shown.empty() ? 150 : 0);
    EXPECT_EQ(await(row.shown), row.shown);
    EXPECT_EQ(told, row.shown.empty() ? "ask 1, " : "ask 1, show 1, ");
    SetCursorPos(900, 800), pump(10), await("");
  }
  reply = [&](NMTTDISPINFOA &asked) { asked.lpszText = own, asked.uFlags |= TTF_DI_SETITEM; };
  EXPECT_EQ(textOf(1), own);
  told.clear();
  EXPECT_EQ(textOf(1), own);
  EXPECT_EQ(told, "") << "it was not to be asked for again";
  if (onWine()) GTEST_SKIP() << "where a number needs the instance";
  EXPECT_EQ(textOf(2), "\x90\x94\x8e\x9a 8");
}

TEST_F(WinTooltip, AmpersandsAndTabsAreForMenus) {
  const char *const text = "&File && &more\tCtrl+F";
  for (const bool plain : {false, true}) {
    renew(TTS_ALWAYSTIP | (plain ? TTS_NOPREFIX : 0)), add(1, text, {0, 0, 100, 100});
    const std::string shown = plain ? text : "File & more";
    SetCursorPos(900, 800), pump(10), move(frame, 50, 50);
    if (onWine()) {
      await(plain ? text : "&File && &more"); // which is drawn without the marks
    } else {
      EXPECT_EQ(await(shown), shown);
    }
    EXPECT_EQ(pairOf(size()), pairOf(expectedSize(shown.c_str(), DT_SINGLELINE))) << plain;
  }
}

TEST_F(WinTooltip, LinesEndWhereAWidthIsSet) {
  const char *const text = "The quick brown fox\njumps over the lazy dog";
  add(1, text, {0, 0, 100, 100});
  EXPECT_EQ(send(TTM_GETMAXTIPWIDTH), -1);
  int before = -1;
  for (const int width : {1000, 100, 40, -1}) {
    SCOPED_TRACE(width);
    EXPECT_EQ(send(TTM_SETMAXTIPWIDTH, 0, LPARAM{width}), before);
    EXPECT_EQ(send(TTM_GETMAXTIPWIDTH), width);
    before = width;
    if (onWine() && width < 0) break; // where lines always end
    move(frame, 50, 50);
    EXPECT_EQ(await(text), text);
    const UINT format = width < 0 ? DT_SINGLELINE : DT_WORDBREAK | DT_EXTERNALLEADING;
    EXPECT_EQ(pairOf(size()), pairOf(expectedSize(text, format, std::max(width, 0))));
    SetCursorPos(900, 800), pump(10), await("");
  }
}

TEST_F(WinTooltip, MarginsAndFontAndColoursAreTheProgramsChoice) {
  TTTOOLINFOA info = add(1, "A tip", {0, 0, 100, 100});
  EXPECT_EQ(send(TTM_GETTIPBKCOLOR), static_cast<LRESULT>(GetSysColor(COLOR_INFOBK)));
  EXPECT_EQ(send(TTM_GETTIPTEXTCOLOR), static_cast<LRESULT>(GetSysColor(COLOR_INFOTEXT)));
  const auto showTip = [&] {
    SetCursorPos(900, 800), pump(10), await(""), move(frame, 50, 50);
    EXPECT_EQ(await("A tip"), "A tip");
    return size();
  };
  const SIZE plain = showTip();
  EXPECT_EQ(pairOf(plain), pairOf(expectedSize("A tip", DT_SINGLELINE)));
  RECT margin = {1, 2, 4, 8}, told{};
  send(TTM_SETMARGIN, 0, margin), send(TTM_GETMARGIN, 0, told);
  EXPECT_EQ(edges(told), edges(margin));
  EXPECT_EQ(pairOf(showTip()), (std::pair{plain.cx + 5, plain.cy + 10}));
  if (!onWine()) { // which has the size of the tip that was up last, and leaves rectangles alone
    EXPECT_EQ(send(TTM_GETBUBBLESIZE, 0, info), MAKELONG(plain.cx + 5, plain.cy + 10));
    RECT rect = {10, 10, 50, 30};
    EXPECT_TRUE(send(TTM_ADJUSTRECT, TRUE, rect));
    EXPECT_EQ(edges(rect), (Edges{6, 5, 57, 41}));
    EXPECT_TRUE(send(TTM_ADJUSTRECT, FALSE, rect));
    EXPECT_EQ(edges(rect), (Edges{10, 10, 50, 30}));
  }
  margin = {}, send(TTM_SETMARGIN, 0, margin);
  LOGFONTA log{};
  log.lfHeight = -30, log.lfCharSet = SHIFTJIS_CHARSET;
  const HFONT font = CreateFontIndirectA(&log);
  send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  EXPECT_EQ(pairOf(showTip()), pairOf(expectedSize("A tip", DT_SINGLELINE)));
  EXPECT_GT(size().cy, plain.cy + 10);
  log = {}, GetObjectA(reinterpret_cast<HFONT>(send(WM_GETFONT)), sizeof log, &log);
  EXPECT_EQ(log.lfHeight, -30);
  send(TTM_SETTIPBKCOLOR, RGB(10, 200, 30)), send(TTM_SETTIPTEXTCOLOR, RGB(200, 0, 250));
  EXPECT_EQ(send(TTM_GETTIPBKCOLOR), RGB(10, 200, 30));
  EXPECT_EQ(send(TTM_GETTIPTEXTCOLOR), RGB(200, 0, 250));
  showTip(), pump(30);
  const HDC dc = GetDCEx(tip, nullptr, DCX_WINDOW);
  EXPECT_EQ(GetPixel(dc, 1, 1), RGB(10, 200, 30)) << "the ground";
  int letters = 0;
  for (int y = 1; y < size().cy - 1; ++y)
    for (int x = 1; x < size().cx - 1; ++x) letters += GetPixel(dc, x, y) == RGB(200, 0, 250);
  EXPECT_GT(letters, 20);
  const LONG farX = size().cx - 1, farY = size().cy - 1;
  for (const POINT corner : {POINT{0, 0}, POINT{farX, 0}, POINT{0, farY}, POINT{farX, farY}}) {
    if (onWine()) break; // where the frame isn't among the window's own pixels
    EXPECT_EQ(GetPixel(dc, corner.x, corner.y), GetSysColor(COLOR_WINDOWFRAME)) << corner.x << " " << corner.y;
  }
  ReleaseDC(tip, dc);
  send(WM_SETFONT), DeleteObject(font);
}

TEST_F(WinTooltip, StandsBesideThePointerOnTheScreen) {
  const LONG right = GetSystemMetrics(SM_CXSCREEN), bottom = GetSystemMetrics(SM_CYSCREEN);
  SetWindowPos(frame, nullptr, 0, 0, right, bottom, SWP_NOZORDER);
  add(1, "A tip", {0, 0, right, bottom - 40}), add(2, "A tip", {0, bottom - 20, right, bottom});
  const auto shownAt = [&](int x, int y) {
    send(TTM_POP), SetCursorPos(x, y);
    EXPECT_EQ(await("A tip"), "A tip") << x << " " << y;
    return place();
  };
  RECT rect = shownAt(500, 300);
  EXPECT_EQ(rect.left, 499) << "below the arrow";
  EXPECT_EQ(rect.top, 319);
  for (const POINT point : {POINT{right - 1, 300}, POINT{right - 1, bottom - 1}, POINT{500, bottom - 1}}) {
    rect = shownAt(point.x, point.y);
    EXPECT_TRUE(rect.right <= right && rect.bottom <= bottom) << rectText(rect);
    EXPECT_TRUE(rect.top > point.y || rect.bottom <= point.y) << "the pointer is free: " << rectText(rect);
  }
  if (!onWine()) { // where it stands a pixel beyond the left side, and high tips stand far above the screen
    EXPECT_EQ(shownAt(0, 300).left, 0);
    const std::string high = "A tip" + std::string(200, '\n') + "!";
    send(TTM_SETMAXTIPWIDTH, 0, 10);
    TTTOOLINFOA info = tool(1, high.c_str());
    send(TTM_UPDATETIPTEXTA, 0, info), send(TTM_POP), SetCursorPos(500, 300);
    EXPECT_EQ(await(high), high);
    EXPECT_EQ(place().top, 0);
    EXPECT_EQ(place().bottom, bottom);
  }
}

TEST_F(WinTooltip, StandsBelowTheMiddleOfATool) {
  const HWND child = make("C", WS_CHILD | WS_VISIBLE, 150, 50, 100, 50, frame);
  add(1, "A tip", {0, 0, 100, 50}, TTF_SUBCLASS | TTF_CENTERTIP);
  add(reinterpret_cast<UINT_PTR>(child), "A tip", {}, TTF_SUBCLASS | TTF_CENTERTIP | TTF_IDISHWND);
  move(frame, 5, 5);
  EXPECT_EQ(await("A tip"), "A tip");
  EXPECT_EQ(place().left, 250 - size().cx / 2);
  EXPECT_EQ(place().top, 251);
  send(TTM_POP), move(child, 5, 5);
  EXPECT_EQ(await("A tip"), "A tip");
  EXPECT_EQ(place().left, 400 - size().cx / 2);
  EXPECT_EQ(place().top, 301);
  send(TTM_POP), SetWindowPos(frame, nullptr, 200, GetSystemMetrics(SM_CYSCREEN) - 105, 0, 0, SWP_NOSIZE);
  pump(10), move(child, 6, 6);
  EXPECT_EQ(await("A tip"), "A tip");
  EXPECT_EQ(place().bottom, GetSystemMetrics(SM_CYSCREEN) - 105 + 50 - 1) << "or above it";
}

TEST_F(WinTooltip, IsHeldWhereTheProgramWantsIt) {
  TTTOOLINFOA held = add(1, "held", {0, 0, 100, 100}, TTF_TRACK | TTF_ABSOLUTE | TTF_SUBCLASS);
  TTTOOLINFOA other = add(2, "other", {}, TTF_TRACK | TTF_ABSOLUTE | TTF_CENTERTIP);
  if (!onWine()) { // where the pointer brings it too
    move(frame, 50, 50), pump(150);
    EXPECT_EQ(up(), "");
  }
  SetCursorPos(900, 800), pump(10), told.clear();
  send(TTM_TRACKPOSITION, 0, MAKELPARAM(500, 400)), send(TTM_TRACKACTIVATE, TRUE, held);
  EXPECT_EQ(up(), "held");
  EXPECT_EQ(edges(place()), (Edges{499, 399, 499 + size().cx, 399 + size().cy}));
  EXPECT_EQ(told, "show 1, ");
  send(TTM_TRACKPOSITION, 0, MAKELPARAM(600, 300));
  EXPECT_EQ(place().left, 599);
  EXPECT_EQ(place().top, 299);
  move(frame, 50, 50), pump(150), move(frame, 51, 50), pump(50);
  if (!onWine()) click(), pump(50); // which takes it down there
  EXPECT_EQ(up(), "held") << "whatever the mouse does";
  send(TTM_TRACKPOSITION, 0, MAKELPARAM(GetSystemMetrics(SM_CXSCREEN) - 1, 20000));
  EXPECT_LE(place().right, GetSystemMetrics(SM_CXSCREEN));
  EXPECT_LE(place().bottom, GetSystemMetrics(SM_CYSCREEN));
  send(TTM_TRACKPOSITION, 0, MAKELPARAM(500, 400)), told.clear(), send(TTM_TRACKACTIVATE, TRUE, other);
  EXPECT_EQ(up(), "other");
  EXPECT_EQ(told, onWine() ? "show 2, " : "pop 1, show 2, ") << "the window hears the end of every tip";
  EXPECT_EQ(place().left, 500 - size().cx / 2);
  EXPECT_EQ(place().top, 400 - size().cy / 2);
  send(TTM_TRACKACTIVATE, FALSE, other);
  EXPECT_EQ(up(), "");
  if (onWine()) GTEST_SKIP() << "where a held tip keeps its text and place, and a negative place is a large one";
  send(TTM_TRACKPOSITION, 0, MAKELPARAM(-50, -20)), send(TTM_TRACKACTIVATE, TRUE, held);
  EXPECT_EQ(edges(place()), (Edges{0, 0, size().cx, size().cy}));
  TTTOOLINFOA current = tool(0, nullptr);
  EXPECT_TRUE(send(TTM_GETCURRENTTOOLA, 0, current));
  EXPECT_EQ(current.uId, 1u);
  held.lpszText = const_cast<char *>("with another text"), send(TTM_UPDATETIPTEXTA, 0, held);
  EXPECT_EQ(up(), "with another text");
  EXPECT_EQ(pairOf(size()), pairOf(expectedSize("with another text", DT_SINGLELINE)));
  for (const UINT message : {TTM_POP, TTM_ACTIVATE, TTM_DELTOOLA}) {
    send(TTM_TRACKACTIVATE, TRUE, held);
    EXPECT_EQ(up(), "with another text");
    if (message == TTM_DELTOOLA)
      send(message, 0, held);
    else
      send(message);
    EXPECT_EQ(up(), "") << message - WM_USER;
  }
}

TEST_F(WinTooltip, ChangesWhileItIsUp) {
  TTTOOLINFOA info = add(1, "first", {0, 0, 100, 100});
  add(2, "second", {0, 0, 200, 200});
  move(frame, 50, 50);
  EXPECT_EQ(await("first"), "first");
  info.lpszText = const_cast<char *>("first, longer"), send(TTM_UPDATETIPTEXTA, 0, info);
  EXPECT_EQ(up(), "first, longer");
  EXPECT_EQ(pairOf(size()), pairOf(expectedSize("first, longer", DT_SINGLELINE)));
  info.lpszText = const_cast<char *>("set"), send(TTM_SETTOOLINFOA, 0, info);
  EXPECT_EQ(up(), "set");
  EXPECT_EQ(std::exchange(told, ""), "show 1, show 1, show 1, ");
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
  add(1, LPSTR_TEXTCALLBACKA, {0, 0, 100, 100});
  move(frame, 50, 50);
  EXPECT_EQ(await("asked"), "asked");
  EXPECT_EQ(std::exchange(told, ""), without("RELAY 0, TIMER, ask 1, show 1, SHOW, PAINT, "));
  answer = [this, before = answer](HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT &result) {
    if (message == WM_LBUTTONDOWN) told += "press, ";
    return before(window, message, wParam, lParam, result);
  };
  click(), pump(20);
  EXPECT_EQ(told, without("RELAY 1, pop 1, HIDE, press, RELAY 2, ")) << "before the window itself hears of it";
}

TEST_F(WinTooltip, LetsThePointerThrough) {
  add(1, "A tip", {0, 0, 400, 300});
  move(frame, 50, 50);
  EXPECT_EQ(await("A tip"), "A tip");
  if (onWine()) GTEST_SKIP() << "where a tip takes part in input";
  const POINT inside = {place().left + 5, place().top + 5};
  EXPECT_EQ(SendMessageA(tip, WM_NCHITTEST, 0, MAKELPARAM(inside.x, inside.y)), HTTRANSPARENT);
  EXPECT_EQ(WindowFromPoint(inside), frame);
  record("M"), SetCursorPos(inside.x, inside.y);
  EXPECT_EQ(pump(), "F< MOUSE " + std::to_string(inside.x - 200) + "," + std::to_string(inside.y - 200));
  SetForegroundWindow(frame), ShowWindow(frame, SW_HIDE);
  EXPECT_NE(GetActiveWindow(), tip);
}

// The program may do anything when it is asked or told.
TEST_F(WinTooltip, ToolsAndTipsMayGoInTheMiddle) {
  if (onWine()) GTEST_SKIP() << "which doesn't bear it";
  HWND other{};
  const std::pair<const char *, std::function<void()>> acts[] = {{"tool deleted",
                                                                  [&] {
                                                                    TTTOOLINFOA info = tool(1, "");
                                                                    info.hwnd = other, send(TTM_DELTOOLA, 0, info);
                                                                  }},
                                                                 {"popped", [&] { send(TTM_POP); }},
                                                                 {"switched off", [&] { send(TTM_ACTIVATE, FALSE); }},
                                                                 {"tip destroyed", [&] { DestroyWindow(tip); }},
                                                                 {"window destroyed", [&] { DestroyWindow(other); }}};
  for (const UINT code : {TTN_NEEDTEXTA, TTN_SHOW, TTN_POP})
    for (const auto &[what, act] : acts) {
      SCOPED_TRACE(std::to_string(static_cast<int>(code)) + " " + what);
      renew(TTS_ALWAYSTIP, 10), other = make("H", WS_POPUP | WS_VISIBLE, 300, 200, 200, 200);
      TTTOOLINFOA info = tool(1, LPSTR_TEXTCALLBACKA, {0, 0, 100, 100});
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
  add(1, LPSTR_TEXTCALLBACKA, {0, 0, 100, 100});
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
    answer = before, move(frame, 51, 50);
    EXPECT_EQ(await("asked"), "asked");
  }
}
