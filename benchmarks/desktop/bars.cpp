// Button bars: painting, mouse moves, building.

#include "desktop/desktop.h"

#include <cstdio>
#include <cstring>
#include <vector>

namespace {

constexpr SIZE kArea = {1280, 800};
constexpr LONG kSide = 24; // of a button
constexpr uint32_t kFieldButtons = 10;
constexpr LONG kFieldWidth = kFieldButtons * kSide;
constexpr LONG kFieldsAcross = kArea.cx / kFieldWidth;
constexpr uint16_t kSheet = 1;
constexpr char kSheetFile[] = "bench_bars.bmp";

// Enters the sheet of pictures for one field, in 32 bits.
void enterSheet() {
  constexpr BITMAPINFOHEADER info = {sizeof info, 16 * kFieldWidth, 6 * kSide, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  const std::vector<char> pixels(size_t{16} * kFieldWidth * 6 * kSide * 4, '\x55');
  const DWORD offBits = 14 + sizeof info;
  std::vector<char> head(14);
  std::memcpy(&head[10], &offBits, sizeof offBits);
  FILE *file = std::fopen(kSheetFile, "wb");
  require(file != nullptr, "the sheet cannot be written");
  const bool isWritten = std::fwrite(head.data(), head.size(), 1, file) == 1 &&
                         std::fwrite(&info, sizeof info, 1, file) == 1 &&
                         std::fwrite(pixels.data(), pixels.size(), 1, file) == 1;
  require(std::fclose(file) == 0 && isWritten, "the sheet cannot be written");
  WqBmpFile bmp;
  WqBmpFile_Init(&bmp, kSheetFile);
  WqBmpTbl_Insert(kSheet, &bmp);
}

// Tables of a bar with a number of fields of ten buttons each, in rows from the top left.
struct Tables {
  std::vector<WqMbbFieldDesc> fields;
  std::vector<WqMbbBtnDesc> buttons;

  explicit Tables(uint16_t fieldCount) {
    for (uint16_t id = 0; id < fieldCount; ++id) {
      fields.push_back({id, kSheet, kFieldButtons, id % kFieldsAcross * kFieldWidth, id / kFieldsAcross * kSide,
                        kFieldWidth, kSide});
      for (uint16_t i = 0; i < kFieldButtons; ++i) {
        const LONG left = i * kSide;
        buttons.push_back({i, 0, 0, 0, {left, 0, left + kSide - 1, kSide - 1}, "button", 0});
      }
    }
  }
  void build(HWND window) const {
    WqMbb_Config(window, fields.data(), buttons.data(), static_cast<uint32_t>(fields.size()));
  }
};

// A window that paints its background in one colour.
class Host {
 public:
  Host() {
    passes = notices = 0;
    WqWnd_Init(&wnd_);
    WqWnd_Style(&wnd_, WS_POPUP | WS_VISIBLE);
    WqWnd_Ds(&wnd_, WQ_DS_MBB);
    wnd_.rect = {0, 0, kArea.cx - 1, kArea.cy - 1};
    wnd_.userProc = [](WqWnd *, WqMsg *msg) {
      notices += msg->msg == WQM_MBB_PRESS;
      if (msg->msg != WQM_PAINT) return 0;
      ++passes;
      const RECT all = {0, 0, kArea.cx, kArea.cy};
      WqDcDraw_FillRect(&reinterpret_cast<WqDc *>(msg->wParam)->draw, &all, WQ_COLOR_GREEN);
      return 1;
    };
    require(WqWnd_Create(&wnd_) != nullptr, "a window cannot be made");
    WqWnd_WaitQueEmpty();
  }
  ~Host() {
    DestroyWindow(wnd_.hwnd);
    WqWnd_WaitQueEmpty();
  }
  Host(const Host &) = delete;
  Host &operator=(const Host &) = delete;

  HWND window() const { return wnd_.hwnd; }

  static inline int passes, notices;

 private:
  WqWnd wnd_;
};

double paint(uint16_t fieldCount) {
  const Host host;
  enterSheet();
  Tables(fieldCount).build(host.window());
  int asked = Host::passes;
  const double seconds = secondsPerIteration([&] {
    ++asked;
    InvalidateRect(host.window(), nullptr, FALSE);
    UpdateWindow(host.window());
  });
  std::remove(kSheetFile);
  require(Host::passes == asked, "a paint pass was left out");
  const HDC hdc = GetDC(host.window());
  const COLORREF button = GetPixel(hdc, kSide / 2, kSide / 2);
  ReleaseDC(host.window(), hdc);
  require(fieldCount == 0 || button == RGB(0x55, 0x55, 0x55), "a button was not painted");
  return seconds;
}

// Moves between two of the oldest buttons, which are searched last.
double mouseMove() {
  const Host host;
  Tables(20).build(host.window());
  WqTimer_Start();
  int moves = 0;
  const double seconds = secondsPerIteration([&] {
    const LONG x = kSide / 2 + (++moves % 2) * kSide;
    SendMessageA(host.window(), WM_MOUSEMOVE, 0, MAKELPARAM(static_cast<WORD>(x), kSide / 2));
  });
  WqTimer_Stop();
  require(Host::notices >= moves, "a move was not told");
  return seconds;
}

double buildAndRemove() {
  const Host host;
  const Tables tables(100);
  return secondsPerIteration([&] {
    tables.build(host.window());
    require(WqMbbBtn_Get(host.window(), 0, 0) != nullptr, "a button is missing");
    WqMbbTbl_Remove(host.window());
  });
}

} // namespace

void addBars(std::vector<Subject> &subjects) {
  subjects.push_back({"paint pass with a bar of 200 buttons", [] { return paint(20); }});
  subjects.push_back({"paint pass with an empty bar", [] { return paint(0); }});
  subjects.push_back({"mouse move over a bar of 200 buttons", mouseMove});
  subjects.push_back({"bar of 1,000 buttons built, removed", buildAndRemove});
}
