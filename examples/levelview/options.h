// The command line.
#pragma once

#include "wq.h"

#include <optional>
#include <string>
#include <vector>

enum class Mode { view, report, print, make, help, version };

// Names are in the library's encoding.
struct Options {
  Mode mode = Mode::view;
  std::optional<double> range; // volts that full scale stands for
  std::vector<std::string> files;
  std::string log;          // where the event log goes at the end; empty for nowhere
  std::string settings;     // another settings file than the usual one
  std::string snapshot;     // where a picture of the window goes instead of the window; empty for nowhere
  bool loudness = false;    // measured for a report too
  std::string output;       // the file that a print goes to; empty for the printer's own way
  bool debug = false;       // with the debug window
  SIZE size = {800, 480};   // of the picture
  double zoom = 1;          // the view begins with all of the file, with a half of it for 2,
  std::optional<double> at; // and with this second in its middle
};

// Reads the arguments, which come in the library's encoding.
// Result: an error in one line, empty when all is well.
std::string readOptions(int argc, char **argv, Options &options);

extern const char *const kUsage;
