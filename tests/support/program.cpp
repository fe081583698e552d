#include "support/program.h"

#include "support/files.h"

#include <algorithm>
#include <cstdlib>

namespace {

#ifdef _WIN32
const std::string kHere = ".\\";
std::string forShell(const std::string &command) { return '"' + command + '"'; } // the shell takes the outer pair off
int exitStatus(int result) { return result; }
#else
const std::string kHere = "./";
std::string forShell(const std::string &command) { return command; }
int exitStatus(int result) { return WIFEXITED(result) ? WEXITSTATUS(result) : -1; }
#endif

std::string text(const std::string &fileName) {
  std::string content = readFile(fileName);
  content.erase(std::remove(content.begin(), content.end(), '\r'), content.end());
  return content;
}

} // namespace

ProgramResult runProgram(const std::string &name, const std::vector<std::string> &arguments) {
  const TempFolder folder;
  std::string command = '"' + kHere + name + '"';
  for (const std::string &argument : arguments) command += " \"" + argument + '"';
  command += " >" + folder.path() + kHere.back() + "out 2>" + folder.path() + kHere.back() + "err";
  const int result = std::system(forShell(command).c_str());
  return {exitStatus(result), text(folder.file("out")), text(folder.file("err"))};
}
