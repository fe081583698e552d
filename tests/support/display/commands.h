// Commands that a test runs on its desktop.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>

// Runs a command of the shell in the folder of the test programs, for this time at most.
struct Ended {
  int status; // as the shell has it: 128 and the signal for what crashed
  bool inTime;
  std::string out, err;
};
Ended runCommand(const std::string &command, int seconds = 10);

// A command of the shell that runs beside the test, in the folder of the test programs, for 15 s at most. What it
// writes on standard output comes line by line.
class Beside {
 public:
  explicit Beside(const std::string &command);
  ~Beside(); // waits for its end
  Beside(const Beside &) = delete;
  Beside &operator=(const Beside &) = delete;

  // Skips lines until one that begins like this, for some seconds at most. Result: that line; empty when there is none.
  std::string line(const std::string &beginning);
  int end(); // waits for it; its status, as Ended has it

 private:
  bool readMore(std::chrono::steady_clock::time_point last);
  FILE *stream_;
  std::string read_; // and not yet asked for
  int status_ = 0;
};

std::string sessionScript();
