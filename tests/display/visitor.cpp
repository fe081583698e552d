// A program with one window, which tells what becomes of it on standard output. Its whole client area is magenta, so
// that it is found on a picture of the screen, but for a field of black and white columns, each one pixel wide.
//   visitor TITLE X Y WIDTH HEIGHT [WORD...]    the client area's size; ends when the window is closed. Words:
//     aware        tells the system first that it cares about resolutions itself
//     worker       the metrics are first asked on a thread that ends then
//     maximised    the window begins so
//     pastes       it tells again and again how long the clipboard's data in a format with a name are
//     copies       it promises a text on the clipboard, which it gives when somebody asks or at its end
//     once         it ends by itself, once the window is shown

#include "platform/platform.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <thread>

namespace {

constexpr COLORREF kGround = RGB(255, 0, 255);
constexpr RECT kColumns = {10, 10, 74, 42};

void paint(HWND window) {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window, &paint);
  RECT all;
  GetClientRect(window, &all);
  const HBRUSH ground = CreateSolidBrush(kGround);
  FillRect(dc, &all, ground);
  DeleteObject(ground);
  for (int x = kColumns.left; x < kColumns.right; ++x) {
    const RECT column = {x, kColumns.top, x + 1, kColumns.bottom};
    FillRect(dc, &column, static_cast<HBRUSH>(GetStockObject(x % 2 == 0 ? BLACK_BRUSH : WHITE_BRUSH)));
  }
  EndPaint(window, &paint);
}

void giveText() {
  constexpr char kText[] = "kept";
  const HGLOBAL text = GlobalAlloc(GMEM_MOVEABLE, sizeof kText);
  std::memcpy(GlobalLock(text), kText, sizeof kText);
  GlobalUnlock(text);
  SetClipboardData(CF_TEXT, text);
}

void promiseText(HWND window) {
  OpenClipboard(window);
  EmptyClipboard();
  SetClipboardData(CF_TEXT, nullptr);
  std::printf("copied %d\n", static_cast<int>(CloseClipboard()));
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const int x = GET_X_LPARAM(lParam), y = GET_Y_LPARAM(lParam);
  switch (message) {
  case WM_PAINT: paint(window); return 0;
  case WM_SIZE: std::printf("size %d %d,%d\n", static_cast<int>(wParam), x, y); break;
  case WM_ACTIVATE: std::puts(LOWORD(wParam) != WA_INACTIVE ? "active" : "inactive"); break;
  case WM_MOUSEMOVE: std::printf("move %d,%d\n", x, y); break;
  case WM_LBUTTONDOWN: std::printf("press %d,%d\n", x, y); break;
  case WM_CLOSE: std::puts("close"); break;
  case WM_RENDERFORMAT: giveText(); break;
  case WM_RENDERALLFORMATS:
    OpenClipboard(window);
    giveText();
    CloseClipboard();
    break;
  case WM_DESTROY: PostQuitMessage(0); break;
  default: break;
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

HWND makeWindow(char **argv, bool maximised) {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = procedure;
  windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  windowClass.lpszClassName = "visitor";
  RegisterClassA(&windowClass);
  const int x = std::atoi(argv[2]), y = std::atoi(argv[3]);
  RECT rect = {x, y, x + std::atoi(argv[4]), y + std::atoi(argv[5])};
  AdjustWindowRectEx(&rect, WS_OVERLAPPEDWINDOW, FALSE, 0);
  return CreateWindowExA(0, "visitor", argv[1], WS_OVERLAPPEDWINDOW | (maximised ? WS_MAXIMIZE | WS_VISIBLE : 0),
                         rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, nullptr, nullptr, nullptr,
                         nullptr);
}

void tellOf(HWND window) {
  RECT client;
  GetClientRect(window, &client);
  const HDC dc = GetDC(window);
  std::printf("client %ldx%ld screen %dx%d resolution %d\n", static_cast<long>(client.right),
              static_cast<long>(client.bottom), GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN),
              GetDeviceCaps(dc, LOGPIXELSX));
  ReleaseDC(window, dc);
}

void paste() {
  const UINT named = RegisterClipboardFormatA("wq test \"\x83\x65\"");
  if (!OpenClipboard(nullptr)) return;
  const HANDLE data = GetClipboardData(named);
  std::printf("clip %d\n", data ? static_cast<int>(GlobalSize(data)) : -1);
  CloseClipboard();
}

} // namespace

int main(int argc, char **argv) {
  if (argc < 6) return 2;
  const std::set<std::string> words(argv + 6, argv + argc);
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  if (words.count("aware")) SetProcessDPIAware();
  if (words.count("worker")) std::thread([] { std::printf("width %d\n", GetSystemMetrics(SM_CXSCREEN)); }).join();
  const HWND window = makeWindow(argv, words.count("maximised") > 0);
  if (!IsWindowVisible(window)) ShowWindow(window, SW_SHOW);
  UpdateWindow(window);
  tellOf(window);
  if (words.count("pastes")) SetTimer(window, 2, 300, [](HWND, UINT, UINT_PTR, DWORD) { paste(); });
  if (words.count("copies")) promiseText(window);
  if (words.count("once")) SetTimer(window, 1, 50, [](HWND, UINT, UINT_PTR, DWORD) { PostQuitMessage(0); });
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return static_cast<int>(message.wParam);
}
