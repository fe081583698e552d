#include "platform/desktop/screen/qt/host.h"

#include "platform/desktop/screen/above.h"
#include "platform/desktop/screen/qt/ending.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <thread>
#include <unistd.h>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kStart{20000};    // a display may be slow to answer
constexpr std::chrono::milliseconds kEnd{3000};       // how long Qt may take to end
constexpr std::chrono::milliseconds kFork{200};       // how long a fork waits for Qt's thread
constexpr std::chrono::milliseconds kLastWords{5000}; // how long the program may go on without the desktop

bool isSet(const char *variable) {
  const char *const value = std::getenv(variable);
  return value && *value;
}

bool isUnseen(const std::string &platform) { return platform == "offscreen" || platform == "minimal"; }

// The kinds of displays to try, or an empty text. The last kind shows nothing and never fails. An X server comes before
// a Wayland compositor, because X puts windows where the program wants them.
std::string displaysToTry() {
  if (const char *const wanted = std::getenv("QT_QPA_PLATFORM"); wanted && *wanted)
    return isUnseen(wanted) ? "" : std::string(wanted) + ";offscreen";
  std::string displays;
  if (isSet("DISPLAY")) displays += "xcb;";
  if (isSet("WAYLAND_DISPLAY")) displays += "wayland;";
  return displays.empty() ? displays : displays + "offscreen";
}

void tellUnusable() {
  const char *const wanted = std::getenv("QT_QPA_PLATFORM");
  const char *const variable = wanted && *wanted ? "QT_QPA_PLATFORM" : isSet("DISPLAY") ? "DISPLAY" : "WAYLAND_DISPLAY";
  std::fprintf(stderr, "%s: %s=%s can't be used: windows stay unseen\n", program_invocation_short_name, variable,
               std::getenv(variable));
}

// Keeps process-wide settings that Qt's start changes, and restores them.
class Surroundings {
 public:
  Surroundings() {
    if (const char *const locale = std::setlocale(LC_ALL, nullptr)) locale_ = locale;
    handler_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
  }
  ~Surroundings() {
    qInstallMessageHandler(handler_);
    std::setlocale(LC_ALL, locale_.c_str()); // for the format of numbers
  }
  Surroundings(const Surroundings &) = delete;
  Surroundings &operator=(const Surroundings &) = delete;

 private:
  std::string locale_;
  QtMessageHandler handler_; // the one before; Qt's own would complain about unusable displays
};

// Keeps Qt from scaling for a program with real pixels. Such a program includes the factors in its own resolution.
class Scaling {
 public:
  Scaling() {
    if (!usesRealPixels()) return;
    for (Variable &variable : variables_) {
      if (isSet(variable.name)) variable.before = std::getenv(variable.name);
      if (variable.during)
        setenv(variable.name, variable.during, 1);
      else
        unsetenv(variable.name);
    }
  }
  ~Scaling() {
    if (!usesRealPixels()) return;
    for (const Variable &variable : variables_) {
      if (variable.before)
        setenv(variable.name, variable.before->c_str(), 1);
      else
        unsetenv(variable.name);
    }
  }
  Scaling(const Scaling &) = delete;
  Scaling &operator=(const Scaling &) = delete;

 private:
  struct Variable {
    const char *name, *during;
    std::optional<std::string> before;
  } variables_[2] = {{"QT_ENABLE_HIGHDPI_SCALING", "0", {}}, {"QT_SCALE_FACTOR", nullptr, {}}};
};

// Blocks signals on Qt's thread, which inherits the mask. The handlers of the program expect its own threads. And a
// broken pipe to a desktop that has gone must not end the program.
class NoSignals {
 public:
  NoSignals() {
    sigset_t all;
    sigfillset(&all);
    for (const int ofTheThread : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS, SIGABRT, SIGPROF})
      sigdelset(&all, ofTheThread);
    pthread_sigmask(SIG_BLOCK, &all, &before_);
  }
  ~NoSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  NoSignals(const NoSignals &) = delete;
  NoSignals &operator=(const NoSignals &) = delete;

 private:
  sigset_t before_;
};

// The program makes its own application object after the layer's, and Qt can't have two. Qt warns of the wrong thread
// when the making of the second one begins, and calls the routine later. Between the two it may stop or hang.
const QCoreApplication *ownApplication = nullptr;
QtMessageHandler otherMessages = nullptr;

[[noreturn]] void refuse() {
  std::fprintf(stderr, "%s: an application object of Qt has to be made before the first window or metric\n",
               program_invocation_short_name);
  std::_Exit(EXIT_FAILURE);
}

void refuseSecond() {
  if (ownApplication && QCoreApplication::instance() != ownApplication) refuse();
}

void takeMessage(QtMsgType type, const QMessageLogContext &context, const QString &text) {
  if (type == QtFatalMsg) refuseSecond();
  if (text.contains(QLatin1String("not created in the main() thread"))) refuse();
  otherMessages(type, context, text);
}

Host *theHost = nullptr;
thread_local Host::Work goOn; // lets Qt's thread go on after this thread's fork

} // namespace

class Host::Worker : public QObject {
 public:
  explicit Worker(Host &host) : host_(host), timer_(this) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] { host_.dispatch(); });
  }

  void dispatchAt(const std::optional<Moment> &moment) {
    if (!moment) return timer_.stop();
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*moment - Clock::now());
    timer_.start(static_cast<int>(std::clamp<int64_t>(left.count(), 0, 1 << 30)));
  }

  bool event(QEvent *event) override {
    if (event->type() != QEvent::User) return QObject::event(event);
    host_.doWork();
    return true;
  }

 private:
  Host &host_;
  QTimer timer_;
};

Host::Host(Work cleanUp) : cleanUp_(std::move(cleanUp)), process_(getpid()) {}

Host *Host::start(Work cleanUp) {
  std::unique_ptr<Host> host(new Host(std::move(cleanUp)));
  if (QCoreApplication::instance() ? host->visit() : host->startThread()) return host.release();
  // a display may still answer, so the object must stay
  if (host->thread_.joinable()) static_cast<void>(host.release());
  return nullptr; // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the object is never freed then
}

bool Host::startThread() {
  const std::string displays = displaysToTry();
  if (displays.empty()) return false;
  const Scaling scaling;
  theHost = this;
  {
    const NoSignals noSignals;
    thread_ = std::thread([this, displays] { run(displays); });
  }
  whenProcessEnds([](const int *status) { theHost->end(status); });
  if (waitUntil(Phase::running, kStart)) {
    ownApplication = QCoreApplication::instance();
    qAddPreRoutine(refuseSecond); // runs at once for the existing application object
    otherMessages = qInstallMessageHandler(takeMessage);
    pthread_atfork([] { theHost->standStill(); },
                   [] {
                     if (goOn) std::exchange(goOn, nullptr)();
                   },
                   nullptr);
    return true;
  }
  tellUnusable();
  if (phase_ == Phase::failed) {
    whenProcessEnds(nullptr);
    thread_.join();
  }
  return false;
}

// Uses the program's own application object.
bool Host::visit() {
  auto *const application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
  if (!application || isUnseen(QGuiApplication::platformName().toStdString())) return false;
  guest_ = true;
  worker_ = new Worker(*this);
  worker_->moveToThread(application->thread());
  phase_ = Phase::running;
  theHost = this;
  qAddPostRoutine([] { // the object ends, and with it all windows
    theHost->enter(Phase::ended);
    theHost->cleanUp_();
  });
  const auto learn = [this] {
    threadId_ = GetCurrentThreadId();
    dispatcher_ = QAbstractEventDispatcher::instance();
  };
  if (application->thread() == QThread::currentThread())
    learn();
  else
    post(learn);
  return true;
}

void Host::run(const std::string &displays) {
  static std::string arguments[] = {program_invocation_short_name, "-platform", displays};
  static char *argv[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(), nullptr};
  static int argc = 3;
  threadId_ = GetCurrentThreadId();
  {
    std::unique_ptr<QApplication> application;
    {
      const Surroundings surroundings;
      application = std::make_unique<QApplication>(argc, argv);
    }
    if (isUnseen(QGuiApplication::platformName().toStdString())) return enter(Phase::failed);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName(QString::fromLocal8Bit(program_invocation_short_name));
    worker_ = new Worker(*this);
    enter(Phase::running);
    QApplication::exec();
    enter(Phase::ending); // from here on nothing is posted to the worker
    cleanUp_();
    delete worker_;
  }
  enter(Phase::ended);
}

void Host::enter(Phase phase) {
  {
    const std::lock_guard lock(mutex_);
    phase_ = phase;
    if (phase == Phase::ending || phase == Phase::ended) works_.clear();
  }
  changed_.notify_all();
}

bool Host::waitUntil(Phase phase, std::chrono::milliseconds limit) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, limit, [&] { return phase_ == phase || phase_ == Phase::failed || phase_ == Phase::ended; });
  return phase_ == phase;
}

bool Host::post(Work work) {
  const std::lock_guard lock(mutex_);
  if (phase_ != Phase::running) return false;
  works_.push_back(std::move(work));
  ++undone_;
  if (works_.size() == 1) QCoreApplication::postEvent(worker_, new QEvent(QEvent::User));
  return true;
}

bool Host::finish(Work work, std::chrono::milliseconds limit) {
  if (runsHere() || GetCurrentThreadId() == threadId_) {
    work();
    return true;
  }
  struct State {
    std::mutex mutex;
    std::condition_variable changed;
    bool done = false, abandoned = false;
  };
  const auto state = std::make_shared<State>();
  const bool posted = post([state, work = std::move(work)] {
    const std::lock_guard lock(state->mutex);
    if (state->abandoned) return;
    work();
    state->done = true;
    state->changed.notify_all();
  });
  if (!posted) return false;
  std::unique_lock lock(state->mutex);
  state->abandoned = !state->changed.wait_for(lock, limit, [&] { return state->done; });
  return state->done;
}

// A work may post others, or run a loop of Qt's that does others.
void Host::doWork() {
  std::vector<Work> works;
  {
    const std::lock_guard lock(mutex_);
    works.swap(works_);
  }
  for (const Work &work : works) {
    try {
      work();
    } catch (const std::bad_alloc &) {
      // this call to the desktop is lost; no exception may pass through Qt
    }
    if (--undone_ != kMuch) continue;
    const std::lock_guard lock(mutex_); // waiters check before or after this line
    changed_.notify_all();
  }
}

void Host::catchUp() {
  constexpr auto kLongest = std::chrono::seconds(2);
  if (runsHere()) return runEvents();
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, kLongest, [&] { return !isBehind() || phase_ != Phase::running; });
}

bool Host::runsHere() const { return guest_ && GetCurrentThreadId() == threadId_; }

void Host::runEvents() {
  if (!runsHere()) return;
  ++waits_;
  QCoreApplication::processEvents(QEventLoop::AllEvents);
  --waits_;
}

void Host::waitForEvents(const std::optional<Moment> &until) {
  if (!runsHere()) return;
  QTimer timer; // its event ends the wait
  if (until) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*until - Clock::now());
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(static_cast<int>(std::clamp<int64_t>(left.count(), 0, 1 << 30)));
  }
  ++waits_;
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  --waits_;
}

void Host::wake(DWORD thread) {
  if (!guest_ || thread != threadId_) return;
  if (waits_ > 0)
    dispatcher_->wakeUp();
  else
    post([this] { dispatch(); });
}

// Dispatches messages for a program that runs Qt's loop instead of a message loop.
void Host::dispatch() {
  if (waits_ == 0) worker_->dispatchAt(above::dispatchWaiting());
}

// Ends Qt, but not an application object of the program's. A forked child has no thread that could end Qt, and Qt's
// objects belong to threads that it lacks. So the child leaves without further handlers.
// status: null after the return from main.
void Host::end(const int *status) {
  if (getpid() != process_) {
    if (status) leave(*status, nullptr);
    return static_cast<void>(on_exit(leave, nullptr));
  }
  if (GetCurrentThreadId() == threadId_) return stayBehind();
  const std::lock_guard lock(endMutex_);
  if (gone_ || !thread_.joinable()) return;
  if (waitUntil(Phase::running, kEnd)) post([] { QCoreApplication::exit(); });
  if (waitUntil(Phase::ended, kEnd))
    thread_.join();
  else
    on_exit(leave, nullptr); // Qt hangs, and would crash once its objects are destroyed
}

// A handler at the end of the process that lets no later handler run.
void Host::leave(int status, void *) {
  std::fflush(nullptr);
  std::_Exit(status);
}

// A fork copies the locks of all threads, but not the threads that would unlock them. So Qt's thread stands still,
// outside all locks, while another thread forks.
void Host::standStill() {
  if (getpid() != process_ || GetCurrentThreadId() == threadId_) return;
  struct State {
    std::mutex mutex;
    std::condition_variable changed;
    bool stands = false, over = false;
  };
  const auto state = std::make_shared<State>();
  const bool posted = post([state] {
    std::unique_lock lock(state->mutex);
    state->stands = true;
    state->changed.notify_all();
    state->changed.wait(lock, [&] { return state->over; });
  });
  if (!posted) return;
  std::unique_lock lock(state->mutex);
  state->changed.wait_for(lock, kFork, [&] { return state->stands; });
  goOn = [state] {
    const std::lock_guard over(state->mutex);
    state->over = true;
    state->changed.notify_all();
  };
}

// The desktop has ended, so Qt ends the process from its own thread. The program's threads are told and get a while to
// end in their own way. An immediate end would destroy their data under them.
void Host::stayBehind() {
  gone_ = true;
  enter(Phase::ended);
  above::take(ScreenGone{});
  std::this_thread::sleep_for(kLastWords);
  std::fflush(nullptr);
  std::_Exit(EXIT_FAILURE);
}

} // namespace platform
