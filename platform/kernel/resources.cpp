// The table of the program's resources.

#include "platform/kernel/resources.h"

#include "platform/kernel/codepage.h"

#include <map>
#include <utility>

namespace {

using Table = std::map<std::pair<unsigned, unsigned>, const PlatformResource *>;

// The table is filled before main, and only read from then on.
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

// A text that doesn't fit is cut at a whole character. The instance is ignored: the program is the only one.
int LoadStringA(HINSTANCE instance, UINT id, LPSTR text, int size) {
  if (!text || size <= 0) return -1;
  const bool own = !instance || instance == GetModuleHandleA(nullptr);
  const PlatformResource *const found = own ? platform::findResource(PLATFORM_STRING_RESOURCE, id) : nullptr;
  const std::string_view whole = found ? std::string_view(static_cast<const char *>(found->bytes), found->size) : "";
  return static_cast<int>(platform::copyWhole(whole, text, static_cast<size_t>(size)));
}
