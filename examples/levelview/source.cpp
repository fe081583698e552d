#include "source.h"

#include "recording.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

SampleType typeOf(uint32_t bits) {
  return bits == 8 ? SampleType::uint8 : bits == 16 ? SampleType::int16 : SampleType::int32;
}

// Reads with the library's own reader, which has stopped in front of the samples.
class LibrarySource final : public Source {
 public:
  LibrarySource(std::unique_ptr<WavStream> wav, SourceInfo info)
      : Source(std::move(info)), wav_(std::move(wav)), left_(this->info().frames) {}

  size_t read(void *samples, size_t frames) override {
    const size_t frameBytes = sampleBytes(info().type) * info().channels;
    const auto wanted = static_cast<size_t>(std::min<uint64_t>(frames, left_));
    const size_t got =
        WqSoundFileWav_read(wav_->get(), samples, static_cast<uint32_t>(wanted * frameBytes)) / frameBytes;
    left_ -= got;
    return got;
  }

 private:
  const std::unique_ptr<WavStream> wav_;
  uint64_t left_;
};

// What the library's reader makes of a file, if it finds what the file's chunks tell; it looks for the word "data"
// alone, which other chunks may hold.
OpenedSource openPlain(const std::string &fileName, const std::optional<Chunks> &chunks) {
  auto wav = std::make_unique<WavStream>(true);
  if (!WqSoundFileWav_open(wav->get(), fileName.c_str())) return {nullptr, refusalOf(fileName.c_str())};
  const WqSoundFileWav &header = *wav->get();
  const uint32_t frameBytes = header.bits / 8u * header.channels;
  if (header.blockAlign != frameBytes) return {nullptr, "block align " + std::to_string(header.blockAlign)};
  if (!chunks || chunks->found < frameBytes) return {nullptr, "no samples"};
  const int64_t at = platformSeekStream(header.file, 0, SEEK_CUR);
  if (static_cast<uint64_t>(at) != chunks->dataAt) return {nullptr, "a chunk before the samples holds the word data"};
  SourceInfo info;
  info.format = formatName(*chunks);
  info.rate = header.sampleRate, info.bits = header.bits, info.channels = header.channels;
  info.type = typeOf(header.bits);
  info.frames = chunks->found / frameBytes;
  info.declaredBytes = chunks->declared, info.foundBytes = chunks->found;
  info.isUnfinished = chunks->isUnfinished;
  return {std::make_unique<LibrarySource>(std::move(wav), std::move(info)), {}};
}

// A pipe's content in a file of its own, which goes when it is closed. Null when that can't be made.
Stream spool(std::FILE *pipe) {
  Stream file(std::tmpfile());
  std::array<char, 1 << 16> bytes;
  while (file) {
    const size_t count = std::fread(bytes.data(), 1, bytes.size(), pipe);
    if (std::fwrite(bytes.data(), 1, count, file.get()) != count) return nullptr; // the disk is full
    if (count < bytes.size()) break;
  }
  return file;
}

} // namespace

OpenedSource openSource(const std::string &fileName) {
  const std::string name = fileName == "-" ? "/dev/stdin" : fileName;
  Stream file(platformOpenStream(name.c_str(), "rb"));
  if (!file) return {nullptr, refusalOf(name.c_str())};
  const bool isPipe = platformSeekStream(file.get(), 0, SEEK_END) < 0;
  if (isPipe && !(file = spool(file.get()))) return {nullptr, "no room for what the pipe tells"};
  const std::optional<Chunks> chunks = walkChunks(file.get());
  if (chunks && chunks->channels > 0 && chunks->rate == 0) return {nullptr, "0 frames a second"};
  OpenedSource plain{nullptr, "no plain WAV file in a pipe"};
  if (!isPipe) plain = openPlain(name, chunks);
  if (plain.source) return plain;
  return openForeignSource(std::move(file), chunks, plain.refusal);
}
