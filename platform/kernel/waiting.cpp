// Mutexes and events of one or several processes, and critical sections.

#include "platform/kernel/codepage.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/named.h"
#include "platform/kernel/waitable.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <ctime>
#include <linux/futex.h>
#include <map>
#include <new>
#include <optional>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace platform {

namespace {

timespec timeOf(std::chrono::steady_clock::time_point moment) {
  const auto passed = moment.time_since_epoch();
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(passed);
  return {seconds.count(), std::chrono::duration_cast<std::chrono::nanoseconds>(passed - seconds).count()};
}

// ---- Mutexes

void initMutex(void *memory) {
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST); // tells the next owner that the last one died
  pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
  pthread_mutex_init(new (memory) pthread_mutex_t, &attributes);
  pthread_mutexattr_destroy(&attributes);
}

static_assert(sizeof(pthread_mutex_t) <= SharedBlock::kSize);

class Mutex : public Waitable {
 public:
  // Result: null, with the last error set, on failure.
  static std::shared_ptr<Mutex> make(const std::string &name, bool create, bool owned, bool &made) {
    auto mutex = std::make_shared<Mutex>();
    if (name.empty()) {
      made = true;
      mutex->own_ = std::make_unique<pthread_mutex_t>();
      mutex->memory_ = mutex->own_.get();
      mutex->start(owned);
      return mutex;
    }
    // the owner locks a new mutex before anybody else can open it
    const auto start = [&](void *memory) {
      mutex->memory_ = memory;
      mutex->start(owned);
    };
    if (!mutex->shared_.open("mutex", name, create, made, start)) return nullptr;
    mutex->memory_ = mutex->shared_.memory();
    return mutex;
  }

  // A thread of this process may end later with the mutex still locked. The system looks at the mutex's memory then.
  ~Mutex() override {
    if (held_ == 0) return;
    shared_.abandon();
    static_cast<void>(own_.release());
  }

  DWORD wait(const Deadline &deadline) override {
    int error;
    if (deadline) {
      const timespec end = timeOf(*deadline);
      error = pthread_mutex_clocklock(mutex(), CLOCK_MONOTONIC, &end);
    } else {
      error = pthread_mutex_lock(mutex());
    }
    if (error == ETIMEDOUT) return WAIT_TIMEOUT;
    if (error != 0 && error != EOWNERDEAD) return WAIT_FAILED;
    ++held_;
    if (error == 0) return WAIT_OBJECT_0;
    pthread_mutex_consistent(mutex());
    return WAIT_ABANDONED;
  }

  bool release() {
    if (pthread_mutex_unlock(mutex()) != 0) return failWith(ERROR_NOT_OWNER);
    --held_;
    return true;
  }

 private:
  void start(bool owned) {
    initMutex(memory_);
    if (owned && pthread_mutex_trylock(mutex()) == 0) ++held_; // nobody else knows the mutex yet
  }
  pthread_mutex_t *mutex() { return static_cast<pthread_mutex_t *>(memory_); }

  std::unique_ptr<pthread_mutex_t> own_; // for a mutex without a name
  void *memory_ = nullptr;
  std::atomic<int> held_ = 0; // locks by threads of this process
  SharedBlock shared_;
};

// ---- Events

// The state lies in one word, on which the system lets threads sleep.
class Event : public Waitable {
 public:
  static std::shared_ptr<Event> make(const std::string &name, bool manualReset, bool set, bool &made) {
    auto event = std::make_shared<Event>();
    const auto start = [&](void *memory) { new (memory) State{set ? 1u : 0u, 0u, manualReset ? 1u : 0u}; };
    if (name.empty()) {
      made = true;
      start(&event->own_);
      event->state_ = &event->own_;
      return event;
    }
    if (!event->shared_.open("event", name, true, made, start)) return nullptr;
    event->state_ = static_cast<State *>(event->shared_.memory());
    return event;
  }

  void set() {
    state_->set.store(1);
    state_->times.fetch_add(1);
    syscall(SYS_futex, &state_->times, FUTEX_WAKE, state_->manualReset ? INT_MAX : 1, nullptr, nullptr, 0);
  }

  void reset() { state_->set.store(0); }

  // A waiter for an event with manual reset passes when the event is set, even if it is reset before the waiter wakes.
  DWORD wait(const Deadline &deadline) override {
    timespec end;
    if (deadline) end = timeOf(*deadline);
    const uint32_t first = state_->times.load();
    for (;;) {
      const uint32_t times = state_->times.load();
      if (pass() || (state_->manualReset && times != first)) return WAIT_OBJECT_0;
      const long result = syscall(SYS_futex, &state_->times, FUTEX_WAIT_BITSET, times, deadline ? &end : nullptr,
                                  nullptr, FUTEX_BITSET_MATCH_ANY);
      if (result != 0 && errno == ETIMEDOUT) return pass() ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
    }
  }

 private:
  struct State {
    std::atomic<uint32_t> set;
    std::atomic<uint32_t> times; // counts how often the event was set; threads sleep on this word
    uint32_t manualReset;
  };
  static_assert(sizeof(State) <= SharedBlock::kSize && std::atomic<uint32_t>::is_always_lock_free);

  // Takes the signal: an event without manual reset lets one thread through.
  bool pass() {
    if (state_->manualReset) return state_->set.load() != 0;
    uint32_t one = 1;
    return state_->set.compare_exchange_strong(one, 0);
  }

  State own_{};
  State *state_ = nullptr;
  SharedBlock shared_;
};

// ---- Objects by name, in this process

// Handles of one name share one object: a mutex must be locked and unlocked at the same address.
template <typename Kind> class Directory {
 public:
  template <typename Make> std::shared_ptr<Kind> open(const std::string &name, Make make) {
    if (name.empty()) return make();
    const std::lock_guard lock(mutex_);
    std::weak_ptr<Kind> &known = objects_[name];
    std::shared_ptr<Kind> object = known.lock();
    if (!object) {
      object = make();
      known = object;
    }
    if (!object || objects_.size() > kKept)
      std::erase_if(objects_, [](const auto &entry) { return entry.second.expired(); });
    return object;
  }

 private:
  static constexpr size_t kKept = 64; // names kept before those without an object are dropped
  std::mutex mutex_;
  std::map<std::string, std::weak_ptr<Kind>> objects_;
};

template <typename Kind> Directory<Kind> &directory() {
  static auto *all = new Directory<Kind>;
  return *all;
}

// The name of an object for all processes, without the platform's prefixes.
// Result: nothing, with the last error set, for an invalid name; an empty name for an object without one.
std::optional<std::string> objectName(LPCSTR given) {
  std::string_view name = given ? given : "";
  bool global = false;
  for (const std::string_view prefix : {"Global\\", "Local\\"}) {
    if (!name.starts_with(prefix)) continue;
    global = prefix[0] == 'G';
    name.remove_prefix(prefix.size());
    if (name.empty()) return failWith(ERROR_INVALID_NAME), std::nullopt;
    break;
  }
  for (size_t at = 0; at < name.size(); at += isDoubleByteAt(name, at) ? 2 : 1)
    if (name[at] == '\\') return failWith(at == 0 ? ERROR_BAD_PATHNAME : ERROR_PATH_NOT_FOUND), std::nullopt;
  return (global ? "\\" : "") + std::string(name);
}

HANDLE openMutex(LPCSTR given, bool create, bool owned) {
  bool made = false;
  const std::optional<std::string> name = objectName(given);
  if (!name) return nullptr;
  const auto mutex = directory<Mutex>().open(*name, [&] { return Mutex::make(*name, create, owned, made); });
  if (!mutex) return nullptr;
  const HANDLE handle = handles().open(mutex);
  if (handle) SetLastError(made || !create ? ERROR_SUCCESS : ERROR_ALREADY_EXISTS);
  return handle;
}

pthread_mutex_t *lockOf(LPCRITICAL_SECTION section) {
  static_assert(sizeof(pthread_mutex_t) <= sizeof(CRITICAL_SECTION));
  static_assert(alignof(pthread_mutex_t) <= alignof(CRITICAL_SECTION));
  return reinterpret_cast<pthread_mutex_t *>(section);
}

} // namespace

} // namespace platform

using namespace platform;

void InitializeCriticalSection(LPCRITICAL_SECTION section) {
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(lockOf(section), &attributes);
  pthread_mutexattr_destroy(&attributes);
}

void DeleteCriticalSection(LPCRITICAL_SECTION section) { pthread_mutex_destroy(lockOf(section)); }

void EnterCriticalSection(LPCRITICAL_SECTION section) { pthread_mutex_lock(lockOf(section)); }

void LeaveCriticalSection(LPCRITICAL_SECTION section) { pthread_mutex_unlock(lockOf(section)); }

HANDLE CreateMutexA(LPSECURITY_ATTRIBUTES, BOOL owned, LPCSTR name) {
  return guarded<HANDLE>(nullptr, [&] { return openMutex(name, true, owned != 0); });
}

HANDLE OpenMutexA(DWORD, BOOL, LPCSTR name) {
  return guarded<HANDLE>(nullptr, [&]() -> HANDLE {
    if (name && *name) return openMutex(name, false, false);
    SetLastError(name ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
    return nullptr;
  });
}

BOOL ReleaseMutex(HANDLE handle) {
  const std::shared_ptr<Mutex> mutex = handles().get<Mutex>(handle);
  if (!mutex) return failWith(ERROR_INVALID_HANDLE);
  return mutex->release();
}

HANDLE CreateEventA(LPSECURITY_ATTRIBUTES, BOOL manualReset, BOOL set, LPCSTR name) {
  return guarded<HANDLE>(nullptr, [&]() -> HANDLE {
    bool made = false;
    const std::optional<std::string> known = objectName(name);
    if (!known) return nullptr;
    const auto event =
        directory<Event>().open(*known, [&] { return Event::make(*known, manualReset != 0, set != 0, made); });
    const HANDLE handle = event ? handles().open(event) : nullptr;
    if (handle) SetLastError(made ? ERROR_SUCCESS : ERROR_ALREADY_EXISTS);
    return handle;
  });
}

BOOL SetEvent(HANDLE handle) {
  const std::shared_ptr<Event> event = handles().get<Event>(handle);
  if (!event) return failWith(ERROR_INVALID_HANDLE);
  event->set();
  return TRUE;
}

BOOL ResetEvent(HANDLE handle) {
  const std::shared_ptr<Event> event = handles().get<Event>(handle);
  if (!event) return failWith(ERROR_INVALID_HANDLE);
  event->reset();
  return TRUE;
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
  const std::shared_ptr<Waitable> object = handles().get<Waitable>(handle);
  if (!object) {
    SetLastError(ERROR_INVALID_HANDLE);
    return WAIT_FAILED;
  }
  if (milliseconds == INFINITE) return object->wait(std::nullopt);
  return object->wait(std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds));
}
