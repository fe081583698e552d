// Tells the screen about top-level windows, and carries out what the screen reports.

#include "platform/desktop/windows/onscreen.h"

#include "platform/desktop/drawing/icons.h"
#include "platform/desktop/drawing/objects.h"
#include "platform/desktop/drawing/surface.h"
#include "platform/desktop/messages/above.h"
#include "platform/desktop/messages/input.h"
#include "platform/desktop/windows/drops.h"
#include "platform/desktop/windows/focus.h"
#include "platform/desktop/windows/frame.h"
#include "platform/desktop/windows/placing.h"
#include "platform/desktop/windows/update.h"
#include "platform/kernel/codepage.h"

#include <algorithm>

namespace platform {

namespace {

Serial activationSerial = 0;

RECT findSeenArea() {
  const ScreenInfo info = theScreen().info();
  constexpr LONG kFar = 1 << 28;
  return info.placesWindows ? info.all : RECT{-kFar, -kFar, kFar, kFar};
}

RECT &keptSeenArea() {
  static RECT area = findSeenArea();
  return area;
}

bool isShown(const Window &window) { return window.surface && theScreen().isSeen(); }

ShowState stateOf(const Window &window) {
  if (window.is(WS_MINIMIZE)) return window.restoreMaximized ? ShowState::minimizedFromMaximized : ShowState::minimized;
  return window.is(WS_MAXIMIZE) ? ShowState::maximized : ShowState::normal;
}

// The desktop shows a window's icon in several sizes. A window with only the general icon gets none: the desktop finds
// one then.
void settleIcons(Window &window) {
  constexpr int kSizes[] = {16, 24, 32, 48, 64, 128};
  constexpr int kSmall = 24;
  const HICON general = reinterpret_cast<HICON>(kSystemIcons + reinterpret_cast<uintptr_t>(IDI_APPLICATION));
  const auto own = [general](HICON icon) { return icon == general ? nullptr : icon; };
  HICON big = own(window.icons[ICON_BIG]), small = own(window.icons[ICON_SMALL]);
  if (!big) big = small ? small : own(window.windowClass->icon);
  if (!small) small = big;
  OnScreen &known = window.onScreen;
  if (known.iconsFrom == std::pair(big, small)) return;
  known.iconsFrom = {big, small};
  known.icons = nullptr;
  if (!big) return;
  std::vector<QImage> images;
  for (const int size : kSizes) images.push_back(iconImage(size <= kSmall ? small : big, size));
  known.icons = std::make_shared<const std::vector<QImage>>(std::move(images));
}

Look lookOf(Window &window) {
  settleIcons(window);
  Look look;
  look.style = window.style;
  look.exStyle = window.exStyle;
  look.title = utf8FromCodePage(window.text);
  look.owner = window.owner ? rootOf(*window.owner).handle : nullptr;
  const bool layered = window.exStyle & WS_EX_LAYERED && window.layeredFlags & LWA_ALPHA;
  look.alpha = layered ? window.alpha : 255;
  look.passesInput = window.passesInput || (window.exStyle & WS_EX_LAYERED && window.exStyle & WS_EX_TRANSPARENT);
  look.takesFiles = takesFiles(window);
  const auto ground = brushOf(window.windowClass->background);
  if (ground && ground->style == BS_SOLID) look.ground = pixelOf(ground->color);
  look.icons = window.onScreen.icons;
  return look;
}

QSize clientSize(const POINT &whole, const Frame &frame) {
  return {std::max(1, whole.x - frame.left - frame.right), std::max(1, whole.y - frame.top - frame.bottom)};
}

Stand standOf(const Window &window) {
  const Frame frame = frameOf(window.style, window.exStyle);
  return {toQt(contentOf(window)), clientSize(window.limits.ptMinTrackSize, frame),
          clientSize(window.limits.ptMaxTrackSize, frame)};
}

} // namespace

void showOnScreen(Window &window) {
  if (!isShown(window)) return;
  OnScreen &known = window.onScreen;
  known.open = true;
  known.topmost = window.exStyle & WS_EX_TOPMOST;
  known.client = toQt(contentOf(window));
  known.state = stateOf(window);
  ++known.placeSerial, ++known.stateSerial;
  theScreen().show(window.handle, lookOf(window), standOf(window), known.placeSerial, known.state, known.stateSerial,
                   window.surface->picture());
}

void hideOnScreen(Window &window) {
  if (!window.onScreen.open) return;
  ++window.onScreen.placeSerial, ++window.onScreen.stateSerial; // the desktop's later reports are about the time before
  theScreen().hide(window.handle);
  goneUnderPointer(window.handle);
}

void placeOnScreen(Window &window) {
  OnScreen &known = window.onScreen;
  if (!known.open) return;
  if (stateOf(window) != known.state) {
    known.state = stateOf(window);
    theScreen().setState(window.handle, known.state, ++known.stateSerial);
  }
  const QRect client = toQt(contentOf(window));
  if (window.is(WS_MINIMIZE) || client == known.client) return;
  known.client = client;
  theScreen().place(window.handle, standOf(window), ++known.placeSerial);
}

void raiseOnScreen(Window &window) {
  if (window.onScreen.open) theScreen().raise(window.handle);
}

void lowerOnScreen(Window &window) {
  if (window.onScreen.open) theScreen().lower(window.handle);
}

void bandsOnScreen() {
  for (Window *window : desktopWindow().children) {
    const bool topmost = window->exStyle & WS_EX_TOPMOST;
    if (window->onScreen.open && window->onScreen.topmost != topmost) lookOnScreen(*window);
    window->onScreen.topmost = topmost;
  }
}

void lookOnScreen(Window &window) {
  if (window.onScreen.open) theScreen().setLook(window.handle, lookOf(window));
}

void closeOnScreen(Window &window) {
  if (window.onScreen.open) theScreen().close(window.handle);
  window.onScreen.open = false;
  goneUnderPointer(window.handle);
}

void activateOnScreen(Window *window) {
  ++activationSerial;
  if (hasScreen()) theScreen().activate(handleOf(window), activationSerial);
}

Serial activationNow() { return activationSerial; }

const RECT &seenArea() { return keptSeenArea(); }

// ---- The user's deeds, on the threads of their windows

namespace {

void carryOutDeed(const Placed &placed) {
  const WindowRef window = windowOrNone(placed.window);
  if (!window || placed.serial != window->onScreen.placeSerial || !window->is(WS_VISIBLE) || window->is(WS_MINIMIZE))
    return;
  window->onScreen.client = placed.client; // the screen needn't be told again
  if (placed.client == toQt(contentOf(*window))) return;
  const Frame frame = frameOf(window->style, window->exStyle);
  const QRect whole = placed.client.adjusted(-frame.left, -frame.top, frame.right, frame.bottom);
  setWindowPos(window, {window->handle, nullptr, whole.x(), whole.y(), whole.width(), whole.height(),
                        SWP_NOZORDER | SWP_NOACTIVATE});
  if (window->alive) placeOnScreen(*window); // the program may have refused or limited the change
}

void carryOutDeed(const StateChanged &changed) {
  const WindowRef window = windowOrNone(changed.window);
  if (!window || changed.serial != window->onScreen.stateSerial || !window->is(WS_VISIBLE)) return;
  window->onScreen.state = changed.state;
  if (stateOf(*window) == changed.state) return;
  const UINT command = changed.state == ShowState::normal      ? SC_RESTORE
                       : changed.state == ShowState::maximized ? SC_MAXIMIZE
                                                               : SC_MINIMIZE;
  // a window that leaves the minimized state gets its previous state
  const bool restores = window->is(WS_MINIMIZE) && command != SC_MINIMIZE;
  send(window, WM_SYSCOMMAND, restores ? SC_RESTORE : command);
  if (window->alive) placeOnScreen(*window); // the program may have chosen another state
}

void carryOutDeed(const Activated &activated) {
  if (activated.serial == activationSerial) desktopActivated(windowOrNone(activated.window));
}

void carryOutDeed(const CloseAsked &asked) {
  const WindowRef window = windowOrNone(asked.window);
  if (window && !window->is(WS_DISABLED)) post(*window->queue, messageFor(window->handle, WM_SYSCOMMAND, SC_CLOSE, 0));
}

void carryOutDeed(const FilesDropped &dropped) { dropFiles(dropped); }

std::vector<WindowRef> ownTopLevel() {
  std::vector<WindowRef> own;
  for (const WindowRef &window : childrenOf(desktopWindow()))
    if (window->queue == currentQueue()) own.push_back(window);
  return own;
}

void carryOutDeed(const ScreenChanged &) {
  const SIZE size = theScreen().info().size;
  keptSeenArea() = findSeenArea();
  desktopWindow().rect = desktopWindow().client = {0, 0, size.cx, size.cy};
  for (const WindowRef &window : ownTopLevel())
    if (window->alive) send(window, WM_DISPLAYCHANGE, 32, lParamOf(size.cx, size.cy));
}

// As at the end of a session: windows may save their data, and then the message loops end.
void carryOutDeed(const ScreenGone &) {
  for (const WindowRef &window : ownTopLevel()) {
    if (window->alive) send(window, WM_QUERYENDSESSION);
    if (window->alive) send(window, WM_ENDSESSION, TRUE);
  }
  PostQuitMessage(EXIT_FAILURE);
}

template <typename Other> void carryOutDeed(const Other &) {} // reports about pointer and keyboard

} // namespace

void above::carryOut(const Report &deed) {
  std::visit([](const auto &one) { carryOutDeed(one); }, deed);
}

} // namespace platform
