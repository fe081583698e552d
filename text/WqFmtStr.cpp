// Name templates: "#" keywords in a text are replaced by fields of a record. The state of a scan is on the stack, so
// several threads may expand templates at once.

#include "text/text.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

constexpr size_t kWorkArea = 256; // bytes of a format text, and of a file time

struct Scan {
  char *out; // null for a run without output
  const char *at;
  bool failed; // the template holds an unknown keyword
};

void putBytes(Scan &scan, const char *text, size_t length) {
  if (!scan.out) return;
  std::memcpy(scan.out, text, length);
  scan.out += length;
}

// Writes a field, up to its NUL or the end of its array.
template <size_t size> void putField(Scan &scan, const char (&field)[size]) {
  putBytes(scan, field, static_cast<size_t>(std::find(field, field + size, '\0') - field));
}

// Takes the width part from the template, even without output. Characters beyond the work area are skipped.
void putNumber(Scan &scan, const WqFmtStr *record) {
  char format[kWorkArea] = "%";
  size_t length = 1;
  bool pointSeen = false;
  for (; (*scan.at >= '0' && *scan.at <= '9') || (*scan.at == '.' && !pointSeen); ++scan.at) {
    pointSeen |= *scan.at == '.';
    if (length < kWorkArea - 2) format[length++] = *scan.at;
  }
  if (!scan.out) return;
  if (length == 1) {
    scan.out += WqStr_Int(scan.out, record->number);
    return;
  }
  format[length++] = 'd';
  format[length] = '\0';
  wsprintfA(scan.out, format, record->number);
  scan.out += WqStr_Len(scan.out); // the count of wsprintfA is one too high for a cut number
}

// Writes the file time. A slash or a colon can't stand in a file name.
void putFileTime(Scan &scan, const WqFmtStr *record) {
  if (!scan.out) return;
  char *start = scan.out;
  putField(scan, record->filetime);
  std::replace_if(
      start, scan.out, [](char c) { return c == '/' || c == ':'; }, '_');
}

struct Keyword {
  const char *text;
  void (*put)(Scan &scan, const WqFmtStr *record);
};

template <auto field> void putMember(Scan &scan, const WqFmtStr *record) {
  if (scan.out) putField(scan, record->*field);
}

// No keyword begins with another one, so their order has no meaning.
constexpr Keyword kKeywords[] = {
    {"filetime", putFileTime},
    {"name", putMember<&WqFmtStr::name>},
    {"no", putNumber},
    {"sequence", putMember<&WqFmtStr::sequence>},
    {"serial", putMember<&WqFmtStr::serial>},
    {"specification", putMember<&WqFmtStr::specification>},
    {"title", putMember<&WqFmtStr::title>},
};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Whether text begins with a keyword. Case is ignored, except in the first letter.
bool beginsWith(const char *text, const char *keyword) {
  if (*text != *keyword) return false;
  for (; *keyword; ++text, ++keyword)
    if (lower(*text) != *keyword) return false;
  return true;
}

const Keyword *findKeyword(const char *text) {
  for (const Keyword &keyword : kKeywords)
    if (beginsWith(text, keyword.text)) return &keyword;
  return nullptr;
}

// Expands the keyword behind a "#".
void expandKeyword(Scan &scan, const WqFmtStr *record) {
  if (*scan.at == '\0') return;
  if (*scan.at == '#') {
    putBytes(scan, scan.at++, 1);
    return;
  }
  const Keyword *keyword = findKeyword(scan.at);
  if (!keyword) {
    scan.failed = true;
    return;
  }
  scan.at += std::strlen(keyword->text);
  keyword->put(scan, record);
}

Scan expand(char *dst, const char *format, const WqFmtStr *record) {
  Scan scan{dst, format, false};
  while (*scan.at != '\0' && !scan.failed) {
    const size_t plain = std::strcspn(scan.at, "#");
    putBytes(scan, scan.at, plain);
    scan.at += plain;
    if (*scan.at == '#') {
      ++scan.at;
      expandKeyword(scan, record);
    }
  }
  if (scan.out) *scan.out = '\0';
  return scan;
}

} // namespace

int32_t WqFmtStr_Trans(char *dst, const char *format, uint32_t, const WqFmtStr *record) {
  const Scan scan = expand(dst, format, record);
  return dst ? static_cast<int32_t>(scan.out - dst) : 0;
}

int WqFmtStr_Check(const char *format, uint32_t) { return !expand(nullptr, format, nullptr).failed; }
