// The scroll bars beside a window's client area: their look, and the user's presses.
#pragma once

#include "platform/desktop/windows/window.h"
#include "platform/winapi/scroll.h"

#include <optional>

namespace platform {

enum class BarPart { none, lineBack, pageBack, thumb, pageOn, lineOn };

// The visible state of a bar. Lengths are along the bar, from its top or left end.
struct BarLook {
  LONG length = 0, arrow = 0;
  LONG thumb = 0, thumbLength = 0; // 0: no thumb
  UINT disabled = 0;               // ESB_...
  BarPart pressed = BarPart::none;

  bool operator==(const BarLook &) const = default;
};

struct ScrollBar {
  int min = 0, max = 100, page = 0, pos = 0;
  UINT disabled = 0;
  std::optional<BarLook> drawn; // the state of its pixels, if known

  int last() const; // the greatest position
};

struct ScrollBars {
  ScrollBar bars[2]; // SB_HORZ, SB_VERT

  // The user's press.
  int held = -1; // the pressed bar; -1 for none
  BarPart part = BarPart::none;
  bool inside = false; // the pointer is over the pressed part
  LONG thumb = 0;      // the thumb's place during the press
  int trackPos = 0;
};

// Whether a window shows a bar, and the bar's rectangle, in client coordinates of the parent like the client area.
bool hasBar(const Window &window, int bar);
RECT barRect(const Window &window, int bar);
// HTVSCROLL, HTHSCROLL, HTGROWBOX; HTNOWHERE beside the bars.
LRESULT hitBars(const Window &window, POINT inParent);
// Draws both bars and the corner between them.
void drawBars(Window &window);
// Follows a press until the button is released. at: on the screen.
void trackBar(const WindowRef &window, int bar, POINT at);

} // namespace platform
