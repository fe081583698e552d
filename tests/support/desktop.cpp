#include "support/desktop.h"

#include <mutex>
#include <sstream>
#include <utility>

namespace {

std::mutex lock; // of what follows, since windows of several threads write
std::string written;
std::string recorded;               // groups
std::map<HWND, DWORD> makers;       // threads of the windows
thread_local const MSG *dispatched; // until the window procedure has it

// Name, group, and what is carried, see carried().
const std::pair<UINT, std::string> kMessages[] = {
    {WM_MOUSEACTIVATE, "MOUSEACTIVATE Hwh"}, {WM_RBUTTONDOWN, "RDOWN Mnp"},  {WM_LBUTTONUP, "LUP Mnp"},
    {WM_WINDOWPOSCHANGING, "CHANGING Laf"},  {WM_ACTIVATE, "ACTIVATE Fnv"},  {WM_SIZING, "SIZING Snr"},
    {WM_WINDOWPOSCHANGED, "CHANGED La"},     {WM_NCCALCSIZE, "NCCALC Sn"},   {WM_RBUTTONUP, "RUP Mnp"},
    {WM_CAPTURECHANGED, "CAPTURE Mv"},       {WM_SETCURSOR, "CURSOR Hwh"},   {WM_MOVING, "MOVING Sr"},
    {WM_LBUTTONDBLCLK, "LDOUBLE Mnp"},       {WM_EXITSIZEMOVE, "EXIT Sn"},   {WM_CREATE, "CREATE Lc"},
    {WM_NCLBUTTONDOWN, "NCLDOWN Mnp"},       {WM_MOUSEWHEEL, "WHEEL Mnp"},   {WM_ENABLE, "ENABLE Ln"},
    {WM_GETMINMAXINFO, "MINMAX Sn"},         {WM_NCCREATE, "NCCREATE Lc"},   {WM_KEYDOWN, "DOWN Knk"},
    {WM_NCMOUSEMOVE, "NCMOUSE Mnp"},         {WM_SETFOCUS, "SETFOCUS Fw"},   {WM_CLOSE, "CLOSE Ln"},
    {WM_ENTERSIZEMOVE, "ENTER Sn"},          {WM_SYSCHAR, "SYSCHAR Knk"},    {WM_PAINT, "PAINT Pu"},
    {WM_NCDESTROY, "NCDESTROY Ln"},          {WM_MOUSEMOVE, "MOUSE Mnp"},    {WM_TIMER, "TIMER On"},
    {WM_PARENTNOTIFY, "NOTIFY Le"},          {WM_DESTROY, "DESTROY Ln"},     {WM_SIZE, "SIZE Lnp"},
    {WM_KILLFOCUS, "KILLFOCUS Fw"},          {WM_ERASEBKGND, "ERASE E"},     {WM_MOVE, "MOVE Lnp"},
    {WM_SYSKEYDOWN, "SYSDOWN Knk"},          {WM_MOUSELEAVE, "LEAVE M"},     {WM_CHAR, "CHAR Knk"},
    {WM_SYSCOMMAND, "COMMAND Lnk"},          {WM_SYSKEYUP, "SYSUP Knk"},     {WM_KEYUP, "UP Knk"},
    {WM_LBUTTONDOWN, "LDOWN Mnp"},           {WM_SHOWWINDOW, "SHOW Ln"},     {WM_MBUTTONUP, "MUP Mnp"},
    {WM_NCLBUTTONDBLCLK, "NCLDOUBLE Mnp"},   {WM_NCLBUTTONUP, "NCLUP Mnp"},  {WM_NCHITTEST, "HIT Tp"},
    {WM_STYLECHANGED, "STYLED Xy"},          {WM_CHILDACTIVATE, "CHILD X"},  {WM_SETTEXT, "TEXT X"},
    {WM_MBUTTONDOWN, "MDOWN Mnp"},           {WM_CANCELMODE, "CANCEL X"},    {WM_QUERYOPEN, "OPEN X"},
    {WM_RENDERFORMAT, "RENDER Bn"},          {WM_RENDERALLFORMATS, "ALL B"}, {WM_DESTROYCLIPBOARD, "TAKEN B"},
    {WM_CLIPBOARDUPDATE, "UPDATE B"},        {WM_DRAWCLIPBOARD, "DRAW Bw"},  {WM_CHANGECBCHAIN, "CHAIN Bwv"}};

// The name of a message, and its group and letters.
std::pair<std::string, std::string> known(UINT message) {
  for (const std::pair<UINT, std::string> &entry : kMessages)
    if (const size_t end = entry.second.find(' '); entry.first == message)
      return {entry.second.substr(0, end), entry.second.substr(end + 1)};
  return {"USER+" + std::to_string(message - WM_USER), message < WM_USER ? "?" : "Onk"};
}

std::string nameOf(LPARAM handle) {
  const auto found = DesktopTest::names.find(reinterpret_cast<HWND>(handle));
  return found != DesktopTest::names.end() ? found->second : handle ? "new" : "none";
}

template <class... Parts> std::string text(const Parts &...parts) {
  std::ostringstream out;
  out << std::uppercase;
  (out << ... << parts);
  return out.str();
}

std::string carried(char letter, HWND window, WPARAM wParam, LPARAM lParam) {
  const int x = static_cast<short>(LOWORD(lParam)), y = static_cast<short>(HIWORD(lParam));
  const auto *place = reinterpret_cast<const WINDOWPOS *>(lParam);
  const auto *birth = reinterpret_cast<const CREATESTRUCTA *>(lParam);
  const auto *styles = reinterpret_cast<const STYLESTRUCT *>(lParam);
  RECT part{};
  switch (letter) {
  case 'n': return !static_cast<DWORD>(wParam) ? "" : text(' ', std::hex, static_cast<DWORD>(wParam));
  case 'k': return text(' ', std::hex, static_cast<DWORD>(lParam));
  case 'p': return text(' ', x, ',', y);
  case 'w': return ' ' + nameOf(static_cast<LPARAM>(wParam));
  case 'v': return ' ' + nameOf(lParam);
  case 'a': return text(' ', place->x, ',', place->y, ' ', place->cx, 'x', place->cy);
  case 'f': return text(' ', std::hex, place->flags & 0xFFu);
  case 'c': return text(' ', birth->x, ',', birth->y, ' ', birth->cx, 'x', birth->cy);
  case 'r': return ' ' + rectText(*reinterpret_cast<const RECT *>(lParam));
  case 'u': return GetUpdateRect(window, &part, FALSE) ? ' ' + rectText(part) : "";
  case 'y': return text(' ', std::hex, styles->styleOld, '>', styles->styleNew);
  case 'h': return text(' ', x, ' ', known(HIWORD(lParam)).first);
  default: // of a child: a click, or its creation or end with its id
    return ' ' + known(LOWORD(wParam)).first +
           (LOWORD(wParam) >= WM_MOUSEFIRST ? text(' ', x, ',', y) : text(' ', HIWORD(wParam), ' ', nameOf(lParam)));
  }
}

void writeLine(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool queued) {
  const std::lock_guard held(lock);
  const DWORD thread = GetCurrentThreadId();
  if (message == WM_NCCREATE) {
    DesktopTest::names[window] = reinterpret_cast<const CREATESTRUCTA *>(lParam)->lpszName;
    makers[window] = thread;
  }
  const auto [name, letters] = known(message);
  if (recorded.find(letters[0]) == std::string::npos) return;
  const auto maker = makers.find(window);
  written += (written.empty() ? "" : "\n") + nameOf(reinterpret_cast<LPARAM>(window));
  written += maker == makers.end() || maker->second == thread ? "" : " on another thread";
  written += (queued ? "< " : ": ") + name;
  for (const char letter : letters.substr(1)) written += carried(letter, window, wParam, lParam);
}

LRESULT CALLBACK write(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const bool queued = dispatched && dispatched->hwnd == window && dispatched->message == message;
  if (queued) dispatched = nullptr;
  writeLine(window, message, wParam, lParam, queued);
  LRESULT result = 0;
  const DesktopTest::Answer answer = DesktopTest::answer; // a copy: it may be replaced while it runs
  return answer && answer(window, message, wParam, lParam, result) ? result
                                                                   : DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

DesktopTest::~DesktopTest() {
  record("");
  answer = nullptr;
  for (const auto &[window, title] : names) DestroyWindow(window); // many are gone
  pump(30);
  names.clear(), makers.clear();
}

HWND DesktopTest::make(const char *title, DWORD style, int x, int y, int width, int height, HWND parent,
                       UINT classStyle, LPCSTR cursor) {
  std::string name = "recorded " + std::to_string(classStyle);
  if (cursor != IDC_ARROW) name += ' ' + std::to_string(reinterpret_cast<UINT_PTR>(cursor));
  WNDCLASSA windowClass{};
  windowClass.style = classStyle, windowClass.lpfnWndProc = write, windowClass.lpszClassName = name.c_str();
  windowClass.hCursor = cursor ? LoadCursorA(nullptr, cursor) : nullptr,
  windowClass.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  RegisterClassA(&windowClass); // fails from the second time on
  return CreateWindowExA(0, name.c_str(), title, style, x, y, width, height, parent, nullptr, nullptr, nullptr);
}

void DesktopTest::record(const std::string &groups) {
  const std::lock_guard held(lock);
  recorded = groups;
  written.clear();
}

std::string DesktopTest::take() {
  const std::lock_guard held(lock);
  return std::exchange(written, {});
}

std::string DesktopTest::pump(DWORD milliseconds) {
  MSG message;
  dispatched = nullptr; // an exception may have left one behind
  for (const DWORD start = GetTickCount(); GetTickCount() - start <= milliseconds; Sleep(1))
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      dispatched = &message;
      DispatchMessageA(&message);
      dispatched = nullptr;
    }
  return take();
}

void DesktopTest::play(const std::string &groups, const std::vector<Step> &steps) {
  pump(20);
  record(groups);
  for (size_t i = 0; i < steps.size(); ++i) {
    steps[i].act();
    EXPECT_EQ(pump(), steps[i].expected) << "step " << i;
  }
}

std::string rectText(const RECT &rect) { return text(rect.left, ',', rect.top, ',', rect.right, ',', rect.bottom); }

std::string screenRect(HWND window) {
  RECT rect{};
  GetWindowRect(window, &rect);
  return rectText(rect);
}

bool onWine() {
  static const bool wine = GetProcAddress(LoadLibraryA("ntdll"), "wine_get_version") != nullptr;
  return wine;
}

bool onWindows() {
#ifdef _WIN32
  return true;
#else
  return false;
#endif
}
