// The running side of button bars: a step of the window procedure and two timers. The step paints a bar and turns mouse
// messages into notifications. One timer notices that the pointer has left, the other repeats a pressed button.
//
// Every notification calls the program, which may remove any bar. Afterwards a Watch tells whether the button still
// exists.

#include "buttonbar/buttonbar_private.h"

#include "drawing/drawing.h"
#include "drawing/wrapping.h"
#include "windows/above.h"

#include <utility>

namespace {

constexpr uint32_t kPeriodMs = 50;

// The button of the last press, for the repeat timer. Null before the first press and after the end of its bar.
WqMbbBtn *repeatButton;

bool isOf(const WqMbbBtn *button, const WqMbb *bar) { return button && button->field->bar == bar; }

// Watches a button that may be freed. Watches lie on the stack, one for each active step.
class Watch {
 public:
  explicit Watch(WqMbbBtn *button) : button_(button), outer_(std::exchange(innermost_, this)) {}
  ~Watch() { innermost_ = outer_; }
  Watch(const Watch &) = delete;
  Watch &operator=(const Watch &) = delete;

  bool isThere() const { return button_ != nullptr; }

  static void forget(const WqMbb *bar) {
    for (Watch *watch = innermost_; watch; watch = watch->outer_)
      if (isOf(watch->button_, bar)) watch->button_ = nullptr;
  }

 private:
  static inline Watch *innermost_ = nullptr;
  WqMbbBtn *button_;
  Watch *outer_;
};

HWND windowOf(const WqMbbBtn *button) { return button->field->bar->window; }

void notify(WqMbbBtn *button, WPARAM event) {
  SendMessageA(windowOf(button), WQM_MBB_NOTIFY, event, reinterpret_cast<LPARAM>(button));
}

// ---- Painting -------------------------------------------------------------------------------------------------------

int32_t rowOf(uint32_t flags) {
  const int32_t down = flags & WQ_MBB_DOWN ? 1 : 0;
  if (flags & WQ_MBB_DISABLED) return down;
  return (flags & WQ_MBB_SELECTED ? 4 : 2) + down;
}

POINT pictureOf(const WqMbbBtn *button) {
  const WqMbbField *field = button->field;
  const auto column = static_cast<int32_t>(button->flags & WQ_MBB_COLUMN);
  return {wqSum(button->rect.left, wqProduct(field->cellWidth, column)),
          wqSum(button->rect.top, wqProduct(field->cellHeight, rowOf(button->flags)))};
}

// Puts a pinned button, and the origin of its field, at the edge of the client area.
void pin(const WqMbbBtn *button, const RECT *client, const SIZE *size, POINT *at) {
  WqMbbField *field = button->field;
  if (button->flags & WQ_MBB_PIN_TOP)
    at->y = field->originY = 0;
  else if (button->flags & WQ_MBB_PIN_BOTTOM)
    at->y = field->originY = wqDifference(client->bottom, size->cy);
  else if (button->flags & WQ_MBB_PIN_LEFT)
    at->x = field->originX = 0;
  else if (button->flags & WQ_MBB_PIN_RIGHT)
    at->x = field->originX = wqDifference(client->right, size->cx);
}

void paintButton(const WqMbbBtn *button, const RECT *client, HBITMAP bitmap, HDC hdc) {
  const RECT &rect = button->rect;
  const POINT picture = pictureOf(button);
  const SIZE size = {wqSum(wqDifference(rect.right, rect.left), 1), wqSum(wqDifference(rect.bottom, rect.top), 1)};
  POINT at = {wqSum(button->field->originX, rect.left), wqSum(button->field->originY, rect.top)};
  pin(button, client, &size, &at);
  WqBmpDraw draw;
  WqBmpDraw_Init(&draw, bitmap);
  WqBmpDraw_Param(&draw, &picture, &at, &size);
  WqBmpDraw_SrcCopy(&draw, hdc);
  WqBmpDraw_Term(&draw);
}

void paint(const WqMbb *bar, HDC hdc) {
  RECT client;
  if (!GetClientRect(bar->window, &client)) return; // painting has ended the window
  for (const WqList *fields = bar->fields; fields; fields = fields->next) {
    const auto *field = wqRecord<WqMbbField>(fields);
    HBITMAP bitmap = WqBmpTbl_Get(field->bitmapId, hdc);
    for (const WqList *buttons = field->buttons; buttons; buttons = buttons->next)
      paintButton(wqRecord<WqMbbBtn>(buttons), &client, bitmap, hdc);
  }
}

// ---- The pointer ----------------------------------------------------------------------------------------------------

struct Hit {
  WqMbbBtn *button; // null for a miss
  POINT point;      // in field coordinates
};

Hit hitTest(const WqMbb *bar, const WqMsg *msg) {
  const LONG x = static_cast<int16_t>(LOWORD(msg->lParam)), y = static_cast<int16_t>(HIWORD(msg->lParam));
  for (const WqList *fields = bar->fields; fields; fields = fields->next) {
    const auto *field = wqRecord<WqMbbField>(fields);
    const POINT point = {wqDifference(x, field->originX), wqDifference(y, field->originY)};
    if (!PtInRect(&field->rect, point)) continue;
    for (const WqList *buttons = field->buttons; buttons; buttons = buttons->next) {
      auto *button = wqRecord<WqMbbBtn>(buttons);
      if (PtInRect(&button->rect, point)) return {button, point};
    }
  }
  return {};
}

// Measured from the corner of the whole window. False for a window that has ended.
bool isUnderCursor(const WqMbbBtn *button) {
  RECT window;
  POINT cursor;
  if (!GetWindowRect(windowOf(button), &window) || !GetCursorPos(&cursor)) return false;
  if (cursor.x < window.left || cursor.x > window.right || cursor.y < window.top || cursor.y > window.bottom)
    return false;
  const WqMbbField *field = button->field;
  const POINT point = {wqDifference(wqDifference(cursor.x, window.left), field->originX),
                       wqDifference(wqDifference(cursor.y, window.top), field->originY)};
  return PtInRect(&button->rect, point);
}

// ---- Timers ---------------------------------------------------------------------------------------------------------

// A tick unselects the button and ends the timer. The end of the timer then tells the owner.
int32_t onHover(uint32_t event, uint32_t id, WqWord userData) {
  auto *button = reinterpret_cast<WqMbbBtn *>(userData);
  if (id != WQ_MBB_TIMER_HOVER || event == WQ_TIMER_INSERTED) return 1;
  if (isUnderCursor(button)) return event == WQ_TIMER_DUE ? 0 : 1;
  WqMbbBtn_UnSelect(button);
  if (event == WQ_TIMER_REMOVED) notify(button, WQ_MBB_EVENT_LEAVE);
  return 1;
}

// Repeats the button of the last press, which may differ from the timer's own button.
int32_t onRepeat(uint32_t event, uint32_t, WqWord) {
  if (!repeatButton || event == WQ_TIMER_REMOVED) return 1;
  if (event != WQ_TIMER_DUE) return 0;
  if (!(repeatButton->flags & WQ_MBB_DOWN)) return 1;
  notify(repeatButton, WQ_MBB_EVENT_REPEAT);
  return 0;
}

void startTimer(WqMbbBtn *button, uint32_t id, WqTimerProc proc) {
  WqTimerElem elem;
  WqTimerElem_Init(&elem);
  WqTimerElem_Param(&elem, id, proc, reinterpret_cast<WqWord>(button), kPeriodMs);
  WqTimer_Insert(&elem);
  WqTimerElem_Term(&elem);
}

bool holdsButtonOf(const WqTimerElem *elem, const void *bar) {
  return (elem->proc == onHover || elem->proc == onRepeat) &&
         isOf(reinterpret_cast<const WqMbbBtn *>(elem->userData), static_cast<const WqMbb *>(bar));
}

// ---- The steps of the mouse -----------------------------------------------------------------------------------------

void moveOver(WqMbbBtn *button, POINT point) {
  const Watch watch(button);
  SendMessageA(windowOf(button), WQM_MBB_PRESS, button->id, reinterpret_cast<LPARAM>(&point));
  WqTimer_Remove(WQ_MBB_TIMER_HOVER); // tells the former button that the pointer has left
  if (!watch.isThere()) return;
  WqMbbBtn_Select(button);
  startTimer(button, WQ_MBB_TIMER_HOVER, onHover);
}

// Result: not 0 if the message goes no further.
uint32_t press(WqMbbBtn *button, bool isDouble) {
  if (isDouble && (button->options & WQ_MBB_NO_DOUBLE)) return 1;
  if (button->flags & WQ_MBB_DISABLED) return 0;
  const Watch watch(button);
  notify(button, WQ_MBB_EVENT_PRESS);
  WqTimer_Remove(WQ_MBB_TIMER_REPEAT);
  if (!watch.isThere()) return 0;
  startTimer(button, WQ_MBB_TIMER_REPEAT, onRepeat);
  repeatButton = button;
  return 0;
}

} // namespace

void wqForgetBar(const WqMbb *bar) {
  Watch::forget(bar);
  if (isOf(repeatButton, bar)) repeatButton = nullptr;
  wqDropTimers(holdsButtonOf, bar);
}

uint32_t wqMbbProc(const WqMsg *msg) {
  const WqMbb *bar = msg->hwnd ? WqMbbTbl_Get(msg->hwnd) : nullptr;
  if (!bar) return 0;
  switch (msg->msg) {
  case WQM_PAINT: paint(bar, reinterpret_cast<const WqDc *>(msg->wParam)->hdc); return 1;
  case WM_MOUSEMOVE:
    if (const Hit hit = hitTest(bar, msg); hit.button) moveOver(hit.button, hit.point);
    return 1;
  case WM_LBUTTONUP:
    if (const Hit hit = hitTest(bar, msg); hit.button) notify(hit.button, WQ_MBB_EVENT_RELEASE);
    return 1;
  case WM_LBUTTONDOWN:
  case WM_LBUTTONDBLCLK: {
    const Hit hit = hitTest(bar, msg);
    return hit.button ? press(hit.button, msg->msg == WM_LBUTTONDBLCLK) : 0;
  }
  default: return 0;
  }
}
