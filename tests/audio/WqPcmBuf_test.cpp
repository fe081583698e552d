// Blocks of samples: their sizes, what failures leave alone, and their way to files and back.

#include "support/allocation.h"
#include "support/files.h"
#include "support/library.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <functional>

namespace {

// A record as bytes, to see that nothing in it was touched.
std::string bytesOf(const WqPcmBuf &buf) { return {reinterpret_cast<const char *>(&buf), sizeof buf}; }

// A record whose every byte is known and unlike what any function stores.
struct Marked : WqPcmBuf {
  Marked() { std::memset(static_cast<void *>(this), 0xA5, sizeof *this); }
  bool untouched() const { return bytesOf(*this) == std::string(sizeof *this, '\xA5'); }
};

std::string pattern(size_t size) {
  std::string text;
  for (size_t i = 0; i < size; ++i) text += static_cast<char>(i * 37 + 1);
  return text;
}

// Format and capacity.
std::array<uint32_t, 5> shape(const WqPcmBuf &buf) {
  return {buf.bits, buf.sampleRate, buf.frames, buf.channels, buf.byteSize};
}
std::string content(const WqPcmBuf &buf) { return {buf.data, buf.writePos}; }
std::string room(const WqPcmBuf &buf) { return {buf.writePos, buf.endPos}; }

uint32_t add(WqPcmBuf *buf, const std::string &bytes) {
  return WqPcmBuf_Add(buf, bytes.data(), static_cast<uint32_t>(bytes.size()));
}

// 16 bits, two channels, 44100 Hz, with these bytes stored.
WqPcmBuf filled(uint32_t frames, const std::string &bytes) {
  WqPcmBuf buf = {};
  EXPECT_EQ(WqPcmBuf_Alloc(&buf, 44100, frames, 16, 2), 1);
  EXPECT_EQ(add(&buf, bytes), bytes.size());
  return buf;
}

class WqPcmBufTest : public LibraryTest {
 protected:
  TempFolder folder_;
  const std::string name_ = folder_.file("a.wav");
};

} // namespace

TEST_F(WqPcmBufTest, AllocTakesSizesOf32Bits) {
  // clang-format off
  const struct { uint32_t rate, frames, bits, channels, size; } rows[] = { // size 0: refused
      {44100, 100, 16, 2, 400}, {44100, 100, 12, 2, 200}, {0, 100, 24, 1, 300},
      {8000, 100, 7, 2, 0}, {8000, 0, 16, 2, 0}, {8000, 100, 16, 0, 0},
      // products that would be small again in 32 bits, or in 64
      {8000, 0x40000001, 32, 1, 0}, {8000, 0x80000001, 16, 2, 0}, {8000, 0x20000000, 32, 2, 0},
      {8000, 1, 0x80000008, 0x10, 0}, {8000, 0x10, 0x80000000, 0x80000000, 0}};
  // clang-format on
  for (const auto &row : rows) {
    SCOPED_TRACE(testing::Message() << row.frames << " frames, " << row.bits << " bits, " << row.channels);
    Marked buf;
    ASSERT_EQ(WqPcmBuf_Alloc(&buf, row.rate, row.frames, row.bits, row.channels), row.size > 0 ? 1 : 0);
    EXPECT_EQ(buf.untouched(), row.size == 0);
    if (row.size == 0) continue;
    EXPECT_EQ(shape(buf), (std::array{row.bits, row.rate, row.frames, row.channels, row.size}));
    EXPECT_EQ(content(buf) + room(buf), std::string(row.size, '\0'));
    std::memset(buf.data, 0xFF, row.size); // the allocator may hand the block out again, and it must be clean then
    WqPcmBuf_Term(&buf);
  }
}

TEST_F(WqPcmBufTest, AddStopsAtTheEndAndInitializeEmpties) {
  const std::string bytes = pattern(40);
  WqPcmBuf buf = filled(10, bytes.substr(0, 15));
  EXPECT_EQ(WqPcmBuf_Add(&buf, nullptr, 0), 0u);
  EXPECT_EQ(add(&buf, bytes.substr(15, 20)), 20u);
  EXPECT_EQ(add(&buf, bytes.substr(35) + "more than there is room for"), 5u);
  EXPECT_EQ(content(buf), bytes);
  EXPECT_EQ(WqPcmBuf_Add(&buf, bytes.data(), UINT32_MAX), 0u);

  buf.writePos = buf.data + 3; // bytes behind writePos are cleaned too
  WqPcmBuf_initialize(&buf);
  EXPECT_EQ(buf.writePos, buf.data);
  EXPECT_EQ(room(buf), std::string(40, '\0'));

  WqPcmBuf_Term(&buf);
  EXPECT_EQ(buf.data, nullptr);
  EXPECT_EQ(shape(buf), (std::array{16u, 44100u, 10u, 2u, 40u}));
  EXPECT_EQ(add(&buf, bytes), 0u);
  const std::string before = bytesOf(buf);
  WqPcmBuf_Term(&buf), WqPcmBuf_initialize(&buf);
  EXPECT_EQ(bytesOf(buf), before);

  Marked fresh;
  WqPcmBuf_Init(&fresh);
  EXPECT_EQ(bytesOf(fresh),
            std::string(sizeof fresh.data, '\0') + std::string(sizeof fresh - sizeof fresh.data, '\xA5'));
}

TEST_F(WqPcmBufTest, ReallocOnlyGrows) {
  const std::string bytes = pattern(50);
  WqPcmBuf buf = filled(20, bytes + pattern(30));
  buf.writePos -= 30; // leaves bytes behind writePos, which growing has to clean
  const std::string before = bytesOf(buf);
  for (const uint32_t frames : {0u, 1u, 19u, 20u}) EXPECT_EQ(WqPcmBuf_Realloc(&buf, frames), 1);
  // 2 to the 30th frames of 4 bytes are 2 to the 32nd bytes
  for (const uint32_t frames : {0x40000000u, 0x40000001u, UINT32_MAX}) ASSERT_EQ(WqPcmBuf_Realloc(&buf, frames), 0);
  EXPECT_EQ(bytesOf(buf), before);

  ASSERT_EQ(WqPcmBuf_Realloc(&buf, 5000), 1);
  EXPECT_EQ(shape(buf), (std::array{16u, 44100u, 5000u, 2u, 20000u}));
  EXPECT_EQ(content(buf), bytes);
  EXPECT_EQ(room(buf), std::string(19950, '\0'));
  WqPcmBuf_Release(&buf);
  EXPECT_EQ(buf.data, nullptr);
}

TEST_F(WqPcmBufTest, DuplicateHasABlockOfItsOwn) {
  const std::string bytes = pattern(50);
  WqPcmBuf source = filled(20, bytes);
  const std::string before = bytesOf(source);
  Marked copy, none;
  ASSERT_EQ(WqPcmBuf_Duplicate(&source, &copy), 1);
  EXPECT_EQ(bytesOf(source), before);
  std::memset(source.data, 0, source.byteSize);
  WqPcmBuf_Term(&source);
  EXPECT_EQ(shape(copy), (std::array{16u, 44100u, 20u, 2u, 80u}));
  EXPECT_EQ(copy.writePos, copy.data);
  EXPECT_EQ(room(copy), bytes + std::string(30, '\0'));
  WqPcmBuf_Term(&copy);
  EXPECT_EQ(WqPcmBuf_Duplicate(&source, &none), 0) << "the source has no block any more";
  EXPECT_TRUE(none.untouched());
}

TEST_F(WqPcmBufTest, GoesToFilesAndBack) {
  const std::string pcm = folder_.file("a.pcm");
  const std::string nowhere = folder_.file("no/such.wav");
  WqPcmBuf empty = filled(10, "");
  EXPECT_EQ(WqPcmBuf_WritePcmFile(&empty, pcm.c_str()), 0u);
  EXPECT_EQ(WqPcmBuf_WriteWavFile(&empty, name_.c_str()), 1);
  EXPECT_FALSE(fileExists(pcm) || fileExists(name_));
  WqPcmBuf_Term(&empty);

  for (const uint32_t bits : {8u, 16u, 32u})
    for (const uint32_t channels : {1u, 2u}) {
      SCOPED_TRACE(testing::Message() << bits << " bits, " << channels);
      const uint32_t frameSize = bits / 8 * channels;
      const std::string bytes = pattern(30 * frameSize);
      WqPcmBuf buf;
      ASSERT_EQ(WqPcmBuf_Alloc(&buf, 96000 + bits, 100, bits, channels), 1);
      ASSERT_EQ(add(&buf, bytes), bytes.size());
      writeFile(pcm, std::string(5000, 'o'));
      EXPECT_EQ(WqPcmBuf_WritePcmFile(&buf, pcm.c_str()), bytes.size());
      EXPECT_EQ(readFile(pcm), bytes);
      writeFile(name_, std::string(5000, 'o'));
      EXPECT_EQ(WqPcmBuf_WriteWavFile(&buf, name_.c_str()), 1);
      EXPECT_EQ(readFile(name_).substr(44), bytes);
      EXPECT_EQ(WqPcmBuf_WritePcmFile(&buf, nowhere.c_str()), 0u);
      EXPECT_EQ(WqPcmBuf_WriteWavFile(&buf, nowhere.c_str()), 0);
      WqPcmBuf_Term(&buf);

      Marked back;
      EXPECT_EQ(WqPcmBuf_ReadWavFile(&back, name_.c_str()), bytes.size());
      EXPECT_EQ(shape(back), (std::array{bits, 96000 + bits, 30u, channels, 30 * frameSize}));
      EXPECT_EQ(content(back), bytes);
      EXPECT_EQ(room(back), "");
      WqPcmBuf_Term(&back);
    }
}

// Headers that disagree with the file or with themselves: reading stays inside the block and the file.
TEST_F(WqPcmBufTest, ReadsWhatAHeaderAndItsFileAllow) {
  // clang-format off
  const struct { const char *what; uint16_t bits, channels, blockAlign; uint32_t dataSize, held;
                 uint32_t frames, byteSize, count; } rows[] = { // byteSize 0: no block
      {"file too short", 16, 2, 4, 400, 101, 100, 400, 101},
      {"file ends behind its header", 16, 2, 4, 400, 0, 100, 400, 0},
      {"chunks behind the samples", 16, 2, 4, 400, 500, 100, 400, 400},
      {"part of a frame", 16, 2, 4, 403, 403, 100, 400, 400},
      {"large block", 16, 2, 8, 400, 400, 50, 200, 200},
      {"largest block and size", 8, 1, 0xFFFF, 0xFFFFFFFF, 400, 65537, 65537, 400},
      {"small block", 16, 2, 1, 400, 500, 400, 1600, 400},
      {"no block", 16, 2, 0, 400, 400, 0, 0, 0},
      {"no samples", 16, 2, 4, 0, 400, 0, 0, 0},
      {"less than a frame", 16, 2, 4, 3, 400, 0, 0, 0},
      {"2 to the 32nd bytes", 32, 2, 1, 0x20000000, 400, 0, 0, 0},
      {"most bytes in a small block", 32, 2, 1, 0xFFFFFFFF, 400, 0, 0, 0},
      {"24 bits", 24, 1, 3, 300, 300, 0, 0, 0}};
  // clang-format on
  for (const auto &row : rows) {
    SCOPED_TRACE(row.what);
    WqSoundFileWav wav;
    WqSoundFileWav_init(&wav, 0, 1);
    WqSoundFileWav_setFormat(&wav, 44100, row.bits, row.channels);
    ASSERT_EQ(WqSoundFileWav_open(&wav, name_.c_str()), 1);
    wav.blockAlign = row.blockAlign;
    wav.dataSize = row.dataSize;
    WqSoundFileWav_writeHeader(&wav);
    const std::string held = pattern(row.held);
    WqSoundFileWav_write(&wav, held.data(), row.held);
    WqSoundFileWav_close(&wav);

    Marked buf;
    EXPECT_EQ(WqPcmBuf_ReadWavFile(&buf, name_.c_str()), row.count);
    EXPECT_TRUE(std::filesystem::remove(name_)) << "still open";
    EXPECT_EQ(buf.untouched(), row.byteSize == 0);
    if (row.byteSize == 0) continue;
    EXPECT_EQ(shape(buf), (std::array<uint32_t, 5>{row.bits, 44100, row.frames, row.channels, row.byteSize}));
    EXPECT_EQ(content(buf), held.substr(0, row.count));
    EXPECT_EQ(room(buf), std::string(row.byteSize - row.count, '\0'));
    WqPcmBuf_Term(&buf);
  }
  for (const std::string &name : {std::string(), folder_.file("missing.wav"), folder_.path()}) {
    Marked buf;
    EXPECT_EQ(WqPcmBuf_ReadWavFile(&buf, name.c_str()), 0u);
    EXPECT_TRUE(buf.untouched());
  }
}

TEST_F(WqPcmBufTest, MemoryShortLeavesRecordsAlone) {
  const std::string bytes = pattern(400);
  WqPcmBuf source = filled(100, bytes);
  ASSERT_EQ(WqPcmBuf_WriteWavFile(&source, name_.c_str()), 1);
  const std::pair<std::string, std::function<bool(WqPcmBuf *)>> calls[] = {
      {"Alloc", [](WqPcmBuf *buf) { return WqPcmBuf_Alloc(buf, 8000, 10, 16, 1) != 0; }},
      {"Duplicate", [&](WqPcmBuf *buf) { return WqPcmBuf_Duplicate(&source, buf) != 0; }},
      {"ReadWavFile", [&](WqPcmBuf *buf) { return WqPcmBuf_ReadWavFile(buf, name_.c_str()) != 0; }},
      {"Realloc", [](WqPcmBuf *buf) { return WqPcmBuf_Realloc(buf, 1000) != 0; }}};
  for (const auto &[what, call] : calls)
    for (int n = 1, failed = 1; failed; ++n) {
      SCOPED_TRACE(testing::Message() << what << ", allocation " << n);
      WqPcmBuf buf = filled(100, bytes);
      const std::string before = bytesOf(buf);
      uint8_t *const block = buf.data;
      AllocationFailure failure(n);
      const bool done = call(&buf);
      failed = failure.happened();
      EXPECT_EQ(done, !failed);
      if (failed) {
        EXPECT_EQ(bytesOf(buf), before);
        EXPECT_EQ(content(buf), bytes);
      }
      const bool another = buf.data != block && what != "Realloc"; // beside the old one
      WqPcmBuf_Term(&buf);
      if (another) WqMem_Free(block);
    }
  WqPcmBuf_Term(&source);
  EXPECT_TRUE(std::filesystem::remove(name_)) << "still open";
}

TEST_F(WqPcmBufTest, FullDiskIsReported) {
  const std::string full = "/dev/full"; // takes no byte; systems without it have nothing like it
  if (!fileExists(full)) GTEST_SKIP();
  for (const uint32_t frames : {1u, 100000u}) { // within the stream's buffer, and beyond
    WqPcmBuf buf = filled(frames, std::string(frames * 4, 'x'));
    EXPECT_EQ(WqPcmBuf_WriteWavFile(&buf, full.c_str()), 0);
    EXPECT_EQ(WqPcmBuf_WritePcmFile(&buf, full.c_str()), 0u);
    WqPcmBuf_Term(&buf);
  }
}
