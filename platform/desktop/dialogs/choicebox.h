// A field that shows one of several texts; a list of them drops down below it. It takes the messages of a combo box.
#pragma once

#include "platform/desktop/dialogs/control.h"

#include <string>
#include <vector>

namespace platform {

class DropList;

class ChoiceBox final : public Control {
 public:
  ChoiceBox(HWND handle, std::vector<std::string> texts, size_t chosen)
      : Control(handle), texts_(std::move(texts)), chosen_(chosen) {}

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  size_t chosen() const { return chosen_; }

 private:
  std::optional<LRESULT> answerProgram(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> key(WPARAM key);
  void draw(HDC dc, const RECT &area) override;
  void step(bool forward);
  void choose(size_t index);
  void drop();
  void close();

  const std::vector<std::string> texts_;
  size_t chosen_;
  std::shared_ptr<DropList> list_; // while it is open
};

} // namespace platform
