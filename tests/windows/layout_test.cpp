// Snap layout: where a window object's sides come to lie, what the platform is told of it, and how a change goes on to
// other objects.

#include "windows/objects.h"

namespace {

class LayoutTest : public ObjectTest {};

constexpr uint32_t kL = WQ_DS_SNAP_L, kT = WQ_DS_SNAP_T, kR = WQ_DS_SNAP_R, kB = WQ_DS_SNAP_B, kW = WQ_DS_KEEP_W,
                   kH = WQ_DS_KEEP_H;
constexpr LONG kMin = INT32_MIN, kMax = INT32_MAX;

} // namespace

TEST_F(LayoutTest, EachSideFindsItsPlace) {
  Window &frame = made(nullptr, {100, 100, 400, 300}), &target = object(&frame, {100, 50, 150, 90}),
         &wnd = object(&frame);
  const RECT box = {10, 20, 40, 60}, turned = {40, 60, 10, 20};
  // clang-format off
  const struct { uint32_t flags, targets; RECT margins, rect; Edges expected; bool hasParent = true; } rows[] = {
      {0, kL | kT, {1, 2, 3, 4}, box, edges(box)}, {kW | kH, 0, {1, 2, 3, 4}, box, edges(box)},
      {kL | kR, 0, {}, box, {0, 20, 300, 60}}, {kT | kB, 0, {}, box, {10, 0, 40, 200}},
      {kL | kT | kR | kB, 0, {5, 6, -7, -8}, box, {5, 6, 293, 192}},
      {kL | kR | kB | kH, 0, {}, box, {0, 160, 300, 200}}, // a strip
      {kR, 0, {9, 9, -10, 9}, box, {10, 20, 290, 60}}, {kL, kL, {4, 0, 0, 0}, box, {154, 20, 40, 60}},
      {kL | kW, kL, {4, 0, 0, 0}, box, {154, 20, 184, 60}}, {kT | kH, kT, {0, 4, 0, 0}, box, {10, 94, 40, 134}},
      {kR | kW, kR, {0, 0, -4, 0}, box, {66, 20, 96, 60}}, {kB | kH, kB, {0, 0, 0, -4}, box, {10, 6, 40, 46}},
      {kL | kR | kW, 0, {}, box, {270, 20, 300, 60}}, // the later side wins,
      {kT | kB | kH, kT, {}, box, {10, 160, 40, 200}},
      {kL | kR | kW, 0, {5, 0, -200, 0}, box, {70, 20, 100, 60}}, // with the width from before
      {kL | kT, kL | kT | kR | kB, {}, box, {150, 90, 40, 60}},
      {kL | kB | kW | kH, 0, {}, turned, {0, 160, 30, 200}}, // kept as absolute values
      {kL | kR | kW, kL, {kMax, 0, 0, 0}, box, {270, 20, 300, 60}},
      {kL | kW, kL, {kMax, 0, 0, 0}, box, {kMin + 149, 20, kMin + 179, 60}},
      {kL | kT, kT, {3, 3, 3, 3}, box, {10, 93, 40, 60}, false},        // nothing to follow: the side stays,
      {kL | kR | kW, 0, {3, 3, 3, 3}, turned, {40, 60, 70, 20}, false}, // and yet takes the other along
  };
  // clang-format on
  for (const auto &row : rows) {
    const auto targetFor = [&](uint32_t side) { return row.targets & side ? &target : nullptr; };
    WqWnd_SnapL(&wnd, targetFor(kL)), WqWnd_SnapT(&wnd, targetFor(kT)), WqWnd_SnapR(&wnd, targetFor(kR));
    WqWnd_SnapB(&wnd, targetFor(kB)), WqWnd_SnapMargin(&wnd, &row.margins);
    WqWnd_Parent(&wnd, row.hasParent ? &frame : nullptr), wnd.flags = row.flags, WqWnd_Rect(&wnd, &row.rect);
    EXPECT_EQ(edges(wnd.rect), row.expected) << &row - rows;
  }
}

TEST_F(LayoutTest, ThePlatformIsToldOnlyWhatHasChanged) {
  std::vector<UINT> told;
  Window &frame = made(nullptr, {100, 100, 400, 300}), &wnd = made(&frame, {10, 20, 60, 50}, [&](const WqMsg &msg) {
    constexpr UINT kChanges = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER;
    if (msg.msg == WM_WINDOWPOSCHANGING) told.push_back(reinterpret_cast<WINDOWPOS *>(msg.lParam)->flags & kChanges);
    return 0;
  });
  // clang-format off
  const std::tuple<RECT, std::vector<UINT>, bool, bool> rows[] = { // the flags; is it painted; and with the bit
      {{10, 20, 60, 50}, {}, false, false}, {{10, 20, 80, 50}, {SWP_NOZORDER | SWP_NOMOVE}, true, true},
      {{15, 25, 65, 55}, {SWP_NOZORDER | SWP_NOSIZE}, true, false}, {{10, 25, 60, 51}, {SWP_NOZORDER}, true, true},
      {{10, 15, 60, 45}, {SWP_NOZORDER | SWP_NOSIZE}, true, false}, {{15, 20, 60, 50}, {SWP_NOZORDER}, true, true}};
  // clang-format on
  for (const uint32_t bit : {0u, WQ_DS_NO_MOVE_PAINT})
    for (const auto &[rect, flags, paints, paintsWithBit] : rows) {
      const RECT start = {10, 20, 60, 50};
      WqWnd_Rect(&wnd, &start), WqWnd_WaitQueEmpty(), ValidateRect(wnd.hwnd, nullptr);
      wnd.flags = bit, told.clear(), WqWnd_Rect(&wnd, &rect);
      RECT update = {};
      const Edges whole = {0, 0, rect.right - rect.left, rect.bottom - rect.top};
      EXPECT_EQ(GetUpdateRect(wnd.hwnd, &update, FALSE) && edges(update) == whole, bit ? paintsWithBit : paints);
      EXPECT_TRUE(told == flags && placeOf(wnd) == edges(rect)) << rect.left << " " << rect.right;
    }
}

TEST_F(LayoutTest, FollowersAreLaidOutDepthFirstBeforeTheWindowMoves) {
  std::string log;
  Window &frame = made(nullptr, {100, 100, 600, 400});
  Window *all[6]; // a, then b and c right of and below it, d beside both, e right of c, f with bits cleared
  for (int i = 0; i < 6; ++i)
    all[i] = &made(&frame, {0, 0, 20, 10}, [&, i](const WqMsg &msg) {
      if (msg.msg == WM_WINDOWPOSCHANGING) log += static_cast<char>('a' + i);
      return 0;
    });
  auto &[a, b, c, d, e, f] = all;
  Window &inner = made(f, {0, 0, 5, 5}, [&](const WqMsg &msg) {
    if (msg.msg == WQM_LAYOUT && msg.wParam == reinterpret_cast<WPARAM>(f->hwnd)) log += '!';
    return 0;
  });
  WqWnd_SetMsgReq(&inner, WQ_MSGREQ_LAYOUT);
  for (Window *wnd : {b, c, d, e}) WqWnd_Ds(wnd, WQ_DS_KEEP_W | WQ_DS_KEEP_H);
  WqWnd_SnapL(b, a), WqWnd_SnapT(c, a), WqWnd_SnapL(d, b), WqWnd_SnapT(d, c), WqWnd_SnapL(e, c);
  WqWnd_SnapL(f, a), WqWnd_SnapR(f, a), WqWnd_ClearSnap(f, kL | kR), log.clear();
  const RECT place = {50, 60, 70, 70};
  const POINT offset = {10, 0};
  WqWnd_Rect(a, &place), log += ' '; // without a bit of its own, a moves alone
  WqWnd_Align(a), log += ' ';        // newest first, once whatever the number of sides, each after its followers
  WqWnd_Ds(a, WQ_DS_KEEP_W), WqWnd_Pos(a, &offset);
  EXPECT_EQ(log, "a !edcdb !dba");
  const Edges places[] = {{60, 60, 80, 70}, {80, 0, 100, 10}, {0, 70, 20, 80}, {100, 80, 120, 90}, {20, 0, 40, 10}};
  for (size_t i = 0; i < 5; ++i) EXPECT_TRUE(edges(all[i]->rect) == places[i] && placeOf(*all[i]) == places[i]) << i;
}

TEST_F(LayoutTest, TiesInACircleEnd) {
  for (size_t count : {1u, 2u, 3u, 20u}) {
    std::vector<Window *> ring;
    for (size_t i = 0; i < count; ++i) ring.push_back(&made(nullptr, {0, 0, 20, 10}));
    for (size_t i = 0; i < count; ++i) WqWnd_SnapL(ring[(i + 1) % count], ring[i]), WqWnd_Ds(ring[i], WQ_DS_KEEP_W);
    const RECT place = {100, 0, 120, 10};
    for (Window *first : {ring.front(), ring.back()}) {
      WqWnd_Rect(first, &place);
      for (size_t i = 0; i < count; ++i) {
        const bool follows = ring[i]->rect.left == ring[(i + count - 1) % count]->rect.right;
        EXPECT_TRUE((ring[i] == first || follows) && placeOf(*ring[i]) == edges(ring[i]->rect)) << count << ": " << i;
      }
    }
  }
}

TEST_F(LayoutTest, TheWaveGoesDownTheTree) {
  Window &frame = made(nullptr, {100, 100, 400, 300}), &panel = object(&frame), &inner = object(&panel);
  const RECT margins = {4, 5, -6, -7}, place = {100, 100, 420, 330};
  for (Window *wnd : {&panel, &inner}) {
    WqWnd_Ds(wnd, kL | kT | kR | kB), WqWnd_SnapMargin(wnd, &margins);
    EXPECT_TRUE(WqWnd_Create(wnd));
  }
  const auto expectPlaces = [&](LONG width, LONG height, const char *what) {
    const Edges outside = {4, 5, width - 6, height - 7}, inside = {4, 5, width - 16, height - 19};
    EXPECT_TRUE(edges(panel.rect) == outside && placeOf(panel) == outside) << what;
    EXPECT_TRUE(edges(inner.rect) == inside && placeOf(inner) == inside) << what;
  };
  expectPlaces(300, 200, "from the making");
  SetWindowPos(frame.hwnd, nullptr, 0, 0, 350, 260, SWP_NOMOVE), expectPlaces(300, 200, "the wave is posted");
  WqWnd_WaitQueEmpty(), expectPlaces(350, 260, "the wave has come");
  frame.on = [](const WqMsg &msg) { return msg.msg == WM_SIZE; };
  SetWindowPos(frame.hwnd, nullptr, 0, 0, 300, 200, SWP_NOMOVE), WqWnd_WaitQueEmpty();
  expectPlaces(350, 260, "the user procedure has stopped the wave");
  WqWnd_Rect(&frame, &place), expectPlaces(350, 260, "nobody is told");
  WqWnd_Resize(&frame, nullptr), expectPlaces(320, 230, "told at once");
}
