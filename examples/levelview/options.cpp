#include "options.h"

#include <charconv>
#include <cmath>
#include <string_view>

const char *const kUsage =
    "Usage: levelview [--range VOLTS] [--zoom FACTOR] [--at SECONDS] [--debug] [FILE.wav]\n"
    "       levelview --snapshot OUT.png|OUT.bmp [--size WxH] [--zoom FACTOR] [--at SECONDS] FILE.wav\n"
    "       levelview --print [--output OUT.pdf] [--range VOLTS] [--zoom FACTOR] [--at SECONDS] FILE.wav\n"
    "       levelview --report [--loudness] [--range VOLTS] [FILE.wav|FOLDER]...\n"
    "       levelview --make FILE.wav\n"
    "\n"
    "Shows wave and levels of WAV files (integer PCM, 8, 16 or 32 bits, one or two channels).\n"
    "Without a file it takes the one it showed last, with its range. Where there is no display to\n"
    "show a window on, it prints a report instead.\n"
    "\n"
    "  --report         print format, length and levels, one `key: value' a line, of each file\n"
    "                   and of the files in each folder, with a table at the end of several; on Linux\n"
    "                   of 24-bit, float, RF64, W64, AIFF, CAF, FLAC, Ogg, Opus and MP3 files too\n"
    "  --loudness       add loudness and true peaks by ITU-R BS.1770 and EBU R 128, which takes longer\n"
    "  --range VOLTS    the level that full scale stands for, 1.0 if not given\n"
    "  --print          print the report, and the wave on a second page, on the default printer; the printer\n"
    "                   PDF writes a file with the recording's name into the current folder\n"
    "  --output FILE    let the printer write this file\n"
    "  --snapshot FILE  write a picture of the window, as PNG or BMP by the name, and show nothing\n"
    "  --size WxH       width and height of the picture, 800x480 if not given\n"
    "  --zoom FACTOR    begin with a part of the file: with 2 a half of it, with 10 a tenth\n"
    "  --at SECONDS     begin with this time in the middle\n"
    "  --make           write a test signal: a tone on the first channel, a sweep on the second\n"
    "  --debug          open the debug window too, which shows what goes into the log\n"
    "  --log FILE       write a log of what was opened and refused\n"
    "  --settings FILE  keep settings there instead of in the user's folder for settings\n"
    "  --help           print this text\n"
    "  --version        print the version\n"
    "\n"
    "In the window the wheel zooms about the mouse, and moves with the shift key; a drag moves. Keys: left, right,\n"
    "page up and down, home and end move, + and - zoom, escape closes. With Ctrl: O opens another recording, as does\n"
    "dropping its file on the window, S saves a picture of the window, P prints, C copies report and picture. The\n"
    "buttons tell what they do when the pointer rests on them.\n"
    "\n"
    "Exit status: 0 when all files were shown or written, 1 when not, 2 for a wrong command line.\n";

namespace {

bool readNumber(std::string_view text, double &number) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value) || value < 0) return false;
  number = value;
  return true;
}

bool readPositive(std::string_view text, double &number) { return readNumber(text, number) && number > 0; }

bool readSize(std::string_view text, SIZE &size) {
  LONG sides[2] = {0, 0};
  const char *at = text.data(), *const end = at + text.size();
  for (LONG &side : sides) {
    const auto [next, error] = std::from_chars(at, end, side);
    if (error != std::errc() || side < 1 || side > 8192) return false;
    at = next;
    if (&side == sides && (at == end || *at++ != 'x')) return false;
  }
  size = {sides[0], sides[1]};
  return at == end;
}

// An option that stands alone.
std::optional<Mode> modeOf(std::string_view argument) {
  if (argument == "--report") return Mode::report;
  if (argument == "--print") return Mode::print;
  if (argument == "--make") return Mode::make;
  if (argument == "--help") return Mode::help;
  if (argument == "--version") return Mode::version;
  return std::nullopt;
}

// Takes an option with a value.
// Result: an error, or empty.
std::string readValue(std::string_view name, const char *value, Options &options) {
  const struct {
    std::string_view name;
    const char *needs;
    std::string *text;
  } rows[] = {{"--range", "a number of volts", nullptr},   {"--zoom", "a factor", nullptr},
              {"--at", "a number of seconds", nullptr},    {"--size", "a width and a height, as in 800x480", nullptr},
              {"--log", "a file", &options.log},           {"--settings", "a file", &options.settings},
              {"--snapshot", "a file", &options.snapshot}, {"--output", "a file", &options.output}};
  for (const auto &row : rows) {
    if (name != row.name) continue;
    if (!value || *value == '\0') return std::string(name) + " needs " + row.needs;
    if (row.text) *row.text = value;
    if (name == "--range" && !readPositive(value, options.range.emplace()))
      return "not a range in volts: " + std::string(value);
    if (name == "--zoom" && !readPositive(value, options.zoom)) return "not a factor: " + std::string(value);
    if (name == "--at" && !readNumber(value, options.at.emplace())) return "not a time: " + std::string(value);
    if (name == "--size" && !readSize(value, options.size)) return "not a size: " + std::string(value);
    return {};
  }
  return "unknown option " + std::string(name);
}

std::string checkFiles(const Options &options) {
  const size_t count = options.files.size();
  if (options.mode == Mode::make && count == 0) return "--make needs a file";
  if (options.mode == Mode::print && count == 0) return "--print needs a file";
  if (options.mode != Mode::print && !options.output.empty()) return "--output goes with --print";
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
    } else if (argument == "--loudness") {
      options.loudness = true;
    } else if (argument == "--debug") {
      options.debug = true;
    } else if (const std::optional<Mode> mode = modeOf(argument)) {
      options.mode = *mode;
      if (*mode == Mode::help || *mode == Mode::version) return {};
    } else {
      std::string error = readValue(argument, i + 1 < argc ? argv[i + 1] : nullptr, options);
      if (!error.empty()) return error;
      ++i;
    }
  }
  return checkFiles(options);
}
