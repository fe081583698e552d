// Conversions between numbers and text, and plain copies of strings.

#include "wq.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr size_t kNumbers = 20000;

// Numbers of 1 to 10 digits, of both signs. All lengths are equally frequent.
const std::vector<int32_t> &numbers() {
  static const std::vector<int32_t> values = [] {
    std::mt19937 random(1);
    std::vector<int32_t> made(kNumbers);
    for (int32_t &value : made) {
      int64_t low = 1;
      for (auto digits = random() % 10; digits > 0; --digits) low *= 10;
      const int64_t high = std::min<int64_t>(low * 10 - 1, INT32_MAX);
      value = static_cast<int32_t>(std::uniform_int_distribution<int64_t>(low, high)(random));
      if (random() % 2 != 0) value = -value;
    }
    return made;
  }();
  return values;
}

// All numbers, with a comma behind each.
const std::string &numbersText() {
  static const std::string text = [] {
    std::string made;
    for (const int32_t value : numbers()) made += std::to_string(value) + ',';
    return made;
  }();
  return text;
}

void scanOurs(benchmark::State &state) {
  const char *text = numbersText().c_str();
  for (auto _ : state) {
    benchmark::DoNotOptimize(text);
    uint32_t sum = 0;
    for (const char *cursor = text; *cursor != '\0'; ++cursor) {
      int32_t value;
      cursor = WqScan_Int(cursor, &value);
      sum += static_cast<uint32_t>(value);
    }
    benchmark::DoNotOptimize(sum);
  }
}

void scanPeer(benchmark::State &state) {
  const char *text = numbersText().c_str();
  const char *end = text + numbersText().size();
  for (auto _ : state) {
    benchmark::DoNotOptimize(text);
    uint32_t sum = 0;
    for (const char *cursor = text; *cursor != '\0'; ++cursor) {
      int32_t value = 0;
      cursor = std::from_chars(cursor, end, value).ptr;
      sum += static_cast<uint32_t>(value);
    }
    benchmark::DoNotOptimize(sum);
  }
}

void printOurs(benchmark::State &state) {
  char text[16];
  for (auto _ : state) {
    int32_t length = 0;
    for (const int32_t value : numbers()) {
      length += WqStr_Int(text, value);
      benchmark::DoNotOptimize(text);
    }
    benchmark::DoNotOptimize(length);
  }
}

// Writes the NUL and measures the length, as our function does.
void printPeer(benchmark::State &state) {
  char text[16];
  for (auto _ : state) {
    int32_t length = 0;
    for (const int32_t value : numbers()) {
      char *end = std::to_chars(text, text + sizeof text, value).ptr;
      *end = '\0';
      length += static_cast<int32_t>(end - text);
      benchmark::DoNotOptimize(text);
    }
    benchmark::DoNotOptimize(length);
  }
}

BENCHMARK(scanOurs)->Name("scan 20000 numbers/ours");
BENCHMARK(scanPeer)->Name("scan 20000 numbers/from_chars");
BENCHMARK(printOurs)->Name("print 20000 numbers/ours");
BENCHMARK(printPeer)->Name("print 20000 numbers/to_chars");

constexpr size_t kLongest = 1024;
alignas(64) char source[kLongest + 1];
alignas(64) char target[kLongest + 1];

template <auto copy> void copying(benchmark::State &state, size_t length) {
  std::memset(source, 'x', kLongest);
  source[length] = '\0';
  const char *from = source;
  char *to = target;
  for (auto _ : state) {
    benchmark::DoNotOptimize(from);
    benchmark::DoNotOptimize(to);
    benchmark::DoNotOptimize(copy(to, from));
    benchmark::ClobberMemory();
  }
}

template <auto measure> void measuring(benchmark::State &state, size_t length) {
  std::memset(source, 'x', kLongest);
  source[length] = '\0';
  const char *from = source;
  for (auto _ : state) {
    benchmark::DoNotOptimize(from);
    benchmark::DoNotOptimize(measure(from));
    benchmark::ClobberMemory();
  }
}

#ifndef _WIN32
// Copies and measures in one step; strcpy gives no length.
int32_t copyAndMeasure(char *to, const char *from) { return static_cast<int32_t>(stpcpy(to, from) - to); }
#endif

const bool registered = [] {
  for (const size_t length : {8, 64, 1024}) {
    const auto name = [&](const char *what, const char *side) {
      return std::string(what) + std::to_string(length) + " bytes" + side;
    };
    benchmark::RegisterBenchmark(name("string copy, ", "/ours").c_str(), copying<WqStr_Copy>, length);
    benchmark::RegisterBenchmark(name("string copy, ", "/strcpy").c_str(), copying<std::strcpy>, length);
#ifndef _WIN32
    benchmark::RegisterBenchmark(name("string copy, ", "/stpcpy").c_str(), copying<copyAndMeasure>, length);
#endif
    benchmark::RegisterBenchmark(name("string length, ", "/ours").c_str(), measuring<WqStr_Len>, length);
    benchmark::RegisterBenchmark(name("string length, ", "/strlen").c_str(), measuring<std::strlen>, length);
  }
  return true;
}();

} // namespace
