// What is different where the compositor decides: the size of maximised windows, and where anything stands.

#include "display.h"

#include "support/files.h"

namespace {

constexpr COLORREF kMagenta = RGB(255, 0, 255); // of the visitor's client area

Place visitorOnPicture() { return user().picture().box(kMagenta); }

bool eventually(const std::function<bool()> &so) {
  for (int tries = 0; tries < 100; ++tries) {
    if (so()) return true;
    Sleep(20);
  }
  return false;
}

} // namespace

TEST_F(SwayDesktop, AWindowBornMaximisedFillsTheOutput) {
  Beside program("./visitor 'tiled visitor' 100 100 900 500 maximised");
  EXPECT_TRUE(eventually([] { return visitorOnPicture() == Place{0, 0, 1280, 800}; })) << visitorOnPicture();
  EXPECT_EQ(there("tiled visitor"), (Place{0, 0, 1280, 800}));
  user().point(700, 650);
  user().button(1, true);
  user().button(1, false);
  EXPECT_EQ(program.line("press"), "press 700,650");
  user().wish(user().window("tiled visitor"), User::Wish::close);
  EXPECT_EQ(program.end(), 0);
}

// What the viewer saved after the desktop had sized its window is what it comes back with.
TEST_F(SwayDesktop, TheSizeIsRemembered) {
  const TempFolder folder;
  const std::string settings = folder.file("settings.ini"), wave = folder.file("tone.wav");
  ASSERT_EQ(runCommand("./levelview --make " + wave).status, 0);
  Place last;
  for (const Place &place : {Place{100, 100, 700, 500}, Place{150, 60, 840, 560}}) {
    Beside program("./levelview --settings " + settings + " " + wave);
    const std::string title = "tone.wav - levelview";
    ASSERT_TRUE(eventually([&] { return user().window(title).id != 0; }));
    if (last.width) {
      eventually([&] { return there(title).width == last.width; });
      EXPECT_EQ(there(title).width, last.width);
      EXPECT_EQ(there(title).height, last.height);
    }
    user().place(user().window(title), place);
    EXPECT_TRUE(eventually([&] { return there(title) == place; })) << there(title);
    Sleep(300); // until the viewer has been told
    user().wish(user().window(title), User::Wish::close);
    EXPECT_EQ(program.end(), 0);
    last = place;
  }
}

// Title buttons are the program's own there, above its client area at the right: minimise, maximise, close.
class WestonDesktop : public testing::Test {
 protected:
  static constexpr int kWidth = 1200, kHeight = 900; // of the output
  void SetUp() override {
    user().point(kWidth + 50, kHeight + 50);
    user().point(kWidth - 50, kHeight - 50);
  }
  // It fills the output below the panel, but for its own frame.
  static bool maximised() {
    const Place client = visitorOnPicture();
    return client.width > kWidth - 10 && client.y + client.height > kHeight - 5 && client.y < 80;
  }
  // Until the compositor's answers are over, and what comes is a deed of its user.
  static void settle() { Sleep(300); }
  static void button(int fromTheRight) {
    settle();
    const Place client = visitorOnPicture();
    user().click(client.x + client.width - 14 - 23 * fromTheRight, client.y - 15);
  }
};

TEST_F(WestonDesktop, TheTitleButtonsMaximiseAndRestore) {
  Beside program("./visitor visitor 300 300 600 400");
  ASSERT_TRUE(eventually([] { return visitorOnPicture().width == 600; })) << visitorOnPicture();
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    button(1);
    ASSERT_TRUE(eventually(maximised)) << visitorOnPicture();
    const Place large = visitorOnPicture();
    const std::string told = "size 2 " + std::to_string(large.width) + ',' + std::to_string(large.height);
    EXPECT_EQ(program.line(told), told); // it may have guessed another size first
    button(1);
    ASSERT_TRUE(eventually([&] { return visitorOnPicture().width == 600; })) << visitorOnPicture();
    EXPECT_EQ(visitorOnPicture().height, 400);
    EXPECT_EQ(program.line("size 0"), "size 0 600,400");
  }
  const Place last = visitorOnPicture();
  user().click(last.x + 100, last.y + 80);
  EXPECT_EQ(program.line("press"), "press 100,80");
  button(0);
  EXPECT_EQ(program.line("close"), "close");
  EXPECT_EQ(program.end(), 0);
}

TEST_F(WestonDesktop, AWindowBornMaximisedIsRestored) {
  Beside program("./visitor visitor 300 300 600 400 maximised");
  ASSERT_TRUE(eventually(maximised)) << visitorOnPicture();
  button(1);
  EXPECT_TRUE(eventually([] { return visitorOnPicture().width == 600; })) << visitorOnPicture();
  EXPECT_EQ(visitorOnPicture().height, 400);
  button(0);
  EXPECT_EQ(program.end(), 0);
}

// The compositor sizes by the border, which is the program's own there too.
TEST_F(WestonDesktop, TheBorderSizes) {
  Beside program("./visitor visitor 300 300 600 400");
  ASSERT_TRUE(eventually([] { return visitorOnPicture().width == 600; })) << visitorOnPicture();
  settle();
  const Place normal = visitorOnPicture();
  const int x = normal.x + normal.width + 1, y = normal.y + normal.height + 1;
  user().point(x, y);
  user().button(1, true);
  for (const int step : {10, 20, 30}) {
    user().point(x + step, y + step);
    Sleep(30);
  }
  user().button(1, false);
  EXPECT_TRUE(eventually([] { return visitorOnPicture().width == 630; })) << visitorOnPicture();
  EXPECT_EQ(visitorOnPicture().height, 430);
  EXPECT_NE(program.line("size 0 630,430"), "");
  const Place last = visitorOnPicture();
  button(0);
  EXPECT_EQ(program.line("close"), "close") << last;
  EXPECT_EQ(program.end(), 0);
}
