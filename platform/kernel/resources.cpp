// The table of the program's resources.

#include "platform/kernel/resources.h"

#include <map>
#include <utility>

namespace {

using Table = std::map<std::pair<unsigned, unsigned>, const PlatformResource *>;

// Filled before main, and only read from then on.
Table &table() {
  static auto *all = new Table;
  return *all;
}

} // namespace

const PlatformResource *platform::findResource(unsigned kind, unsigned id) {
  const auto at = table().find({kind, id});
  return at == table().end() ? nullptr : at->second;
}

void platformAddResources(const PlatformResource *resources, size_t count) {
  for (size_t i = 0; i < count; ++i) table()[{resources[i].kind, resources[i].id}] = &resources[i];
}
