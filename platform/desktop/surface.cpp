#include "platform/desktop/surface.h"

#include "platform/desktop/desktop.h"
#include "platform/desktop/focus.h"
#include "platform/desktop/frame.h"
#include "platform/desktop/keys.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/placing.h"
#include "platform/kernel/codepage.h"
#include "platform/kernel/paths.h"

#include <QBackingStore>
#include <QExposeEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QWindow>

#include <algorithm>
#include <cstring>
#include <set>

namespace platform {

namespace {

std::set<Surface *> &unflushed() {
  static auto *all = new std::set<Surface *>;
  return *all;
}

QRect clientOnScreen(const Window &window) { return toQt(window.client); }

Qt::WindowFlags flagsFor(const Window &window) {
  Qt::WindowFlags flags = Qt::Window;
  const bool caption = window.is(WS_CAPTION);
  if (!caption && !window.is(WS_THICKFRAME)) flags |= Qt::FramelessWindowHint;
  if (window.is(WS_POPUP) && !caption) flags |= window.exStyle & WS_EX_TOOLWINDOW ? Qt::ToolTip : Qt::Tool;
  if (window.exStyle & WS_EX_TOPMOST) flags |= Qt::WindowStaysOnTopHint;
  if (window.exStyle & WS_EX_NOACTIVATE) flags |= Qt::WindowDoesNotAcceptFocus;
  if (caption) {
    flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (window.is(WS_SYSMENU)) flags |= Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    if (window.style & WS_MINIMIZEBOX) flags |= Qt::WindowMinimizeButtonHint;
    if (window.style & WS_MAXIMIZEBOX) flags |= Qt::WindowMaximizeButtonHint;
  }
  return flags;
}

} // namespace

// The Qt window of a surface. What the user and the window manager do with it becomes input and messages.
class DesktopWindow : public QWindow {
  using Clock = std::chrono::steady_clock;

 public:
  explicit DesktopWindow(platform::Window &window) : window_(&window), store_(this) {
    setSurfaceType(QSurface::RasterSurface);
    setFlags(flagsFor(window));
  }

  void orphan() { window_ = nullptr; }

  // The geometry that the application wants. The window manager answers some time later, perhaps with another.
  void place(const QRect &client) {
    wanted_ = client;
    waitUntil_ = Clock::now() + std::chrono::milliseconds(500);
    limitSize();
    setGeometry(client);
  }

  void flush(const QImage &image, const QRegion &dirty) {
    if (!isExposed()) return;
    const QRegion part = dirty & QRect(QPoint(0, 0), size());
    if (part.isEmpty()) return;
    if (store_.size() != size()) store_.resize(size());
    store_.beginPaint(part);
    {
      QPainter painter(store_.paintDevice());
      painter.setCompositionMode(QPainter::CompositionMode_Source);
      for (const QRect &rect : part) painter.drawImage(rect.topLeft(), image, rect);
    }
    store_.endPaint();
    store_.flush(part);
  }

 protected:
  bool event(QEvent *event) override {
    const DesktopLock lock;
    const WindowRef window = refOf(window_);
    if (!window) return QWindow::event(event);
    switch (event->type()) {
    case QEvent::Close:
      event->ignore();
      if (!window->is(WS_DISABLED)) post(*window->queue, messageFor(window->handle, WM_SYSCOMMAND, SC_CLOSE, 0));
      return true;
    case QEvent::FocusIn: desktopActivated(window); break;
    case QEvent::FocusOut:
      if (!QGuiApplication::focusWindow()) desktopActivated(nullptr);
      break;
    case QEvent::Expose: exposed(*window); break;
    case QEvent::Move:
    case QEvent::Resize: moved(window); break;
    case QEvent::WindowStateChange: stateChanged(window); break;
    case QEvent::Leave: leaveInput(*window); break;
    default:
      if (userInput(*window, *event)) return true;
    }
    return QWindow::event(event);
  }

 private:
  void limitSize() {
    const WindowRef window = refOf(window_);
    if (!window || !window->is(WS_THICKFRAME)) {
      setMinimumSize(wanted_.size());
      setMaximumSize(wanted_.size());
      return;
    }
    const MINMAXINFO limits = sizeLimits(window);
    const Frame frame = frameOf(window->style, window->exStyle);
    const int across = frame.left + frame.right, down = frame.top + frame.bottom;
    setMinimumSize(QSize(std::max(1, limits.ptMinTrackSize.x - across), std::max(1, limits.ptMinTrackSize.y - down)));
    setMaximumSize(QSize(std::max(1, limits.ptMaxTrackSize.x - across), std::max(1, limits.ptMaxTrackSize.y - down)));
  }

  void exposed(platform::Window &window) {
    if (isExposed()) flush(window.surface->image(), QRect(QPoint(0, 0), size()));
  }

  // The window stands somewhere else than before.
  void moved(const WindowRef &window) {
    if (!window->is(WS_VISIBLE) || window->is(WS_MINIMIZE)) return;
    const QRect now = geometry();
    if (now == clientOnScreen(*window)) return;
    if (now == wanted_)
      waitUntil_ = {};
    else if (Clock::now() < waitUntil_)
      return; // an answer to an earlier wish
    wanted_ = now;
    const Frame frame = frameOf(window->style, window->exStyle);
    WINDOWPOS position = {window->handle,
                          nullptr,
                          now.x() - frame.left,
                          now.y() - frame.top,
                          now.width() + frame.left + frame.right,
                          now.height() + frame.top + frame.bottom,
                          SWP_NOZORDER | SWP_NOACTIVATE};
    setWindowPos(window, position);
  }

  void stateChanged(const WindowRef &window) {
    const Qt::WindowStates states = windowStates();
    if (states & Qt::WindowMinimized) {
      if (!window->is(WS_MINIMIZE)) post(*window->queue, messageFor(window->handle, WM_SYSCOMMAND, SC_MINIMIZE, 0));
    } else if (window->is(WS_MINIMIZE)) {
      post(*window->queue, messageFor(window->handle, WM_SYSCOMMAND, SC_RESTORE, 0));
    } else if (bool(states & Qt::WindowMaximized) != window->is(WS_MAXIMIZE)) {
      const UINT command = states & Qt::WindowMaximized ? SC_MAXIMIZE : SC_RESTORE;
      post(*window->queue, messageFor(window->handle, WM_SYSCOMMAND, command, 0));
    }
  }

  platform::Window *window_;
  QBackingStore store_;
  QRect wanted_;
  Clock::time_point waitUntil_;
};

Surface::Surface(Window &window) : window_(&window) {}

Surface::~Surface() { unflushed().erase(this); }

QImage &Surface::image() {
  if (!window_) return image_;
  const QSize size(std::clamp<int>(window_->client.right - window_->client.left, 0, kLargest),
                   std::clamp<int>(window_->client.bottom - window_->client.top, 0, kLargest));
  if (image_.size() == size) return image_;
  QImage fresh(size, QImage::Format_RGB32);
  fresh.fill(Qt::black);
  const int rows = std::min(fresh.height(), image_.height());
  const size_t bytes = sizeof(QRgb) * static_cast<size_t>(std::min(fresh.width(), image_.width()));
  for (int y = 0; y < rows; ++y) std::memcpy(fresh.scanLine(y), image_.constScanLine(y), bytes);
  image_ = std::move(fresh);
  return image_;
}

void Surface::drawn(const QRegion &region) {
  if (!shown_) return;
  dirty_ |= region;
  unflushed().insert(this);
}

// Much may be drawn before it is shown, so the shape of it all is kept simple.
void Surface::drawn(const QRect &rect) {
  constexpr int kMostParts = 32;
  if (!shown_ || rect.isEmpty()) return;
  dirty_ += rect;
  if (dirty_.rectCount() > kMostParts) dirty_ = dirty_.boundingRect();
  unflushed().insert(this);
}

void Surface::copy(const QRegion &source, int dx, int dy) {
  QImage &pixels = image();
  const QRegion from = source & pixels.rect() & pixels.rect().translated(-dx, -dy);
  // in the order in which no rectangle is overwritten before it is read
  std::vector<QRect> parts(from.begin(), from.end());
  std::sort(parts.begin(), parts.end(), [&](const QRect &a, const QRect &b) {
    if (a.top() != b.top()) return dy > 0 ? a.top() > b.top() : a.top() < b.top();
    return dx > 0 ? a.left() > b.left() : a.left() < b.left();
  });
  for (const QRect &part : parts) {
    const size_t bytes = sizeof(QRgb) * static_cast<size_t>(part.width());
    for (int row = 0; row < part.height(); ++row) {
      const int y = dy > 0 ? part.bottom() - row : part.top() + row;
      auto *to = reinterpret_cast<QRgb *>(pixels.scanLine(y + dy)) + part.left() + dx;
      std::memmove(to, reinterpret_cast<const QRgb *>(pixels.constScanLine(y)) + part.left(), bytes);
    }
  }
  drawn(from.translated(dx, dy));
}

void Surface::show() {
  if (!hasDisplay() || !window_ || !isDesktopThread(*window_->queue)) return;
  if (!shown_) {
    shown_ = std::make_unique<DesktopWindow>(*window_);
    if (window_->owner && rootOf(*window_->owner).surface && rootOf(*window_->owner).surface->shown_)
      shown_->setTransientParent(rootOf(*window_->owner).surface->shown_.get());
    retitle();
  }
  place();
  if (window_->layeredFlags & LWA_ALPHA) shown_->setOpacity(window_->alpha / 255.0);
  if (window_->is(WS_MINIMIZE))
    shown_->showMinimized();
  else if (window_->is(WS_MAXIMIZE))
    shown_->showMaximized();
  else
    shown_->showNormal();
  drawn(QRect(0, 0, kLargest, kLargest));
}

void Surface::hide() {
  if (shown_) shown_->hide();
}

void Surface::place() {
  if (shown_ && !window_->is(WS_MINIMIZE) && shown_->geometry() != clientOnScreen(*window_))
    shown_->place(clientOnScreen(*window_));
}

void Surface::raise() {
  if (shown_) shown_->raise();
}

void Surface::activate() {
  if (shown_ && shown_->isVisible()) shown_->requestActivate();
}

void Surface::retitle() {
  if (shown_) shown_->setTitle(QString::fromStdString(utf8FromCodePage(window_->text)));
}

void Surface::restyle() {
  if (!shown_) return;
  shown_->setOpacity(window_->layeredFlags & LWA_ALPHA && window_->exStyle & WS_EX_LAYERED ? window_->alpha / 255.0
                                                                                           : 1.0);
  if (shown_->flags() != flagsFor(*window_)) shown_->setFlags(flagsFor(*window_));
}

void Surface::flush() {
  if (shown_) shown_->flush(image(), dirty_);
  dirty_ = {};
}

void Surface::orphan() {
  window_ = nullptr;
  if (!shown_) return;
  shown_->orphan();
  shown_->hide();
  shown_.release()->deleteLater(); // one of its events may be under way
}

void flushSurfaces() {
  const std::set<Surface *> due = std::move(unflushed());
  unflushed().clear();
  for (Surface *surface : due) surface->flush();
}

} // namespace platform

using namespace platform;

BOOL platformHasDisplay() { return hasDisplay(); }

BOOL platformSavePicture(HWND window, const char *file) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const WindowRef target = windowOf(window);
    if (!target || !target->surface) return FALSE;
    return target->surface->image().save(QString::fromStdString(nativePath(file)), "PNG");
  });
}
