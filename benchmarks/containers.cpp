// The hash table with typical keys of registries, and the byte ring.

#include "wq.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <deque>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

constexpr uint32_t kBuckets = 255; // as in the library's registries
constexpr uint32_t kIds = 200;

using Ids = std::vector<uint32_t>;
using Map = std::unordered_map<uint32_t, uintptr_t>;

template <typename Id> Ids shuffled(Id id) {
  Ids ids(kIds);
  for (uint32_t i = 0; i < kIds; ++i) ids[i] = id(i);
  std::shuffle(ids.begin(), ids.end(), std::mt19937(1));
  return ids;
}

Ids smallIds() {
  return shuffled([](uint32_t i) { return i; });
}

// Five widths in forty colours, in the form of a pen registry's keys.
Ids pens() {
  return shuffled([](uint32_t i) { return (i / 40 + 1) << 16 | i % 40; });
}

Ids colours() {
  return shuffled([random = std::mt19937(2)](uint32_t) mutable { return static_cast<uint32_t>(random()) & 0xFFFFFF; });
}

// Colours of a level display from red to blue. The bytes of each key add up to 255, so all keys share one of 255
// buckets.
Ids shades() {
  return shuffled([](uint32_t i) { return i << 16 | (255 - i); });
}

void lookUpOurs(benchmark::State &state, const Ids &ids) {
  WqHash hash;
  WqHash_Init(&hash, kBuckets);
  for (const uint32_t id : ids) WqHash_Insert(&hash, id, id);
  for (auto _ : state) {
    WqWord sum = 0;
    for (const uint32_t id : ids) sum += WqHash_FindData(&hash, id)->data;
    benchmark::DoNotOptimize(sum);
    benchmark::ClobberMemory();
  }
  WqHash_RemoveAll(&hash);
  WqHash_Term(&hash);
}

void lookUpPeer(benchmark::State &state, const Ids &ids) {
  Map map;
  for (const uint32_t id : ids) map[id] = id;
  for (auto _ : state) {
    uintptr_t sum = 0;
    for (const uint32_t id : ids) sum += map.find(id)->second;
    benchmark::DoNotOptimize(sum);
    benchmark::ClobberMemory();
  }
}

void insertOurs(benchmark::State &state, const Ids &ids) {
  WqHash hash;
  WqHash_Init(&hash, kBuckets);
  for (auto _ : state) {
    for (const uint32_t id : ids) WqHash_Insert(&hash, id, id);
    benchmark::ClobberMemory();
    WqHash_RemoveAll(&hash);
  }
  WqHash_Term(&hash);
}

// The buckets stay from round to round, as in our table.
void insertPeer(benchmark::State &state, const Ids &ids) {
  Map map;
  for (auto _ : state) {
    for (const uint32_t id : ids) map.insert_or_assign(id, id);
    benchmark::ClobberMemory();
    map.clear();
  }
}

constexpr uint32_t kCapacity = 64 * 1024;
constexpr uint32_t kBytes = 4000;
constexpr uint32_t kBlock = 1024;
constexpr int kBlocks = 60;

void report(benchmark::State &state, int64_t bytes) { state.SetBytesProcessed(state.iterations() * bytes); }

// The indexes move over the whole ring in the course of the rounds.
void bytesOurs(benchmark::State &state) {
  WqRingBuf ring;
  WqRingBuf_Init(&ring, kCapacity);
  for (auto _ : state) {
    int32_t sum = 0;
    for (uint32_t i = 0; i < kBytes; ++i) WqRingBuf_Putc(&ring, static_cast<uint8_t>(i));
    for (int32_t byte; (byte = WqRingBuf_Getc(&ring)) >= 0;) sum += byte;
    benchmark::DoNotOptimize(sum);
  }
  report(state, kBytes);
  WqRingBuf_Term(&ring);
}

void bytesPeer(benchmark::State &state) {
  std::deque<uint8_t> queue;
  for (auto _ : state) {
    int32_t sum = 0;
    for (uint32_t i = 0; i < kBytes; ++i)
      if (queue.size() < kCapacity) queue.push_back(static_cast<uint8_t>(i));
    for (; !queue.empty(); queue.pop_front()) sum += queue.front();
    benchmark::DoNotOptimize(sum);
  }
  report(state, kBytes);
}

std::array<uint8_t, kBlock> block;

void blocksOurs(benchmark::State &state) {
  WqRingBuf ring;
  WqRingBuf_Init(&ring, kCapacity);
  for (auto _ : state) {
    for (int i = 0; i < kBlocks; ++i) WqRingBuf_PutBlock(&ring, block.data(), kBlock);
    benchmark::ClobberMemory();
    WqRingBuf_Flush(&ring);
  }
  report(state, kBlocks * kBlock);
  WqRingBuf_Term(&ring);
}

void blocksDeque(benchmark::State &state) {
  std::deque<uint8_t> queue;
  for (auto _ : state) {
    for (int i = 0; i < kBlocks; ++i)
      if (kBlock < kCapacity - queue.size()) queue.insert(queue.end(), block.begin(), block.end());
    benchmark::ClobberMemory();
    queue.clear();
  }
  report(state, kBlocks * kBlock);
}

// The lower bound: only the copies.
void blocksMemcpy(benchmark::State &state) {
  std::vector<uint8_t> area(kCapacity);
  size_t size = kBlock;
  benchmark::DoNotOptimize(size); // for a constant size the compiler would make special code
  for (auto _ : state) {
    for (size_t i = 0; i < kBlocks; ++i) {
      std::memcpy(&area[i * kBlock], block.data(), size);
      benchmark::ClobberMemory();
    }
  }
  report(state, kBlocks * kBlock);
}

const bool registered = [] {
  for (const auto &[label, ids] :
       {std::pair{"small ids", smallIds()}, {"pens", pens()}, {"colours", colours()}, {"shades", shades()}}) {
    const auto name = [&](const char *what, const char *side) { return what + std::string(", 200 ") + label + side; };
    benchmark::RegisterBenchmark(name("hash look-up", "/ours").c_str(), lookUpOurs, ids);
    benchmark::RegisterBenchmark(name("hash look-up", "/unordered_map").c_str(), lookUpPeer, ids);
    benchmark::RegisterBenchmark(name("hash fill and clear", "/ours").c_str(), insertOurs, ids);
    benchmark::RegisterBenchmark(name("hash fill and clear", "/unordered_map").c_str(), insertPeer, ids);
  }
  return true;
}();

BENCHMARK(bytesOurs)->Name("ring, 4000 bytes in and out/ours");
BENCHMARK(bytesPeer)->Name("ring, 4000 bytes in and out/deque");
BENCHMARK(blocksOurs)->Name("ring, 60 blocks of 1 KiB in/ours");
BENCHMARK(blocksDeque)->Name("ring, 60 blocks of 1 KiB in/deque");
BENCHMARK(blocksMemcpy)->Name("ring, 60 blocks of 1 KiB in/memcpy");

} // namespace
