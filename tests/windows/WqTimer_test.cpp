// Timers: the count of an element, the list, and what callbacks may do inside a tick.

#include "support/allocation.h"
#include "windows/objects.h"

#include <map>

namespace {

std::string told; // id:event of each call
std::map<uint32_t, std::function<int32_t()>> whenDue;

int32_t note(uint32_t event, uint32_t id, WqWord userData) {
  EXPECT_EQ(userData, id * 10);
  told += (told.empty() ? "" : " ") + std::to_string(id) + ":" + std::to_string(event);
  const auto act = whenDue.find(id);
  return event == WQ_TIMER_DUE && act != whenDue.end() ? std::function(act->second)() : 0;
}

class WqTimerTest : public ObjectTest {
 protected:
  void SetUp() override { ObjectTest::SetUp(), told.clear(), whenDue.clear(); }
  void TearDown() override { WqTimer_Stop(), ObjectTest::TearDown(); }

  static void insert(uint32_t id, uint32_t period = 1) {
    WqTimerElem elem;
    WqTimerElem_Init(&elem), WqTimerElem_Param(&elem, id, note, id * 10, period);
    WqTimer_Insert(&elem), WqTimerElem_Term(&elem);
    elem.proc = nullptr; // a copy was taken
  }
  static std::string take() { return std::exchange(told, ""); }
  static std::string ids() {
    std::string text;
    for (const WqList *node = wqMain.timer.list; node; node = node->next)
      text += std::to_string(reinterpret_cast<const WqTimerElem *>(node->data)->id);
    return text;
  }

  // Waits for one tick of the platform; then brings that one as often as wanted, each later than the one before.
  void tick() {
    while (tick_.message != WM_TIMER) GetMessageA(&tick_, nullptr, 0, 0);
    for (const DWORD now = GetTickCount(); GetTickCount() == now;) Sleep(1);
    DispatchMessageA(&tick_);
  }

  MSG tick_ = {};
};

} // namespace

TEST_F(WqTimerTest, AnElementCountsTheTimeSinceTheLastUpdate) {
  // clang-format off
  const std::tuple<uint32_t, std::vector<uint32_t>, std::string> rows[] = { // period, ticks, when it is due
      {250, {1000, 1100, 1200, 1300, 1400, 1500, 1600}, "0001001"}, {50, {1000, 1100, 1200}, "011"},
      {100, {1000, 1099, 1100, 1199, 1200}, "00101"}, {1, {7, 7, 8}, "001"}, {40, {0xFFFFFFF0, 0x10, 0x20}, "001"},
      {0x80000000, {5, 0x80000004, 0x80000005}, "001"}, {10, {0, 100, 105, 110}, "0001"}, // a tick of 0 starts nothing,
      {10, {0xFFFFFFFA, 0, 4, 8, 14}, "00010"}}; // and in the middle it starts anew, with the time from before
  // clang-format on
  for (const auto &[period, ticks, expected] : rows) {
    WqTimerElem elem;
    std::string due;
    WqTimerElem_Init(&elem), WqTimerElem_Param(&elem, 1, note, 2, period);
    for (const uint32_t tick : ticks) due += static_cast<char>('0' + WqTimerElem_Update(&elem, tick));
    WqTimerElem_Param(&elem, 1, note, 2, 9);
    EXPECT_EQ(std::tuple(due, elem.lastTick), std::tuple(expected, ticks.back())) << period;
  }
}

TEST_F(WqTimerTest, ElementsComeAndGoWhileTheServiceRuns) {
  insert(1), WqTimer_Start();
  const UINT_PTR timer = wqMain.timer.timerId;
  WqTimer_Start();
  EXPECT_EQ(take() + ids(), "") << "those from before it runs are not taken";
  EXPECT_TRUE(wqMain.timer.running && timer);
  EXPECT_EQ(wqMain.timer.timerId, timer);
  insert(1), insert(2), insert(3), insert(2);
  EXPECT_EQ(take() + " " + ids(), "1:1 2:1 3:1 2:1 2321");
  for (int n = 1; n <= 2; ++n) {
    const uint32_t blocks = wqMain.allocCount;
    AllocationFailure failure(n);
    insert(4);
    EXPECT_TRUE(failure.happened());
    EXPECT_EQ(std::tuple(take() + ids(), wqMain.allocCount), std::tuple(std::string("2321"), blocks));
  }
  WqTimer_Remove(2), WqTimer_Remove(9);
  EXPECT_EQ(take() + " " + ids(), "2:2 2:2 31");
  WqTimer_Stop(), WqTimer_Stop(), insert(5), WqTimer_Remove(1);
  EXPECT_TRUE(!wqMain.timer.running && !wqMain.timer.timerId);
  EXPECT_EQ(take() + ids(), "31");
  WqTimer_Start(), tick(), tick();
  EXPECT_EQ(take(), "3:0 1:0") << "those from before go on";
}

TEST_F(WqTimerTest, CallbacksMayDoAnything) {
  // clang-format off
  const std::tuple<std::function<int32_t()>, std::string> rows[] = { // what timer 2 does; what is told; what is left
      {[] { return -1; }, "3:0 2:0 2:2 1:0 31"}, {[] { return insert(4), 0; }, "3:0 2:0 4:1 1:0 4321"},
      {[] { return insert(4), 1; }, "3:0 2:0 4:1 2:2 1:0 431"}, {[] { return WqTimer_Remove(1), 0; }, "3:0 2:0 1:2 32"},
      {[] { return WqTimer_Remove(3), 0; }, "3:0 2:0 3:2 1:0 21"}, {[] { return WqTimer_Remove(2), 1; }, "3:0 2:0 2:2 1:0 31"},
      {[] { return WqTimer_Remove(1), WqTimer_Remove(3), 1; }, "3:0 2:0 1:2 3:2 2:2 "},
      {[this] { return whenDue.clear(), tick(), 0; }, "3:0 2:0 3:0 2:0 1:0 321"},
      {[this] { return whenDue.clear(), WqTimer_Remove(1), tick(), 1; }, "3:0 2:0 1:2 3:0 2:0 2:2 3"},
      {[] { return WqTimer_Stop(), 0; }, "3:0 2:0 321"}};
  // clang-format on
  WqTimer_Start();
  for (const auto &[act, expected] : rows) {
    for (const uint32_t id : {1, 2, 3, 4}) WqTimer_Remove(id);
    for (const uint32_t id : {1, 2, 3}) insert(id);
    tick(), take(), whenDue[2] = act, tick();
    EXPECT_EQ(take() + " " + ids(), expected);
  }
}

TEST_F(WqTimerTest, TheTickComesWithTheMessages) {
  int posted = 0;
  Window &wnd = made(nullptr, {0, 0, 50, 50}, [&](const WqMsg &msg) { return posted += msg.msg == WM_APP, 0; });
  const DWORD start = GetTickCount();
  DWORD due = 0;
  whenDue[2] = [&] { return due = GetTickCount(), 1; };
  WqTimer_Start(), insert(2, 250);
  for (; !due && GetTickCount() - start < 1500; Sleep(1)) WqWnd_WaitQueEmpty();
  EXPECT_GE(due - start, 340u) << "the first tick only starts the count";
  Sleep(150), insert(1), PostMessageA(wnd.hwnd, WM_APP, 0, 0), take();
  WqTimer_Stop(), Sleep(110), WqWnd_WaitQueEmpty();
  EXPECT_TRUE(posted == 1 && take().empty()) << "no pending tick, and none later";
}
