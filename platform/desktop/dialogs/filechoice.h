// The program's record of a choice of files: what it asks for, what may be chosen, and what it gets.
#pragma once

#include "platform/desktop/dialogs/filenames.h"
#include "platform/winapi/dialogs.h"

#include <string>
#include <vector>

namespace platform {

class FileChoice {
 public:
  struct Filter {
    std::string text, patterns;
  };

  FileChoice(OPENFILENAMEA &record, bool opens);

  OPENFILENAMEA &record() const { return record_; }
  bool opens() const { return opens_; }
  bool has(DWORD flag) const { return record_.Flags & flag; }
  const std::vector<Filter> &filters() const { return filters_; }
  size_t firstFilter() const; // counted from 0
  std::string patternsOf(size_t filter) const;
  // What the dialog begins with.
  const std::string &folder() const { return folder_; }
  const std::string &name() const { return name_; }

  // Gives a path its extension, and asks the user what is to be asked. patterns: of the filter. agreed: the user has
  // agreed to replace the file of this path. Result: whether it can be taken.
  bool check(HWND dialog, std::string &path, const std::string &patterns, bool agreed) const;
  // Writes paths of files in a folder to the record. Result: an error of the dialog's, 0 for none.
  DWORD write(const std::string &folder, const std::vector<std::string> &paths, size_t filter) const;
  // Whether the user wants to read only, where the program lets it be chosen.
  void takeReadOnly(bool wanted) const;
  // The user has had the last word: the current folder follows, unless the program wants it to stay.
  void finish(const std::string &folder) const;

 private:
  std::string extensionFor(const std::string &patterns) const;
  void writeParts(const std::string &folder, const std::vector<std::string> &paths, size_t filter) const;

  OPENFILENAMEA &record_;
  const bool opens_;
  std::vector<Filter> filters_;
  std::string folder_, name_;
};

// Copies a text into room of the program's with a NUL. Result: whether there is enough.
bool copyOut(const std::string &text, LPSTR room, DWORD size);
// The same as far as there is room, for an answer to a message. Result: the bytes needed.
LRESULT handOut(const std::string &text, WPARAM size, LPARAM room);

} // namespace platform
