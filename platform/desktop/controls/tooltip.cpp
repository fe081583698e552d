// The tooltip control's messages: its tools, and how its tips look.

#include "platform/desktop/controls/tooltip.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/input.h"
#include "platform/kernel/codepage.h"

#include <algorithm>

namespace platform {

namespace {

constexpr size_t kUsualRoom = 80; // bytes of the caller's room for a text

template <typename Record> Record *recordAt(LPARAM address) { return reinterpret_cast<Record *>(address); }

bool isKnown(const TTTOOLINFOA *info) {
  return info && (info->cbSize == TTTOOLINFOA_V1_SIZE || info->cbSize == TTTOOLINFOA_V2_SIZE ||
                  info->cbSize == TTTOOLINFOA_V3_SIZE);
}

bool hasData(const TTTOOLINFOA &info) { return info.cbSize >= TTTOOLINFOA_V2_SIZE; }

// Copies everything of a record into a tool but its name.
void read(const TTTOOLINFOA &info, Tool &tool) {
  tool.flags = info.uFlags;
  tool.rect = info.rect;
  tool.text = tipText(info.lpszText, info.hinst);
  if (hasData(info)) tool.data = info.lParam;
}

// Fills a record from a tool. If lpszText isn't null, it has room for the text.
BOOL write(const Tool *tool, TTTOOLINFOA *info) {
  if (!tool || !isKnown(info)) return FALSE;
  info->uFlags = tool->flags;
  info->hwnd = tool->window;
  info->uId = tool->id;
  info->rect = tool->rect;
  info->hinst = tool->text.instance;
  if (hasData(*info)) info->lParam = tool->data;
  const TipText &text = tool->text;
  if (text.where || !text.given)
    info->lpszText = text.where;
  else if (info->lpszText && info->lpszText != LPSTR_TEXTCALLBACKA)
    copyWhole(text.own, info->lpszText, kUsualRoom);
  return TRUE;
}

// Changes the style that the program asked for: a tip is always a small popup without a caption, and lets the pointer
// through.
void begin(Window &window) {
  if (!window.isTopLevel()) SetParent(window.handle, nullptr);
  window.style = (window.style & ~(WS_CHILD | WS_CAPTION)) | WS_POPUP | WS_CLIPSIBLINGS;
  if (!(window.style & TTS_BALLOON)) window.style |= WS_BORDER;
  window.exStyle = (window.exStyle & ~WS_EX_WINDOWEDGE) | WS_EX_TOOLWINDOW;
  window.rect = window.client = window.normal = {0, 0, 0, 0};
  window.passesInput = true;
  window.needsSize = false;
}

} // namespace

Tooltip::Tooltip(HWND handle)
    : handle_(handle), background_(GetSysColor(COLOR_INFOBK)), foreground_(GetSysColor(COLOR_INFOTEXT)) {
  setDelay(TTDT_AUTOMATIC, -1);
}

void Tooltip::end() {
  gone_ = true;
  for (const HWND window : tools_.watched()) unwatch(window);
}

// ---- Tools

ToolRef Tooltip::toolOf(const TTTOOLINFOA *info) const { return info ? tools_.find(info->hwnd, info->uId) : nullptr; }

// Makes a window tell this control of its mouse messages. Windows of other threads can't do so.
void Tooltip::watch(HWND window) const {
  const WindowRef target = windowOrNone(window);
  if (!target || target->queue != currentQueue()) return;
  std::vector<HWND> &tips = target->relaysTo;
  if (std::find(tips.begin(), tips.end(), handle_) == tips.end()) tips.push_back(handle_);
}

void Tooltip::unwatch(HWND window) const {
  if (const WindowRef target = windowOrNone(window)) std::erase(target->relaysTo, handle_);
}

BOOL Tooltip::addTool(const TTTOOLINFOA *info) {
  if (!isKnown(info)) return FALSE;
  Tool tool;
  tool.window = info->hwnd;
  tool.id = info->uId;
  read(*info, tool);
  const ToolRef added = tools_.add(std::move(tool));
  if (added->flags & TTF_SUBCLASS) watch(added->place());
  return TRUE;
}

void Tooltip::deleteTool(const TTTOOLINFOA *info) {
  const ToolRef tool = toolOf(info);
  if (!tool) return;
  if (shown_ == tool) pop();
  if (gone_ || tool->removed) return;
  if (hovered_ == tool) hovered_ = nullptr;
  tools_.remove(*tool);
  if (!tools_.watches(tool->place())) unwatch(tool->place());
}

void Tooltip::setTool(const TTTOOLINFOA &info) {
  const ToolRef tool = toolOf(&info);
  if (!tool || !isKnown(&info)) return;
  const HWND before = tool->place();
  tools_.change(*tool, [&] { read(info, *tool); });
  if (!tools_.watches(before)) unwatch(before);
  if (tool->flags & TTF_SUBCLASS) watch(tool->place());
  showAgain(tool);
}

void Tooltip::setRect(const TTTOOLINFOA &info) {
  if (const ToolRef tool = toolOf(&info)) tools_.change(*tool, [&] { tool->rect = info.rect; });
}

void Tooltip::setText(const TTTOOLINFOA &info) {
  const ToolRef tool = toolOf(&info);
  if (!tool) return;
  tool->text = tipText(info.lpszText, info.hinst);
  showAgain(tool);
}

BOOL Tooltip::hitTest(TTHITTESTINFOA &test) const { return write(tools_.under(test.hwnd, test.pt), &test.ti); }

BOOL Tooltip::currentTool(TTTOOLINFOA *info) const { return shown_ && (!info || write(shown_.get(), info)); }

void Tooltip::copyText(const TTTOOLINFOA &info, WPARAM size) {
  const ToolRef tool = toolOf(&info);
  if (!tool || !info.lpszText) return;
  char *const room = info.lpszText; // a copy: the procedure that answers may change the record
  copyWhole(textOf(tool), room, size ? size : kUsualRoom);
}

std::optional<LRESULT> Tooltip::answerTools(UINT message, WPARAM wParam, LPARAM lParam) {
  auto *const info = recordAt<TTTOOLINFOA>(lParam);
  switch (message) {
  case TTM_GETTOOLCOUNT: return static_cast<LRESULT>(tools_.count());
  case TTM_ADDTOOLA: return addTool(info);
  case TTM_DELTOOLA: deleteTool(info); return 0;
  case TTM_GETTOOLINFOA: return write(toolOf(info).get(), info);
  case TTM_ENUMTOOLSA: return write(tools_.at(wParam).get(), info);
  case TTM_GETCURRENTTOOLA: return currentTool(info);
  case TTM_TRACKACTIVATE: track(wParam, toolOf(info)); return 0;
  default: break;
  }
  if (!lParam) return std::nullopt;
  switch (message) {
  case TTM_NEWTOOLRECTA: setRect(*info); return 0;
  case TTM_SETTOOLINFOA: setTool(*info); return 0;
  case TTM_UPDATETIPTEXTA: setText(*info); return 0;
  case TTM_GETTEXTA: copyText(*info, wParam); return 0;
  case TTM_HITTESTA: return hitTest(*recordAt<TTHITTESTINFOA>(lParam));
  case TTM_RELAYEVENT: relayed(*recordAt<MSG>(lParam)); return 0;
  case TTM_WINDOWFROMPOINT: return reinterpret_cast<LRESULT>(WindowFromPoint(*recordAt<POINT>(lParam)));
  case TTM_GETBUBBLESIZE: {
    const ToolRef tool = toolOf(info);
    if (!tool) return 0;
    const SIZE size = sizeFor(shownText(textOf(tool)));
    return MAKELONG(size.cx, size.cy);
  }
  default: return std::nullopt;
  }
}

// ---- Settings

// A negative delay stands for the default, which follows from the double click time.
void Tooltip::setDelay(WPARAM which, int milliseconds) {
  const int usual = static_cast<int>(GetDoubleClickTime());
  const auto given = [milliseconds](int otherwise) { return milliseconds >= 0 ? milliseconds : otherwise; };
  switch (which) {
  case TTDT_AUTOMATIC: {
    const int all = milliseconds > 0 ? milliseconds : usual;
    delays_ = {all, all / 5, all * 10};
    break;
  }
  case TTDT_RESHOW: delays_.reshow = given(usual / 5); break;
  case TTDT_AUTOPOP: delays_.autopop = given(usual * 10); break;
  case TTDT_INITIAL: delays_.initial = given(usual); break;
  default: break;
  }
}

LRESULT Tooltip::delay(WPARAM which) const {
  switch (which) {
  case TTDT_AUTOMATIC:
  case TTDT_INITIAL: return delays_.initial;
  case TTDT_RESHOW: return delays_.reshow;
  case TTDT_AUTOPOP: return delays_.autopop;
  default: return -1;
  }
}

std::optional<LRESULT> Tooltip::answerSettings(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto redraw = [this] { InvalidateRect(handle_, nullptr, FALSE); };
  switch (message) {
  case TTM_ACTIVATE: activate(wParam); return 0;
  case TTM_POP: pop(); return 0;
  case TTM_UPDATE: redraw(), UpdateWindow(handle_); return 0;
  case TTM_TRACKPOSITION:
    trackAt_ = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (tracking_) showAgain(shown_);
    return 0;
  case TTM_SETDELAYTIME: setDelay(wParam, static_cast<short>(LOWORD(lParam))); return 0;
  case TTM_GETDELAYTIME: return delay(wParam);
  case TTM_SETTIPBKCOLOR: background_ = static_cast<COLORREF>(wParam), redraw(); return 0;
  case TTM_SETTIPTEXTCOLOR: foreground_ = static_cast<COLORREF>(wParam), redraw(); return 0;
  case TTM_GETTIPBKCOLOR: return background_;
  case TTM_GETTIPTEXTCOLOR: return foreground_;
  case TTM_SETMAXTIPWIDTH: return std::exchange(widest_, static_cast<int>(lParam));
  case TTM_GETMAXTIPWIDTH: return widest_;
  case TTM_SETMARGIN:
    if (lParam) margin_ = *recordAt<RECT>(lParam);
    return 0;
  case TTM_GETMARGIN:
    if (lParam) *recordAt<RECT>(lParam) = margin_;
    return 0;
  case TTM_ADJUSTRECT: {
    if (!lParam) return FALSE;
    RECT &rect = *recordAt<RECT>(lParam);
    const RECT around = border();
    const LONG sign = wParam ? 1 : -1;
    rect = {rect.left - sign * around.left, rect.top - sign * around.top, rect.right + sign * around.right,
            rect.bottom + sign * around.bottom};
    return TRUE;
  }
  default: return std::nullopt;
  }
}

// ---- The window

std::optional<LRESULT> Tooltip::answerWindow(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_NCCREATE: begin(*windowOf(handle_)); return TRUE;
  case WM_NCCALCSIZE: return 0; // the window is all client area; the control draws the frame
  case WM_NCHITTEST: return HTTRANSPARENT;
  case WM_MOUSEACTIVATE: return MA_NOACTIVATE;
  case WM_MOUSEMOVE: pop(); return 0;
  case WM_ERASEBKGND: return TRUE;
  case WM_PAINT: paint(); return 0;
  case WM_TIMER: tick(wParam); return 0;
  case WM_GETFONT: return reinterpret_cast<LRESULT>(font());
  case WM_SETFONT:
    font_ = reinterpret_cast<HFONT>(wParam);
    if (LOWORD(lParam)) showAgain(shown_);
    return 0;
  case WM_GETTEXT:
    if (!wParam || !lParam) return 0;
    return static_cast<LRESULT>(copyWhole(text_, recordAt<char>(lParam), wParam));
  case WM_GETTEXTLENGTH: return static_cast<LRESULT>(text_.size());
  case WM_NCDESTROY: end(); return 0;
  default: return std::nullopt;
  }
}

std::optional<LRESULT> Tooltip::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message < WM_USER) return answerWindow(message, wParam, lParam);
  const std::optional<LRESULT> answered = answerTools(message, wParam, lParam);
  return answered ? answered : answerSettings(message, wParam, lParam);
}

} // namespace platform
