// The event log: a ring of records in static storage, and its dump. The fixed texts are code page 932.

#include "files/files.h"

#include "files/files_private.h"
#include "text/text.h"

#include <array>
#include <cstdarg>
#include <cstdio>

namespace {

constexpr uint32_t kRecords = 32768;
constexpr size_t kLine = 256;        // bytes of a line of the dump, with its NUL
constexpr size_t kBytesPerLine = 16; // in a hexadecimal dump
constexpr size_t kLongestTime = 22;  // bytes of an entry's time text
constexpr char kNoMemoryTag[] = "\x81\x79\x83\x81\x83\x82\x83\x8A\x81\x5B\x83\x47\x83\x89\x81\x5B\x81\x7A";
constexpr char kBytesTag[] = "\x81\x79\x96\xA2\x92\xE8\x8B\x60\x8B\x4C\x98\x5E\x81\x7A";
constexpr char kCannotCreate[] = "\x83\x8D\x83\x4F\x83\x74\x83\x40\x83\x43\x83\x8B\x82\xAA\x8D\xEC\x90\xAC\x82\xC5"
                                 "\x82\xAB\x82\xDC\x82\xB9\x82\xF1\x81\x42";
constexpr char kCannotCreateCaption[] = "I/O \x83\x8D\x83\x4F\x83\x47\x83\x89\x81\x5B";

struct WqLogRec {
  SYSTEMTIME time;
  uint32_t kind;
  uint32_t size;
  void *data; // owned by the slot, and freed when the slot is used again
};

static_assert(sizeof(void *) != 4 || sizeof(WqLogRec) == 28);

struct Ring {
  uint32_t count;
  uint32_t writeIx;
  uint32_t readIx; // the oldest record
  WqLogRec records[kRecords];
};

Ring ring;

uint32_t behind(uint32_t index) { return (index + 1) % kRecords; }

// The size of a record's data; 0 for null data.
uint32_t sizeOf(uint32_t kind, const void *data, uint32_t size) {
  if (!data) return 0;
  return kind & WQ_LOG_TEXT ? static_cast<uint32_t>(WqStr_Len(static_cast<const char *>(data))) + 1 : size;
}

void addFormatted(uint32_t kind, const char *format, va_list arguments) {
  char text[kLine + 1]; // one byte more than is kept, so that half a character at the end shows
  if (std::vsnprintf(text, sizeof text, format, arguments) < 0) text[0] = '\0';
  text[wqFittingLength(text, kLine - 1)] = '\0';
  WqLog_Add(kind, text, 0);
}

// Writes a number with at least this many digits. Result: the place behind the number.
char *putNumber(char *out, unsigned number, int digits) {
  char reversed[12];
  int count = 0;
  for (; number > 0 || count < digits; number /= 10) reversed[count++] = static_cast<char>('0' + number % 10);
  while (count > 0) *out++ = reversed[--count];
  return out;
}

// The file of a dump, written in large pieces. Only a failure at the heading counts.
class Dump {
 public:
  explicit Dump(HANDLE file) : file_(file) {}
  ~Dump() {
    flush();
    CloseHandle(file_);
  }
  Dump(const Dump &) = delete;
  Dump &operator=(const Dump &) = delete;

  bool heading() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    char line[kLine];
    const int length = std::snprintf(line, sizeof line, "Log File\t%04d/%02d/%02d %02d:%02d:%02d\r\n", now.wYear,
                                     now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond);
    put(line, static_cast<size_t>(length));
    return flush();
  }

  void entry(const WqLogRec &record) {
    switch (record.kind) {
    case WQ_LOG_COMMENT: timed(record.time, "  ", text(record), "\t"); break;
    case WQ_LOG_RAW: put(text(record), wqFittingLength(text(record), kLine - 1)); break;
    case WQ_LOG_NO_MEMORY: timed(record.time, "", kNoMemoryTag, ""); break;
    default:
      timed(record.time, "", kBytesTag, "");
      bytes(static_cast<const unsigned char *>(record.data), record.data ? record.size : 0);
    }
  }

 private:
  static const char *text(const WqLogRec &record) { return record.data ? static_cast<const char *>(record.data) : ""; }

  // Buffers text shorter than a line.
  void put(const char *text, size_t length) {
    if (used_ + length > sizeof collected_) flush();
    WqMem_Copy(collected_ + used_, text, length);
    used_ += length;
  }

  bool flush() {
    DWORD written;
    const bool done = used_ == 0 || WriteFile(file_, collected_, static_cast<DWORD>(used_), &written, nullptr);
    used_ = 0;
    return done;
  }

  // Writes a text between its marks, and the time behind. The text is cut so that everything fits a line.
  void timed(const SYSTEMTIME &time, const char *before, const char *text, const char *behind) {
    const auto length = [](const char *mark) { return static_cast<size_t>(WqStr_Len(mark)); };
    put(before, length(before));
    put(text, wqFittingLength(text, kLine - 1 - kLongestTime - length(before) - length(behind)));
    put(behind, length(behind));
    char line[kLongestTime + 2] = "  ";
    char *out = putNumber(line + 2, time.wMonth, 1);
    const struct {
      char separator;
      WORD number;
      int digits;
    } rows[] = {{'/', time.wDay, 1},
                {' ', time.wHour, 2},
                {':', time.wMinute, 2},
                {':', time.wSecond, 2},
                {'.', time.wMilliseconds, 3}};
    for (const auto &row : rows) {
      *out++ = row.separator;
      out = putNumber(out, row.number, row.digits);
    }
    *out++ = '\r';
    *out++ = '\n';
    put(line, static_cast<size_t>(out - line));
  }

  void bytes(const unsigned char *data, size_t size) {
    for (size_t start = 0; start < size; start += kBytesPerLine) {
      char line[3 * kBytesPerLine + 2];
      char *out = line;
      for (size_t ix = 0; ix < kBytesPerLine && start + ix < size; ++ix) {
        out += WqStr_Hex02(out, data[start + ix]);
        if (ix + 1 < kBytesPerLine) *out++ = ' '; // none behind the last byte of a full line
      }
      *out++ = '\r';
      *out++ = '\n';
      put(line, static_cast<size_t>(out - line));
    }
  }

  HANDLE file_;
  size_t used_ = 0;
  char collected_[16384];
};

} // namespace

void WqLog_Init() { WqMem_Zero(&ring, sizeof ring); }

void WqLog_Term() {
  for (WqLogRec &record : ring.records) {
    WqMem_Free(record.data);
    record.data = nullptr;
  }
}

uint32_t WqLog_GetCount() { return ring.count; }

void WqLog_Flush() {
  ring.count = 0;
  ring.writeIx = 0;
  ring.readIx = 0;
}

void WqLog_Add(uint32_t kind, const void *data, uint32_t size) {
  WqLogRec &record = ring.records[ring.writeIx];
  ring.writeIx = behind(ring.writeIx);
  if (++ring.count > kRecords) {
    ring.count = kRecords;
    ring.readIx = behind(ring.readIx);
  }
  GetLocalTime(&record.time);
  record.kind = kind;
  record.size = sizeOf(kind, data, size);
  WqMem_Free(record.data);
  record.data = WqMem_Alloc(record.size);
  if (record.data)
    WqMem_Copy(record.data, data, record.size);
  else if (record.size > 0)
    record.kind = WQ_LOG_NO_MEMORY;
}

void WqLog_Comment(const char *text) { WqLog_Add(WQ_LOG_COMMENT, text, 0); }

void WqLog_Print(const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  addFormatted(WQ_LOG_COMMENT, format, arguments);
  va_end(arguments);
}

void WqLog_Text(const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  addFormatted(WQ_LOG_RAW, format, arguments);
  va_end(arguments);
}

void WqLog_Out(const char *fileName) {
  const HANDLE file =
      CreateFileA(fileName, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    MessageBoxA(nullptr, kCannotCreate, kCannotCreateCaption, MB_OK);
    return;
  }
  Dump dump(file);
  if (!dump.heading()) return;
  uint32_t index = ring.readIx;
  for (uint32_t left = ring.count; left > 0; --left, index = behind(index)) dump.entry(ring.records[index]);
}
