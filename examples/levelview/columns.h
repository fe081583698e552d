// What lies under each column of pixels.
#pragma once

#include "peaks.h"
#include "visible.h"

#include <vector>

using Columns = std::vector<Extents>;

// From the column `from' to before `to', as `visible' counts pixels; a column beyond the recording is empty. Each
// begins with the last sample of the one before, so that a wave of columns has no gaps.
Columns columnsOf(const Peaks &peaks, const Visible &visible, LONG from, LONG to);

// The part of columns that is not above the root of the mean square there, taken over a fiftieth of a second at least:
// that is steadier than the column alone.
// columns: those from `from' on. rate: frames per second.
Columns loudParts(const Columns &columns, const Peaks &peaks, const Visible &visible, LONG from, double rate);
