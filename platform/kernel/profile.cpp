#include "platform/kernel/profile.h"

#include "platform/kernel/codepage.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The end of the first line of a text, behind its line end.
size_t lineLength(std::string_view text) {
  const size_t end = text.find_first_of("\r\n");
  if (end == std::string_view::npos) return text.size();
  return text.substr(end).starts_with(kLineEnd) ? end + 2 : end + 1;
}

bool isBlank(std::string_view line) { return trimmed(line).empty(); }

// The last closing bracket that is no second half of a character.
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
  marked_ = content.starts_with(kByteOrderMark);
  if (marked_) content.remove_prefix(kByteOrderMark.size());
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
  if (text.starts_with('[') && close != std::string_view::npos) {
    const std::string name(trimmed(text.substr(1, close - 1)));
    sections_.push_back({name, foldedName(name), {}, {}});
  }
  Line line{std::string(raw), {}, false};
  const size_t equals = text.find('=');
  if (!text.starts_with('[') && !text.starts_with(';') && equals != std::string_view::npos) {
    line.key = trimmed(text.substr(0, equals));
    line.isKey = true;
  }
  sections_.back().lines.push_back(std::move(line));
}

const Profile::Section *Profile::find(std::string_view name) const {
  const std::u16string folded = foldedName(trimmed(name));
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
  const auto line = found->firstLines.find(foldedName(trimmed(key)));
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
    std::vector<Line> &before = sections_.back().lines;
    if (!before.empty() && !before.back().raw.ends_with('\n')) before.back().raw += kLineEnd;
    addLine('[' + std::string(trimmed(section)) + ']' + std::string(kLineEnd));
    found = &sections_.back();
  }
  value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
  const auto line = found->firstLines.find(foldedName(trimmed(key)));
  if (line != found->firstLines.end()) {
    Line &old = found->lines[line->second];
    old.raw = old.key + '=' + std::string(value) + std::string(kLineEnd);
    return;
  }
  const std::string name(trimmed(key));
  size_t at = found->lines.size(); // behind the last line of the section that isn't blank
  while (at > 1 && isBlank(found->lines[at - 1].raw)) --at;
  if (at > 0 && !found->lines[at - 1].raw.ends_with('\n')) found->lines[at - 1].raw += kLineEnd;
  const bool last = at == found->lines.size();
  found->lines.insert(found->lines.begin() + static_cast<ptrdiff_t>(at),
                      Line{name + '=' + std::string(value) + std::string(kLineEnd), name, true});
  if (last)
    found->firstLines.emplace(foldedName(name), at);
  else
    found->index();
}

void Profile::removeKey(std::string_view section, std::string_view key) {
  Section *found = find(section);
  if (!found) return;
  const auto line = found->firstLines.find(foldedName(trimmed(key)));
  if (line == found->firstLines.end()) return;
  found->lines.erase(found->lines.begin() + static_cast<ptrdiff_t>(line->second));
  found->index();
}

void Profile::removeSection(std::string_view section) {
  const Section *found = find(section);
  if (found && found != sections_.data()) sections_.erase(sections_.begin() + (found - sections_.data()));
}

std::string Profile::content() const {
  std::string out(marked_ ? kByteOrderMark : std::string_view());
  for (const Section &section : sections_)
    for (const Line &line : section.lines) out += line.raw;
  return out;
}

} // namespace platform
