// The texts of a list box: many short ones, stored end to end in blocks. So a line needs little memory beside its
// bytes.
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class ListLines {
 public:
  size_t count() const { return lines_.size(); }
  // Ends with a NUL. Valid until the next change of the lines.
  const char *at(size_t index) const { return lines_[index]; }
  // text: has no NUL in it, and is not one of the stored lines.
  void insert(size_t index, std::string_view text);
  void erase(size_t index);
  void clear();

 private:
  static constexpr size_t kBlock = size_t{64} << 10;

  char *room(size_t size);
  void compact();

  std::deque<const char *> lines_; // a deque: lines are added and removed at both ends
  std::vector<std::unique_ptr<char[]>> blocks_;
  char *free_ = nullptr; // in the last block
  size_t left_ = 0;
  size_t live_ = 0, dead_ = 0; // bytes
};

// Compares two texts for sorted lists, without regard to case. Signs come before digits, digits before letters. Hyphens
// and apostrophes count only if nothing else differs. Result: below 0, 0 or above 0.
int compareLines(const std::string &one, const std::string &other);
// Whether a text equals another one, or begins with it, without regard to case. folded: from foldedLine.
bool isLine(const char *text, const std::string &folded, bool whole);
// The text to look for, in the form that isLine takes.
std::string foldedLine(std::string_view text);

} // namespace platform
