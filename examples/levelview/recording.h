// A WAV file in memory.
#pragma once

#include "wq.h"

#include <string>

class Recording {
 public:
  Recording() { WqPcmBuf_Init(&samples_); }
  ~Recording() { WqPcmBuf_Term(&samples_); }
  Recording(const Recording &) = delete;
  Recording &operator=(const Recording &) = delete;

  // Reads a file, of which only what it really holds is taken.
  // Result: why it is refused, empty when it was read.
  std::string load(const char *fileName);

  const WqPcmBuf &samples() const { return samples_; }
  uint32_t bytes() const { return static_cast<uint32_t>(samples_.writePos - samples_.data); }
  uint32_t frames() const { return bytes() / (samples_.bits / 8 * samples_.channels); }
  // Sample bytes that the header tells of, and that the file really holds.
  uint32_t declaredBytes() const { return declaredBytes_; }
  uint32_t foundBytes() const { return foundBytes_; }

 private:
  WqPcmBuf samples_;
  uint32_t declaredBytes_ = 0;
  uint32_t foundBytes_ = 0;
};
