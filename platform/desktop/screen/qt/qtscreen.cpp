#include "platform/desktop/screen/qt/qtscreen.h"

#include "platform/desktop/screen/qt/clipboard.h"
#include "platform/desktop/screen/qt/host.h"
#include "platform/desktop/screen/qt/shown.h"

namespace platform {

namespace {

constexpr std::chrono::seconds kSetUp{5};

// Hands everything over to Qt's thread.
class QtScreen final : public Screen {
 public:
  // Null when there is no display.
  static std::unique_ptr<Screen> start() {
    auto screen = std::make_unique<QtScreen>();
    QtScreen *const self = screen.get();
    screen->host_ = Host::start([self] { self->closeDesk(); });
    if (!screen->host_) return nullptr;
    if (!screen->host_->finish([self] { self->openDesk(); }, kSetUp)) {
      static_cast<void>(screen.release()); // work for it may be under way
      return nullptr;
    }
    return screen;
  }

  bool isSeen() const override { return true; }
  ScreenInfo info() const override { return desk_->info(); }

  void show(HWND window, const Look &look, const Stand &stand, Serial standSerial, ShowState state, Serial stateSerial,
            const std::shared_ptr<Picture> &picture) override {
    post([=, this] {
      ShownWindow &shown = desk_->findOrMake(window);
      shown.setLook(look);
      shown.setPicture(picture);
      shown.setState(state, stateSerial);
      shown.place(stand, standSerial);
      shown.appear();
    });
  }
  void hide(HWND window) override {
    onWindow(window, [this](ShownWindow &shown) { desk_->hide(shown); });
  }
  void close(HWND window) override {
    post([=, this] { desk_->remove(window); });
  }
  void setLook(HWND window, const Look &look) override {
    onWindow(window, [look](ShownWindow &shown) { shown.setLook(look); });
  }
  void place(HWND window, const Stand &stand, Serial serial) override {
    onWindow(window, [stand, serial](ShownWindow &shown) { shown.place(stand, serial); });
  }
  void setState(HWND window, ShowState state, Serial serial) override {
    onWindow(window, [state, serial](ShownWindow &shown) { shown.setState(state, serial); });
  }
  void raise(HWND window) override {
    onWindow(window, [](ShownWindow &shown) { shown.raise(); });
  }
  void lower(HWND window) override {
    onWindow(window, [](ShownWindow &shown) { shown.lower(); });
  }
  void activate(HWND window, Serial serial) override {
    post([=, this] { desk_->activate(window, serial); });
  }
  void flush(HWND window) override {
    onWindow(window, [](ShownWindow &shown) { shown.flush(); });
  }
  void flushSoon() override {
    if (desk_->flushWaits()) post([this] { desk_->flushSoon(); });
  }
  void setPointer(const Pointer &pointer) override {
    post([=, this] { desk_->setPointer(pointer); });
  }
  void movePointer(POINT to, Serial serial) override {
    post([=, this] { desk_->movePointer(to, serial); });
  }
  void findPointer() override {
    post([this] { desk_->findPointer(); });
  }
  void offerClipboard(const std::vector<std::string> &types, Serial offer) override {
    post([=, this] { clipboard_->offer(types, offer); });
  }
  void askClipboardTypes(Answered<std::vector<std::string>> answered) override {
    if (!host_->post([=, this] { answered(clipboard_->types()); })) answered(std::nullopt);
  }
  void askClipboard(const std::string &type, Answered<std::string> answered) override {
    if (!host_->post([=, this] { answered(clipboard_->data(type)); })) answered(std::nullopt);
  }

  bool isBehind() const override { return host_->isBehind(); }
  void catchUp() override { host_->catchUp(); }

  bool runsHere() const override { return host_->runsHere(); }
  void runEvents() override { host_->runEvents(); }
  void waitForEvents(const std::optional<Host::Moment> &until) override { host_->waitForEvents(until); }
  void wake(DWORD thread) override { host_->wake(thread); }

 private:
  void openDesk() {
    desk_ = new Desk;
    clipboard_ = new ClipboardLink;
  }
  void closeDesk() {
    if (clipboard_) clipboard_->close();
    if (desk_) desk_->close();
  }
  void post(Host::Work work) { host_->post(std::move(work)); }
  template <typename Body> void onWindow(HWND window, Body body) {
    post([this, window, body = std::move(body)] {
      if (ShownWindow *const shown = desk_->find(window)) body(*shown);
    });
  }

  Host *host_ = nullptr;
  Desk *desk_ = nullptr; // stays until the process ends: whoever asks for the screen's size may come late
  ClipboardLink *clipboard_ = nullptr;
};

} // namespace

std::unique_ptr<Screen> startQtScreen() { return QtScreen::start(); }

} // namespace platform
