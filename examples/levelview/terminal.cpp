#include "terminal.h"

#include "wq.h"

#include <cstdio>
#include <vector>

namespace {

constexpr uint32_t kPatience = 500; // milliseconds before the line appears
constexpr uint32_t kStep = 100;     // and between two states of it

bool isTerminal() {
  DWORD mode;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

} // namespace

std::string shown(const std::string &text) {
  const int units = MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, nullptr, 0);
  std::vector<WCHAR> wide(static_cast<size_t>(units) + 1);
  MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, wide.data(), units);
  const UINT codePage = GetConsoleOutputCP() ? GetConsoleOutputCP() : CP_ACP;
  const int bytes = WideCharToMultiByte(codePage, 0, wide.data(), -1, nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(codePage, 0, wide.data(), -1, out.data(), bytes, nullptr, nullptr);
  if (!out.empty()) out.pop_back(); // the NUL
  return out;
}

void complain(const std::string &text) { std::fprintf(stderr, "levelview: %s\n", shown(text).c_str()); }

Progress::Progress(std::string what)
    : what_(std::move(what)), visible_(isTerminal()), next_(GetTickCount() + kPatience) {}

Progress::~Progress() {
  if (written_) std::fprintf(stderr, "\r%*s\r", 79, "");
}

void Progress::update(uint64_t done, uint64_t total) {
  if (!visible_ || static_cast<int32_t>(GetTickCount() - next_) < 0) return;
  next_ = GetTickCount() + kStep;
  written_ = true;
  const std::string line = shown(what_).substr(0, 60);
  std::fprintf(stderr, "\r%-60s %3u %%", line.c_str(), static_cast<unsigned>(total ? 100 * done / total : 0));
  std::fflush(stderr);
}
