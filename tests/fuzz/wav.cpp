// An input as a WAV file and as a raw file. The files are in memory, under names that the library can open; blocks
// above 1 MiB are not to be had, so that a header that promises more tries the way of short memory and costs no time.

#include "memory_file.h"

#include <algorithm>

namespace {

constexpr size_t kMemory = 1024 * 1024;
constexpr size_t kHeader = 44;

// Reads to the end in small pieces.
void readsOn(WqSoundFileWav *wav, Bytes expected) {
  const Room piece(257);
  for (;;) {
    const uint32_t count = WqSoundFileWav_read(wav, piece.get(), static_cast<uint32_t>(piece.size()));
    REQUIRE(count == std::min(piece.size(), expected.size()));
    if (count == 0) return;
    REQUIRE(std::memcmp(piece.get(), expected.data(), count) == 0);
    expected = expected.subspan(count);
  }
}

struct Header {
  bool accepted;
  WqSoundFileWav wav; // closed
  size_t start;       // of the samples
};

// What is accepted has a format, and the word in front of its samples.
Header opensStream(const File &file, Bytes bytes) {
  Header header{};
  WqSoundFileWav &wav = header.wav;
  WqSoundFileWav_init(&wav, 1, 0);
  header.accepted = WqSoundFileWav_open(&wav, file.name()) == 1;
  REQUIRE(wav.file != nullptr); // after a refusal too
  if (header.accepted) {
    const std::string_view text(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    REQUIRE(text.starts_with("RIFF") && text.substr(8, 8) == "WAVEfmt " && number(bytes, 20, 2) == 1);
    REQUIRE(wav.channels == number(bytes, 22, 2) && wav.sampleRate == number(bytes, 24, 4));
    REQUIRE(wav.bytesPerSec == number(bytes, 28, 4) && wav.blockAlign == number(bytes, 32, 2));
    REQUIRE(wav.bits == number(bytes, 34, 2));
    const size_t start = header.start = static_cast<size_t>(std::ftell(wav.file));
    const size_t word = text.rfind("data", start);
    const bool whole = start >= kHeader && text.substr(start - 8, 4) == "data"; // with the size behind it
    REQUIRE(whole || (start == bytes.size() && word != text.npos && start - word < 8));
    REQUIRE(wav.dataSize == (whole ? number(bytes, start - 4, 4) : 0));
    readsOn(&wav, bytes.subspan(start));
  }
  WqSoundFileWav_close(&wav);
  REQUIRE(wav.file == nullptr);
  return header;
}

// What a block holds reads back from a file; of a last frame that is not whole, nothing.
void writesBack(const WqPcmBuf &buf, size_t count) {
  static const File file;
  REQUIRE(WqPcmBuf_WriteWavFile(&buf, file.name()) == 1);
  REQUIRE(file.content().substr(kHeader) == std::string_view(reinterpret_cast<char *>(buf.data), count));
  const size_t frameSize = buf.bits / 8 * buf.channels;
  WqPcmBuf again;
  WqPcmBuf_Init(&again);
  REQUIRE(WqPcmBuf_ReadWavFile(&again, file.name()) == count / frameSize * frameSize);
  if (again.data) {
    REQUIRE(again.sampleRate == buf.sampleRate && again.bits == buf.bits && again.channels == buf.channels);
    REQUIRE(again.frames == count / frameSize);
    REQUIRE(std::memcmp(again.data, buf.data, again.byteSize) == 0);
  }
  WqPcmBuf_Term(&again);
}

void readsBlock(const File &file, Bytes bytes, const Header &header) {
  WqPcmBuf buf;
  std::memset(&buf, 0x55, sizeof buf);
  WqPcmBuf_Init(&buf);
  const WqPcmBuf before = buf;
  const uint32_t count = WqPcmBuf_ReadWavFile(&buf, file.name());

  const WqSoundFileWav &wav = header.wav;
  const uint64_t frames = header.accepted && wav.blockAlign != 0 ? wav.dataSize / wav.blockAlign : 0;
  const uint64_t size = wav.bits / 8 * wav.channels * frames;
  if (size == 0 || size > kMemory) {
    REQUIRE(count == 0 && std::memcmp(&buf, &before, sizeof buf) == 0);
    return;
  }
  const Bytes samples = bytes.subspan(header.start);
  REQUIRE(buf.data && buf.byteSize == size && buf.frames == frames && buf.endPos == buf.data + size);
  REQUIRE(buf.bits == wav.bits && buf.channels == wav.channels && buf.sampleRate == wav.sampleRate);
  REQUIRE(count == std::min<uint64_t>({samples.size(), wav.dataSize, size}) && buf.writePos == buf.data + count);
  REQUIRE(count == 0 || std::memcmp(buf.data, samples.data(), count) == 0);
  REQUIRE(std::all_of(buf.writePos, buf.endPos, [](uint8_t byte) { return byte == 0; }));
  if (count > 0) writesBack(buf, count);
  WqPcmBuf_Term(&buf);
  REQUIRE(buf.data == nullptr);
}

void opensRaw(const File &file, Bytes bytes) {
  WqSoundFileWav wav;
  WqSoundFileWav_init(&wav, 0, 0);
  REQUIRE(WqSoundFileWav_open(&wav, file.name()) == 1 && wav.dataSize == bytes.size());
  readsOn(&wav, bytes);
  REQUIRE(WqSoundFileWav_skipHeader(&wav) == 1);
  readsOn(&wav, bytes.subspan(std::min(bytes.size(), kHeader)));
  WqSoundFileWav_close(&wav);
}

} // namespace

// The linker sends every call of calloc here.
extern "C" void *__real_calloc(size_t count, size_t size);
extern "C" void *__wrap_calloc(size_t count, size_t size) {
  return size != 0 && count > kMemory / size ? nullptr : __real_calloc(count, size);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static const File file;
  const Bytes bytes(data, size);
  file.fill(bytes);
  readsBlock(file, bytes, opensStream(file, bytes));
  opensRaw(file, bytes);
  return 0;
}
