// Metrics of the screen.

#include "frame/system.h"

void WqSys_DesktopRect(SIZE *size) { *size = {GetSystemMetrics(SM_CXFULLSCREEN), GetSystemMetrics(SM_CYFULLSCREEN)}; }

void WqSys_ScreenRes(SIZE *size) { *size = {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }
