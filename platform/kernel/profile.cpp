#include "platform/kernel/profile.h"

#include "platform/kernel/codepage.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kMarks[] = {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"}; // in front of the text, by encoding

std::string_view markOf(Encoding encoding) { return kMarks[static_cast<size_t>(encoding)]; }

Encoding encodingOf(std::string_view content) {
  for (const Encoding encoding : {Encoding::marked, Encoding::utf16, Encoding::utf16Swapped})
    if (content.starts_with(markOf(encoding))) return encoding;
  return Encoding::codePage;
}

bool isUtf16(Encoding encoding) { return encoding == Encoding::utf16 || encoding == Encoding::utf16Swapped; }

// UTF-16 text without its mark, in code page 932. A single byte at the end counts as a whole unit.
std::string fromUtf16(std::string_view bytes, bool swapped) {
  std::u16string units;
  for (size_t at = 0; at < bytes.size(); at += 2) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(at + 1 < bytes.size() ? bytes[at + 1] : 0);
    units += static_cast<char16_t>(swapped ? first << 8 | second : second << 8 | first);
  }
  return codePageFromUtf8(utf8FromUtf16(units));
}

std::string toUtf16(std::string_view text, bool swapped) {
  std::string bytes;
  for (const char16_t unit : utf16FromUtf8(utf8FromCodePage(text))) {
    bytes += static_cast<char>(swapped ? unit >> 8 : unit);
    bytes += static_cast<char>(swapped ? unit : unit >> 8);
  }
  return bytes;
}

bool endsLine(std::string_view raw) { return raw.ends_with('\n') || raw.ends_with('\r'); }

// The length of the first line of a text, with its line end.
size_t lineLength(std::string_view text) {
  const size_t end = text.find_first_of("\r\n");
  if (end == std::string_view::npos) return text.size();
  return text.substr(end).starts_with(kLineEnd) ? end + 2 : end + 1;
}

std::string_view withoutHalf(std::string_view text) {
  if (text.empty() || !isLeadByte(static_cast<unsigned char>(text.back()))) return text;
  size_t at = 0;
  while (at + 1 < text.size()) at += isDoubleByteAt(text, at) ? 2 : 1;
  return text.substr(0, at);
}

// A section's or key's name without blanks and half characters around it, as it is compared and written.
std::string_view nameOf(std::string_view text) {
  for (;;) {
    text = trimmed(text);
    const std::string_view name = withoutHalf(text);
    if (name.size() == text.size()) return name;
    text = name;
  }
}

// Whether the line of a key and a value reads back as both.
bool isPlain(std::string_view key, std::string_view value) {
  return key.find_first_of("=\r\n") == std::string_view::npos && !key.starts_with('[') && !key.starts_with(';') &&
         value.find_first_of("\r\n") == std::string_view::npos;
}

bool isBlank(std::string_view line) { return trimmed(line).empty(); }

// The place of the last closing bracket. Trail bytes don't count.
size_t lastBracket(std::string_view text) {
  size_t last = std::string_view::npos;
  for (size_t at = 0; at < text.size(); ++at) {
    if (isDoubleByteAt(text, at))
      ++at;
    else if (text[at] == ']')
      last = at;
  }
  return last;
}

} // namespace

std::string_view trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view unquoted(std::string_view text) {
  const bool quoted = text.size() >= 2 && (text[0] == '"' || text[0] == '\'') && text.back() == text[0];
  return quoted ? text.substr(1, text.size() - 2) : text;
}

void Profile::Section::index() {
  firstLines.clear();
  for (size_t at = 0; at < lines.size(); ++at)
    if (lines[at].isKey) firstLines.try_emplace(foldedName(lines[at].key), at);
}

Profile::Profile(std::string_view content) {
  sections_.emplace_back();
  encoding_ = encodingOf(content);
  content.remove_prefix(markOf(encoding_).size());
  std::string converted;
  if (isUtf16(encoding_)) content = converted = fromUtf16(content, encoding_ == Encoding::utf16Swapped);
  while (!content.empty()) {
    const size_t length = lineLength(content);
    addLine(content.substr(0, length));
    content.remove_prefix(length);
  }
  for (Section &section : sections_) section.index();
}

void Profile::addLine(std::string_view raw) {
  const std::string_view text = trimmed(raw);
  const size_t close = lastBracket(text);
  const bool isHeader = text.starts_with('[') && close != std::string_view::npos;
  if (isHeader) {
    const std::string name(nameOf(text.substr(1, close - 1)));
    sections_.push_back({name, foldedName(name), {}, {}});
  }
  Line line{std::string(raw), {}, false};
  const size_t equals = text.find('=');
  if (!isHeader && !text.starts_with(';') && equals != std::string_view::npos) {
    line.key = nameOf(text.substr(0, equals));
    line.isKey = true;
  }
  sections_.back().lines.push_back(std::move(line));
}

const Profile::Section *Profile::find(std::string_view name) const {
  const std::u16string folded = foldedName(nameOf(name));
  const auto found = std::find_if(sections_.begin(), sections_.end(),
                                  [&](const Section &section) { return section.folded == folded; });
  return found == sections_.end() ? nullptr : &*found;
}

Profile::Section *Profile::find(std::string_view name) {
  return const_cast<Section *>(static_cast<const Profile *>(this)->find(name));
}

std::optional<std::string> Profile::value(std::string_view section, std::string_view key) const {
  const Section *found = find(section);
  if (!found) return std::nullopt;
  const auto line = found->firstLines.find(foldedName(nameOf(key)));
  if (line == found->firstLines.end()) return std::nullopt;
  const std::string_view raw = found->lines[line->second].raw;
  return std::string(unquoted(trimmed(raw.substr(raw.find('=') + 1))));
}

std::vector<std::string> Profile::sectionNames() const {
  std::vector<std::string> names;
  for (const Section &section : sections_)
    if (!section.name.empty()) names.push_back(section.name);
  return names;
}

std::optional<std::vector<std::string>> Profile::keyNames(std::string_view section) const {
  const Section *found = find(section);
  if (!found) return std::nullopt;
  std::vector<std::string> names;
  for (const Line &line : found->lines)
    if (line.isKey) names.push_back(line.key);
  return names;
}

void Profile::set(std::string_view section, std::string_view key, std::string_view value) {
  Section *found = find(section);
  if (!found) {
    const std::string_view name = nameOf(section);
    std::vector<Line> &before = sections_.back().lines;
    if (!before.empty() && !endsLine(before.back().raw)) before.back().raw += kLineEnd;
    addLine('[' + std::string(name) + ']' + std::string(kLineEnd));
    found = &sections_.back();
    exact_ = exact_ && name.find_first_of(kLineEnd) == std::string_view::npos;
  }
  value = withoutHalf(value);
  value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
  exact_ = exact_ && isPlain(nameOf(key), value);
  setLine(*found, nameOf(key), value);
}

void Profile::setLine(Section &section, std::string_view key, std::string_view value) {
  const auto known = section.firstLines.find(foldedName(key));
  const auto rawOf = [&](std::string_view name) {
    return std::string(name) + '=' + std::string(value) + std::string(kLineEnd);
  };
  if (known != section.firstLines.end()) {
    Line &old = section.lines[known->second];
    old.raw = rawOf(old.key);
    return;
  }
  std::vector<Line> &lines = section.lines;
  size_t at = lines.size(); // behind the section's last line that isn't blank
  while (at > 1 && isBlank(lines[at - 1].raw)) --at;
  if (at > 0 && !endsLine(lines[at - 1].raw)) lines[at - 1].raw += kLineEnd;
  const bool last = at == lines.size();
  lines.insert(lines.begin() + static_cast<ptrdiff_t>(at), Line{rawOf(key), std::string(key), true});
  if (last)
    section.firstLines.emplace(foldedName(key), at);
  else
    section.index();
}

void Profile::removeKey(std::string_view section, std::string_view key) {
  Section *found = find(section);
  if (!found) return;
  const auto line = found->firstLines.find(foldedName(nameOf(key)));
  if (line == found->firstLines.end()) return;
  found->lines.erase(found->lines.begin() + static_cast<ptrdiff_t>(line->second));
  found->index();
}

void Profile::removeSection(std::string_view section) {
  const Section *found = find(section);
  if (found && found != sections_.data()) sections_.erase(sections_.begin() + (found - sections_.data()));
}

std::string Profile::content() const {
  std::string out(isUtf16(encoding_) ? std::string_view() : markOf(encoding_));
  for (const Section &section : sections_)
    for (const Line &line : section.lines) out += line.raw;
  if (!isUtf16(encoding_)) return out;
  return std::string(markOf(encoding_)) + toUtf16(out, encoding_ == Encoding::utf16Swapped);
}

void Profile::settle(const std::string &content) {
  if (!exact_ || isUtf16(encoding_) || encodingOf(content) != encoding_) *this = Profile(content);
}

} // namespace platform
