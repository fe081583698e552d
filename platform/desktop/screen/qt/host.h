// Qt's thread: one that the layer starts, or that of an application object the program has made. Work for Qt is posted
// there and done in order.
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

  // Starts Qt. The host lives as long as the process.
  // cleanUp: the last work, while Qt still exists. Result: null if there is no display.
  static Host *start(Work cleanUp);

  // May be called on any thread. Result: false after the end, when no more work is done.
  bool post(Work work);
  // Waits until work is done, up to a limit: a program that doesn't run its event loop does no work.
  bool finish(Work work, std::chrono::milliseconds limit);

  // isBehind tells whether much work waits. catchUp waits until there is less, up to a limit.
  bool isBehind() const { return undone_ > kMuch; }
  void catchUp();

  // For the thread of the program's own application object. On other threads these functions do nothing.
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
  bool guest_ = false;                             // uses the program's own application object
  std::thread thread_;                             // the layer's own
  std::atomic<DWORD> threadId_{0};                 // of Qt's thread
  QAbstractEventDispatcher *dispatcher_ = nullptr; // of Qt's thread
  std::atomic<int> waits_{0};                      // depth of waits on the program's Qt thread
  std::atomic<bool> gone_{false};                  // the desktop has ended
  std::mutex endMutex_;

  std::mutex mutex_;
  std::condition_variable changed_;
  Phase phase_ = Phase::starting;
  std::vector<Work> works_;
  std::atomic<size_t> undone_{0}; // all works that were posted and not yet done
  Worker *worker_ = nullptr;
};

} // namespace platform
