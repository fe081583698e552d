// The event log: the ring of its records, and the dump byte for byte.

#include "support/allocation.h"
#include "support/files.h"
#include "support/library.h"

#include <cstring>
#include <filesystem>
#include <functional>
#include <thread>

namespace {

const std::string kNoMemory = "\x81\x79\x83\x81\x83\x82\x83\x8A\x81\x5B\x83\x47\x83\x89\x81\x5B\x81\x7A@";
const std::string kBytes = "\x81\x79\x96\xA2\x92\xE8\x8B\x60\x8B\x4C\x98\x5E\x81\x7A@";
const std::string kWide = "\x83\x5C"; // one character, whose second byte is a backslash

std::string times(size_t n) { return std::string(n, 'c'); }

// The time that a dump shows in its heading, or at a record.
std::string timeText(bool heading) {
  SYSTEMTIME t;
  char text[64];
  GetLocalTime(&t);
  if (heading)
    wsprintfA(text, "Log File\t%04d/%02d/%02d %02d:%02d:%02d\r\n", t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute,
              t.wSecond);
  else
    wsprintfA(text, "  %d/%d %02d:%02d:%02d.%03d\r\n", t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond,
              t.wMilliseconds);
  return text;
}

// Runs something within one tick, and tells the time.
std::string timeOf(const std::function<void()> &run, bool heading) {
  for (;;) {
    const std::string before = timeText(heading);
    run();
    if (timeText(heading) == before) return before;
  }
}

class WqLogTest : public LibraryTest {
 protected:
  // The dump behind its heading. It is written over something longer.
  std::string dump() const {
    const std::string name = folder_.file("log.txt");
    writeFile(name, times(2000));
    const std::string heading = timeOf([&] { WqLog_Out(name.c_str()); }, true);
    const std::string text = readFile(name);
    return text.starts_with(heading) ? text.substr(heading.size()) : "another heading: " + text;
  }

  // The dump of one record, with @ for the time text.
  std::string dumpOf(const std::function<void()> &add) const {
    const auto addAlone = [&] { WqLog_Flush(), add(); };
    const std::string time = timeOf(addAlone, false);
    std::string all = dump();
    EXPECT_EQ(dump(), all) << "the dump changes nothing";
    const size_t at = all.find(time);
    return at == std::string::npos ? all : all.replace(at, time.size(), "@");
  }

  const TempFolder folder_;
};

} // namespace

TEST_F(WqLogTest, ShowsARecordByItsKind) {
  const std::string bytes("\x00\x01\x02\xAB\xCD\xFF 0123456789:;<=>?@ABCDEFGH", 32);
  const std::string row1 = "00 01 02 AB CD FF 20 30 31 32 33 34 35 36 37 38\r\n";
  const std::string row2 = "39 3A 3B 3C 3D 3E 3F 40 41 42 43 44 45 46 47 48\r\n";
  // clang-format off
  const struct { uint32_t kind; std::string data; uint32_t size; std::string shown; } rows[] = {
      {WQ_LOG_COMMENT, "start", 99, "  start\t@"}, {WQ_LOG_COMMENT, "", 0, "  \t@"},
      {WQ_LOG_COMMENT, "100 %s\r\n" + kWide, 2, "  100 %s\r\n" + kWide + "\t@"},
      {WQ_LOG_RAW, "a\r\n" + kWide, 0, "a\r\n" + kWide}, {WQ_LOG_NO_MEMORY, "abc", 3, kNoMemory},
      {0x102, "ab", 1, kBytes + "61 62 00 \r\n"}, // a text, and shown as bytes
      {0x1001, "ab", 2, kBytes + "61 62 \r\n"}, {1, bytes, 15, kBytes + row1.substr(0, 45) + "\r\n"},
      {0xFF, bytes, 16, kBytes + row1}, {0x200, bytes, 17, kBytes + row1 + "39 \r\n"},
      {UINT32_MAX & ~WQ_LOG_TEXT, bytes, 32, kBytes + row1 + row2},
      // what is too long for a line
      {WQ_LOG_COMMENT, times(230), 0, "  " + times(230) + "\t@"},
      {WQ_LOG_COMMENT, times(229) + kWide, 0, "  " + times(229) + "\t@"},
      {WQ_LOG_COMMENT, times(500), 0, "  " + times(230) + "\t@"},
      {WQ_LOG_RAW, times(255), 0, times(255)}, {WQ_LOG_RAW, times(500), 0, times(255)}};
  // clang-format on
  for (auto [kind, data, size, shown] : rows) {
    const auto add = [kind = kind, size = size, text = &data] { WqLog_Add(kind, text->c_str(), size); };
    EXPECT_EQ(dumpOf(add), shown) << kind;
  }
  const auto addAndChange = [] {
    char text[] = "abc";
    WqLog_Comment(text);
    text[1] = 'x'; // the log has a copy
  };
  const auto lose = [] {
    AllocationFailure failure(1);
    WqLog_Comment("lost");
  };
  EXPECT_EQ(dumpOf(addAndChange), "  abc\t@");
  EXPECT_EQ(dumpOf([] { WqLog_Add(1, nullptr, 0); }), kBytes);
  EXPECT_EQ(dumpOf([] { WqLog_Print("%d, %s!", -5, "five"); }), "  -5, five!\t@");
  EXPECT_EQ(dumpOf([] { WqLog_Text("%d, %s!\r\n", -5, "five"); }), "-5, five!\r\n");
  EXPECT_EQ(dumpOf([] { WqLog_Print("%s", times(500).c_str()); }), "  " + times(230) + "\t@");
  EXPECT_EQ(dumpOf([] { WqLog_Text("%s%s", times(254).c_str(), kWide.c_str()); }), times(254)) << "no half characters";
  EXPECT_EQ(dumpOf([] { std::thread([] { WqLog_Comment("thread"); }).join(); }), "  thread\t@");
  EXPECT_EQ(dumpOf(lose), kNoMemory);
  EXPECT_EQ(dumpOf([] { WqLog_Comment("kept"); }), "  kept\t@") << "in the slot of the one that was lost";
}

TEST_F(WqLogTest, RingKeepsTheLast32768Records) {
  const uint32_t kRecords = 32768;
  const uint32_t others = wqMain.allocCount; // blocks of the library beside the log's
  EXPECT_EQ(dump(), "");
  uint32_t added = 0;
  for (const uint32_t count : {1u, kRecords, kRecords + 1, 2 * kRecords + 7}) {
    SCOPED_TRACE(count);
    for (; added < count; ++added) WqLog_Text("%u\r\n", added);
    const uint32_t kept = std::min(count, kRecords);
    EXPECT_EQ(WqLog_GetCount(), kept);
    EXPECT_EQ(wqMain.allocCount - others, kept) << "one block for a record, and none for those that went";
    std::string expected;
    for (uint32_t n = count - kept; n < count; ++n) expected += std::to_string(n) + "\r\n";
    EXPECT_TRUE(dump() == expected);
  }
  WqLog_Flush();
  EXPECT_EQ(WqLog_GetCount(), 0u);
  EXPECT_EQ(dump(), "");
  EXPECT_EQ(wqMain.allocCount - others, kRecords) << "memory stays with the slots";
  WqLog_Add(0, "", 0); // has no block, and the slot's old one goes
  EXPECT_EQ(wqMain.allocCount - others, kRecords - 1);
  WqLog_Term();
  EXPECT_EQ(wqMain.allocCount, others);
  WqLog_Init();
  WqLog_Text("again");
  EXPECT_EQ(dump(), "again");
}

TEST_F(WqLogTest, FileThatCannotBeMadeIsAMessage) {
  if (std::filesystem::path::preferred_separator == '\\') GTEST_SKIP() << "somebody would have to close the box";
  testing::internal::CaptureStderr();
  WqLog_Out(folder_.file("none/log.txt").c_str());
  EXPECT_NE(testing::internal::GetCapturedStderr().find("I/O "), std::string::npos);
}
