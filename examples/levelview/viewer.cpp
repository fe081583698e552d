#include "viewer.h"

#include "terminal.h"

namespace {

constexpr SIZE kUsual = {800, 480};
constexpr SIZE kSmallest = {320, 200};
constexpr SIZE kLargest = {16384, 16384};
constexpr LONG kLevelsWidth = 120;
constexpr LONG kStatusHeight = 24;

// The name behind the last folder.
std::string nameIn(const std::string &path) {
  char folder[MAX_PATH] = "";
  const size_t length = path.size() < sizeof folder ? static_cast<size_t>(WqDir_GetFromPath(path.c_str(), folder)) : 0;
  return length > 0 && length + 1 < path.size() ? path.substr(length + 1) : path;
}

// Fills a window's client area, in answer to WM_ERASEBKGND.
void fill(const WqWnd *wnd, WPARAM dc, COLORREF color) {
  RECT area;
  GetClientRect(wnd->hwnd, &area);
  const HBRUSH brush = CreateSolidBrush(color);
  FillRect(reinterpret_cast<HDC>(dc), &area, brush);
  DeleteObject(brush);
}

bool isOnScreen(const RECT &place) {
  SIZE screen;
  WqSys_ScreenRes(&screen);
  const RECT whole = {0, 0, screen.cx, screen.cy};
  const POINT corner = {place.left, place.top};
  return place.right - place.left >= kSmallest.cx && place.bottom - place.top >= kSmallest.cy &&
         WqRect_IsIn(&whole, &corner);
}

} // namespace

Viewer::Viewer(const std::string &file, Settings &settings) : frame_{}, parts_{}, settings_(settings) {
  frame_.viewer = this;
  WqWnd &wnd = frame_.wnd;
  WqWnd_Init(&wnd);
  WqWnd_ID(&wnd, WQ_ID_QUIT);
  WqWnd_Style(&wnd, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN);
  WqWnd_Title(&wnd, (nameIn(file) + " - levelview").c_str());
  WqWnd_UserProc(&wnd, frameProc);
  const RECT smallest = {0, 0, kSmallest.cx, kSmallest.cy};
  const RECT largest = {0, 0, kLargest.cx, kLargest.cy};
  WqWnd_Min(&wnd, &smallest);
  WqWnd_Max(&wnd, &largest);
  wnd.rect = {0, 0, kUsual.cx, kUsual.cy};
  WqRect_Center(&wnd.rect, nullptr);
  if (isOnScreen(settings.place)) wnd.rect = settings.place;
  // creation counts the right and bottom edges in
  --wnd.rect.right;
  --wnd.rect.bottom;

  parts_[wave].color = RGB(16, 24, 32);
  parts_[levels].color = RGB(40, 52, 64);
  parts_[status].color = GetSysColor(COLOR_BTNFACE);
}

void Viewer::addPart(Part part) {
  WqWnd &wnd = parts_[part].wnd;
  WqWnd_Init(&wnd);
  WqWnd_Parent(&wnd, &frame_.wnd);
  WqWnd_Style(&wnd, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS);
  WqWnd_UserProc(&wnd, partProc);
}

bool Viewer::open() {
  if (!WqWnd_Create(&frame_.wnd)) return false;
  WqMain_Config(frame_.wnd.hwnd);
  for (const Part part : {wave, levels, status}) addPart(part);

  WqWnd &bar = parts_[status].wnd;
  bar.rect = {0, 0, 0, kStatusHeight - 1};
  WqWnd_Ds(&bar, WQ_DS_KEEP_H);
  WqWnd_SnapL(&bar, nullptr);
  WqWnd_SnapR(&bar, nullptr);
  WqWnd_SnapB(&bar, nullptr);

  WqWnd &strip = parts_[levels].wnd;
  strip.rect = {0, 0, kLevelsWidth - 1, 0};
  WqWnd_Ds(&strip, WQ_DS_KEEP_W);
  WqWnd_SnapT(&strip, nullptr);
  WqWnd_SnapR(&strip, nullptr);
  WqWnd_SnapB(&strip, &bar);

  WqWnd &area = parts_[wave].wnd;
  WqWnd_SnapL(&area, nullptr);
  WqWnd_SnapT(&area, nullptr);
  WqWnd_SnapR(&area, &strip);
  WqWnd_SnapB(&area, &bar);

  for (const Part part : {status, levels, wave})
    if (!WqWnd_Create(&parts_[part].wnd)) return false;
  return true;
}

bool Viewer::run() {
  if (!open()) return false;
  WqWnd_Show(&frame_.wnd, 1);
  if (settings_.maximized) ShowWindow(frame_.wnd.hwnd, SW_SHOWMAXIMIZED);
  WqMsgLp loop;
  WqMsgLp_Init(&loop);
  WqMsgLp_Start(&loop);
  return true;
}

bool Viewer::snapshot(const std::string &pictureFile, const SIZE &size) {
  RECT rect = {0, 0, size.cx, size.cy};
  AdjustWindowRectEx(&rect, WS_OVERLAPPEDWINDOW, FALSE, 0);
  frame_.wnd.rect = {0, 0, rect.right - rect.left - 1, rect.bottom - rect.top - 1};
  if (!open()) return false;
  WqWnd_Show(&frame_.wnd, 1);
  WqWnd_WaitQueEmpty();
  const bool written = platformSavePicture(frame_.wnd.hwnd, pictureFile.c_str());
  const Settings kept = settings_; // the picture's window is not the user's
  WqWnd_Show(&frame_.wnd, 0);
  settings_ = kept;
  return written;
}

void Viewer::rememberPlace() {
  WINDOWPLACEMENT placement;
  placement.length = sizeof placement;
  if (!GetWindowPlacement(frame_.wnd.hwnd, &placement)) return;
  settings_.place = placement.rcNormalPosition;
  settings_.maximized = placement.showCmd == SW_SHOWMAXIMIZED;
}

int32_t Viewer::frameProc(WqWnd *wnd, WqMsg *msg) {
  Viewer &viewer = *reinterpret_cast<Frame *>(wnd)->viewer;
  switch (msg->msg) {
  case WM_DESTROY: viewer.rememberPlace(); return 0;
  case WQM_KEY:
    if (msg->wParam != VK_ESCAPE) return 0;
    PostMessageA(wnd->hwnd, WM_CLOSE, 0, 0);
    wnd->result = 1;
    return 1;
  default: return 0;
  }
}

int32_t Viewer::partProc(WqWnd *wnd, WqMsg *msg) {
  if (msg->msg != WM_ERASEBKGND) return 0;
  fill(wnd, msg->wParam, reinterpret_cast<Strip *>(wnd)->color);
  wnd->result = 1;
  return 1;
}
