// The tools of a tooltip control: windows and parts of windows that have a tip. A tool is found by its name or by the
// pointer's place. The cost doesn't grow with the number of tools.
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

// The text of a tip, or its source.
struct TipText {
  LPSTR where = nullptr; // LPSTR_TEXTCALLBACKA or a string's number; null if own holds the text
  HINSTANCE instance = nullptr;
  std::string own;
  bool given = false; // whether own was set; it may be empty
};
TipText tipText(LPSTR text, HINSTANCE instance);

struct Tool : std::enable_shared_from_this<Tool> {
  UINT flags = 0;
  HWND window = nullptr; // window and id are the tool's name
  UINT_PTR id = 0;
  RECT rect{};
  LPARAM data = 0;
  TipText text;
  uint64_t number = 0;  // in the order of adding
  bool entered = false; // whether the tool is in the grid
  bool removed = false;

  bool isWhole() const { return flags & TTF_IDISHWND; }
  // The window whose mouse messages concern the tool.
  HWND place() const { return isWhole() ? reinterpret_cast<HWND>(id) : window; }
};
using ToolRef = std::shared_ptr<Tool>;

class Tools {
 public:
  // If two tools have one name, the older one counts.
  ToolRef add(Tool tool);
  void remove(Tool &tool);
  // Changes a tool's flags, rectangle or text, but not its name.
  template <typename Body> void change(Tool &tool, Body body) {
    leave(tool);
    body();
    enter(tool);
  }

  size_t count() const { return all_.size(); }
  ToolRef find(HWND window, UINT_PTR id) const;
  ToolRef at(size_t index) const;
  // The tool at a point of a window's client area. Rectangles come before the window itself, and older rectangles
  // first.
  Tool *under(HWND window, POINT point) const;
  // Whether a window has tools with TTF_SUBCLASS.
  bool watches(HWND window) const;
  // The windows with such tools.
  std::vector<HWND> watched() const;

 private:
  using Name = std::tuple<HWND, UINT_PTR, uint64_t>;
  using Row = std::vector<Tool *>; // the oldest first

  // The tools of a window. A rectangle is found by the squares of a grid that it touches.
  struct Place {
    size_t tools = 0, watching = 0;
    Row whole;
    Row wide; // rectangles with too many squares for the grid
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
