#include "platform/desktop/screen/keyboard.h"

#include <algorithm>
#include <iterator>

namespace platform {

namespace {

// A key other than letters and digits, with its characters alone and with Shift.
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

} // namespace

char characterOf(BYTE key, bool shift, bool capital) {
  if (key >= 'A' && key <= 'Z') return static_cast<char>(shift != capital ? key : key - 'A' + 'a');
  if (key >= '0' && key <= '9') return shift ? kShiftedDigits[key - '0'] : static_cast<char>(key);
  if (key >= VK_NUMPAD0 && key <= VK_NUMPAD9) return static_cast<char>('0' + key - VK_NUMPAD0);
  for (const SignKey &sign : kSigns)
    if (sign.key == key) return shift ? sign.shifted : sign.plain;
  return 0;
}

BYTE keyOf(char character) {
  if (const char *digit = std::find(kShiftedDigits, std::end(kShiftedDigits) - 1, character); *digit)
    return static_cast<BYTE>('0' + (digit - kShiftedDigits));
  const auto *const at = std::find_if(std::begin(kSigns), std::end(kSigns), [&](const SignKey &sign) {
    return sign.key >= VK_OEM_1 && (sign.plain == character || sign.shifted == character);
  });
  return at == std::end(kSigns) ? BYTE{0} : at->key;
}

} // namespace platform
