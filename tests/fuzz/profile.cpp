// A private profile made of foreign bytes: whatever it holds, reads keep within the caller's room and agree with each
// other, and a write changes what it names and nothing else.
//
// An input is a byte with the number of writes, three bytes for each, and the profile. The byte's next bits turn the
// profile into UTF-16, in one order of bytes or the other.

#include "fuzz.h"

#include "platform/platform.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <fstream>
#include <optional>
#include <vector>

namespace {

constexpr size_t kLongest = 4096;
constexpr DWORD kLarge = 16384; // more than any answer takes
constexpr size_t kMostNames = 6;
constexpr const char *kAbsent = "\nabsent"; // no value of a profile

using Names = std::vector<std::string>;

// The file of this process.
class File {
 public:
  const char *name() const { return name_.c_str(); }
  void write(std::string_view content) const {
    std::filesystem::remove(name_);
    std::ofstream out(name_, std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
  }
  std::string content() const {
    std::ifstream in(name_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

 private:
  const Folder folder_;
  const std::string name_ = folder_.file("p.ini");
};

const File &file() {
  static const File only;
  return only;
}

std::string read(const char *section, const char *key, DWORD size, const char *otherwise = kAbsent) {
  const Room room(size);
  const DWORD length = GetPrivateProfileStringA(section, key, otherwise, room.get(), size, file().name());
  REQUIRE(length < size && room.get()[length] == '\0');
  const bool isList = !key && std::strcmp(room.get(), otherwise) != 0;
  REQUIRE(!isList || length + 2 != size || room.get()[length + 1] == '\0'); // where it is cut
  return {room.get(), length};
}

std::optional<std::string> value(const std::string &section, const std::string &key) {
  const std::string text = read(section.c_str(), key.c_str(), kLarge);
  return text == kAbsent ? std::nullopt : std::optional(text);
}

// The names of all sections, or of all keys of one.
Names names(const char *section) {
  const std::string all = read(section, nullptr, kLarge);
  Names found;
  if (all == kAbsent) return found;
  for (size_t at = 0; at < all.size(); at += found.back().size() + 1) found.emplace_back(all.c_str() + at);
  return found;
}

// In a smaller room the beginning of a value comes, whole characters of it; of names as many bytes as fit.
void cut(const char *section, const char *key) {
  const std::string whole = read(section, key, kLarge);
  if (whole == kAbsent) return;
  for (const size_t size : {size_t{1}, size_t{2}, whole.size() / 2 + 1, whole.size(), whole.size() + 1}) {
    if (size == 0) continue;
    const std::string text = read(section, key, static_cast<DWORD>(size), "");
    REQUIRE(whole.starts_with(text) && (size <= whole.size() || text == whole));
    REQUIRE(key ? text.size() + 2 >= size : size < 2 || size > whole.size() || text.size() == size - 2);
  }
}

struct Entry {
  std::string section, key;
  std::optional<std::string> value;
  bool operator==(const Entry &) const = default;
};

bool isUtf16(std::string_view content) { return content.starts_with("\xFF\xFE") || content.starts_with("\xFE\xFF"); }

// The bytes of a text behind a mark.
std::string utf16Of(std::string_view text, bool swapped) {
  std::vector<WCHAR> units(text.size() + 1);
  const int count = MultiByteToWideChar(932, 0, text.data(), static_cast<int>(text.size()), units.data() + 1,
                                        static_cast<int>(text.size()));
  units[0] = 0xFEFF;
  std::string bytes;
  for (size_t at = 0; at < static_cast<size_t>(count) + 1; ++at) {
    const char low = static_cast<char>(units[at]);
    const char high = static_cast<char>(units[at] >> 8);
    bytes += swapped ? high : low;
    bytes += swapped ? low : high;
  }
  return bytes;
}

bool hasNul(std::string_view content) {
  const size_t unit = isUtf16(content) ? 2 : 1;
  for (size_t at = 0; at < content.size(); at += unit)
    if (content.substr(at, unit).find_first_not_of('\0') == std::string_view::npos) return true;
  return false;
}

// All that can be read, as far as it is looked at.
std::vector<Entry> entries() {
  std::vector<Entry> all;
  Names sections = names(nullptr);
  sections.insert(sections.begin(), ""); // the lines in front of any section
  sections.resize(std::min(sections.size(), kMostNames));
  for (const std::string &section : sections) {
    Names keys = names(section.c_str());
    keys.resize(std::min(keys.size(), kMostNames));
    for (const std::string &key : keys) all.push_back({section, key, value(section, key)});
  }
  return all;
}

std::string trimmed(std::string text) {
  text.erase(text.find_last_not_of(" \t\r\n\v\f") + 1);
  text.erase(0, text.find_first_not_of(" \t\r\n\v\f"));
  return text;
}

// A text without half a double byte at its end.
std::string whole(const std::string &text) {
  size_t at = 0;
  while (at + 1 < text.size()) at += isDoubleByte(text, at) ? 2 : 1;
  return at < text.size() && IsDBCSLeadByte(static_cast<BYTE>(text[at])) ? text.substr(0, at) : text;
}

// A value as a read hands it out.
std::string expected(const std::string &written) {
  const std::string text = trimmed(whole(written));
  const bool quoted = text.size() >= 2 && (text[0] == '"' || text[0] == '\'') && text.back() == text[0];
  return quoted ? text.substr(1, text.size() - 2) : text;
}

bool sameName(const std::string &a, const std::string &b) {
  const std::string x = trimmed(a);
  const std::string y = trimmed(b);
  const auto same = [](unsigned char c, unsigned char d) {
    return c == d || c > 127 || d > 127 || tolower(c) == tolower(d);
  };
  return std::equal(x.begin(), x.end(), y.begin(), y.end(), same);
}

std::string pick(const Names &known, const Names &fresh, uint8_t choice) {
  const size_t index = choice % (known.size() + fresh.size());
  return index < known.size() ? known[index] : fresh[index - known.size()];
}

// One write, and what may have changed by it.
void change(const uint8_t *choice, const std::string &piece) {
  const std::string section = pick(names(nullptr), {"new", " NEW ", "\x83\x5D", "a]b", ""}, choice[0]);
  const std::string key = pick(names(section.c_str()), {"k", " K", "\x83\x5C", "other"}, choice[1]);
  const Names values = {"", "1", " blank ", "\"quoted\"", "'\"", "a=b;c", "\x95\x5C", piece};
  const std::string text = values[choice[2] % values.size()];
  const bool removesKey = choice[2] >= 192 && choice[2] < 240;
  const bool removesSection = choice[2] >= 240;
  const std::vector<Entry> before = entries();
  const std::string contentBefore = file().content();
  REQUIRE(WritePrivateProfileStringA(section.c_str(), removesSection ? nullptr : key.c_str(),
                                     removesKey ? nullptr : text.c_str(), file().name()));
  const std::string content = file().content();
  // a line that becomes a header, or a mark that was no beginning, makes another profile of it
  const bool isOther = key.starts_with('[') || content.substr(0, 2) != contentBefore.substr(0, 2);
  const bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) > 0; });
  if (!removesKey && !removesSection && !isOther && (isAscii || !isUtf16(content)))
    REQUIRE(value(section, key) == expected(text));
  for (const Entry &entry : before) {
    const bool named = sameName(entry.section, section) && (removesSection || sameName(entry.key, key));
    if (!named && !isOther) REQUIRE(value(entry.section, entry.key) == entry.value);
  }
  // the kept profile is the one in the file
  const std::vector<Entry> kept = entries();
  file().write(content);
  REQUIRE(entries() == kept);
  REQUIRE(file().content() == content);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const size_t writes = size > 0 ? data[0] % 4 : 0;
  const size_t head = 1 + 3 * writes;
  if (size < head || size - head > kLongest) return 0;
  const std::string_view text(reinterpret_cast<const char *>(data) + head, size - head);
  const int encoding = size > 0 && !text.empty() ? data[0] / 4 % 4 : 0;
  const std::string content = encoding == 1 || encoding == 2 ? utf16Of(text, encoding == 2) : std::string(text);
  file().write(content);
  cut(nullptr, nullptr);
  const bool ends = hasNul(content); // names end early where they are handed out
  for (const Entry &entry : entries()) {
    REQUIRE(entry.value || ends); // what is listed is found
    cut(entry.section.c_str(), nullptr);
    if (!entry.value) continue;
    cut(entry.section.c_str(), entry.key.c_str());
    GetPrivateProfileIntA(entry.section.c_str(), entry.key.c_str(), 0, file().name());
  }
  std::string piece(text.substr(0, text.find_first_of(std::string_view("\0\r\n\x01", 4))));
  if (trimmed(piece).empty()) piece = "x";
  for (size_t i = 0; i < writes && !ends; ++i) change(data + 1 + 3 * i, piece);
  return 0;
}
