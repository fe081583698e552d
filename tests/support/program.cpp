#include "support/program.h"

#include "support/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#ifdef _WIN32
#include "platform/platform.h"
#else
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

#ifdef _WIN32
const std::string kHere = ".\\";
std::string forShell(const std::string &command) { return '"' + command + '"'; } // the shell takes the outer pair off
int exitStatus(int result) { return result; }

// Result: 0 when it can't be started.
intptr_t start(const std::string &program, const std::vector<std::string> &arguments) {
  std::string command = '"' + program + '"';
  for (const std::string &argument : arguments) command += " \"" + argument + '"';
  STARTUPINFOA info{};
  info.cb = sizeof info;
  PROCESS_INFORMATION process;
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &info, &process)) return 0;
  CloseHandle(process.hThread);
  return reinterpret_cast<intptr_t>(process.hProcess);
}

void end(intptr_t process) { TerminateProcess(reinterpret_cast<HANDLE>(process), static_cast<UINT>(-1)); }

// Result: the exit status once it has ended.
std::optional<int> ended(intptr_t process, bool waits) {
  const auto handle = reinterpret_cast<HANDLE>(process);
  DWORD status;
  if (WaitForSingleObject(handle, waits ? INFINITE : 0) != WAIT_OBJECT_0 || !GetExitCodeProcess(handle, &status))
    return std::nullopt;
  CloseHandle(handle);
  return static_cast<int>(status);
}
#else
const std::string kHere = "./";
std::string forShell(const std::string &command) { return command; }
int exitStatus(int result) { return WIFEXITED(result) ? WEXITSTATUS(result) : -1; }

intptr_t start(const std::string &program, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), program);
  std::vector<char *> words;
  for (std::string &argument : arguments) words.push_back(argument.data());
  words.push_back(nullptr);
  pid_t process;
  return posix_spawn(&process, program.c_str(), nullptr, nullptr, words.data(), environ) == 0 ? process : 0;
}

void end(intptr_t process) { ::kill(static_cast<pid_t>(process), SIGKILL); }

std::optional<int> ended(intptr_t process, bool waits) {
  int result;
  if (waitpid(static_cast<pid_t>(process), &result, waits ? 0 : WNOHANG) <= 0) return std::nullopt;
  return exitStatus(result);
}
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

BackgroundProgram::BackgroundProgram(const std::string &name, const std::vector<std::string> &arguments)
    : process_(start(kHere + name, arguments)) {
  if (process_ == 0) status_ = -1;
  EXPECT_NE(process_, 0) << name << " can't be started";
}

BackgroundProgram::~BackgroundProgram() { kill(); }

void BackgroundProgram::kill() {
  if (running()) end(process_);
  wait();
}

int BackgroundProgram::wait() {
  if (!status_) status_ = ended(process_, true).value_or(-1);
  return *status_;
}

bool BackgroundProgram::running() {
  if (!status_) status_ = ended(process_, false);
  return !status_;
}
