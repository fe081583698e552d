// Where Qt runs: on a thread that the layer starts, or on that of an application object that the program has made itself.
// Work for Qt is handed over and done there in order.
#pragma once

#include "platform/winapi.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

class QAbstractEventDispatcher;

namespace platform {

class Host {
 public:
  using Work = std::function<void()>;
  using Moment = std::chrono::steady_clock::time_point;

  // cleanUp: the last work of all, while Qt is still there.
  // Null when there is no display. It lives as long as the process.
  static Host *start(Work cleanUp);

  // From any thread. Result: false after the end, when nothing more is done.
  bool post(Work work);
  // Waits until work is done, but not for ever: a program whose event loop doesn't run does none.
  bool finish(Work work, std::chrono::milliseconds limit);

  // Whether much work waits; waits while it does, but not for ever either.
  bool isBehind() const { return undone_ > kMuch; }
  void catchUp();

  // What follows concerns the thread of a program's own application object; on others it does nothing.
  bool runsHere() const;
  void runEvents();
  void waitForEvents(const std::optional<Moment> &until);
  void wake(DWORD thread);

 private:
  static constexpr size_t kMuch = 500;
  class Worker;
  enum class Phase { starting, running, failed, ending, ended };

  explicit Host(Work cleanUp);
  bool startThread();
  bool visit();
  void run(const std::string &displays);
  void enter(Phase phase);
  bool waitUntil(Phase phase, std::chrono::milliseconds limit);
  void doWork();
  void dispatch();
  void end(const int *status);
  void standStill();
  static void leave(int status, void *);
  void stayBehind();

  const Work cleanUp_;
  const pid_t process_;
  bool guest_ = false;                             // of the program's own application object
  std::thread thread_;                             // of one's own
  std::atomic<DWORD> threadId_{0};                 // Qt's
  QAbstractEventDispatcher *dispatcher_ = nullptr; // of that thread
  std::atomic<int> waits_{0};                      // depth of waits on a guest's thread
  std::atomic<bool> gone_{false};                  // the desktop is
  std::mutex endMutex_;

  std::mutex mutex_;
  std::condition_variable changed_;
  Phase phase_ = Phase::starting;
  std::vector<Work> works_;
  std::atomic<size_t> undone_{0}; // of all that was posted
  Worker *worker_ = nullptr;
};

} // namespace platform
