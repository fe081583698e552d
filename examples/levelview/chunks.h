// The chunks of a sound file, walked one by one as its format orders them: RIFF and RF64 (WAV), W64, and CAF. What a
// reader tells of such a file is held against them.
#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

enum class Container { riff, rf64, w64, caf };

struct Chunks {
  Container container = Container::riff;
  // Of the format chunk; 0 before one was found. A CAF file tells no block align where frames differ in length.
  uint32_t formatTag = 0, channels = 0, rate = 0, blockAlign = 0, bits = 0;
  uint64_t dataAt = 0;       // the place of the samples in the file; 0 where there are none
  uint64_t declared = 0;     // bytes of samples by their header
  uint64_t found = 0;        // those that the file holds, at most the declared ones
  bool isUnfinished = false; // the header was written before the samples and never again: it tells no length
};

// Nothing for a file of another kind, and for one whose stream can't be moved. The stream stands anywhere afterwards.
std::optional<Chunks> walkChunks(std::FILE *file);

// "WAV, 16-bit PCM" and the like.
std::string formatName(const Chunks &chunks);
