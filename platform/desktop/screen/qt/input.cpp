// Turns Qt's input events into reports.

#include "platform/desktop/screen/above.h"
#include "platform/desktop/screen/keyboard.h"
#include "platform/desktop/screen/qt/shown.h"
#include "platform/kernel/codepage.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace platform {

namespace {

struct NamedKey {
  int qt;
  BYTE key;
  bool extended; // the extended key of two with the same code
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

constexpr std::pair<int, BYTE> kPad[] = {{Qt::Key_Asterisk, VK_MULTIPLY}, {Qt::Key_Plus, VK_ADD},
                                         {Qt::Key_Minus, VK_SUBTRACT},    {Qt::Key_Period, VK_DECIMAL},
                                         {Qt::Key_Comma, VK_DECIMAL},     {Qt::Key_Slash, VK_DIVIDE}};

NamedKey namedKey(const QKeyEvent &event) {
  const int key = event.key();
  const bool pad = event.modifiers() & Qt::KeypadModifier;
  if (pad && key >= Qt::Key_0 && key <= Qt::Key_9) return {key, static_cast<BYTE>(VK_NUMPAD0 + key - Qt::Key_0), false};
  if (pad)
    for (const auto &[qt, vk] : kPad)
      if (qt == key) return {key, vk, vk == VK_DIVIDE};
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
    return {key, static_cast<BYTE>(key), false};
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return {key, static_cast<BYTE>(VK_F1 + key - Qt::Key_F1), false};
  for (const NamedKey &named : kNamed)
    if (named.qt == key) return {key, named.key, named.extended && !(pad && named.key != VK_RETURN)};
  // Qt tells the character with Shift; the key is the same
  if (key > 0x20 && key < 0x7F) return {key, keyOf(static_cast<char>(key)), false};
  return {key, 0, false};
}

std::string codePageText(const QString &text) { return codePageFromUtf8(text.toStdString()); }

void reportKey(HWND window, const QKeyEvent &event) {
  const bool down = event.type() == QEvent::KeyPress;
  if (!down && event.isAutoRepeat()) return; // a held key only repeats its press
  const NamedKey named = namedKey(event);
  KeyChanged key{window, down, named.key, 0, {}};
  if (down && named.key != VK_DELETE) key.text = codePageText(event.text()); // Delete types no character
  const quint32 scan = event.nativeScanCode();
  key.scan = static_cast<WORD>((scan > 8 ? (scan - 8) & 0xFF : 0) | (named.extended ? 0x100 : 0));
  if (key.key || !key.text.empty()) above::take(std::move(key));
}

UINT buttonMessage(Qt::MouseButton button, bool up) {
  switch (button) {
  case Qt::LeftButton: return up ? WM_LBUTTONUP : WM_LBUTTONDOWN;
  case Qt::RightButton: return up ? WM_RBUTTONUP : WM_RBUTTONDOWN;
  case Qt::MiddleButton: return up ? WM_MBUTTONUP : WM_MBUTTONDOWN;
  default: return 0;
  }
}

} // namespace

bool reportInput(ShownWindow &window, Desk &desk, QEvent &event) {
  const HWND id = window.id();
  const auto place = [&](const QSinglePointEvent &one) {
    return window.programPoint(one.position(), one.globalPosition());
  };
  switch (event.type()) {
  case QEvent::Enter:
  case QEvent::MouseMove: {
    const auto &move = static_cast<QSinglePointEvent &>(event);
    window.setPointerAt(move.position());
    desk.moved(id, place(move));
    return true;
  }
  case QEvent::MouseButtonPress:
  case QEvent::MouseButtonRelease: {
    const auto &press = static_cast<QMouseEvent &>(event);
    const bool up = event.type() == QEvent::MouseButtonRelease;
    if (!up) desk.pressed();
    if (const UINT message = buttonMessage(press.button(), up)) above::take(ButtonChanged{id, place(press), message});
    return true;
  }
  case QEvent::MouseButtonDblClick: return true; // a double click is found from two presses
  case QEvent::Wheel: {
    const auto &wheel = static_cast<QWheelEvent &>(event);
    const QPoint turned = wheel.angleDelta();
    const POINT at = place(wheel);
    if (turned.y() != 0) above::take(WheelTurned{id, at, turned.y(), false});
    if (turned.x() != 0) above::take(WheelTurned{id, at, -turned.x(), true}); // positive to the right
    return true;
  }
  case QEvent::Leave: desk.left(id, window.pointerAt(), window.size()); return true;
  case QEvent::KeyPress:
  case QEvent::KeyRelease: reportKey(id, static_cast<QKeyEvent &>(event)); return true;
  case QEvent::InputMethod: {
    const std::string text = codePageText(static_cast<QInputMethodEvent &>(event).commitString());
    if (!text.empty()) above::take(TextTyped{id, text});
    return true;
  }
  default: return false;
  }
}

} // namespace platform
