// Bytes of files that pictures are read from.
#pragma once

#include <cstdint>
#include <vector>

namespace platform {

// What a file holds; nothing for one that there isn't, or that is no file. name: as the API takes it.
std::vector<uint8_t> readWholeFile(const char *name);

} // namespace platform
