// Gets clipboard data from their source: the owner for its promises, or another program.

#include "platform/desktop/clipboard/formats.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/screen/above.h"
#include "platform/desktop/windows/clipboard.h"

#include <condition_variable>
#include <mutex>

namespace platform {

namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 2s; // time for an owner or a program to answer

Queue::Moment patienceEnds() { return std::chrono::steady_clock::now() + kPatience; }

// The screen's answer. The thread that waits for it serves messages of other threads meanwhile.
template <typename Result> struct Answer {
  std::optional<Result> result;
  bool come = false;
};

template <typename Result, typename Ask> std::optional<Result> await(Ask ask) {
  const std::shared_ptr<Queue> queue = currentQueue();
  const auto answer = std::make_shared<Answer<Result>>();
  ask([queue, answer](std::optional<Result> result) {
    const DesktopLock lock;
    answer->result = std::move(result);
    answer->come = true;
    queue->wake();
  });
  for (const Queue::Moment end = patienceEnds(); !answer->come && std::chrono::steady_clock::now() < end;) {
    queue->serveSent();
    if (!answer->come) queue->wait(end);
  }
  return std::move(answer->result);
}

// Asks the owner for a promise, on its thread. Meanwhile the owner may set data without opening the clipboard.
void askOwner(HWND owner, UINT format) {
  Clipboard &all = clipboard();
  const ClipItem *const item = all.content.find(format);
  const WindowRef window = windowOrNone(owner);
  if (!window || all.owner != owner || !item || item->handle) return;
  struct Rendering {
    explicit Rendering(int &count) : count(count) { ++count; }
    ~Rendering() { --count; }
    int &count;
  } const rendering(all.rendering);
  callProcedure(*window, WM_RENDERFORMAT, format, 0);
}

void askForPromise(UINT format) {
  const HWND owner = clipboard().owner;
  const WindowRef window = windowOrNone(owner);
  if (!window) return;
  if (window->queue == currentQueue()) return askOwner(owner, format);
  const auto sent = std::make_shared<Sent>();
  sent->window = owner;
  sent->work = [owner, format] { askOwner(owner, format); };
  sendTo(*window->queue, sent, patienceEnds());
}

// A wait of the screen's thread, which has no queue. It gives up the lock while it waits.
class Patience {
 public:
  ~Patience() { end(); }
  void end() {
    const std::lock_guard lock(mutex_);
    over_ = true;
    changed_.notify_all();
  }
  void wait() {
    const DesktopUnlock unlocked;
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, kPatience, [&] { return over_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool over_ = false;
};

void askFromScreen(UINT format) {
  const HWND owner = clipboard().owner;
  const WindowRef window = windowOrNone(owner);
  if (!window) return;
  if (window->queue->thread == GetCurrentThreadId()) return askOwner(owner, format);
  const auto patience = std::make_shared<Patience>();
  // the work may throw, or be dropped with its thread: its destruction ends the wait in any case
  auto sent = std::make_shared<Sent>();
  sent->window = owner;
  sent->work = [owner, format, ends = std::shared_ptr<void>(nullptr, [patience](void *) { patience->end(); })] {
    askOwner(owner, format);
  };
  sendNotice(*window->queue, std::exchange(sent, nullptr));
  patience->wait();
}

void askOthers(UINT format) {
  Clipboard &all = clipboard();
  const uint32_t takeovers = all.takeovers;
  const std::string type = all.content.find(format)->type;
  const auto bytes = await<std::string>([&](auto done) { theScreen().askClipboard(type, std::move(done)); });
  if (!bytes || bytes->empty()) return;
  HANDLE data;
  {
    const DesktopUnlock unlocked;
    data = clipDataFromType(format, type, *bytes);
  }
  if (!data) return;
  if (all.takeovers == takeovers && all.ofOthers)
    all.content.keep(format, data);
  else
    freeClipData(format, data);
}

// Makes sure that the data of a format are there, if the owner or another program has them.
void fetch(UINT format) {
  const ClipItem *const item = clipboard().content.find(format);
  if (!item || item->handle) return;
  if (item->from == ClipItem::From::program) askForPromise(format);
  if (item->from == ClipItem::From::others) askOthers(format);
}

void make(UINT format) {
  Clipboard &all = clipboard();
  if (format == CF_LOCALE) return all.content.keep(format, makeClipLocale());
  const ClipItem *source = all.content.sourceOf(format);
  if (!source) return;
  const UINT from = source->format;
  fetch(from);
  source = all.content.find(from);
  if (!source || !source->handle) return;
  const ClipData data = clipDataOf(from, source->handle);
  const DWORD sequence = all.sequence;
  HANDLE made;
  {
    const DesktopUnlock unlocked;
    made = makeClipData(format, data);
  }
  if (made && sequence == all.sequence)
    all.content.keep(format, made);
  else if (made)
    freeClipData(format, made);
}

} // namespace

void learnTypes() {
  Clipboard &all = clipboard();
  if (!all.ofOthers || all.known) return;
  const uint32_t takeovers = all.takeovers;
  const auto types = await<std::vector<std::string>>([](auto done) { theScreen().askClipboardTypes(std::move(done)); });
  if (all.takeovers != takeovers || !all.ofOthers || all.known) return;
  all.known = true;
  if (!types) return;
  for (const std::string &type : *types)
    if (const UINT format = clipFormatOfType(type)) all.content.addOfOthers(format, type);
  all.content.addMade();
}

HANDLE clipDataFor(UINT format) {
  Clipboard &all = clipboard();
  learnTypes();
  const ClipItem *item = all.content.find(format);
  if (!item) return nullptr;
  if (item->handle) return item->handle;
  if (item->from == ClipItem::From::made)
    make(format);
  else
    fetch(format);
  if (!isOpener()) return nullptr; // closed meanwhile
  item = all.content.find(format);
  return item ? item->handle : nullptr;
}

std::optional<std::string> above::clipboardData(const std::string &type, Serial offer, bool mayWait) {
  ClipData data;
  {
    const DesktopLock lock;
    Clipboard &all = clipboard();
    const auto find = [&]() -> const ClipItem * {
      const bool same = all.offer == offer && !all.ofOthers && !all.changed;
      return same ? all.content.forType(type) : nullptr;
    };
    const ClipItem *item = find();
    if (item && !item->handle && mayWait) {
      askFromScreen(item->format);
      item = find();
    }
    if (!item || !item->handle) return std::nullopt;
    data = clipDataOf(item->format, item->handle);
  }
  return clipDataAsType(data, type);
}

} // namespace platform
