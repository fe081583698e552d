#include "platform/desktop/dialogs/dialog.h"

#include "platform/desktop/guards.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"
#include "platform/testing.h"

#include <algorithm>
#include <atomic>
#include <cctype>

namespace platform {

namespace {

constexpr int kDialogWords = 4; // for the program: an answer, a procedure, its own

std::atomic<bool> keptOpen = false;
thread_local DWORD extendedError = 0;

using PartMaker = std::function<std::shared_ptr<Control>(HWND)>;
thread_local const PartMaker *making = nullptr; // for the window that is being made

LRESULT CALLBACK dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  constexpr AnswererMaker kMake = [](HWND handle) -> std::shared_ptr<Answerer> {
    const PartMaker *const maker = std::exchange(making, nullptr);
    return maker ? (*maker)(handle) : nullptr; // a program may make windows of this class too
  };
  return answerMessage(kMake, window, message, wParam, lParam);
}

void registerClasses() {
  registerOwnClass(kDialogClass, dialogProcedure, CS_DBLCLKS, IDC_ARROW,
                   kDialogWords * static_cast<int>(sizeof(LONG_PTR)));
  registerOwnClass(kButtonClass, buttonProcedure, CS_DBLCLKS);
  registerOwnClass(kEditClass, editProcedure, CS_DBLCLKS, IDC_IBEAM);
  registerOwnClass(kLabelClass, labelProcedure, 0);
}

HWND makeWindow(const DialogLook &look, const RECT &place, HWND parent, HMENU id, const PartMaker &make) {
  registerClasses();
  making = &make;
  const HWND made = CreateWindowExA(look.exStyle, kDialogClass, look.caption.c_str(), look.style, place.left, place.top,
                                    place.right - place.left, place.bottom - place.top, parent, id, nullptr, nullptr);
  making = nullptr;
  return made;
}

// Whether a text marks a character as its key: "&Y".
bool hasKey(const std::string &text, char key) {
  for (size_t i = 0; i + 1 < text.size(); ++i) {
    if (isDoubleByteAt(text, i) || (text[i] == '&' && text[i + 1] == '&'))
      ++i;
    else if (text[i] == '&')
      return std::toupper(static_cast<unsigned char>(text[i + 1])) == std::toupper(static_cast<unsigned char>(key));
  }
  return false;
}

UINT codeOf(HWND control) { return static_cast<UINT>(SendMessageA(control, WM_GETDLGCODE, 0, 0)); }
bool isPush(HWND control) { return codeOf(control) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON); }
bool isRadio(HWND control) { return codeOf(control) & DLGC_RADIOBUTTON; }
bool canBeFocus(HWND control) {
  return control && IsWindowEnabled(control) && GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE;
}

} // namespace

BOOL failDialog(DWORD error) {
  extendedError = error;
  return FALSE;
}

bool usesDesktop() { return !keptOpen && theScreen().mayAskFiles(); }
bool answersItself() { return !keptOpen && !theScreen().isSeen(); }

// ---- The window

std::optional<LRESULT> Dialog::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_COMMAND: return command(LOWORD(wParam), HIWORD(wParam));
  case WM_CLOSE: sendCommand(IDCANCEL); return 0;
  case DM_GETDEFID: return default_ ? MAKELONG(default_, DC_HASDEFID) : 0;
  case WM_ACTIVATE: activated(LOWORD(wParam) != WA_INACTIVE); return 0;
  case WM_SETFOCUS:
    if (focus_ && canBeFocus(focus_)) SetFocus(focus_);
    return 0;
  case WM_NCDESTROY:
    if (!std::exchange(ended_, true)) result_ = 0;
    PostMessageA(nullptr, WM_NULL, 0, 0); // the loop looks again
    return std::nullopt;
  case WM_SETTEXT: return std::nullopt;
  default: return Control::answer(message, wParam, lParam);
  }
}

void Dialog::draw(HDC dc, const RECT &area) { FillRect(dc, &area, GetSysColorBrush(COLOR_BTNFACE)); }

HWND Dialog::add(const char *kind, const std::string &text, DWORD style, const RECT &place, int id, DWORD exStyle) {
  return CreateWindowExA(exStyle | WS_EX_NOPARENTNOTIFY, kind, text.c_str(),
                         style | WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, place.left, place.top,
                         place.right - place.left, place.bottom - place.top, handle_,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

void Dialog::setClientSize(LONG width, LONG height) {
  RECT rect = {0, 0, width, height};
  AdjustWindowRectEx(&rect, style(), FALSE, static_cast<DWORD>(GetWindowLongA(handle_, GWL_EXSTYLE)));
  const RECT screen = theScreen().info().workArea;
  const LONG wide = rect.right - rect.left, high = rect.bottom - rect.top;
  SetWindowPos(handle_, nullptr, std::max(screen.left, (screen.left + screen.right - wide) / 2),
               std::max(screen.top, (screen.top + screen.bottom - high) / 2), wide, high,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void Dialog::activated(bool active) {
  if (active)
    SetFocus(canBeFocus(focus_) ? focus_ : handle_);
  else if (const HWND focus = GetFocus(); IsChild(handle_, focus))
    focus_ = focus;
}

// ---- Keys

void Dialog::sendCommand(int id) { SendMessageA(handle_, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), lParamOf(item(id))); }

bool Dialog::translate(const MSG &message) {
  if (message.hwnd != handle_ && !IsChild(handle_, message.hwnd)) return false;
  switch (message.message) {
  case WM_KEYDOWN: return translateKey(message);
  case WM_CHAR:
    if (codeOf(message.hwnd) & DLGC_WANTCHARS) return false;
    [[fallthrough]];
  case WM_SYSCHAR: return translateCharacter(message);
  default: return false;
  }
}

bool Dialog::translateKey(const MSG &message) {
  const UINT code = codeOf(message.hwnd);
  if (code & DLGC_WANTALLKEYS) return false;
  const bool arrows = code & DLGC_WANTARROWS;
  switch (message.wParam) {
  case VK_TAB: moveFocus(GetKeyState(VK_SHIFT) >= 0, false); return true;
  case VK_LEFT:
  case VK_UP:
    if (!arrows) moveFocus(false, true);
    return !arrows;
  case VK_RIGHT:
  case VK_DOWN:
    if (!arrows) moveFocus(true, true);
    return !arrows;
  case VK_ESCAPE: sendCommand(IDCANCEL); return true;
  case VK_F1: return help();
  case VK_RETURN: pressDefault(); return true;
  case 'C': return GetKeyState(VK_CONTROL) < 0 && !(code & DLGC_HASSETSEL) && copy();
  default: return false;
  }
}

// A control's own text names its key, or the label in front of it does.
bool Dialog::translateCharacter(const MSG &message) {
  bool labelled = false;
  for (HWND child = GetWindow(handle_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (!canBeFocus(child)) continue;
    const bool isLabel = codeOf(child) & DLGC_STATIC;
    if (labelled && !isLabel) {
      SetFocus(child);
      return true;
    }
    if (!isLabel && !(codeOf(child) & DLGC_BUTTON)) continue;
    if (!hasKey(recordOf(child)->text, static_cast<char>(message.wParam))) continue;
    labelled = isLabel;
    if (!isLabel) {
      press(child);
      return true;
    }
  }
  return false;
}

void Dialog::press(HWND button) {
  SetFocus(button);
  SendMessageA(button, BM_CLICK, 0, 0);
}

void Dialog::pressDefault() {
  const HWND focus = GetFocus();
  const bool onButton = IsChild(handle_, focus) && isPush(focus);
  const HWND button = onButton ? focus : item(default_);
  if (!button || IsWindowEnabled(button)) sendCommand(onButton ? GetDlgCtrlID(focus) : default_);
}

std::vector<HWND> Dialog::stops() const {
  std::vector<HWND> all;
  for (HWND child = GetWindow(handle_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    if (canBeFocus(child) && GetWindowLongA(child, GWL_STYLE) & WS_TABSTOP) all.push_back(child);
  return all;
}

void Dialog::moveFocus(bool forward, bool inGroup) {
  std::vector<HWND> all = stops();
  const bool amongRadios = inGroup && isRadio(GetFocus());
  if (inGroup) std::erase_if(all, [&](HWND control) { return !(amongRadios ? isRadio : isPush)(control); });
  const auto at = std::find(all.begin(), all.end(), GetFocus());
  if (all.empty() || (inGroup && at == all.end())) return;
  const size_t now = at == all.end() ? (forward ? all.size() - 1 : 0) : static_cast<size_t>(at - all.begin());
  const HWND next = all[(now + (forward ? 1 : all.size() - 1)) % all.size()];
  if (amongRadios) return press(next);
  SetFocus(next);
}

// The button with the focus is the default one as long as it has it.
void Dialog::markDefault() {
  const HWND focus = GetFocus();
  const HWND due = focus && IsChild(handle_, focus) && isPush(focus) ? focus : item(default_);
  if (due == marked_) return;
  if (marked_) SendMessageA(marked_, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
  marked_ = due;
  if (due) SendMessageA(due, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
}

// ---- From the beginning to the end

// The windows are enabled before the dialog goes, so that one of them comes to the front.
void Dialog::end(int result) {
  if (std::exchange(ended_, true)) return;
  result_ = result;
  for (const HWND window : std::exchange(disabled_, {})) EnableWindow(window, TRUE);
  ShowWindow(handle_, SW_HIDE);
  PostMessageA(nullptr, WM_NULL, 0, 0); // who ends it may be a message that the loop doesn't see
}

void Dialog::loop() {
  MSG message;
  while (!ended_) {
    markDefault();
    const BOOL got = GetMessageA(&message, nullptr, 0, 0);
    if (got <= 0) {
      if (got == 0) PostQuitMessage(static_cast<int>(message.wParam)); // the loop outside shall see it too
      return;
    }
    if (translate(message)) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

// A dialog under way.
struct Modal {
  Dialog &dialog;
  const HWND handle;

  void disable(HWND owner, Disables disables) {
    if (owner) return disable(owner);
    if (disables != Disables::thread) return;
    for (const WindowRef &window : childrenOf(desktopWindow()))
      if (window->alive && window->queue == currentQueue() && window->handle != handle && window->is(WS_VISIBLE))
        disable(window->handle);
  }

  void disable(HWND window) {
    if (!IsWindowEnabled(window)) return;
    dialog.disabled_.push_back(window);
    EnableWindow(window, FALSE);
  }

  int run(HWND owner, Disables disables) {
    const OnThrow restored([&] { abandon(); });
    dialog.build();
    disable(owner, disables);
    if (!dialog.ended_ && dialog.isSeen()) ShowWindow(handle, SW_SHOW);
    if (!dialog.ended_) dialog.shown();
    dialog.loop();
    dialog.end(dialog.result_); // where a WM_QUIT came in between
    DestroyWindow(handle);
    return dialog.result_;
  }

  // A procedure of the program has thrown: no other one is called on the way out.
  void abandon() {
    for (const HWND window : dialog.disabled_)
      if (Window *const record = recordOf(window)) record->style &= ~DWORD{WS_DISABLED};
    Queue &queue = *currentQueue();
    const HWND focus = queue.focus;
    if (queue.active == handle) queue.active = nullptr;
    if (focus == handle || IsChild(handle, focus)) queue.focus = nullptr;
    DestroyWindow(handle);
  }
};

int runDialog(HWND owner, Disables disables, const DialogLook &look, const DialogMaker &make) {
  std::shared_ptr<Dialog> dialog;
  const HWND root = owner ? GetAncestor(owner, GA_ROOT) : nullptr;
  const HWND handle = makeWindow(look, {}, root, nullptr, [&](HWND window) { return dialog = make(window); });
  if (!handle || !dialog) return 0;
  return Modal{*dialog, handle}.run(root, disables);
}

HWND addPart(HWND dialog, const RECT &place, int id, DialogLook look, const PartMaker &make) {
  look.style |= WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
  look.exStyle |= WS_EX_NOPARENTNOTIFY;
  return makeWindow(look, place, dialog, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), make);
}

} // namespace platform

DWORD CommDlgExtendedError() { return platform::extendedError; }

void platformKeepDialogsOpen(BOOL keep) { platform::keptOpen = keep; }
