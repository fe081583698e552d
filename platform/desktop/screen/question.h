// What the user is asked by the desktop's own dialog for files, and the answer. Texts are UTF-8; paths are of this
// system.
#pragma once

#include "platform/winapi.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform {

struct FileQuestion {
  enum class Kind { open, save, folder };
  struct Filter {
    std::string text;
    std::vector<std::string> patterns;
    bool operator==(const Filter &) const = default;
  };

  Kind kind = Kind::open;
  bool several = false;
  HWND owner = nullptr; // a top-level window that the dialog stays above
  std::string title;
  std::vector<Filter> filters;
  size_t filter = 0;        // that is chosen at first
  std::string folder, name; // to begin with; empty for the desktop's choice
};

struct FileAnswer {
  enum class Outcome { unable, cancelled, chosen }; // unable: the dialog could not be shown
  Outcome outcome = Outcome::unable;
  std::vector<std::string> paths;
  std::optional<size_t> filter; // where the dialog tells it
  bool readOnly = false;        // the user wants it so
};

using FileAnswered = std::function<void(const FileAnswer &)>;

} // namespace platform
