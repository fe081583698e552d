// Other programs, run by a test.
#pragma once

#include <string>
#include <vector>

struct ProgramResult {
  int status; // exit status
  std::string out;
  std::string err;
};

// Runs a program of this build, such as "levelview", and waits for it. Line ends come back as single line feeds.
// Arguments hold no double quotes.
ProgramResult runProgram(const std::string &name, const std::vector<std::string> &arguments);
