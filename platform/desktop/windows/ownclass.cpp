#include "platform/desktop/windows/ownclass.h"

#include "platform/desktop/lock.h"
#include "platform/desktop/windows/classes.h"

#include <unordered_map>

namespace platform {

namespace {

// The objects of this thread's windows.
using Answerers = std::unordered_map<HWND, std::shared_ptr<Answerer>>;
Answerers &answerers() {
  thread_local Answerers all;
  return all;
}

std::shared_ptr<Answerer> answererOf(HWND window) {
  const auto at = answerers().find(window);
  return at == answerers().end() ? nullptr : at->second;
}

} // namespace

LRESULT answerMessage(AnswererMaker make, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return locked<LRESULT>(0, [&]() -> LRESULT {
    if (message == WM_NCCREATE)
      if (auto made = make(window)) answerers()[window] = made;
    const std::shared_ptr<Answerer> answerer = answererOf(window);
    if (message == WM_NCDESTROY) answerers().erase(window);
    const std::optional<LRESULT> answer = answerer ? answerer->answer(message, wParam, lParam) : std::nullopt;
    return answer ? *answer : DefWindowProcA(window, message, wParam, lParam);
  });
}

void registerOwnClass(const char *name, WNDPROC procedure, UINT style, LPCSTR cursor, int extra) {
  if (findClass(name)) return;
  WNDCLASSA made{};
  made.style = style;
  made.lpfnWndProc = procedure;
  made.cbWndExtra = extra;
  made.hCursor = LoadCursorA(nullptr, cursor);
  made.lpszClassName = name;
  RegisterClassA(&made);
}

} // namespace platform
