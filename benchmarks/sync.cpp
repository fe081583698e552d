// The lock inside a process: one thread alone, and two threads that compete all the time.

#include "wq.h"

#include <benchmark/benchmark.h>

#include <mutex>

namespace {

struct Ours {
  Ours() { WqSync_Init(&sync); }
  ~Ours() { WqSync_Term(&sync); }
  Ours(const Ours &) = delete;
  Ours &operator=(const Ours &) = delete;
  void lock() { WqSync_Lock(&sync); }
  void unlock() { WqSync_Unlock(&sync); }

  WqSync sync{};
};

template <typename Lock> void pairs(benchmark::State &state) {
  static Lock lock;
  static int counter = 0;
  for (auto _ : state) {
    lock.lock();
    benchmark::DoNotOptimize(++counter);
    lock.unlock();
  }
}

const bool registered = [] {
  const auto add = [](const char *name, void (*run)(benchmark::State &), int threads) {
    benchmark::RegisterBenchmark(name, run)->Threads(threads)->UseRealTime();
  };
  add("WqSync lock and unlock/ours", pairs<Ours>, 1);
  add("WqSync lock and unlock/std::recursive_mutex", pairs<std::recursive_mutex>, 1);
  add("WqSync lock and unlock, 2 threads/ours", pairs<Ours>, 2);
  add("WqSync lock and unlock, 2 threads/std::recursive_mutex", pairs<std::recursive_mutex>, 2);
  return true;
}();

} // namespace
