// Files that are dropped on a window: what the block of WM_DROPFILES tells, made here as another program would.
#include "support/desktop.h"
#include "support/handles.h"

#include <cstring>

namespace {

using namespace std::string_literals;

HDROP makeDrop(bool wide, const std::string &names, BOOL outside = FALSE) {
  DROPFILES head{};
  head.pFiles = sizeof head;
  head.pt = {12, -34};
  head.fNC = outside;
  head.fWide = wide;
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, sizeof head + names.size());
  auto *const bytes = static_cast<char *>(GlobalLock(block));
  std::memcpy(bytes, &head, sizeof head);
  std::memcpy(bytes + sizeof head, names.data(), names.size());
  GlobalUnlock(block);
  return static_cast<HDROP>(block);
}

std::string bytesOf(const std::u16string &text) {
  return {reinterpret_cast<const char *>(text.data()), text.size() * sizeof(char16_t)};
}

UINT countOf(HDROP drop) { return DragQueryFileA(drop, 0xFFFFFFFF, nullptr, 0); }

// A name in so much room, and what the call told: "C:\a 4", with a hash for each byte that was left alone.
std::string queried(HDROP drop, UINT number, UINT size) {
  char room[12];
  std::memset(room, '#', sizeof room);
  const UINT told = DragQueryFileA(drop, number, room, size);
  std::string text(room, sizeof room);
  const size_t end = text.find('\0');
  return (end == std::string::npos ? "" : text.substr(0, end) + "|") + text.substr(end + 1) + " " +
         std::to_string(told);
}

} // namespace

using WinDrop = DesktopTest;

TEST_F(WinDrop, NamesAreAskedByNumber) {
  const std::vector<size_t> before = openHandles();
  const HDROP drops[] = {makeDrop(false, "C:\\a.wav\0D:\\bc\0\x83\x5C\x83\x5C.w\0\0"s),
                         makeDrop(true, bytesOf(u"C:\\a.wav\0D:\\bc\0\u30BD\u30BD.w\0"s + u'\0'), TRUE)};
  for (const HDROP drop : drops) {
    EXPECT_EQ(countOf(drop), 3u);
    EXPECT_EQ(queried(drop, 0, 12), "C:\\a.wav|### 8");
    EXPECT_EQ(queried(drop, 0, 9), "C:\\a.wav|### 8") << "just fits";
    EXPECT_EQ(queried(drop, 0, 8), "C:\\a.wa|#### 7");
    EXPECT_EQ(queried(drop, 1, 1), "|########### 0");
    EXPECT_EQ(queried(drop, 1, 0), "############ 5") << "no room";
    EXPECT_EQ(DragQueryFileA(drop, 1, nullptr, 3), 5u);
    EXPECT_EQ(queried(drop, 2, 12), "\x83\x5C\x83\x5C.w|##### 6");
    EXPECT_EQ(queried(drop, 3, 12), "############ 0");
    POINT at = {};
    EXPECT_EQ(DragQueryPoint(drop, &at), drop == drops[0]);
    EXPECT_EQ(at.x, 12);
    EXPECT_EQ(at.y, -34);
    DragFinish(drop);
  }
  EXPECT_EQ(countOf(nullptr), 0u);
  EXPECT_EQ(openHandles(), before);
}

// Wine reads on behind a block that lacks its end.
TEST_F(WinDrop, ABlockThatIsCutHoldsWhatIsThere) {
  if (onWindows()) GTEST_SKIP() << "the bytes behind a block are anybody's";
  for (const auto &[names, count, last] : {std::tuple(""s, 0u, ""s), {"ab\0cd"s, 2u, "cd"s}, {"ab\0"s, 1u, "ab"s}}) {
    const HDROP drop = makeDrop(false, names);
    EXPECT_EQ(countOf(drop), count) << names;
    EXPECT_EQ(queried(drop, count - 1, 12).rfind(count ? last + "|" : "####", 0), 0u) << names;
    DragFinish(drop);
  }
  const HDROP odd = makeDrop(true, bytesOf(u"ab") + "c");
  EXPECT_EQ(countOf(odd), 1u);
  EXPECT_EQ(queried(odd, 0, 12).substr(0, 3), "ab|");
  DragFinish(odd);
  const HGLOBAL small = GlobalAlloc(GMEM_MOVEABLE, 4);
  EXPECT_EQ(countOf(static_cast<HDROP>(small)), 0u);
  GlobalFree(small);
}

TEST_F(WinDrop, AWindowSaysWhetherItTakesFilesAndIsSentThem) {
  const HWND window = make("A", WS_POPUP, 0, 0, 100, 100), child = make("B", WS_CHILD, 0, 0, 50, 50, window);
  const auto takes = [](HWND one) { return (GetWindowLongA(one, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0; };
  record("X");
  for (const HWND one : {window, child}) {
    EXPECT_FALSE(takes(one));
    DragAcceptFiles(one, 5);
    EXPECT_TRUE(takes(one));
    DragAcceptFiles(one, FALSE);
    EXPECT_FALSE(takes(one));
    DragAcceptFiles(one, TRUE);
  }
  EXPECT_NE(take().find("STYLE"), std::string::npos) << "told as a change of styles";
  std::string told;
  answer = [&](HWND one, UINT message, WPARAM wParam, LPARAM, LRESULT &) {
    if (message != WM_DROPFILES) return false;
    const auto drop = reinterpret_cast<HDROP>(wParam);
    told = (one == window ? "A " : "B ") + queried(drop, 0, 12);
    DragFinish(drop);
    return true;
  };
  const std::vector<size_t> before = openHandles();
  PostMessageA(window, WM_DROPFILES, reinterpret_cast<WPARAM>(makeDrop(false, "C:\\a\0"s)), 0);
  pump(20);
  EXPECT_EQ(told, "A C:\\a|####### 4");
  EXPECT_EQ(openHandles(), before);
}
