#include "options.h"

#include <charconv>
#include <cmath>
#include <string_view>

const char *const kUsage =
    "Usage: levelview [--range VOLTS] [FILE.wav]\n"
    "       levelview --report [--range VOLTS] FILE.wav|FOLDER...\n"
    "       levelview --make FILE.wav\n"
    "\n"
    "Shows the levels of WAV files (integer PCM, 8, 16 or 32 bits, one or two channels).\n"
    "Without a file it takes the one it showed last, with its range.\n"
    "\n"
    "  --report         print format, length and levels, one `key: value' a line, of each file\n"
    "                   and of the files in each folder, with a table at the end of several\n"
    "  --range VOLTS    the level that full scale stands for, 1.0 if not given\n"
    "  --make           write a test signal: a tone on the first channel, a sweep on the second\n"
    "  --log FILE       write a log of what was opened and refused\n"
    "  --settings FILE  keep settings there instead of in the user's folder for settings\n"
    "  --help           print this text\n"
    "  --version        print the version\n"
    "\n"
    "Exit status: 0 when all files were shown or written, 1 when not, 2 for a wrong command line.\n";

namespace {

bool readVolts(std::string_view text, std::optional<double> &volts) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value) || value <= 0) return false;
  volts = value;
  return true;
}

// An option that stands alone.
std::optional<Mode> modeOf(std::string_view argument) {
  if (argument == "--report") return Mode::report;
  if (argument == "--make") return Mode::make;
  if (argument == "--help") return Mode::help;
  if (argument == "--version") return Mode::version;
  return std::nullopt;
}

// Takes an option with a value.
// Result: an error, or empty.
std::string readValue(std::string_view name, const char *value, Options &options) {
  const bool known = name == "--range" || name == "--log" || name == "--settings";
  if (!known) return "unknown option " + std::string(name);
  if (!value || *value == '\0')
    return std::string(name) + (name == "--range" ? " needs a number of volts" : " needs a file");
  if (name == "--log") options.log = value;
  if (name == "--settings") options.settings = value;
  if (name == "--range" && !readVolts(value, options.range)) return "not a range in volts: " + std::string(value);
  return {};
}

std::string checkFiles(const Options &options) {
  const size_t count = options.files.size();
  if (options.mode == Mode::report && count == 0) return "--report needs a file or a folder";
  if (options.mode == Mode::make && count == 0) return "--make needs a file";
  if (options.mode != Mode::report && count > 1)
    return "one file at a time, and " + options.files[1] + " is a second one";
  return {};
}

} // namespace

std::string readOptions(int argc, char **argv, Options &options) {
  bool onlyFiles = false; // behind "--"
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (onlyFiles || argument.empty() || argument[0] != '-') {
      options.files.emplace_back(argument);
    } else if (argument == "--") {
      onlyFiles = true;
    } else if (const std::optional<Mode> mode = modeOf(argument)) {
      options.mode = *mode;
      if (*mode == Mode::help || *mode == Mode::version) return {};
    } else {
      const std::string error = readValue(argument, i + 1 < argc ? argv[i + 1] : nullptr, options);
      if (!error.empty()) return error;
      ++i;
    }
  }
  return checkFiles(options);
}
