// A private profile as text: sections of lines, of which some are keys.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

// How the text of a file is written; a mark in front tells all but the first.
enum class Encoding { codePage, marked, utf16, utf16Swapped };

// Comments, blank lines and the order of everything stay as they are, but for what is changed. Names are compared without
// regard to case and outer blanks; of several sections or keys of one name the first counts. Half a double byte at the end
// of what is named or written is dropped, since it would take the next byte along.
class Profile {
 public:
  explicit Profile(std::string_view content = {});

  // A value without its outer blanks and one pair of quotes.
  std::optional<std::string> value(std::string_view section, std::string_view key) const;
  std::vector<std::string> sectionNames() const;
  // Nothing for a section that isn't there.
  std::optional<std::vector<std::string>> keyNames(std::string_view section) const;

  void set(std::string_view section, std::string_view key, std::string_view value);
  void removeKey(std::string_view section, std::string_view key);
  void removeSection(std::string_view section);

  std::string content() const;

  // Becomes what a reading of its content gives. A text with line ends or signs of the format in it reads otherwise than
  // it was written.
  void settle(const std::string &content);

 private:
  struct Line {
    std::string raw; // with its line end
    std::string key; // empty, and no key, where there is no "=" or a comment begins
    bool isKey = false;
  };
  struct Section {
    std::string name;
    std::u16string folded;
    std::vector<Line> lines;                               // the header first, but for the lines in front of any
    std::unordered_map<std::u16string, size_t> firstLines; // of each key, by folded name
    void index();
  };
  void addLine(std::string_view raw);
  void setLine(Section &section, std::string_view key, std::string_view value);
  const Section *find(std::string_view name) const;
  Section *find(std::string_view name);

  Encoding encoding_ = Encoding::codePage;
  bool exact_ = true;             // a reading of the content gives just this
  std::vector<Section> sections_; // the first one has no header
};

// A text without blanks on both sides.
std::string_view trimmed(std::string_view text);
// One pair of quotes, single or double, taken off.
std::string_view unquoted(std::string_view text);

} // namespace platform
