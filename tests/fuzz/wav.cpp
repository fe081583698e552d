// An input as a WAV file and as a raw file. The files are in memory, under names that the library can open; blocks above
// 1 MiB are not to be had, so that a header that promises more tries the way of short memory and costs no time.

#include "memory_file.h"

#include <algorithm>
#include <sys/resource.h>

namespace {

constexpr size_t kMemory = 1024 * 1024;
constexpr size_t kHeader = 44;

// What every accepted file begins with.
bool hasFormat(std::string_view text) {
  if (text.size() < 36 || !text.starts_with("RIFF") || text.substr(8, 8) != "WAVEfmt ") return false;
  const auto word = [&](size_t at) { return static_cast<uint8_t>(text[at]) | static_cast<uint8_t>(text[at + 1]) << 8; };
  const int bits = word(34);
  return word(20) == 1 && (word(22) == 1 || word(22) == 2) && (bits == 8 || bits == 16 || bits == 32);
}

// The place behind "data", where the byte that breaks a match begins no other one; npos without it.
size_t behindWord(std::string_view text) {
  constexpr std::string_view kWord = "data";
  for (size_t at = 36; (at = text.find(kWord[0], at)) != std::string_view::npos;) {
    const std::string_view rest = text.substr(at);
    size_t matched = 1;
    while (matched < kWord.size() && rest.substr(matched, 1) == kWord.substr(matched, 1)) ++matched;
    if (matched == kWord.size()) return at + matched;
    at += matched + 1;
  }
  return std::string_view::npos;
}

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

Header opensStream(const File &file, Bytes bytes) {
  Header header{};
  WqSoundFileWav &wav = header.wav;
  WqSoundFileWav_init(&wav, 1, 0);
  header.accepted = WqSoundFileWav_open(&wav, file.name()) == 1;
  REQUIRE(wav.file != nullptr); // after a refusal too
  const std::string_view text(reinterpret_cast<const char *>(bytes.data()), bytes.size());
  const size_t sizeAt = hasFormat(text) ? behindWord(text) : std::string_view::npos;
  REQUIRE(header.accepted == (sizeAt != std::string_view::npos));
  if (header.accepted) {
    const size_t start = header.start = std::min(sizeAt + 4, bytes.size());
    REQUIRE(std::ftell(wav.file) == static_cast<long>(start));
    REQUIRE(wav.channels == number(bytes, 22, 2) && wav.sampleRate == number(bytes, 24, 4));
    REQUIRE(wav.bytesPerSec == number(bytes, 28, 4) && wav.blockAlign == number(bytes, 32, 2));
    REQUIRE(wav.bits == number(bytes, 34, 2));
    REQUIRE(wav.dataSize == (start == sizeAt + 4 ? number(bytes, sizeAt, 4) : 0));
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

// So few files may be open that one left open in each run is noticed.
extern "C" int LLVMFuzzerInitialize(int *, char ***) {
  const rlimit limit{64, 64};
  REQUIRE(setrlimit(RLIMIT_NOFILE, &limit) == 0);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static const File file;
  const Bytes bytes(data, size);
  file.fill(bytes);
  readsBlock(file, bytes, opensStream(file, bytes));
  opensRaw(file, bytes);
  return 0;
}
