// The printers that there are, and their settings.
#pragma once

#include "platform/desktop/printing/pdfpages.h"
#include "platform/winapi.h"

namespace platform {

struct Printer {
  std::string name; // code page 932, as all that follows
  std::string driver, port;
  std::string queue; // how the system's spooler names it, UTF-8; empty for the one that writes files
  bool standard = false;
};

// The one that writes files comes first.
std::vector<Printer> printers();
// One by its name; the default one without a name.
std::optional<Printer> printerOf(const char *name);

// A size of paper, by its DMPAPER_... number.
struct Sheet {
  short number;
  short width, length; // upright, in tenths of a millimetre
  const char *name;
};
const std::vector<Sheet> &sheets();

// A printer's settings, with those that a program asks for as far as they make sense. asked: null for none.
DEVMODEA settingsOf(const Printer &printer, const DEVMODEA *asked);
// The page that settings make.
PageForm pageOf(const Printer &printer, const DEVMODEA &settings);

} // namespace platform
