// A list of rows to choose from, with a strip at its right edge that scrolls it: files and folders.
#pragma once

#include "platform/desktop/dialogs/control.h"

#include <string>
#include <vector>

namespace platform {

class ItemList final : public Control {
 public:
  struct Item {
    std::string name;
    bool folder = false;
    int depth = 0; // steps that it stands in
  };
  enum Notice { kSelected = 1, kChosen = 2 }; // chosen: by a double click or Enter
  enum class Way { in, out };

  ItemList(HWND handle, bool several) : Control(handle), several_(several) {}

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  void fill(std::vector<Item> items); // with nothing selected
  const std::vector<Item> &items() const { return items_; }
  std::vector<size_t> selection() const;
  void select(size_t index); // this one alone, seen
  // What the keys right and left ask for: into what is selected, out of it.
  std::optional<Way> way() const { return way_; }

 private:
  void draw(HDC dc, const RECT &area) override;
  void drawStrip(HDC dc, const RECT &strip) const;
  bool key(WPARAM key);
  void letter(char character);
  void press(POINT at, bool twice);
  void pressStrip(LONG y);
  void go(size_t index, bool extend);
  void tell(std::optional<Way> way);
  void scrollTo(long top);
  size_t visible() const;
  RECT strip() const;
  RECT thumb() const;

  const bool several_;
  std::vector<Item> items_;
  std::vector<bool> selected_;
  size_t top_ = 0, current_ = 0, anchor_ = 0;
  std::optional<Way> way_;
};

} // namespace platform
