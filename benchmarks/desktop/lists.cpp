// The list box of a debug window: adding and showing lines.

#include "desktop/desktop.h"

#include <cstdio>

namespace {

constexpr int kLines = 100000;

// A list box in a window, with space for some lines.
class List {
 public:
  List() {
    parent_ = CreateWindowExA(0, "WQ_WND_CLASS", "", WS_POPUP | WS_VISIBLE, 0, 0, 600, 400, nullptr, nullptr, nullptr,
                              nullptr);
    list_ = CreateWindowExA(0, "LISTBOX", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT, 0, 0, 600, 400,
                            parent_, nullptr, nullptr, nullptr);
    require(list_ != nullptr, "a list box cannot be made");
    WqWnd_WaitQueEmpty();
  }
  ~List() {
    DestroyWindow(parent_);
    WqWnd_WaitQueEmpty();
  }
  List(const List &) = delete;
  List &operator=(const List &) = delete;

  LRESULT ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageA(list_, message, wParam, lParam);
  }
  void fill() const {
    char line[64];
    for (int i = 0; i < kLines; ++i) {
      std::snprintf(line, sizeof line, "%08X: a line as programs print it", static_cast<unsigned>(i));
      ask(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line));
    }
    UpdateWindow(list_);
  }
  void show() const { UpdateWindow(list_); }

 private:
  HWND parent_, list_;
};

double add() {
  const List list;
  const double seconds = secondsPerIteration([&] {
    list.ask(LB_RESETCONTENT);
    list.fill();
  });
  require(list.ask(LB_GETCOUNT) == kLines, "a line was left out");
  return seconds;
}

double scroll() {
  const List list;
  list.fill();
  WPARAM top = 0;
  const double seconds = secondsPerIteration([&] {
    top = (top + 37) % (kLines - 100);
    list.ask(LB_SETTOPINDEX, top);
    list.show();
  });
  require(list.ask(LB_GETTOPINDEX) == static_cast<LRESULT>(top), "a list didn't scroll");
  return seconds;
}

} // namespace

void addLists(std::vector<Subject> &subjects) {
  subjects.push_back({"list box, 100,000 lines added", add});
  subjects.push_back({"list box of 100,000 lines scrolled", scroll});
}
