#include "chunks.h"

#include "wq.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr uint32_t kExtensible = 0xFFFE;
constexpr uint64_t kUnknown = UINT64_MAX; // of a length
// "riff" of a W64 file ends like its other identifiers but "riff" itself
constexpr unsigned char kW64Riff[] = {'r',  'i',  'f',  'f',  0x2E, 0x91, 0xCF, 0x11,
                                      0xA5, 0xD6, 0x28, 0xDB, 0x04, 0xC1, 0x00, 0x00};

// Reads numbers in the order of the container.
class Reader {
 public:
  Reader(std::FILE *file, uint64_t length) : file_(file), length_(length) {}

  bool moveTo(uint64_t place) {
    at_ = place;
    return place <= length_ && platformSeekStream(file_, static_cast<int64_t>(place), SEEK_SET) >= 0;
  }
  bool read(void *bytes, size_t count) {
    at_ += count;
    return std::fread(bytes, 1, count, file_) == count;
  }
  std::string tag() {
    std::array<char, 4> bytes{};
    return read(bytes.data(), bytes.size()) ? std::string(bytes.data(), bytes.size()) : "";
  }
  uint64_t little(size_t count) { return number(count, false); }
  uint64_t big(size_t count) { return number(count, true); }

  uint64_t at() const { return at_; }
  uint64_t length() const { return length_; }
  uint64_t left() const { return length_ - std::min(at_, length_); }

 private:
  // 0 behind the end.
  uint64_t number(size_t count, bool big) {
    std::array<unsigned char, 8> bytes{};
    if (!read(bytes.data(), count)) return 0;
    uint64_t sum = 0;
    for (size_t i = 0; i < count; ++i) sum = sum << 8 | bytes[big ? i : count - 1 - i];
    return sum;
  }

  std::FILE *const file_;
  const uint64_t length_;
  uint64_t at_ = 0;
};

// The format of WAV and W64.
void readFormat(Reader &reader, uint64_t size, Chunks &chunks) {
  chunks.formatTag = static_cast<uint32_t>(reader.little(2));
  chunks.channels = static_cast<uint32_t>(reader.little(2));
  chunks.rate = static_cast<uint32_t>(reader.little(4));
  reader.little(4); // bytes a second
  chunks.blockAlign = static_cast<uint32_t>(reader.little(2));
  chunks.bits = static_cast<uint32_t>(reader.little(2));
  if (chunks.formatTag != kExtensible || size < 40) return;
  reader.moveTo(reader.at() + 8); // the size of what follows, valid bits, speakers
  chunks.formatTag = static_cast<uint32_t>(reader.little(2));
}

void foundData(Reader &reader, uint64_t declared, Chunks &chunks) {
  chunks.dataAt = reader.at();
  chunks.declared = declared;
  chunks.found = std::min(declared, reader.left());
}

// A recorder that was killed has left the lengths of the beginning: 0, or the largest number.
bool isNoLength(uint64_t size) { return size == 0 || size >= 0xFFFFFFFE || size == 0x7FFFFFFF; }

// Whether chunks follow up to the end of the file, as they do behind data that are really empty.
bool chunksFollow(Reader &reader, uint64_t place) {
  while (reader.moveTo(place) && reader.left() >= 8) {
    const std::string tag = reader.tag();
    for (const char c : tag)
      if (c < ' ' || c > '~') return false;
    const uint64_t size = reader.little(4);
    place = reader.at() + size + size % 2;
  }
  return place == reader.length();
}

void walkRiff(Reader &reader, Chunks &chunks) {
  uint64_t longData = kUnknown; // of the chunk that RF64 has for lengths
  for (uint64_t place = 12; reader.moveTo(place) && reader.left() >= 8;) {
    const std::string tag = reader.tag();
    uint64_t size = reader.little(4);
    const uint64_t begin = reader.at();
    if (tag == "ds64") {
      reader.little(8); // of the file
      longData = reader.little(8);
    } else if (tag == "fmt ") {
      readFormat(reader, size, chunks);
    } else if (tag == "data") {
      if (chunks.container == Container::rf64 && size == UINT32_MAX && longData != kUnknown) size = longData;
      foundData(reader, size, chunks);
      const bool none = isNoLength(size) && !(size == 0 && chunksFollow(reader, begin));
      chunks.isUnfinished = none && begin < reader.length();
      if (chunks.isUnfinished) chunks.found = reader.length() - begin;
      return;
    }
    place = begin + size + size % 2;
  }
}

void walkW64(Reader &reader, Chunks &chunks) {
  constexpr uint64_t kHead = 24; // of a chunk, which its length includes
  for (uint64_t place = 40; reader.moveTo(place) && reader.left() >= kHead;) {
    const std::string tag = reader.tag();
    reader.moveTo(place + 16);
    const uint64_t size = reader.little(8);
    if (size < kHead) return;
    if (tag == "fmt ") readFormat(reader, size - kHead, chunks);
    if (tag == "data") return foundData(reader, size - kHead, chunks);
    if (size > reader.length()) return;
    place += (size + 7) / 8 * 8;
  }
}

void walkCaf(Reader &reader, Chunks &chunks) {
  for (uint64_t place = 8; reader.moveTo(place) && reader.left() >= 12;) {
    const std::string tag = reader.tag();
    const uint64_t size = reader.big(8), begin = reader.at();
    if (tag == "desc") {
      const uint64_t bits = reader.big(8);
      double rate;
      std::memcpy(&rate, &bits, sizeof rate);
      chunks.rate = rate >= 0 && rate <= UINT32_MAX ? static_cast<uint32_t>(rate) : 0;
      const std::string coding = reader.tag();
      reader.big(4); // flags
      const auto packet = static_cast<uint32_t>(reader.big(4));
      const auto frames = static_cast<uint32_t>(reader.big(4));
      chunks.channels = static_cast<uint32_t>(reader.big(4));
      chunks.bits = static_cast<uint32_t>(reader.big(4));
      chunks.blockAlign = coding == "lpcm" && frames == 1 ? packet : 0;
    } else if (tag == "data") {
      reader.big(4); // how often it was edited
      foundData(reader, size == kUnknown || size < 4 ? kUnknown : size - 4, chunks);
      chunks.isUnfinished = size == kUnknown;
      return;
    }
    if (size > reader.length()) return;
    place = begin + size;
  }
}

} // namespace

std::optional<Chunks> walkChunks(std::FILE *file) {
  const int64_t length = platformSeekStream(file, 0, SEEK_END);
  if (length < 0) return std::nullopt;
  Reader reader(file, static_cast<uint64_t>(length));
  reader.moveTo(0);
  std::array<unsigned char, 16> head{};
  if (!reader.read(head.data(), head.size())) return std::nullopt;
  const auto is = [&](size_t at, const char *tag) { return std::memcmp(&head[at], tag, 4) == 0; };
  Chunks chunks;
  if ((is(0, "RIFF") || is(0, "RF64")) && is(8, "WAVE")) {
    if (is(0, "RF64")) chunks.container = Container::rf64;
    walkRiff(reader, chunks);
  } else if (std::memcmp(head.data(), kW64Riff, sizeof kW64Riff) == 0) {
    chunks.container = Container::w64;
    walkW64(reader, chunks);
  } else if (is(0, "caff")) {
    chunks.container = Container::caf;
    walkCaf(reader, chunks);
  } else {
    return std::nullopt;
  }
  return chunks;
}

std::string formatName(const Chunks &chunks) {
  constexpr const char *kNames[] = {"WAV", "RF64", "W64", "CAF"};
  constexpr uint32_t kPcm = 1, kFloat = 3;
  std::string name = kNames[static_cast<size_t>(chunks.container)];
  if (chunks.container == Container::caf) return name;
  if (chunks.formatTag == kPcm) return name + ", " + std::to_string(chunks.bits) + "-bit PCM";
  if (chunks.formatTag == kFloat) return name + ", " + std::to_string(chunks.bits) + "-bit float";
  return name + ", format " + std::to_string(chunks.formatTag);
}
