// The clipboard between this program and others, which the desktop's own commands stand for.

#include "display.h"

#include "support/clips.h"
#include "support/files.h"

#include <future>

namespace {

constexpr const char *kPlain = "text/plain;charset=utf-8";

bool onSway() { return session() == Session::sway; }

// What puts a file on the clipboard, or writes what is there as one of its types.
std::string copying(const std::string &file, const std::string &type) {
  const std::string command =
      onSway() ? "wl-copy -t '" + type + "' <" : "xclip -selection clipboard -t '" + type + "' -i ";
  return command + file + " >/dev/null 2>&1";
}
std::string pasting(const std::string &type) {
  return onSway() ? "wl-paste -n -t '" + type + "'" : "xclip -selection clipboard -o -t '" + type + "'";
}

// In front of a command that runs beside the test: it tells by what number it can be ended.
const std::string kTellsId = "echo id $$; exec ";
std::string idOf(Beside &program) {
  const std::string line = program.line("id ");
  return line.empty() ? line : line.substr(3);
}

DWORD timeOf(const std::function<void()> &work) {
  const DWORD start = GetTickCount();
  work();
  return GetTickCount() - start;
}

// Rows of a picture with 32 bits, none like another.
std::string picture(LONG width, LONG height) {
  const BITMAPINFOHEADER header = {40, width, height, 1, 32, BI_RGB, static_cast<DWORD>(width * height * 4),
                                   0,  0,     0,      0};
  std::string dib(reinterpret_cast<const char *>(&header), sizeof header);
  for (LONG i = 0; i < width * height; ++i)
    dib += {static_cast<char>(i), static_cast<char>(i / 7), static_cast<char>(i / width), '\0'};
  return dib;
}

// The colours alone, which come last.
std::string pixelsOf(const std::string &dib, size_t count) {
  if (dib.size() < count * 4) return "too short: " + std::to_string(dib.size());
  std::string pixels = dib.substr(dib.size() - count * 4);
  for (size_t i = 3; i < pixels.size(); i += 4) pixels[i] = '\0';
  return pixels;
}

class DesktopClipboard : public DisplayTest {
 protected:
  void SetUp() override {
    DisplayTest::SetUp();
    window = show("clipboard");
  }
  void TearDown() override {
    answer = nullptr;
    emptyClipboard(window);
    DisplayTest::TearDown();
  }
  // As a user's deed: Wayland takes nothing from a program that the user hasn't worked with since the last copy.
  void put(UINT format, HANDLE data) const {
    const Place place = there("clipboard");
    user().click(place.x + place.width / 2, place.y + place.height / 2);
    settle();
    putClip(window, format, data);
    settle();
  }
  // While this program serves messages.
  static Ended served(const std::string &command, int seconds = 10) {
    auto ended = std::async(std::launch::async, [=] { return runCommand(command, seconds); });
    while (ended.wait_for(std::chrono::milliseconds(0)) != std::future_status::ready) serve(5);
    return ended.get();
  }
  void copyElsewhere(const std::string &bytes, const std::string &type) const {
    const std::string file = folder.file("copied");
    writeFile(file, bytes);
    ASSERT_EQ(served(copying(file, type)).status, 0);
    settle();
  }

  HWND window = nullptr;
  TempFolder folder;
};

} // namespace

TEST_F(DesktopClipboard, TextGoesOutAndComesIn) {
  put(CF_TEXT, clipOf(narrow("a\x82\xA0z\r\nq\rx")));
  EXPECT_EQ(runCommand(pasting(kPlain)).out, "a\xE3\x81\x82z\nq\rx");

  listen("B");
  AddClipboardFormatListener(window);
  copyElsewhere("\xE3\x81\x82\n\xE2\x82\xAC\r\nz", kPlain);
  const std::string taken = "clipboard: TAKEN\nclipboard< UPDATE";
  EXPECT_EQ(told(taken).substr(0, taken.size()), taken); // a compositor may tell of the old content's end by itself
  EXPECT_EQ(GetClipboardOwner(), nullptr);
  EXPECT_EQ(lookAt(CF_TEXT), narrow("\x82\xA0\r\n?\r\nz"));
  EXPECT_EQ(lookAt(CF_UNICODETEXT), wide(u"\u3042\r\n\u20AC\r\nz"));
  EXPECT_EQ(lookAt(CF_DIB), "none");
}

TEST_F(DesktopClipboard, PicturesGoOutAndComeIn) {
  for (const std::string type : {"image/png", "image/bmp"}) {
    SCOPED_TRACE(type);
    put(CF_DIB, clipOf(picture(30, 20)));
    const std::string file = runCommand(pasting(type)).out;
    ASSERT_GT(file.size(), 100u);
    copyElsewhere(file, type);
    EXPECT_EQ(pixelsOf(lookAt(CF_DIB), 600), pixelsOf(picture(30, 20), 600));
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_BITMAP));
  }
}

TEST_F(DesktopClipboard, MuchGoesOutAndComesIn) {
  std::string text(50'000'000, 'x');
  for (size_t i = 0; i < text.size(); i += 997) text[i] = static_cast<char>('a' + i % 23);
  put(CF_TEXT, clipOf(narrow(text)));
  EXPECT_TRUE(runCommand(pasting(kPlain), 30).out == text);
  copyElsewhere(text, kPlain);
  EXPECT_TRUE(lookAt(CF_TEXT) == narrow(text));

  constexpr LONG kWidth = 4000, kHeight = 3000;
  const std::string large = picture(kWidth, kHeight);
  put(CF_DIB, clipOf(large));
  const std::string file = runCommand(pasting("image/png"), 30).out;
  ASSERT_GT(file.size(), 100'000u);
  copyElsewhere(file, "image/png");
  EXPECT_TRUE(pixelsOf(lookAt(CF_DIB), kWidth * kHeight) == pixelsOf(large, kWidth * kHeight));
}

TEST_F(DesktopClipboard, PromisesAreKeptForOtherPrograms) {
  answer = [&](HWND, UINT message, WPARAM format, LPARAM, LRESULT &) {
    if (message == WM_RENDERFORMAT) SetClipboardData(static_cast<UINT>(format), clipOf(narrow("later")));
    return false;
  };
  put(CF_TEXT, nullptr);
  Ended ended;
  EXPECT_LT(timeOf([&] { ended = runCommand(pasting(kPlain)); }), 4000u) << "this thread is busy";
  EXPECT_EQ(ended.out, "");
  settle();
  EXPECT_EQ(served(pasting(kPlain)).out, "later");
  EXPECT_EQ(runCommand(pasting(kPlain)).out, "later") << "once";

  answer = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT &) {
    if (message == WM_RENDERFORMAT) emptyClipboard(window);
    return false;
  };
  put(CF_TEXT, nullptr);
  EXPECT_EQ(served(pasting(kPlain)).out, "") << "it was taken off meanwhile";
}

TEST_F(DesktopClipboard, AProgramThatHangsIsNotWaitedFor) {
  const std::string file = folder.file("never");
  writeFile(file, "never");
  const DWORD before = GetClipboardSequenceNumber();
  Beside program(kTellsId + (onSway() ? "wl-copy -f <" : "xclip -quiet -selection clipboard -i ") + file);
  const std::string process = idOf(program);
  ASSERT_NE(process, "");
  EXPECT_TRUE(until([&] { return GetClipboardSequenceNumber() != before; })) << "it has taken the clipboard";
  runCommand("kill -STOP " + process);
  std::string seen;
  EXPECT_LT(timeOf([&] { seen = lookAt(CF_TEXT); }), 4500u) << "types and text, two seconds each";
  EXPECT_EQ(seen, "none");
  runCommand("kill -KILL " + process);
  serve(5000); // Qt waits longer
  put(CF_TEXT, clipOf(narrow("after")));
  EXPECT_EQ(served(pasting(kPlain)).out, "after");
}

// The visitor puts its own there, too.
TEST_F(DesktopClipboard, NamedFormatsPassBetweenPrograms) {
  const UINT named = RegisterClipboardFormatA("wq test \"\x83\x65\"");
  put(named, clipOf(std::string("a\0b", 3)));
  Beside program("./visitor visitor 600 400 300 200 pastes");
  EXPECT_NE(program.line("clip 3"), "") << "bytes";
  EXPECT_TRUE(until([] { return user().window("visitor").id != 0; }));
  user().wish(user().window("visitor"), User::Wish::close);
  EXPECT_EQ(program.end(), 0);
}

TEST_F(X11Desktop, AManagerKeepsTheTextOfAProgramThatEnds) {
  Beside keeper(kTellsId + "./keeper");
  const std::string process = idOf(keeper);
  ASSERT_EQ(keeper.line("serves"), "serves");
  {
    Beside program("./visitor visitor 100 100 300 200 copies");
    EXPECT_EQ(program.line("copied"), "copied 1");
    EXPECT_TRUE(until([] { return user().window("visitor").id != 0; }));
    settle();
    user().wish(user().window("visitor"), User::Wish::close);
    EXPECT_EQ(program.end(), 0);
  }
  EXPECT_EQ(keeper.line("took"), "took 4");
  settle();
  EXPECT_EQ(lookAt(CF_TEXT), narrow("kept"));
  runCommand("kill " + process);
}

TEST_F(X11Desktop, AnOwnerThatIsKilledLeavesNothing) {
  {
    Beside program(kTellsId + "./visitor visitor 100 100 300 200 copies");
    const std::string process = idOf(program);
    EXPECT_EQ(program.line("copied"), "copied 1");
    EXPECT_TRUE(until([] { return lookAt(CF_TEXT) == narrow("kept"); })) << lookAt(CF_TEXT);
    const HWND window = show("clipboard", WS_OVERLAPPEDWINDOW, 500, 300);
    listen("B");
    AddClipboardFormatListener(window);
    runCommand("kill -KILL " + process);
    EXPECT_EQ(told("clipboard< UPDATE"), "clipboard< UPDATE");
  }
  EXPECT_EQ(clipFormats(), "");
  EXPECT_EQ(lookAt(CF_TEXT), "none");
}
