// What --report prints.
#pragma once

#include "recording.h"

#include <cstdio>

// Prints format, length and levels, one `key: value' a line. Levels count against the range of WqUnit.
void printReport(const Recording &recording, std::FILE *out);
