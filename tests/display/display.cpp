#include "display.h"

#include <algorithm>

void DisplayTest::SetUp() {
  ASSERT_TRUE(platformHasDisplay());
  user().point(1270, 790);
}

void DisplayTest::TearDown() {
  record("");
  answer = nullptr;
  for (const auto &[window, title] : names) DestroyWindow(window);
  EXPECT_TRUE(until([] { return user().windows().empty(); })) << user().windows().front().title << " is still there";
  heard_.clear();
}

HWND DisplayTest::show(const char *title, DWORD style, int x, int y, int width, int height, HWND owner) {
  const HWND window = make(title, style, x, y, width, height, owner);
  ShowWindow(window, SW_SHOW);
  EXPECT_TRUE(until([&] { return user().window(title).id != 0; })) << title << " isn't shown";
  expectAgreed(window);
  return window;
}

bool DisplayTest::until(const std::function<bool()> &so, DWORD milliseconds) {
  for (const DWORD start = GetTickCount();;) {
    const std::string more = pump();
    heard_ += (heard_.empty() || more.empty() ? "" : "\n") + more;
    if (so()) return true;
    if (GetTickCount() - start >= milliseconds) return false;
    Sleep(2);
  }
}

void DisplayTest::serve(DWORD milliseconds) {
  until([] { return false; }, milliseconds);
}

void DisplayTest::listen(const std::string &groups) {
  record(groups);
  heard_.clear();
}

std::string DisplayTest::told(const std::string &expected) {
  constexpr DWORD kMore = 60;
  const auto lines = [](const std::string &text) { return text.empty() ? 0 : count(text, "\n") + 1; };
  until([&] { return lines(heard_) >= lines(expected); });
  serve(kMore);
  return std::exchange(heard_, {});
}

int DisplayTest::count(const std::string &lines, const std::string &part) {
  int found = 0;
  for (size_t at = lines.find(part); at != std::string::npos; at = lines.find(part, at + part.size())) ++found;
  return found;
}

Place DisplayTest::here(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  POINT corner = {};
  ClientToScreen(window, &corner);
  return {corner.x, corner.y, area.right, area.bottom};
}

std::string DisplayTest::title(HWND window) { return names.count(window) ? names[window] : ""; }

Place DisplayTest::there(const std::string &title) { return user().window(title).client; }

void DisplayTest::apart(const char *left, const char *right) {
  if (session() != Session::sway) return;
  for (const auto &[name, x] : {std::pair(left, 50), {right, 600}}) {
    const Place wanted = {x, 100, there(name).width, there(name).height};
    user().place(user().window(name), wanted);
    EXPECT_TRUE(until([&, title = name] { return there(title) == wanted; }));
  }
}

void DisplayTest::expectAgreed(HWND window) {
  const std::string title = names[window];
  const auto wanted = [&] {
    Place place = here(window);
    if (session() == Session::sway) place.x = there(title).x, place.y = there(title).y;
    return place;
  };
  until([&] { return there(title) == wanted(); });
  EXPECT_EQ(there(title), wanted()) << title << ": the desktop's place, and that of the program";
}

void DisplayTest::expectActive(HWND window) {
  const std::string wanted = title(window);
  until([&] { return user().window(wanted).active && GetActiveWindow() == window; });
  EXPECT_EQ(title(GetActiveWindow()), wanted) << "GetActiveWindow";
  EXPECT_EQ(title(GetForegroundWindow()), wanted) << "GetForegroundWindow";
  EXPECT_EQ(title(GetFocus()), wanted) << "GetFocus";
  std::string active;
  for (const Shown &shown : user().windows())
    if (shown.active) active = shown.title;
  EXPECT_EQ(active, wanted) << "on the desktop";
}
