// levelview, the example application: shows the levels of WAV files.

#include "loader.h"
#include "notes.h"
#include "options.h"
#include "printout.h"
#include "report.h"
#include "settings.h"
#include "terminal.h"
#include "testsignal.h"
#include "viewer.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

namespace {

constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;

// The library lives as long as the work.
class Library {
 public:
  Library() { WqMain_Init(nullptr); }
  ~Library() { WqMain_Term(); }
  Library(const Library &) = delete;
  Library &operator=(const Library &) = delete;
};

// The debug window belongs to the library too, and lives in the settings.
class DebugWindow {
 public:
  DebugWindow() { WqDbgWnd_Init(); }
  ~DebugWindow() { WqDbgWnd_Term(); }
  DebugWindow(const DebugWindow &) = delete;
  DebugWindow &operator=(const DebugWindow &) = delete;
};

// Tells of a file that was opened or refused, and logs it.
// refused: why; empty when it was opened.
bool taken(const std::string &file, uint64_t frames, const std::string &refused) {
  noteOpening(file, frames, refused);
  if (!refused.empty()) complain(file + ": " + refused);
  return refused.empty();
}

// Reads and measures a file.
std::optional<Report> open(const std::string &file, bool loudness) {
  const OpenedSource opened = openSource(file);
  if (!taken(file, opened.source ? opened.source->info().frames : 0, opened.refusal)) return std::nullopt;
  Report report = measure(file, *opened.source);
  if (!loudness) return report;
  const OpenedSource again = openSource(file); // it is read once more
  if (again.source) report.loudness = measureLoudness(*again.source);
  if (!report.loudness) {
    complain(file + ": its loudness can't be measured");
    return report;
  }
  for (size_t channel = 0; channel < report.channels.size(); ++channel)
    report.channels[channel].truePeak = report.loudness->truePeaks[channel];
  return report;
}

int askWhich() {
  complain("which file? (levelview --help tells more)");
  return kWrongCommandLine;
}

bool isFolder(const std::string &name) {
  const DWORD attributes = GetFileAttributesA(name.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// The files that the arguments name: themselves, and the WAV files of folders.
std::vector<std::string> expand(const std::vector<std::string> &names) {
  std::vector<std::string> files;
  for (const std::string &name : names) {
    if (!isFolder(name)) {
      files.push_back(name);
      continue;
    }
    WqList *found = WqDir_Collect(name.c_str(), "*.wav");
    for (const WqList *node = found; node; node = node->next) {
      const char *file = reinterpret_cast<const char *>(node->data);
      if (!isFolder(file)) files.emplace_back(file);
    }
    WqList_RemoveAllWith(found);
  }
  return files;
}

int report(const Options &options) {
  Settings settings;
  if (options.files.empty()) settings.load(options.settings);
  if (options.files.empty() && settings.lastFile.empty()) return askWhich();
  WqUnit_SetRange(options.range.value_or(settings.range));
  const std::vector<std::string> files = expand(options.files.empty() ? std::vector{settings.lastFile} : options.files);
  const bool several = files.size() != 1;
  if (files.empty()) complain(options.files[0] + ": no WAV files");
  std::vector<Report> reports;
  for (const std::string &file : files) {
    const std::optional<Report> told = open(file, options.loudness);
    if (!told) continue;
    if (several) std::printf("file: %s\n", shown(file).c_str());
    std::fputs(reportText(*told).c_str(), stdout);
    if (several) std::puts("");
    reports.push_back(*told);
  }
  if (several && !reports.empty()) printTable(reports, stdout);
  return !files.empty() && reports.size() == files.size() ? EXIT_SUCCESS : kFailed;
}

// Opens a file for a window or a print. Result: whether it was opened.
bool openScene(const Options &options, const std::string &file, Scene &scene) {
  const std::string refused = scene.recording.open(file.c_str());
  if (!taken(file, refused.empty() ? scene.recording.foundFrames() : 0, refused)) return false;
  scene.name = nameIn(file);
  scene.startZoom = options.zoom;
  scene.startTime = options.at;
  return true;
}

// Shows a file in a window, or writes a picture of that.
// viewer: takes the viewer, whose window objects have to stay until the library ends.
bool showWindow(const Options &options, const std::string &file, Settings &settings, std::unique_ptr<Viewer> &viewer) {
  Scene scene;
  if (!openScene(options, file, scene)) return false;
  viewer = std::make_unique<Viewer>(scene, settings);
  if (options.snapshot.empty() ? viewer->run() : viewer->snapshot(options.snapshot, options.size)) return true;
  complain(options.snapshot.empty() ? "no window could be opened" : options.snapshot + ": cannot write");
  return false;
}

bool showReport(const std::string &file) {
  const std::optional<Report> told = open(file, false);
  if (told) std::fputs(reportText(*told).c_str(), stdout);
  return told.has_value();
}

// Shows one file, and remembers it with its range for the next time.
int view(const Options &options, Settings &settings, std::unique_ptr<Viewer> &viewer) {
  settings.debug = options.debug;
  std::optional<DebugWindow> debugWindow;
  if (options.debug) debugWindow.emplace();
  settings.load(options.settings); // which makes that window, at its place
  if (options.debug) WqDbgWnd_Show(1);
  if (options.range) settings.range = *options.range;
  if (!options.files.empty()) settings.lastFile = fullName(options.files[0]);
  if (settings.lastFile.empty()) return askWhich();
  WqUnit_SetRange(settings.range);
  const std::string &file = options.files.empty() ? settings.lastFile : options.files[0];
  const bool hasWindow = !options.snapshot.empty() || platformHasDisplay();
  if (!(hasWindow ? showWindow(options, file, settings, viewer) : showReport(file))) return kFailed;
  if (!settings.save(options.settings)) complain("the settings could not be kept");
  return EXIT_SUCCESS;
}

// Reads and prints a file, without a window.
int print(const Options &options) {
  const std::string &file = options.files[0];
  WqUnit_SetRange(options.range.value_or(1.0));
  Scene scene;
  if (!openScene(options, file, scene)) return kFailed;
  const Look look;
  scene.visible.setWidth(look.usual.cx);
  for (Loader loader(scene); loader.step();) {}
  const std::string failed = printUnattended(Printout(scene, look), stemOf(file), options.output);
  if (failed.empty()) return EXIT_SUCCESS;
  complain((options.output.empty() ? file : options.output) + ": " + failed);
  return kFailed;
}

int make(const Options &options) {
  if (makeTestSignal(options.files[0].c_str())) return EXIT_SUCCESS;
  complain(options.files[0] + ": cannot write");
  return kFailed;
}

int run(const Options &options, Settings &settings, std::unique_ptr<Viewer> &viewer) {
  switch (options.mode) {
  case Mode::help: std::fputs(kUsage, stdout); return EXIT_SUCCESS;
  case Mode::version: std::puts("levelview " LEVELVIEW_VERSION); return EXIT_SUCCESS;
  case Mode::make: return make(options);
  case Mode::report: return report(options);
  case Mode::print: return print(options);
  case Mode::view: break;
  }
  return view(options, settings, viewer);
}

} // namespace

int main() {
  Options options;
  const std::string wrong = readOptions(__argc, __argv, options);
  if (!wrong.empty()) {
    complain(wrong);
    return kWrongCommandLine;
  }
  SetProcessDPIAware(); // sizes come from millimetres and points, and the bar has pictures for fine displays
  // the viewer refers to the settings, and outlives the library
  Settings settings;
  std::unique_ptr<Viewer> viewer;
  const Library library;
  const int status = run(options, settings, viewer);
  if (!options.log.empty()) WqLog_Out(options.log.c_str());
  return status;
}
