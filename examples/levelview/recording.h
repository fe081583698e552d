// A WAV file in memory.
#pragma once

#include "wq.h"

#include <string>
#include <utility>

class WavStream {
 public:
  explicit WavStream(bool header) { WqSoundFileWav_init(&wav_, header, 0); }
  ~WavStream() { WqSoundFileWav_close(&wav_); }
  WavStream(const WavStream &) = delete;
  WavStream &operator=(const WavStream &) = delete;
  WqSoundFileWav *operator->() { return &wav_; }
  WqSoundFileWav *get() { return &wav_; }
  void swap(WavStream &other) { std::swap(wav_, other.wav_); }

 private:
  WqSoundFileWav wav_;
};

// Why the library's reader refuses the header of a file.
std::string refusalOf(const char *fileName);

class Recording {
 public:
  Recording() : file_(true) { WqPcmBuf_Init(&samples_); }
  ~Recording() { WqPcmBuf_Term(&samples_); }
  Recording(const Recording &) = delete;
  Recording &operator=(const Recording &) = delete;

  // Opens a file, of which only what it really holds is taken: open looks at the header and makes room, then each
  // readPiece reads some more.
  // Result: why it is refused, empty when it can be read; whether there is more to read.
  std::string open(const char *fileName);
  bool readPiece();

  // Exchanges what two of them hold.
  void swap(Recording &other);

  const WqPcmBuf &samples() const { return samples_; }
  size_t channels() const { return samples_.channels; }
  // A header may tell of 0 frames a second, which no time can be told by.
  double rate() const { return samples_.sampleRate > 0 ? samples_.sampleRate : 1; }
  double seconds() const { return frames() / rate(); }
  uint32_t bytes() const { return static_cast<uint32_t>(samples_.writePos - samples_.data); }
  uint32_t frames() const { return bytes() / frameSize(); }
  // A sample as a signed number, and the number that full scale stands for.
  int32_t value(uint32_t frame, size_t channel) const;
  double fullScale() const { return static_cast<double>(INT64_C(1) << (samples_.bits - 1)); }
  // Sample bytes that the header tells of, and that the file really holds.
  uint32_t declaredBytes() const { return declaredBytes_; }
  uint32_t foundBytes() const { return foundBytes_; }
  uint32_t foundFrames() const { return foundBytes_ / frameSize(); }

 private:
  std::string readHeader(const char *fileName);
  bool makeRoom();
  uint32_t frameSize() const { return samples_.bits / 8 * samples_.channels; }

  WavStream file_;
  WqPcmBuf samples_;
  uint32_t declaredBytes_ = 0;
  uint32_t foundBytes_ = 0;
};

// A sample in memory as a signed number. Samples are little-endian; those of 8 bits count from 128.
template <size_t bytes> int32_t sampleAt(const uint8_t *at) {
  if constexpr (bytes == 1) return *at - 128;
  uint32_t sum = 0;
  for (size_t i = 0; i < bytes; ++i) sum |= static_cast<uint32_t>(at[i]) << 8 * i;
  if constexpr (bytes == 2) return static_cast<int16_t>(sum);
  return static_cast<int32_t>(sum);
}
