// Where the example is built without libsndfile, the library's own reader is the only one.

#include "source.h"

OpenedSource openForeignSource(Stream, const std::optional<Chunks> &chunks, const std::string &reason) {
  const std::string format = chunks ? formatName(*chunks) + ": " : "";
  return {nullptr, format + reason + " (this build reads 8, 16 and 32 bit PCM)"};
}
