// Keys that mean something to the system: Alt, F10, and those that there are on the left and on the right.
#include "support/desktop.h"
#include "support/input.h"

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;
constexpr Key kF10{VK_F10, 0x44}, kF4{VK_F4, 0x3E}, kSpace{VK_SPACE, 0x39};

class WinKeys : public DesktopTest {
 protected:
  const HWND a = make("A", kTop, 100, 100, 400, 300), c = make("C", kChild, 20, 20, 100, 80, a);

  void SetUp() override {
    SetForegroundWindow(a), SetFocus(a), pump(100);
    // the default procedure would open the system menu, and wait in it
    answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT &) { return message == WM_SYSCOMMAND; };
  }
};

static void withAlt(Key key) { press(kAlt), tap(key), release(kAlt); }

TEST_F(WinKeys, AltAndF10CallTheMenu) {
  const std::string alt = "A< SYSDOWN 12 20380001\nA< SYSUP 12 C0380001\nA: COMMAND F100 0";
  const auto both = [](const std::string &key, const std::string &command) {
    return "A< SYSDOWN 12 20380001\nA< SYSDOWN " + key + command + "\nA< UP 12 C0380001";
  };
  const auto menu = [](const std::string &letter) { return "\nA: COMMAND F100 " + letter; };
  play("KL",
       {{[] { tap(kAlt); }, alt},
        {[] { tap(kAlt), tap(kAlt); }, alt + '\n' + alt},
        {[] { tap(kF10); }, "A< SYSDOWN 79 440001\nA< SYSUP 79 C0440001\nA: COMMAND F100 0"},
        {[] { withAlt(kA); }, both("41 201E0001", "\nA< SYSCHAR 61 201E0001" + menu("61") + "\nA< SYSUP 41 E01E0001")},
        {[] { withAlt(kSpace); },
         both("20 20390001", "\nA< SYSCHAR 20 20390001" + menu("20") + "\nA< SYSUP 20 E0390001")},
        {[] { withAlt(kF4); }, both("73 203E0001", "\nA< COMMAND F060 0\nA< SYSUP 73 E03E0001")},
        {[] { withAlt(kShift); }, both("10 202A0001", "\nA< SYSUP 10 E02A0001")}, // and no menu after that
        {[] { press(kControl), withAlt(kA), release(kControl); },
         "A< DOWN 11 1D0001\nA< DOWN 12 20380001\nA< DOWN 41 201E0001\nA< UP 41 E01E0001\nA< UP 12 C0380001\n"
         "A< UP 11 C01D0001"},
        {[] { tap(kAlt), tap(kA); }, alt + "\nA< DOWN 41 1E0001\nA< CHAR 61 1E0001\nA< UP 41 C01E0001"},
        {[&] { SendMessageA(a, WM_SYSCHAR, 'b', 0x20300001); }, "A: SYSCHAR 62 20300001" + menu("62")},
        {[&] { SendMessageA(a, WM_SYSCHAR, 'b', 0x300001); }, "A: SYSCHAR 62 300001"}}); // without Alt
}

TEST_F(WinKeys, TheWindowOfTheFocusAsksOrItsTopLevelWindow) {
  SetFocus(c);
  play("KL", {{[] { withAlt(kA); },
               "C< SYSDOWN 12 20380001\nC< SYSDOWN 41 201E0001\nC< SYSCHAR 61 201E0001\nC: COMMAND F100 61\n"
               "C< SYSUP 41 E01E0001\nC< UP 12 C0380001"},
              {[] { tap(kAlt); }, "C< SYSDOWN 12 20380001\nC< SYSUP 12 C0380001\nA: COMMAND F100 0"},
              {[] { tap(kF10); }, "C< SYSDOWN 79 440001\nC< SYSUP 79 C0440001\nA: COMMAND F100 0"},
              {[] { withAlt(kSpace); },
               "C< SYSDOWN 12 20380001\nC< SYSDOWN 20 20390001\nC< SYSCHAR 20 20390001\nA: SYSCHAR 20 20390001\n"
               "A: COMMAND F100 20\nC< SYSUP 20 E0390001\nC< UP 12 C0380001"}});
}

TEST_F(WinKeys, WithoutAFocusTheActiveWindowGetsThem) {
  const std::string letter = "A< SYSDOWN 41 1E0001\nA< SYSCHAR 61 1E0001\nA< SYSUP 41 C01E0001";
  SetFocus(nullptr);
  play("KL", {{[] { tap(kAlt); }, "A< SYSDOWN 12 20380001\nA< SYSUP 12 C0380001\nA: COMMAND F100 0"},
              {[] { tap(kF10); }, "A< SYSDOWN 79 440001\nA< SYSUP 79 C0440001\nA: COMMAND F100 0"}});
  play("K", {{[] { tap(kA); }, letter}});
  ShowWindow(a, SW_MINIMIZE), SetActiveWindow(a), SetFocus(nullptr);
  play("K", {{[] { tap(kA); }, letter}});
}

// Which keys are down, as of the messages taken and as of now: 11 for both, 10 for the first alone.
static std::string down() {
  std::string text;
  for (const int key :
       {VK_SHIFT, VK_LSHIFT, VK_RSHIFT, VK_CONTROL, VK_LCONTROL, VK_RCONTROL, VK_MENU, VK_LMENU, VK_RMENU}) {
    text += GetKeyState(key) < 0 ? '1' : '0';
    text += GetAsyncKeyState(key) < 0 ? "1 " : "0 ";
  }
  return text;
}

TEST_F(WinKeys, LeftAndRightKeysAreToldAsOne) {
  struct Press {
    Key key;
    DWORD flags;
    const char *told; // when it goes down; when it goes up
    std::string keys;
  };
  const std::string none = "00 00 00 ", left = "11 11 00 ", right = "11 00 11 ";
  constexpr DWORD kFar = KEYEVENTF_EXTENDEDKEY;
  const Press presses[] = {{kShift, 0, "A< DOWN 10 2A0001\nA< UP 10 C02A0001", left + none + none},
                           {{VK_LSHIFT, 0x2A}, 0, "A< DOWN 10 2A0001\nA< UP 10 C02A0001", left + none + none},
                           {{VK_RSHIFT, 0x36}, kFar, "A< DOWN 10 360001\nA< UP 10 C0360001", right + none + none},
                           {kControl, 0, "A< DOWN 11 1D0001\nA< UP 11 C01D0001", none + left + none},
                           {kControl, kFar, "A< DOWN 11 11D0001\nA< UP 11 C11D0001", none + right + none},
                           {{VK_RCONTROL, 0x1D}, kFar, "A< DOWN 11 11D0001\nA< UP 11 C11D0001", none + right + none},
                           {kAlt, kFar, "A< SYSDOWN 12 21380001\nA< SYSUP 12 C1380001", none + none + right},
                           {{VK_LMENU, 0x38}, 0, "A< SYSDOWN 12 20380001\nA< SYSUP 12 C0380001", none + none + left}};
  for (const Press &one : presses) {
    SCOPED_TRACE(testing::Message() << std::hex << int{one.key.first} << " " << one.flags);
    pump(20), record("K"), press(one.key, one.flags);
    const std::string told = pump();
    EXPECT_EQ(down(), one.keys);
    release(one.key, one.flags);
    EXPECT_EQ(told + '\n' + pump(), one.told);
    EXPECT_EQ(down(), none + none + none);
  }
}

TEST_F(WinKeys, ShiftIsDownWhileEitherOneIs) {
  const Key left{VK_LSHIFT, 0x2A}, right{VK_RSHIFT, 0x36};
  press(left), pump(), press(right, KEYEVENTF_EXTENDEDKEY), pump(), release(left), pump();
  EXPECT_EQ(down().substr(0, 9), "11 00 11 ");
  release(right, KEYEVENTF_EXTENDEDKEY), pump();
  EXPECT_EQ(down().substr(1, 8), "0 00 00 ");
  EXPECT_TRUE(GetKeyState(VK_SHIFT) >= 0 || onWine()) << "which may still hold it down";
}
