#include "support/display/commands.h"

#include "support/display/user.h"
#include "support/files.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds kLongest(15); // that a command runs beside a test

std::string limited(const std::string &command, int64_t seconds) {
  std::string quoted;
  for (const char character : command) quoted += character == '\'' ? "'\\''" : std::string(1, character);
  return "cd '" + programFolder() + "' && exec timeout -k 1 " + std::to_string(seconds) + " sh -c '" + quoted + "'";
}

int statusOf(int result) { return WIFEXITED(result) ? WEXITSTATUS(result) : 128 + WTERMSIG(result); }

} // namespace

std::string sessionScript() { return WQ_SESSION_SCRIPT; }

Ended runCommand(const std::string &command, int seconds) {
  constexpr int kLate = 124, kKilled = 128 + 9; // what timeout says
  const TempFolder folder;
  const std::string out = folder.file("out"), err = folder.file("err");
  const int status =
      statusOf(std::system(('(' + limited(command, seconds) + ") >'" + out + "' 2>'" + err + "'").c_str()));
  return {status, status != kLate && status != kKilled, readFile(out), readFile(err)};
}

Beside::Beside(const std::string &command) : stream_(popen(limited(command, kLongest.count()).c_str(), "r")) {
  if (!stream_) throw std::runtime_error(command + " can't be started");
}

Beside::~Beside() { end(); }

bool Beside::readMore(std::chrono::steady_clock::time_point last) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(last - std::chrono::steady_clock::now());
  pollfd file = {fileno(stream_), POLLIN, 0};
  if (left.count() <= 0 || poll(&file, 1, static_cast<int>(left.count())) <= 0) return false;
  char part[4096];
  const ssize_t count = read(file.fd, part, sizeof part);
  read_.append(part, static_cast<size_t>(std::max<ssize_t>(count, 0)));
  return count > 0;
}

std::string Beside::line(const std::string &beginning) {
  const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(3);
  do {
    for (size_t end; (end = read_.find('\n')) != std::string::npos;) {
      const std::string line = read_.substr(0, end);
      read_.erase(0, end + 1);
      if (line.starts_with(beginning)) return line;
    }
  } while (stream_ && readMore(last));
  return {};
}

int Beside::end() {
  if (!stream_) return status_;
  while (readMore(std::chrono::steady_clock::now() + kLongest)) {} // so that it never writes to nobody
  status_ = statusOf(pclose(stream_));
  stream_ = nullptr;
  return status_;
}
