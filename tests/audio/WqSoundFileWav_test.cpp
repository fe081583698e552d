// WAV files as streams: the one form of header that is written, and which of the many forms of it are read.

#include "support/files.h"
#include "support/library.h"

#include <cstring>
#include <filesystem>
#include <vector>

namespace {

using namespace std::string_literals; // for texts that hold zero bytes

std::string number(uint32_t value, size_t bytes) {
  std::string text;
  for (size_t i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i);
  return text;
}

std::string chunk(const std::string &id, const std::string &content) {
  return id + number(static_cast<uint32_t>(content.size()), 4) + content;
}

std::string riff(const std::string &chunks) { return chunk("RIFF", "WAVE" + chunks); }

struct Format {
  uint16_t tag = 1, channels = 2;
  uint32_t sampleRate = 44100, bytesPerSec = 176400;
  uint16_t blockAlign = 4, bits = 16;

  std::string content() const {
    return number(tag, 2) + number(channels, 2) + number(sampleRate, 4) + number(bytesPerSec, 4) +
           number(blockAlign, 2) + number(bits, 2);
  }
};

const std::string kFormat = chunk("fmt ", Format().content());
const std::string kSamples = "\x01\x80\xFF\x00\x1A\x0D\x0A\x7F"s; // of a text stream, some of these would not survive
const std::string kList = chunk("LIST", "INFOISFT\4\0\0\0test"s);

struct Wav : WqSoundFileWav {
  Wav(uint32_t headerFlag, uint32_t writeFlag) { WqSoundFileWav_init(this, headerFlag, writeFlag); }
  ~Wav() { WqSoundFileWav_close(this); }
  Wav(const Wav &) = delete;
  Wav &operator=(const Wav &) = delete;

  int open(const std::string &name) { return WqSoundFileWav_open(this, name.c_str()); }
  uint32_t put(const std::string &bytes) {
    return WqSoundFileWav_write(this, bytes.data(), static_cast<uint32_t>(bytes.size()));
  }
  std::string get(uint32_t size) {
    std::string bytes(size, '?');
    bytes.resize(WqSoundFileWav_read(this, bytes.data(), size));
    return bytes;
  }
  // The fields that come from a header, in its order.
  std::vector<uint32_t> format() const { return {channels, sampleRate, bytesPerSec, blockAlign, bits, dataSize}; }
};

class WqSoundFileWavTest : public testing::Test {
 protected:
  std::string stored(const std::string &content) {
    const std::string name = folder_.file("in.wav");
    writeFile(name, content);
    return name;
  }
  TempFolder folder_;
};

} // namespace

TEST_F(WqSoundFileWavTest, FormatIsWorkedOut) {
  // clang-format off
  const struct { uint32_t rate, bits, channels; std::vector<uint32_t> format; } rows[] = {
      {44100, 16, 1, {1, 44100, 88200, 2, 16, 0}}, {48000, 32, 2, {2, 48000, 384000, 8, 32, 0}},
      {8000, 12, 2, {2, 8000, 16000, 2, 12, 0}}, // 12 bits count as one byte
      {10, 0x10010, 0x10002, {2, 10, 0x2002u * 10 * 0x10002, 0x4004, 16, 0}}}; // fields keep the low 16 bits
  // clang-format on
  for (const auto &row : rows) {
    Wav wav(0, 0);
    WqSoundFileWav_setFormat(&wav, row.rate, row.bits, row.channels);
    EXPECT_EQ(wav.format(), row.format);
  }
  Wav wav(0, 0);
  std::memset(static_cast<void *>(&wav), 0xFF, sizeof wav), WqSoundFileWav_init(&wav, 5, 6);
  EXPECT_EQ(wav.format(), std::vector<uint32_t>(6));
  EXPECT_EQ(std::tuple(wav.file, wav.header, wav.write), std::tuple(nullptr, 5u, 6u));
}

// Known size first, then a size learned on the way: both give the same file.
TEST_F(WqSoundFileWavTest, WritesOneFormOfHeader) {
  const std::string samples = kSamples + "x"; // an odd size gets no pad byte
  const std::string expected =
      "RIFF\x2D\0\0\0WAVEfmt \x10\0\0\0\1\0\2\0\x44\xAC\0\0\x10\xB1\2\0\4\0\x10\0data\x09\0\0\0"s + samples;
  const std::string name = stored(std::string(200, 'o')); // an older, longer file is replaced
  {
    Wav wav(0, 1);
    WqSoundFileWav_setFormat(&wav, 44100, 16, 2);
    ASSERT_EQ(wav.open(name), 1);
    wav.dataSize = 9;
    EXPECT_EQ(WqSoundFileWav_writeHeader(&wav), 1);
    EXPECT_EQ(wav.put(samples), 9u);
    WqSoundFileWav_term(&wav);
    ASSERT_NE(wav.file, nullptr) << "term closes nothing";
  }
  EXPECT_EQ(readFile(name), expected);

  Wav wav(1, 1);
  WqSoundFileWav_setFormat(&wav, 44100, 16, 2);
  ASSERT_EQ(wav.open(name), 1);
  EXPECT_EQ(wav.put(samples), 9u);
  WqSoundFileWav_close(&wav); // a writer that stops early
  EXPECT_EQ(readFile(name), std::string(44, '\0') + samples);

  ASSERT_EQ(wav.open(name), 1);
  EXPECT_EQ(wav.put("old" + samples.substr(3)), 9u);
  wav.dataSize = 9;
  EXPECT_EQ(WqSoundFileWav_writeHeader(&wav), 1);
  EXPECT_EQ(wav.put("\x01\x80\xFF"), 3u) << "behind the header stands the first sample";
  WqSoundFileWav_close(&wav);
  EXPECT_EQ(readFile(name), expected);

  for (const uint32_t size : {0u, 0x12345678u, 0xFFFFFFFFu}) { // the size of the whole may wrap
    ASSERT_EQ(wav.open(name), 1);
    wav.dataSize = size;
    EXPECT_EQ(WqSoundFileWav_writeHeader(&wav), 1);
    WqSoundFileWav_close(&wav);
    const std::string header = readFile(name);
    EXPECT_EQ(header.substr(4, 4) + header.substr(40), number(size + 36, 4) + number(size, 4));
  }
}

TEST_F(WqSoundFileWavTest, FilesThatCannotBeOpenedAndClosedRecords) {
  for (const uint32_t header : {0u, 1u})
    for (const uint32_t write : {0u, 1u}) {
      Wav wav(header, write);
      for (const std::string &name : {std::string(), folder_.file("no/such.wav"), folder_.path()}) {
        EXPECT_EQ(wav.open(name), 0) << name;
        EXPECT_EQ(wav.file, nullptr) << name;
      }
      char byte = 'x';
      EXPECT_EQ(WqSoundFileWav_read(&wav, &byte, 1), 0u);
      EXPECT_EQ(WqSoundFileWav_write(&wav, &byte, 1), 0u);
      EXPECT_EQ(WqSoundFileWav_skipHeader(&wav), 0);
      EXPECT_EQ(WqSoundFileWav_writeHeader(&wav), 0);
      WqSoundFileWav_close(&wav);
      WqSoundFileWav_close(&wav);
    }
}

TEST_F(WqSoundFileWavTest, ReadsRawFiles) {
  const std::string content = riff(kFormat) + std::string(964, 'r'); // that it looks like a WAV file doesn't matter
  Wav wav(0, 0);
  WqSoundFileWav_setFormat(&wav, 8000, 8, 1);
  ASSERT_EQ(wav.open(stored("")), 1);
  EXPECT_EQ(wav.dataSize, 0u);
  WqSoundFileWav_close(&wav);
  ASSERT_EQ(wav.open(stored(content)), 1);
  EXPECT_EQ(wav.format(), (std::vector<uint32_t>{1, 8000, 8000, 1, 8, 1000}));
  EXPECT_EQ(wav.get(2000), content);
  EXPECT_EQ(WqSoundFileWav_skipHeader(&wav), 1);
  EXPECT_EQ(wav.open(""), 0) << "no name leaves the file open";
  EXPECT_EQ(wav.get(2000), content.substr(44));
}

// Sizes of files go up to what 32 bits hold. Nearly all of such a file is a hole.
TEST_F(WqSoundFileWavTest, ReadsLongFiles) {
  const std::string name = stored(riff(kFormat) + "data" + number(0xB0000000, 4) + "first");
  for (const uint64_t size : {0x7FFFFFFFull, 0x80000000ull, 0xB0000000ull, 0xFFFFFFFFull, 0x100000000ull}) {
    SCOPED_TRACE(size);
    std::filesystem::resize_file(name, size);
    Wav raw(0, 0);
    const bool fits = size <= 0xFFFFFFFF;
    EXPECT_EQ(raw.open(name), fits ? 1 : 0);
    EXPECT_EQ(raw.file != nullptr, fits);
    EXPECT_EQ(raw.dataSize, fits ? size : 0);
    EXPECT_EQ(raw.get(4), fits ? "RIFF" : "");

    Wav wav(1, 0);
    EXPECT_EQ(wav.open(name), 1);
    EXPECT_EQ(wav.dataSize, 0xB0000000);
    EXPECT_EQ(wav.get(5), "first");
    EXPECT_EQ(platformSeekStream(wav.file, -3, SEEK_END), static_cast<int64_t>(size) - 3);
    EXPECT_EQ(wav.get(9), std::string(3, '\0'));
  }
}

// The data chunk is searched byte by byte from the end of the 16 format bytes.
TEST_F(WqSoundFileWavTest, SearchesForTheDataChunk) {
  const std::string data = chunk("data", kSamples);
  // clang-format off
  const struct { const char *what; std::string behindFormat; int result; uint32_t dataSize;
                 std::string rest; } rows[] = { // from where the stream stands
      {"format of 18 bytes", number(0, 2) + data, 1, 8, kSamples},
      {"format of 40 bytes", number(22, 2) + std::string(22, '\1') + data, 1, 8, kSamples},
      {"other chunks", kList + chunk("fact", number(2, 4)) + data, 1, 8, kSamples},
      {"chunks behind", data + kList, 1, 8, kSamples + kList},
      {"word in a chunk", chunk("LIST", "my data\x07\1\0\0!"s) + data, 1, 0x107, "!" + data},
      {"promise of more than there is", "data" + number(0xFFFFFFFF, 4) + "abc", 1, 0xFFFFFFFF, "abc"},
      {"no word", kList, 0, 0, ""},
      // A byte that breaks a match is spent.
      {"d before", chunk("LIST", "d") + data, 0, 0, ""},
      {"da before", chunk("LIST", "da") + data, 0, 0, ""},
      {"dat before", chunk("LIST", "dat") + data, 0, 0, ""},
      {"dd before", chunk("LIST", "dd") + data, 1, 8, kSamples},
      {"missed once, found later", "ddata" + number(12, 4) + "dadata" + data, 1, 8, kSamples}};
  // clang-format on
  for (const auto &row : rows) {
    SCOPED_TRACE(row.what);
    Wav wav(1, 0);
    ASSERT_EQ(wav.open(stored(riff(kFormat + row.behindFormat))), row.result);
    EXPECT_EQ(wav.format(), (std::vector<uint32_t>{2, 44100, 176400, 4, 16, row.dataSize}));
    EXPECT_EQ(wav.get(100), row.rest);
  }
  // Neither sizes nor rates are looked at.
  const Format odd = {1, 1, 0xFFFFFFFF, 0, 0xABCD, 32};
  for (const std::string &size : {number(0, 4), number(0xFFFFFFFF, 4)}) {
    Wav wav(1, 0);
    EXPECT_EQ(wav.open(stored("RIFF" + size + "WAVEfmt " + size + odd.content() + data)), 1);
    EXPECT_EQ(wav.format(), (std::vector<uint32_t>{1, 0xFFFFFFFF, 0, 0xABCD, 32, 8}));
    EXPECT_EQ(wav.get(9), kSamples);
  }
}

// What a refused file leaves behind: the fields read so far, and the stream.
TEST_F(WqSoundFileWavTest, RefusesOtherFiles) {
  const auto of = [](const Format &format) { return chunk("fmt ", format.content()) + chunk("data", kSamples); };
  using Fields = std::vector<uint32_t>;
  const Fields untouched = {77, 77, 77, 77, 77, 77};
  // clang-format off
  const struct { const char *what; std::string content; Fields left; } rows[] = {
      {"other byte order", chunk("RIFX", "WAVE" + of({})), untouched},
      {"other kind", chunk("RIFF", "AVI " + of({})), untouched},
      {"format not first", riff(kList + of({})), untouched},
      {"format without blank", riff(chunk("fmt", Format().content()) + of({})), untouched},
      {"float", riff(of({3, 2, 1, 2, 3, 32})), untouched},
      {"extensible", riff(of({0xFFFE, 2, 1, 2, 3, 16})), untouched},
      {"tag of 257", riff(of({0x101, 2, 1, 2, 3, 16})), untouched},
      {"no channels", riff(of({1, 0, 1, 2, 3, 16})), {0, 77, 77, 77, 77, 77}},
      {"three channels", riff(of({1, 3, 1, 2, 3, 16})), {3, 77, 77, 77, 77, 77}},
      {"24 bits", riff(of({1, 2, 1, 2, 3, 24})), {2, 1, 2, 3, 24, 77}},
      {"no data", riff(kFormat), {2, 44100, 176400, 4, 16, 77}}};
  // clang-format on
  for (const auto &row : rows) {
    SCOPED_TRACE(row.what);
    Wav wav(1, 0);
    wav.channels = wav.blockAlign = wav.bits = 77;
    wav.sampleRate = wav.bytesPerSec = wav.dataSize = 77;
    EXPECT_EQ(wav.open(stored(row.content)), 0);
    EXPECT_EQ(wav.format(), row.left);
    ASSERT_NE(wav.file, nullptr);
    WqSoundFileWav_close(&wav);
    EXPECT_TRUE(std::filesystem::remove(folder_.file("in.wav"))) << "still open";
  }
}

TEST_F(WqSoundFileWavTest, RefusesAHeaderThatEndsEarly) {
  const std::string whole = riff(kFormat + "data" + number(0x01020304, 4));
  ASSERT_EQ(whole.size(), 44u);
  for (size_t length = 0; length <= whole.size(); ++length) {
    SCOPED_TRACE(length);
    Wav wav(1, 0);
    const bool complete = length >= 40; // of the last number nothing depends
    EXPECT_EQ(wav.open(stored(whole.substr(0, length))), complete ? 1 : 0);
    EXPECT_NE(wav.file, nullptr);
    // A field that isn't there as a whole stays 0.
    EXPECT_EQ(wav.format(),
              (std::vector<uint32_t>{length >= 24 ? 2u : 0, length >= 28 ? 44100u : 0, length >= 32 ? 176400u : 0,
                                     length >= 34 ? 4u : 0, length >= 36 ? 16u : 0, length >= 44 ? 0x01020304u : 0}));
    EXPECT_EQ(wav.get(1), "");
  }
}
