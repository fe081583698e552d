// The system's metrics, from the screen and from the classic look.

#include "platform/desktop/screen/screen.h"

namespace platform {

namespace {

// Metrics of the classic look, which no theme changes.
int fixedMetric(int index) {
  switch (index) {
  case SM_CXVSCROLL:
  case SM_CYHSCROLL: return 16;
  case SM_CYCAPTION: return 19;
  case SM_CXBORDER:
  case SM_CYBORDER: return 1;
  case SM_CXFIXEDFRAME:
  case SM_CYFIXEDFRAME: return 3;
  case SM_CXICON:
  case SM_CYICON:
  case SM_CXCURSOR:
  case SM_CYCURSOR: return 32;
  case SM_CYMENU: return 19;
  case SM_MOUSEPRESENT:
  case SM_MOUSEWHEELPRESENT: return 1;
  case SM_CXMIN:
  case SM_CXMINTRACK: return 112;
  case SM_CYMIN:
  case SM_CYMINTRACK: return 27;
  case SM_CXSIZE:
  case SM_CYSIZE: return 18;
  case SM_CXFRAME:
  case SM_CYFRAME:
  case SM_CXDOUBLECLK:
  case SM_CYDOUBLECLK:
  case SM_CXDRAG:
  case SM_CYDRAG: return 4;
  case SM_CMOUSEBUTTONS: return 3;
  case SM_CXEDGE:
  case SM_CYEDGE: return 2;
  case SM_CXSMICON:
  case SM_CYSMICON:
  case SM_CYSMCAPTION: return 16;
  default: return 0;
  }
}

} // namespace

} // namespace platform

using namespace platform;

int GetSystemMetrics(int index) {
  const auto info = [] { return theScreen().info(); };
  const auto width = [](const RECT &rect) { return static_cast<int>(rect.right - rect.left); };
  const auto height = [](const RECT &rect) { return static_cast<int>(rect.bottom - rect.top); };
  switch (index) {
  case SM_CXSCREEN: return info().size.cx;
  case SM_CYSCREEN: return info().size.cy;
  case SM_XVIRTUALSCREEN: return info().all.left;
  case SM_YVIRTUALSCREEN: return info().all.top;
  case SM_CXVIRTUALSCREEN: return width(info().all);
  case SM_CYVIRTUALSCREEN: return height(info().all);
  case SM_CXFULLSCREEN: return width(info().workArea);
  case SM_CYFULLSCREEN: return height(info().workArea) - fixedMetric(SM_CYCAPTION);
  case SM_CXMAXIMIZED: return width(info().workArea) + 2 * fixedMetric(SM_CXFRAME);
  case SM_CYMAXIMIZED: return height(info().workArea) + 2 * fixedMetric(SM_CYFRAME);
  case SM_CXMAXTRACK: return info().size.cx + 2 * fixedMetric(SM_CXFRAME) + 4;
  case SM_CYMAXTRACK: return info().size.cy + 2 * fixedMetric(SM_CYFRAME) + 4;
  default: return fixedMetric(index);
  }
}

BOOL SetProcessDPIAware() { return useRealPixels(); }

BOOL IsProcessDPIAware() { return usesRealPixels(); }
