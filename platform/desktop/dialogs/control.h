// The windows of which dialogs are made.
#pragma once

#include "platform/desktop/windows/ownclass.h"
#include "platform/desktop/windows/window.h"
#include "platform/winapi/dialogs.h"

namespace platform {

class Control : public Answerer {
 public:
  explicit Control(HWND handle) : handle_(handle) {}

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;

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

// The classes, which are there from the first call on.
extern const char *const kDialogClass;
extern const char *const kButtonClass;
extern const char *const kEditClass;
extern const char *const kLabelClass;

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
