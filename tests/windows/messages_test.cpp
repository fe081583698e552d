// What becomes of each message of a window object's window, the library's own messages, the end of windows, and what
// sends, posts and dispatches.

#include "windows/objects.h"

#include <map>
#include <set>

namespace {

// clang-format off
const std::map<uint32_t, const char *> kNames = {
    {WM_DESTROY, "destroy"}, {WM_SIZE, "size"}, {WM_SIZING, "sizing"}, {WM_CONTEXTMENU, "menu"},
    {WM_KEYDOWN, "keydown"}, {WM_KEYUP, "keyup"}, {WM_MOUSEMOVE, "move"}, {WM_LBUTTONDOWN, "ldown"},
    {WM_LBUTTONUP, "lup"}, {WM_TIMER, "timer"}, {WM_RBUTTONDOWN, "rdown"}, {WM_MOUSEWHEEL, "!"},
    {WM_GETMINMAXINFO, "!"}, {WM_PAINT, "!"}, {WM_GETTEXTLENGTH, "text"}, {WM_NCDESTROY, "!"}, {WM_APP, "app"},
    {WM_NOTIFY, "notify"}, {WQM_LAYOUT, "LAYOUT"}, {WQM_CHILD_DESTROYED, "END"}, {WQM_COMMAND, "COMMAND"},
    {WQM_MOUSE, "MOUSE"}, {WQM_CONTEXT, "CONTEXT"}, {WQM_KEY, "KEY"}, {WQM_MOUSE_MOVED, "MOVED"},
    {WQM_BUTTON_DOWN, "DOWN"}, {WQM_WHEEL, "WHEEL"}};
// clang-format on

std::string numbers(std::initializer_list<int64_t> values) {
  std::string text;
  for (const int64_t value : values) text += (text.empty() ? " " : ",") + std::to_string(value);
  return text;
}

// What a message carries that a number alone doesn't tell.
std::string carried(const WqMsg &msg) {
  const auto word = static_cast<int64_t>(msg.wParam), from = static_cast<int64_t>(msg.lParam);
  const auto *point = reinterpret_cast<const POINT *>(msg.msg == WQM_MOUSE ? from : word);
  const auto *wheel = reinterpret_cast<const WqWheel *>(msg.wParam);
  if (msg.msg == WQM_LAYOUT) return msg.wParam == reinterpret_cast<WPARAM>(msg.hwnd) ? " self" : "";
  if (msg.msg == WQM_MOUSE) return numbers({word, point->x, point->y, GetCapture() == msg.hwnd});
  if (msg.msg == WQM_CONTEXT) return numbers({point->x, point->y, from});
  if (msg.msg == WQM_WHEEL) return numbers({wheel->notches, wheel->x, wheel->y, wheel->keys, from});
  return msg.msg == WQM_KEY || msg.msg == WQM_MOUSE_MOVED ? numbers({word, from}) : "";
}

// Objects with one letter each, whose user procedures write down the messages above.
class MessagesTest : public ObjectTest {
 protected:
  Window &logged(char letter, WqWnd *parent, RECT rect, On first = nullptr) {
    Window &wnd = made(parent, rect);
    wnd.on = [this, letter, first, &wnd](const WqMsg &msg) {
      const auto name = kNames.find(msg.msg);
      const auto answer = answers.find({letter, msg.msg});
      if (name != kNames.end()) log += (log.empty() ? "" : " ") + (letter + (':' + (name->second + carried(msg))));
      if (first) first(msg);
      return answer != answers.end() ? (wnd.result = answer->second, 1) : 0;
    };
    return wnd;
  }
  std::string take() { return std::exchange(log, ""); }

  std::string log;
  std::map<std::pair<char, uint32_t>, int32_t> answers; // of the user procedures that handle a message
};

} // namespace

TEST_F(MessagesTest, EachMessageGoesItsWay) {
  Window &main = logged('m', nullptr, {0, 0, 50, 50}), &wnd = logged('w', nullptr, {100, 100, 300, 200});
  WqWnd_Title(&wnd, "title"), SetCursorPos(150, 130), WqWnd_WaitQueEmpty(), WqMain_Config(main.hwnd);
  RECT sizing = {100, 100, 300, 200};
  MINMAXINFO limits = {};
  NMHDR notice = {wnd.hwnd, 1, 1};
  const auto self = reinterpret_cast<WPARAM>(wnd.hwnd), other = reinterpret_cast<WPARAM>(main.hwnd);
  const LPARAM onSizing = reinterpret_cast<LPARAM>(&sizing), point = MAKELPARAM(static_cast<WORD>(-5), 7);
  const auto delta = [](int value) { return MAKEWPARAM(MK_CONTROL | MK_SHIFT, static_cast<WORD>(value)); };
  // clang-format off
  const char *const all = "all", *const first = "first", *const unseen = "unseen"; // of the log, once it is handled
  const struct { uint32_t msg; WPARAM wParam; LPARAM lParam; LRESULT answer; std::string log, handled; } rows[] = {
      {WM_SIZE, SIZE_RESTORED, 0, 1, "w:size w:LAYOUT self", first}, {WM_SIZE, SIZE_MINIMIZED, 0, 1, "w:size", first},
      {WM_SIZE, SIZE_MAXIMIZED, 0, 1, "w:size w:LAYOUT self", first}, {WM_SIZING, 1, onSizing, 1, "w:sizing", first},
      {WM_SIZING, 2, onSizing, 1, "w:sizing w:LAYOUT self", first}, {WM_ERASEBKGND, 0, 0, 1, "", all},
      {WM_CONTEXTMENU, self, point, 0, "w:menu w:CONTEXT -5,7,0", first},
      {WM_KEYDOWN, 'A', 1, 0, "w:keydown m:KEY 65,0", first}, {WM_MOUSEMOVE, 0, 9, 0, "m:MOVED 768,0 w:move", all},
      {WM_LBUTTONDOWN, 0, 9, 0, "m:DOWN w:MOUSE 1,50,30,0 w:ldown", all}, {WM_LBUTTONUP, 0, 9, 0, "w:lup", all},
      {WM_RBUTTONDOWN, 0, 9, 0, "w:rdown", all}, {WM_MOUSEWHEEL, delta(120), point, 0, "m:WHEEL -1,-5,7,12,0", unseen},
      {WM_MOUSEWHEEL, delta(60), point, 0, "m:WHEEL 0,-5,7,12,0", unseen},
      {WM_MOUSEWHEEL, delta(-240), 0, 0, "m:WHEEL 2,0,0,12,0", unseen},
      {WM_MOUSEWHEEL, delta(-239), 0, 0, "m:WHEEL 1,0,0,12,0", unseen},
      {WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits), 0, "", unseen}, {WM_PAINT, 0, 0, 0, "", unseen},
      {WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&notice), 0, "w:notify", all}, {WM_GETTEXTLENGTH, 0, 0, 5, "w:text", all},
      {WQM_MOUSE, WQ_MOUSE_DRAG, onSizing, 0, "w:MOUSE 2,100,100,0", all}, {WQM_LAYOUT, self, 0, 0, "w:LAYOUT self", all},
      {WQM_LAYOUT, other, 0, 0, "w:LAYOUT", all}};
  // clang-format on
  for (const auto &row : rows) {
    const auto send = [&] {
      const LRESULT answer = SendMessageA(wnd.hwnd, row.msg, row.wParam, row.lParam);
      ValidateRect(wnd.hwnd, nullptr), WqWnd_WaitQueEmpty();
      return std::pair(answer, take());
    };
    take(), answers.clear();
    EXPECT_EQ(send(), std::pair(row.answer, row.log));
    answers[{'w', row.msg}] = 77;
    EXPECT_EQ(send(), std::pair(row.handled == unseen ? row.answer : 77,
                                row.handled == first ? row.log.substr(0, row.log.find(' ')) : row.log))
        << row.log << ": handled by the user procedure";
  }
  answers = {{{'w', WQM_CONTEXT}, 5}, {{'m', WQM_KEY}, 5}};
  EXPECT_EQ(SendMessageA(wnd.hwnd, WM_CONTEXTMENU, self, 0), 1);
  EXPECT_EQ(SendMessageA(wnd.hwnd, WM_KEYDOWN, 'B', 1), 1);
  for (const WPARAM teller : {self, WPARAM{0}, other}) {
    wnd.rect = {100, 100, 300, 200}, wnd.maxRect = {100, 100, 310, 200};
    SendMessageA(wnd.hwnd, WQM_LAYOUT, teller, 0);
    EXPECT_EQ(wnd.rect.right, teller == self ? 300 : 310) << "laid out unless the size has changed already";
  }
  answers.clear(), take(), SendMessageA(main.hwnd, WM_MOUSEMOVE, 0, 0);
  wqMain.mainWnd = nullptr, SendMessageA(wnd.hwnd, WM_MOUSEMOVE, 0, 0), SendMessageA(wnd.hwnd, WM_MOUSEWHEEL, 0, 0);
  EXPECT_EQ(take(), "m:MOVED 768,0 m:move w:move") << "from the main window itself, and without one";
}

TEST_F(MessagesTest, KeysAndTheMouseComeFromTheUser) {
  Window &main = logged('m', nullptr, {0, 0, 50, 50}), &wnd = logged('w', nullptr, {100, 100, 300, 200});
  const std::function<void()> down = [] { mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0); };
  const auto up = [] { mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0); };
  const auto key = [](BYTE code, DWORD flags = 0) { keybd_event(code, 0, flags, 0); };
  SetCursorPos(900, 700), SetForegroundWindow(wnd.hwnd), SetFocus(wnd.hwnd), WqMain_Config(main.hwnd);
  WqWnd_WaitQueEmpty(), take();
  // clang-format off
  const std::pair<std::function<void()>, std::string> rows[] = {
      {[] { SetCursorPos(150, 130); }, "m:MOVED 768,0 w:move"}, {down, "m:DOWN w:MOUSE 1,50,30,0 w:ldown"},
      {[] { SetCursorPos(160, 140); }, "m:MOVED 768,0 w:move"}, {up, "w:lup"}, // no drag, no release
      {[&] { answers[{'w', WQM_MOUSE}] = 3, down(); }, "m:DOWN w:MOUSE 1,60,40,0 w:ldown"},
      {[] { SetCursorPos(400, 90); }, "w:MOUSE 2,300,-10,1 m:MOVED 768,0 w:move"}, {up, "w:MOUSE 0,300,-10,0 w:lup"},
      {[&] { key(VK_CONTROL), key(VK_SHIFT); }, "w:keydown m:KEY 17,1 w:keydown m:KEY 16,3"},
      {[&] { key(VK_SHIFT, KEYEVENTF_KEYUP), key(VK_CONTROL, KEYEVENTF_KEYUP); }, "w:keyup w:keyup"}};
  // clang-format on
  for (const auto &[act, expected] : rows) {
    act();
    for (int i = 0; i < 2000 && log.size() < expected.size(); ++i) Sleep(1), WqWnd_WaitQueEmpty();
    EXPECT_EQ(take(), expected);
  }
}

TEST_F(MessagesTest, SizeLimitsAreWidthAndHeight) {
  Window &wnd = made(nullptr, {0, 0, 50, 50});
  // clang-format off
  const std::tuple<RECT, RECT, Edges> rows[] = { // the largest, the smallest; 7 as before
      {{100, 100, 150, 170}, {10, 10, 10, 50}, {50, 70, 7, 7}}, {{9, 9, 50, 5}, {20, 10, 50, 60}, {7, 7, 30, 50}}};
  // clang-format on
  for (const auto &[max, min, expected] : rows) {
    MINMAXINFO limits = {{}, {}, {}, {7, 7}, {7, 7}};
    const POINT &least = limits.ptMinTrackSize, &most = limits.ptMaxTrackSize;
    wnd.maxRect = max, wnd.minRect = min;
    SendMessageA(wnd.hwnd, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_EQ((Edges{most.x, most.y, least.x, least.y}), expected);
  }
}

TEST_F(MessagesTest, AWindowEndsInOrder) {
  Window *child = nullptr, *parent = nullptr;
  HWND hwnd = nullptr;
  const auto ties = [&] { // of parent and child
    return std::tuple(parent->dependants != nullptr, child->dependants != nullptr, child->msgReq, child->hwnd == hwnd);
  };
  parent = &logged('p', nullptr, {0, 0, 100, 100}, [&](const WqMsg &msg) {
    if (msg.msg != WQM_CHILD_DESTROYED) return 0;
    EXPECT_EQ(std::tuple(msg.wParam, msg.lParam), std::tuple(reinterpret_cast<WPARAM>(child), LPARAM{0x40000012}));
    EXPECT_EQ(ties(), std::tuple(true, true, 3u, true));
    return 0;
  });
  child = &logged('c', parent, {0, 0, 50, 50}, [&](const WqMsg &msg) {
    if (msg.msg != WM_DESTROY) return 0;
    EXPECT_EQ(ties(), std::tuple(false, false, 0u, true));
    EXPECT_EQ(SendMessageA(hwnd, WM_APP, 0, 0), 0) << "reaches nobody";
    return 0;
  });
  Window &inner = logged('i', child, {0, 0, 20, 20});
  hwnd = child->hwnd, WqWnd_SetMsgReq(&inner, 1);
  WqWnd_ID(child, 0x12), WqWnd_SetMsgReq(child, 3), WqWnd_SetMsgReq(child, 3);
  EXPECT_EQ(SendMessageA(hwnd, WM_DESTROY, 0, 0), 1);
  EXPECT_TRUE(!child->hwnd && IsWindow(hwnd));
  WqWnd_ID(parent, WQ_ID_QUIT), DestroyWindow(hwnd), DestroyWindow(parent->hwnd);
  EXPECT_EQ(take(), "p:END c:destroy i:destroy p:destroy") << "the parent of i has no window any more";
  MSG msg = {};
  EXPECT_TRUE(PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) && msg.wParam == 0);
}

TEST_F(MessagesTest, RecordsAreSentAndPostedAndTheLoopEnds) {
  WqCmd cmd, nowhere;
  std::vector<std::pair<WPARAM, LPARAM>> carried;
  Window &wnd = logged('w', nullptr, {0, 0, 50, 50}, [&](const WqMsg &msg) {
    if (msg.msg == WQM_COMMAND || msg.msg == WM_APP) carried.emplace_back(msg.wParam, msg.lParam);
    return msg.msg == WM_KEYUP && DestroyWindow(msg.hwnd);
  });
  WqMsg msg;
  WqMsg_Set(&msg, wnd.hwnd, WM_APP, 1, 2), WqMsg_Term(&msg), WqCmd_Init(&cmd, wnd.hwnd), WqCmd_Init(&nowhere, nullptr);
  EXPECT_EQ(std::tuple(cmd.target, cmd.words[0], cmd.words[2]), std::tuple(wnd.hwnd, 0u, 0u));
  answers[{'w', WM_APP}] = -3, WqWnd_WaitQueEmpty(), take();
  EXPECT_EQ(WqMsg_Send(&msg), -3);
  WqCmd_Send(&cmd), WqCmd_Send(&nowhere);
  EXPECT_EQ(take(), "w:app w:COMMAND");
  EXPECT_TRUE(WqMsg_Post(&msg));
  WqCmd_Post(&cmd), WqCmd_Post(&nowhere), WqWnd_WaitQueEmpty();
  EXPECT_EQ(take(), "w:app w:COMMAND");
  const std::pair app(WPARAM{1}, LPARAM{2}), command(reinterpret_cast<WPARAM>(&cmd), LPARAM{0});
  EXPECT_EQ(carried, (std::vector{app, command, app, command}));

  WqMsgLp loop = {9};
  WqMsgLp_Init(&loop), WqMsgLp_Stop(&loop), WqMsgLp_LoadAccel(&loop, 1);
  EXPECT_EQ(loop.unused, 0u);
  WqWnd_ID(&wnd, WQ_ID_QUIT), WqMsg_Post(&msg), PostMessageA(wnd.hwnd, WM_KEYUP, 'A', 1), WqCmd_Post(&cmd);
  WqMsgLp_Start(&loop), WqMsgLp_Term(&loop);
  EXPECT_EQ(take(), "w:app w:keyup w:destroy") << "the end of the window drops what is still posted to it";
  WqCmd_Term(&cmd), WqMsg_Init(&msg);
  EXPECT_EQ(std::tuple(cmd.target, cmd.words[2], msg.hwnd, msg.msg), std::tuple(nullptr, 0u, nullptr, 0u));
  EXPECT_EQ(std::tuple(msg.wParam, msg.lParam, WqMsg_Send(&msg)), std::tuple(0u, 0, 0));
}

TEST_F(MessagesTest, DrainingDropsWhatItIsTold) {
  Window &wnd = logged('w', nullptr, {0, 0, 50, 50}, [](const WqMsg &msg) { // what comes meanwhile is dispatched too
    return msg.msg == WM_APP && msg.wParam == 1 && PostMessageA(msg.hwnd, WM_APP, 2, 0);
  });
  // clang-format off
  const std::pair<std::function<void()>, std::string> rows[] = {
      {WqWnd_WaitQueEmpty, "w:app w:keyup w:timer w:timer w:app"},
      {[] { WqWnd_RemoveQueMsg(WM_APP); }, "w:keyup w:timer w:timer"},
      {[] { WqWnd_RemoveQueMsg(WM_PAINT); }, "w:app w:keyup w:timer w:timer w:app"},
      {[] { WqWnd_RemoveQueTimerMsg(5); }, "w:app w:keyup w:timer w:app"}};
  // clang-format on
  WqWnd_WaitQueEmpty();
  for (const auto &[drain, expected] : rows) {
    PostMessageA(wnd.hwnd, WM_APP, 1, 0), PostMessageA(wnd.hwnd, WM_KEYUP, 5, 0),
        PostMessageA(wnd.hwnd, WM_TIMER, 5, 0);
    PostMessageA(wnd.hwnd, WM_TIMER, 6, 0), take(), InvalidateRect(wnd.hwnd, nullptr, FALSE), drain();
    EXPECT_EQ(take(), expected);
    MSG msg;
    PostQuitMessage(0), drain();
    EXPECT_FALSE(GetUpdateRect(wnd.hwnd, nullptr, FALSE));
    EXPECT_FALSE(PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) << "no WM_QUIT";
  }
}

// A first run collects which object's user procedure sees which messages; then each of them ends each of the windows.
TEST_F(MessagesTest, AnyWindowMayEndInsideAnyMessage) {
  using Seen = std::pair<size_t, uint32_t>;
  std::set<Seen> seen;
  size_t ends = 0;
  const auto play = [&](const Seen *place, size_t victim) {
    Window *all[3]; // parent, child, sibling
    bool over[3] = {}, done = !place;
    for (size_t i = 0; i < 3; ++i) {
      all[i] = &object(i ? all[0] : nullptr, {0, 0, 99, 79}, [&, i](const WqMsg &msg) {
        EXPECT_FALSE(over[i]) << "after the last word";
        if (msg.msg == WM_DESTROY) over[i] = true;
        if (!place) seen.insert({i, msg.msg});
        if (!done && *place == Seen{i, msg.msg} && (done = true, ++ends, all[victim]->hwnd))
          DestroyWindow(all[victim]->hwnd);
        return 0;
      });
      WqWnd_SnapL(all[i], i == 2 ? all[1] : nullptr), WqWnd_SnapR(all[i], nullptr);
    }
    for (Window *wnd : all) WqWnd_Show(wnd, 1);
    const RECT larger = {10, 10, 210, 110};
    wqMain.mainWnd = all[0]->hwnd, SetWindowPos(all[0]->hwnd, nullptr, 5, 5, 120, 90, 0), WqWnd_WaitQueEmpty();
    WqWnd_Resize(all[0], &larger), WqWnd_Focus(all[1]), WqWnd_Update(all[1]);
    for (const UINT number : {WM_SIZE, WM_ERASEBKGND, WM_CONTEXTMENU, WM_KEYDOWN, WM_LBUTTONDOWN, WM_MOUSEMOVE,
                              WM_LBUTTONUP, WM_MOUSEWHEEL, WM_CLOSE})
      if (HWND hwnd = all[1]->hwnd) SendMessageA(hwnd, number, 0, 0);
    WqWnd_Show(all[2], 0), WqWnd_Show(all[0], 0), endAll();
    for (const Window *wnd : all) EXPECT_EQ(wnd->hwnd, nullptr);
  };
  SetCursorPos(900, 700), play(nullptr, 0);
  for (const Seen &place : std::set(seen))
    for (size_t victim = 0; victim < 3; ++victim) {
      SCOPED_TRACE(numbers({static_cast<int>(place.first), place.second, static_cast<int>(victim)}));
      play(&place, victim);
    }
  EXPECT_GE(ends, 90u);
}
