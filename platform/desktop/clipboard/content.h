// The content of the clipboard, in the order in which its formats were added.
#pragma once

#include "platform/desktop/clipboard/exchange.h"

#include <string>
#include <vector>

namespace platform {

struct ClipItem {
  enum class From {
    program, // by the program, with data or as a promise
    others,  // by another program
    made     // from another format of the same family
  };

  UINT format;
  From from;
  HANDLE handle = nullptr; // null until the data are there
  BlockBytes block;        // the memory behind the handle, if it is a block
  std::string type;        // the type that another program offers it by
};

class ClipContent {
 public:
  const std::vector<ClipItem> &items() const { return items_; }
  ClipItem *find(UINT format);
  // The item from which a made item gets its data, preferably one with data. Null if there is none.
  const ClipItem *sourceOf(UINT format);
  // The item whose data other programs get as a type. Null if there is none.
  const ClipItem *forType(const std::string &type);
  bool hasPromises() const;

  // Sets the data of a format by the program, or promises them if handle is null.
  void give(UINT format, HANDLE handle, BlockBytes block);
  void addOfOthers(UINT format, const std::string &type);
  // Makes the items of another program the program's own. Items without data go, and so do private formats.
  void adopt();
  // Adds the formats that can be made from the present ones.
  void addMade();
  // Takes over data that have arrived. They are freed if the format is gone or has data already.
  void keep(UINT format, HANDLE handle);
  // Removes promises, and formats that could only be made from them. Result: whether there were promises.
  bool dropPromises();
  void clear();

  // The types that other programs can ask for.
  std::vector<std::string> types() const;

 private:
  void addMade(UINT format);
  std::vector<ClipItem> items_;
};

} // namespace platform
