// Which pictures of the sheet a bar shows, where it puts them, and when it is painted at all.

#include "buttonbar/bars.h"
#include "drawing/canvas.h"
#include "support/files.h"

namespace {

constexpr LONG kCellWidth = 12, kCellHeight = 8;
constexpr COLORREF kOld = 0x555555, kGround = 0x00FF00;
constexpr uint16_t kSheet = 7, kUnknown = 8;

// A pixel of the sheet tells where it is from: column and x in red, row and y in green.
constexpr COLORREF picture(int column, int row, int x, int y) { return RGB(column * 16 + x, row * 16 + y, 0x80); }

std::string sheet() {
  std::string pixels;
  for (int y = 6 * kCellHeight - 1; y >= 0; --y) // from the bottom up
    for (int x = 0; x < 16 * kCellWidth; ++x) {
      const COLORREF color = picture(x / kCellWidth, y / kCellHeight, x % kCellWidth, y % kCellHeight);
      for (const auto part : {GetBValue(color), GetGValue(color), GetRValue(color)}) pixels += static_cast<char>(part);
    }
  return bmpFile({16 * kCellWidth, 6 * kCellHeight, 24, 0, BI_RGB, "", pixels});
}

} // namespace

class BarPaintTest : public BarTest {
 protected:
  void SetUp() override {
    BarTest::SetUp();
    WqBmpFile file;
    writeFile(folder_.file("sheet.bmp"), sheet());
    WqBmpFile_Init(&file, folder_.file("sheet.bmp").c_str()), WqBmpTbl_Insert(kSheet, &file);
    wnd_ = &made(nullptr, {100, 100, 160, 140});
    WqWnd_Ds(wnd_, WQ_DS_MBB);
    wnd_->on = [this](const WqMsg &msg) {
      if (msg.msg == WQM_PAINT && ground_)
        WqDcDraw_FillRect(&reinterpret_cast<WqDc *>(msg.wParam)->draw, &kAll, WQ_COLOR_GREEN);
      return 0;
    };
    WqWnd_WaitQueEmpty();
  }
  WqMbbField *field(uint16_t bitmap, POINT origin) const {
    WqMbb *bar = WqMbbTbl_Get(wnd_->hwnd);
    const SIZE cell = {kCellWidth, kCellHeight};
    return WqMbbField_Create(bar ? bar : WqMbb_Create(wnd_->hwnd), 1, bitmap, &origin, &cell);
  }
  static WqMbbBtn *add(WqMbbField *field, RECT rect, uint32_t flags = 0) {
    return WqMbbBtn_Create(field, 1, 0, flags, &rect, "", 0);
  }
  // Paints all of the window, which had one colour.
  void paint() const {
    fillWindow(wnd_->hwnd, kOld);
    InvalidateRect(wnd_->hwnd, nullptr, FALSE), UpdateWindow(wnd_->hwnd);
  }
  COLORREF at(int x, int y) const { return pixelOf(wnd_->hwnd, x, y); }

  static constexpr RECT kAll = {0, 0, 200, 200};
  Window *wnd_ = nullptr;
  bool ground_ = true; // whether the user procedure draws one

 private:
  const TempFolder folder_;
};

TEST_F(BarPaintTest, TheStateChoosesThePicture) {
  constexpr uint32_t kDown = WQ_MBB_DOWN, kDisabled = WQ_MBB_DISABLED, kSelected = WQ_MBB_SELECTED;
  WqMbbBtn *button = add(field(kSheet, {20, 10}), {2, 1, 5, 3});
  // clang-format off
  const struct { uint32_t flags; int column, row; } rows[] = {
      {kDisabled, 0, 0}, {kDisabled | kSelected | 1, 1, 0}, {kDisabled | kDown | 7, 7, 1},
      {kDisabled | kDown | kSelected, 0, 1}, {0, 0, 2}, {0xFF01FFF0 | 15, 15, 2}, // the owner's bits have no picture
      {kDown | 2, 2, 3}, {kSelected, 0, 4}, {kSelected | kDown | 15, 15, 5}};
  // clang-format on
  for (const auto &row : rows) {
    WqMbbBtn_Update(button, row.flags), paint();
    const std::vector seen = {at(22, 11), at(25, 13), at(21, 11), at(22, 10), at(26, 13), at(25, 14)};
    const auto pixel = [&](int x, int y) { return picture(row.column, row.row, x, y); };
    EXPECT_EQ(seen, (std::vector{pixel(2, 1), pixel(5, 3), kGround, kGround, kGround, kGround}))
        << &row - rows << ": the first pixel, the last, which is inside, and beyond each edge";
  }
}

TEST_F(BarPaintTest, TheOldestLiesOnTop) {
  WqMbbField *under = field(kSheet, {0, 0}); // the older field, whose buttons come later in a walk
  add(under, {0, 0, 5, 5}, 1), add(under, {3, 0, 9, 5}, 2);
  add(field(kSheet, {4, 4}), {0, 0, 7, 7}, 3), paint();
  EXPECT_EQ(at(3, 0), picture(1, 2, 3, 0)) << "of two in a field";
  EXPECT_EQ(at(6, 0), picture(2, 2, 6, 0));
  EXPECT_EQ(at(5, 5), picture(1, 2, 5, 5)) << "of two fields";
  EXPECT_EQ(at(11, 11), picture(3, 2, 7, 7));
}

TEST_F(BarPaintTest, PinsMoveTheField) {
  constexpr uint32_t kLeft = WQ_MBB_PIN_LEFT, kRight = WQ_MBB_PIN_RIGHT, kTop = WQ_MBB_PIN_TOP,
                     kBottom = WQ_MBB_PIN_BOTTOM;
  // The window is 60 wide and 40 high, the button 4 and 3, and two pixels and one off the origin.
  // clang-format off
  const struct { uint32_t pins; Edges expected; } rows[] = { // the origin after the paint, and where the button is
      {0, {20, 10, 22, 11}}, {kLeft, {0, 10, 0, 11}}, {kRight, {56, 10, 56, 11}}, {kTop, {20, 0, 22, 0}},
      {kBottom, {20, 37, 22, 37}}, {kTop | kBottom | kLeft | kRight, {20, 0, 22, 0}},
      {kBottom | kLeft | kRight, {20, 37, 22, 37}}, {kLeft | kRight, {0, 10, 0, 11}}};
  // clang-format on
  for (const uint16_t bitmap : {kSheet, kUnknown})
    for (const auto &row : rows) {
      SCOPED_TRACE(testing::Message() << bitmap << ' ' << &row - rows);
      WqMbbField *pinned = field(bitmap, {20, 10});
      add(pinned, {2, 1, 5, 3}, row.pins | 4), paint();
      EXPECT_EQ(std::tuple(pinned->originX, pinned->originY), std::tuple(row.expected[0], row.expected[1]));
      EXPECT_EQ(at(row.expected[2], row.expected[3]), bitmap == kSheet ? picture(4, 2, 2, 1) : kGround);
      WqMbbTbl_Remove(wnd_->hwnd);
    }
}

// Who is painted before the pinned button, the younger ones, still has the old origin in the first pass.
TEST_F(BarPaintTest, PinsFollowTheWindowWithEachPaint) {
  WqMbbField *pinned = field(kSheet, {20, 10});
  add(pinned, {0, 0, 3, 3}, 1), add(pinned, {4, 0, 7, 5}, 2 | WQ_MBB_PIN_RIGHT), add(pinned, {8, 0, 11, 3}, 3), paint();
  EXPECT_EQ(at(56, 14), picture(2, 2, 4, 4));
  EXPECT_EQ(at(56, 13), picture(1, 2, 0, 3)) << "the older one lies at the new origin, over the pinned one";
  EXPECT_EQ(at(28, 10), picture(3, 2, 8, 0));
  SetWindowPos(wnd_->hwnd, nullptr, 0, 0, 50, 40, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_EQ(pinned->originX, 56) << "before it is painted";
  paint();
  EXPECT_EQ(pinned->originX, 46);
  EXPECT_EQ(at(46, 10), picture(1, 2, 0, 0));
}

TEST_F(BarPaintTest, FarPlacesAndOddSizesDoNoHarm) {
  for (const int32_t edge : {INT_MAX, INT_MIN, INT_MAX - 3, 1 << 30}) {
    WqMbbField *there = field(kSheet, {edge, edge});
    there->cellWidth = there->cellHeight = edge;
    for (const RECT &rect : {RECT{0, 0, 3, 3}, RECT{edge, edge, edge, edge}, RECT{0, 0, edge, edge}})
      add(there, rect, 1);
    add(field(kSheet, {0, 0}), {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, WQ_MBB_PIN_RIGHT);
    add(field(kSheet, {0, 0}), {~edge, 0, edge, 5}, WQ_MBB_PIN_BOTTOM | 3), paint();
    WqMbbTbl_Remove(wnd_->hwnd);
  }
  add(field(kSheet, {0, 0}), {5, 5, 4, 9}), add(field(kSheet, {0, 0}), {0, 0, 0, 0}), paint();
  EXPECT_EQ((std::vector{at(0, 0), at(1, 0), at(5, 5)}), (std::vector{picture(0, 2, 0, 0), kGround, kGround}))
      << "one pixel, and none";
}

TEST_F(BarPaintTest, TheBarIsPaintedWithItsWindow) {
  WqMbbField *corner = field(kSheet, {0, 0});
  add(corner, {0, 0, 3, 3}, WQ_MBB_PIN_RIGHT);
  ground_ = false, paint();
  EXPECT_EQ(corner->originX, 56) << "painted";
  EXPECT_EQ(at(56, 0), kOld) << "and not shown, since nobody drew";
  const SIZE size = {kCellWidth, 2 * kCellHeight};
  const POINT place = {};
  WqWnd_BkgrndBitmap(wnd_, kSheet, &size, &place), WqWnd_Ds(wnd_, WQ_DS_BKGRND), paint();
  EXPECT_EQ(at(0, 0), picture(0, 0, 0, 0));
  EXPECT_EQ(at(56, 0), picture(0, 2, 0, 0)) << "the background shows it too";
  corner->originX = 5, wnd_->flags &= ~WQ_DS_MBB, paint();
  EXPECT_EQ(corner->originX, 5) << "nor is it painted without the bit";
  WqWnd_Ds(wnd_, WQ_DS_MBB), WqWnd_UserProc(wnd_, nullptr), paint();
  EXPECT_EQ(corner->originX, 5) << "without a user procedure it isn't painted";
  WqWnd_UserProc(wnd_,
                 [](WqWnd *wnd, WqMsg *msg) { return int32_t{msg->msg == WQM_PAINT && DestroyWindow(wnd->hwnd)}; });
  paint();
  EXPECT_EQ(corner->originX, 5) << "nor once the pass has ended the window";
  EXPECT_EQ(wnd_->hwnd, nullptr);
}
