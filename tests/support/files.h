// Files for tests.
#pragma once

#include <string>

// A folder of its own below the current one, removed with all it holds at the end. Its name has no blanks and is
// relative, so that it means the same to the library, to the C library and to programs.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder &) = delete;
  TempFolder &operator=(const TempFolder &) = delete;

  const std::string &path() const { return path_; }
  std::string file(const std::string &name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// The whole content of a file, and its replacement. A file that can't be read or written fails the test.
std::string readFile(const std::string &name);
void writeFile(const std::string &name, const std::string &content);
bool fileExists(const std::string &name);
