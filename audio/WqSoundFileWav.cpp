// WAV files as streams. The header is written in one form. It is read field by field up to the format; the data chunk
// behind it is searched.

#include "audio/audio.h"

#include <array>
#include <cstdio>
#include <cstring>

namespace {

constexpr uint16_t kIntegerPcm = 1;
constexpr uint32_t kHeaderSize = 44;

// Reads a little-endian number. A short read leaves the value as it was.
template <typename Number> void readNumber(FILE *file, Number *value) {
  std::array<unsigned char, sizeof(Number)> bytes;
  if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) return;
  uint32_t sum = 0;
  for (size_t i = bytes.size(); i-- > 0;) sum = sum << 8 | bytes[i];
  *value = static_cast<Number>(sum);
}

bool readTag(FILE *file, const char *wanted) {
  std::array<char, 4> tag{};
  return std::fread(tag.data(), 1, tag.size(), file) == tag.size() && std::memcmp(tag.data(), wanted, tag.size()) == 0;
}

// Moves behind the next "data". A byte that breaks a match isn't tried as a new beginning.
bool findData(FILE *file) {
  const char *const word = "data";
  for (const char *next = word; *next;) {
    const int byte = std::getc(file);
    if (byte == EOF) return false;
    next = byte == *next ? next + 1 : word;
  }
  return true;
}

bool readHeader(WqSoundFileWav *wav) {
  FILE *file = wav->file;
  uint32_t ignored = 0;
  uint16_t formatTag = 0;
  if (!readTag(file, "RIFF")) return false;
  readNumber(file, &ignored);
  if (!readTag(file, "WAVE") || !readTag(file, "fmt ")) return false;
  readNumber(file, &ignored);
  readNumber(file, &formatTag);
  if (formatTag != kIntegerPcm) return false;
  readNumber(file, &wav->channels);
  if (wav->channels != 1 && wav->channels != 2) return false;
  readNumber(file, &wav->sampleRate);
  readNumber(file, &wav->bytesPerSec);
  readNumber(file, &wav->blockAlign);
  readNumber(file, &wav->bits);
  if (wav->bits != 8 && wav->bits != 16 && wav->bits != 32) return false;
  if (!findData(file)) return false;
  readNumber(file, &wav->dataSize);
  return true;
}

// Takes the file's length as the size of its samples. Closes the file if the length exceeds 32 bits.
bool measure(WqSoundFileWav *wav) {
  const int64_t length = platformSeekStream(wav->file, 0, SEEK_END);
  const bool known = length >= 0 && length <= UINT32_MAX && platformSeekStream(wav->file, 0, SEEK_SET) == 0;
  if (known)
    wav->dataSize = static_cast<uint32_t>(length);
  else
    WqSoundFileWav_close(wav);
  return known;
}

// Builds a header, field by field.
class HeaderWriter {
 public:
  void tag(const char *text) {
    std::memcpy(&bytes_[used_], text, 4);
    used_ += 4;
  }
  template <typename Number> void number(Number value) {
    for (size_t i = 0; i < sizeof value; ++i) bytes_[used_++] = static_cast<char>(value >> 8 * i);
  }
  const std::array<char, kHeaderSize> &bytes() const { return bytes_; }

 private:
  std::array<char, kHeaderSize> bytes_{};
  size_t used_ = 0;
};

} // namespace

void WqSoundFileWav_init(WqSoundFileWav *wav, uint32_t header, uint32_t write) {
  *wav = {};
  wav->header = header;
  wav->write = write;
}

void WqSoundFileWav_term(WqSoundFileWav *) {}

void WqSoundFileWav_setFormat(WqSoundFileWav *wav, uint32_t sampleRate, uint32_t bits, uint32_t channels) {
  wav->sampleRate = sampleRate;
  wav->bits = static_cast<uint16_t>(bits);
  wav->channels = static_cast<uint16_t>(channels);
  wav->bytesPerSec = bits / 8 * sampleRate * channels;
  wav->blockAlign = static_cast<uint16_t>(bits / 8 * channels);
}

int WqSoundFileWav_open(WqSoundFileWav *wav, const char *fileName) {
  if (*fileName == '\0') return 0;
  WqSoundFileWav_close(wav);
  wav->file = platformOpenStream(fileName, wav->write ? "wb" : "rb");
  if (!wav->file) return 0;
  if (wav->write) return wav->header ? WqSoundFileWav_skipHeader(wav) : 1;
  return wav->header ? readHeader(wav) : measure(wav);
}

int WqSoundFileWav_skipHeader(WqSoundFileWav *wav) {
  if (!wav->file) return 0;
  std::fseek(wav->file, kHeaderSize, SEEK_SET);
  return 1;
}

uint32_t WqSoundFileWav_read(WqSoundFileWav *wav, void *bytes, uint32_t size) {
  return wav->file ? static_cast<uint32_t>(std::fread(bytes, 1, size, wav->file)) : 0;
}

uint32_t WqSoundFileWav_write(WqSoundFileWav *wav, const void *bytes, uint32_t size) {
  return wav->file ? static_cast<uint32_t>(std::fwrite(bytes, 1, size, wav->file)) : 0;
}

int WqSoundFileWav_writeHeader(WqSoundFileWav *wav) {
  if (!wav->file) return 0;
  HeaderWriter header;
  header.tag("RIFF");
  header.number(wav->dataSize + 36);
  header.tag("WAVE");
  header.tag("fmt ");
  header.number(UINT32_C(16)); // bytes of the format chunk
  header.number(kIntegerPcm);
  header.number(wav->channels);
  header.number(wav->sampleRate);
  header.number(wav->bytesPerSec);
  header.number(wav->blockAlign);
  header.number(wav->bits);
  header.tag("data");
  header.number(wav->dataSize);
  std::fseek(wav->file, 0, SEEK_SET);
  std::fwrite(header.bytes().data(), 1, kHeaderSize, wav->file);
  return 1;
}

void WqSoundFileWav_close(WqSoundFileWav *wav) {
  if (!wav->file) return;
  std::fclose(wav->file);
  wav->file = nullptr;
}
