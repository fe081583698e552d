// The pool, and copying and clearing of bytes.

#include "wq.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <memory_resource>
#include <random>
#include <string>
#include <vector>

namespace {

// So small that the C library keeps freed memory. So the times don't include the system's.
constexpr uint32_t kChunk = 24 * 1024;

// Sizes of the small records of an application. All of them together need two chunks.
const std::vector<uint32_t> &pieceSizes() {
  static const std::vector<uint32_t> sizes = [] {
    std::mt19937 random(1);
    std::vector<uint32_t> made(500);
    for (uint32_t &size : made) size = random() % 128 + 1;
    return made;
  }();
  return sizes;
}

void takeOurs(WqMemBlock *pool) {
  for (const uint32_t size : pieceSizes()) benchmark::DoNotOptimize(WqMemBlock_Alloc(pool, size));
}

// Our pool aligns to 16 too.
void takePeers(std::pmr::monotonic_buffer_resource *pool) {
  for (const uint32_t size : pieceSizes()) benchmark::DoNotOptimize(pool->allocate(size, 16));
}

// Both sides hold all memory from the start and free the pieces at the end of each round.
void reusedOurs(benchmark::State &state) {
  WqMemBlock pool;
  WqMemBlock_Init(&pool, 2 * kChunk);
  for (auto _ : state) {
    takeOurs(&pool);
    WqMemBlock_Clear(&pool);
  }
  WqMemBlock_Term(&pool);
}

void reusedPeer(benchmark::State &state) {
  std::vector<std::byte> storage(2 * kChunk);
  std::pmr::monotonic_buffer_resource pool(storage.data(), storage.size());
  for (auto _ : state) {
    takePeers(&pool);
    pool.release();
  }
}

// Both sides allocate two chunks and free them.
void freshOurs(benchmark::State &state) {
  for (auto _ : state) {
    WqMemBlock pool;
    WqMemBlock_Init(&pool, kChunk);
    takeOurs(&pool);
    WqMemBlock_Term(&pool);
  }
}

void freshPeer(benchmark::State &state) {
  for (auto _ : state) {
    std::pmr::monotonic_buffer_resource pool(kChunk);
    takePeers(&pool);
  }
}

BENCHMARK(reusedOurs)->Name("pool, 500 pieces, reused/ours");
BENCHMARK(reusedPeer)->Name("pool, 500 pieces, reused/monotonic_buffer_resource");
BENCHMARK(freshOurs)->Name("pool, 500 pieces, fresh/ours");
BENCHMARK(freshPeer)->Name("pool, 500 pieces, fresh/monotonic_buffer_resource");

// The same two areas for all sides, so that no side has better pages.
constexpr size_t kLargest = 1024 * 1024;
alignas(64) std::array<char, kLargest> source;
alignas(64) std::array<char, kLargest> target;

template <auto copy> void copying(benchmark::State &state, size_t size) {
  char *from = source.data();
  char *to = target.data();
  for (auto _ : state) {
    benchmark::DoNotOptimize(from);
    benchmark::DoNotOptimize(to);
    benchmark::DoNotOptimize(size);
    copy(to, from, size);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(size));
}

void clear(void *bytes, size_t size) { std::memset(bytes, 0, size); }

template <auto zero> void zeroing(benchmark::State &state, size_t size) {
  char *bytes = target.data();
  for (auto _ : state) {
    benchmark::DoNotOptimize(bytes);
    benchmark::DoNotOptimize(size);
    zero(bytes, size);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(size));
}

const bool registered = [] {
  source.fill('x'); // own pages instead of the system's page of zeros
  for (const auto &[label, size] : {std::pair{"16 bytes", size_t{16}}, {"1 KiB", 1024}, {"1 MiB", kLargest}}) {
    const auto name = [&](const char *what, const char *side) { return std::string(what) + label + side; };
    benchmark::RegisterBenchmark(name("copy, ", "/ours").c_str(), copying<WqMem_Copy>, size);
    benchmark::RegisterBenchmark(name("copy, ", "/memcpy").c_str(), copying<std::memcpy>, size);
    benchmark::RegisterBenchmark(name("copy, ", "/memmove").c_str(), copying<std::memmove>, size);
    benchmark::RegisterBenchmark(name("zero, ", "/ours").c_str(), zeroing<WqMem_Zero>, size);
    benchmark::RegisterBenchmark(name("zero, ", "/memset").c_str(), zeroing<clear>, size);
  }
  return true;
}();

} // namespace
