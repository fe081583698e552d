// A tooltip control. It belongs to one thread and works under the desktop's lock. Messages to the windows of tools run
// procedures of the program, which may destroy the control or remove the tool. So both are looked at again after each
// message.
#pragma once

#include "platform/desktop/controls/tools.h"
#include "platform/desktop/windows/ownclass.h"
#include "platform/desktop/windows/window.h"

namespace platform {

class Tooltip : public Answerer {
 public:
  explicit Tooltip(HWND handle);

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  // In milliseconds.
  struct Delays {
    int initial, reshow, autopop;
  };
  enum TimerId : UINT_PTR { kShow = 1, kPop = 2, kLeave = 3 };

  // ---- Tools and settings (tooltip.cpp)
  std::optional<LRESULT> answerTools(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> answerSettings(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> answerWindow(UINT message, WPARAM wParam, LPARAM lParam);
  BOOL addTool(const TTTOOLINFOA *info);
  void deleteTool(const TTTOOLINFOA *info);
  void setTool(const TTTOOLINFOA &info);
  void setRect(const TTTOOLINFOA &info);
  void setText(const TTTOOLINFOA &info);
  BOOL hitTest(TTHITTESTINFOA &test) const;
  BOOL currentTool(TTTOOLINFOA *info) const;
  void copyText(const TTTOOLINFOA &info, WPARAM size);
  void setDelay(WPARAM which, int milliseconds);
  LRESULT delay(WPARAM which) const;
  ToolRef toolOf(const TTTOOLINFOA *info) const;
  void watch(HWND window) const;
  void unwatch(HWND window) const;
  void end();

  // ---- The tip's times (tipwindow.cpp)
  void relayed(const MSG &message);
  void hover(const ToolRef &tool);
  void waitFor(int delay, DWORD since);
  void tick(WPARAM timer);
  void rested();
  void look();
  void activate(bool active);
  void track(bool on, const ToolRef &tool);
  ToolRef underPointer();
  bool ownerIsActive(const Tool &tool) const;

  // ---- The tip (tipwindow.cpp)
  bool show(const ToolRef &tool);
  void showAgain(const ToolRef &tool);
  void pop();
  std::string textOf(const ToolRef &tool);
  std::string askText(const ToolRef &tool);
  void notify(const Tool &tool, UINT code) const;
  std::string shownText(const std::string &text) const;
  SIZE sizeFor(const std::string &text) const;
  POINT placeFor(const Tool &tool, SIZE size) const;
  RECT border() const;
  UINT textFormat() const;
  HFONT font() const;
  void paint() const;
  bool isUp() const;

  const HWND handle_;
  bool gone_ = false;
  Tools tools_;

  bool active_ = true;
  Delays delays_;
  int widest_ = -1; // of a line in pixels; negative for a single line
  RECT margin_{};   // a width for each side
  COLORREF background_, foreground_;
  HFONT font_ = nullptr; // null for the system's

  ToolRef hovered_;  // the tool under the pointer at the last look
  int waiting_ = -1; // how long the pointer has to rest for its tip; negative: no tip is due
  DWORD restsSince_ = 0;
  ToolRef shown_;         // the tool of the visible tip
  bool tracking_ = false; // the program shows the tip by TTM_TRACKACTIVATE
  POINT trackAt_{};
  std::string text_; // of the last tip
};

} // namespace platform
