// The windows of which dialogs are made: each has an object that answers its messages, and lives as long as the window.
// They work under the desktop's lock. What they tell their parents may run procedures of the program, which may end them.
#pragma once

#include "platform/desktop/windows/window.h"
#include "platform/winapi/dialogs.h"

#include <memory>
#include <optional>

namespace platform {

class Control {
 public:
  explicit Control(HWND handle) : handle_(handle) {}
  virtual ~Control() = default;
  Control(const Control &) = delete;
  Control &operator=(const Control &) = delete;

  // Answers a message; nothing for one that it leaves to the default procedure.
  virtual std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam);

 protected:
  virtual void draw(HDC dc, const RECT &area) = 0;

  DWORD style() const { return static_cast<DWORD>(GetWindowLongA(handle_, GWL_STYLE)); }
  bool isEnabled() const { return !(style() & WS_DISABLED); }
  bool hasFocus() const { return GetFocus() == handle_; }
  RECT area() const;
  const std::string &text() const { return recordOf(handle_)->text; }
  HFONT font() const { return font_; }
  void repaint() const { InvalidateRect(handle_, nullptr, FALSE); }
  // Tells the parent of something with WM_COMMAND.
  void notify(int what) const;

  const HWND handle_;

 private:
  void paint();

  HFONT font_ = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
};

using ControlMaker = std::shared_ptr<Control> (*)(HWND window);

// The window procedure of all of them; `make` makes the object of a new window.
LRESULT controlProcedure(ControlMaker make, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

template <typename Kind> LRESULT CALLBACK procedureOf(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  constexpr ControlMaker kMake = [](HWND handle) -> std::shared_ptr<Control> { return std::make_shared<Kind>(handle); };
  return controlProcedure(kMake, window, message, wParam, lParam);
}

// The classes, which are there from the first call on.
extern const char *const kDialogClass;
extern const char *const kButtonClass;
extern const char *const kEditClass;
extern const char *const kLabelClass;
void registerControl(const char *name, WNDPROC procedure, UINT style, LPCSTR cursor, int extra = 0);

LRESULT CALLBACK buttonProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK editProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK labelProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What is selected into a context, until the end of the scope.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
  ~Selected() { SelectObject(dc_, before_); }
  Selected(const Selected &) = delete;
  Selected &operator=(const Selected &) = delete;

 private:
  const HDC dc_;
  const HGDIOBJ before_;
};

} // namespace platform
