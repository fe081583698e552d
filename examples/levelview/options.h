// The command line.
#pragma once

#include <string>

enum class Mode { report, make, help, version };

struct Options {
  Mode mode = Mode::report;
  double range = 1.0; // volts that full scale stands for
  // The file twice: as the library takes names, and as the terminal shows them. They differ where the terminal's
  // encoding is not code page 932.
  std::string file;
  std::string shownFile;
};

// Reads the arguments, which come in the library's encoding and in the terminal's.
// Result: an error in one line, empty when all is well.
std::string readOptions(int argc, char **argv, char **shownArgv, Options &options);

extern const char *const kUsage;
