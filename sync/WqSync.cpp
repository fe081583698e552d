// A lock inside one process. State bits are only set, never cleared. WQ_SYNC_ENTERED is set under the lock itself.

#include "sync/sync.h"

#include <atomic>

namespace {

// Other threads may read the state while the owner of the lock sets a bit.
std::atomic_ref<uint32_t> stateOf(WqSync *sync) { return std::atomic_ref<uint32_t>(sync->state); }

} // namespace

void WqSync_Init(WqSync *sync) {
  InitializeCriticalSection(&sync->section);
  stateOf(sync).fetch_or(WQ_SYNC_READY);
}

void WqSync_Term(WqSync *sync) {
  DeleteCriticalSection(&sync->section);
  stateOf(sync).fetch_or(WQ_SYNC_DELETED);
}

int WqSync_Lock(WqSync *sync) {
  const auto state = stateOf(sync);
  if ((state.load(std::memory_order_acquire) & (WQ_SYNC_READY | WQ_SYNC_DELETED)) != WQ_SYNC_READY) return 0;
  EnterCriticalSection(&sync->section);
  const uint32_t now = state.load(std::memory_order_relaxed);
  if (!(now & WQ_SYNC_ENTERED)) state.store(now | WQ_SYNC_ENTERED, std::memory_order_relaxed);
  return 1;
}

void WqSync_Unlock(WqSync *sync) {
  constexpr uint32_t all = WQ_SYNC_READY | WQ_SYNC_DELETED | WQ_SYNC_ENTERED;
  if ((stateOf(sync).load(std::memory_order_relaxed) & all) == (WQ_SYNC_READY | WQ_SYNC_ENTERED))
    LeaveCriticalSection(&sync->section);
}
