#include "platform/desktop/screen/qt/shown.h"

#include "platform/desktop/screen/above.h"

#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include <cmath>
#include <utility>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto kPlacePause = 200ms;
constexpr auto kStatePause = 150ms;
constexpr auto kVanishing = 100ms;
constexpr auto kTogether = 8ms; // the longest time between related reports of state and place

bool is(DWORD bits, DWORD wanted) { return (bits & wanted) == wanted; }

Qt::WindowType typeOf(const Look &look) {
  const bool isPlainPopup = is(look.style, WS_POPUP) && !is(look.style, WS_CAPTION);
  if (isPlainPopup) return look.exStyle & WS_EX_TOOLWINDOW ? Qt::ToolTip : Qt::Tool;
  return look.owner ? Qt::Dialog : Qt::Window; // Qt doesn't keep plain windows above their owner
}

Qt::WindowFlags flagsOf(const Look &look) {
  Qt::WindowFlags flags = typeOf(look);
  const bool caption = is(look.style, WS_CAPTION);
  if (!caption && !is(look.style, WS_THICKFRAME)) flags |= Qt::FramelessWindowHint;
  if (look.exStyle & WS_EX_TOPMOST) flags |= Qt::WindowStaysOnTopHint;
  if (look.exStyle & WS_EX_NOACTIVATE) flags |= Qt::WindowDoesNotAcceptFocus;
  if (look.passesInput) flags |= Qt::WindowTransparentForInput;
  if (caption) {
    flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (is(look.style, WS_SYSMENU)) flags |= Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    if (look.style & WS_MINIMIZEBOX) flags |= Qt::WindowMinimizeButtonHint;
    if (look.style & WS_MAXIMIZEBOX) flags |= Qt::WindowMaximizeButtonHint;
  }
  return flags;
}

bool isMaximized(ShowState state) { return state == ShowState::maximized; }

bool isMinimized(ShowState state) {
  return state == ShowState::minimized || state == ShowState::minimizedFromMaximized;
}

Qt::WindowStates qtStates(ShowState state) {
  Qt::WindowStates states;
  if (isMinimized(state)) states |= Qt::WindowMinimized;
  if (state == ShowState::maximized || state == ShowState::minimizedFromMaximized) states |= Qt::WindowMaximized;
  return states;
}

ShowState stateOf(Qt::WindowStates states) {
  const bool large = states & (Qt::WindowMaximized | Qt::WindowFullScreen);
  if (states & Qt::WindowMinimized) return large ? ShowState::minimizedFromMaximized : ShowState::minimized;
  return large ? ShowState::maximized : ShowState::normal;
}

QIcon iconOf(const Look &look) {
  QIcon icon;
  if (look.icons)
    for (const QImage &image : *look.icons) icon.addPixmap(QPixmap::fromImage(image));
  return icon;
}

} // namespace

ShownWindow::ShownWindow(HWND window, Desk &desk)
    : id_(window), desk_(desk), place_(placing(), QRect()), state_(stating(), ShowState::normal), store_(this) {
  setSurfaceType(QSurface::RasterSurface);
  tell_.setSingleShot(true);
  connect(&tell_, &QTimer::timeout, this, [this] { tellPlace(); });
  vanished_.setSingleShot(true);
  connect(&vanished_, &QTimer::timeout, this, [this] {
    if (appears_) appear();
  });
}

ShownWindow::~ShownWindow() = default;

// ---- The program's wishes

void ShownWindow::setLook(const Look &look) {
  const bool first = !std::exchange(looks_, true);
  if (first || flagsOf(look) != flagsOf(look_)) setFlags(flagsOf(look));
  if (first || look.title != look_.title) setTitle(QString::fromStdString(look.title));
  if (look.icons != look_.icons) setIcon(iconOf(look));
  const bool moves = look.owner != look_.owner;
  if (look.alpha != look_.alpha && desk_.placesWindows()) setOpacity(look.alpha / 255.0); // Wayland has no opacity
  look_ = look;
  if (moves) desk_.linkOwned();
}

void ShownWindow::place(const Stand &stand, Serial serial) {
  stand_ = stand;
  origin_ = stand.client.topLeft();
  deed_.reset();
  const QRect wanted = desk_.toQt(stand.client);
  if (!isVisible()) {
    place_.settle(wanted, serial);
    return;
  }
  if (std::exchange(refused_, false)) return keepDesktopsSize(wanted, serial);
  place_.want(wanted, serial);
  // the desktop decides the place of a maximized window, and has done so
  if (isMaximized(state_.known()) && state_.isQuiet()) takeDesktopsPlace();
}

void ShownWindow::setState(ShowState state, Serial serial) {
  refused_ = false;
  if (isVisible() || state_.wanted() != state)
    state_.want(state, serial);
  else
    state_.settle(state, serial);
}

void ShownWindow::appear() {
  if (isVisible()) return;
  appears_ = vanished_.isActive();
  if (appears_) return;
  desk_.linkOwned();
  const bool unmanaged = desk_.isUnmanaged();
  limitSize(state_.wanted() != ShowState::normal && !unmanaged);
  if (unmanaged || !desk_.placesWindows() || state_.wanted() == ShowState::normal) stand();
  if (!unmanaged) setWindowStates(qtStates(state_.wanted()));
  setVisible(!unmanaged || !isMinimized(state_.wanted()));
  if (type() != Qt::ToolTip) desk_.appeared(); // no desktop activates a tip
  if (unmanaged) return;
  if (state_.wanted() != ShowState::normal) return state_.insist();
  place_.insist();
}

// A window manager that still takes the window away would miss a wish to show it.
void ShownWindow::vanish() {
  appears_ = false;
  if (!isVisible()) return;
  setVisible(false);
  const bool managed = desk_.placesWindows() && !desk_.isUnmanaged() && type() != Qt::ToolTip;
  if (managed) vanished_.start(kVanishing);
}

Wish<QRect>::Rule ShownWindow::placing() {
  return {kPlacePause, false, [this](const QRect &) { return askPlace(); },
          [this](const QRect &place, Serial serial) {
            deed_ = {place, serial};
            tell_.start(kTogether);
          },
          [this] { desk_.wait(); }};
}

Wish<ShowState>::Rule ShownWindow::stating() {
  return {kStatePause, true, [this](ShowState state) { return askState(state); },
          [this](ShowState state, Serial serial) {
            above::take(StateChanged{id_, state, serial});
            if (deed_) tellPlace();
          },
          [this] { desk_.wait(); }};
}

// Whether the window is in the normal state, in which the program decides its place.
bool ShownWindow::isFree() const {
  return state_.wanted() == ShowState::normal && state_.known() == ShowState::normal && !state_.isAsked();
}

bool ShownWindow::askPlace() {
  if (!isFree() && !desk_.isUnmanaged()) return true; // asked again in the normal state
  limitSize(false);
  stand();
  return true;
}

// Sets the limits of the window's size. unlimited: lets the window take the size that the desktop has for it.
void ShownWindow::limitSize(bool unlimited) {
  constexpr int kUnlimited = (1 << 24) - 1;
  const bool sizable = look_.style & WS_THICKFRAME;
  const QSize exact = place_.wanted().size();
  const QSize smallest = unlimited ? QSize(0, 0) : sizable ? desk_.toQt({{}, stand_.smallest}).size() : exact;
  const QSize largest = unlimited ? QSize(kUnlimited, kUnlimited)
                        : sizable ? desk_.toQt({{}, stand_.largest}).size()
                                  : exact;
  if (smallest != minimumSize()) setMinimumSize(smallest);
  if (largest != maximumSize()) setMaximumSize(largest);
}

// Asks for a state. Without a window manager the state is set at once.
bool ShownWindow::askState(ShowState state) {
  geometrySince_ = false;
  if (desk_.isUnmanaged()) {
    state_.settle(state);
    setVisible(!isMinimized(state));
    if (!isMinimized(state)) setGeometry(place_.wanted());
    return true;
  }
  if (state != ShowState::normal) limitSize(true);
  setWindowStates(qtStates(state));
  // a Wayland compositor never reports a minimized window
  if (!desk_.placesWindows() && isMinimized(state)) state_.settle(state);
  return true;
}

// Moves the window to its wanted place. A Wayland compositor places tips only when they are shown, so a tip is shown
// again.
void ShownWindow::stand() {
  const QRect place = relativeToOwner(place_.wanted());
  const bool isFixed = !desk_.placesWindows() && transientParent() && type() == Qt::ToolTip;
  const bool again = isVisible() && isFixed && place.topLeft() != stoodAt_;
  stoodAt_ = place.topLeft();
  if (again) setVisible(false);
  setGeometry(place);
  if (again) setVisible(true);
}

// The place of an owned window, relative to its owner if the desktop doesn't tell places.
QRect ShownWindow::relativeToOwner(const QRect &qt) const {
  const ShownWindow *const owner = look_.owner ? desk_.find(look_.owner) : nullptr;
  if (desk_.placesWindows() || !owner) return qt;
  return qt.translated(owner->geometry().topLeft() - desk_.toQt({owner->origin_, QSize(1, 1)}).topLeft());
}

void ShownWindow::pressed() {
  place_.pressed();
  state_.pressed();
}

std::optional<Clock::time_point> ShownWindow::late(Clock::time_point now) {
  const bool large = isMaximized(state_.wanted());
  state_.late(now);
  if (large && !desk_.placesWindows()) refused_ = isFree();
  if (const auto due = state_.due()) place_.hold(*due + kPlacePause);
  if (isVisible() && !isMinimized(state_.known())) place_.learn(placeNow());
  place_.late(now);
  const auto state = state_.due(), place = place_.due();
  return state && place ? std::min(*state, *place) : state ? state : place;
}

// ---- Reports of the desktop

bool ShownWindow::event(QEvent *event) {
  switch (event->type()) {
  case QEvent::Close:
    event->ignore();
    above::take(CloseAsked{id_});
    return true;
  case QEvent::Expose: showAll(); return true;
  case QEvent::Move:
  case QEvent::Resize: geometryTold(); break;
  case QEvent::WindowStateChange: stateTold(stateOf(windowStates())); break;
  case QEvent::FocusIn:
    // on Wayland the focus means that a minimized window is restored
    if (!desk_.placesWindows() && isMinimized(state_.known()))
      stateTold(state_.known() == ShowState::minimized ? ShowState::normal : ShowState::maximized);
    break;
  default:
    if (reportInput(*this, desk_, *event) || reportDrop(*this, *event)) return true;
  }
  return QWindow::event(event);
}

// The current place. If the desktop doesn't tell places, the program's place counts.
QRect ShownWindow::placeNow() const {
  QRect now = geometry();
  if (!desk_.placesWindows()) now.moveTopLeft(place_.wanted().topLeft());
  return now;
}

void ShownWindow::geometryTold() {
  if (!isVisible() || isMinimized(state_.known())) return;
  geometrySince_ = true;
  place_.told(placeNow());
  takeDesktopsPlace();
}

void ShownWindow::stateTold(ShowState state) {
  if (!isVisible() && desk_.placesWindows()) return; // a window that is taken away loses its state on the desktop
  const ShowState before = state_.known();
  state_.told(state);
  takeDesktopsPlace();
  if (before != state && isFree() && geometry() != relativeToOwner(place_.wanted()) && place_.isAsked()) askPlace();
}

// Takes over the place that the desktop gives a maximized window.
void ShownWindow::takeDesktopsPlace() {
  const bool large = isMaximized(state_.known()) && isMaximized(state_.wanted());
  if (!large || !geometrySince_ || place_.known() == place_.wanted()) return;
  deed_ = {place_.known(), place_.serial()};
  place_.settle(place_.known());
  tell_.start(kTogether);
}

// Keeps the size that a Wayland compositor gave the window instead of maximizing it, such as half the screen.
void ShownWindow::keepDesktopsSize(const QRect &wanted, Serial serial) {
  place_.settle({wanted.topLeft(), geometry().size()}, serial);
  deed_ = {place_.known(), serial};
  tell_.start(kTogether);
}

void ShownWindow::tellPlace() {
  tell_.stop();
  if (!deed_) return;
  const auto [place, serial] = *std::exchange(deed_, std::nullopt);
  const QRect client = desk_.toProgram(place);
  origin_ = client.topLeft();
  above::take(Placed{id_, client, serial});
}

// A point as the program sees it. It differs while the desktop and the program disagree about the window's place.
POINT ShownWindow::programPoint(const QPointF &local, const QPointF &global) const {
  const bool disagree = !place_.isAsked() && place_.known() != place_.wanted();
  if (desk_.placesWindows() && !disagree) return desk_.toProgram(global);
  const POINT inside = desk_.toProgram(local);
  return {origin_.x() + inside.x, origin_.y() + inside.y};
}

// ---- Pixels

// Brings a part of the picture to the screen. The picture isn't locked during beginPaint(), which may listen to the
// desktop in a Wayland session.
void ShownWindow::show(const QRegion &changed, bool all) {
  const QRect window(QPoint(), size());
  const QRegion part = all ? QRegion(window) : desk_.toQt(changed) & window;
  if (part.isEmpty()) return;
  store_.beginPaint(part);
  picture_->read([&](const QImage &image) { paint(image, changed, part, all); });
  store_.endPaint();
  store_.flush(part);
}

// Copies a part of the image, or all of it, to the backing store. Beyond the image the ground is filled.
void ShownWindow::paint(const QImage &image, const QRegion &changed, const QRegion &part, bool all) {
  QPaintDevice &device = *store_.paintDevice();
  auto *const target = dynamic_cast<QImage *>(&device);
  const bool alike = target && target->depth() == 32 && target->devicePixelRatio() == desk_.ratio();
  if (alike) {
    const QRect both = target->rect() & image.rect();
    for (const QRect &rect : all ? QRegion(both) : changed &both) copyPixels(image, *target, rect);
  }
  if (alike && (!all || image.rect().contains(target->rect()))) return;
  QPainter painter(&device);
  const QRect taken(QPoint(), QSizeF(image.size() / desk_.ratio()).toSize());
  const QRegion rest = all ? part - taken : QRegion();
  for (const QRect &rect : rest) painter.fillRect(rect, QColor(look_.ground));
  if (alike) return;
  painter.setClipRegion(part);
  const double ratio = device.devicePixelRatioF();
  painter.setRenderHint(QPainter::SmoothPixmapTransform, ratio != std::floor(ratio));
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.drawImage(QRectF(QPointF(), QSizeF(image.size()) / desk_.ratio()), image);
}

void ShownWindow::flush() {
  if (!picture_ || !isExposed()) return; // Expose shows the whole picture
  if (store_.size() != size()) return showAll();
  show(picture_->takeChanged(), false);
}

void ShownWindow::showAll() {
  if (!picture_ || !isExposed()) return;
  if (store_.size() != size()) store_.resize(size());
  picture_->takeChanged();
  show({}, true);
}

} // namespace platform
