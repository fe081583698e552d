#include "recording.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace {

class WavStream {
 public:
  explicit WavStream(bool header) { WqSoundFileWav_init(&wav_, header, 0); }
  ~WavStream() { WqSoundFileWav_close(&wav_); }
  WavStream(const WavStream &) = delete;
  WavStream &operator=(const WavStream &) = delete;
  WqSoundFileWav *operator->() { return &wav_; }
  WqSoundFileWav *get() { return &wav_; }

 private:
  WqSoundFileWav wav_;
};

std::string number(uint32_t value) { return std::to_string(value); }

// Why a header is refused. The reader tells yes or no, so the bytes it stumbled over are looked at again.
std::string refusal(const char *fileName) {
  WavStream raw(false);
  WqSoundFileWav_open(raw.get(), fileName);
  if (!raw->file) return "cannot open";
  std::array<uint8_t, 36> bytes{};
  const uint32_t count = WqSoundFileWav_read(raw.get(), bytes.data(), bytes.size());
  const auto tagAt = [&](size_t at, const char *tag) { return std::memcmp(&bytes[at], tag, 4) == 0; };
  const auto numberAt = [&](size_t at) { return static_cast<uint32_t>(bytes[at] | bytes[at + 1] << 8); };
  if (!tagAt(0, "RIFF") || !tagAt(8, "WAVE")) return "not RIFF/WAVE";
  if (count < 16) return "no format chunk";
  if (!tagAt(12, "fmt ")) return "format chunk not first";
  if (count < bytes.size()) return "format chunk cut short";
  if (numberAt(20) != 1) return "format tag " + number(numberAt(20));
  if (numberAt(22) != 1 && numberAt(22) != 2) return number(numberAt(22)) + " channels";
  const uint32_t bits = numberAt(34);
  if (bits != 8 && bits != 16 && bits != 32) return number(bits) + " bits";
  return "no data chunk";
}

// The bytes between the stream and the end of its file, at most limit; limit where the C library can't tell.
uint32_t bytesLeft(std::FILE *file, uint32_t limit) {
  const long start = std::ftell(file);
  if (start < 0 || std::fseek(file, 0, SEEK_END) != 0) return limit;
  const long end = std::ftell(file);
  std::fseek(file, start, SEEK_SET);
  return end < start ? limit : static_cast<uint32_t>(std::min<int64_t>(end - start, limit));
}

} // namespace

std::string Recording::load(const char *fileName) {
  WavStream header(true);
  if (!WqSoundFileWav_open(header.get(), fileName)) return refusal(fileName);
  const uint32_t frameSize = header->bits / 8u * header->channels;
  if (header->blockAlign != frameSize)
    return "block align " + number(header->blockAlign) + " with " + number(header->bits) + " bits and " +
           number(header->channels) + " channels";
  declaredBytes_ = header->dataSize;
  foundBytes_ = bytesLeft(header->file, declaredBytes_);
  if (foundBytes_ < frameSize) return "no samples";

  WqPcmBuf_ReadWavFile(&samples_, fileName);
  if (samples_.data) return {};
  // A header can promise more than memory holds; the file itself may still be small.
  if (!WqPcmBuf_Alloc(&samples_, header->sampleRate, foundBytes_ / frameSize, header->bits, header->channels))
    return "too many samples for the memory";
  samples_.writePos += WqSoundFileWav_read(header.get(), samples_.data, samples_.byteSize);
  return {};
}
