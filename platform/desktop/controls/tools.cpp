#include "platform/desktop/controls/tools.h"

#include "platform/desktop/guards.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr int kSquare = 6;           // a square has 1 << this pixels on each side
constexpr int64_t kMostSquares = 64; // a rectangle with more squares is kept apart

uint64_t squareAt(LONG column, LONG row) {
  return static_cast<uint64_t>(static_cast<uint32_t>(column)) << 32 | static_cast<uint32_t>(row);
}

// The columns and rows of the squares that a rectangle touches, the last ones included.
RECT squaresOf(const RECT &rect) {
  return {rect.left >> kSquare, rect.top >> kSquare, (rect.right - 1) >> kSquare, (rect.bottom - 1) >> kSquare};
}

bool isEmpty(const RECT &rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }

int64_t countSquares(const RECT &squares) {
  const int64_t columns = int64_t{squares.right} - squares.left + 1, rows = int64_t{squares.bottom} - squares.top + 1;
  return columns > kMostSquares || rows > kMostSquares ? kMostSquares + 1 : columns * rows;
}

bool isOlder(const Tool *a, const Tool *b) { return a->number < b->number; }

void insert(std::vector<Tool *> &row, Tool &tool) {
  row.insert(std::upper_bound(row.begin(), row.end(), &tool, isOlder), &tool);
}

// The oldest tool of a row that holds a point, if it is older than another tool. Otherwise the other tool.
Tool *olderAt(const std::vector<Tool *> &row, POINT point, Tool *other) {
  for (Tool *tool : row) {
    if (other && other->number < tool->number) break;
    if (contains(tool->rect, point)) return tool;
  }
  return other;
}

} // namespace

TipText tipText(LPSTR text, HINSTANCE instance) {
  const bool isNumber = reinterpret_cast<uintptr_t>(text) <= 0xFFFF;
  if (!text) return {};
  if (text == LPSTR_TEXTCALLBACKA || isNumber) return {text, instance, {}, false};
  return {nullptr, instance, text, true};
}

ToolRef Tools::add(Tool tool) {
  const ToolRef added = std::make_shared<Tool>(std::move(tool));
  added->number = ++last_;
  const OnThrow undo([&] { remove(*added); }); // if memory runs out
  all_.emplace(nameOf(*added), added);
  inOrder_.emplace(added->number, added);
  enter(*added);
  return added;
}

void Tools::remove(Tool &tool) {
  tool.removed = true;
  leave(tool);
  const auto kept = inOrder_.extract(tool.number); // keeps the tool alive until the end of the function
  all_.erase(nameOf(tool));
}

void Tools::enter(Tool &tool) {
  Place &place = places_[tool.place()];
  ++place.tools;
  if (tool.flags & TTF_SUBCLASS) ++place.watching;
  tool.entered = true;
  const OnThrow undo([&] { leave(tool); });
  if (tool.isWhole()) return insert(place.whole, tool);
  if (isEmpty(tool.rect)) return;
  const RECT squares = squaresOf(tool.rect);
  if (countSquares(squares) > kMostSquares) return insert(place.wide, tool);
  for (LONG column = squares.left; column <= squares.right; ++column)
    for (LONG row = squares.top; row <= squares.bottom; ++row) insert(place.squares[squareAt(column, row)], tool);
}

// Removes a tool from the grid, even if it was entered only in part.
void Tools::leave(Tool &tool) {
  if (!std::exchange(tool.entered, false)) return;
  const auto at = places_.find(tool.place());
  Place &place = at->second;
  if (--place.tools == 0) {
    places_.erase(at);
    return;
  }
  if (tool.flags & TTF_SUBCLASS) --place.watching;
  std::erase(place.whole, &tool);
  std::erase(place.wide, &tool);
  const RECT squares = squaresOf(tool.rect);
  if (tool.isWhole() || isEmpty(tool.rect) || countSquares(squares) > kMostSquares) return;
  for (LONG column = squares.left; column <= squares.right; ++column)
    for (LONG row = squares.top; row <= squares.bottom; ++row) {
      const auto square = place.squares.find(squareAt(column, row));
      if (square != place.squares.end() && std::erase(square->second, &tool) && square->second.empty())
        place.squares.erase(square);
    }
}

ToolRef Tools::find(HWND window, UINT_PTR id) const {
  const auto at = all_.lower_bound({window, id, 0});
  if (at == all_.end() || std::get<0>(at->first) != window || std::get<1>(at->first) != id) return nullptr;
  return at->second;
}

ToolRef Tools::at(size_t index) const {
  return index < inOrder_.size() ? std::next(inOrder_.begin(), static_cast<std::ptrdiff_t>(index))->second : nullptr;
}

Tool *Tools::under(HWND window, POINT point) const {
  const auto at = places_.find(window);
  if (at == places_.end()) return nullptr;
  const Place &place = at->second;
  const auto square = place.squares.find(squareAt(point.x >> kSquare, point.y >> kSquare));
  Tool *found = square == place.squares.end() ? nullptr : olderAt(square->second, point, nullptr);
  found = olderAt(place.wide, point, found);
  return found || place.whole.empty() ? found : place.whole.front();
}

bool Tools::watches(HWND window) const {
  const auto at = places_.find(window);
  return at != places_.end() && at->second.watching > 0;
}

std::vector<HWND> Tools::watched() const {
  std::vector<HWND> windows;
  for (const auto &[window, place] : places_)
    if (place.watching > 0) windows.push_back(window);
  return windows;
}

} // namespace platform
