// A private profile as text: sections of lines, and some lines are keys.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

// The encoding of a file. All but code page 932 have a mark in front of the text.
enum class Encoding { codePage, marked, utf16, utf16Swapped };

// Changes leave comments, blank lines and the order of lines as they are. Names are compared without regard to case and
// outer blanks. If several sections or keys have one name, the first counts. A lead byte at the end of a name or value
// is dropped, since it would join with the byte behind it.
class Profile {
 public:
  explicit Profile(std::string_view content = {});

  // A value without its outer blanks and one pair of quotes.
  std::optional<std::string> value(std::string_view section, std::string_view key) const;
  std::vector<std::string> sectionNames() const;
  // Nothing if the section doesn't exist.
  std::optional<std::vector<std::string>> keyNames(std::string_view section) const;

  void set(std::string_view section, std::string_view key, std::string_view value);
  void removeKey(std::string_view section, std::string_view key);
  void removeSection(std::string_view section);

  std::string content() const;

  // Becomes the profile that reading the content gives. The two differ if a text holds line ends or signs of the
  // format.
  void settle(const std::string &content);

 private:
  struct Line {
    std::string raw; // with its line end
    std::string key; // empty and not a key in comments and in lines without "="
    bool isKey = false;
  };
  struct Section {
    std::string name;
    std::u16string folded;
    std::vector<Line> lines;                               // the header first, except in the first section
    std::unordered_map<std::u16string, size_t> firstLines; // of each key, by folded name
    void index();
  };
  void addLine(std::string_view raw);
  void setLine(Section &section, std::string_view key, std::string_view value);
  const Section *find(std::string_view name) const;
  Section *find(std::string_view name);

  Encoding encoding_ = Encoding::codePage;
  bool exact_ = true;             // reading the content gives exactly this profile
  std::vector<Section> sections_; // the first one holds the lines in front of any header
};

// A text without blanks on both sides.
std::string_view trimmed(std::string_view text);
// A text without one pair of quotes, single or double.
std::string_view unquoted(std::string_view text);

} // namespace platform
