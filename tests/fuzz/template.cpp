// Templates with fields from the input. An input is four bytes of number, then texts with a NUL behind each: the
// template, and the fields in the record's order. A field of 256 bytes and more has no NUL in the record.

#include "fuzz.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr char (WqFmtStr::*kFields[])[256] = {&WqFmtStr::name,          &WqFmtStr::serial,   &WqFmtStr::filetime,
                                              &WqFmtStr::specification, &WqFmtStr::sequence, &WqFmtStr::title};

std::string_view nextText(std::string_view *rest) {
  const std::string_view text = rest->substr(0, rest->find('\0'));
  rest->remove_prefix(std::min(rest->size(), text.size() + 1));
  return text;
}

// No expansion is longer: a number has at most 1023 characters, a field 256.
size_t roomFor(std::string_view text) {
  size_t room = text.size() + 1;
  for (size_t i = 0; i + 1 < text.size(); ++i)
    if (text[i] == '#')
      room += text[i + 1] == 'n' && i + 2 < text.size() && std::tolower(text[i + 2]) == 'o' ? 1023 : 256;
  return room;
}

std::string expanded(std::string_view format, const WqFmtStr &record) {
  const Text text(format);
  return written(roomFor(format), [&](char *dst) {
    const int32_t length = WqFmtStr_Trans(dst, text.begin(), 0, &record);
    REQUIRE(length >= 0 && std::strlen(dst) == static_cast<size_t>(length));
  });
}

bool isValid(std::string_view format) {
  const Text text(format);
  REQUIRE(WqFmtStr_Trans(nullptr, text.begin(), 0, nullptr) == 0);
  const int valid = WqFmtStr_Check(text.begin(), 0);
  REQUIRE(valid == 0 || valid == 1);
  return valid == 1;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  std::string_view rest(reinterpret_cast<const char *>(data), size);
  // on the heap, so that reading behind the last field is seen
  const auto record = std::make_unique<WqFmtStr>();
  std::memset(record.get(), 'x', sizeof *record);
  std::memcpy(&record->number, rest.data(), std::min(rest.size(), sizeof record->number));
  rest.remove_prefix(std::min(rest.size(), sizeof record->number));
  const std::string format(nextText(&rest).substr(0, 2048));
  for (const auto each : kFields) {
    const std::string_view text = nextText(&rest);
    char(&field)[256] = (*record).*each;
    if (text.size() < sizeof field) field[text.size()] = '\0';
    text.copy(field, sizeof field);
  }

  const WqFmtStr before = *record;
  const std::string out = expanded(format, *record);
  if (format.find('#') == std::string::npos) REQUIRE(out == format);
  // Two more "#" are one in the output, also where the first of them completes a lone one. They come out unless the
  // expansion ends earlier, at an unknown keyword.
  const std::string more = expanded(format + "##", *record);
  const bool valid = isValid(format);
  REQUIRE(more == (valid ? out + '#' : out));
  REQUIRE(isValid(format + "##") == valid);

  REQUIRE(std::memcmp(&before, record.get(), sizeof before) == 0);
  return 0;
}
