// Quoted forms: what is written stays within the promised room, and reads back wherever the forms promise that.

#include "fuzz.h"

namespace {

constexpr size_t kLongest = 2048;

// Whether WqScan_String finds no escape where text has none. One more backslash behind a final double-byte character
// that ends in its byte escapes the closing quote.
bool readsBack(const std::string &text, bool quoted) {
  for (size_t at = 0; at < text.size(); ++at) {
    if (isDoubleByte(text, at)) {
      ++at;
      if (quoted && at + 1 == text.size() && text[at] == '\\') return false;
    } else if (text[at] == '\\' && at + 1 < text.size() && std::strchr("nr\"\\", text[at + 1])) {
      return false;
    }
  }
  return true;
}

std::string scanned(const std::string &form) {
  const Text text(form);
  return written(form.size() + 1, [&](char *dst) { WqScan_String(text.begin(), dst); });
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

  const std::string settings =
      written(2 * source.size() + 4, [&](char *dst) { REQUIRE(WqStr_CfgStr(dst, text.begin(), 0) == length); });
  const bool quoted = source.find_first_of("\",") != std::string::npos;
  REQUIRE(settings == (quoted ? form : source));
  if (!quoted && readsBack(source, false) && WqScan_Space(text.begin()) == text.begin())
    REQUIRE(scanned(settings) == source);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const std::string text(textOf(data, size, kLongest));
  readsForeignText(text);
  writesQuotedForm(text);
  return 0;
}
