// A program that has Qt of its own, with a window of Qt and one of the API. It tells of presses on the latter, and ends
// when that is closed.
//   guest exec    Qt comes first and its loop runs
//   guest pump    Qt comes first, and the loop of the API runs
//   guest late    the window of the API comes first
//   guest quit    as exec, and it ends by itself

#include "platform/platform.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <memory>
#include <string>

namespace {

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_LBUTTONDOWN) std::printf("press %d,%d\n", GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
  if (message == WM_DESTROY) {
    PostQuitMessage(0);
    QCoreApplication::quit();
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

void showWindow() {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = procedure;
  windowClass.lpszClassName = "guest";
  RegisterClassA(&windowClass);
  const HWND window =
      CreateWindowExA(0, "guest", "guest", WS_OVERLAPPEDWINDOW, 300, 300, 308, 227, nullptr, nullptr, nullptr, nullptr);
  ShowWindow(window, SW_SHOW);
}

} // namespace

int main(int argc, char **argv) {
  const std::string way = argc > 1 ? argv[1] : "";
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  if (way == "late") {
    showWindow();
    std::puts("the window is there");
  }
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  if (way == "late") std::puts("both are there");
  QWidget own;
  own.setWindowTitle("own");
  own.setGeometry(700, 300, 200, 100);
  own.show();
  if (way != "late") showWindow();
  if (way == "quit") QTimer::singleShot(50, [] { QCoreApplication::quit(); });
  if (way != "pump") return QApplication::exec();
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return static_cast<int>(message.wParam);
}
