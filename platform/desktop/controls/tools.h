// The tools of a tooltip control: windows and parts of windows that have a tip. They are found by name, and by the place
// of the pointer, at the same cost however many there are.
#pragma once

#include "platform/desktop/rects.h"
#include "platform/winapi/tooltips.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace platform {

// What a tip says, or where that is to be found.
struct TipText {
  LPSTR where = nullptr; // LPSTR_TEXTCALLBACKA, or the number of a string; null for own
  HINSTANCE instance = nullptr;
  std::string own;
  bool given = false; // own: it may be empty, or there may be none
};
TipText tipText(LPSTR text, HINSTANCE instance);

struct Tool : std::enable_shared_from_this<Tool> {
  UINT flags = 0;
  HWND window = nullptr; // it and the id are the tool's name
  UINT_PTR id = 0;
  RECT rect{};
  LPARAM data = 0;
  TipText text;
  uint64_t number = 0;  // counts all of them, in the order of adding
  bool entered = false; // it can be found by its place
  bool removed = false;

  bool isWhole() const { return flags & TTF_IDISHWND; }
  // The window whose mouse messages concern it.
  HWND place() const { return isWhole() ? reinterpret_cast<HWND>(id) : window; }
};
using ToolRef = std::shared_ptr<Tool>;

class Tools {
 public:
  // Of two tools with one name the older one counts.
  ToolRef add(Tool tool);
  void remove(Tool &tool);
  // Changes what is no part of its name: place, flags or rectangle.
  template <typename Body> void change(Tool &tool, Body body) {
    leave(tool);
    body();
    enter(tool);
  }

  size_t count() const { return all_.size(); }
  ToolRef find(HWND window, UINT_PTR id) const;
  ToolRef at(size_t index) const;
  // The tool at a point of a window's client area: a rectangle before the window itself, the older one before others.
  Tool *under(HWND window, POINT point) const;
  // Whether a tool of TTF_SUBCLASS is there.
  bool watches(HWND window) const;
  // The windows in which such tools are.
  std::vector<HWND> watched() const;

 private:
  using Name = std::tuple<HWND, UINT_PTR, uint64_t>;
  using Row = std::vector<Tool *>; // the oldest first

  // The tools of a window. Rectangles are found by the squares of a grid that they touch.
  struct Place {
    size_t tools = 0, watching = 0;
    Row whole;
    Row wide; // rectangles that touch more squares than is worth while
    std::unordered_map<uint64_t, Row> squares;
  };

  static Name nameOf(const Tool &tool) { return {tool.window, tool.id, tool.number}; }
  void enter(Tool &tool);
  void leave(Tool &tool);

  std::map<Name, ToolRef> all_;
  std::map<uint64_t, ToolRef> inOrder_;
  std::unordered_map<HWND, Place> places_;
  uint64_t last_ = 0;
};

} // namespace platform
