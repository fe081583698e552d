// Files that the library's own reader doesn't take, through libsndfile.

#include "source.h"

#include "wq.h"

#include <sndfile.h>

#include <algorithm>
#include <array>

namespace {

// What libsndfile reads: the file, in which a length that was never written is the true one.
struct Mended {
  Stream file;
  uint64_t place = 0; // of the length; 0 for none
  uint32_t length = 0;

  Mended(Stream stream, const std::optional<Chunks> &chunks) : file(std::move(stream)) {
    if (!chunks || !chunks->isUnfinished || chunks->container != Container::riff) return;
    if (chunks->found > UINT32_MAX) return;
    place = chunks->dataAt - 4;
    length = static_cast<uint32_t>(chunks->found);
  }
  static Mended &of(void *self) { return *static_cast<Mended *>(self); }
  static sf_count_t size(void *self) {
    std::FILE *const file = of(self).file.get();
    const int64_t at = platformSeekStream(file, 0, SEEK_CUR), end = platformSeekStream(file, 0, SEEK_END);
    platformSeekStream(file, at, SEEK_SET);
    return end;
  }
  static sf_count_t seek(sf_count_t offset, int origin, void *self) {
    return platformSeekStream(of(self).file.get(), offset, origin);
  }
  static sf_count_t tell(void *self) { return platformSeekStream(of(self).file.get(), 0, SEEK_CUR); }
  static sf_count_t read(void *bytes, sf_count_t count, void *self) {
    Mended &own = of(self);
    const int64_t at = own.place ? tell(self) : 0;
    const size_t got = std::fread(bytes, 1, static_cast<size_t>(count), own.file.get());
    for (uint64_t i = 0; own.place && i < sizeof own.length; ++i) {
      const uint64_t behind = own.place + i - static_cast<uint64_t>(at);
      if (behind < got) static_cast<uint8_t *>(bytes)[behind] = static_cast<uint8_t>(own.length >> 8 * i);
    }
    return static_cast<sf_count_t>(got);
  }
};

struct CloseSound {
  void operator()(SNDFILE *sound) const { sf_close(sound); }
};
using Sound = std::unique_ptr<SNDFILE, CloseSound>;

// How a coding is read. Raw bytes need no work under the lock of the threads that meter them.
struct Coding {
  int format;
  uint32_t bits;
  SampleType type, rawType; // rawType: of the bytes in a file with the lowest byte first
};
constexpr Coding kCodings[] = {{SF_FORMAT_PCM_S8, 8, SampleType::int16, SampleType::int16},
                               {SF_FORMAT_PCM_U8, 8, SampleType::int16, SampleType::uint8},
                               {SF_FORMAT_PCM_16, 16, SampleType::int16, SampleType::int16},
                               {SF_FORMAT_PCM_24, 24, SampleType::int32, SampleType::int24},
                               {SF_FORMAT_PCM_32, 32, SampleType::int32, SampleType::int32},
                               {SF_FORMAT_FLOAT, 32, SampleType::float32, SampleType::float32},
                               {SF_FORMAT_DOUBLE, 64, SampleType::float32, SampleType::float32},
                               {SF_FORMAT_ULAW, 16, SampleType::int16, SampleType::int16},
                               {SF_FORMAT_ALAW, 16, SampleType::int16, SampleType::int16},
                               {SF_FORMAT_ALAC_16, 16, SampleType::int16, SampleType::int16},
                               {SF_FORMAT_ALAC_20, 20, SampleType::int32, SampleType::int32},
                               {SF_FORMAT_ALAC_24, 24, SampleType::int32, SampleType::int32},
                               {SF_FORMAT_ALAC_32, 32, SampleType::int32, SampleType::int32}};
constexpr int kMostChannels = 64;
constexpr Coding kOther = {0, 0, SampleType::float32, SampleType::float32}; // such as MP3

Coding codingOf(const SF_INFO &info) {
  for (const Coding &coding : kCodings)
    if (coding.format == (info.format & SF_FORMAT_SUBMASK)) return coding;
  return kOther;
}

// Whether the bytes of the file are the samples as they are metered.
bool isRaw(const SF_INFO &info) {
  const int container = info.format & SF_FORMAT_TYPEMASK, coding = info.format & SF_FORMAT_SUBMASK;
  const bool isLittle = container == SF_FORMAT_WAV || container == SF_FORMAT_WAVEX || container == SF_FORMAT_W64 ||
                        container == SF_FORMAT_RF64;
  const bool isPlain = coding == SF_FORMAT_PCM_U8 || coding == SF_FORMAT_PCM_16 || coding == SF_FORMAT_PCM_24 ||
                       coding == SF_FORMAT_PCM_32 || coding == SF_FORMAT_FLOAT;
  return isLittle && isPlain && (info.format & SF_FORMAT_ENDMASK) != SF_ENDIAN_BIG;
}

// Of a container or of a coding.
std::string nameOf(int format) {
  SF_FORMAT_INFO info{format, nullptr, nullptr};
  return sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof info) == 0 && info.name ? info.name : "unknown";
}

class ForeignSource final : public Source {
 public:
  ForeignSource(std::unique_ptr<Mended> file, Sound sound, SourceInfo info, bool raw)
      : Source(std::move(info)), file_(std::move(file)), sound_(std::move(sound)), raw_(raw) {}

  size_t read(void *samples, size_t frames) override {
    const auto wanted = static_cast<sf_count_t>(frames);
    return static_cast<size_t>(
        std::max<sf_count_t>(0, raw_ ? readRaw(samples, wanted) : readConverted(samples, wanted)));
  }

 private:
  sf_count_t readRaw(void *samples, sf_count_t frames) {
    const auto frameBytes = static_cast<sf_count_t>(sampleBytes(info().type) * info().channels);
    return sf_read_raw(sound_.get(), samples, frames * frameBytes) / frameBytes;
  }
  sf_count_t readConverted(void *samples, sf_count_t frames) {
    switch (info().type) {
    case SampleType::int16: return sf_readf_short(sound_.get(), static_cast<short *>(samples), frames);
    case SampleType::int32: return sf_readf_int(sound_.get(), static_cast<int *>(samples), frames);
    default: return sf_readf_float(sound_.get(), static_cast<float *>(samples), frames);
    }
  }

  const std::unique_ptr<Mended> file_; // outlives the sound, which reads from it
  const Sound sound_;
  const bool raw_;
};

} // namespace

OpenedSource openForeignSource(Stream stream, const std::optional<Chunks> &chunks, const std::string &reason) {
  auto file = std::make_unique<Mended>(std::move(stream), chunks);
  platformSeekStream(file->file.get(), 0, SEEK_SET);
  SF_VIRTUAL_IO calls{Mended::size, Mended::seek, Mended::read, nullptr, Mended::tell};
  SF_INFO info{};
  Sound sound(sf_open_virtual(&calls, SFM_READ, &info, file.get()));
  if (!sound) return {nullptr, reason};
  if (info.samplerate <= 0) return {nullptr, "0 frames a second"};
  if (info.channels > kMostChannels) return {nullptr, std::to_string(info.channels) + " channels"};
  if (info.frames <= 0) return {nullptr, "no samples"};
  const bool raw = isRaw(info);
  const Coding coding = codingOf(info);
  SourceInfo told;
  told.format = nameOf(info.format & SF_FORMAT_TYPEMASK) + ", " + nameOf(info.format & SF_FORMAT_SUBMASK);
  told.rate = static_cast<uint32_t>(info.samplerate), told.bits = coding.bits;
  told.channels = static_cast<size_t>(info.channels);
  told.type = raw ? coding.rawType : coding.type;
  told.frames = static_cast<uint64_t>(info.frames);
  told.declaredBytes = told.foundBytes = told.frames * told.channels * told.bits / 8;
  const bool comparable = chunks && chunks->blockAlign > 0 && (raw || chunks->container == Container::caf);
  if (comparable) {
    const uint64_t found = chunks->found / chunks->blockAlign;
    if (found != told.frames)
      return {nullptr, "its chunks hold " + std::to_string(found) + " frames, and libsndfile finds " +
                           std::to_string(told.frames)};
    told.declaredBytes = chunks->declared, told.foundBytes = chunks->found, told.isUnfinished = chunks->isUnfinished;
  }
  return {std::make_unique<ForeignSource>(std::move(file), std::move(sound), std::move(told), raw), {}};
}
