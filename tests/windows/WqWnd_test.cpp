// Window objects: their filling in, making, states and end, what works with a window and what without, the geometry
// functions, lists of objects, and the screen.

#include "support/allocation.h"
#include "windows/objects.h"

#include <cstring>

namespace {

class WqWndTest : public ObjectTest {};

using Objects = std::vector<const void *>;

std::string bytesOf(const WqWnd &wnd) { return {reinterpret_cast<const char *>(&wnd), sizeof wnd}; }

Objects listed(const WqList *list) {
  Objects objects;
  for (; list; list = list->next) objects.push_back(reinterpret_cast<const void *>(list->data));
  return objects;
}

std::string titleOf(HWND hwnd) {
  char text[200] = "";
  return GetWindowTextA(hwnd, text, sizeof text), text;
}

bool has(const WqWnd &wnd, int index, DWORD bits) {
  return (static_cast<DWORD>(GetWindowLongA(wnd.hwnd, index)) & bits) == bits;
}

} // namespace

TEST_F(WqWndTest, AnObjectIsFilledInFirst) {
  const uint32_t blocks = wqMain.allocCount;
  WqWnd wnd, empty{};
  std::memset(&wnd, 0x55, sizeof wnd), WqWnd_Init(&wnd);
  empty.id = WQ_ID_BASE, empty.bkgrndBmp = -1, empty.createParam = wnd.createParam;
  EXPECT_EQ(listed(wqMain.wndList), Objects{&wnd});
  EXPECT_EQ(bytesOf(wnd), bytesOf(empty));
  const SIZE size = {3, 4};
  const POINT point = {5, 6};
  WqWnd_ID(&wnd, 0x12), WqWnd_ID(&wnd, 0x21), WqWnd_BkgrndBitmap(&wnd, 7, &size, &point);
  WqWnd_SnapL(&wnd, &empty), WqWnd_SnapT(&wnd, nullptr), WqWnd_SnapR(&wnd, &wnd), WqWnd_SnapB(&wnd, &empty);
  WqWnd_Ds(&wnd, WQ_DS_KEEP_W), WqWnd_ClearSnap(&wnd, WQ_DS_SNAP_L | WQ_DS_SNAP_R);
  EXPECT_EQ(std::tuple(wnd.id, wnd.flags), std::tuple(0x40000033u, WQ_DS_KEEP_W | WQ_DS_SNAP_T | WQ_DS_SNAP_B));
  EXPECT_EQ((Objects{wnd.snapLeft, wnd.snapTop, wnd.snapRight, wnd.snapBottom}),
            (Objects{&empty, nullptr, &wnd, &empty}));
  EXPECT_EQ(std::tuple(wnd.bkgrndBmp, wnd.bkgrndSize.cy, wnd.bkgrndPos.x), std::tuple(7, 4, 5));
  const std::string fits(79, 'x'), whole(80, 'q');
  WqWndParam &made = *wnd.createParam, param;
  WqWnd_Style(&wnd, 1), WqWnd_Style(&wnd, 2), WqWnd_ExStyle(&wnd, 4), WqWnd_Layered(&wnd, 50);
  WqWnd_Title(&wnd, (fits + "\x83\x5C").c_str()), WqWnd_ClassName(&wnd, (fits + "yz").c_str());
  EXPECT_EQ(std::tuple(made.style, made.exStyle), std::tuple(3u, 4u | WS_EX_LAYERED));
  EXPECT_EQ(made.title + std::string("|") + made.className, fits + '|' + fits + 'y');
  std::memset(&param, 'q', sizeof param), WqWnd_InitHeapParam(&wnd, &param);
  EXPECT_EQ(made.style, 0x71717171u);
  EXPECT_EQ(made.title + std::string("|") + made.className, whole + '|' + whole);
  WqWnd_Term(&wnd), WqWnd_Term(&wnd);
  EXPECT_EQ(wqMain.allocCount, blocks + 1) << "the node of the list";
  const std::string before = bytesOf(wnd); // without parameters and a window nothing happens:
  WqWnd_Style(&wnd, 1), WqWnd_ExStyle(&wnd, 1), WqWnd_Title(&wnd, "x"), WqWnd_ClassName(&wnd, "x");
  WqWnd_InitHeapParam(&wnd, &param), WqWnd_SetMsgReq(&wnd, 3), WqWnd_MaxSize(&wnd, 1, 1), WqWnd_MixSize(&wnd, 1, 1);
  WqWnd_Layered(&wnd, 50), WqWnd_LayeredOff(&wnd), WqWnd_Enable(&wnd, 1), WqWnd_Focus(&wnd), WqWnd_Center(&wnd, &wnd);
  WqWnd_InvalidateRect(&wnd, nullptr), WqWnd_Update(&wnd), WqWnd_EnableMenuItem(&wnd, SC_CLOSE, 1);
  EXPECT_EQ(std::tuple(WqWnd_Create(&wnd), WqWnd_Show(&wnd, 1), WqWnd_Show(&wnd, 0)), std::tuple(HWND{}, 0, 0));
  EXPECT_EQ(std::tuple(WqWnd_GetDC(&wnd), WqWnd_OrderTop(&wnd), WqWnd_HitTest(&wnd, &point)), std::tuple(HDC{}, 0, 0));
  EXPECT_EQ(bytesOf(wnd), before);
  for (int n = 1; n <= 2; ++n) { // of the node and of the parameters
    AllocationFailure failure(n);
    WqWnd_Init(&wnd);
    EXPECT_TRUE(failure.happened());
    EXPECT_EQ(std::tuple(wnd.createParam, wnd.id, wnd.bkgrndBmp), std::tuple(nullptr, 0u, 0));
  }
}

TEST_F(WqWndTest, AWindowIsMadeWithWidthAndHeightOneMore) {
  std::vector<uint32_t> seen;
  Window &frame = made(nullptr, {100, 100, 400, 300}), &child = object(&frame, {10, 20, 59, 49});
  EXPECT_EQ(placeOf(frame), (Edges{100, 100, 400, 300}));
  child.on = [&](const WqMsg &msg) {
    if (child.hwnd == msg.hwnd && !msg.wParam && (msg.msg == WM_CREATE || msg.msg == WQM_LAYOUT))
      seen.push_back(msg.msg);
    return 0;
  };
  WqWnd_ID(&child, 5), WqWnd_Title(&child, "child"), WqWnd_Ds(&child, WQ_DS_KEEP_W), WqWnd_Style(&child, WS_BORDER);
  EXPECT_EQ(WqWnd_Create(&child), child.hwnd);
  EXPECT_EQ(seen, (std::vector<uint32_t>{WM_CREATE, WQM_LAYOUT}));
  EXPECT_EQ(edges(child.rect), (Edges{10, 20, 60, 50}));
  EXPECT_EQ(placeOf(child), edges(child.rect));
  char name[40] = "";
  GetClassNameA(child.hwnd, name, sizeof name);
  EXPECT_EQ(name + titleOf(child.hwnd), "WQ_WND_CLASSchild");
  EXPECT_EQ(GetWindowLongA(child.hwnd, GWL_ID), 0x40000005);
  EXPECT_FALSE(WqWnd_RegClass(wqMain.instance)) << "there is one already";
  const HWND first = child.hwnd;
  EXPECT_EQ(WqWnd_Create(&child), nullptr) << "a second time";
  EXPECT_EQ(std::tuple(child.hwnd, child.createParam), std::tuple(first, static_cast<WqWndParam *>(nullptr)));
  EXPECT_EQ(listed(frame.dependants), Objects{&child});
  WqWnd_SetMsgReq(&child, 4);
  EXPECT_EQ(listed(frame.dependants), (Objects{&child, &child}));
  EXPECT_EQ(child.msgReq, 5u);
  WqWnd_DelMsgReq(&child, 4), frame.msgReq = 7, WqWnd_DelMsgReq(&frame, 2);
  EXPECT_EQ(std::tuple(frame.dependants, child.msgReq, frame.msgReq), std::tuple(nullptr, 1u, 5u));

  WNDCLASSA foreignClass = {};
  foreignClass.lpfnWndProc = DefWindowProcA, foreignClass.lpszClassName = "foreign", RegisterClassA(&foreignClass);
  Window &foreign = object(&frame), &unknown = object(&frame);
  WqWnd_ClassName(&foreign, "foreign"), WqWnd_ClassName(&unknown, "no such class");
  EXPECT_TRUE(IsWindow(WqWnd_Create(&foreign)) && foreign.hwnd);
  EXPECT_TRUE(WqWnd_Show(&foreign, 0) && !foreign.hwnd);
  EXPECT_EQ(WqWnd_Create(&unknown), nullptr);
  EXPECT_TRUE(!unknown.hwnd && !unknown.createParam);
  for (const uint32_t last : {uint32_t{WM_CREATE}, WQM_LAYOUT}) { // ends while it is made
    Window &brief = object(&frame, {}, [=](const WqMsg &msg) { return msg.msg == last ? DestroyWindow(msg.hwnd) : 0; });
    WqWnd_SnapL(&brief, nullptr), brief.result = -1;
    EXPECT_EQ(WqWnd_Create(&brief), nullptr) << last;
    EXPECT_TRUE(!brief.hwnd && !brief.createParam) << last;
    EXPECT_EQ(frame.dependants, nullptr) << last;
  }
}

TEST_F(WqWndTest, TheWindowTakesWhatItsObjectIsTold) {
  Window &wnd = made(nullptr, {100, 100, 300, 200});
  const std::string title(90, 'x');
  WqWnd_Style(&wnd, WS_SYSMENU), WqWnd_ExStyle(&wnd, WS_EX_TOOLWINDOW), WqWnd_Title(&wnd, title.c_str());
  EXPECT_TRUE(has(wnd, GWL_STYLE, WS_SYSMENU | WS_VISIBLE) && has(wnd, GWL_EXSTYLE, WS_EX_TOOLWINDOW));
  EXPECT_EQ(titleOf(wnd.hwnd), title);
  const std::pair<uint32_t, int> alphas[] = {{0, 0}, {1, 2}, {50, 127}, {100, 255}, {256 + 20, 51}};
  for (const auto &[percent, expected] : alphas) {
    BYTE alpha = 77;
    DWORD flags = 0;
    WqWnd_Layered(&wnd, percent), GetLayeredWindowAttributes(wnd.hwnd, nullptr, &alpha, &flags);
    EXPECT_EQ(std::tuple(int{alpha}, flags), std::tuple(expected, DWORD{LWA_ALPHA})) << percent;
  }
  WqWnd_LayeredOff(&wnd);
  EXPECT_TRUE(!has(wnd, GWL_EXSTYLE, WS_EX_LAYERED) && has(wnd, GWL_EXSTYLE, WS_EX_TOOLWINDOW));
  for (const int on : {0, 5}) {
    WqWnd_Enable(&wnd, on), WqWnd_EnableMenuItem(&wnd, SC_CLOSE, on);
    EXPECT_EQ(IsWindowEnabled(wnd.hwnd) != 0, on != 0);
    EXPECT_EQ(GetMenuState(GetSystemMenu(wnd.hwnd, FALSE), SC_CLOSE, MF_BYCOMMAND) & MF_DISABLED,
              on ? MF_DISABLED : 0u);
  }
  SetFocus(nullptr), WqWnd_Focus(&wnd);
  EXPECT_EQ(GetFocus(), wnd.hwnd);
  EXPECT_TRUE(WqWnd_OrderTop(&wnd) && has(wnd, GWL_EXSTYLE, WS_EX_TOPMOST));
  EXPECT_TRUE(ReleaseDC(wnd.hwnd, WqWnd_GetDC(&wnd)));
  EXPECT_EQ(placeOf(wnd), edges(wnd.rect));
  const RECT part = {3, 4, 50, 60};
  RECT update = {};
  WqWnd_Update(&wnd), WqWnd_InvalidateRect(&wnd, &part), GetUpdateRect(wnd.hwnd, &update, FALSE);
  EXPECT_EQ(edges(update), edges(part));
  WqWnd_Update(&wnd);
  EXPECT_FALSE(GetUpdateRect(wnd.hwnd, nullptr, FALSE));
  const std::pair<POINT, int> hits[] = {{{100, 100}, 1}, {{99, 150}, 0}, {{300, 200}, 1}, {{301, 200}, 0}};
  for (const auto &[point, expected] : hits) EXPECT_EQ(WqWnd_HitTest(&wnd, &point), expected) << point.x;
}

TEST_F(WqWndTest, ShowingMakesHidesAndEnds) {
  Window &wnd = object(nullptr, {10, 10, 99, 99});
  WqWnd_ID(&wnd, WQ_ID_HIDE);
  EXPECT_EQ(WqWnd_Show(&wnd, 0), 0);
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(WqWnd_Show(&wnd, -1) == 1 && IsWindowVisible(wnd.hwnd));
    EXPECT_TRUE(WqWnd_Show(&wnd, 0) == 1 && !IsWindowVisible(wnd.hwnd));
  }
  HWND hwnd = wnd.hwnd;
  wnd.id = WQ_ID_BASE;
  EXPECT_EQ(WqWnd_Show(&wnd, 0), 1);
  EXPECT_TRUE(!wnd.hwnd && !IsWindow(hwnd));
  EXPECT_EQ(std::tuple(WqWnd_Show(&wnd, 1), WqWnd_Show(&wnd, 0)), std::tuple(0, 0)) << "it can't be made again";
  WqWnd_Init(&wnd), WqWnd_Show(&wnd, 1), SendMessageA(wnd.hwnd, WM_CLOSE, 0, 0);
  EXPECT_EQ(std::tuple(wnd.createParam, wnd.hwnd, WqWnd_Show(&wnd, 1)), std::tuple(nullptr, nullptr, 0));
  EXPECT_EQ(listed(wqMain.wndList), (Objects{&wnd, &wnd}));
}

TEST_F(WqWndTest, EachGeometryFunctionReadsTheEdgesItsOwnWay) {
  Window &frame = made(nullptr, {100, 100, 400, 300}), &wnd = made(&frame, {10, 20, 60, 50});
  const POINT offset = {-3, 4}, none = {};
  const SIZE size = {30, 40};
  const RECT start = {10, 20, 60, 50}, place = {1, 2, 21, 12}, wide = {0, 0, 70, 30}, narrow = {20, 0, 50, 100},
             unset = {9, 9, 9, 20};
  // clang-format off
  const std::pair<std::function<void()>, Edges> rows[] = {
      {[&] { WqWnd_Pos(&wnd, &offset); }, {7, 24, 57, 54}}, {[&] { WqWnd_Pos(&wnd, &none); }, edges(start)},
      {[&] { WqWnd_Left(&wnd, 15); }, {15, 20, 60, 50}}, {[&] { WqWnd_Top(&wnd, 15); }, {10, 15, 60, 50}},
      {[&] { WqWnd_Size(&wnd, &size); }, {10, 20, 40, 60}}, {[&] { WqWnd_Width(&wnd, 30); }, {10, 20, 39, 50}},
      {[&] { WqWnd_Height(&wnd, 40); }, {10, 20, 60, 59}}, {[&] { WqWnd_Rect(&wnd, &place); }, edges(place)},
      {[&] { WqWnd_Resize(&wnd, &place); }, edges(place)}, {[&] { WqWnd_Rect(nullptr, &place); }, edges(start)},
      {[&] { WqWnd_Max(&wnd, &wide); }, {0, 0, 70, 50}}, {[&] { WqWnd_Min(&wnd, &narrow); }, {20, 20, 50, 50}},
      {[&] { WqWnd_Max(&wnd, &unset); }, edges(start)}, {[&] { WqWnd_Min(&wnd, &unset); }, edges(start)},
      // widened first, then cut
      {[&] { wnd.minRect = narrow, WqWnd_Max(&wnd, &wide); }, {20, 0, 50, 50}}};
  // clang-format on
  for (const auto &[act, expected] : rows) {
    wnd.maxRect = wnd.minRect = {}, WqWnd_Rect(&wnd, &start), act();
    EXPECT_TRUE(edges(wnd.rect) == expected && placeOf(wnd) == expected);
  }
}

TEST_F(WqWndTest, CentringGoesByTheScreen) {
  Window &frame = made(nullptr, {100, 100, 401, 300}), &other = made(nullptr, {500, 300, 520, 325}), &unmade = object();
  SIZE screen, desktop;
  WqSys_ScreenRes(&screen), WqSys_DesktopRect(&desktop);
  EXPECT_TRUE(screen.cx == GetSystemMetrics(SM_CXSCREEN) && screen.cy == GetSystemMetrics(SM_CYSCREEN));
  EXPECT_TRUE(desktop.cx == GetSystemMetrics(SM_CXFULLSCREEN) && desktop.cy == GetSystemMetrics(SM_CYFULLSCREEN));
  const LONG x = (screen.cx - 50) / 2, y = (screen.cy - 30) / 2;
  RECT middle = {7, 7, 57, 37};
  WqRect_Center(&middle, nullptr);
  EXPECT_EQ(edges(middle), (Edges{x, y, x + 50, y + 30}));
  // clang-format off
  const std::tuple<WqWnd *, POINT, POINT> rows[] = {
      // rect, from 7, 7, goes by the distance alone
      {&frame, {225, 185}, {132, 92}}, {&other, {485, 298}, {-8, 5}}, // half of -5 is -2
      {nullptr, {x, y}, {x + 7, y + 7}}, {&unmade, {x, y}, {x + 7, y + 7}}};
  // clang-format on
  for (const auto &[around, place, corner] : rows) {
    Window &wnd = made(nullptr, {7, 7, 57, 37});
    WqWnd_Center(&wnd, around);
    EXPECT_EQ(placeOf(wnd), (Edges{place.x, place.y, place.x + 50, place.y + 30}));
    EXPECT_EQ(edges(wnd.rect), (Edges{corner.x, corner.y, corner.x + 50, corner.y + 30}));
  }
}

TEST_F(WqWndTest, AListOfObjectsBearsChangesWhileItIsSentTo) {
  WqList *list = nullptr;
  std::string log;
  std::function<void()> meanwhile;
  Window *all[4];
  for (int i = 0; i < 4; ++i) {
    all[i] = &made(nullptr, {0, 0, 10, 10}, [&, i](const WqMsg &msg) {
      if (msg.msg != WM_APP || msg.wParam != 8 || msg.lParam != 9) return 0;
      log += static_cast<char>('a' + i);
      if (meanwhile) std::exchange(meanwhile, nullptr)();
      return 1;
    });
    all[i]->msgReq = i == 1 ? 4u : 3u;
  }
  auto &[a, b, c, d] = all;
  // clang-format off
  const std::tuple<std::vector<Window *>, std::function<void()>, std::string> rows[] = {
      {{a, b, c, a}, nullptr, "aca"}, {{a, c, d}, [&] { WqWndLst_Remove(&list, d); }, "dca"},
      {{a, c, d}, [&] { WqWndLst_Remove(&list, c); }, "da"}, {{a, c}, [&] { WqWndLst_Add(&list, d); }, "ca"},
      {{a, c, c, c, d}, [&] { WqWndLst_Remove(&list, c), WqWndLst_Remove(&list, a); }, "d"},
      {{a, c, d}, [&] { WqWndLst_RemoveAll(&list), WqWndLst_Add(&list, a); }, "d"},
      {{a, c, d}, [&] { WqWndLst_SendAll(&list, 1, WM_APP, 8, 9); }, "ddcaca"}};
  // clang-format on
  for (const auto &[added, act, expected] : rows) {
    for (Window *wnd : added) WqWndLst_Add(&list, wnd);
    log.clear(), meanwhile = act, WqWndLst_SendAll(&list, 2 | 1, WM_APP, 8, 9), WqWndLst_RemoveAll(&list);
    EXPECT_TRUE(log == expected && !list) << log;
  }
  WqWndLst_Add(&list, a);
  AllocationFailure failure(1);
  WqWndLst_Add(&list, c);
  EXPECT_TRUE(failure.happened() && listed(list) == Objects{a});
  WqWndLst_RemoveAll(&list);
}
