// What the program tells of its work while it goes on.
#pragma once

#include "wq.h"

#include <string>

// A line for the event log, and for the debug window where there is one.
void note(const std::string &text);
// The same of a file that was opened or refused. refused: why; empty when it was opened.
void noteOpening(const std::string &file, uint64_t frames, const std::string &refused);

// A box over the viewer's window with what went wrong. Without a display it goes to standard error.
void warn(const std::string &text);
