// The debug window: its settings, what is printed into it, how it is laid out, and the flash of repaint requests.

#include "drawing/canvas.h"
#include "support/aside.h"
#include "support/desktop.h"
#include "support/files.h"
#include "windows/objects.h"

#include <set>

namespace {

class WqDbgWndTest : public ObjectTest {
 protected:
  WqCfg cfg{};

  void SetUp() override {
    ObjectTest::SetUp();
    WqCfg_Init(&cfg);
    char current[MAX_PATH];
    const std::string here(current, GetCurrentDirectoryA(sizeof current, current));
    WqCfg_Path(&cfg, (here + '\\' + folder_.path() + "\\Set.ini").c_str());
    WqDbgWnd_Init();
  }
  void TearDown() override {
    if (window()) DestroyWindow(window());
    WqDbgWnd_Term();
    ObjectTest::TearDown();
  }
  static HWND window() { return FindWindowA("WQ_WND_CLASS", "Debug Window"); }
  static HWND list() { return window() ? GetWindow(window(), GW_CHILD) : nullptr; }
  static std::string lines() {
    std::string all;
    const LRESULT count = list() ? SendMessageA(list(), LB_GETCOUNT, 0, 0) : 0;
    for (LRESULT i = 0; i < count; ++i) {
      char line[300] = "?";
      SendMessageA(list(), LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(line));
      all += line + std::string("|");
    }
    return all;
  }
  void store(const char *text) const { WritePrivateProfileStringA("StartUp", "DbgWnd", text, cfg.path); }
  std::string stored() const {
    char text[100] = "";
    GetPrivateProfileStringA("StartUp", "DbgWnd", "none", text, sizeof text, cfg.path);
    return text;
  }
  static std::string place() { return screenRect(window()); }
  // Goes on with the loop until a call on another thread is over.
  static void serve(const std::function<INT_PTR()> &call) {
    const auto outcome = aside(call);
    for (const DWORD start = GetTickCount(); !outcome->done && GetTickCount() - start < 5000;) WqWnd_WaitQueEmpty();
  }

 private:
  TempFolder folder_;
};

TEST_F(WqDbgWndTest, ItsPlaceIsKeptInTheSettings) {
  WqDbgWnd_Config(&cfg);
  ASSERT_NE(list(), nullptr) << "without settings it is made";
  EXPECT_FALSE(WqDbgWnd_IsShow()) << "but not shown";
  EXPECT_EQ(place().substr(0, 4), "0,0,");
  SetWindowPos(window(), nullptr, 30, 40, 250, 180, SWP_NOZORDER | SWP_NOACTIVATE);
  WqCfg_Write(&cfg, WQ_CFG_WRITE);
  WqDbgWnd_Config(&cfg);
  EXPECT_EQ(stored(), "30,40,280,220,1");
}

TEST_F(WqDbgWndTest, TheSettingsSayWhereAndWhether) {
  store("50,60,350,260,0");
  WqDbgWnd_Config(&cfg), WqDbgWnd_Print("lost"), WqDbgWnd_Show(0);
  EXPECT_EQ(window(), nullptr);
  WqDbgWnd_Show(1);
  EXPECT_TRUE(WqDbgWnd_IsShow());
  EXPECT_EQ(place().substr(0, 6) + lines(), "50,60,");
  WqCfg_Write(&cfg, WQ_CFG_WRITE), WqDbgWnd_Config(&cfg);
  EXPECT_EQ(stored().substr(0, 6) + stored().back(), "50,60,0");
}

TEST_F(WqDbgWndTest, AnUnreadablePlaceIsNotTaken) {
  store("9,9,9,9,1"), WqDbgWnd_Config(&cfg);
  EXPECT_EQ(place().substr(0, 4), "0,0,");
}

TEST_F(WqDbgWndTest, LinesArePrinted) {
  WqDbgWnd_Show(1);
  WqDbgWnd_Print("one"), WqDbgWnd_Print("");
  EXPECT_EQ(WqDbgWnd_Format("%d of %s", 7, "it"), 7);
  EXPECT_EQ(lines(), "one||7 of it|");
  WqDbgWnd_Clear();
  EXPECT_EQ(WqDbgWnd_Format("%s", std::string(300, 'x').c_str()), 255);
  EXPECT_EQ(WqDbgWnd_Format("%s\x82\xA0", std::string(254, 'x').c_str()), 254) << "no half character";
  EXPECT_EQ(lines(), std::string(255, 'x') + '|' + std::string(254, 'x') + '|');
  WqDbgWnd_Clear();
  uint8_t bytes[1 + 36] = {};
  for (uint8_t i = 0; i < 36; ++i) bytes[i + 1] = static_cast<uint8_t>(0xA0 + i);
  const uint8_t *const data = bytes + 1; // which needs no boundary
  const auto dumped = [data](auto dump, uint32_t count) { return WqDbgWnd_Clear(), dump(data, count), lines(); };
  EXPECT_EQ(dumped(WqDbgWnd_DumpHex2, 0), "");
  EXPECT_EQ(dumped(WqDbgWnd_DumpHex2, 9), "00000000:A0 A1 A2 A3 A4 A5 A6 A7 |00000008:A8 |");
  EXPECT_EQ(dumped(WqDbgWnd_DumpHex2, 8), "00000000:A0 A1 A2 A3 A4 A5 A6 A7 |");
  EXPECT_EQ(dumped(WqDbgWnd_DumpHex4, 2), "00000000:A1A0 A3A2 |");
  const std::string wide = dumped(WqDbgWnd_DumpHex8, 9); // labels count items
  EXPECT_EQ(wide.substr(0, 18) + wide.substr(wide.find('|')), "00000000:A3A2A1A0 |00000008:C3C2C1C0 |");
}

TEST_F(WqDbgWndTest, ClosingHidesItAndKeepsItsLines) {
  WqDbgWnd_Show(1), WqDbgWnd_Print("kept");
  RECT area = {}, inner = {};
  SetWindowPos(window(), nullptr, 10, 10, 400, 300, SWP_NOZORDER), WqWnd_WaitQueEmpty();
  GetClientRect(window(), &area), GetWindowRect(list(), &inner);
  MapWindowPoints(nullptr, window(), reinterpret_cast<POINT *>(&inner), 2);
  EXPECT_EQ(edges(inner), (Edges{1, 1, area.right, area.bottom}));
  SendMessageA(window(), WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_FALSE(WqDbgWnd_IsShow());
  WqDbgWnd_Print("hidden");
  WqDbgWnd_Show(1);
  EXPECT_TRUE(WqDbgWnd_IsShow());
  EXPECT_EQ(lines(), "kept|hidden|");
  WqDbgWnd_TopMost();
  serve([] { return WqDbgWnd_Print("from elsewhere"), 0; });
  EXPECT_EQ(lines(), "kept|hidden|from elsewhere|");
}

TEST_F(WqDbgWndTest, ARepaintRequestFlashesAndTells) {
  WqDbgWnd_Show(1), WqDbgWnd_Show(0);
  Window &target = made(nullptr, {300, 300, 500, 500});
  ValidateRect(target.hwnd, nullptr);
  const RECT part = {10, 10, 60, 60};
  const auto pixel = [&](int at) { return pixelOf(target.hwnd, at, at); };
  std::set<std::pair<COLORREF, COLORREF>> seen; // inside and on the outline
  for (int i = 0; i < 100; ++i) WqInvalidateRectDbg(target.hwnd, &part, 0), seen.insert({pixel(30), pixel(10)});
  EXPECT_EQ(seen, (std::set<std::pair<COLORREF, COLORREF>>{{0, 0xFFFFFF}, {0xFFFFFF, 0}}));
  EXPECT_FALSE(GetUpdateRect(target.hwnd, nullptr, FALSE)) << "nothing is invalid";
  EXPECT_EQ(lines(), "");
  WqInvalidateRectDbg(target.hwnd, nullptr, 1);
  EXPECT_EQ(pixel(0), RGB(255, 255, 255) - pixel(100)) << "the whole client area, with its outline";
  WqInvalidateRectDbg(nullptr, &part, 0);
  serve([&] { return WqInvalidateRectDbg(target.hwnd, &part, 0), 0; });
  EXPECT_EQ(lines(), "WqInvalidateRect(); Background erased.\n|WqInvalidateRect(); Invalidate whole Desctop! \n|"
                     "WqInvalidateRect(); current thread != window thread.\n|");
}

} // namespace
