// What the screen is told of top-level windows. Where nobody sees them, and for other windows, these do nothing.
#pragma once

#include "platform/desktop/windows/window.h"

namespace platform {

void showOnScreen(Window &window);
void hideOnScreen(Window &window);
// Its place or its state may have changed.
void placeOnScreen(Window &window);
void raiseOnScreen(Window &window);
void lowerOnScreen(Window &window);
// Windows may have become topmost, or are it no more.
void bandsOnScreen();
// Its title, styles, icon, owner or opacity may have changed, or whether windows in it take files.
void lookOnScreen(Window &window);
// It is no top-level window any more.
void closeOnScreen(Window &window);
// The program's newest wish, of any thread; null for no window.
void activateOnScreen(Window *window);
// The serial number of that wish.
Serial activationNow();

// Where on the screen windows can be seen; without limits where nobody knows their places.
const RECT &seenArea();

} // namespace platform
