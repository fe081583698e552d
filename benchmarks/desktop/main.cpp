// Times the work with windows. Another platform can run the same program for comparison, so it needs only the library:
//   bench_desktop [PART]    only subjects whose names contain this
// Prints a line "subject<TAB>seconds per iteration" for each subject.

#include "desktop/desktop.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr Seconds kAll(0.2);
constexpr Seconds kSample(0.02); // long compared to the clock's steps
constexpr size_t kSamples = 9;   // at least

Seconds timeOf(const std::function<void()> &work, int iterations) {
  const auto start = Clock::now();
  for (int i = 0; i < iterations; ++i) work();
  return Clock::now() - start;
}

} // namespace

double secondsPerIteration(const std::function<void()> &work) {
  work(); // a first run to warm up
  int iterations = 1;
  while (timeOf(work, iterations) < kSample) iterations *= 2;
  std::vector<double> samples;
  for (Seconds sum(0); sum < kAll || samples.size() < kSamples;) {
    const Seconds sample = timeOf(work, iterations);
    sum += sample;
    samples.push_back(sample.count() / iterations);
  }
  const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
  std::nth_element(samples.begin(), middle, samples.end());
  return *middle;
}

void require(bool isWell, const char *what) {
  if (isWell) return;
  std::fprintf(stderr, "bench_desktop: %s\n", what);
  std::exit(1);
}

int main(int argc, char **argv) {
  std::vector<Subject> subjects;
  addWindows(subjects);
  addDrawing(subjects);
  addBars(subjects);
  addLists(subjects);
  addBoxes(subjects);
  for (const Subject &subject : subjects) {
    if (argc > 1 && subject.name.find(argv[1]) == std::string::npos) continue;
    WqMain_Init(GetModuleHandleA(nullptr));
    const double seconds = subject.measure();
    WqMain_Term();
    std::printf("%s\t%.9g\n", subject.name.c_str(), seconds);
    std::fflush(stdout);
  }
}
