// levelview, the example application: reports the levels of a WAV file.

#include "options.h"
#include "report.h"
#include "testsignal.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;

int fail(const Options &options, const std::string &reason) {
  std::fprintf(stderr, "levelview: %s: %s\n", options.shownFile.c_str(), reason.c_str());
  return kFailed;
}

int report(const Options &options) {
  WqUnit_SetRange(options.range);
  Recording recording;
  const std::string refused = recording.load(options.file.c_str());
  if (!refused.empty()) return fail(options, refused);
  printReport(recording, stdout);
  return EXIT_SUCCESS;
}

int run(const Options &options) {
  switch (options.mode) {
  case Mode::help: std::fputs(kUsage, stdout); return EXIT_SUCCESS;
  case Mode::version: std::puts("levelview " LEVELVIEW_VERSION); return EXIT_SUCCESS;
  case Mode::make: return makeTestSignal(options.file.c_str()) ? EXIT_SUCCESS : fail(options, "cannot write");
  case Mode::report: break;
  }
  return report(options);
}

} // namespace

int main(int argc, char **argv) {
  Options options;
  const std::string wrong = readOptions(argc, __argv, argv, options);
  if (wrong.empty()) return run(options);
  std::fprintf(stderr, "levelview: %s\n", wrong.c_str());
  return kWrongCommandLine;
}
