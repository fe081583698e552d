// A list box. It belongs to one thread and works under the desktop's lock. Messages to its parent run procedures of the
// program, which may change or destroy the list. So its state is looked at again after each message.
#pragma once

#include "platform/desktop/controls/listlines.h"
#include "platform/desktop/windows/ownclass.h"
#include "platform/desktop/windows/window.h"
#include "platform/winapi/listbox.h"

namespace platform {

class ListBox : public Answerer {
 public:
  explicit ListBox(HWND handle);

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  // ---- Items (listbox.cpp)
  std::optional<LRESULT> answerItems(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> answerSelection(UINT message, WPARAM wParam, LPARAM lParam);
  bool isThere(int index) const { return index >= 0 && index < count_; }
  LRESULT add(LPARAM text);
  LRESULT insert(int index, LPARAM text);
  LRESULT erase(int index);
  void tellErased(int index) const;
  void clear();
  LRESULT setCount(int count);
  LRESULT copyText(int index, LPARAM room) const;
  LRESULT textLength(int index) const;
  LRESULT find(int after, LPARAM text, bool whole) const;
  int placeFor(LPARAM text) const;
  int compare(int index, LPARAM text) const;
  ULONG_PTR dataOf(int index) const;
  LRESULT setData(int index, ULONG_PTR data);

  // ---- Selection (listbox.cpp)
  bool isSelected(int index) const;
  void select(int index, bool selected);
  void selectRange(int first, int last, bool selected);
  void selectOnly(int first, int last);
  LRESULT setCurrent(int index);
  LRESULT setSelected(int index, bool selected);
  int selectedItems(int *room, int size) const;
  void setCaret(int index);

  // ---- The view (listview.cpp)
  std::optional<LRESULT> answerView(UINT message, WPARAM wParam, LPARAM lParam);
  void measureAll();
  int measured(int index) const;
  int heightOf(int index) const;
  LRESULT setHeight(int index, int height);
  void setFont(HFONT font);
  HFONT font() const;
  RECT area() const;
  int rowsFrom(int top) const;
  int page() const;
  int lastTop() const;
  void setTop(int top);
  void show(int index);
  void setOffset(int offset);
  void settleBars();
  void resized();
  LRESULT itemRect(int index, RECT &rect) const;
  RECT rowOf(int index) const;
  int rowAt(LONG y) const;
  LRESULT itemAt(POINT point) const;
  void refreshItem(int index, UINT action);
  void refreshFrom(int index);
  void refreshAll();
  void paint();
  HBRUSH ground(HDC dc) const;
  void drawItem(HDC dc, int index, UINT action, HBRUSH brush) const;
  void scrolled(int code, int bar);
  void wheel(int delta);

  // ---- The user (listinput.cpp)
  std::optional<LRESULT> answerInput(UINT message, WPARAM wParam, LPARAM lParam);
  void pressed(POINT at, WPARAM keys);
  void dragged(POINT at);
  void released();
  void keyDown(WPARAM key);
  void typed(WPARAM character);
  void goTo(int index, bool extends);
  void focused(bool has);
  void notify(int code) const;
  LRESULT ask(UINT message, WPARAM wParam, LPARAM lParam) const;
  template <typename Record> Record recordFor(int index) const;

  const HWND handle_;
  DWORD style_ = 0;
  bool gone_ = false;
  bool drawn_ = true; // WM_SETREDRAW

  int count_ = 0;
  ListLines lines_;              // only with strings
  std::deque<ULONG_PTR> data_;   // empty while all are 0
  std::deque<uint8_t> selected_; // only with multiple selection
  std::deque<uint8_t> heights_;  // only with variable heights
  int current_ = -1;             // only with single selection
  int caret_ = -1;               // the item with the focus
  int anchor_ = -1;              // the item where a range begins

  HFONT font_ = nullptr; // null for the system's
  int height_ = 1;       // of each item
  int top_ = 0;
  int extent_ = 0, offset_ = 0; // in pixels: the width to scroll, and the place scrolled to
  bool hasFocus_ = false;
  bool captured_ = false;
  int turned_ = 0; // the wheel's turn that makes no whole line yet

  bool isMultiple() const { return style_ & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL); }
  bool isDrawnByOwner() const { return style_ & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE); }
  bool hasStrings() const { return !isDrawnByOwner() || style_ & LBS_HASSTRINGS; }
  bool isOnlyCounted() const { return style_ & LBS_NODATA && !hasStrings(); }
  bool isVariable() const { return style_ & LBS_OWNERDRAWVARIABLE; }
};

// A record for the parent with the members that all records have.
template <typename Record> Record ListBox::recordFor(int index) const {
  Record record{};
  const Window *const self = recordOf(handle_);
  record.CtlType = ODT_LISTBOX;
  record.CtlID = static_cast<UINT>(self ? self->id : 0);
  record.itemID = static_cast<UINT>(index);
  return record;
}

} // namespace platform
