// Runs all benchmarks and prints one table: our time beside that of each peer, from the medians of the same run.
//
// A benchmark is named "subject/ours" or "subject/<peer>". All benchmarks of a subject do the same work. All options of
// Google Benchmark work. With --benchmark_format it prints its own report instead of the table.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Result {
  std::string subject;
  std::string side; // "ours", or the peer
  double seconds;   // for one iteration
};

std::string readable(double seconds) {
  constexpr std::pair<double, const char *> kUnits[] = {{1e-9, "ns"}, {1e-6, "us"}, {1e-3, "ms"}, {1, "s "}};
  const auto *unit = kUnits;
  while (unit + 1 != std::end(kUnits) && seconds >= unit[1].first) ++unit;
  char text[32];
  std::snprintf(text, sizeof text, "%.2f %s", seconds / unit->first, unit->second);
  return text;
}

class Table : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context &context) override {
    PrintBasicContext(&GetErrorStream(), context);
    return true;
  }

  void ReportRuns(const std::vector<Run> &runs) override {
    for (const Run &run : runs) {
      if (run.error_occurred) {
        GetErrorStream() << run.benchmark_name() << ": " << run.error_message << std::endl;
        failed_ = true;
      } else if (run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median" : run.repetitions < 2) {
        take(run);
      }
    }
  }

  void Finalize() override {
    size_t subjectWidth = 7;
    size_t peerWidth = 4;
    for (const auto &[index, result] : results_) {
      subjectWidth = std::max(subjectWidth, result.subject.size());
      peerWidth = std::max(peerWidth, result.side.size());
    }
    const auto line = [&](const std::string &subject, const std::string &peer, const std::string &our,
                          const std::string &other, const std::string &ratio) {
      std::printf("%-*s  %-*s  %10s  %10s  %6s\n", static_cast<int>(subjectWidth), subject.c_str(),
                  static_cast<int>(peerWidth), peer.c_str(), our.c_str(), other.c_str(), ratio.c_str());
    };
    line("subject", "peer", "ours", "peer", "ratio");
    for (const auto &[index, result] : results_) {
      const std::optional<double> ours = oursOf(result.subject);
      if (result.side == "ours" || !ours) continue;
      char ratio[32];
      std::snprintf(ratio, sizeof ratio, "%.2f", *ours / result.seconds);
      line(result.subject, result.side, readable(*ours), readable(result.seconds), ratio);
    }
  }

  bool failed() const { return failed_; }

 private:
  void take(const Run &run) {
    const std::string &name = run.run_name.function_name;
    const size_t slash = name.rfind('/');
    const double seconds = run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
    results_[run.family_index] = {name.substr(0, slash), name.substr(slash + 1), seconds};
    GetErrorStream() << name << ": " << readable(seconds);
    const auto rate = run.counters.find("bytes_per_second");
    if (rate != run.counters.end()) GetErrorStream() << ", " << std::lround(rate->second / 1e6) << " MB/s";
    GetErrorStream() << std::endl;
  }

  std::optional<double> oursOf(const std::string &subject) const {
    for (const auto &[index, result] : results_)
      if (result.subject == subject && result.side == "ours") return result.seconds;
    return std::nullopt;
  }

  std::map<int64_t, Result> results_; // in the order of registration, since results come in any order
  bool failed_ = false;
};

} // namespace

int main(int argc, char **argv) {
  // Interleaved repetitions spread a slow period of the machine over all rows. The user's options follow and override
  // these.
  std::vector<std::string> defaults = {"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=15",
                                       "--benchmark_min_time=0.03"};
  std::vector<char *> arguments = {argv[0]};
  for (std::string &option : defaults) arguments.push_back(option.data());
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  const bool ownReport = std::any_of(argv + 1, argv + argc, [](std::string_view option) {
    return option.starts_with("--benchmark_format") || option.starts_with("--benchmark_list_tests");
  });

  int count = static_cast<int>(arguments.size());
  arguments.push_back(nullptr);
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  if (ownReport) return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
  Table table;
  return benchmark::RunSpecifiedBenchmarks(&table) > 0 && !table.failed() ? 0 : 1;
}
