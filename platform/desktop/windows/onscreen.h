// Tells the screen about top-level windows. Without a display, and for other windows, these functions do nothing.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

void showOnScreen(Window &window);
void hideOnScreen(Window &window);
// The place or the state of the window may have changed.
void placeOnScreen(Window &window);
void raiseOnScreen(Window &window);
void lowerOnScreen(Window &window);
// Some windows may have become topmost, or are no longer topmost.
void bandsOnScreen();
// The title, styles, icon, owner or opacity of the window may have changed, or whether windows in it take files.
void lookOnScreen(Window &window);
// The window is going or becomes a child.
void closeOnScreen(Window &window);
// The window that the program wants active, whatever its thread; null for none. Only the newest wish counts.
void activateOnScreen(Window *window);
// The serial number of the newest wish.
Serial activationNow();

// The part of the screen where windows can be seen; without limits if the desktop doesn't tell places.
const RECT &seenArea();

} // namespace platform
