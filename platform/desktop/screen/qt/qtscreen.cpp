#include "platform/desktop/screen/qt/qtscreen.h"

#include "platform/desktop/screen/qt/clipboard.h"
#include "platform/desktop/screen/qt/host.h"
#include "platform/desktop/screen/qt/portal.h"
#include "platform/desktop/screen/qt/shown.h"

#include <QGuiApplication>

#include <atomic>

namespace platform {

namespace {

constexpr std::chrono::seconds kSetUp{5};

// A screen that posts everything to Qt's thread.
class QtScreen final : public Screen {
 public:
  // Null if there is no display.
  static std::unique_ptr<Screen> start() {
    auto screen = std::make_unique<QtScreen>();
    QtScreen *const self = screen.get();
    screen->host_ = Host::start([self] { self->closeDesk(); });
    if (!screen->host_) return nullptr;
    if (!screen->host_->finish([self] { self->openDesk(); }, kSetUp)) {
      static_cast<void>(screen.release()); // posted work may still use it
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
  bool mayAskFiles() const override { return FilePortal::mayBeThere(); }
  std::function<void()> askFiles(const FileQuestion &question, FileAnswered answered) override {
    static std::atomic<unsigned> serial;
    if (!mayAskFiles()) return nullptr;
    const unsigned id = ++serial;
    if (!host_->post([=, this] { portal_->ask(id, question, portalName(question.owner), answered); })) return nullptr;
    return [this, id] { post([this, id] { portal_->withdraw(id); }); };
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
    portal_ = new FilePortal;
  }
  void closeDesk() {
    if (clipboard_) clipboard_->close();
    if (portal_) portal_->close();
    if (desk_) desk_->close();
  }
  // Of a window on X11; on Wayland a window has no name that another program could know.
  QString portalName(HWND window) const {
    const ShownWindow *const shown = desk_->find(window);
    if (!shown || QGuiApplication::platformName() != QLatin1String("xcb")) return {};
    return QStringLiteral("x11:") + QString::number(shown->winId(), 16);
  }
  void post(Host::Work work) { host_->post(std::move(work)); }
  template <typename Body> void onWindow(HWND window, Body body) {
    post([this, window, body = std::move(body)] {
      if (ShownWindow *const shown = desk_->find(window)) body(*shown);
    });
  }

  Host *host_ = nullptr;
  Desk *desk_ = nullptr; // never destroyed: info() may be called until the process ends
  ClipboardLink *clipboard_ = nullptr;
  FilePortal *portal_ = nullptr;
};

} // namespace

std::unique_ptr<Screen> startQtScreen() { return QtScreen::start(); }

} // namespace platform
