// The library's tooltip: where tips get their texts, when they go, and which windows are tools.

#include "support/desktop.h"
#include "support/input.h"
#include "windows/objects.h"

#include <cstring>

namespace {

class WqTooltipTest : public ObjectTest {
 protected:
  Window *main = nullptr;

  void SetUp() override {
    ObjectTest::SetUp();
    SetCursorPos(900, 700);
    main = &made(nullptr, {100, 100, 500, 400});
    WqMain_Config(main->hwnd);
    SendMessageA(wqMain.tooltip.hwnd, TTM_SETDELAYTIME, TTDT_INITIAL, 30);
    SendMessageA(wqMain.tooltip.hwnd, TTM_SETDELAYTIME, TTDT_RESHOW, 30);
  }

  // Gives the answer to a window that is asked for its text, and no other answer.
  static On giving(std::function<void(NMTTDISPINFOA *)> give) {
    return [give = std::move(give)](const WqMsg &msg) {
      auto *info = reinterpret_cast<NMTTDISPINFOA *>(msg.lParam);
      if (msg.msg != WM_NOTIFY || info->hdr.code != TTN_NEEDTEXTA) return 0;
      give(info);
      return 1;
    };
  }
  static LRESULT tools() { return SendMessageA(wqMain.tooltip.hwnd, TTM_GETTOOLCOUNT, 0, 0); }

  // The text of the tip that is up; nothing without one.
  static std::string up() {
    char text[300] = "";
    if (IsWindowVisible(wqMain.tooltip.hwnd)) GetWindowTextA(wqMain.tooltip.hwnd, text, sizeof text);
    return text;
  }
  // The same, as soon as it is this one, or after two seconds.
  static std::string await(const std::string &text) {
    for (const DWORD start = GetTickCount(); up() != text && GetTickCount() - start < 2000; Sleep(1))
      WqWnd_WaitQueEmpty();
    return up();
  }
  static void serve(DWORD milliseconds) {
    for (const DWORD start = GetTickCount(); GetTickCount() - start < milliseconds; Sleep(1)) WqWnd_WaitQueEmpty();
  }
  // Puts the pointer there, from outside.
  static void enter(HWND window, int x, int y) {
    SetCursorPos(900, 700), await(""), serve(20);
    move(window, x, y);
  }
};

} // namespace

TEST_F(WqTooltipTest, TheTitleComesUpUnlessTheWindowGivesATextOfItsOwn) {
  Window &titled = made(main, {0, 0, 100, 100}), &own = made(main, {100, 0, 200, 100});
  for (const auto &[title, tip] : {std::pair("A title", "A title"), {"&File && more", "File && more"}}) {
    WqWnd_Title(&titled, title), SetWindowTextA(titled.hwnd, title);
    enter(titled.hwnd, 50, 50);
    EXPECT_EQ(await(tip), tip);
  }
  SetWindowTextA(own.hwnd, "its title");
  own.on = giving([](NMTTDISPINFOA *info) { WqTooltip_SetText(info, "its text"); });
  move(own.hwnd, 50, 50);
  EXPECT_EQ(await("its text"), "its text") << "from one window to the next";
  own.on = giving([](NMTTDISPINFOA *info) { WqTooltip_SetText(info, ""); });
  enter(own.hwnd, 50, 50), serve(150);
  EXPECT_EQ(up(), "") << "an empty text";
}

// Whatever they are given, the text fits the record and is terminated.
TEST_F(WqTooltipTest, TextsAreCutAtTheBuffer) {
  const std::string longText(300, 'x'), kanji = "\x8A\xBF"; // one character
  std::string pairs = "x";
  while (pairs.size() < 300) pairs += kanji + kanji;
  const std::string cutPairs = pairs.substr(0, 255); // an odd number: whole characters
  const HINSTANCE here = GetModuleHandleA(nullptr);
  NMTTDISPINFOA info = {};
  const auto given = [&](const std::function<void()> &give) {
    std::memset(wqMain.tooltip.text, 'z', sizeof wqMain.tooltip.text), info.lpszText = nullptr;
    give();
    return std::string(info.lpszText ? info.lpszText : "nothing");
  };
  const std::pair<std::function<void()>, std::string> rows[] = {
      {[&] { WqTooltip_SetText(&info, "short"); }, "short"},
      {[&] { WqTooltip_SetText(&info, longText.c_str()); }, longText.substr(0, 255)},
      {[&] { WqTooltip_Printf(&info, "%s: %d", "peak", -3); }, "peak: -3"},
      {[&] { WqTooltip_Printf(&info, "%s", longText.c_str()); }, longText.substr(0, 255)},
      {[&] { WqTooltip_Printf(&info, "%s", pairs.c_str()); }, cutPairs},
      {[&] { WqTooltip_Printf(&info, "x%s", pairs.c_str()); }, "x" + pairs.substr(0, 253)}, // not by half
      {[&] { WqTooltip_WindowText(&info, main->hwnd); }, longText.substr(0, 255)}};
  SetWindowTextA(main->hwnd, longText.c_str());
  for (const auto &[give, text] : rows) EXPECT_EQ(given(give), text);
  SetWindowTextA(main->hwnd, "");
  EXPECT_EQ(given([&] { WqTooltip_WindowText(&info, main->hwnd); }), "");
  EXPECT_EQ(info.lpszText, wqMain.tooltip.text);

  const auto loaded = [&](HINSTANCE instance, uint32_t id) {
    int result = 7;
    const std::string text = given([&] { result = WqTooltip_LoadString(&info, instance, id); });
    return std::to_string(result) + ' ' + text;
  };
  EXPECT_EQ(loaded(nullptr, 7), "0 ") << "nobody has told an instance";
  EXPECT_EQ(info.lpszText, wqMain.tooltip.text);
  EXPECT_EQ(loaded(here, 7), "1 from the table");
  WqTooltip_StrResInst(here);
  EXPECT_EQ(loaded(nullptr, 7), "1 from the table");
  EXPECT_EQ(loaded(nullptr, 9999), "0 ");
}

TEST_F(WqTooltipTest, TipsGoWhenThePointerLeavesTheBoxOfADoubleClick) {
  const int width = GetSystemMetrics(SM_CXDOUBLECLK), height = GetSystemMetrics(SM_CYDOUBLECLK);
  WqTooltip_AddWnd(main), SetWindowTextA(main->hwnd, "A tip");
  const std::tuple<int, int, bool> rows[] = {
      // where the pointer goes, and whether the tip stays
      {width - 1, 0, true}, {1 - width, 1 - height, true}, {width, 0, false},     {-width, 0, false},
      {0, height, false},   {0, -height, false},           {width, height, false}};
  for (const auto &[dx, dy, stays] : rows) {
    SCOPED_TRACE(std::to_string(dx) + ' ' + std::to_string(dy));
    enter(main->hwnd, 200, 200);
    ASSERT_EQ(await("A tip"), "A tip");
    serve(20);
    const auto &[x, y] = wqMain.tooltip.anchor;
    EXPECT_EQ(std::tuple(wqMain.tooltip.shown != 0, x, y), std::tuple(true, 300, 300));
    SendMessageA(wqMain.tooltip.hwnd, TTM_SETDELAYTIME, TTDT_INITIAL, 100);
    move(main->hwnd, 200 + dx, 200 + dy), WqWnd_WaitQueEmpty();
    MSG relayed = {main->hwnd, WM_MOUSEMOVE, 0, MAKELPARAM(200 + dx, 200 + dy), GetTickCount(), {300 + dx, 300 + dy}};
    if (onWine()) // keeps to itself what its control sees of the mouse
      SendMessageA(wqMain.tooltip.hwnd, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
    EXPECT_EQ(up(), stays ? "A tip" : "");
    EXPECT_TRUE(onWine() || (wqMain.tooltip.shown != 0) == stays) << "which hides without WM_SHOWWINDOW";
    SendMessageA(wqMain.tooltip.hwnd, TTM_SETDELAYTIME, TTDT_INITIAL, 30);
  }
}

TEST_F(WqTooltipTest, TipsGoWithAPressOrAKey) {
  WqTooltip_AddWnd(main), SetWindowTextA(main->hwnd, "A tip");
  for (const UINT message : {WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_KEYDOWN, WM_KEYUP}) {
    enter(main->hwnd, 200, 200);
    EXPECT_EQ(await("A tip"), "A tip");
    SendMessageA(main->hwnd, message, 0, 0);
    EXPECT_EQ(up(), "") << message;
    ReleaseCapture();
  }
}

TEST_F(WqTooltipTest, EveryWindowIsAToolAsLongAsItLives) {
  EXPECT_EQ(tools(), 0) << "the main window was there before";
  EXPECT_EQ(SendMessageA(wqMain.tooltip.hwnd, TTM_GETDELAYTIME, TTDT_AUTOPOP, 0), 30000);
  EXPECT_EQ(GetWindow(wqMain.tooltip.hwnd, GW_OWNER), main->hwnd);
  Window &child = made(main, {0, 0, 100, 100});
  const HWND asked = child.hwnd, whole = main->hwnd;
  const RECT part = {200, 100, 300, 200};
  WqTooltip_StrResInst(GetModuleHandleA(nullptr));
  WqTooltip_AddRect(whole, &part, 7), WqTooltip_Add(whole, reinterpret_cast<WqWord>(whole));
  EXPECT_EQ(tools(), 3);
  SetWindowTextA(whole, "whole"), SetWindowTextA(asked, "child");
  for (const auto &[window, x, y, tip] :
       {std::tuple{whole, 250, 150, "from the table"}, {whole, 150, 150, "whole"}, {asked, 50, 50, "child"}}) {
    enter(window, x, y);
    EXPECT_EQ(await(tip), tip);
  }
  DestroyWindow(asked);
  EXPECT_EQ(await(""), "");
  EXPECT_EQ(tools(), 2);
  WqTooltip_Remove(whole, 8), WqTooltip_Remove(whole, 7);
  EXPECT_EQ(tools(), 1);
  WqTooltip_Remove(whole, reinterpret_cast<WqWord>(whole));
  EXPECT_EQ(tools(), 0);
}

TEST_F(WqTooltipTest, WithoutAControlNothingHappens) {
  Window &before = made(main, {0, 0, 100, 100}), &between = made(main, {0, 0, 50, 50});
  const RECT part = {0, 0, 10, 10};
  DestroyWindow(wqMain.tooltip.hwnd); // by somebody else
  WqWnd_Term(&between);
  DestroyWindow(between.hwnd);
  SendMessageA(main->hwnd, WM_KEYDOWN, VK_F4, 0);
  WqTooltip_Term(1);
  EXPECT_EQ(wqMain.tooltip.hwnd, nullptr);
  Window &after = made(main, {0, 0, 100, 100});
  WqTooltip_Add(main->hwnd, 1), WqTooltip_AddRect(main->hwnd, &part, 2), WqTooltip_Remove(main->hwnd, 1);
  DestroyWindow(before.hwnd), DestroyWindow(after.hwnd);
  WqMain_Config(main->hwnd);
  EXPECT_TRUE(IsWindow(wqMain.tooltip.hwnd));
  EXPECT_EQ(tools(), 0);
  main->on = nullptr, DestroyWindow(main->hwnd);
  EXPECT_FALSE(IsWindow(wqMain.tooltip.hwnd)) << "it goes with its owner";
}

// The thread is in COM from the start of the library to its end.
TEST_F(WqTooltipTest, TheThreadIsInCom) {
  EXPECT_EQ(CoInitialize(nullptr), S_FALSE);
  CoUninitialize();
  endAll(), WqMain_Term();
  EXPECT_EQ(CoInitialize(nullptr), S_OK);
  CoUninitialize();
  WqMain_Init(nullptr);
}
