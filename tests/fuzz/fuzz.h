// What the fuzz targets share.
#pragma once

#include "platform/testing.h"
#include "wq.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <string_view>

// Ends the program, and so keeps the input, when a promise of the library is broken.
#define REQUIRE(condition)                                                                                             \
  do {                                                                                                                 \
    if (condition) break;                                                                                              \
    std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition);                                               \
    std::abort();                                                                                                      \
  } while (false)

// A heap block of exactly the wanted size: one byte too far is a report of AddressSanitizer.
class Room {
 public:
  explicit Room(size_t size) : bytes_(new char[size]), size_(size) { std::memset(bytes_.get(), kFill, size); }
  char *get() const { return bytes_.get(); }
  size_t size() const { return size_; }
  bool untouched() const { return std::string_view(get(), size_).find_first_not_of(kFill) == std::string_view::npos; }

 private:
  static constexpr char kFill = 0x55;
  std::unique_ptr<char[]> bytes_;
  size_t size_;
};

// A string whose NUL is the last byte of its block.
class Text {
 public:
  explicit Text(std::string_view text) : room_(text.size() + 1) {
    std::memcpy(room_.get(), text.data(), text.size());
    room_.get()[text.size()] = '\0';
  }
  const char *begin() const { return room_.get(); }
  const char *end() const { return room_.get() + room_.size() - 1; }

 private:
  Room room_;
};

// Whether a double-byte character stands at a place of a text.
inline bool isDoubleByte(std::string_view text, size_t at) {
  if (at + 1 >= text.size()) return false;
  const auto lead = static_cast<unsigned char>(text[at]);
  const auto trail = static_cast<unsigned char>(text[at + 1]);
  return ((lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC)) && trail >= 0x40 && trail <= 0xFC &&
         trail != 0x7F;
}

// An input up to its first NUL or a limit.
inline std::string_view textOf(const void *data, size_t size, size_t limit) {
  const std::string_view bytes(static_cast<const char *>(data), size < limit ? size : limit);
  return bytes.substr(0, bytes.find('\0'));
}

// A folder of this process, removed at its end.
class Folder {
 public:
  Folder() { std::filesystem::create_directory(path_); }
  ~Folder() { std::filesystem::remove_all(path_); }
  std::string file(const std::string &name) const { return path_ + '/' + name; }
  std::string name(const std::string &part) const { return path_ + '\\' + part; }

 private:
  const std::string path_ = std::filesystem::temp_directory_path() / ("fuzz_" + std::to_string(std::random_device()()));
};

// The blocks and drawing objects that are alive.
inline size_t countObjects() {
  PlatformHandleCounts kernel;
  PlatformDesktopCounts desktop;
  platformCountHandles(&kernel);
  platformCountDesktop(&desktop);
  return kernel.memory + desktop.drawing;
}

// What a function writes into a room of the promised size. It is run once more with room for just that.
template <typename Writer> std::string written(size_t promised, Writer write) {
  const Room room(promised);
  write(room.get());
  const std::string text = room.get();
  const Room exact(text.size() + 1);
  write(exact.get());
  REQUIRE(text == exact.get());
  return text;
}
