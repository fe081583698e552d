// Timers on one tick of the platform. A callback may change the list during a tick. If it dispatches messages, the next
// tick may come inside the first.

#include "windows/windows_private.h"

#include "frame/main.h"
#include "frame/memory.h"
#include "windows/above.h"

namespace {

constexpr UINT kTickMs = 100;

uint32_t tickSerial; // counts ticks, so that an older tick notices a newer one

WqTimerElem *elemOf(const WqList *node) { return reinterpret_cast<WqTimerElem *>(node->data); }

int32_t call(const WqTimerElem *elem, uint32_t event) { return elem->proc(event, elem->id, elem->userData); }

// Removes the timer from the list before its callback gets WQ_TIMER_REMOVED: the callback may remove timers of the same
// id.
void end(WqList *node) {
  wqMain.timer.list = wqDisconnect(node, wqMain.timer.list);
  call(elemOf(node), WQ_TIMER_REMOVED);
  WqList_RemoveWith(node, node);
}

void CALLBACK onTick(HWND, UINT, UINT_PTR, DWORD) {
  if (!wqMain.timer.running) return;
  const uint32_t serial = ++tickSerial;
  const uint32_t now = GetTickCount();
  for (WqWalk walk(wqMain.timer.list); WqList *node = walk.node;) {
    if (WqTimerElem_Update(elemOf(node), now)) {
      const bool ends = call(elemOf(node), WQ_TIMER_DUE) != 0;
      const bool isThere = walk.node == node;
      if (ends && isThere) end(node);
      // A stopped service tells nobody. A newer tick inside this one has handled the rest.
      if (!wqMain.timer.running || serial != tickSerial) return;
    }
    walk.passOver(node);
  }
}

} // namespace

void wqDropTimers(bool (*isDropped)(const WqTimerElem *elem, const void *context), const void *context) {
  for (WqList *node = wqMain.timer.list, *next; node; node = next) {
    next = node->next;
    if (!isDropped(elemOf(node), context)) continue;
    wqMain.timer.list = wqDisconnect(node, wqMain.timer.list);
    WqList_RemoveWith(node, node);
  }
}

void WqTimer_Start() {
  WqTimerState &state = wqMain.timer;
  if (state.running) return;
  state.running = 1;
  state.timerId = SetTimer(nullptr, 0, kTickMs, onTick);
}

void WqTimer_Stop() {
  WqTimerState &state = wqMain.timer;
  if (!state.running) return;
  KillTimer(nullptr, state.timerId);
  WqWnd_RemoveQueTimerMsg(state.timerId);
  state.timerId = 0;
  state.running = 0;
}

void WqTimer_Insert(const WqTimerElem *elem) {
  if (!wqMain.timer.running) return;
  auto *copy = static_cast<WqTimerElem *>(WqMem_Alloc(sizeof *elem));
  if (!copy) return;
  *copy = *elem;
  WqList *node = WqList_AddP(wqMain.timer.list, reinterpret_cast<WqWord>(copy));
  if (!node) return WqMem_Free(copy);
  wqMain.timer.list = node;
  call(copy, WQ_TIMER_INSERTED);
}

void WqTimer_Remove(uint32_t id) {
  if (!wqMain.timer.running) return;
  for (WqWalk walk(wqMain.timer.list); WqList *node = walk.node; walk.passOver(node))
    if (elemOf(node)->id == id) end(node);
}

void WqTimerElem_Init(WqTimerElem *elem) { *elem = {}; }

void WqTimerElem_Term(WqTimerElem *) {}

void WqTimerElem_Param(WqTimerElem *elem, uint32_t id, WqTimerProc proc, WqWord userData, uint32_t period) {
  elem->id = id;
  elem->proc = proc;
  elem->userData = userData;
  elem->period = period;
}

int WqTimerElem_Update(WqTimerElem *elem, uint32_t tick) {
  if (elem->lastTick == 0) {
    elem->lastTick = tick;
    return 0;
  }
  elem->elapsed += tick - elem->lastTick;
  elem->lastTick = tick;
  if (elem->period > elem->elapsed) return 0;
  elem->elapsed = 0;
  return 1;
}
