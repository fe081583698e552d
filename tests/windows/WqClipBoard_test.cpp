// The clipboard of an application: what it can paste, the text there, and what it promises.

#include "support/aside.h"
#include "support/clips.h"
#include "support/desktop.h"
#include "windows/objects.h"

namespace {

class WqClipBoardTest : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    window = &made(nullptr, {10, 10, 60, 60});
    wqMain.mainWnd = window->hwnd;
  }
  void TearDown() override { emptyClipboard(), ObjectTest::TearDown(); }

  // Promises of these formats, by the main window or by another one.
  static uint32_t found(const std::vector<UINT> &formats, HWND owner = wqMain.mainWnd) {
    OpenClipboard(owner), EmptyClipboard();
    for (const UINT format : formats) SetClipboardData(format, nullptr);
    CloseClipboard();
    WqClipBoard_Paste(~0u);
    const uint32_t pasted = WqClipBoard_GetFormat();
    EXPECT_EQ(wqMain.clipBoard.available, pasted);
    return pasted;
  }

  Window *window = nullptr;
};

WqWord asked(WqWord arg1, WqWord arg2, WqWord arg3, uint32_t format, WqWord userData) {
  return arg1 + 10 * arg2 + 100 * arg3 + 1000 * format + 1000000 * userData;
}

} // namespace

TEST_F(WqClipBoardTest, FormatsHaveBits) {
  const UINT named = RegisterClipboardFormatA("wq test format");
  // clang-format off
  const std::pair<std::vector<UINT>, uint32_t> rows[] = {
      {{}, 0}, {{CF_TEXT}, 0x2082}, {{CF_RIFF, CF_WAVE}, 0x1800}, // text comes with the two that are made of it
      {{0x200, 0x20F}, 0x80010000}, {{0x210, 0x2FF}, 0x00008001}, {{0x211}, 0x2}, // the last has the bit of CF_TEXT
      {{CF_LOCALE, 0x1FF, 0x300 - 0x80, named}, 1u << 16}}; // the others have none
  // clang-format on
  for (const auto &[formats, bits] : rows) EXPECT_EQ(found(formats), bits);
  EXPECT_EQ(found({0x201, CF_RIFF}, made(nullptr, {10, 10, 60, 60}).hwnd), 1u << CF_RIFF) << "of somebody else";

  putClip(nullptr, CF_TEXT, clipOf(narrow("text")));
  WqClipBoard_OnlyText();
  EXPECT_EQ(WqClipBoard_GetFormat(), 2u);
  EXPECT_EQ(wqMain.clipBoard.available, 0x2082u);
  WqClipBoard_Delete();
  EXPECT_EQ(WqClipBoard_GetFormat(), 0u);
  EXPECT_EQ(GetClipboardOwner(), wqMain.mainWnd);
}

TEST_F(WqClipBoardTest, TextGoesIntoTheBuffer) {
  char buffer[8];
  const auto text = [&](uint32_t size) {
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(WqClipBoard_GetText(buffer, size), 0);
    return std::string(buffer, sizeof buffer);
  };
  EXPECT_EQ(text(8), "########") << "there is no text";
  putClip(nullptr, CF_UNICODETEXT, clipOf(wide(u"ab\u3042cdef")));
  EXPECT_EQ(text(0), "########");
  EXPECT_EQ(text(1), std::string("\0#######", 8));
  EXPECT_EQ(text(4), std::string("ab\x82\0####", 8)) << "cut between bytes";
  EXPECT_EQ(text(8), std::string("ab\x82\xA0"
                                 "cde\0",
                                 8));
  putClip(nullptr, CF_TEXT, clipOf(narrow("abc")));
  EXPECT_EQ(text(8), std::string("abc\0###\0", 8));
}

TEST_F(WqClipBoardTest, PromisesAreMadeByTheMainWindow) {
  for (const auto &[format, expected] :
       {std::pair(0x280u, std::string("14 640 1 16 7 13")), {0x201u, "513 1 16 7 13"}}) {
    WqClipBoard_Set(format, 7, asked);
    const std::string made = onWindows() && format == 0x280 ? " 3" : ""; // of the metafile
    EXPECT_EQ(clipFormats(), expected + made);
  }
  WqClipBoard_SetOne(CF_TEXT, 3, asked);
  EXPECT_EQ(clipFormats(), "1 16 7 13");
  EXPECT_EQ(WqClipBoard_CallBack(4, 5, 6), 3001654u);
  window->on = [&](const WqMsg &msg) {
    if (msg.msg != WM_RENDERFORMAT) return 0;
    const WqWord number = WqClipBoard_CallBack(msg.wParam, 0, 0);
    return SetClipboardData(static_cast<UINT>(msg.wParam), clipOf(narrow(std::to_string(number)))) ? 1 : 0;
  };
  EXPECT_EQ(lookAt(CF_TEXT), narrow("3001001"));

  WqClipBoard_SetOne(0x202, 0, nullptr);
  EXPECT_EQ(WqClipBoard_CallBack(1, 2, 3), 0u);
  WqClipBoard_Copy(8), WqClipBoard_Cut(9), WqClipBoard_Paste(10);
  const WqClipBoard &state = wqMain.clipBoard;
  EXPECT_EQ((std::vector{state.pasteMask, state.copyMask, state.cutMask, state.format}),
            (std::vector<uint32_t>{10, 8, 9, 0x202}));
  WqClipBoard_Term(&wqMain.clipBoard), WqClipBoard_Init(&wqMain.clipBoard);
  EXPECT_EQ((std::vector{state.pasteMask, state.copyMask, state.cutMask, state.format}), std::vector<uint32_t>(4));
}

TEST_F(WqClipBoardTest, WhileAnotherOneHasItOpenNothingIsFoundOrChanged) {
  putClip(nullptr, CF_TEXT, clipOf(narrow("theirs")));
  std::atomic<bool> open{}, over{};
  const auto other = aside([&]() -> INT_PTR {
    open = OpenClipboard(nullptr);
    while (!over) Sleep(1);
    return CloseClipboard();
  });
  while (!open && !other->done) Sleep(1);
  char buffer[4] = "own";
  WqClipBoard_Paste(~0u);
  EXPECT_EQ(WqClipBoard_GetFormat(), 0u);
  EXPECT_EQ(WqClipBoard_GetText(buffer, sizeof buffer), 0);
  EXPECT_STREQ(buffer, "own");
  WqClipBoard_Delete();
  WqClipBoard_Set(0x201, 0, nullptr);
  over = true;
  ASSERT_TRUE(other->within(5000));
  EXPECT_EQ(other->result, TRUE) << "it still had it open";
  if (onWine()) GTEST_SKIP() << "a promise that it refuses takes the program's own data away there";
  EXPECT_EQ(lookAt(CF_TEXT), narrow("theirs"));
}
