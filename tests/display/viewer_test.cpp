// The viewer's bar and tips under a person's hand.

#include "display.h"

#include "support/files.h"

#include <algorithm>
#include <optional>

namespace {

// Borders of the bar's pictures (bar.py), the ground of tips, and the wave's lane.
constexpr COLORREF kPanel = RGB(30, 37, 47), kHovered = RGB(70, 88, 106), kPressed = RGB(126, 200, 240),
                   kTip = RGB(255, 255, 225);
constexpr int kZoomIn = 48, kStart = 128, kMiddle = 16; // of buttons, in pixels of the client area
constexpr int kEdge = 12;                               // from there to the border
const std::string kTitle = "tone.wav - levelview";

} // namespace

class ViewersBar : public DisplayTest {
 protected:
  void SetUp() override {
    DisplayTest::SetUp();
    const std::string wave = folder_.file("tone.wav");
    ASSERT_EQ(runCommand("./levelview --make " + wave).status, 0);
    program_.emplace("./levelview --settings " + folder_.file("settings.ini") + " " + wave);
    ASSERT_TRUE(until([] { return user().window(kTitle).id != 0; }));
    settle();
    place_ = there(kTitle);
  }
  void TearDown() override {
    user().wish(user().window(kTitle), User::Wish::close);
    EXPECT_EQ(program_->end(), 0);
    DisplayTest::TearDown();
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

 private:
  const TempFolder folder_;
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
  user().click(there(kTitle).x + kStart, there(kTitle).y + kMiddle);
  EXPECT_TRUE(until([&] { return wave() != middle; })) << "the start isn't shown";
  user().point(there(kTitle).x + 300, there(kTitle).y + 200);
  EXPECT_TRUE(hasBorder(kStart, kPanel)) << "hovered although the pointer has left";
}
