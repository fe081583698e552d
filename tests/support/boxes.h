// Dialogs that are open, and somebody who answers them while they wait.
#pragma once

#include "support/handles.h"

#include "platform/platform.h"

#include <functional>
#include <string>
#include <vector>

#ifndef _WIN32
#include "platform/testing.h"
#endif

constexpr const char *kDialogClass = "#32770";

inline bool hasDisplay() {
#ifdef _WIN32
  return true;
#else
  return platformHasDisplay();
#endif
}

// Keeps dialogs open although nobody sees them.
class KeepsDialogs {
 public:
  KeepsDialogs() { keep(TRUE); }
  ~KeepsDialogs() { keep(FALSE); }
  KeepsDialogs(const KeepsDialogs &) = delete;
  KeepsDialogs &operator=(const KeepsDialogs &) = delete;

 private:
  static void keep([[maybe_unused]] BOOL on) {
#ifndef _WIN32
    platformKeepDialogsOpen(on);
#endif
  }
};

// The dialog of this thread that stands in front of the others; null for none.
inline HWND frontDialog() {
  HWND window = GetWindow(GetDesktopWindow(), GW_CHILD);
  for (; window; window = GetWindow(window, GW_HWNDNEXT)) {
    char name[32] = "";
    GetClassNameA(window, name, sizeof name);
    if (std::string(name) == kDialogClass && IsWindowVisible(window) &&
        GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId())
      return window;
  }
  return nullptr;
}

inline std::string textOf(HWND window) {
  char text[300] = "";
  GetWindowTextA(window, text, sizeof text);
  return text;
}

// Does one step after another on the dialog in front, each from a timer of the loop that the dialog runs. What is still
// open when the steps are over is cancelled, so that no test hangs.
class Answerer {
 public:
  using Step = std::function<void(HWND dialog)>;

  explicit Answerer(std::vector<Step> steps) : steps_(std::move(steps)) {
    current_ = this;
    timer_ = SetTimer(nullptr, 0, 30, tick);
  }
  ~Answerer() {
    KillTimer(nullptr, timer_);
    current_ = nullptr;
  }
  Answerer(const Answerer &) = delete;
  Answerer &operator=(const Answerer &) = delete;

  size_t taken() const { return next_; }
  bool gaveUp() const { return gaveUp_; }

 private:
  static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
    if (current_) current_->step();
  }
  void step() {
    const HWND dialog = frontDialog();
    if (!dialog || ++ticks_ < 3) return; // it has appeared, and its first messages are through
    if (next_ < steps_.size()) return steps_[next_++](dialog);
    if (++late_ < 40) return;
    gaveUp_ = true;
    for (const int id : {IDCANCEL, IDOK, IDNO, IDIGNORE}) PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
  }

  static inline Answerer *current_ = nullptr;
  const std::vector<Step> steps_;
  UINT_PTR timer_;
  size_t next_ = 0;
  int ticks_ = 0, late_ = 0;
  bool gaveUp_ = false;
};

inline Answerer::Step pressing(int id) {
  return [=](HWND dialog) { PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0); };
}

// Holds that a thousand dialogs leave nothing. Each is shown, answered and checked by show.
inline void expectNothingLeft(const std::function<bool()> &show) {
  const auto many = [&](int count) {
    for (int i = 0; i < count; ++i) ASSERT_TRUE(show()) << i;
  };
  many(300);
  const auto handles = openHandles();
  const size_t memory = residentBytes();
  many(1000);
  EXPECT_EQ(openHandles(), handles);
  // a desktop takes windows away at its own pace, and until then they count
  EXPECT_LT(residentBytes(), memory + ((hasDisplay() ? 32 : 2) << 20));
}
