// Names of foreign bytes: whatever this system calls a file is listed under a name that leads to it, and whatever name
// an application makes a file under finds it again, in any case.
//
// An input is a byte, which tells the two apart, and the name.

#include "fuzz.h"

#include "platform/platform.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr size_t kLongest = 60; // as escapes three times as long, and then the path must still have less than 260 bytes

const Folder &folder() {
  static const Folder only;
  return only;
}

// What a pattern finds but for the folder itself and its parent.
std::vector<std::string> found(const std::string &pattern) {
  std::vector<std::string> names;
  WIN32_FIND_DATAA entry;
  const HANDLE find = FindFirstFileA(folder().name(pattern).c_str(), &entry);
  if (find == INVALID_HANDLE_VALUE) return names;
  do {
    const std::string name = entry.cFileName;
    if (name != "." && name != "..") names.push_back(name);
  } while (FindNextFileA(find, &entry));
  REQUIRE(FindClose(find));
  return names;
}

bool opens(const std::string &part, DWORD creation) {
  const HANDLE file = CreateFileA(folder().name(part).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, creation,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  return file != INVALID_HANDLE_VALUE && CloseHandle(file);
}

// A text with its letters in the other case, as far as they are single bytes.
std::string inOtherCase(std::string text) {
  for (size_t at = 0; at < text.size(); at += isDoubleByte(text, at) ? 2 : 1)
    if ((text[at] >= 'a' && text[at] <= 'z') || (text[at] >= 'A' && text[at] <= 'Z'))
      text[at] = static_cast<char>(text[at] ^ 0x20);
  return text;
}

// A file of this system is listed, opened, found by its name, and moved away and back.
void listed(const std::string &part) {
  const int file = open(folder().file(part).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file < 0) return;
  close(file);
  const std::vector<std::string> names = found("*");
  REQUIRE(names.size() == 1);
  REQUIRE(found(names[0]) == names);
  REQUIRE(opens(names[0], OPEN_EXISTING));
  REQUIRE(!opens(names[0], CREATE_NEW));
  REQUIRE(opens(inOtherCase(names[0]), OPEN_EXISTING));
  REQUIRE(MoveFileA(folder().name(names[0]).c_str(), folder().name("other").c_str()) || part == "other");
  REQUIRE(MoveFileA(folder().name("other").c_str(), folder().name(names[0]).c_str()) || part == "other");
  REQUIRE(access(folder().file(part).c_str(), F_OK) == 0);
  REQUIRE(DeleteFileA(folder().name(names[0]).c_str()));
}

// A file under a name of the application's is made once, and found under that name and the one that is listed.
void made(const std::string &name) {
  if (!opens(name, CREATE_NEW)) return;
  const std::vector<std::string> names = found("*");
  if (names.empty()) { // the device that swallows everything
    REQUIRE(opens(name, CREATE_NEW));
    return;
  }
  REQUIRE(names.size() == 1);
  for (const std::string &each : {name, inOtherCase(name), names[0], name + '.', name + " "}) {
    REQUIRE(!opens(each, CREATE_NEW));
    REQUIRE(opens(each, OPEN_ALWAYS));
    REQUIRE(found("*") == names);
  }
  REQUIRE(DeleteFileA(folder().name(inOtherCase(name)).c_str()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 2) return 0;
  std::string text(textOf(data + 1, size - 1, kLongest));
  if (data[0] % 2 == 0) {
    if (text.find('/') != std::string::npos || text == "." || text == "..") return 0;
    listed(text);
  } else {
    // no separators, so that the name stays in the folder; a second half may look like one
    for (size_t at = 0; at < text.size();) {
      if (isDoubleByte(text, at))
        at += 2;
      else if (text[at] == '/' || text[at] == '\\')
        text[at] = 'x';
      else
        ++at;
    }
    made(text);
  }
  REQUIRE(found("*").empty());
  return 0;
}
