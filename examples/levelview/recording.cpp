#include "recording.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace {

constexpr uint32_t kPiece = 1u << 20; // bytes
const char *const kTooMany = "too many samples for the memory";

std::string number(uint32_t value) { return std::to_string(value); }

// The bytes between the stream and the end of its file, at most limit; limit where the C library can't tell.
uint32_t bytesLeft(std::FILE *file, uint32_t limit) {
  const int64_t start = platformSeekStream(file, 0, SEEK_CUR);
  const int64_t end = platformSeekStream(file, 0, SEEK_END);
  if (start < 0 || end < start) return limit;
  platformSeekStream(file, start, SEEK_SET);
  return static_cast<uint32_t>(std::min<int64_t>(end - start, limit));
}

} // namespace

// The reader tells yes or no, so the bytes it stumbled over are looked at again.
std::string refusalOf(const char *fileName) {
  WqFile file;
  WqFile_Init(&file);
  WqFile_Path(&file, fileName);
  if (!WqFile_ReadOpen(&file)) return "cannot open";
  std::array<uint8_t, 36> bytes{};
  const uint32_t count = WqFile_Read(&file, bytes.data(), bytes.size());
  WqFile_Close(&file);
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

std::string Recording::readHeader(const char *fileName) {
  if (!WqSoundFileWav_open(file_.get(), fileName)) return refusalOf(fileName);
  const uint32_t frameSize = file_->bits / 8u * file_->channels;
  if (file_->blockAlign != frameSize)
    return "block align " + number(file_->blockAlign) + " with " + number(file_->bits) + " bits and " +
           number(file_->channels) + " channels";
  declaredBytes_ = file_->dataSize;
  foundBytes_ = bytesLeft(file_->file, declaredBytes_);
  return foundBytes_ < frameSize ? "no samples" : "";
}

bool Recording::makeRoom() {
  return WqPcmBuf_Alloc(&samples_, file_->sampleRate, foundBytes_ / file_->blockAlign, file_->bits, file_->channels);
}

std::string Recording::open(const char *fileName) {
  std::string refused = readHeader(fileName);
  if (!refused.empty()) return refused;
  return makeRoom() ? "" : kTooMany;
}

bool Recording::readPiece() {
  const uint32_t size = static_cast<uint32_t>(std::min<ptrdiff_t>(samples_.endPos - samples_.writePos, kPiece));
  const uint32_t count = WqSoundFileWav_read(file_.get(), samples_.writePos, size);
  samples_.writePos += count;
  const bool more = count == size && samples_.writePos < samples_.endPos;
  if (!more) WqSoundFileWav_close(file_.get());
  return more;
}

void Recording::swap(Recording &other) {
  file_.swap(other.file_);
  std::swap(samples_, other.samples_);
  std::swap(declaredBytes_, other.declaredBytes_);
  std::swap(foundBytes_, other.foundBytes_);
}

int32_t Recording::value(uint32_t frame, size_t channel) const {
  const uint8_t *at = samples_.data + (static_cast<size_t>(frame) * channels() + channel) * (samples_.bits / 8);
  switch (samples_.bits) {
  case 8: return sampleAt<1>(at);
  case 16: return sampleAt<2>(at);
  default: return sampleAt<4>(at);
  }
}
