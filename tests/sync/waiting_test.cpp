#include "support/library.h"
#include "support/program.h"

#include <atomic>
#include <cstdlib>
#include <random>
#include <thread>
#include <tuple>

namespace {

using WaitingTest = LibraryTest;

void pause(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

std::string uniqueName(const std::string &text) { return "wq_" + text + std::to_string(std::random_device()()); }

// The result of a wait on another thread, which gives the mutex back. Time never runs out too soon.
uint32_t elsewhere(const WqMutex &mutex, uint32_t milliseconds) {
  uint32_t got = 0;
  std::thread([&] {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    got = WaitForSingleObject(mutex.handle, milliseconds);
    EXPECT_TRUE(got != WAIT_TIMEOUT || std::chrono::steady_clock::now() >= end) << milliseconds;
    EXPECT_TRUE(got == 0 ? ReleaseMutex(mutex.handle)
                         : !ReleaseMutex(mutex.handle) && GetLastError() == ERROR_NOT_OWNER);
  }).join();
  return got;
}

TEST_F(WaitingTest, SyncAdmitsOneThreadAsOftenAsItLikes) {
  WqSync sync{};
  WqSync_Unlock(&sync);
  EXPECT_EQ(WqSync_Lock(&sync) + static_cast<int>(sync.state), 0);
  for (int life = 0; life < 2; ++life) { // a record that ended lives again once it is zeroed
    WqSync_Init(&sync);
    WqSync_Unlock(&sync);
    EXPECT_EQ(sync.state, WQ_SYNC_READY);
    EXPECT_TRUE(WqSync_Lock(&sync) == 1 && WqSync_Lock(&sync) == 1);
    EXPECT_EQ(sync.state, WQ_SYNC_READY | WQ_SYNC_ENTERED);
    int sum = 0;
    const auto work = [&] {
      for (int round = 0; round < 20000; ++round, WqSync_Unlock(&sync)) sum += WqSync_Lock(&sync);
    };
    std::thread other(work);
    for (int locks = 2; locks > 0; --locks) {
      pause(20);
      EXPECT_EQ(sum, 0) << locks;
      WqSync_Unlock(&sync);
    }
    work();
    other.join();
    EXPECT_EQ(sum, 40000);
    WqSync_Term(&sync);
    WqSync_Unlock(&sync);
    WqSync_Init(&sync);
    EXPECT_EQ(WqSync_Lock(&sync), 0);
    EXPECT_EQ(sync.state, WQ_SYNC_READY | WQ_SYNC_DELETED | WQ_SYNC_ENTERED);
    sync = {};
  }
}

TEST_F(WaitingTest, NamesLeadToOneMutexUntilTheLastHandleGoes) {
  const std::string name = uniqueName("name");
  WqMutex mutex[3];
  EXPECT_EQ(WqMutex_Open(&mutex[0], name.c_str()), 0);
  EXPECT_EQ(std::tuple(mutex[0].handle, std::string(mutex[0].name)), std::tuple(HANDLE{}, name));
  EXPECT_TRUE(WqMutex_Init(&mutex[0], 0, name.c_str()) == 1 && GetLastError() == 0);
  EXPECT_TRUE(WqMutex_Init(&mutex[1], 1, name.c_str()) == 1 && GetLastError() == ERROR_ALREADY_EXISTS);
  EXPECT_TRUE(WqMutex_Open(&mutex[2], name.c_str()) == 1 && mutex[1].name == name);
  EXPECT_EQ(elsewhere(mutex[0], 0), 0u); // only a new one is owned from the start
  EXPECT_TRUE(WqMutex_Lock(&mutex[0]) == 0 && elsewhere(mutex[2], 0) == 0x102u);
  EXPECT_TRUE(WqMutex_Unock(&mutex[1]) && elsewhere(mutex[2], 0) == 0);
  for (WqMutex &each : mutex) {
    EXPECT_EQ(WqMutex_IsExist(name.c_str()), 1);
    WqMutex_Term(&each);
  }
  EXPECT_EQ(WqMutex_IsExist(name.c_str()), 0);
  WqMutex_Term(&mutex[0]);
  EXPECT_EQ(mutex[0].handle, nullptr);
  EXPECT_TRUE(WqMutex_Lock(&mutex[0]) == 0xFFFFFFFFu && !WqMutex_Unock(&mutex[0]));

  const std::string longName = name + std::string(300, 'x');
  mutex[0].name[259] = 'x'; // as a record may lie in memory
  EXPECT_EQ(WqMutex_Init(&mutex[0], 1, longName.c_str()), 1);
  EXPECT_TRUE(longName.substr(0, 259) == mutex[0].name && WqMutex_IsExist(mutex[0].name));
  EXPECT_EQ(WqMutex_Lock(&mutex[0]), 0u);
  for (const uint32_t waited : {0u, 30u}) { // owned by one thread, for as long as it didn't give all locks back
    EXPECT_EQ(elsewhere(mutex[0], waited), 0x102u);
    EXPECT_NE(WqMutex_Unock(&mutex[0]), 0);
  }
  for (const uint32_t waited : {0u, INFINITE}) { // a thread that ends with the mutex abandons it, and all its locks
    std::thread([&] { EXPECT_EQ(WqMutex_Lock(&mutex[0]) + WqMutex_Lock(&mutex[0]), 0u); }).join();
    EXPECT_EQ(WaitForSingleObject(mutex[0].handle, waited), 0x80u);
    EXPECT_EQ(elsewhere(mutex[0], 0), 0x102u);
    EXPECT_TRUE(WqMutex_Unock(&mutex[0]) && !WqMutex_Unock(&mutex[0]));
  }
  WqMutex_Term(&mutex[0]);
}

TEST_F(WaitingTest, NamesHaveTheirPrefixesAndNoOtherBackslash) {
  const std::string name = uniqueName("prefix");
  WqMutex mutex, other;
  // clang-format off
  const std::tuple<const char *, const char *, int> rows[] = { // two prefixes, and whether they mean the same
      {"", "Local\\", 1}, {"Local\\", "", 1}, {"Global\\", "", 0}, {"", "Global\\", 0}, {"Global\\", "Local\\", 0},
      {"Global\\", "Global\\", 1}, {"\x83\x5C", "Local\\\x83\x5C", 1}};
  // clang-format on
  for (const auto &[first, second, same] : rows) {
    EXPECT_EQ(WqMutex_Init(&mutex, 0, (first + name).c_str()), 1) << first;
    EXPECT_EQ(WqMutex_Open(&other, (second + name).c_str()), same) << first << ' ' << second;
    WqMutex_Term(&other);
    WqMutex_Term(&mutex);
  }
  const std::pair<std::string, DWORD> refused[] = {
      {"a\\" + name, 3}, {name + '\\', 3}, {"local\\" + name, 3}, {"Local\\a\\" + name, 3}, {'\\' + name, 161}};
  for (const auto &[each, error] : refused) {
    EXPECT_EQ(CreateMutexA(nullptr, FALSE, each.c_str()) ? 0 : GetLastError(), error) << each;
    EXPECT_EQ(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, each.c_str()) ? 0 : GetLastError(), error) << each;
    EXPECT_EQ(CreateEventA(nullptr, TRUE, FALSE, each.c_str()) ? 0 : GetLastError(), error) << each;
  }
}

TEST_F(WaitingTest, MutexOutlivesAProcessThatIsKilled) {
  const char *runs = std::getenv("WQ_KILL_RUNS");
  const std::string name = uniqueName("kill");
  WqMutex mutex;
  for (int run = 0; run < (runs ? std::atoi(runs) : 15) && !HasFailure(); ++run) {
    const bool waits = run % 3 == 0;
    BackgroundProgram program("holder", {name, run % 3 == 2 ? "churn" : "hold"});
    while (program.running() && !WqMutex_IsExist(name.c_str())) pause(1);
    EXPECT_TRUE(!waits || (WqMutex_Open(&mutex, name.c_str()) && elsewhere(mutex, 0) == WAIT_TIMEOUT));
    std::thread waiter([&] { // who waits, or comes a little later, gets it as abandoned, once
      for (const uint32_t result : {0x80u, 0u})
        EXPECT_TRUE(!waits || (WqMutex_Lock(&mutex) == result && WqMutex_Unock(&mutex))) << result;
    });
    pause(run % 10);
    program.kill();
    waiter.join();
    if (waits) WqMutex_Term(&mutex);
    EXPECT_EQ(WqMutex_IsExist(name.c_str()), 0) << run; // the last holder took the name along
    EXPECT_TRUE(WqMutex_Init(&mutex, 0, name.c_str()) == 1 && GetLastError() == 0) << run;
    EXPECT_EQ(elsewhere(mutex, 0), 0u) << run;
    WqMutex_Term(&mutex);
  }
}

TEST_F(WaitingTest, MutexStaysWithAThreadThatClosesIt) {
  const std::string name = uniqueName("closed");
  BackgroundProgram program("holder", {name, "open"});
  while (program.running() && !WqMutex_IsExist(name.c_str())) pause(1);
  WqMutex mutex;
  EXPECT_TRUE(WqMutex_Open(&mutex, name.c_str()) == 1 && WqMutex_Lock(&mutex) == 0);
  WqMutex_Term(&mutex);
  EXPECT_TRUE(WqMutex_Open(&mutex, name.c_str()) == 1 && elsewhere(mutex, 0) == WAIT_TIMEOUT);
  EXPECT_TRUE(WqMutex_Unock(&mutex) && elsewhere(mutex, 0) == 0);
  WqMutex_Term(&mutex);
}

TEST_F(WaitingTest, SignalStaysAsItIsSet) {
  const std::string name = uniqueName("signal");
  for (const char *text : {static_cast<const char *>(nullptr), name.c_str()}) {
    WqSignal signal{&signal}, again; // as a record may lie in memory
    WqSignal_Init(&signal);
    EXPECT_EQ(signal.handle, nullptr);
    EXPECT_TRUE(WqSignal_Wait(&signal) == 0xFFFFFFFFu && !WqSignal_SetGo(&signal));
    EXPECT_TRUE(WqSignal_Create(&signal, text, 0) == 1 && WqSignal_Create(&again, text, 1) == 1);
    for (const uint32_t waited : {0u, 30u}) EXPECT_EQ(WqSignal_WaitTime(&signal, waited), 0x102u);
    EXPECT_EQ(WqSignal_WaitTime(&again, 10), text ? 0x102u : 0u); // one that exists stays clear
    EXPECT_TRUE(WqSignal_SetGo(&again) && WqSignal_WaitTime(&signal, 0) == (text ? 0u : 0x102u));
    EXPECT_TRUE(WqSignal_SetGo(&signal) && WqSignal_WaitTime(&signal, 1000) + WqSignal_Wait(&signal) == 0);
    EXPECT_TRUE(WqSignal_SetStop(&signal) && WqSignal_WaitTime(&signal, 0) == 0x102u);
    WqMutex mutex{};
    EXPECT_TRUE(!text || !WqMutex_Init(&mutex, 0, text)) << "all kinds share their names";
    WqMutex_Term(&mutex);
    for (WqSignal *each : {&signal, &again, &signal}) WqSignal_Term(each);
    EXPECT_EQ(signal.handle, nullptr);
    EXPECT_TRUE(WqSignal_Create(&signal, text, 1) && WqSignal_WaitTime(&signal, 0) == 0) << "made anew";
    WqSignal_Term(&signal);
  }
}

TEST_F(WaitingTest, SignalLetsAllPassWhoWait) {
  WqSignal signal;
  EXPECT_EQ(WqSignal_Create(&signal, nullptr, 0), 1);
  std::atomic<int> waiting = 0;
  const auto work = [&] {
    ++waiting;
    EXPECT_TRUE(WqSignal_WaitTime(&signal, 3000) == 0 && waiting == 0);
  };
  std::thread threads[] = {std::thread(work), std::thread(work), std::thread(work), std::thread(work)};
  while (waiting < 4) pause(1);
  pause(100); // now they sleep
  waiting = 0;
  EXPECT_TRUE(WqSignal_SetGo(&signal) && WqSignal_SetStop(&signal)); // who waited passes all the same
  for (std::thread &thread : threads) thread.join();
  WqSignal_Term(&signal);
}

TEST_F(WaitingTest, SemaphoreDoesNothing) {
  WqSemaphore semaphore{{1, 2, 3}};
  EXPECT_EQ(WqSemaphore_Create(&semaphore, 5, "name") + WqSemaphore_TryLock(&semaphore), 0);
  for (const auto call : {WqSemaphore_Lock, WqSemaphore_Unlock, WqSemaphore_Term}) call(&semaphore);
  EXPECT_EQ(std::vector(semaphore.words, semaphore.words + 3), (std::vector<uint32_t>{1, 2, 3}));
  WqSemaphore_Init(&semaphore);
  EXPECT_EQ(std::vector(semaphore.words, semaphore.words + 3), std::vector<uint32_t>(3));
}

} // namespace
