// The event log, settings, and a long file read whole. All files stay in the page cache, and the program removes them.

#include "wq.h"

#include <benchmark/benchmark.h>

#ifdef HAVE_SPDLOG
#include <spdlog/logger.h>
#include <spdlog/sinks/ringbuffer_sink.h>
#endif
#ifdef HAVE_QT
#include <QSettings>
#include <QString>
#endif
#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>
#include <vector>

namespace {

constexpr uint32_t kRecords = 32768; // the capacity of the log
constexpr uint32_t kKeys = 1000;
constexpr uint32_t kSize = 500'000'000; // bytes of the long file

// A folder for the files of this program.
class Folder {
 public:
  Folder() {
    std::error_code error;
    path_ = std::filesystem::temp_directory_path(error) / ("wq_benchmark_" + std::to_string(std::random_device()()));
    std::filesystem::create_directory(path_, error);
  }
  ~Folder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  Folder(const Folder &) = delete;
  Folder &operator=(const Folder &) = delete;

  std::string file(const char *name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

const Folder &folder() {
  static const Folder made;
  return made;
}

std::string contentOf(const std::string &name) {
  std::ifstream in(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// ---- The log

// A message of usual length, and one that nearly fills a line of the dump.
const std::string &message(size_t length) {
  static const std::string usual(60, 'm');
  static const std::string longest(220, 'M');
  return length == usual.size() ? usual : longest;
}

void fillLog(size_t length) {
  for (uint32_t i = 0; i < kRecords; ++i) WqLog_Add(WQ_LOG_COMMENT, message(length).c_str(), 0);
}

// Both logs are full, so each new event replaces the oldest.
void addOurs(benchmark::State &state) {
  const std::string &text = message(60);
  fillLog(text.size());
  for (auto _ : state) WqLog_Add(WQ_LOG_COMMENT, text.c_str(), 0);
}

#ifdef HAVE_SPDLOG
void addSpdlog(benchmark::State &state) {
  spdlog::logger log("benchmark", std::make_shared<spdlog::sinks::ringbuffer_sink_mt>(kRecords));
  const std::string &text = message(60);
  for (uint32_t i = 0; i < kRecords; ++i) log.info(text);
  for (auto _ : state) log.info(text);
}
#endif

void dumpOurs(benchmark::State &state) {
  const std::string name = folder().file("log.txt");
  fillLog(220);
  for (auto _ : state) WqLog_Out(name.c_str());
  const std::string dump = contentOf(name);
  if (dump.size() < kRecords * message(220).size()) state.SkipWithError("the dump is not whole");
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(dump.size()));
}

// Writes the finished lines one by one.
void dumpPlain(benchmark::State &state) {
  const std::string name = folder().file("lines.txt");
  fillLog(220);
  WqLog_Out(name.c_str());
  const std::string dump = contentOf(name);
  for (auto _ : state) {
    std::FILE *file = std::fopen(name.c_str(), "wb");
    if (!file) return state.SkipWithError("no file");
    for (size_t start = 0, end; start < dump.size(); start = end) {
      end = dump.find('\n', start) + 1;
      std::fwrite(dump.data() + start, 1, end - start, file);
    }
    std::fclose(file);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(dump.size()));
}

// ---- Settings

const std::vector<std::string> &keys() {
  static const std::vector<std::string> made = [] {
    std::vector<std::string> names;
    for (uint32_t i = 0; i < kKeys; ++i) names.push_back("key" + std::to_string(i));
    return names;
  }();
  return made;
}

constexpr char kValue[] = "a value";

void saveOurs(const std::string &name) {
  WqCfg cfg;
  WqCfg_Init(&cfg);
  WqCfg_Path(&cfg, name.c_str());
  WqCfg_Sect(&cfg, "section");
  WqCfg_Write(&cfg, WQ_CFG_WRITE);
  char value[sizeof kValue];
  std::memcpy(value, kValue, sizeof kValue);
  for (const std::string &key : keys()) WqCfg_Str(&cfg, key.c_str(), value, nullptr, 0);
}

size_t loadOurs(const std::string &name) {
  WqCfg cfg;
  WqCfg_Init(&cfg);
  WqCfg_Path(&cfg, name.c_str());
  WqCfg_Sect(&cfg, "section");
  size_t length = 0;
  char value[80];
  for (const std::string &key : keys()) length += WqCfg_Str(&cfg, key.c_str(), value, nullptr, sizeof value);
  return length;
}

#ifdef HAVE_QT
template <bool EachTime> void saveQt(const std::string &name) {
  QSettings settings(QString::fromStdString(name), QSettings::IniFormat);
  settings.beginGroup(QStringLiteral("section"));
  for (const std::string &key : keys()) {
    settings.setValue(QString::fromStdString(key), QString::fromLatin1(kValue));
    if (EachTime) settings.sync();
  }
  settings.sync();
}

template <bool EachTime> size_t loadQt(const std::string &name) {
  QSettings settings(QString::fromStdString(name), QSettings::IniFormat);
  settings.beginGroup(QStringLiteral("section"));
  size_t length = 0;
  for (const std::string &key : keys()) {
    if (EachTime) settings.sync();
    length += settings.value(QString::fromStdString(key)).toString().toStdString().size();
  }
  return length;
}
#endif

void saving(benchmark::State &state, void (*save)(const std::string &name)) {
  const std::string name = folder().file("saved.ini");
  for (auto _ : state) {
    state.PauseTiming();
    std::remove(name.c_str());
    state.ResumeTiming();
    save(name);
  }
  if (loadOurs(name) != kKeys * (sizeof kValue - 1)) state.SkipWithError("not all keys were saved");
}

void loading(benchmark::State &state, size_t (*load)(const std::string &name)) {
  const std::string name = folder().file("loaded.ini");
  if (!std::filesystem::exists(name)) saveOurs(name);
  size_t length = 0;
  for (auto _ : state) length += load(name);
  if (length != static_cast<size_t>(state.iterations()) * kKeys * (sizeof kValue - 1))
    state.SkipWithError("not all keys were loaded");
}

// ---- A long file, read into existing memory

std::vector<char> &room() {
  static std::vector<char> made(kSize);
  return made;
}

size_t readOurs(const std::string &name) {
  WqFile file;
  WqFile_Init(&file);
  WqFile_Path(&file, name.c_str());
  WqFile_ReadOpen(&file);
  const uint32_t count = WqFile_Read(&file, room().data(), kSize);
  WqFile_Term(&file);
  return count;
}

#ifndef _WIN32
size_t readPlain(const std::string &name) {
  const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC);
  const ssize_t count = read(file, room().data(), kSize);
  close(file);
  return count > 0 ? static_cast<size_t>(count) : 0;
}
#endif

void reading(benchmark::State &state, size_t (*read)(const std::string &name)) {
  const std::string name = folder().file("long.bin");
  if (!std::filesystem::exists(name)) std::ofstream(name, std::ios::binary).write(room().data(), kSize);
  for (auto _ : state)
    if (read(name) != kSize) state.SkipWithError("the file could not be read whole");
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(kSize));
}

const bool registered = [] {
  const auto add = [](const char *name, auto... run) {
    return benchmark::RegisterBenchmark(name, run...)->UseRealTime();
  };
  const auto addOnce = [&](const char *name, auto... run) { add(name, run...)->Iterations(1); };
  add("log, one event/ours", addOurs);
#ifdef HAVE_SPDLOG
  add("log, one event/spdlog", addSpdlog);
#endif
  add("log dump, 8 MB/ours", dumpOurs);
  add("log dump, 8 MB/fwrite", dumpPlain);
  addOnce("settings, save 1,000 keys/ours", saving, saveOurs);
#ifdef HAVE_QT
  addOnce("settings, save 1,000 keys/QSettings, each", saving, saveQt<true>);
  addOnce("settings, save 1,000 keys/QSettings, once", saving, saveQt<false>);
#endif
  addOnce("settings, load 1,000 keys/ours", loading, loadOurs);
#ifdef HAVE_QT
  addOnce("settings, load 1,000 keys/QSettings, each", loading, loadQt<true>);
  addOnce("settings, load 1,000 keys/QSettings, once", loading, loadQt<false>);
#endif
  addOnce("file read, 500 MB/ours", reading, readOurs);
#ifndef _WIN32
  addOnce("file read, 500 MB/read", reading, readPlain);
#endif
  return true;
}();

} // namespace
