// A field that shows one of several texts; keys, the wheel and clicks go on to another one.
#pragma once

#include "platform/desktop/dialogs/control.h"

#include <string>
#include <vector>

namespace platform {

class ChoiceBox final : public Control {
 public:
  ChoiceBox(HWND handle, std::vector<std::string> texts, size_t chosen)
      : Control(handle), texts_(std::move(texts)), chosen_(chosen) {}

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  size_t chosen() const { return chosen_; }

  static constexpr int kChanged = 1; // what it tells its parent

 private:
  void draw(HDC dc, const RECT &area) override;
  void step(bool forward, bool round);

  const std::vector<std::string> texts_;
  size_t chosen_;
};

} // namespace platform
