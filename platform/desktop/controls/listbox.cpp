// The items of a list box, and the selection.

#include "platform/desktop/controls/listbox.h"

#include "platform/desktop/lock.h"

#include <algorithm>
#include <cstring>

namespace platform {

namespace {

template <typename Record> Record *recordAt(LPARAM address) { return reinterpret_cast<Record *>(address); }

template <typename Value> void insertAt(std::deque<Value> &values, int index, Value value) {
  values.insert(values.begin() + index, value);
}

template <typename Value> void eraseAt(std::deque<Value> &values, int index) {
  if (!values.empty()) values.erase(values.begin() + index);
}

} // namespace

ListBox::ListBox(HWND handle) : handle_(handle), style_(recordOf(handle)->style) {
  if (isMultiple()) caret_ = 0;
  drawn_ = !(style_ & LBS_NOREDRAW);
}

LRESULT ListBox::ask(UINT message, WPARAM wParam, LPARAM lParam) const {
  const Window *const self = recordOf(handle_);
  return self ? send(refOf(self->parent), message, wParam, lParam) : 0;
}

// ---- Items

ULONG_PTR ListBox::dataOf(int index) const { return data_.empty() ? 0 : data_[static_cast<size_t>(index)]; }

LRESULT ListBox::setData(int index, ULONG_PTR data) {
  if (!isThere(index)) return LB_ERR;
  if (isOnlyCounted()) return TRUE;
  if (data_.empty()) data_.resize(static_cast<size_t>(count_));
  data_[static_cast<size_t>(index)] = data;
  return TRUE;
}

// Compares an item with a new text, or with a new item's data.
int ListBox::compare(int index, LPARAM text) const {
  if (hasStrings()) return compareLines(lines_.at(static_cast<size_t>(index)), recordAt<const char>(text));
  COMPAREITEMSTRUCT record{};
  const Window *const self = recordOf(handle_);
  record.CtlType = ODT_LISTBOX;
  record.CtlID = static_cast<UINT>(self ? self->id : 0);
  record.hwndItem = handle_;
  record.itemID1 = static_cast<UINT>(index);
  record.itemData1 = dataOf(index);
  record.itemID2 = static_cast<UINT>(-1);
  record.itemData2 = static_cast<ULONG_PTR>(text);
  return static_cast<int>(ask(WM_COMPAREITEM, record.CtlID, addressOf(record)));
}

// The place of a new item in a sorted list, in front of equal ones.
int ListBox::placeFor(LPARAM text) const {
  int from = 0, to = count_;
  while (from < to && to <= count_) {
    const int middle = from + (to - from) / 2;
    if (compare(middle, text) < 0)
      from = middle + 1;
    else
      to = middle;
  }
  return std::min(from, count_);
}

LRESULT ListBox::add(LPARAM text) {
  const int index = style_ & LBS_SORT && !isOnlyCounted() ? placeFor(text) : count_;
  return gone_ ? LB_ERR : insert(index, text);
}

LRESULT ListBox::insert(int index, LPARAM text) {
  if (index == -1) index = count_;
  if (index < 0 || index > count_) return LB_ERR;
  if (hasStrings()) lines_.insert(static_cast<size_t>(index), text ? recordAt<const char>(text) : "");
  const ULONG_PTR data = hasStrings() ? 0 : static_cast<ULONG_PTR>(text);
  if (!isOnlyCounted() && (data || !data_.empty())) {
    if (data_.empty()) data_.resize(static_cast<size_t>(count_));
    insertAt(data_, index, data);
  }
  if (isMultiple()) insertAt(selected_, index, uint8_t{0});
  if (isVariable()) insertAt(heights_, index, static_cast<uint8_t>(std::min(height_, 255)));
  ++count_;
  if (current_ >= index) ++current_;
  if (isVariable()) {
    const int height = measured(index);
    if (gone_ || !isThere(index)) return LB_ERR;
    heights_[static_cast<size_t>(index)] = static_cast<uint8_t>(std::clamp(height, 1, 255));
  }
  settleBars();
  refreshFrom(index);
  return index;
}

void ListBox::tellErased(int index) const {
  if (!isDrawnByOwner() && !dataOf(index)) return;
  auto record = recordFor<DELETEITEMSTRUCT>(index);
  record.hwndItem = handle_;
  record.itemData = dataOf(index);
  ask(WM_DELETEITEM, record.CtlID, addressOf(record));
}

LRESULT ListBox::erase(int index) {
  if (!isThere(index)) return LB_ERR;
  tellErased(index);
  if (gone_ || !isThere(index)) return LB_ERR;
  refreshFrom(index); // its area is known only before the removal
  if (hasStrings()) lines_.erase(static_cast<size_t>(index));
  eraseAt(data_, index);
  eraseAt(selected_, index);
  eraseAt(heights_, index);
  --count_;
  if (current_ == index)
    current_ = -1;
  else if (current_ > index)
    --current_;
  caret_ = std::min(caret_, count_ - 1);
  anchor_ = std::min(anchor_, count_ - 1);
  if (isMultiple()) caret_ = std::max(caret_, 0);
  settleBars();
  return count_;
}

void ListBox::clear() {
  for (int index = count_ - 1; index >= 0 && !gone_; --index)
    if (index < count_) tellErased(index);
  lines_.clear();
  data_.clear();
  selected_.clear();
  heights_.clear();
  count_ = top_ = 0;
  current_ = anchor_ = -1;
  caret_ = isMultiple() ? 0 : -1;
  if (gone_) return;
  settleBars();
  refreshAll();
}

LRESULT ListBox::setCount(int count) {
  if (!isOnlyCounted() || count < 0) return LB_ERR;
  count_ = count;
  if (isMultiple()) selected_.assign(static_cast<size_t>(count), 0);
  current_ = anchor_ = -1;
  caret_ = std::min(caret_, count - 1);
  settleBars();
  refreshAll();
  return LB_OKAY;
}

LRESULT ListBox::textLength(int index) const {
  if (!isThere(index)) return LB_ERR;
  return static_cast<LRESULT>(hasStrings() ? std::strlen(lines_.at(static_cast<size_t>(index))) : sizeof(ULONG_PTR));
}

LRESULT ListBox::copyText(int index, LPARAM room) const {
  if (!isThere(index) || !room) return LB_ERR;
  const LRESULT length = textLength(index);
  const ULONG_PTR data = dataOf(index);
  if (hasStrings())
    std::memcpy(recordAt<char>(room), lines_.at(static_cast<size_t>(index)), static_cast<size_t>(length) + 1);
  else
    std::memcpy(recordAt<char>(room), &data, sizeof data);
  return length;
}

// Searches from the item behind a given one, round the end, up to the given one itself.
LRESULT ListBox::find(int after, LPARAM text, bool whole) const {
  const std::string wanted = hasStrings() && text ? foldedLine(recordAt<const char>(text)) : "";
  if (hasStrings() && wanted.empty()) return LB_ERR;
  if (!isThere(after)) after = -1;
  for (int step = 1; step <= count_; ++step) {
    const int index = (after + step) % count_;
    const bool found = hasStrings() ? isLine(lines_.at(static_cast<size_t>(index)), wanted, whole)
                                    : !isOnlyCounted() && dataOf(index) == static_cast<ULONG_PTR>(text);
    if (found) return index;
  }
  return LB_ERR;
}

std::optional<LRESULT> ListBox::answerItems(UINT message, WPARAM wParam, LPARAM lParam) {
  const int index = static_cast<int>(wParam);
  switch (message) {
  case LB_ADDSTRING: return add(lParam);
  case LB_INSERTSTRING: return insert(index, lParam);
  case LB_DELETESTRING: return erase(index);
  case LB_RESETCONTENT: clear(); return LB_OKAY;
  case LB_GETCOUNT: return count_;
  case LB_SETCOUNT: return setCount(index);
  case LB_GETTEXT: return copyText(index, lParam);
  case LB_GETTEXTLEN: return textLength(index);
  case LB_GETITEMDATA: return isThere(index) ? static_cast<LRESULT>(dataOf(index)) : LB_ERR;
  case LB_SETITEMDATA: return setData(index, static_cast<ULONG_PTR>(lParam));
  case LB_FINDSTRING: return find(index, lParam, false);
  case LB_FINDSTRINGEXACT: return find(index, lParam, true);
  case LB_SELECTSTRING: {
    const LRESULT found = isMultiple() ? LB_ERR : find(index, lParam, false);
    return found < 0 ? found : setCurrent(static_cast<int>(found));
  }
  case LB_INITSTORAGE: return count_ + index;
  default: return std::nullopt;
  }
}

// ---- Selection

bool ListBox::isSelected(int index) const {
  return isMultiple() ? isThere(index) && selected_[static_cast<size_t>(index)] : index >= 0 && index == current_;
}

void ListBox::select(int index, bool selected) {
  if (!isThere(index) || isSelected(index) == selected) return;
  if (isMultiple()) {
    selected_[static_cast<size_t>(index)] = selected;
    refreshItem(index, ODA_SELECT);
    return;
  }
  const int before = std::exchange(current_, selected ? index : -1);
  refreshItem(before, ODA_SELECT);
  if (selected) refreshItem(index, ODA_SELECT);
}

void ListBox::selectRange(int first, int last, bool selected) {
  for (int index = std::max(first, 0); index <= last && index < count_; ++index) select(index, selected);
}

void ListBox::selectOnly(int first, int last) {
  for (int index = 0; index < count_; ++index) select(index, index >= first && index <= last);
}

void ListBox::setCaret(int index) {
  const int before = std::exchange(caret_, index);
  if (before == index || !hasFocus_) return;
  refreshItem(before, ODA_FOCUS);
  refreshItem(index, ODA_FOCUS);
}

LRESULT ListBox::setCurrent(int index) {
  if (isMultiple() || index < -1 || index >= count_ || style_ & LBS_NOSEL) return LB_ERR;
  if (index >= 0) {
    setCaret(index);
    show(index);
  }
  const bool none = index < 0;
  select(none ? current_ : index, !none);
  return index;
}

LRESULT ListBox::setSelected(int index, bool selected) {
  if (!isMultiple() || index < -1 || index >= count_) return LB_ERR;
  if (index < 0) {
    selectRange(0, count_ - 1, selected);
    if (selected) anchor_ = -1;
    return LB_OKAY;
  }
  anchor_ = index;
  setCaret(index);
  show(index);
  select(index, selected);
  return LB_OKAY;
}

// room: null to count only.
int ListBox::selectedItems(int *room, int size) const {
  int found = 0;
  for (int index = 0; index < count_ && found < size; ++index)
    if (selected_[static_cast<size_t>(index)]) {
      if (room) room[found] = index;
      ++found;
    }
  return found;
}

std::optional<LRESULT> ListBox::answerSelection(UINT message, WPARAM wParam, LPARAM lParam) {
  const int index = static_cast<int>(wParam);
  const auto inRange = [&](int first, int last) -> LRESULT {
    if (!isMultiple()) return LB_ERR;
    selectRange(std::min(first, last), std::max(first, last),
                message == LB_SELITEMRANGEEX ? first <= last : wParam != 0);
    return LB_OKAY;
  };
  switch (message) {
  case LB_SETCURSEL: return setCurrent(index);
  case LB_GETCURSEL: return !count_ ? LB_ERR : isMultiple() ? caret_ : current_;
  case LB_SETSEL: return setSelected(static_cast<int>(lParam), wParam);
  case LB_GETSEL: return isThere(index) ? isSelected(index) : LB_ERR;
  case LB_GETSELCOUNT: return isMultiple() ? selectedItems(nullptr, count_) : LB_ERR;
  case LB_GETSELITEMS: return isMultiple() && lParam ? selectedItems(recordAt<int>(lParam), index) : LB_ERR;
  case LB_SELITEMRANGE: return inRange(LOWORD(lParam), HIWORD(lParam));
  case LB_SELITEMRANGEEX: return inRange(index, static_cast<int>(lParam));
  case LB_GETANCHORINDEX: return anchor_;
  case LB_SETANCHORINDEX:
    if (!isThere(index)) return LB_ERR;
    anchor_ = index;
    return LB_OKAY;
  case LB_GETCARETINDEX: return std::max(caret_, 0);
  case LB_SETCARETINDEX:
    if (!isThere(index) || (!isMultiple() && current_ >= 0)) return LB_ERR;
    setCaret(index);
    show(index);
    return LB_OKAY;
  default: return std::nullopt;
  }
}

std::optional<LRESULT> ListBox::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) {
    clear();
    return 0;
  }
  if (message == WM_NCDESTROY) gone_ = true;
  for (const auto part :
       {&ListBox::answerItems, &ListBox::answerSelection, &ListBox::answerView, &ListBox::answerInput})
    if (const std::optional<LRESULT> answered = (this->*part)(message, wParam, lParam)) return answered;
  return std::nullopt;
}

} // namespace platform
