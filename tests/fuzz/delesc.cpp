// Quoted forms: what is written stays within the promised room, and reads back wherever the forms promise that.

#include "fuzz.h"

#include <algorithm>

namespace {

constexpr size_t kLongest = 2048;

bool within(char c, int low, int high) {
  const int byte = static_cast<unsigned char>(c);
  return byte >= low && byte <= high;
}

bool isDoubleByte(const char *at) {
  return (within(at[0], 0x81, 0x9F) || within(at[0], 0xE0, 0xFC)) &&
         (within(at[1], 0x40, 0x7E) || within(at[1], 0x80, 0xFC));
}

// Whether WqScan_String finds no escape where text has none. One more backslash behind a final double-byte character
// that ends in its byte escapes the closing quote.
bool readsBack(const std::string &text, bool quoted) {
  for (const char *at = text.c_str(); *at != '\0'; ++at) {
    if (isDoubleByte(at)) {
      ++at;
      if (quoted && at[0] == '\\' && at[1] == '\0') return false;
    } else if (at[0] == '\\' && at[1] != '\0' && std::strchr("nr\"\\", at[1])) {
      return false;
    }
  }
  return true;
}

std::string scanned(const std::string &form) {
  const Text text(form);
  return written(form.size() + 1, [&](char *dst) { WqScan_String(text.begin(), dst); });
}

std::string removed(const std::string &source, const std::string &chars, const std::string &expected) {
  const Text text(source);
  const Text pair(chars);
  const Room room(expected.size() + 1);
  REQUIRE(WqStr_Remove(text.begin(), room.get(), pair.begin()) == static_cast<int32_t>(expected.size()));
  return room.get();
}

std::string doubled(const std::string &text, char c) {
  std::string out;
  for (const char each : text) out.append(each == c ? 2 : 1, each);
  return out;
}

void readsForeignText(const std::string &form) {
  const Text text(form);
  const Room room(form.size() + 1);
  WqStr_DelEsc(room.get(), text.begin());
  if (*WqScan_Space(text.begin()) != '"') {
    REQUIRE(room.untouched());
    return;
  }
  REQUIRE(std::strlen(room.get()) < form.size());
  if (form.find('\\') == std::string::npos) REQUIRE(scanned(form) == room.get()); // both know doubled quotes
}

void writesQuotedForm(const std::string &source) {
  const Text text(source);
  const auto length = static_cast<int32_t>(source.size());
  const std::string form =
      written(2 * source.size() + 4, [&](char *dst) { REQUIRE(WqStr_AddEsc(dst, text.begin()) == length); });
  const bool endsInBackslash = source.ends_with('\\');
  const Text formText(form);
  const std::string back = written(form.size() + 1, [&](char *dst) { WqStr_DelEsc(dst, formText.begin()); });
  REQUIRE(back == source + (endsInBackslash ? "\\" : ""));
  if (readsBack(source, true)) REQUIRE(scanned(form) == source);
  if (!source.empty() && source.front() != '"' && source.back() != '"') removed(form, "\"\"", back);

  const std::string settings =
      written(2 * source.size() + 4, [&](char *dst) { REQUIRE(WqStr_CfgStr(dst, text.begin(), 0) == length); });
  const bool quoted = source.find_first_of("\",") != std::string::npos;
  REQUIRE(settings == (quoted ? form : source));
  if (!quoted && readsBack(source, false) && WqScan_Space(text.begin()) == text.begin())
    REQUIRE(scanned(settings) == source);
}

void removesBytes(const std::string &source) {
  REQUIRE(removed(source, "", source) == source);
  if (source.empty()) return;
  const char c = source.front();
  std::string without = source;
  std::erase(without, c);
  REQUIRE(removed(source, {c}, without) == without);
  if (source.back() != c) REQUIRE(removed(source, {c, source.back()}, without) == without);
  REQUIRE(removed(doubled(source, c), {c, c}, source) == source);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const std::string text(textOf(data, size, kLongest));
  readsForeignText(text);
  writesQuotedForm(text);
  removesBytes(text);
  return 0;
}
