// Where the memory of named objects lies on this system, and who may have put it there.

#include "support/files.h"
#include "support/library.h"
#include "support/program.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <random>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// A session's folder of the test's own.
class NamedMemory : public LibraryTest {
 protected:
  NamedMemory() {
    fs::permissions(folder_.path(), fs::perms::owner_all);
    setenv("XDG_RUNTIME_DIR", fs::absolute(folder_.path()).c_str(), 1);
  }
  ~NamedMemory() override {
    if (before_)
      setenv("XDG_RUNTIME_DIR", before_, 1);
    else
      unsetenv("XDG_RUNTIME_DIR");
  }

  // The files in memory, or -1 where there is no folder for them.
  int files() const {
    std::error_code error;
    const fs::directory_iterator entries(memory_, error);
    return error ? -1 : static_cast<int>(std::distance(entries, {}));
  }
  static void waitFor(BackgroundProgram &program, const std::string &name) {
    while (program.running() && !WqMutex_IsExist(name.c_str()))
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }

  const TempFolder folder_;
  const fs::path memory_ = folder_.file("winapi-") + std::to_string(geteuid());
  const std::string name_ = "wq_memory" + std::to_string(std::random_device()());
  const char *const before_ = std::getenv("XDG_RUNTIME_DIR");
  WqMutex mutex_;
};

} // namespace

TEST_F(NamedMemory, LiesInAFolderOfTheUsersOwn) {
  EXPECT_EQ(WqMutex_Init(&mutex_, 0, name_.c_str()), 1);
  EXPECT_EQ(files(), 1);
  EXPECT_EQ(fs::status(memory_).permissions(), fs::perms::owner_all);
  WqMutex_Term(&mutex_);
  EXPECT_EQ(files(), 0);

  fs::permissions(memory_, fs::perms::owner_all | fs::perms::others_all); // where anybody may put files
  EXPECT_EQ(WqMutex_Init(&mutex_, 0, name_.c_str()), 1);
  EXPECT_EQ(files(), 0);
  WqMutex_Term(&mutex_);

  fs::remove(memory_);
  fs::create_directory(folder_.file("elsewhere"));
  fs::create_directory_symlink("elsewhere", memory_);
  EXPECT_EQ(WqMutex_Init(&mutex_, 0, name_.c_str()), 1);
  EXPECT_EQ(files(), 0) << "a link is not the user's folder";
  WqMutex_Term(&mutex_);
}

TEST_F(NamedMemory, OfAnotherSizeIsRefused) {
  BackgroundProgram program("holder", {name_, "hold"});
  waitFor(program, name_);
  ASSERT_EQ(files(), 1);
  fs::resize_file(fs::directory_iterator(memory_)->path(), 0);
  EXPECT_EQ(WqMutex_Open(&mutex_, name_.c_str()), 0);
  EXPECT_EQ(WqMutex_Init(&mutex_, 0, name_.c_str()), 0);
}

TEST_F(NamedMemory, OfKilledProcessesIsCleared) {
  BackgroundProgram first("holder", {name_ + 'a', "hold"}), second("holder", {name_ + 'b', "hold"});
  waitFor(first, name_ + 'a');
  waitFor(second, name_ + 'b');
  first.kill();
  second.kill();
  EXPECT_EQ(files(), 2); // nobody has asked for these names since
  BackgroundProgram program("holder", {name_ + 'c', "hold"});
  waitFor(program, name_ + 'c');
  EXPECT_EQ(files(), 1);
}
