// What the user has copied: a picture of the window, taken then, and the report as text. Both are only promised to the
// clipboard, and given when another program wants them.
#pragma once

#include "wq.h"

#include <functional>
#include <string>
#include <utility>

class Copier {
 public:
  // report: makes the text, when it is wanted.
  explicit Copier(std::function<std::string()> report) : report_(std::move(report)) {}
  ~Copier() { DeleteObject(picture_); }
  Copier(const Copier &) = delete;
  Copier &operator=(const Copier &) = delete;

  // window: the main window.
  void copy(HWND window);

  // Answer WM_RENDERFORMAT and WM_RENDERALLFORMATS of the main window.
  static void render(WPARAM format);
  static void renderAll(HWND window);

 private:
  HANDLE give(UINT format);

  std::function<std::string()> report_;
  HBITMAP picture_ = nullptr; // until the clipboard has it
};
