// Settings: values both ways, the states of a save and what they leave on disk, and saves that are killed.

#include "support/files.h"
#include "support/library.h"
#include "support/program.h"

#include <chrono>
#include <cstring>
#include <functional>
#include <iostream>
#include <random>
#include <thread>

namespace {

class WqCfgTest : public LibraryTest {
 protected:
  void SetUp() override {
    LibraryTest::SetUp();
    char current[MAX_PATH];
    path_ = std::string(current, GetCurrentDirectoryA(sizeof current, current)) + '\\' + folder_.path();
    open("Set.ini");
  }

  void open(const std::string &name) {
    WqCfg_Init(&cfg_);
    WqCfg_SetDir(&cfg_, path_.c_str());
    WqCfg_SetFileName(&cfg_, name.c_str());
    WqCfg_SetPath(&cfg_);
    WqCfg_Sect(&cfg_, "s");
  }

  // What a read hands out into a room of a size.
  std::string get(const char *key, uint32_t size = 99, const char *defaultText = "D") {
    char text[100];
    std::memset(text, '~', sizeof text);
    const uint32_t length = WqCfg_Str(&cfg_, key, text, defaultText, size);
    EXPECT_EQ(text[size], '~');
    EXPECT_EQ(length, std::strlen(text));
    return text;
  }

  // The content of the settings file, or of the temporary one.
  std::string content(const char *name = "Set.ini") const {
    return fileExists(folder_.file(name)) ? readFile(folder_.file(name)) : "none";
  }

  const TempFolder folder_;
  std::string path_; // of the folder, from the drive on
  WqCfg cfg_;
};

} // namespace

TEST_F(WqCfgTest, ValuesGoBothWays) {
  const std::string hard = "C:\\a \"b\", \x83\x5C,\"";
  char quoted[100], back[100];
  WqStr_CfgStr(quoted, hard.c_str(), 0);
  const std::string rows[][2] = {// text written, text read
                                 {"two words; a=b 'x' ]", "two words; a=b 'x' ]"},
                                 {"", ""},
                                 {"\" outer \"", " outer "},
                                 {"\x83\x5C\x95\x5C \x81\x5C\\", "\x83\x5C\x95\x5C \x81\x5C\\"},
                                 {std::string("7,") + quoted, std::string("7,") + quoted}};
  for (const uint32_t mode : {WQ_CFG_WRITE, 2u, WQ_CFG_WRITE_TMP}) // any number is a way of writing
    for (const auto &[text, read] : rows) {
      WqCfg_Write(&cfg_, mode);
      EXPECT_NE(WqCfg_Str(&cfg_, "t", std::string(text).data(), "D", 1), 0u);
      for (const int32_t number : {INT32_MIN, 0, -5}) EXPECT_EQ(WqCfg_Int(&cfg_, "n", number), number);
      WqCfg_WriteEnd(&cfg_); // of no protected save
      EXPECT_EQ(content(), "[s]\r\nt=" + text + "\r\nn=-5\r\n");
      WqCfg_Write(&cfg_, WQ_CFG_READ);
      for (const uint32_t size : {99u, 1u, 4u})
        EXPECT_EQ(get("t", text[0] == 't' ? size : 99), text[0] == 't' ? read.substr(0, size - 1) : read);
      EXPECT_EQ(WqCfg_Int(&cfg_, "n", 9), -5);
    }
  WqScan_String(get("t").c_str() + 2, back);
  EXPECT_EQ(back, hard);
  EXPECT_EQ(get("none") + '|' + get("none", 99, nullptr) + '|', "D||");
  WqCfg_Sect(&cfg_, "other");
  EXPECT_EQ(WqCfg_Int(&cfg_, "n", -7), -7);
  WqCfg_Path(&cfg_, (path_ + "\\none\\Set.ini").c_str()); // nowhere to write
  WqCfg_Write(&cfg_, WQ_CFG_WRITE);
  EXPECT_EQ(WqCfg_Int(&cfg_, "n", 7), 7);
  EXPECT_EQ(WqCfg_Str(&cfg_, "t", back, "D", 1), 0u);
}

TEST_F(WqCfgTest, FieldsHoldWhatFits) {
  std::string wide = "x";
  while (wide.size() < 300) wide += "\x83\x5C";
  WqCfg_Path(&cfg_, wide.c_str() + 1); // never half a character
  WqCfg_SetDir(&cfg_, wide.c_str());
  WqCfg_SetFileName(&cfg_, wide.c_str());
  WqCfg_Sect(&cfg_, wide.c_str() + 1);
  EXPECT_EQ(cfg_.path + std::string("|") + cfg_.dir, wide.substr(1, 258) + '|' + wide.substr(0, 259));
  EXPECT_EQ(cfg_.fileName + std::string("|") + cfg_.sect, wide.substr(0, 259) + '|' + wide.substr(1, 254));
  for (const size_t length : {258u, 259u}) { // of the path; the temporary one has a byte more
    open(std::string(length - 1 - path_.size(), 'n'));
    EXPECT_EQ(std::strlen(cfg_.path), length);
    EXPECT_EQ(WqCfg_WriteTmp(&cfg_), length == 258);
    EXPECT_EQ(cfg_.mode, length == 258 ? WQ_CFG_WRITE_TMP : WQ_CFG_WRITE);
    WqCfg_WriteEnd(&cfg_);
  }
  WqCfg_Term(&cfg_);
  EXPECT_EQ(std::string(reinterpret_cast<char *>(&cfg_), sizeof cfg_), std::string(sizeof cfg_, '\0'));
}

// From every state, every event: the state behind it, and where the next value goes to or comes from.
TEST_F(WqCfgTest, StatesOfASave) {
  const std::string old = "[s]\r\nk=1\r\nold=2\r\n", stale = "[s]\r\nk=77\r\nstale=8\r\n", one = "[s]\r\nk=50\r\n",
                    next = "[s]\r\nk=9\r\n";
  const auto beginNowhere = [](WqCfg *cfg) {
    WqCfg_SetDir(cfg, (std::string(cfg->dir) + "\\none").c_str());
    EXPECT_EQ(WqCfg_WriteTmp(cfg), 0);
  };
  const struct {
    const char *what;
    std::function<void(WqCfg *)> happen;
    uint32_t modes[3]; // afterwards: from reading, direct writing, protected writing
  } events[] = {{"read", [](WqCfg *cfg) { WqCfg_Write(cfg, WQ_CFG_READ); }, {0, 0, 0}},
                {"write", [](WqCfg *cfg) { WqCfg_Write(cfg, WQ_CFG_WRITE); }, {1, 1, 1}},
                {"begin", [](WqCfg *cfg) { EXPECT_EQ(WqCfg_WriteTmp(cfg), 1); }, {3, 3, 3}},
                {"fail", beginNowhere, {1, 1, 1}},
                {"end", WqCfg_WriteEnd, {0, 1, 1}}};
  for (const auto &[what, happen, modes] : events)
    for (const uint32_t from : {0u, 1u, 2u}) {
      SCOPED_TRACE(testing::Message() << what << " from " << from);
      writeFile(folder_.file("Set.ini"), old);
      writeFile(folder_.file("~Set.ini"), stale);
      open("Set.ini");
      WqCfg_Write(&cfg_, from);
      if (from == 2) {
        EXPECT_EQ(WqCfg_WriteTmp(&cfg_), 1);
        EXPECT_EQ(content("~Set.ini"), "");
        WqCfg_Int(&cfg_, "k", 50);
      }
      happen(&cfg_);
      const uint32_t mode = modes[from];
      const bool saved = *what == 'e' && from == 2;
      EXPECT_EQ(cfg_.mode, mode);
      EXPECT_TRUE(*what == 'f' || cfg_.tmpPath == (mode == 3 ? path_ + "\\~Set.ini" : "")) << cfg_.tmpPath;
      const std::string settings = saved ? one : old;
      const std::string temporary = saved ? "none" : mode == 3 ? "" : from == 2 ? one : stale;
      EXPECT_EQ(content() + content("~Set.ini"), settings + temporary);
      EXPECT_EQ(WqCfg_Int(&cfg_, "k", 9), mode == 0 ? 1 : 9);
      const std::string direct = mode != 1 ? settings : saved ? next : next + "old=2\r\n";
      EXPECT_EQ(content() + content("~Set.ini"), direct + (mode == 3 ? next : temporary));
      WqCfg_WriteEnd(&cfg_);
      EXPECT_EQ(content() + content("~Set.ini"), mode == 3 ? next + "none" : direct + temporary);
      EXPECT_EQ(cfg_.mode, std::min(mode, 1u));
    }
  for (const char *path : {"\\Set.ini", "\\none\\Set.ini"}) { // there may be no settings yet, nor a place for them
    open("Set.ini");
    DeleteFileA(cfg_.path);
    WqCfg_Path(&cfg_, (path_ + path).c_str());
    EXPECT_EQ(WqCfg_WriteTmp(&cfg_), 1);
    WqCfg_Int(&cfg_, "k", 9);
    WqCfg_WriteEnd(&cfg_);
    EXPECT_EQ(content() + content("~Set.ini"), path[1] == 'S' ? next + "none" : "none" + next);
  }
}

TEST_F(WqCfgTest, KilledSavesLeaveWholeSettings) {
  const auto whole = [](int32_t number) {
    const std::string n = std::to_string(number) + "\r\n";
    return "[saver]\r\nfirst=" + n + "second=" + n + "last=" + n;
  };
  const char *const ordered = std::getenv("WQ_KILL_RUNS");
  const int runs = ordered ? std::atoi(ordered) : 25;
  WqCfg_Sect(&cfg_, "saver");
  writeFile(folder_.file("Set.ini"), whole(1));
  std::mt19937 random(std::random_device{}());
  int32_t number = 1; // of the last whole save
  int counts[3] = {};
  for (int run = 0; run < runs; ++run) {
    SCOPED_TRACE(testing::Message() << "run " << run << ", after number " << number);
    BackgroundProgram saver("saver", {path_});
    while (!fileExists(folder_.file("saving")) && saver.running()) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 5000));
    ASSERT_TRUE(saver.running());
    saver.kill();
    ASSERT_TRUE(DeleteFileA((path_ + "\\saving").c_str()));

    const bool there = fileExists(folder_.file("Set.ini"));
    ++counts[!there ? 2 : fileExists(folder_.file("~Set.ini"))];
    const std::string left = content(there ? "Set.ini" : "~Set.ini");
    const int32_t now = std::atoi(left.c_str() + std::min(left.size(), whole(0).find('0')));
    ASSERT_EQ(left, whole(now));
    EXPECT_GT(now, number) << "the first save was over";
    EXPECT_EQ(WqCfg_Int(&cfg_, "last", -1), there ? now : -1) << "the temporary file is not read";

    number = now + 1; // the next start saves and reads
    ASSERT_EQ(WqCfg_WriteTmp(&cfg_), 1);
    for (const char *key : {"first", "second", "last"}) WqCfg_Int(&cfg_, key, number);
    WqCfg_WriteEnd(&cfg_);
    ASSERT_EQ(content() + content("~Set.ini"), whole(number) + "none");
    WqCfg_Write(&cfg_, WQ_CFG_READ);
    EXPECT_EQ(WqCfg_Int(&cfg_, "last", -1), number);
  }
  std::cout << "killed between saves " << counts[0] << ", while writing " << counts[1] << ", between delete and move "
            << counts[2] << '\n';
}
