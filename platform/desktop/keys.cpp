#include "platform/desktop/keys.h"

#include "platform/desktop/input.h"
#include "platform/kernel/codepage.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <iterator>

namespace platform {

namespace {

struct NamedKey {
  int qt;
  BYTE key;
  bool extended; // of the second block of keys, which the first one has too
};

constexpr NamedKey kNamed[] = {
    {Qt::Key_Backspace, VK_BACK, false},
    {Qt::Key_Tab, VK_TAB, false},
    {Qt::Key_Backtab, VK_TAB, false},
    {Qt::Key_Clear, VK_CLEAR, false},
    {Qt::Key_Return, VK_RETURN, false},
    {Qt::Key_Enter, VK_RETURN, true},
    {Qt::Key_Shift, VK_SHIFT, false},
    {Qt::Key_Control, VK_CONTROL, false},
    {Qt::Key_Alt, VK_MENU, false},
    {Qt::Key_AltGr, VK_MENU, true},
    {Qt::Key_Pause, VK_PAUSE, false},
    {Qt::Key_CapsLock, VK_CAPITAL, false},
    {Qt::Key_Escape, VK_ESCAPE, false},
    {Qt::Key_Space, VK_SPACE, false},
    {Qt::Key_PageUp, VK_PRIOR, true},
    {Qt::Key_PageDown, VK_NEXT, true},
    {Qt::Key_End, VK_END, true},
    {Qt::Key_Home, VK_HOME, true},
    {Qt::Key_Left, VK_LEFT, true},
    {Qt::Key_Up, VK_UP, true},
    {Qt::Key_Right, VK_RIGHT, true},
    {Qt::Key_Down, VK_DOWN, true},
    {Qt::Key_Print, VK_SNAPSHOT, true},
    {Qt::Key_Insert, VK_INSERT, true},
    {Qt::Key_Delete, VK_DELETE, true},
    {Qt::Key_Help, VK_HELP, false},
    {Qt::Key_Super_L, VK_LWIN, true},
    {Qt::Key_Super_R, VK_RWIN, true},
    {Qt::Key_Menu, VK_APPS, true},
    {Qt::Key_NumLock, VK_NUMLOCK, true},
    {Qt::Key_ScrollLock, VK_SCROLL, false},
    {Qt::Key_Kanji, VK_KANJI, false},
    {Qt::Key_Muhenkan, VK_NONCONVERT, false},
    {Qt::Key_Henkan, VK_CONVERT, false},
};

// The characters of the keys beside letters and digits, alone and with Shift.
struct SignKey {
  BYTE key;
  char plain, shifted;
};

constexpr SignKey kSigns[] = {
    {VK_OEM_1, ';', ':'},      {VK_OEM_PLUS, '=', '+'}, {VK_OEM_COMMA, ',', '<'}, {VK_OEM_MINUS, '-', '_'},
    {VK_OEM_PERIOD, '.', '>'}, {VK_OEM_2, '/', '?'},    {VK_OEM_3, '`', '~'},     {VK_OEM_4, '[', '{'},
    {VK_OEM_5, '\\', '|'},     {VK_OEM_6, ']', '}'},    {VK_OEM_7, '\'', '"'},    {VK_SPACE, ' ', ' '},
    {VK_MULTIPLY, '*', '*'},   {VK_ADD, '+', '+'},      {VK_SUBTRACT, '-', '-'},  {VK_DECIMAL, '.', '.'},
    {VK_DIVIDE, '/', '/'},     {VK_BACK, 8, 8},         {VK_TAB, 9, 9},           {VK_RETURN, 13, 13},
    {VK_ESCAPE, 27, 27},
};
constexpr char kShiftedDigits[] = ")!@#$%^&*(";

BYTE signKey(int character) {
  const auto *at = std::find_if(std::begin(kSigns), std::end(kSigns), [&](const SignKey &sign) {
    return sign.key >= VK_OEM_1 && (sign.plain == character || sign.shifted == character);
  });
  return at == std::end(kSigns) ? BYTE{0} : at->key;
}

NamedKey keyOf(const QKeyEvent &event) {
  const int key = event.key();
  const bool pad = event.modifiers() & Qt::KeypadModifier;
  if (pad && key >= Qt::Key_0 && key <= Qt::Key_9) return {key, static_cast<BYTE>(VK_NUMPAD0 + key - Qt::Key_0), false};
  if (pad) {
    constexpr std::pair<int, BYTE> kPad[] = {{Qt::Key_Asterisk, VK_MULTIPLY}, {Qt::Key_Plus, VK_ADD},
                                             {Qt::Key_Minus, VK_SUBTRACT},    {Qt::Key_Period, VK_DECIMAL},
                                             {Qt::Key_Comma, VK_DECIMAL},     {Qt::Key_Slash, VK_DIVIDE}};
    for (const auto &[qt, vk] : kPad)
      if (qt == key) return {key, vk, vk == VK_DIVIDE};
  }
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
    return {key, static_cast<BYTE>(key), false};
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return {key, static_cast<BYTE>(VK_F1 + key - Qt::Key_F1), false};
  for (const NamedKey &named : kNamed)
    if (named.qt == key) return {key, named.key, named.extended && !(pad && named.key != VK_RETURN)};
  if (key > 0x20 && key < 0x7F) {
    // Shift changes the sign that Qt tells, not the key
    if (const char *digit = std::find(kShiftedDigits, std::end(kShiftedDigits) - 1, key); *digit)
      return {key, static_cast<BYTE>('0' + (digit - kShiftedDigits)), false};
    return {key, signKey(key), false};
  }
  return {key, 0, false};
}

std::string codePageText(const QString &text) { return codePageFromUtf8(text.toStdString()); }

void addKey(QKeyEvent &event) {
  const NamedKey key = keyOf(event);
  Input input;
  input.typed = event.type() == QEvent::KeyPress;
  if (input.typed) input.text = codePageText(event.text());
  if (key.key == VK_DELETE) input.text.clear(); // which types nothing
  if (key.key == 0) {
    if (input.text.empty()) return;
    input.kind = Input::Kind::text; // a key without a number
    addInput(std::move(input));
    return;
  }
  input.kind = Input::Kind::key;
  input.message = event.type() == QEvent::KeyPress ? WM_KEYDOWN : WM_KEYUP;
  if (event.isAutoRepeat() && input.message == WM_KEYUP) return; // a held key goes down again and again
  input.key = key.key;
  const quint32 scan = event.nativeScanCode();
  input.scan = static_cast<WORD>((scan > 8 ? (scan - 8) & 0xFF : 0) | (key.extended ? 0x100 : 0));
  addInput(std::move(input));
}

POINT onScreen(const QPointF &point) {
  return {static_cast<LONG>(std::floor(point.x())), static_cast<LONG>(std::floor(point.y()))};
}

void addButton(const QMouseEvent &event) {
  Input input;
  input.kind = Input::Kind::mouse;
  input.at = onScreen(event.globalPosition());
  const bool up = event.type() == QEvent::MouseButtonRelease;
  switch (event.button()) {
  case Qt::LeftButton: input.message = up ? WM_LBUTTONUP : WM_LBUTTONDOWN; break;
  case Qt::RightButton: input.message = up ? WM_RBUTTONUP : WM_RBUTTONDOWN; break;
  case Qt::MiddleButton: input.message = up ? WM_MBUTTONUP : WM_MBUTTONDOWN; break;
  default: input.message = WM_MOUSEMOVE; break;
  }
  addInput(std::move(input));
}

void addWheel(const QWheelEvent &event) {
  if (event.angleDelta().y() == 0) return;
  Input input;
  input.kind = Input::Kind::wheel;
  input.at = onScreen(event.globalPosition());
  input.delta = event.angleDelta().y();
  addInput(std::move(input));
}

} // namespace

bool userInput(Window &, QEvent &event) {
  switch (event.type()) {
  case QEvent::MouseMove:
  case QEvent::MouseButtonPress:
  case QEvent::MouseButtonRelease: addButton(static_cast<QMouseEvent &>(event)); return true;
  case QEvent::MouseButtonDblClick: return true; // the press before it counts; double clicks are told from two of them
  case QEvent::Wheel: addWheel(static_cast<QWheelEvent &>(event)); return true;
  case QEvent::KeyPress:
  case QEvent::KeyRelease: addKey(static_cast<QKeyEvent &>(event)); return true;
  case QEvent::InputMethod: {
    Input input;
    input.kind = Input::Kind::text;
    input.text = codePageText(static_cast<QInputMethodEvent &>(event).commitString());
    if (!input.text.empty()) addInput(std::move(input));
    return true;
  }
  default: return false;
  }
}

void leaveInput(Window &window) {
  if (Window *left = window.queue->tracked) {
    window.queue->tracked = nullptr;
    post(*window.queue, messageFor(left->handle, WM_MOUSELEAVE, 0, 0));
  }
}

char characterOf(BYTE key, bool shift, bool capital) {
  if (key >= 'A' && key <= 'Z') return static_cast<char>(shift != capital ? key : key - 'A' + 'a');
  if (key >= '0' && key <= '9') return shift ? kShiftedDigits[key - '0'] : static_cast<char>(key);
  if (key >= VK_NUMPAD0 && key <= VK_NUMPAD9) return static_cast<char>('0' + key - VK_NUMPAD0);
  for (const SignKey &sign : kSigns)
    if (sign.key == key) return shift ? sign.shifted : sign.plain;
  return 0;
}

} // namespace platform
