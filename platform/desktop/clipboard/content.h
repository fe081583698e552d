// What lies on the clipboard, in the order in which it came there.
#pragma once

#include "platform/desktop/clipboard/exchange.h"

#include <string>
#include <vector>

namespace platform {

struct ClipItem {
  enum class From {
    program, // given with its data, or promised
    others,  // another program has it
    made     // from another one of its family
  };

  UINT format;
  From from;
  HANDLE handle = nullptr; // null as long as the data aren't there
  BlockBytes block;        // of the handle, where it stands for one
  std::string type;        // by which another program has it
};

class ClipContent {
 public:
  const std::vector<ClipItem> &items() const { return items_; }
  ClipItem *find(UINT format);
  // The one from which a made one is made: such as are there before such as aren't. Null when there is none.
  const ClipItem *sourceOf(UINT format);
  // The one whose data go to other programs as a type. Null when there is none.
  const ClipItem *forType(const std::string &type);
  bool hasPromises() const;

  // Puts the program's data there, or a promise, in the place of others of the same format.
  void give(UINT format, HANDLE handle, BlockBytes block);
  void addOfOthers(UINT format, const std::string &type);
  // What another program has given is the program's own from here on. What it hasn't goes, and its private formats.
  void adopt();
  // Adds what can be made of the rest.
  void addMade();
  // Data that have come. Those of a format that has some already, or that is gone, are freed.
  void keep(UINT format, HANDLE handle);
  // Takes promises away, and what could be made of nothing else. Result: whether there were any.
  bool dropPromises();
  void clear();

  // The types by which other programs can have it.
  std::vector<std::string> types() const;

 private:
  void addMade(UINT format);
  std::vector<ClipItem> items_;
};

} // namespace platform
