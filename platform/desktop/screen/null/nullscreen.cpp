#include "platform/desktop/screen/null/nullscreen.h"

namespace platform {

namespace {

class NullScreen final : public Screen {
 public:
  bool isSeen() const override { return false; }
  ScreenInfo info() const override { return {kSize, kArea, kArea, {kSize.cx / 2, kSize.cy / 2}, kPixelsPerInch, true}; }

  void show(HWND, const Look &, const Stand &, Serial, ShowState, Serial, const std::shared_ptr<Picture> &) override {}
  bool isBehind() const override { return false; }
  void catchUp() override {}
  void hide(HWND) override {}
  void close(HWND) override {}
  void setLook(HWND, const Look &) override {}
  void place(HWND, const Stand &, Serial) override {}
  void setState(HWND, ShowState, Serial) override {}
  void raise(HWND) override {}
  void lower(HWND) override {}
  void activate(HWND, Serial) override {}
  void flush(HWND) override {}
  void flushSoon() override {}
  void setPointer(const Pointer &) override {}
  void movePointer(POINT, Serial) override {}
  void findPointer() override {}
  void offerClipboard(const std::vector<std::string> &, Serial) override {}
  void askClipboardTypes(Answered<std::vector<std::string>> answered) override { answered(std::nullopt); }
  void askClipboard(const std::string &, Answered<std::string> answered) override { answered(std::nullopt); }
  bool mayAskFiles() const override { return false; }
  std::function<void()> askFiles(const FileQuestion &, FileAnswered) override { return nullptr; }
  bool runsHere() const override { return false; }
  void runEvents() override {}
  void waitForEvents(const std::optional<std::chrono::steady_clock::time_point> &) override {}
  void wake(DWORD) override {}

 private:
  static constexpr SIZE kSize = {1280, 1024};
  static constexpr RECT kArea = {0, 0, kSize.cx, kSize.cy};
  static constexpr int kPixelsPerInch = 96;
};

} // namespace

std::unique_ptr<Screen> makeNullScreen() { return std::make_unique<NullScreen>(); }

} // namespace platform
