#include "printout.h"

#include "wave_drawing.h"

namespace {

// In hundredths of a millimetre.
constexpr int32_t kMargin = 1500, kNames = 5500, kColumn = 4000;

std::string timeNow() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return format("%04u-%02u-%02u %02u:%02u", unsigned{now.wYear}, unsigned{now.wMonth}, unsigned{now.wDay},
                unsigned{now.wHour}, unsigned{now.wMinute});
}

// A table from the top down: names on the left, a column of values for each of what is told.
class Table {
 public:
  Table(WqDc &dc, const Look &look, const RECT &area)
      : dc_(dc), look_(look), left_(area.left), top_(area.top), names_(WqDcMap_MmToPixP(&dc.map, kNames)),
        column_(WqDcMap_MmToPixP(&dc.map, kColumn)) {}

  void add(const std::string &name, const std::vector<std::string> &values, Font font = fontText) {
    const LONG height = look_.line * 3 / 2;
    const auto cell = [&](LONG from, LONG width) {
      return box(from + look_.gap, top_, from + width - look_.gap, top_ + height);
    };
    const LONG right = left_ + names_ + static_cast<LONG>(values.size()) * column_;
    if (font == fontBold) fill(dc_, box(left_, top_, right, top_ + height), colourPanel);
    write(dc_, name, cell(left_, names_), DT_LEFT, font == fontBold ? colourText : colourDimText, font);
    LONG from = left_ + names_;
    for (const std::string &value : values) {
      write(dc_, value, cell(from, column_), DT_RIGHT, colourText, font);
      from += column_;
    }
    top_ += height;
    horizontal(dc_, left_, right - 1, top_ - 1, colourGrid);
  }
  void skip() { top_ += 2 * look_.line; }

 private:
  WqDc &dc_;
  const Look &look_;
  const LONG left_;
  LONG top_;
  const LONG names_, column_;
};

// The part that a view shows, on lanes of another width.
Visible fitted(const Visible &shown, LONG width) {
  Visible visible = shown;
  const double frames = std::max(shown.end() - shown.start(), 1.0);
  visible.setWidth(width);
  visible.zoom(visible.framesPerPixel() * visible.width() / frames, 0);
  visible.moveTo(shown.start());
  return visible;
}

} // namespace

Printout::Printout(const Scene &scene, const Look &look)
    : scene_(scene), look_(look), report_(measure(scene.name, scene.recording)), time_(timeNow()) {}

RECT Printout::pageArea(const WqDc &dc) const {
  POINT corner = {GetDeviceCaps(dc.hdc, HORZRES), GetDeviceCaps(dc.hdc, VERTRES)};
  DPtoLP(dc.hdc, &corner, 1);
  const LONG margin = WqDcMap_MmToPixP(&dc.map, kMargin);
  return box(margin, margin, corner.x - margin, corner.y - margin);
}

void Printout::draw(WqDc &dc, int32_t page) const {
  const RECT area = pageArea(dc);
  const LONG title = 2 * look_.line, foot = look_.line + look_.gap;
  drawTitle(dc, box(area.left, area.top, area.right, area.top + title));
  drawFoot(dc, box(area.left, area.bottom - foot, area.right, area.bottom), page);
  const RECT inner = box(area.left, area.top + title + look_.line, area.right, area.bottom - foot - look_.line);
  page == 1 ? drawReport(dc, inner) : drawWave(dc, inner);
}

void Printout::drawTitle(WqDc &dc, const RECT &row) const {
  const LONG time = widthOf(dc, time_);
  write(dc, time_, row, DT_RIGHT, colourDimText);
  const RECT rest = box(row.left, row.top, row.right - time - 2 * look_.gap, row.bottom);
  const Clip clip(dc, rest);
  write(dc, scene_.name, rest, DT_LEFT, colourText, fontTitle);
}

void Printout::drawFoot(WqDc &dc, const RECT &row, int32_t page) const {
  horizontal(dc, row.left, row.right - 1, row.top, colourTick);
  const RECT text = box(row.left, row.top + look_.gap, row.right, row.bottom);
  write(dc, "levelview", text, DT_LEFT, colourDimText);
  write(dc, format("page %d of %d", page, kPages), text, DT_RIGHT);
}

void Printout::drawReport(WqDc &dc, const RECT &area) const {
  Table table(dc, look_, area);
  table.add("Recording", {""}, fontBold);
  for (const Figure &figure : formatFigures(report_)) table.add(figure.name, {figure.value});
  table.skip();
  std::vector<std::string> heads;
  std::vector<std::vector<Figure>> channels;
  for (const Levels &levels : report_.channels) {
    channels.push_back(levelFigures(levels));
    heads.push_back(format("ch%u", static_cast<unsigned>(channels.size())));
  }
  table.add(format("Levels (full scale is %g V)", WqUnit_GetRange()), heads, fontBold);
  for (size_t row = 0; !channels.empty() && row < channels[0].size(); ++row) {
    std::vector<std::string> values;
    for (const std::vector<Figure> &figures : channels) values.push_back(figures[row].value);
    table.add(channels[0][row].name, values);
  }
}

void Printout::drawWave(WqDc &dc, const RECT &area) const {
  const RECT lanes = WaveDrawing(scene_, scene_.visible, look_, area).lanes();
  const Visible visible = fitted(scene_.visible, lanes.right - lanes.left);
  WaveDrawing(scene_, visible, look_, area).paint(dc, area);
}

namespace {

// A page's record over a printer's context, which stays the caller's, as the library makes it for its own prints.
class Page {
 public:
  explicit Page(HDC hdc) {
    WqDc_Init(&dc_, nullptr);
    dc_.hdc = hdc;
    dc_.mode = WQ_DC_PRINTER;
    WqDcDraw_Dc(&dc_.draw, &dc_);
    WqDcMap_Update(&dc_.map, GetDeviceCaps(hdc, LOGPIXELSY));
    const int scale = dc_.map.logPix / WqDcMap_LogPix(&dc_.map);
    SetMapMode(hdc, MM_ISOTROPIC);
    SetBkMode(hdc, TRANSPARENT);
    SetWindowExtEx(hdc, 1, 1, nullptr);
    SetViewportExtEx(hdc, scale, scale, nullptr);
  }
  ~Page() { WqDc_Term(&dc_); }
  Page(const Page &) = delete;
  Page &operator=(const Page &) = delete;

  WqDc &dc() { return dc_; }

 private:
  WqDc dc_;
};

bool printPages(const Printout &printout, HDC hdc) {
  for (int32_t number = 1; number <= Printout::kPages; ++number) {
    if (StartPage(hdc) <= 0) return false;
    {
      Page page(hdc);
      printout.draw(page.dc(), number);
    }
    if (EndPage(hdc) <= 0) return false;
  }
  return EndDoc(hdc) > 0;
}

} // namespace

std::string printUnattended(const Printout &printout, const std::string &title, const std::string &output) {
  WqPrinter_Init();
  const HDC hdc = CreateDCA("WINSPOOL", wqMain.printer.deviceName, nullptr, nullptr);
  if (!hdc) return "no printer";
  DOCINFOA info{};
  info.cbSize = sizeof info;
  info.lpszDocName = title.c_str();
  info.lpszOutput = output.empty() ? nullptr : output.c_str();
  const bool printed = StartDocA(hdc, &info) > 0 && printPages(printout, hdc);
  DeleteDC(hdc); // which gives up a document that is not whole
  return printed ? "" : "cannot print on " + std::string(wqMain.printer.deviceName);
}
