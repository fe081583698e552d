// Other programs, run by a test.
#pragma once

#include <cstdint>
#include <optional>
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

// A program of this build that runs beside the test, with its output. Arguments hold no double quotes, and don't end in
// a backslash.
class BackgroundProgram {
 public:
  BackgroundProgram(const std::string &name, const std::vector<std::string> &arguments);
  ~BackgroundProgram(); // kills it if it still runs
  BackgroundProgram(const BackgroundProgram &) = delete;
  BackgroundProgram &operator=(const BackgroundProgram &) = delete;

  void kill(); // at once, without any clean-up of its own; waits until it is gone
  int wait();  // its exit status; -1 when it was killed or could not be started
  bool running();

 private:
  intptr_t process_; // what the system knows it by
  std::optional<int> status_;
};
