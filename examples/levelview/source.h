// A file of samples, read once from its first frame to its last. Plain WAV files are the library's own reader's; all
// others go through libsndfile, where the example is built with it.
#pragma once

#include "chunks.h"
#include "meter.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

struct SourceInfo {
  std::string format; // such as "WAV, 16-bit PCM"
  uint32_t rate = 0;  // frames a second
  uint32_t bits = 0;  // of a sample in the file; 0 where it holds none, but what they are made from
  size_t channels = 0;
  SampleType type = SampleType::int16; // in which samples are read
  uint64_t frames = 0;                 // that the file really holds; a packed one may turn out to hold fewer
  // Bytes of samples by the header, and those that the file really holds; the same for a packed file.
  uint64_t declaredBytes = 0, foundBytes = 0;
  bool isUnfinished = false; // the header tells no length, and all up to the end counts
};

class Source {
 public:
  virtual ~Source() = default;
  Source(const Source &) = delete;
  Source &operator=(const Source &) = delete;

  const SourceInfo &info() const { return info_; }

  // Reads interleaved samples of the type that info() tells.
  // Result: the frames read; 0 at the end.
  virtual size_t read(void *samples, size_t frames) = 0;

 protected:
  explicit Source(SourceInfo info) : info_(std::move(info)) {}

 private:
  const SourceInfo info_;
};

struct OpenedSource {
  std::unique_ptr<Source> source; // null for a file that is refused,
  std::string refusal;            // and why
};

// fileName: in the library's encoding; "-" is standard input. Pipes are read too, all of them before the first frame.
OpenedSource openSource(const std::string &fileName);

struct CloseStream {
  void operator()(std::FILE *file) const { std::fclose(file); }
};
using Stream = std::unique_ptr<std::FILE, CloseStream>;

// Through libsndfile; without it every file is refused.
// reason: why the library's own reader doesn't take the file.
OpenedSource openForeignSource(Stream file, const std::optional<Chunks> &chunks, const std::string &reason);
