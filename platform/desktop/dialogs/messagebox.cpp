// Message boxes.

#include "platform/winapi/boxes.h"

#include "platform/desktop/dialogs/clip.h"
#include "platform/desktop/dialogs/dialog.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"

#include <algorithm>
#include <cstdio>

namespace platform {

namespace {

constexpr LONG kMargin = 12, kIcon = 32, kBetween = 8, kButtonHeight = 24, kLeastButton = 76;
constexpr UINT kFormat = DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX | DT_EDITCONTROL;
constexpr int kIconId = 20, kTextId = 0xFFFF;

struct ButtonText {
  int id;
  const char *text;
};
constexpr ButtonText kButtons[] = {{IDOK, "OK"},
                                   {IDCANCEL, "キャンセル"},
                                   {IDABORT, "中止(&A)"},
                                   {IDRETRY, "再試行(&R)"},
                                   {IDIGNORE, "無視(&I)"},
                                   {IDYES, "はい(&Y)"},
                                   {IDNO, "いいえ(&N)"},
                                   {IDHELP, "ヘルプ(&H)"},
                                   {IDTRYAGAIN, "再実行(&T)"},
                                   {IDCONTINUE, "続行(&C)"}};

// By MB_TYPEMASK.
const std::vector<int> kSets[] = {
    {IDOK},        {IDOK, IDCANCEL},    {IDABORT, IDRETRY, IDIGNORE},      {IDYES, IDNO, IDCANCEL},
    {IDYES, IDNO}, {IDRETRY, IDCANCEL}, {IDCANCEL, IDTRYAGAIN, IDCONTINUE}};

std::string textOf(int id) {
  const auto at = std::find_if(std::begin(kButtons), std::end(kButtons), [&](const auto &one) { return one.id == id; });
  return codePageFromUtf8(at->text);
}

// The same without the mark of its key.
std::string wordsOf(int id) {
  std::string text = textOf(id);
  std::erase(text, '&'); // which is no second byte of a character
  return text;
}

LPCSTR iconOf(UINT type) {
  switch (type & MB_ICONMASK) {
  case MB_ICONHAND: return IDI_HAND;
  case MB_ICONQUESTION: return IDI_QUESTION;
  case MB_ICONEXCLAMATION: return IDI_EXCLAMATION;
  case MB_ICONASTERISK: return IDI_ASTERISK;
  default: return nullptr;
  }
}

std::vector<int> buttonsOf(UINT type) {
  std::vector<int> set = kSets[type & MB_TYPEMASK];
  if (type & MB_HELP) set.push_back(IDHELP);
  return set;
}

// The first one of the buttons where the type names one that isn't there.
int defaultOf(UINT type, const std::vector<int> &set) {
  const size_t index = (type & MB_DEFMASK) >> 8;
  return set[index < set.size() ? index : 0];
}

// What a text takes of room on the screen.
SIZE sizeOf(const std::string &text, LONG widest, UINT format) {
  const HDC dc = GetDC(nullptr);
  RECT room = {0, 0, widest, 0};
  {
    const Selected selected(dc, GetStockObject(DEFAULT_GUI_FONT));
    DrawTextA(dc, text.c_str(), -1, &room, format | DT_CALCRECT);
  }
  ReleaseDC(nullptr, dc);
  return {room.right, room.bottom};
}

class Box final : public Dialog {
 public:
  Box(HWND handle, std::string text, UINT type)
      : Dialog(handle), text_(std::move(text)), type_(type), set_(buttonsOf(type)) {}

  void build() override {
    const LONG left = iconOf(type_) ? kMargin + kIcon + kMargin : kMargin;
    const SIZE text = textSize(left);
    const LONG button = buttonWidth(), row = static_cast<LONG>(set_.size()) * (button + kBetween) - kBetween;
    const LONG width = std::max(left + text.cx, kMargin + row) + kMargin;
    const LONG content = std::max<LONG>(text.cy, iconOf(type_) ? kIcon : 0), below = 2 * kMargin + content;
    addContent(left, text, content);
    addButtons((width - row) / 2, below, button);
    if (!closes()) EnableMenuItem(GetSystemMenu(handle_, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    setClientSize(width, below + kButtonHeight + kMargin);
  }

  void shown() override {
    if (type_ & MB_SETFOREGROUND) SetForegroundWindow(handle_);
  }

 private:
  // Escape and the close box stand for a button.
  bool closes() const { return isAlone() || has(IDCANCEL); }
  bool isAlone() const { return (type_ & MB_TYPEMASK) == MB_OK; }
  bool has(int id) const { return std::find(set_.begin(), set_.end(), id) != set_.end(); }

  // As wide as is good to read, and wider where the text would not fit the screen; what doesn't fit then is cut.
  SIZE textSize(LONG left) const {
    const RECT screen = theScreen().info().workArea;
    const LONG wide = screen.right - screen.left, high = screen.bottom - screen.top;
    const LONG tallest = high - 4 * kMargin - kButtonHeight - GetSystemMetrics(SM_CYCAPTION);
    SIZE text = sizeOf(text_, wide * 5 / 8, kFormat);
    if (text.cy > tallest) text = sizeOf(text_, wide - left - 4 * kMargin, kFormat);
    text.cy = std::min(text.cy, tallest);
    return text;
  }

  LONG buttonWidth() const {
    LONG widest = kLeastButton;
    for (const int id : set_) widest = std::max(widest, sizeOf(textOf(id), 0, DT_SINGLELINE).cx + 2 * kMargin);
    return widest;
  }

  void addContent(LONG left, SIZE text, LONG height) {
    if (const LPCSTR icon = iconOf(type_)) {
      const LONG top = kMargin + (height - kIcon) / 2;
      const HWND label = add(kLabelClass, "", SS_ICON, {kMargin, top, kMargin + kIcon, top + kIcon}, kIconId);
      SendMessageA(label, STM_SETICON, reinterpret_cast<WPARAM>(LoadIconA(nullptr, icon)), 0);
    }
    const LONG top = kMargin + (height - text.cy) / 2;
    add(kLabelClass, text_, SS_NOPREFIX | SS_EDITCONTROL, {left, top, left + text.cx, top + text.cy}, kTextId);
  }

  void addButtons(LONG left, LONG top, LONG width) {
    setDefault(defaultOf(type_, set_));
    for (const int id : set_) {
      const HWND button = add(kButtonClass, textOf(id), WS_TABSTOP, {left, top, left + width, top + kButtonHeight}, id);
      if (id == defaultButton()) setFirst(button);
      left += width + kBetween;
    }
  }

  bool command(int id, int) override {
    if (id == IDCANCEL && isAlone()) id = set_.front();
    if (!has(id)) return false;
    if (id == IDHELP) return help(), true;
    end(id);
    return true;
  }

  bool help() override {
    const HWND owner = GetWindow(handle_, GW_OWNER), focus = GetFocus();
    if (!(type_ & MB_HELP) || !owner) return false;
    HELPINFO info{};
    info.cbSize = sizeof info;
    info.iContextType = HELPINFO_WINDOW;
    info.iCtrlId = GetDlgCtrlID(focus);
    info.hItemHandle = focus;
    GetCursorPos(&info.MousePos);
    SendMessageA(owner, WM_HELP, 0, addressOf(info));
    return true;
  }

  // The whole box as text, such as a user sends to whoever can help.
  bool copy() override {
    const std::string line = "---------------------------\r\n";
    std::string all = line + recordOf(handle_)->text + "\r\n" + line + text_ + "\r\n" + line;
    for (const int id : set_) all += wordsOf(id) + "   ";
    copyText(handle_, all + "\r\n" + line);
    return true;
  }

  const std::string text_;
  const UINT type_;
  const std::vector<int> set_;
};

DialogLook lookOf(const std::string &caption, UINT type) {
  DialogLook look;
  look.caption = caption;
  if (type & (MB_TOPMOST | MB_SYSTEMMODAL)) look.exStyle |= WS_EX_TOPMOST;
  return look;
}

int tell(const std::string &text, const std::string &caption, UINT type) {
  std::fprintf(stderr, "%s: %s\n", utf8FromCodePage(caption).c_str(), utf8FromCodePage(text).c_str());
  return defaultOf(type, kSets[type & MB_TYPEMASK]);
}

} // namespace

} // namespace platform

using namespace platform;

int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type) {
  return locked<int>(0, [&]() -> int {
    if (owner && !windowOf(owner)) return 0;
    if ((type & MB_TYPEMASK) >= std::size(kSets)) return failWith(ERROR_INVALID_MSGBOX_STYLE);
    const std::string words = text ? text : "", title = caption ? caption : codePageFromUtf8("エラー");
    if (answersItself()) return tell(words, title, type);
    const Disables disables = type & MB_TASKMODAL ? Disables::thread : Disables::owner;
    return runDialog(owner, disables, lookOf(title, type),
                     [&](HWND window) { return std::make_shared<Box>(window, words, type); });
  });
}
