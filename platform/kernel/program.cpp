// The program's own command line.

#include "platform/kernel/codepage.h"
#include "platform/winapi.h"

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

struct CommandLine {
  std::vector<std::string> texts;
  std::vector<char *> pointers;
  int count = 0;
  char **arguments = nullptr;

  CommandLine() {
    std::ifstream source("/proc/self/cmdline", std::ios::binary);
    for (std::string argument; std::getline(source, argument, '\0');)
      texts.push_back(platform::codePageFromUtf8(argument));
    for (std::string &text : texts) pointers.push_back(text.data());
    count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    arguments = pointers.data();
  }
};

CommandLine &commandLine() {
  static CommandLine line;
  return line;
}

} // namespace

int *__p___argc() { return &commandLine().count; }

char ***__p___argv() { return &commandLine().arguments; }
