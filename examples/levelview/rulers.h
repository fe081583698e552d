// Rulers: where their ticks stand, and what is written at them. Nothing here draws but drawTicks.
#pragma once

#include "look.h"
#include "visible.h"

#include <string>
#include <vector>

struct Tick {
  LONG at;           // a pixel of the ruler
  std::string label; // empty: a short tick between two others
};

using Ticks = std::vector<Tick>;

// The smallest number of 1, 2 or 5 times a power of ten that is not below `least'.
double roundStep(double least);

// The unit that times of a recording, or of a part of it, are told in by its length.
enum class TimeUnit { milliseconds, seconds, clock };
TimeUnit timeUnit(double seconds);
TimeUnit timeUnit(const Visible &visible, double rate);
const char *timeUnitName(TimeUnit unit);
// decimals: of a millisecond or of a second, as the unit is.
std::string timeText(double seconds, TimeUnit unit, int decimals);

// Silence is a level of minus infinity.
std::string levelText(double level);

// Time and sample numbers along the wave. Labels stand to the right of their ticks and never meet.
// rate: frames per second. digit: the width of a digit.
Ticks timeTicks(const Visible &visible, double rate, LONG digit);
Ticks frameTicks(const Visible &visible, LONG digit);

// Levels of a wave: `at' counts pixels upward from the middle of a lane, where full scale lies at `half'. By the range
// of WqUnit. Those in percent are there for negative samples too, those in dBV hold for both.
// line: the height of a line of text.
Ticks percentTicks(LONG half, LONG line);
Ticks levelTicks(LONG half, LONG line);

// Levels in dBV on an even scale of a height, from the top down.
Ticks scaleTicks(double top, double bottom, LONG height, LONG line);

// Draws a ruler along the top of the wave: ticks down to the lower edge, labels beside them.
// left: where its first pixel is.
void drawTicks(WqDc &dc, const Look &look, const RECT &row, LONG left, const Ticks &ticks);
