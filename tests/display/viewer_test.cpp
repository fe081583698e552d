// The viewer under a person's hand: its bar and tips, a dialog, and a file of another program.

#include "display.h"

#include "support/files.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace {

// Borders of the bar's pictures (bar.py), the ground of tips, and the wave's lane.
constexpr COLORREF kPanel = RGB(30, 37, 47), kHovered = RGB(70, 88, 106), kPressed = RGB(126, 200, 240),
                   kTip = RGB(255, 255, 225);
constexpr int kOpen = 16, kZoomIn = 48, kStart = 128, kMiddle = 16; // of buttons, in pixels of the client area
constexpr int kEdge = 12;                                           // from there to the border

} // namespace

class ViewersBar : public DisplayTest {
 protected:
  void SetUp() override {
    DisplayTest::SetUp();
    const std::string wave = folder_.file("tone.wav");
    ASSERT_EQ(runCommand("./levelview --make " + wave).status, 0);
    program_.emplace("./levelview --settings " + folder_.file("settings.ini") + " " + wave);
    expectTitle("tone.wav - levelview");
    settle();
    place_ = there(title_);
  }
  void TearDown() override {
    user().wish(user().window(title_), User::Wish::close);
    EXPECT_EQ(program_->end(), 0);
    DisplayTest::TearDown();
  }

  void expectTitle(const std::string &title) {
    title_ = title;
    EXPECT_TRUE(until([&] { return user().window(title).id != 0; }, 5000)) << title;
  }
  void point(int x) const { user().point(place_.x + x, place_.y + kMiddle); }
  bool hasBorder(int x, COLORREF colour) const {
    return until([&] { return user().picture().at(place_.x + x - kEdge, place_.y + kMiddle) == colour; });
  }
  static int pixelsOf(COLORREF colour) {
    const Picture picture = user().picture();
    return static_cast<int>(std::count(picture.pixels.begin(), picture.pixels.end(), colour));
  }
  // What is to be seen below the bar at the left.
  std::vector<uint32_t> wave() const {
    const Picture picture = user().picture();
    std::vector<uint32_t> pixels;
    for (int y = 60; y < 400; y += 4)
      for (int x = 60; x < 600; ++x) pixels.push_back(picture.at(place_.x + x, place_.y + y));
    return pixels;
  }

  const TempFolder folder_;
  std::string title_;

 private:
  std::optional<Beside> program_;
  Place place_;
};

TEST_F(ViewersBar, ButtonsAreHoveredPressedAndHeld) {
  point(kZoomIn);
  EXPECT_TRUE(hasBorder(kZoomIn, kHovered));
  EXPECT_TRUE(until([] { return pixelsOf(kTip) > 200; })) << "no tip";
  const std::vector<uint32_t> whole = wave();
  user().button(1, true);
  EXPECT_TRUE(hasBorder(kZoomIn, kPressed));
  EXPECT_TRUE(until([] { return pixelsOf(kTip) == 0; })) << "the tip stays";
  const std::vector<uint32_t> larger = wave();
  EXPECT_NE(larger, whole);
  serve(800);
  EXPECT_NE(wave(), larger) << "a held button doesn't repeat";
  user().button(1, false);
  EXPECT_TRUE(hasBorder(kZoomIn, kHovered));
  const std::vector<uint32_t> middle = wave();
  user().click(there(title_).x + kStart, there(title_).y + kMiddle);
  EXPECT_TRUE(until([&] { return wave() != middle; })) << "the start isn't shown";
  user().point(there(title_).x + 300, there(title_).y + 200);
  EXPECT_TRUE(hasBorder(kStart, kPanel)) << "hovered although the pointer has left";
}

TEST_F(ViewersBar, ADialogOpensAnotherRecording) {
  const std::string other = std::filesystem::absolute("o.wav").string();
  ASSERT_EQ(runCommand("./levelview --make " + other).status, 0);
  user().click(there(title_).x + kOpen, there(title_).y + kMiddle);
  EXPECT_TRUE(until([] { return user().window("Open a recording").active; }, 5000)) << "no dialog";
  settle();
  for (const char *key : {"o", "period", "w", "a", "v", "Return"}) user().type(key);
  expectTitle("o.wav - levelview");
  std::filesystem::remove(other);
}

// Its name has what code page 932 has, and what it hasn't.
TEST_F(ViewersBar, AFileIsDraggedFromAnotherProgram) {
  const std::string name = "\xE9\x9F\xB3 \xC3\xA9\xF0\x9F\x98\x80.wav", file = folder_.file(name);
  ASSERT_EQ(runCommand("./levelview --make '" + file + "'").status, 0);
  Beside giver("./giver '" + std::filesystem::absolute(file).string() + "' '" + folder_.file("tone.wav") + "'");
  EXPECT_TRUE(until([] { return user().window("giver").id != 0; }, 5000));
  settle();
  if (session() == Session::sway) user().place(user().window("giver"), {1100, 60, 100, 100});
  settle();
  const Place from = there("giver"), to = there(title_);
  user().point(from.x + 50, from.y + 50);
  user().button(1, true);
  for (int step = 1; step <= 10; ++step) {
    user().point(from.x + 50 + (to.x + 200 - from.x - 50) * step / 10,
                 from.y + 50 + (to.y + 200 - from.y - 50) * step / 10);
    serve(50);
  }
  user().button(1, false);
  EXPECT_EQ(giver.line(""), "copied");
  expectTitle(name + " - levelview");
  EXPECT_EQ(giver.end(), 0);
}
