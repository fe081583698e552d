// The clipboard between windows and threads of one program: who may open it, what becomes of data, promises, pictures.
#include "platform/canvas.h"
#include "platform/errors.h"
#include "support/aside.h"
#include "support/clips.h"
#include "support/desktop.h"
#include "support/handles.h"

#include <cstdlib>

class WinClipboard : public DesktopTest {
 protected:
  void SetUp() override { // others look at it when a desktop begins
    for (int i = 0; i < 100 && !(OpenClipboard(a) && CloseClipboard()); ++i) Sleep(20);
  }
  void TearDown() override {
    answer = nullptr;
    CloseClipboard(), emptyClipboard(), pump(20);
    EXPECT_EQ(openHandles(), before_) << "of the kernel, views, memory, windows, drawing";
  }

  const HWND a = make("A", WS_POPUP, 0, 0, 10, 10), b = make("B", WS_POPUP, 0, 0, 10, 10);

  // A window answers WM_RENDERFORMAT with these bytes.
  static void render(HWND owner, const std::function<void(UINT)> &give) {
    answer = [owner, give](HWND window, UINT message, WPARAM format, LPARAM, LRESULT &) {
      if (window == owner && message == WM_RENDERFORMAT) give(static_cast<UINT>(format));
      return false;
    };
  }
  // On a thread of its own, while this one serves messages.
  static INT_PTR onThread(const std::function<INT_PTR()> &call) {
    const auto outcome = aside(call);
    for (int i = 0; i < 5000 && !outcome->done; ++i) written_ += pump();
    EXPECT_TRUE(outcome->done) << "the thread waits";
    return outcome->result;
  }
  static inline std::string written_;

 private:
  std::vector<size_t> before_ = openHandles();
};

TEST_F(WinClipboard, OneHasItOpen) {
  const auto open = [](HWND window) { return [=] { return !OpenClipboard(window); }; };
  expectErrors({{"close", [] { return !CloseClipboard(); }, ERROR_CLIPBOARD_NOT_OPEN},
                {"empty", [] { return !EmptyClipboard(); }, ERROR_CLIPBOARD_NOT_OPEN},
                {"enumerate", [] { return EnumClipboardFormats(0) == 0; }, ERROR_CLIPBOARD_NOT_OPEN},
                {"get", [] { return !GetClipboardData(CF_TEXT); }, ERROR_CLIPBOARD_NOT_OPEN},
                {"set", [] { return !SetClipboardData(CF_TEXT, nullptr); }, ERROR_CLIPBOARD_NOT_OPEN},
                {"for no window", open(reinterpret_cast<HWND>(UINT_PTR{0x1235})), ERROR_INVALID_WINDOW_HANDLE}});
  EXPECT_TRUE(OpenClipboard(a));
  EXPECT_TRUE(OpenClipboard(a)) << "once more";
  EXPECT_EQ(GetOpenClipboardWindow(), a);
  expectErrors({{"for another", open(b), ERROR_ACCESS_DENIED}, {"for none", open(nullptr), ERROR_ACCESS_DENIED}});
  const auto other = [&]() -> INT_PTR {
    return OpenClipboard(b) ? 1 : EmptyClipboard() ? 2 : CloseClipboard() ? 3 : 0;
  };
  EXPECT_EQ(onThread(other), 0);
  EXPECT_TRUE(CloseClipboard());
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);

  onThread([] { return INT_PTR{OpenClipboard(nullptr)}; });
  Sleep(50);
  EXPECT_TRUE(OpenClipboard(a)) << "the thread has ended with it open";
  EXPECT_TRUE(CloseClipboard());
  const HWND c = make("C", WS_POPUP, 0, 0, 10, 10);
  OpenClipboard(c), DestroyWindow(c);
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
  CloseClipboard();
}

TEST_F(WinClipboard, ATextIsThereInAllForms) {
  struct {
    const char *what;
    UINT format;
    std::string given, formats, text, unicode;
  } const rows[] = {{"double bytes", CF_TEXT, narrow("a\x82\xA0z\r\nq"), "1 16 7 13", narrow("a\x82\xA0z\r\nq"),
                     wide(u"a\u3042z\r\nq")},
                    {"what the code page lacks", CF_UNICODETEXT, wide(u"\u3042\u20AC\U0001F600z"), "13 16 1 7",
                     narrow("\x82\xA0???z"), wide(u"\u3042\u20AC\U0001F600z")},
                    {"without an end", CF_TEXT, "ab", "1 16 7 13", narrow("a"), wide(u"a")},
                    {"half a character", CF_UNICODETEXT, "a", "13 16 1 7", "none", std::string(1, '\0')}};
  for (const auto &row : rows) {
    SCOPED_TRACE(row.what);
    const HANDLE data = clipOf(row.given);
    EXPECT_EQ(putClip(a, row.format, data), data);
    EXPECT_EQ(clipFormats(), row.formats);
    EXPECT_EQ(lookAt(CF_TEXT), row.text);
    EXPECT_EQ(lookAt(CF_OEMTEXT), row.text);
    EXPECT_EQ(lookAt(CF_UNICODETEXT), row.unicode);
    EXPECT_EQ(lookAt(CF_LOCALE), std::string("\x11\x04\0\0", 4));
    EXPECT_EQ(lookAt(CF_DIB), "none");
  }
}

TEST_F(WinClipboard, TheOtherFormsComeWithTheClosing) {
  emptyClipboard(a);
  OpenClipboard(a);
  SetClipboardData(CF_TEXT, clipOf(narrow("one")));
  EXPECT_EQ(CountClipboardFormats(), 1);
  EXPECT_FALSE(IsClipboardFormatAvailable(CF_UNICODETEXT));
  CloseClipboard();
  EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
  OpenClipboard(a);
  SetClipboardData(CF_UNICODETEXT, clipOf(wide(u"two"))); // beside the other one
  CloseClipboard();
  const DWORD number = GetClipboardSequenceNumber();
  EXPECT_EQ(lookAt(CF_TEXT), narrow("one"));
  EXPECT_EQ(lookAt(CF_UNICODETEXT), wide(u"two"));
  EXPECT_EQ(GetClipboardSequenceNumber(), number) << "looking changes nothing";
  putClip(a, CF_TEXT, clipOf(narrow("three")));
  EXPECT_NE(GetClipboardSequenceNumber(), number);
}

TEST_F(WinClipboard, DataBelongToTheClipboard) {
  const UINT named = RegisterClipboardFormatA("wq test format");
  const HGLOBAL text = clipOf(narrow("text")), bytes = clipOf("bytes"), own = clipOf("own");
  const HGLOBAL fixed = GlobalAlloc(GMEM_FIXED, 4);
  std::memcpy(fixed, "fix", 4);
  OpenClipboard(a), EmptyClipboard();
  SetClipboardData(CF_TEXT, text), SetClipboardData(named, bytes), SetClipboardData(CF_PRIVATEFIRST + 1, own);
  EXPECT_EQ(GetClipboardOwner(), a);
  SetClipboardData(CF_TEXT, fixed);
  EXPECT_EQ(GlobalFlags(text), GMEM_INVALID_HANDLE) << "replaced";
  CloseClipboard();
  OpenClipboard(b);
  EXPECT_EQ(GetClipboardData(CF_TEXT), fixed);
  EXPECT_EQ(GetClipboardData(named), bytes);
  EXPECT_EQ(GetClipboardOwner(), a) << "opening changes no owner";
  EmptyClipboard();
  EXPECT_EQ(GetClipboardOwner(), b);
  CloseClipboard();
  EXPECT_EQ(GlobalFlags(bytes), GMEM_INVALID_HANDLE);
  if (!onWine()) { // frees it, unlike Windows: private data are the owner's
    EXPECT_EQ(bytesOfClip(own), "own");
    GlobalFree(own);
  }
  for (const HANDLE none : {reinterpret_cast<HANDLE>(UINT_PTR{0x1236}), static_cast<HANDLE>(text)})
    EXPECT_EQ(putClip(a, CF_TEXT, none), nullptr);
  EXPECT_EQ(clipFormats(), "");
}

TEST_F(WinClipboard, FormatsHaveNames) {
  const UINT format = RegisterClipboardFormatA("WQ Test \x83\x65");
  EXPECT_GE(format, 0xC000u);
  EXPECT_EQ(RegisterClipboardFormatA("wq test \x83\x65"), format);
  EXPECT_NE(RegisterClipboardFormatA("wq test"), format);
  EXPECT_NE(RegisterClipboardFormatA(std::string(255, 'x').c_str()), 0u);
  char name[20];
  EXPECT_EQ(GetClipboardFormatNameA(format, name, sizeof name), 10);
  EXPECT_STREQ(name, "WQ Test \x83\x65");
  const auto refused = [](size_t length) {
    return [=] { return RegisterClipboardFormatA(std::string(length, 'x').c_str()) == 0; };
  };
  expectErrors({{"no name", refused(0), ERROR_INVALID_PARAMETER},
                {"a long one", refused(256), ERROR_INVALID_PARAMETER},
                {"too little room", [&] { return GetClipboardFormatNameA(format, name, 4) == 0; }, ERROR_MORE_DATA}});
  EXPECT_STREQ(name, "WQ ");
  EXPECT_EQ(GetClipboardFormatNameA(CF_TEXT, name, sizeof name), 0);

  UINT wanted[] = {CF_DIB, CF_UNICODETEXT, CF_TEXT};
  emptyClipboard();
  EXPECT_EQ(GetPriorityClipboardFormat(wanted, 3), 0);
  putClip(a, CF_TEXT, clipOf(narrow("t")));
  EXPECT_EQ(GetPriorityClipboardFormat(wanted, 3), static_cast<int>(CF_UNICODETEXT));
  EXPECT_EQ(GetPriorityClipboardFormat(wanted, 1), -1);
}

TEST_F(WinClipboard, PromisesAreKeptWhenSomebodyAsks) {
  const UINT named = RegisterClipboardFormatA("wq test format");
  render(a, [](UINT format) { SetClipboardData(format, clipOf(narrow("later"))); });
  record("B");
  OpenClipboard(a), EmptyClipboard();
  expectErrors({{"a promise", [] { return !SetClipboardData(CF_TEXT, nullptr); }, kUntouched}});
  SetClipboardData(named, nullptr);
  CloseClipboard();
  EXPECT_EQ(clipFormats(), "1 " + std::to_string(named) + " 16 7 13");
  EXPECT_EQ(take(), "") << "nobody has asked for data";
  const DWORD number = GetClipboardSequenceNumber();
  EXPECT_EQ(lookAt(CF_UNICODETEXT), wide(u"later"));
  EXPECT_EQ(take(), "A: RENDER 1") << "what it is made of";
  EXPECT_EQ(GetClipboardSequenceNumber(), number);
  EXPECT_EQ(onThread([&]() -> INT_PTR { return lookAt(named) == narrow("later"); }), TRUE);
  EXPECT_EQ(written_.substr(0, 11), "A: RENDER C");
  EXPECT_EQ(lookAt(CF_TEXT), narrow("later"));
  EXPECT_EQ(take(), "") << "once for each";

  render(a, [](UINT) {});
  putClip(a, CF_TEXT, nullptr);
  take();
  EXPECT_EQ(lookAt(CF_OEMTEXT), "none");
  EXPECT_EQ(lookAt(CF_TEXT), "none");
  EXPECT_EQ(take(), "A: RENDER 1\nA: RENDER 1") << "each time";
}

TEST_F(WinClipboard, AnOwnerThatEndsKeepsItsPromises) {
  const UINT named = RegisterClipboardFormatA("wq test format");
  answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT &) {
    if (message != WM_RENDERALLFORMATS) return false;
    EXPECT_TRUE(OpenClipboard(window));
    EXPECT_EQ(GetClipboardOwner(), window);
    EXPECT_NE(SetClipboardData(CF_TEXT, clipOf(narrow("kept"))), nullptr);
    CloseClipboard();
    return true;
  };
  const HWND c = make("C", WS_POPUP, 0, 0, 10, 10);
  OpenClipboard(c), EmptyClipboard(), SetClipboardData(CF_TEXT, nullptr), SetClipboardData(named, nullptr),
      CloseClipboard();
  record("BL");
  DestroyWindow(c);
  EXPECT_EQ(take(), "C: ALL\nC: DESTROY\nC: NCDESTROY");
  EXPECT_EQ(GetClipboardOwner(), nullptr);
  EXPECT_EQ(clipFormats(), "1 16 7 13");
  EXPECT_EQ(lookAt(CF_UNICODETEXT), wide(u"kept"));

  answer = nullptr;
  onThread([&]() -> INT_PTR { // that ends without ending its window
    const HWND d = make("D", WS_POPUP, 0, 0, 10, 10);
    OpenClipboard(d), EmptyClipboard(), SetClipboardData(CF_TEXT, clipOf(narrow("there"))),
        SetClipboardData(named, nullptr);
    return CloseClipboard();
  });
  Sleep(50);
  EXPECT_EQ(GetClipboardOwner(), nullptr);
  EXPECT_EQ(clipFormats(), "1 16 7 13");
  EXPECT_EQ(lookAt(CF_TEXT), narrow("there"));
}

TEST_F(WinClipboard, WhoIsToldOfChanges) {
  record("B");
  EXPECT_TRUE(AddClipboardFormatListener(b));
  expectErrors({{"twice", [&] { return !AddClipboardFormatListener(b); }, ERROR_INVALID_PARAMETER}});
  EXPECT_EQ(SetClipboardViewer(a), nullptr);
  EXPECT_EQ(take(), "A: DRAW none");
  const HWND c = make("C", WS_POPUP, 0, 0, 10, 10);
  EXPECT_EQ(SetClipboardViewer(c), a);
  take(), pump(), record("B");

  putClip(b, CF_TEXT, clipOf(narrow("x")));
  EXPECT_EQ(pump(), "C: DRAW B\nB< UPDATE");
  lookAt(CF_UNICODETEXT);
  EXPECT_EQ(pump(), "") << "nothing has changed";
  putClip(a, CF_TEXT, nullptr);
  EXPECT_EQ(pump(), "B: TAKEN\nC: DRAW A\nB< UPDATE");

  EXPECT_TRUE(ChangeClipboardChain(a, nullptr));
  EXPECT_EQ(take(), "C: CHAIN A none") << "its viewer passes it on";
  EXPECT_TRUE(ChangeClipboardChain(c, a));
  EXPECT_EQ(GetClipboardViewer(), a);
  EXPECT_TRUE(ChangeClipboardChain(a, nullptr));
  EXPECT_EQ(GetClipboardViewer(), nullptr);
  EXPECT_TRUE(RemoveClipboardFormatListener(b));
  expectErrors({{"no more", [&] { return !RemoveClipboardFormatListener(b); }, ERROR_INVALID_PARAMETER}});
  emptyClipboard(a);
  EXPECT_EQ(pump(), "A: TAKEN");
  DestroyWindow(c);
}

namespace {

// 3 by 2 pixels, from the bottom.
const std::vector<COLORREF> kColors = {RGB(255, 0, 0), RGB(0, 255, 0),     RGB(0, 0, 255),
                                       RGB(1, 2, 3),   RGB(255, 255, 255), RGB(128, 0, 255)};

std::string dib() {
  const BITMAPINFOHEADER header = {40, 3, 2, 1, 32, BI_RGB, 24, 0, 0, 0, 0};
  std::string bytes(reinterpret_cast<const char *>(&header), sizeof header);
  for (const COLORREF color : kColors)
    bytes += {static_cast<char>(color >> 16), static_cast<char>(color >> 8), static_cast<char>(color), '\0'};
  return bytes;
}

std::vector<COLORREF> pixelsOf(HANDLE bitmap) {
  const Canvas copy(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0));
  std::vector<COLORREF> pixels;
  for (int i = 0; i < 6; ++i) pixels.push_back(GetPixel(copy.dc, i % 3, 1 - i / 3));
  return pixels;
}

// The pixels of a picture with 32 bits, behind a header of this size.
std::vector<COLORREF> pixelsIn(const std::string &picture, size_t header) {
  std::vector<COLORREF> pixels;
  for (size_t at = header; at + 4 <= picture.size(); at += 4) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(picture[at + i]); };
    pixels.push_back(RGB(byte(2), byte(1), byte(0)));
  }
  return pixels;
}

} // namespace

TEST_F(WinClipboard, APictureIsThereInAllForms) {
  putClip(a, CF_DIB, clipOf(dib()));
  EXPECT_EQ(clipFormats(), "8 2 17");
  OpenClipboard(a);
  const HANDLE bitmap = GetClipboardData(CF_BITMAP);
  EXPECT_EQ(pixelsOf(bitmap), kColors);
  EXPECT_EQ(GetClipboardData(CF_BITMAP), bitmap) << "made once";
  EXPECT_EQ(pixelsIn(bytesOfClip(GetClipboardData(CF_DIBV5)), 124), kColors);
  CloseClipboard();

  const HDC dc = CreateCompatibleDC(nullptr);
  const HBITMAP drawn = CreateBitmap(3, 2, 1, 32, nullptr);
  SelectObject(dc, drawn);
  for (int i = 0; i < 6; ++i) SetPixel(dc, i % 3, 1 - i / 3, kColors[static_cast<size_t>(i)]);
  DeleteDC(dc);
  EXPECT_EQ(putClip(a, CF_BITMAP, drawn), drawn);
  EXPECT_EQ(clipFormats(), "2 8 17");
  EXPECT_EQ(pixelsIn(lookAt(CF_DIB), 52), kColors);
  EXPECT_EQ(pixelsIn(lookAt(CF_DIBV5), 124), kColors);
  emptyClipboard(a);
  EXPECT_FALSE(DeleteObject(drawn)) << "it was the clipboard's";
  for (const size_t size : {20u, 60u}) { // one that is cut makes no other
    if (onWine()) break;                 // which makes pictures of what lies behind the block
    putClip(a, CF_DIB, clipOf(dib().substr(0, size)));
    EXPECT_EQ(lookAt(CF_BITMAP), "none") << size;
    EXPECT_EQ(lookAt(CF_DIBV5), "none") << size;
  }
  const unsigned char rows[] = {0xA0, 0, 0x40, 0};
  putClip(a, CF_BITMAP, CreateBitmap(3, 2, 1, 1, rows));
  const std::string mono = lookAt(CF_DIB);
  EXPECT_EQ(mono.size(), 40u + 8 + 8);
  EXPECT_EQ(mono.substr(48), std::string("\x40\0\0\0\xA0\0\0\0", 8));
}

TEST_F(WinClipboard, WhatAnOwnerThrowsReachesWhoAsks) {
  if (onWindows()) GTEST_SKIP() << "Windows has frames of its own there that nothing unwinds";
  render(a, [](UINT) { throw 7; });
  putClip(a, CF_TEXT, nullptr);
  OpenClipboard(b);
  EXPECT_THROW(GetClipboardData(CF_TEXT), int);
  EXPECT_TRUE(CloseClipboard());
  render(a, [](UINT format) { SetClipboardData(format, clipOf(narrow("now"))); });
  EXPECT_EQ(lookAt(CF_TEXT), narrow("now"));
  expectErrors({{"nobody asks", [] { return !SetClipboardData(CF_TEXT, nullptr); }, ERROR_CLIPBOARD_NOT_OPEN}});
}

// WQ_WEAR sets how often.
TEST_F(WinClipboard, NothingIsLeftBehind) {
  const char *wear = std::getenv("WQ_WEAR");
  const int times = wear ? std::atoi(wear) : 1000;
  render(b, [](UINT format) { SetClipboardData(format, clipOf(narrow("later"))); });
  size_t warm = 0;
  for (int i = 0; i < times; ++i) {
    const bool promised = i % 3 == 0;
    ASSERT_TRUE(OpenClipboard(promised ? b : a));
    EmptyClipboard(), SetClipboardData(CF_TEXT, promised ? nullptr : clipOf(narrow("now")));
    if (!promised) SetClipboardData(CF_DIB, clipOf(dib()));
    CloseClipboard();
    ASSERT_EQ(lookAt(CF_UNICODETEXT), wide(promised ? u"later" : u"now"));
    OpenClipboard(b);
    ASSERT_EQ(GetClipboardData(CF_BITMAP) == nullptr, promised);
    CloseClipboard();
    if (i % 500 == 0) pump();
    if (i == times / 10) warm = residentBytes();
  }
  EXPECT_LE(residentBytes(), warm + (4u << 20));
}
