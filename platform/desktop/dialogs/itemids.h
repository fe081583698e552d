// Lists of items that name a folder: here one item with its path, and the end.
#pragma once

#include "platform/winapi/shell.h"

#include <cstdlib>
#include <memory>
#include <string>

namespace platform {

struct ListFree {
  void operator()(LPITEMIDLIST list) const { std::free(list); }
};
using List = std::unique_ptr<ITEMIDLIST, ListFree>;

// The caller's to free; null when there is no memory.
LPITEMIDLIST listOf(const std::string &path);
std::string pathOf(LPCITEMIDLIST list);

} // namespace platform
