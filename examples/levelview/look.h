// How the viewer looks: colours and fonts, entered in the library's registries, and sizes. These come from millimetres
// and points, so that a display with smaller pixels gets more of them. On paper the same sizes hold, since the library
// makes a unit of its context a pixel of the display; a colour has another shade there, dark on white.
#pragma once

#include "wq.h"

#include <string>

enum Colour : uint32_t {
  colourGround = 1, // round the lanes
  colourLane,
  colourGrid,
  colourCentre, // the line of silence
  colourPeak,
  colourRms,
  colourDot,    // a sample
  colourCursor, // the mouse's line
  colourPanel,
  colourEdge, // between panes
  colourText,
  colourDimText,
  colourTick,
  colourHidden, // what of the overview is not in the window
  colourClip,   // full scale is reached
};

constexpr LONG kButtonAt96 = 24; // pixels of a button on a display of 96 dpi; there are pictures for twice as many too

enum Font : uint32_t { fontText = 1, fontBold, fontTitle };

// In pixels.
struct Look {
  Look(); // enters the colours and fonts

  LONG digit; // the width of a digit
  LONG line;  // the height of a line of text
  LONG gap;
  LONG tick; // the long ones of a ruler
  LONG shortTick;
  LONG dot;        // of a sample
  LONG ruler;      // the height of each of those above the wave
  LONG levelRuler; // the width of those beside it
  LONG button;     // of the bar
  LONG bar;
  LONG overview;
  LONG levels;
  LONG status;
  SIZE usual; // of the window
  SIZE smallest;
};

// The nearest pixel.
LONG rounded(double value);

// A rectangle by its edges, without width or height where these cross.
RECT box(LONG left, LONG top, LONG right, LONG bottom);

// What two rectangles share; without width or height when that is nothing.
RECT common(const RECT &rect, const RECT &bound);

void fill(WqDc &dc, const RECT &rect, Colour colour);
// Straight lines one pixel wide, with both ends.
void horizontal(WqDc &dc, LONG left, LONG right, LONG y, Colour colour);
void vertical(WqDc &dc, LONG x, LONG top, LONG bottom, Colour colour);
// One line of text in the middle of a rectangle's height.
// align: DT_LEFT, DT_CENTER or DT_RIGHT.
void write(WqDc &dc, const std::string &text, const RECT &rect, UINT align, Colour colour = colourText,
           Font font = fontText);
LONG widthOf(WqDc &dc, const std::string &text, Font font = fontText);

// The pen for lines that follow, a pixel wide.
void initLine(WqDc &dc, Colour colour);
void frame(WqDc &dc, const RECT &rect, Colour colour);

// Drawing is clipped to a rectangle, until the end of the scope.
class Clip {
 public:
  Clip(WqDc &dc, const RECT &rect);
  ~Clip() { WqDcRgn_Delete(&dc_.rgn); }
  Clip(const Clip &) = delete;
  Clip &operator=(const Clip &) = delete;

 private:
  WqDc &dc_;
};

// A text as printf makes it.
std::string format(const char *form, ...) WQ_PRINTF(1, 2);
