// The example as its users see it: what it prints, its exit status, and the one line of a failure.

#include "support/desktop.h"
#include "support/files.h"
#include "support/program.h"
#include "wq.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

std::string number(uint32_t value, size_t bytes) {
  std::string text;
  for (size_t i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i);
  return text;
}

// A WAV file to be: samples as signed numbers, the channels in turn, and a header that may say anything.
struct Signal {
  uint32_t rate = 48000;
  uint16_t bits = 16, channels = 2;
  std::vector<int64_t> samples;

  std::string data() const {
    std::string bytes;
    for (const int64_t sample : samples)
      bytes += number(static_cast<uint32_t>(bits == 8 ? sample + 128 : sample), bits / 8u);
    return bytes;
  }
  std::string header(uint32_t dataSize, const std::string &between = "", uint16_t tag = 1) const {
    const uint32_t block = bits / 8u * channels;
    return "RIFF" + number(dataSize + 36, 4) + "WAVEfmt " + number(16, 4) + number(tag, 2) + number(channels, 2) +
           number(rate, 4) + number(rate * block, 4) + number(block, 2) + number(bits, 2) + between + "data" +
           number(dataSize, 4);
  }
  std::string file(const std::string &between = "") const {
    return header(static_cast<uint32_t>(data().size()), between) + data();
  }
};

// Noise over the whole range of a sample on the first channel, quieter and off centre on the second.
Signal noise(uint32_t rate, uint16_t bits, uint16_t channels, uint32_t frames) {
  Signal signal = {rate, bits, channels, {}};
  const int64_t fullScale = INT64_C(1) << (bits - 1);
  uint32_t random = 12345;
  for (uint32_t i = 0; i < frames * channels; ++i) {
    random = random * 1664525 + 1013904223;
    const int64_t value = static_cast<int64_t>(random >> (32 - bits)) - fullScale;
    signal.samples.push_back(channels == 2 && i % 2 == 1 ? value / 3 - fullScale / 7 : value);
  }
  return signal;
}

// Each line of a report, in a hand of the test's own.
std::string expectedReport(const Signal &signal, double range) {
  std::string report;
  const auto line = [&](const std::string &key, double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    report += key + ": " + (std::isinf(value) ? "-inf" : text) + "\n";
  };
  const auto frames = static_cast<double>(signal.samples.size() / signal.channels);
  report += "format: WAV, " + std::to_string(signal.bits) + "-bit PCM\n";
  line("rate", signal.rate, 0), line("channels", signal.channels, 0), line("bits", signal.bits, 0);
  line("frames", frames, 0), line("bytes", static_cast<double>(signal.data().size()), 0);
  line("duration_ms", frames * 1000 / signal.rate, 3);
  for (size_t channel = 0; channel < signal.channels; ++channel) {
    double peak = 0, squares = 0, sum = 0;
    int clipped = 0;
    for (size_t i = channel; i < signal.samples.size(); i += signal.channels) {
      const double value = std::ldexp(static_cast<double>(signal.samples[i]), 1 - signal.bits);
      peak = std::fmax(peak, std::fabs(value));
      squares += value * value;
      sum += value;
      clipped += value == -1 || value == 1 - std::ldexp(1, 1 - signal.bits);
    }
    const double rms = std::sqrt(squares / frames);
    const std::string name = "ch" + std::to_string(channel + 1) + ".";
    line(name + "peak_v", peak * range, 6), line(name + "rms_v", rms * range, 6);
    line(name + "peak_dbv", 20 * std::log10(peak * range), 2), line(name + "rms_dbv", 20 * std::log10(rms * range), 2);
    line(name + "peak_db", 20 * std::log10(peak), 2);
    line(name + "peak_percent", peak * 100, 2), line(name + "rms_percent", rms * 100, 2);
    line(name + "crest_db", rms > 0 ? 20 * std::log10(peak / rms) : 0, 2);
    line(name + "dc_percent", sum / frames * 100, 4), line(name + "clipped", clipped, 0);
  }
  return report;
}

// The text behind `key: ' in a report.
std::string valueOf(const std::string &report, const std::string &key) {
  const size_t at = ('\n' + report).find('\n' + key + ": ");
  if (at == std::string::npos) return "(none)";
  const size_t from = at + key.size() + 2;
  return report.substr(from, report.find('\n', from) - from);
}

class LevelviewTest : public testing::Test {
 protected:
  std::string stored(const std::string &content, const std::string &name = "in.wav") {
    writeFile(folder_.file(name), content);
    return folder_.file(name);
  }
  // What a run that has to succeed prints.
  static std::string report(const std::string &name, std::vector<std::string> options = {"--report"}) {
    options.push_back(name);
    const ProgramResult result = runProgram("levelview", options);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    return result.out;
  }
  static void expectFailure(const ProgramResult &result, int status, const std::string &name,
                            const std::string &reason) {
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find(name), std::string::npos) << result.err;
    EXPECT_NE(result.err.find(reason.empty() ? ": " : ": " + reason + "\n"), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << "one line: " << result.err;
  }
  TempFolder folder_;
};

} // namespace

TEST_F(LevelviewTest, ReportsLevels) {
  // clang-format off
  std::vector<Signal> signals = {
      {8000, 8, 1, {-128}}, {8000, 16, 1, {-32768, -32768}}, {1, 32, 2, {0, INT32_MIN}}, // full scale
      {8000, 8, 2, {0, 1, 0, 1}}, {8000, 16, 2, {9, 0, -9, 0}}, {8000, 32, 1, {0}}, // silence
      {8000, 8, 1, {64, 0, 0, -64}}, {8000, 32, 1, {-1}}};
  // clang-format on
  for (const uint16_t bits : {uint16_t{8}, uint16_t{16}, uint16_t{32}})
    for (const uint16_t channels : {uint16_t{1}, uint16_t{2}}) signals.push_back(noise(44100, bits, channels, 777));
  const std::string list = "LIST" + number(14, 4) + "INFOISFT" + number(2, 4) + "xy";
  for (const Signal &signal : signals) {
    EXPECT_EQ(report(stored(signal.file())), expectedReport(signal, 1.0));
    const std::string name = stored(signal.file(list) + list, "with list.wav");
    EXPECT_EQ(report(name, {"--report", "--range", "12.5"}), expectedReport(signal, 12.5));
  }
}

TEST_F(LevelviewTest, ReportsWhatATruncatedFileHolds) {
  for (const uint32_t declared : {404u, 0u, UINT32_MAX}) // the last two by a recorder that was killed
    for (const uint16_t bits : {uint16_t{8}, uint16_t{16}}) {
      SCOPED_TRACE(testing::Message() << declared << " bytes, " << bits << " bits");
      const Signal signal = noise(8000, bits, bits == 8 ? 1 : 2, 100);
      const std::string held = signal.data();
      std::string out = report(stored(signal.header(declared) + held));
      const std::string found = std::to_string(held.size());
      const std::string expected = declared == 404
                                       ? "truncated: declared 404 bytes, found " + found + "\n"
                                       : "unfinished: the header tells no length, found " + found + " bytes\n";
      const size_t at = out.find(expected);
      ASSERT_NE(at, std::string::npos) << out;
      EXPECT_EQ(out.erase(at, expected.size()), expectedReport(signal, 1.0));
    }
  // A last frame that is there in part counts as bytes, not as a frame. Where no more is declared, nothing is missing.
  const Signal signal = {8000, 16, 2, {100, 200, 300, 400}};
  for (const auto &[declared, missing, sizes] :
       {std::tuple(12u, "declared 12 bytes, found 11", "2 11"), {11u, "(none)", "2 11"}}) {
    const std::string out = report(stored(signal.header(declared) + signal.data() + "xyz"));
    EXPECT_EQ(valueOf(out, "truncated"), missing);
    EXPECT_EQ(valueOf(out, "frames") + " " + valueOf(out, "bytes"), sizes);
    EXPECT_EQ(valueOf(out, "ch2.peak_percent"), "1.22");
  }
}

TEST_F(LevelviewTest, TellsWhyAFileIsRefused) {
  const Signal sound = {8000, 16, 2, {1, 2, 3, 4}};
  const std::string file = sound.file();
  const std::pair<std::string, std::string> rows[] = {
      {"Just some text, longer than any header of a sound file would be.", "not RIFF/WAVE"},
      {file.substr(0, 8) + "AVI " + file.substr(12), "not RIFF/WAVE"},
      {file.substr(0, 11), "not RIFF/WAVE"},
      {sound.header(8, "", 0xFFFE) + sound.data(), "format tag 65534"},
      {Signal{8000, 16, 0, {}}.header(8), "0 channels"},
      {Signal{8000, 16, 258, {}}.header(8), "258 channels"},
      {file.substr(0, 36), "no data chunk"},
      {file.substr(0, 36) + "dadata" + file.substr(40), "no data chunk"},
      {sound.header(8), "no samples"},
      {sound.header(3) + "abc", "no samples"},
      {file.substr(0, 42), "no samples"},
      // whose reasons are told in more words
      {file.substr(0, 14), ""},
      {file.substr(0, 35), ""},
      {file.substr(0, 32) + number(2, 2) + file.substr(34), ""},
  };
  for (const auto &[content, reason] : rows) {
    SCOPED_TRACE(reason);
    const std::string name = stored(content, "refused file.wav");
    expectFailure(runProgram("levelview", {"--report", name}), 1, name, reason);
  }
  for (const std::string &name : {folder_.file("missing.wav"), folder_.path()})
    expectFailure(runProgram("levelview", {"--settings", folder_.file("none.ini"), name}), 1, name, "cannot open");
}

// Other files than plain ones. A reader that looks for the word "data" alone would take the wrong one in a list.
TEST_F(LevelviewTest, ReportsFilesThatTheLibraryDoesNotRead) {
  if (onWindows()) GTEST_SKIP() << "libsndfile isn't there";
  const Signal plain = {8000, 16, 2, {100, 200, -300, 400}};
  const std::string file = plain.file(), list = "LIST" + number(16, 4) + "INFOICMT" + number(4, 4) + "data";
  for (const std::string &content : {file.substr(0, 12) + list + file.substr(12), plain.file(list)}) {
    const std::string out = report(stored(content));
    EXPECT_EQ(valueOf(out, "frames") + " " + valueOf(out, "ch2.peak_percent"), "2 1.22") << out;
  }
  const Signal packed = {48000, 24, 1, {0x7FFFFF, -0x800000, 0, 0x400000}};
  for (const uint32_t declared : {12u, 0u}) {
    const std::string out = report(stored(packed.header(declared) + packed.data()));
    EXPECT_EQ(valueOf(out, "bits") + " " + valueOf(out, "frames") + " " + valueOf(out, "bytes"), "24 4 12");
    EXPECT_EQ(valueOf(out, "ch1.clipped") + " " + valueOf(out, "ch1.peak_percent") + " " +
                  valueOf(out, "ch1.rms_percent"),
              "2 100.00 75.00");
    EXPECT_EQ(valueOf(out, "unfinished") == "(none)", declared != 0);
  }
  const std::string rest = stored(file, "pipe.wav");
  const std::string told = folder_.file("told.txt");
  EXPECT_EQ(std::system(("cat " + rest + " | ./levelview --report /dev/stdin > " + told).c_str()), 0);
  EXPECT_EQ(valueOf(readFile(told), "frames"), "2") << readFile(told);
}

// 20 seconds of a tone at -23 dBFS are -23 LUFS, within the tenth that EBU Tech 3341 allows.
TEST_F(LevelviewTest, MeasuresLoudness) {
  if (onWindows()) GTEST_SKIP() << "libebur128 isn't there";
  Signal tone = {48000, 16, 2, {}};
  for (int i = 0; i < 2 * 20 * 48000; ++i)
    tone.samples.push_back(
        std::lround(32768 * std::pow(10, -23 / 20.0) * std::sin(2 * 3.14159265358979 * 1000 * (i / 2) / 48000)));
  const std::string out = report(stored(tone.file()), {"--report", "--loudness"});
  EXPECT_NEAR(std::atof(valueOf(out, "loudness_lufs").c_str()), -23, 0.1);
  EXPECT_NEAR(std::atof(valueOf(out, "ch1.true_peak_dbtp").c_str()), -23, 0.2);
}

// Several files and the WAV files of a folder: each file's report under its name, then a table; what is refused is told
// and logged, and the rest goes on.
TEST_F(LevelviewTest, ReportsFilesAndFolders) {
  const Signal loud = {8000, 8, 1, {-128, 127}}, quiet = {48000, 16, 2, {0, 328, 0, -328}};
  const std::string first = stored(loud.file(), "a.wav"), second = stored(quiet.file(), "b.WAV");
  const std::string broken = stored("no sound", "c.wav"), log = folder_.file("log.txt");
  stored("not asked for", "notes.txt");
  ASSERT_TRUE(WqDir_Create(folder_.file("d.wav").c_str()));
  const std::string here = folder_.path() + "\\";
  const ProgramResult result = runProgram("levelview", {"--report", "--log", log, folder_.path(), first});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "levelview: " + here + "c.wav: not RIFF/WAVE\n");
  const std::string table = "      rate  ch bits    duration_ms  peak_dbv   rms_dbv  file\n";
  const std::string firstLine = "      8000   1    8          0.250      0.00     -0.03  ";
  const std::string secondLine = "     48000   2   16          0.042    -39.99    -39.99  ";
  EXPECT_EQ(result.out, "file: " + here + "a.wav\n" + expectedReport(loud, 1.0) + "\nfile: " + here + "b.WAV\n" +
                            expectedReport(quiet, 1.0) + "\nfile: " + first + "\n" + expectedReport(loud, 1.0) + "\n" +
                            table + firstLine + here + "a.wav\n" + secondLine + here + "b.WAV\n" + firstLine + first +
                            "\n");
  const std::string logged = readFile(log);
  EXPECT_NE(logged.find("opened " + here + "a.wav: 2 frames"), std::string::npos) << logged;
  EXPECT_NE(logged.find("refused " + here + "c.wav: not RIFF/WAVE"), std::string::npos) << logged;

  const TempFolder empty;
  expectFailure(runProgram("levelview", {"--report", empty.path()}), 1, empty.path(), "no WAV files");
  EXPECT_EQ(runProgram("levelview", {"--report", first, second}).status, 0);
}

// The file shown last and its range are there again. Where there is a display a window shows it, which is closed here.
TEST_F(LevelviewTest, RemembersTheLastFileAndItsRange) {
  const Signal signal = noise(8000, 16, 1, 50);
  const std::string name = stored(signal.file()), settings = folder_.file("new folder/levelview.ini");
  const auto view = [&](std::vector<std::string> options) {
    options.insert(options.begin(), {"--settings", settings});
    BackgroundProgram program("levelview", options);
    for (; program.running(); Sleep(20))
      if (const HWND window = FindWindowA("WQ_WND_CLASS", nullptr)) PostMessageA(window, WM_CLOSE, 0, 0);
    return program.wait();
  };
  const auto last = [&] { return runProgram("levelview", {"--settings", settings, "--report"}); };
  expectFailure(last(), 2, "levelview", "");
  EXPECT_EQ(view({}), 2);
  EXPECT_EQ(view({name}), 0);
  EXPECT_EQ(last().out, expectedReport(signal, 1.0));
  EXPECT_EQ(view({"--range", "0.1"}), 0);
  EXPECT_EQ(last().out, expectedReport(signal, 0.1));
  EXPECT_EQ(view({folder_.file("missing.wav")}), 1);
  EXPECT_EQ(last().out, expectedReport(signal, 0.1)) << "a refused file is not remembered";
  EXPECT_EQ(report(name), expectedReport(signal, 1.0)) << "a report of a file stands alone";
  writeFile(settings, "[View]\r\nRange=none\r\n");
  EXPECT_EQ(view({name}), 0);
  EXPECT_EQ(last().out, expectedReport(signal, 1.0));
}

TEST_F(LevelviewTest, WritesAPictureOfItsWindow) {
  const std::string name = stored(noise(8000, 16, 1, 50).file()), picture = folder_.file("picture.png");
  const std::string settings = folder_.file("none.ini"), log = folder_.file("log.txt");
  for (const char *size : {"0x9", "9", "9x", "x9", "9x9x9", "9x9999", "-9x9"})
    expectFailure(runProgram("levelview", {"--size", size, "--snapshot", picture, name}), 2, "levelview", "");
  const ProgramResult result =
      runProgram("levelview", {"--settings", settings, "--log", log, "--snapshot", picture, "--size", "311x207", name});
  EXPECT_NE(readFile(log).find("opened "), std::string::npos) << "what came before the window";
  if (result.err.find("cannot write") != std::string::npos) GTEST_SKIP() << "no pictures on this system";
  EXPECT_EQ(result.out + result.err, "");
  EXPECT_EQ(readFile(picture).substr(0, 24), "\x89PNG\r\n\x1A\n" + std::string("\0\0\0\rIHDR\0\0\1\x37\0\0\0\xCF", 16));
  const std::string nowhere = folder_.file("no folder/a.png");
  expectFailure(runProgram("levelview", {"--settings", settings, "--snapshot", nowhere, name}), 1, nowhere, "");
}

// A picture shows the wave, and the part of it that is asked for.
TEST_F(LevelviewTest, PicturesShowWhatIsInTheFile) {
  const std::string settings = folder_.file("none.ini"), picture = folder_.file("picture.png");
  const auto taken = [&](const Signal &signal, std::vector<std::string> options) {
    options.insert(options.end(), {"--settings", settings, "--snapshot", picture, stored(signal.file())});
    const ProgramResult result = runProgram("levelview", options);
    return result.status == 0 ? readFile(picture) : result.err;
  };
  const Signal signal = noise(8000, 16, 2, 9000), silence = {8000, 16, 2, std::vector<int64_t>(18000)};
  const std::string whole = taken(signal, {}), part = taken(signal, {"--zoom", "20"});
  if (whole.find("cannot write") != std::string::npos) GTEST_SKIP() << "no pictures on this system";
  EXPECT_NE(taken(silence, {}), whole);
  EXPECT_EQ(taken(signal, {"--zoom", "20", "--at", "0.5625"}), part) << "the middle";
  EXPECT_NE(taken(signal, {"--zoom", "20", "--at", "0.9"}), part);
  EXPECT_EQ(taken(noise(8000, 8, 1, 1), {"--size", "1x1"}).substr(1, 3), "PNG");
}

// The terminal's encoding need not be the library's: the name has to reach the file, and to come back as it was typed.
TEST_F(LevelviewTest, TakesAndShowsJapaneseNames) {
  // In UTF-8 one character, which code page 932 writes with a backslash byte; in code page 932 two characters.
  const std::string name = folder_.file("\xE3\x82\xBD.wav");
  expectFailure(runProgram("levelview", {name}), 1, name, "cannot open");
  const Signal signal = {8000, 16, 1, {5, -6}};
  std::ofstream out(name, std::ios::binary);
  if (!out) GTEST_SKIP() << "no such names on this system";
  out << signal.file() << std::flush;
  EXPECT_EQ(report(name), expectedReport(signal, 1.0));
}

TEST_F(LevelviewTest, CommandLinesRightAndWrong) {
  const Signal signal = noise(8000, 16, 1, 50);
  const std::string name = stored(signal.file(), "a file.wav");
  // @ stands for the file, _ for an empty argument
  const std::string settings = folder_.file("none.ini");
  // clang-format off
  for (const char *line : {
           "", "--report", "--make", "--range 2", "--range", "@ --range", "--loud @", "-r @", "- @", "@ @", "--make @ @",
           "--range 0 @", "--range -1 @", "--range one @", "--range 1V @", "--range _ @", "--range inf @",
           "--range nan @", "--range 1e999 @", "@ --log", "--log _ @", "--zoom 0 @", "--at -1 @", "@ --settings"}) {
    // clang-format on
    SCOPED_TRACE(line);
    std::vector<std::string> arguments = {"--settings", settings};
    std::istringstream words(line);
    for (std::string word; words >> word;) arguments.push_back(word == "@" ? name : word == "_" ? "" : word);
    expectFailure(runProgram("levelview", arguments), 2, "levelview", "");
  }
  EXPECT_EQ(readFile(name), signal.file()) << "a wrong command line writes nothing";
  EXPECT_FALSE(fileExists(settings));
  EXPECT_EQ(report(name, {"--report", "--range", "2.5", "--"}), expectedReport(signal, 2.5));
  EXPECT_EQ(runProgram("levelview", {name, "--report", "--range", "1e2"}).out, expectedReport(signal, 100));

  const ProgramResult help = runProgram("levelview", {"--help"});
  for (const char *option :
       {"--report", "--range", "--zoom", "--at", "--make", "--log", "--settings", "--help", "--version"})
    EXPECT_NE(help.out.find(option), std::string::npos) << option;
  const ProgramResult version = runProgram("levelview", {"--version"});
  unsigned numbers[3];
  EXPECT_EQ(std::sscanf(version.out.c_str(), "levelview %u.%u.%u", &numbers[0], &numbers[1], &numbers[2]), 3);
  EXPECT_EQ(help.err + version.err + std::to_string(help.status + version.status), "0");
}

TEST_F(LevelviewTest, MakesATestSignal) {
  const std::string name = stored("an older file", "test signal.wav");
  EXPECT_EQ(report(name, {"--make"}), "");
  const std::string file = readFile(name);
  ASSERT_EQ(file.size(), 44 + 48000u * 5 * 4);
  // Turns of a channel's sign from minus to plus in one of the five seconds.
  const auto turns = [&](uint32_t channel, uint32_t second) {
    const auto at = [&](uint32_t frame) {
      const size_t offset = 44 + frame * 4 + channel * 2;
      return static_cast<int16_t>(static_cast<uint8_t>(file[offset]) | static_cast<uint8_t>(file[offset + 1]) << 8);
    };
    int count = 0;
    for (uint32_t frame = second * 48000 + 1; frame < (second + 1) * 48000; ++frame)
      count += at(frame - 1) < 0 && at(frame) >= 0;
    return count;
  };
  for (const uint32_t second : {0u, 1u, 4u}) EXPECT_NEAR(turns(0, second), 1000, 1) << second;
  EXPECT_LT(turns(1, 0), 100) << "the sweep starts low";
  EXPECT_GT(turns(1, 4), 7000) << "and ends high";

  const std::string out = report(name);
  EXPECT_EQ(out.rfind("format: WAV, 16-bit PCM\nrate: 48000\nchannels: 2\nbits: 16\nframes: 240000\n", 0), 0u) << out;
  EXPECT_EQ(valueOf(out, "ch1.peak_v") + " " + valueOf(out, "ch1.rms_dbv"), "0.500000 -9.03");
  EXPECT_EQ(valueOf(out, "duration_ms") + " " + valueOf(out, "ch2.peak_percent"), "5000.000 50.00");

  const std::string nowhere = folder_.file("no folder/a.wav");
  expectFailure(runProgram("levelview", {"--make", nowhere}), 1, nowhere, "");
}
