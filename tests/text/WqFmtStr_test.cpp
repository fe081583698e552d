#include "wq.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

// In a block of its own, so that the sanitizer sees a read behind the last field.
std::unique_ptr<WqFmtStr> makeRecord(int32_t number) {
  auto record = std::make_unique<WqFmtStr>();
  std::memset(record.get(), '!', sizeof *record);
  record->number = number;
  WqStr_Copy(record->name, "N#no%d");
  WqStr_Copy(record->serial, "S:/");
  WqStr_Copy(record->filetime, "2006/01/31 12:34:56");
  WqStr_Copy(record->specification, "P\x83\x5C");
  WqStr_Copy(record->sequence, "");
  WqStr_Copy(record->title, "T");
  return record;
}

// Expands a template between guard bytes. What is wrong with the call itself fails the test.
std::string expand(const std::string &format, const WqFmtStr &record) {
  std::string room(4096, '\xA5');
  const int32_t length = WqFmtStr_Trans(room.data() + 8, format.c_str(), UINT32_MAX, &record);
  const std::string text = room.c_str() + 8;
  EXPECT_EQ(static_cast<size_t>(length), text.size());
  EXPECT_EQ(room, std::string(8, '\xA5') + text + '\0' + std::string(4096 - 9 - text.size(), '\xA5'));
  EXPECT_EQ(WqFmtStr_Trans(nullptr, format.c_str(), 0, nullptr), 0);
  EXPECT_EQ(WqFmtStr_Check(format.c_str(), 0), WqFmtStr_Check(format.c_str(), UINT32_MAX));
  return text;
}

} // namespace

TEST(WqFmtStr, ReplacesKeywordsUpToTheFirstUnknownOne) {
  const auto record = makeRecord(7);
  const auto expectTexts = [&record](bool valid, const std::vector<std::pair<const char *, const char *>> &rows) {
    for (const auto &[format, text] : rows) {
      EXPECT_EQ(expand(format, *record), text) << format;
      EXPECT_EQ(WqFmtStr_Check(format, 0), valid) << format;
    }
  };
  expectTexts(true, {{"", ""}, {"a##b", "a#b"}, {"###no", "#7"}, {"abc#", "abc"}, {"#", ""}, {"a/b:%d", "a/b:%d"}});
  expectTexts(true, {{"#name#serial#sequence#title", "N#no%dS:/T"}, {"[#filetime]", "[2006_01_31 12_34_56]"}});
  expectTexts(true, {{"#specification.wav", "P\x83\x5C.wav"}, {"\x83\x5C#title\x81#no%s", "\x83\x5CT\x81\x37%s"}});
  expectTexts(true, {{"#names", "N#no%ds"}, {"#noname #nothing", "7name 7thing"}, {"#serialno", "S:/no"}});
  expectTexts(true, {{"#nAmE#sERIAL#nO#tItlE", "N#no%dS:/7T"}, {"#fILETIME", "2006_01_31 12_34_56"}});
  expectTexts(false,
              {{"x#qy", "x"}, {"#no#Name#no", "7"}, {"a#FILETIME", "a"}, {"a#nam", "a"}, {"#n", ""}, {"#a", ""}});
  expectTexts(false,
              {{"#z", ""}, {"## # no", "# "}, {"#seq#no", ""}, {"b#\x83\x5C", "b"}, {"#n\xC1me", ""}, {"#nbme", ""}});
  expectTexts(false, {{"#specifications#specificatio", "P\x83\x5Cs"}, {"#s", ""}, {"#ser al", ""}, {"#n@me", ""}});
  EXPECT_STREQ(record->filetime, "2006/01/31 12:34:56");
}

TEST(WqFmtStr, NumbersTakeAWidthPart) {
  const auto expectTexts = [](int32_t number, const std::vector<std::pair<std::string, std::string>> &rows) {
    for (const auto &[format, text] : rows) {
      EXPECT_TRUE(expand(format, *makeRecord(number)) == text) << format;
      EXPECT_EQ(WqFmtStr_Check(format.c_str(), 0) + WqFmtStr_Check((format + "#x").c_str(), 0), 1) << format;
    }
  };
  expectTexts(7, {{"#no03", "007"}, {"#no3!", "  7!"}, {"#no.3", "007"}, {"#no5.3", "  007"}, {"#no.wav", "7wav"}});
  expectTexts(7, {{"#no..wav", "7.wav"}, {"#no4.2.5", "  07.5"}, {"#no-3", "7-3"}, {"#no2#no3", " 7  7"}});
  expectTexts(-7, {{"#no", "-7"}, {"#no04", "-007"}, {"#no4", "  -7"}});
  expectTexts(INT32_MIN, {{"#no#no012", "-2147483648-02147483648"}});
  // a number has at most 1023 characters, and of a width part the first 253 count
  const std::string zeros(300, '0');
  expectTexts(7, {{"#no1023!", std::string(1022, ' ') + "7!"}, {"#no02006!", std::string(1022, '0') + "7!"}});
  expectTexts(7, {{"#no" + zeros.substr(0, 252) + "5-", "00007-"}, {"#no" + zeros.substr(0, 253) + "5-", "7-"}});
  expectTexts(7,
              {{"#no" + zeros + "5.3-", "7-"}, {"#no" + std::string(300, '9') + "-", std::string(1022, ' ') + "7-"}});
}

// A field that fills its array runs neither into the next one nor behind the record.
TEST(WqFmtStr, FieldsEndWithTheirArrays) {
  const auto record = makeRecord(1);
  const std::vector<std::pair<std::string, char *>> fields = {
      {"#name", record->name},         {"#serial", record->serial},
      {"#filetime", record->filetime}, {"#specification", record->specification},
      {"#sequence", record->sequence}, {"#title", record->title},
  };
  for (const auto &[format, field] : fields) {
    std::memset(field, '/', 256);
    EXPECT_EQ(expand(format + "+", *record), std::string(256, field == record->filetime ? '_' : '/') + "+");
    field[255] = '\0';
    EXPECT_EQ(expand(format, *record).size(), 255u);
    std::memset(field, '!', 256);
  }
}

TEST(WqFmtStr, ThreadsExpandAtOnce) {
  std::atomic<int> wrong = 0;
  const auto work = [&wrong](int32_t number, const std::string &expected) {
    const auto record = makeRecord(number);
    char text[64];
    for (int round = 0; round < 20000; ++round) {
      WqFmtStr_Trans(text, "#no##no#filetime#serial", 0, record.get());
      if (text != expected || WqFmtStr_Check("#no3#x", 0) != 0) ++wrong;
    }
  };
  std::thread other(work, 12345, "12345#no2006_01_31 12_34_56S:/");
  work(7, "7#no2006_01_31 12_34_56S:/");
  other.join();
  EXPECT_EQ(wrong, 0);
}
