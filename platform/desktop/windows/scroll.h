// The scroll bars beside a window's client area: what they show, and what the user does to them.
#pragma once

#include "platform/desktop/windows/window.h"
#include "platform/winapi/scroll.h"

#include <optional>

namespace platform {

enum class BarPart { none, lineBack, pageBack, thumb, pageOn, lineOn };

// What of a bar is seen. Lengths are along it, from its top or left end.
struct BarLook {
  LONG length = 0, arrow = 0;
  LONG thumb = 0, thumbLength = 0; // 0: there is none
  UINT disabled = 0;               // ESB_...
  BarPart pressed = BarPart::none;

  bool operator==(const BarLook &) const = default;
};

struct ScrollBar {
  int min = 0, max = 100, page = 0, pos = 0;
  UINT disabled = 0;
  std::optional<BarLook> drawn; // what its pixels show, as far as that is known

  int last() const; // the last position
};

struct ScrollBars {
  ScrollBar bars[2]; // SB_HORZ, SB_VERT

  // What the user holds.
  int held = -1; // the bar
  BarPart part = BarPart::none;
  bool inside = false; // the pointer is where it was pressed
  LONG thumb = 0;      // where the thumb is held
  int trackPos = 0;
};

// Whether a window's style asks for a bar, and where it stands, in client coordinates of the parent like the client area.
bool hasBar(const Window &window, int bar);
RECT barRect(const Window &window, int bar);
// HTVSCROLL, HTHSCROLL, HTGROWBOX; HTNOWHERE beside the bars.
LRESULT hitBars(const Window &window, POINT inParent);
// Draws both, and what lies between their ends.
void drawBars(Window &window);
// Follows a press until the button is released. at: on the screen.
void trackBar(const WindowRef &window, int bar, POINT at);

} // namespace platform
