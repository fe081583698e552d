#include "platform/desktop/controls/listlines.h"

#include "platform/kernel/codepage.h"

#include <algorithm>
#include <cstring>

namespace platform {

char *ListLines::room(size_t size) {
  if (size > left_) {
    const size_t length = std::max(size, kBlock);
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(length));
    free_ = blocks_.back().get();
    left_ = length;
  }
  left_ -= size;
  return std::exchange(free_, free_ + size);
}

void ListLines::insert(size_t index, std::string_view text) {
  char *const to = room(text.size() + 1);
  std::memcpy(to, text.data(), text.size());
  to[text.size()] = '\0';
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(index), to);
  live_ += text.size() + 1;
}

void ListLines::erase(size_t index) {
  const size_t size = std::strlen(lines_[index]) + 1;
  lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(index));
  live_ -= size;
  dead_ += size;
  if (dead_ > kBlock && dead_ > live_) compact();
}

void ListLines::clear() {
  lines_ = {};
  blocks_.clear();
  free_ = nullptr;
  left_ = live_ = dead_ = 0;
}

void ListLines::compact() {
  ListLines tight;
  for (const char *line : lines_) tight.insert(tight.count(), line);
  *this = std::move(tight);
}

// ---- Order

namespace {

// The sorting rank of a character in folded case.
int rankOf(char16_t character) {
  constexpr int kDigits = 0x100, kLetters = 0x200;
  if (character >= '0' && character <= '9') return kDigits + character;
  if (character >= 'a' && character <= 'z') return kLetters + character;
  return character < 0x80 ? character : kLetters + character;
}

bool isSlight(char16_t character) { return character == '-' || character == '\''; }

// A text without the characters that count only between otherwise equal texts.
std::u16string withoutSlight(std::u16string text) {
  std::erase_if(text, isSlight);
  return text;
}

int compareRanks(const std::u16string &one, const std::u16string &other) {
  const size_t common = std::min(one.size(), other.size());
  for (size_t i = 0; i < common; ++i)
    if (const int difference = rankOf(one[i]) - rankOf(other[i])) return difference;
  return one.size() < other.size() ? -1 : one.size() > other.size();
}

char small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

// Walks through a text in small letters, byte by byte. Double-byte codes keep their case.
template <typename Byte> bool walkFolded(const char *text, Byte byte) {
  for (; *text; ++text) {
    const bool isDouble = isLeadByte(static_cast<unsigned char>(*text)) && text[1];
    if (!byte(isDouble ? *text : small(*text))) return false;
    if (isDouble && !byte(*++text)) return false;
  }
  return true;
}

} // namespace

int compareLines(const std::string &one, const std::string &other) {
  const std::u16string left = foldedName(one), right = foldedName(other);
  const int difference = compareRanks(withoutSlight(left), withoutSlight(right));
  return difference ? difference : compareRanks(left, right);
}

std::string foldedLine(std::string_view text) {
  std::string folded;
  walkFolded(std::string(text).c_str(), [&](char c) { return folded += c, true; });
  return folded;
}

bool isLine(const char *text, const std::string &folded, bool whole) {
  size_t at = 0;
  const bool walked = walkFolded(text, [&](char c) { return at < folded.size() && folded[at] == c && ++at; });
  return at == folded.size() && (!whole || walked);
}

} // namespace platform
