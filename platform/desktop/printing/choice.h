// What a print dialog begins with and gives back, in the program's record and in its blocks of memory.
#pragma once

#include "platform/desktop/printing/printers.h"

#include <string>

namespace platform {

struct PrintChoice {
  Printer printer;
  DEVMODEA settings{};
  std::string file; // that the document shall go to, code page 932; empty for the printer's own way
};

// Reads what the program begins with. Result: an error of the dialog's, 0 for none.
DWORD beginPrint(const PRINTDLGA &dialog, PrintChoice &choice);
// Writes the choice to the program's blocks, and makes the context that it asks for. Result: likewise.
DWORD finishPrint(PRINTDLGA &dialog, const PrintChoice &choice);

} // namespace platform
