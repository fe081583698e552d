// Files and folders by scripts.
#pragma once

#include "support/files.h"

#include "platform/platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

inline std::string answer(BOOL result) { return result ? "ok" : std::to_string(GetLastError()); }

// Tests are scripts of statements "VERB WORD... ANSWER" with a semicolon between. The answer is "ok", an error number
// or what was asked for. Names lie in a folder of the test's own; a % in a word stands for a blank. One file, one
// mapping and one view are open at a time.
class FilesTest : public testing::Test {
 protected:
  // word: what stands for # in the script.
  void run(std::string script, const std::string &word = {}) {
    for (size_t at; (at = script.find('#')) != std::string::npos;) script.replace(at, 1, word);
    std::istringstream statements(script);
    for (std::string statement; std::getline(statements, statement, ';');) {
      std::istringstream split(statement);
      Words words{std::istream_iterator<std::string>(split), {}};
      for (std::string &word : words) std::replace(word.begin(), word.end(), '%', ' ');
      const std::string expected = words.back();
      words.back().clear();
      EXPECT_EQ(verbs_.at(words[0])(words), expected) << statement;
    }
  }

  std::string at(const std::string &name) const { return folder_.path() + '\\' + name; }

  // access: 1 for reading, 2 for writing, 3 for both; share: the same, and 4 for deleting.
  std::string open(const std::string &name, DWORD access, DWORD share, DWORD creation, DWORD attributes = 0) {
    SetLastError(12345);
    file_ = CreateFileA(name.c_str(), (access & 1 ? GENERIC_READ : 0) | (access & 2 ? GENERIC_WRITE : 0), share,
                        nullptr, creation, attributes, nullptr);
    return answer(file_ != INVALID_HANDLE_VALUE);
  }

  // The last error, which also tells that there was a file.
  std::string create(const std::string &name, DWORD creation) {
    const bool opened = open(name, 3, 0, creation) == "ok";
    const DWORD error = GetLastError();
    return opened && !CloseHandle(file_) ? "not closed" : std::to_string(error);
  }

  std::string write(const std::string &text) const {
    DWORD count = 99;
    const BOOL written = WriteFile(file_, text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
    EXPECT_EQ(count, written ? text.size() : 0);
    return answer(written);
  }

  std::string read(DWORD size) const {
    std::string text(size, '~');
    DWORD count = 99;
    if (!ReadFile(file_, text.data(), size, &count, nullptr)) return std::to_string(GetLastError() + count);
    return '=' + text.substr(0, count);
  }

  // The names that a pattern finds, with slashes between; or the error.
  static std::string found(const std::string &pattern) {
    WIN32_FIND_DATAA entry;
    const HANDLE find = FindFirstFileA(pattern.c_str(), &entry);
    if (find == INVALID_HANDLE_VALUE) return answer(FALSE);
    std::string names = entry.cFileName;
    while (FindNextFileA(find, &entry)) names += std::string("/") + entry.cFileName;
    return GetLastError() == ERROR_NO_MORE_FILES && FindClose(find) ? names : "not ended";
  }

  // The end of a file's name that is searched for in four folders; or the error.
  std::string search(const std::string &name, const char *extension) const {
    const std::string folders = at("no") + ';' + at("one") + ";;" + at("two") + '\\';
    char full[MAX_PATH], *last = full;
    const DWORD length = SearchPathA(folders.c_str(), name.c_str(), extension, sizeof full, full, &last);
    if (length == 0) return answer(FALSE);
    EXPECT_EQ(last, std::strrchr(full, '\\') + 1);
    EXPECT_EQ(SearchPathA(folders.c_str(), full, "", length, full, &last), length + 1); // too short by one
    return std::strstr(full, at("").c_str()) + at("").size();
  }

  const TempFolder folder_;
  HANDLE file_ = nullptr, mapping_ = nullptr;
  char *view_ = nullptr;

  using Words = std::vector<std::string>;

  static DWORD number(const std::string &word) { return static_cast<DWORD>(std::stoul(word)); }
  static std::string valueOr(DWORD none, DWORD value) { return value == none ? answer(FALSE) : std::to_string(value); }

  const std::map<std::string, std::function<std::string(Words &)>> verbs_ = {
      {"make", [&](Words &w) { return answer(CreateDirectoryA(at(w[1]).c_str(), nullptr)); }},
      {"remove", [&](Words &w) { return answer(RemoveDirectoryA(at(w[1]).c_str())); }},
      {"erase", [&](Words &w) { return answer(DeleteFileA(at(w[1]).c_str())); }},
      {"move", [&](Words &w) { return answer(MoveFileA(at(w[1]).c_str(), at(w[2]).c_str())); }},
      {"copy", [&](Words &w) { return answer(CopyFileA(at(w[1]).c_str(), at(w[2]).c_str(), TRUE)); }},
      {"copyover", [&](Words &w) { return answer(CopyFileA(at(w[1]).c_str(), at(w[2]).c_str(), FALSE)); }},
      {"set", [&](Words &w) { return answer(SetFileAttributesA(at(w[1]).c_str(), number(w[2]))); }},
      {"attr", [&](Words &w) { return valueOr(23, GetFileAttributesA(at(w[1]).c_str()) & 23); }},
      {"put", [&](Words &w) { return writeFile(folder_.file(w[1]), w[2]), "ok"; }},
      {"search", [&](Words &w) { return search(w[1], w[2].c_str()); }},
      {"find", [&](Words &w) { return found(at(w[1])); }},
      {"create", [&](Words &w) { return create(at(w[1]), number(w[2])); }},
      {"open", [&](Words &w) { return open(at(w[1]), number(w[2]), number(w[3]), OPEN_EXISTING); }},
      {"new", [&](Words &w) { return open(at(w[1]), 2, 0, CREATE_NEW, number(w[2])); }},
      {"read", [&](Words &w) { return read(number(w[1])); }},
      {"write", [&](Words &w) { return write(w[1]); }},
      {"size", [&](Words &) { return valueOr(INVALID_FILE_SIZE, GetFileSize(file_, nullptr)); }},
      {"cut", [&](Words &) { return answer(SetEndOfFile(file_)); }},
      {"close", [&](Words &) { return answer(CloseHandle(file_)); }},
      {"map", [&](Words &w) { return answer(map(number(w[1]), number(w[2])) != nullptr); }},
      {"unmap", [&](Words &) { return answer(CloseHandle(mapping_)); }},
      {"view", [&](Words &w) { return answer(view(number(w[1]), number(w[2]), number(w[3])) != nullptr); }},
      {"flush", [&](Words &w) { return answer(FlushViewOfFile(view_ + number(w[1]), number(w[2]))); }},
      {"unview", [&](Words &) { return answer(UnmapViewOfFile(view_)); }},
  };

  HANDLE map(DWORD page, DWORD size) {
    return mapping_ = CreateFileMappingA(file_, nullptr, SEC_COMMIT | page, 0, size, nullptr);
  }
  char *view(DWORD access, DWORD offset, SIZE_T size) {
    return view_ = static_cast<char *>(MapViewOfFile(mapping_, access, 0, offset, size));
  }
};
