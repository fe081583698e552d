// Where the example is built without libsndfile, the library's own reader is the only one.

#include "source.h"

OpenedSource openForeignSource(Stream, const std::optional<Chunks> &, const std::string &reason) {
  return {nullptr, reason};
}
