// What is on the disk before what: the calls that tell are recorded. The linker leads them here first.

#include "support/files.h"
#include "support/library.h"

#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Calls = std::vector<std::string>;

Calls *recorded = nullptr;

std::string lastPart(const std::string &path) { return path.substr(path.rfind('/') + 1); }

std::string nameOf(int file) {
  std::error_code error;
  return lastPart(std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), error).string());
}

void record(const std::string &call) {
  if (recorded) recorded->push_back(call);
}

} // namespace

extern "C" {
int __real_fsync(int file);
int __real_fdatasync(int file);
int __real_rename(const char *from, const char *to);
int __real_renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags);
int __real_unlink(const char *path);

int __wrap_fsync(int file) { return record("sync " + nameOf(file)), __real_fsync(file); }
int __wrap_fdatasync(int file) { return record("sync " + nameOf(file)), __real_fdatasync(file); }
int __wrap_rename(const char *from, const char *to) {
  return record("rename " + lastPart(from) + ' ' + lastPart(to)), __real_rename(from, to);
}
int __wrap_renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags) {
  record("rename " + lastPart(from) + ' ' + lastPart(to));
  return __real_renameat2(fromFolder, from, toFolder, to, flags);
}
int __wrap_unlink(const char *path) { return record("unlink " + lastPart(path)), __real_unlink(path); }
}

namespace {

class Durable : public LibraryTest {
 protected:
  ~Durable() override { recorded = nullptr; }

  std::string at(const char *name) const { return folder_.path() + '\\' + name; }
  // The calls of a body.
  template <typename Body> Calls callsOf(Body body) {
    Calls calls;
    recorded = &calls;
    body();
    recorded = nullptr;
    return calls;
  }

  const TempFolder folder_;
  const std::string syncFolder_ = "sync " + folder_.path();
};

} // namespace

TEST_F(Durable, AFileIsOnTheDiskBeforeItIsMoved) {
  writeFile(folder_.file("a"), "text");
  EXPECT_EQ(callsOf([&] { EXPECT_TRUE(MoveFileA(at("a").c_str(), at("b").c_str())); }),
            (Calls{"sync a", "rename a b", syncFolder_}));
}

TEST_F(Durable, AProfileIsOnTheDiskBeforeItTakesTheName) {
  writeFile(folder_.file("p.ini"), "[s]\r\nk=1\r\n");
  const auto put = [&] { EXPECT_TRUE(WritePrivateProfileStringA("s", "k", "2", at("p.ini").c_str())); };
  EXPECT_EQ(callsOf(put), (Calls{"sync .p.ini.new", "rename .p.ini.new p.ini"}));
  std::filesystem::create_hard_link(folder_.file("p.ini"), folder_.file("other"));
  EXPECT_EQ(callsOf(put), Calls{"sync p.ini"}) << "in place";
}

// The old settings go when the new ones are on the disk under a name of their own.
TEST_F(Durable, AProtectedSaveIsOnTheDiskBeforeTheOldOneGoes) {
  writeFile(folder_.file("p.ini"), "[s]\r\nk=1\r\n");
  WqCfg cfg;
  WqCfg_Init(&cfg);
  WqCfg_SetDir(&cfg, folder_.path().c_str());
  WqCfg_SetFileName(&cfg, "p.ini");
  WqCfg_SetPath(&cfg);
  WqCfg_Sect(&cfg, "s");
  const Calls calls = callsOf([&] {
    EXPECT_TRUE(WqCfg_WriteTmp(&cfg));
    WqCfg_Int(&cfg, "k", 2);
    WqCfg_WriteEnd(&cfg);
  });
  EXPECT_EQ(calls, (Calls{"sync .~p.ini.new", "rename .~p.ini.new ~p.ini", "unlink p.ini", "sync ~p.ini",
                          "rename ~p.ini p.ini", syncFolder_}));
  WqCfg_Term(&cfg);
}
