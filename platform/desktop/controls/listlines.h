// The texts of a list box: many short ones, kept end to end in blocks, so that a line costs little beside its bytes.
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
  // Ended by a NUL. Good until the lines change.
  const char *at(size_t index) const { return lines_[index]; }
  // text: without a NUL in it; it must not be one of the lines.
  void insert(size_t index, std::string_view text);
  void erase(size_t index);
  void clear();

 private:
  static constexpr size_t kBlock = size_t{64} << 10;

  char *room(size_t size);
  void compact();

  std::deque<const char *> lines_; // lines come and go at both ends
  std::vector<std::unique_ptr<char[]>> blocks_;
  char *free_ = nullptr; // in the last block
  size_t left_ = 0;
  size_t live_ = 0, dead_ = 0; // bytes
};

// The order of sorted lists: without regard to case, signs before digits before letters, and hyphens and apostrophes only
// where nothing else differs. Below 0, 0, above 0.
int compareLines(const std::string &one, const std::string &other);
// Whether a text is another one, or begins with it, without regard to case.
bool isLine(const char *text, const std::string &folded, bool whole);
// As isLine wants the text that is looked for.
std::string foldedLine(std::string_view text);

} // namespace platform
