#include "viewer.h"

#include "dialogs.h"
#include "ids.h"
#include "loader.h"
#include "notes.h"
#include "picture.h"
#include "report.h"

#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr SIZE kLargest = {16384, 16384};
constexpr double kNotch = 1.25; // zoom of the wheel
constexpr double kKey = 2;      // and of the keys

std::string titleOf(const Scene &scene) { return scene.name + " - levelview"; }

// The command of a letter with the control key.
std::optional<Command> commandOf(WPARAM key) {
  constexpr std::pair<WPARAM, Command> kLetters[] = {
      {'O', Command::open}, {'C', Command::copy}, {'S', Command::picture}, {'P', Command::print}};
  for (const auto &[letter, command] : kLetters)
    if (letter == key) return command;
  return std::nullopt;
}

bool isOnScreen(const RECT &place, const SIZE &smallest) {
  SIZE screen;
  WqSys_ScreenRes(&screen);
  const RECT whole = {0, 0, screen.cx, screen.cy};
  const POINT corner = {place.left, place.top};
  return place.right - place.left >= smallest.cx && place.bottom - place.top >= smallest.cy &&
         WqRect_IsIn(&whole, &corner);
}

// The big icon stands for the program among others, the small one in the title.
void setIcons(HWND window) {
  const std::pair<WPARAM, int> icons[] = {{ICON_BIG, SM_CXICON}, {ICON_SMALL, SM_CXSMICON}};
  for (const auto &[kind, metric] : icons) {
    const int size = GetSystemMetrics(metric);
    const HANDLE icon =
        LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(LEVELVIEW_ICON), IMAGE_ICON, size, size, LR_SHARED);
    SendMessageA(window, WM_SETICON, kind, reinterpret_cast<LPARAM>(icon));
  }
}

} // namespace

Viewer::Viewer(Scene &scene, Settings &settings)
    : scene_(scene), settings_(settings), frame_(this), bar_(&frame_.wnd, look_, *this),
      status_(&frame_.wnd, scene, look_), levels_(&frame_.wnd, scene, look_),
      overview_(&frame_.wnd, scene, look_, *this), wave_(&frame_.wnd, scene, look_, *this),
      copier_([&scene] { return reportText(measure(scene.name, scene.recording)); }) {
  WqWnd &wnd = frame_.wnd;
  WqWnd_ID(&wnd, WQ_ID_QUIT);
  WqWnd_Style(&wnd, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN);
  WqWnd_Title(&wnd, titleOf(scene).c_str());
  WqWnd_UserProc(&wnd, frameProc);
  const RECT smallest = {0, 0, look_.smallest.cx, look_.smallest.cy};
  const RECT largest = {0, 0, kLargest.cx, kLargest.cy};
  WqWnd_Min(&wnd, &smallest);
  WqWnd_Max(&wnd, &largest);
  wnd.rect = {0, 0, look_.usual.cx, look_.usual.cy};
  WqRect_Center(&wnd.rect, nullptr);
  if (isOnScreen(settings.place, look_.smallest)) wnd.rect = settings.place;
  // creation counts the right and bottom edges in
  --wnd.rect.right;
  --wnd.rect.bottom;
  placePanes();
}

// Each pane is snapped to the frame and to those made before it.
void Viewer::placePanes() {
  WqWnd &bar = *bar_.wnd(), &status = *status_.wnd(), &levels = *levels_.wnd(), &overview = *overview_.wnd(),
        &wave = *wave_.wnd();
  bar.rect = {0, 0, 0, look_.bar - 1};
  WqWnd_Ds(&bar, WQ_DS_MBB | WQ_DS_KEEP_H);
  WqWnd_SnapL(&bar, nullptr);
  WqWnd_SnapT(&bar, nullptr);
  WqWnd_SnapR(&bar, nullptr);

  status.rect = {0, 0, 0, look_.status - 1};
  WqWnd_Ds(&status, WQ_DS_KEEP_H);
  WqWnd_SnapL(&status, nullptr);
  WqWnd_SnapR(&status, nullptr);
  WqWnd_SnapB(&status, nullptr);

  levels.rect = {0, 0, look_.levels - 1, 0};
  WqWnd_Ds(&levels, WQ_DS_KEEP_W);
  WqWnd_SnapT(&levels, &bar);
  WqWnd_SnapR(&levels, nullptr);
  WqWnd_SnapB(&levels, &status);

  overview.rect = {0, 0, 0, look_.overview - 1};
  WqWnd_Ds(&overview, WQ_DS_KEEP_H);
  WqWnd_SnapL(&overview, nullptr);
  WqWnd_SnapR(&overview, &levels);
  WqWnd_SnapB(&overview, &status);

  WqWnd_SnapL(&wave, nullptr);
  WqWnd_SnapT(&wave, &bar);
  WqWnd_SnapR(&wave, &levels);
  WqWnd_SnapB(&wave, &overview);
}

bool Viewer::open() {
  if (!WqWnd_Create(&frame_.wnd)) return false;
  setIcons(frame_.wnd.hwnd);
  WqMain_Config(frame_.wnd.hwnd);
  WqTooltip_StrResInst(GetModuleHandleA(nullptr));
  for (Pane *pane : {static_cast<Pane *>(&bar_), static_cast<Pane *>(&status_), static_cast<Pane *>(&levels_),
                     static_cast<Pane *>(&overview_), static_cast<Pane *>(&wave_)})
    if (!WqWnd_Create(pane->wnd())) return false;
  bar_.build();
  DragAcceptFiles(frame_.wnd.hwnd, TRUE);
  return true;
}

// Reads the recording. Between two pieces the window answers the user, who may have another one opened.
// Result: whether the window is still there.
bool Viewer::load() {
  loading_ = true;
  Loader loader(scene_);
  for (uint32_t shown = 0; loader.step();) {
    if (scene_.percent != shown) wave_.invalidate();
    shown = scene_.percent;
    WqWnd_WaitQueEmpty();
    if (!frame_.wnd.hwnd) return false;
  }
  loading_ = false;
  levels_.measure();
  show(scene_.visible);
  return true;
}

// Opens another file in place of the one that is there, whose memory goes. One that is refused leaves that alone.
// Result: whether it was opened.
bool Viewer::replace(const std::string &file) {
  Recording opened;
  const std::string refused = opened.open(file.c_str());
  noteOpening(file, refused.empty() ? opened.foundFrames() : 0, refused);
  if (!refused.empty()) {
    warn(file + "\n\n" + refused);
    return false;
  }
  scene_.replace(opened, nameIn(file));
  settings_.lastFile = fullName(file);
  return true;
}

// Shows another file.
void Viewer::take(const std::string &file) {
  if (!replace(file)) return;
  WqWnd_Title(&frame_.wnd, titleOf(scene_).c_str());
  levels_.invalidate();
  show(scene_.visible);
  if (loading_) return;            // who reads goes on with this one
  if (!load()) PostQuitMessage(0); // the reading has taken the message that ends the loop
}

void Viewer::takeDropped(HDROP drop) {
  std::array<char, MAX_PATH> file{};
  const UINT length = DragQueryFileA(drop, 0, nullptr, 0);
  DragQueryFileA(drop, 0, file.data(), file.size());
  DragFinish(drop);
  if (length >= file.size()) return warn("The name of that file is too long.");
  take(file.data());
}

// The dialog would be in the picture that is taken after it.
void Viewer::savePicture() {
  const Picture picture(frame_.wnd.hwnd);
  const std::string file = askForPicture(settings_, scene_.name);
  if (file.empty()) return;
  if (!::savePicture(frame_.wnd.hwnd, picture, file)) return warn(file + "\n\ncannot write");
  note("saved a picture: " + file);
}

void Viewer::print() {
  if (print_) return; // while a dialog of the printer is open
  if (wqMain.printer.deviceCount == 0) WqPrinter_Init();
  print_.emplace(Print{{scene_, look_}});
  WqPrintJob job = {&frame_.wnd, drawPage, Printout::kPages};
  WqPrinter_Print(&job);
  const bool begun = std::exchange(print_->begun, false), whole = print_->pages == Printout::kPages;
  print_.reset();
  const std::string printer = wqMain.printer.deviceName;
  if (wqMain.printer.deviceCount == 0) return warn("There is no printer.");
  if (!begun) return; // the user has given up
  if (!whole) return warn("Cannot print on " + printer + ".");
  note("printed " + scene_.name + " on " + printer);
  WqMsgBox_Show(("Printed on " + printer + ".").c_str(), "levelview", MB_OK | MB_ICONINFORMATION);
}

int32_t Viewer::drawPage(WqPrinter *printer, int32_t page) {
  Viewer &viewer = *reinterpret_cast<Frame *>(printer->dc.wnd)->viewer;
  viewer.print_->printout.draw(printer->dc, page);
  viewer.print_->pages = page;
  return 0;
}

bool Viewer::run() {
  if (!open()) return false;
  WqWnd_Show(&frame_.wnd, 1);
  if (settings_.maximized) ShowWindow(frame_.wnd.hwnd, SW_SHOWMAXIMIZED);
  WqTimer_Start(); // for the bar
  if (load()) {
    WqMsgLp loop;
    WqMsgLp_Init(&loop);
    WqMsgLp_Start(&loop);
  }
  WqTimer_Stop();
  return true;
}

bool Viewer::snapshot(const std::string &pictureFile, const SIZE &size) {
  RECT rect = {0, 0, size.cx, size.cy};
  AdjustWindowRectEx(&rect, WS_OVERLAPPEDWINDOW, FALSE, 0);
  frame_.wnd.rect = {0, 0, rect.right - rect.left - 1, rect.bottom - rect.top - 1};
  if (!open()) return false;
  WqWnd_Show(&frame_.wnd, 1);
  const bool loaded = load();
  WqWnd_WaitQueEmpty();
  const bool written = loaded && ::savePicture(frame_.wnd.hwnd, Picture(frame_.wnd.hwnd), pictureFile);
  const Settings kept = settings_; // the picture's window is not the user's
  WqWnd_Show(&frame_.wnd, 0);
  settings_ = kept;
  return written;
}

void Viewer::show(const Visible &visible) {
  scene_.visible = visible;
  if (scene_.pointer >= visible.width()) scene_.pointer.reset(); // the window has shrunk
  wave_.invalidate();
  overview_.invalidate();
  status_.invalidate();
}

void Viewer::point(std::optional<LONG> pointer) {
  if (pointer == scene_.pointer || !scene_.ready()) return;
  wave_.movePointer(scene_.pointer, pointer);
  scene_.pointer = pointer;
  status_.movePointer();
}

void Viewer::carryOut(Command command) {
  if (command == Command::open) {
    const std::string file = askForRecording(settings_);
    return file.empty() ? void() : take(file);
  }
  if (!scene_.ready()) return;
  Visible visible = scene_.visible;
  const double middle = visible.width() / 2.0;
  switch (command) {
  case Command::zoomIn: visible.zoom(kNotch, middle); break;
  case Command::zoomOut: visible.zoom(1 / kNotch, middle); break;
  case Command::all: visible.zoom(1 / visible.factor(), 0); break;
  case Command::start: visible.moveTo(0); break;
  case Command::end: visible.moveTo(visible.frames()); break;
  case Command::copy: return copier_.copy(frame_.wnd.hwnd);
  case Command::picture: return savePicture();
  case Command::print: return print();
  case Command::open: return;
  }
  show(visible);
}

void Viewer::rememberPlace() {
  WINDOWPLACEMENT placement;
  placement.length = sizeof placement;
  if (!GetWindowPlacement(frame_.wnd.hwnd, &placement)) return;
  settings_.place = placement.rcNormalPosition;
  settings_.maximized = placement.showCmd == SW_SHOWMAXIMIZED;
}

void Viewer::zoomAt(double factor, LONG pixel) {
  Visible visible = scene_.visible;
  visible.zoom(factor, pixel);
  show(visible);
}

// Zooms about the mouse, and with the shift key moves.
void Viewer::turnWheel(const WqWheel &wheel) {
  if (wheel.keys & MK_SHIFT) {
    Visible visible = scene_.visible;
    visible.scroll(visible.width() / 10.0 * wheel.notches);
    return show(visible);
  }
  zoomAt(std::pow(kNotch, -wheel.notches), wave_.pixelAt({wheel.x, wheel.y}));
}

// Result: whether the key means something here.
bool Viewer::pressKey(WPARAM key) {
  if (GetKeyState(VK_CONTROL) < 0) {
    const std::optional<Command> command = commandOf(key);
    if (command) carryOut(*command);
    if (command) return true;
  }
  Visible visible = scene_.visible;
  const double width = visible.width();
  const LONG held = scene_.pointer.value_or(visible.width() / 2);
  switch (key) {
  case VK_ESCAPE: PostMessageA(frame_.wnd.hwnd, WM_CLOSE, 0, 0); return true;
  case VK_LEFT: visible.scroll(-width / 10); break;
  case VK_RIGHT: visible.scroll(width / 10); break;
  case VK_PRIOR: visible.scroll(-width); break;
  case VK_NEXT: visible.scroll(width); break;
  case VK_HOME: visible.moveTo(0); break;
  case VK_END: visible.moveTo(visible.frames()); break;
  case VK_ADD:
  case VK_OEM_PLUS: visible.zoom(kKey, held); break;
  case VK_SUBTRACT:
  case VK_OEM_MINUS: visible.zoom(1 / kKey, held); break;
  default: return false;
  }
  show(visible);
  return true;
}

int32_t Viewer::frameProc(WqWnd *wnd, WqMsg *msg) {
  Viewer &viewer = *reinterpret_cast<Frame *>(wnd)->viewer;
  switch (msg->msg) {
  case WM_DESTROY: viewer.rememberPlace(); return 0;
  case WM_DROPFILES: viewer.takeDropped(reinterpret_cast<HDROP>(msg->wParam)); return 1;
  case WQM_PRINT_PAGE:
    if (viewer.print_) viewer.print_->begun = true;
    return 0;
  case WM_RENDERFORMAT: Copier::render(msg->wParam); return 0;
  case WM_RENDERALLFORMATS: Copier::renderAll(msg->hwnd); return 0;
  case WQM_WHEEL: viewer.turnWheel(*reinterpret_cast<const WqWheel *>(msg->wParam)); return 0;
  case WQM_KEY: return wnd->result = viewer.pressKey(msg->wParam);
  default: return 0;
  }
}
