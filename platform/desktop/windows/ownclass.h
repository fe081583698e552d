// Windows of the layer's own classes. An object answers the messages of each window, and lives as long as the window.
#pragma once

#include "platform/winapi/icons.h"
#include "platform/winapi/messages.h"
#include "platform/winapi/windows.h"

#include <memory>
#include <optional>

namespace platform {

// An object belongs to one thread and works under the desktop's lock. Messages that it sends run procedures of the
// program, which may destroy its window. So the object stays alive until the message is answered.
class Answerer {
 public:
  Answerer() = default;
  virtual ~Answerer() = default;
  Answerer(const Answerer &) = delete;
  Answerer &operator=(const Answerer &) = delete;

  // Result: nothing if the default procedure shall answer.
  virtual std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) = 0;
};

// Makes the object of a new window; null for a window without one.
using AnswererMaker = std::shared_ptr<Answerer> (*)(HWND window);

LRESULT answerMessage(AnswererMaker make, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// The window procedure of a class whose objects are of one kind.
template <typename Kind> LRESULT CALLBACK procedureOf(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  constexpr AnswererMaker kMake = [](HWND handle) -> std::shared_ptr<Answerer> {
    return std::make_shared<Kind>(handle);
  };
  return answerMessage(kMake, window, message, wParam, lParam);
}

// Does nothing if the class exists already.
// extra: bytes in each window for the program.
void registerOwnClass(const char *name, WNDPROC procedure, UINT style, LPCSTR cursor = IDC_ARROW, int extra = 0);

} // namespace platform
