// Windows of the layer's own classes: an object answers the messages of each, and lives as long as its window.
#pragma once

#include "platform/winapi/icons.h"
#include "platform/winapi/messages.h"
#include "platform/winapi/windows.h"

#include <memory>
#include <optional>

namespace platform {

// It belongs to one thread and works under the desktop's lock. What it asks and tells other windows runs procedures of
// the program, which may end its window: the object stays until the message is answered.
class Answerer {
 public:
  Answerer() = default;
  virtual ~Answerer() = default;
  Answerer(const Answerer &) = delete;
  Answerer &operator=(const Answerer &) = delete;

  // Nothing for a message that is left to the default procedure.
  virtual std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) = 0;
};

// Makes the object of a new window; null for a window that does without.
using AnswererMaker = std::shared_ptr<Answerer> (*)(HWND window);

LRESULT answerMessage(AnswererMaker make, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// The window procedure of a class whose objects are of one kind.
template <typename Kind> LRESULT CALLBACK procedureOf(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  constexpr AnswererMaker kMake = [](HWND handle) -> std::shared_ptr<Answerer> {
    return std::make_shared<Kind>(handle);
  };
  return answerMessage(kMake, window, message, wParam, lParam);
}

// Does nothing for a class that is there.
// extra: bytes of a window that are the program's.
void registerOwnClass(const char *name, WNDPROC procedure, UINT style, LPCSTR cursor = IDC_ARROW, int extra = 0);

} // namespace platform
