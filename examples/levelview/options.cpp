#include "options.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

const char *const kUsage =
    "Usage: levelview [--report] [--range VOLTS] FILE.wav\n"
    "       levelview --make FILE.wav\n"
    "\n"
    "Reports the levels of a WAV file (integer PCM, 8, 16 or 32 bits, one or two channels).\n"
    "\n"
    "  --report       print format, length and levels, one `key: value' a line (the default)\n"
    "  --range VOLTS  the level that full scale stands for, 1.0 if not given\n"
    "  --make         write a test signal: a tone on the first channel, a sweep on the second\n"
    "  --help         print this text\n"
    "  --version      print the version\n"
    "\n"
    "Exit status: 0 when the file was reported or written, 1 when it was not, 2 for a wrong command line.\n";

namespace {

bool readVolts(std::string_view text, double &volts) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), volts);
  return error == std::errc() && end == text.data() + text.size() && std::isfinite(volts) && volts > 0;
}

} // namespace

std::string readOptions(int argc, char **argv, char **shownArgv, Options &options) {
  bool onlyFiles = false; // behind "--"
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (onlyFiles || argument.empty() || argument[0] != '-') {
      if (!options.file.empty()) return std::string("one file at a time, and ") + shownArgv[i] + " is a second one";
      options.file = argument;
      options.shownFile = shownArgv[i];
    } else if (argument == "--") {
      onlyFiles = true;
    } else if (argument == "--report") {
      options.mode = Mode::report;
    } else if (argument == "--make") {
      options.mode = Mode::make;
    } else if (argument == "--range") {
      if (++i == argc) return "--range needs a number of volts";
      if (!readVolts(argv[i], options.range)) return std::string("not a range in volts: ") + shownArgv[i];
    } else if (argument == "--help" || argument == "--version") {
      options.mode = argument == "--help" ? Mode::help : Mode::version;
      return {};
    } else {
      return std::string("unknown option ") + shownArgv[i];
    }
  }
  if (options.file.empty()) return "which file? (levelview --help tells more)";
  return {};
}
