// What the user sees in a terminal.
#pragma once

#include <cstdint>
#include <string>

// A text of the library's encoding in that of the terminal.
std::string shown(const std::string &text);

// One line on standard error.
void complain(const std::string &text);

// A line on standard error that tells how far some work is. It appears only in a terminal, and only when the work takes
// long; it goes when the work ends.
class Progress {
 public:
  explicit Progress(std::string what);
  ~Progress();
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;

  void update(uint64_t done, uint64_t total);

 private:
  std::string what_;
  bool visible_;  // whether there is a terminal
  uint32_t next_; // the tick at which the line is written next
  bool written_ = false;
};
