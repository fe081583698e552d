#include "platform/desktop/screen/qt/desk.h"

#include "platform/desktop/rects.h"
#include "platform/desktop/screen/above.h"
#include "platform/desktop/screen/qt/shown.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <xcb/xcb.h>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto kActivationPause = 200ms;
constexpr auto kEcho = 500ms;     // how long after the program's own movement the desktop may report it
constexpr auto kUnflushed = 10ms; // how long drawn pixels may wait for the program to show them

LONG whole(double value) { return static_cast<LONG>(std::floor(value)); }

// Qt's units are whole. So with two pixels in a unit, an odd number of pixels takes half a unit more.
int units(int pixels, double ratio) { return static_cast<int>(std::ceil(pixels / ratio)); }

QCursor cursorOf(const Pointer &pointer) {
  if (pointer.picture.isNull()) return pointer.shape;
  return QCursor(QPixmap::fromImage(pointer.picture), pointer.hotSpot.x(), pointer.hotSpot.y());
}

} // namespace

Desk::Desk() : wayland_(QGuiApplication::platformName().startsWith("wayland")), active_(activation(), nullptr) {
  if (usesRealPixels()) ratio_ = QGuiApplication::primaryScreen()->devicePixelRatio();
  for (QTimer *timer : {&wishes_, &flush_, &learn_}) timer->setSingleShot(true);
  connect(&wishes_, &QTimer::timeout, this, [this] { late(); });
  connect(&flush_, &QTimer::timeout, this, [this] {
    flushWaits_ = false;
    above::flushDrawn();
  });
  connect(&learn_, &QTimer::timeout, this, [this] {
    learnScreen();
    above::take(ScreenChanged{});
  });
  connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow *window) { focusChanged(window); });
  connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, [this] { watchScreens(); });
  learnScreen();
  watchScreens();
}

Desk::~Desk() = default;

void Desk::close() {
  disconnect(qGuiApp, nullptr, this, nullptr);
  for (QTimer *timer : {&wishes_, &flush_, &learn_}) timer->stop();
  windows_.clear();
}

// ---- The screen

void Desk::watchScreens() {
  if (watched_) disconnect(watched_, nullptr, this, nullptr);
  QScreen *const screen = QGuiApplication::primaryScreen();
  watched_ = screen;
  if (!screen) return;
  const auto changed = [this] { learn_.start(0); }; // once for all changes that come together
  connect(screen, &QScreen::geometryChanged, this, changed);
  connect(screen, &QScreen::availableGeometryChanged, this, changed);
  connect(screen, &QScreen::virtualGeometryChanged, this, changed);
  connect(screen, &QScreen::logicalDotsPerInchChanged, this, changed);
  changed();
}

void Desk::learnScreen() {
  const QScreen *const screen = QGuiApplication::primaryScreen();
  if (!screen) return;
  const QRect whole = toProgram(screen->geometry());
  ScreenInfo info{};
  info.size = {whole.width(), whole.height()};
  info.all = fromQt(toProgram(screen->virtualGeometry()));
  info.workArea = fromQt(toProgram(screen->availableGeometry()));
  info.pointer = toProgram(QPointF(QCursor::pos()));
  info.pixelsPerInch = 96;
  if (usesRealPixels()) {
    const char *const factor = std::getenv("QT_SCALE_FACTOR");
    const double wanted = factor ? std::atof(factor) : 0;
    info.pixelsPerInch = static_cast<int>(
        std::lround(screen->logicalDotsPerInch() * screen->devicePixelRatio() * (wanted > 0 ? wanted : 1)));
  }
  info.placesWindows = placesWindows();
  const std::lock_guard lock(infoMutex_);
  info_ = info;
}

ScreenInfo Desk::info() {
  const std::lock_guard lock(infoMutex_);
  return info_;
}

QRect Desk::toQt(const QRect &program) const {
  if (ratio_ == 1) return program;
  return {static_cast<int>(std::lround(program.x() / ratio_)), static_cast<int>(std::lround(program.y() / ratio_)),
          units(program.width(), ratio_), units(program.height(), ratio_)};
}

// Whole units. If a pixel may lie in two units, one more on each side.
QRegion Desk::toQt(const QRegion &program) const {
  const double scale = QGuiApplication::primaryScreen()->devicePixelRatio();
  const int more = scale == std::floor(scale) && ratio_ == std::floor(ratio_) ? 0 : 1;
  if (ratio_ == 1 && more == 0) return program;
  QRegion region;
  for (const QRect &rect : program) {
    const QPoint from(whole(rect.x() / ratio_) - more, whole(rect.y() / ratio_) - more);
    region |= QRect(from, QPoint(units(rect.x() + rect.width(), ratio_) - 1 + more,
                                 units(rect.y() + rect.height(), ratio_) - 1 + more));
  }
  return region;
}

QRect Desk::toProgram(const QRect &qt) const {
  if (ratio_ == 1) return qt;
  const auto pixels = [this](int value) { return static_cast<int>(std::lround(value * ratio_)); };
  return {pixels(qt.x()), pixels(qt.y()), pixels(qt.width()), pixels(qt.height())};
}

POINT Desk::toProgram(const QPointF &qt) const { return {whole(qt.x() * ratio_), whole(qt.y() * ratio_)}; }

// A window manager names its own window in a property of the root window. It may come or go while the program runs.
bool Desk::isUnmanaged() {
  const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11) return false;
  xcb_connection_t *const connection = x11->connection();
  static const char name[] = "_NET_SUPPORTING_WM_CHECK";
  xcb_intern_atom_reply_t *const atom =
      xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 1, sizeof name - 1, name), nullptr);
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  bool managed = false;
  if (atom && atom->atom != XCB_ATOM_NONE) {
    xcb_get_property_reply_t *const property = xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, root, atom->atom, XCB_ATOM_WINDOW, 0, 1), nullptr);
    managed = property && xcb_get_property_value_length(property) > 0;
    std::free(property);
  }
  std::free(atom);
  return !managed;
}

// ---- Windows

ShownWindow *Desk::find(HWND window) {
  const auto at = windows_.find(window);
  return at == windows_.end() ? nullptr : at->second.get();
}

ShownWindow &Desk::findOrMake(HWND window) {
  std::unique_ptr<ShownWindow> &shown = windows_[window];
  if (!shown) {
    shown = std::make_unique<ShownWindow>(window, *this);
    shown->setCursor(cursorOf(pointer_));
  }
  return *shown;
}

void Desk::remove(HWND window) {
  const auto at = windows_.find(window);
  if (at == windows_.end()) return;
  hide(*at->second);
  at->second.release()->deleteLater(); // one of its events may be in progress
  windows_.erase(at);
}

void Desk::hide(ShownWindow &window) {
  window.vanish();
  active_.noAnswer(window.id());
}

void Desk::linkOwned() {
  for (const auto &[handle, window] : windows_) {
    QWindow *const owner = window->owner() ? find(window->owner()) : nullptr;
    if (window->transientParent() != owner) window->setTransientParent(owner);
  }
}

void Desk::flushSoon() { flush_.start(kUnflushed); }

// ---- Activation

Wish<HWND>::Rule Desk::activation() {
  return {kActivationPause, true,
          [this](HWND window) {
            ShownWindow *const shown = find(window);
            if (!shown || !shown->isVisible()) return false;
            shown->requestActivate();
            return true;
          },
          [](HWND window, Serial serial) {
            above::take(Activated{window, serial});
          },
          [this] { wait(); }};
}

void Desk::activate(HWND window, Serial serial) { active_.want(window, serial); }

void Desk::focusChanged(QWindow *window) {
  if (window && !dynamic_cast<ShownWindow *>(window)) return; // a dialog of Qt's own
  const auto *const shown = static_cast<ShownWindow *>(window);
  active_.told(shown ? shown->id() : nullptr);
}

void Desk::pressed() {
  active_.pressed();
  for (const auto &[handle, window] : windows_) window->pressed();
}

// ---- Wishes

void Desk::wait() {
  wishes_.start(0); // times are checked after the wish has changed
}

void Desk::late() {
  const Clock::time_point now = Clock::now();
  active_.late(now);
  std::optional<Clock::time_point> next = active_.due();
  for (const auto &[handle, window] : windows_)
    if (const auto due = window->late(now); due && (!next || *due < *next)) next = due;
  if (!next) return;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - now);
  wishes_.start(std::max(left, std::chrono::milliseconds(1)));
}

// ---- The pointer

void Desk::setPointer(const Pointer &pointer) {
  pointer_ = pointer;
  const QCursor cursor = cursorOf(pointer);
  for (const auto &[handle, window] : windows_) window->setCursor(cursor);
}

void Desk::movePointer(POINT to, Serial serial) {
  pointerSerial_ = serial;
  if (!placesWindows()) return;
  echoes_.push_back({to, Clock::now() + kEcho});
  QCursor::setPos(static_cast<int>(std::lround(to.x / ratio_)), static_cast<int>(std::lround(to.y / ratio_)));
}

void Desk::moved(HWND window, POINT at) {
  const Clock::time_point now = Clock::now();
  while (!echoes_.empty() && echoes_.front().until < now) echoes_.pop_front();
  const auto echo = std::find_if(echoes_.begin(), echoes_.end(),
                                 [&](const Echo &one) { return one.at.x == at.x && one.at.y == at.y; });
  if (echo != echoes_.end()) {
    echoes_.erase(echoes_.begin(), echo + 1);
    if (!echoes_.empty()) return;
    // the program may not know yet that the pointer is over this window
  }
  above::take(PointerMoved{window, at, pointerSerial_});
}

void Desk::findPointer() {
  if (placesWindows()) above::take(PointerFound{toProgram(QPointF(QCursor::pos())), pointerSerial_});
}

// The pointer has left a window. If the desktop doesn't tell its new place, it has left over the nearest side.
void Desk::left(HWND window, const QPointF &last, const QSize &size) {
  ShownWindow *const shown = find(window);
  if (!shown) return;
  if (placesWindows()) return above::take(PointerLeft{window, toProgram(QPointF(QCursor::pos()))});
  const double toLeft = last.x(), toTop = last.y(), toRight = size.width() - last.x(),
               toBottom = size.height() - last.y();
  const double nearest = std::min({toLeft, toTop, toRight, toBottom});
  QPointF outside = last;
  if (nearest == toLeft)
    outside.setX(-1);
  else if (nearest == toRight)
    outside.setX(size.width());
  else if (nearest == toTop)
    outside.setY(-1);
  else
    outside.setY(size.height());
  above::take(PointerLeft{window, shown->programPoint(outside, outside)});
}

} // namespace platform
