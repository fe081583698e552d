#include "platform/desktop/dialogs/filehook.h"

#include "platform/desktop/lock.h"

namespace platform {

namespace {

class HookWindow final : public Control {
 public:
  HookWindow(HWND handle, LPOFNHOOKPROC hook) : Control(handle), hook_(hook) {}

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    begun_ = begun_ || message == WM_INITDIALOG; // not what comes while it is made
    const UINT_PTR taken = begun_ ? callOut(hook_, handle_, message, wParam, lParam) : 0;
    if (!taken) return std::nullopt;
    return message == WM_INITDIALOG ? static_cast<LRESULT>(taken) : GetWindowLongPtrA(handle_, DWLP_MSGRESULT);
  }

 private:
  void draw(HDC, const RECT &) override {}

  const LPOFNHOOKPROC hook_;
  bool begun_ = false;
};

} // namespace

void FileHook::open(HWND dialog, OPENFILENAMEA &choice) {
  if (!(choice.Flags & OFN_ENABLEHOOK) || !(choice.Flags & OFN_EXPLORER) || !choice.lpfnHook) return;
  dialog_ = dialog;
  choice_ = &choice;
  DialogLook look;
  look.style = WS_CLIPSIBLINGS;
  look.exStyle = 0;
  window_ =
      addPart(dialog, {}, 0, look, [&](HWND window) { return std::make_shared<HookWindow>(window, choice.lpfnHook); });
  SendMessageA(window_, WM_INITDIALOG, 0, addressOf(choice));
}

bool FileHook::tell(UINT what) const {
  if (!window_) return false;
  OFNOTIFYA notice{};
  notice.hdr = {dialog_, 0, what};
  notice.lpOFN = choice_;
  SetWindowLongPtrA(window_, DWLP_MSGRESULT, 0);
  return SendMessageA(window_, WM_NOTIFY, 0, addressOf(notice)) != 0;
}

} // namespace platform
