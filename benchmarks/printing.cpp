// A document of 100 pages to a PDF file, each with 200 lines and 50 labels. In the peer, QPainter draws the same on a
// QPdfWriter.

#include "platform/platform.h"

#include <benchmark/benchmark.h>

#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>

#include <cstdio>
#include <cstring>

namespace {

constexpr int kPages = 100, kLines = 200, kLabels = 50, kDpi = 600;
constexpr char kFile[] = "benchmark.pdf";

int across(int i) { return 200 + (i * 37) % 4000; }
int down(int i) { return 200 + (i * 91) % 6000; }

// Result: the label's length.
int labelOf(int page, int i, char (&label)[40]) {
  return std::snprintf(label, sizeof label, "page %d, level %d: -%d.%02d dBV", page, i, i % 90, page % 100);
}

void ourPage(HDC dc, int page) {
  char label[40];
  for (int i = 0; i < kLines; ++i) {
    MoveToEx(dc, across(i + page), down(i), nullptr);
    LineTo(dc, across(i + 50), down(i + 7));
  }
  for (int i = 0; i < kLabels; ++i) {
    const int length = labelOf(page, i, label);
    TextOutA(dc, across(3 * i), down(5 * i), label, length);
  }
}

void ours(benchmark::State &state) {
  LOGFONTA description{};
  description.lfHeight = -100;
  std::strcpy(description.lfFaceName, "Arial");
  const HFONT font = CreateFontIndirectA(&description);
  const HPEN pen = CreatePen(PS_SOLID, 4, RGB(0, 0, 128));
  for (auto _ : state) {
    const HDC dc = CreateDCA(nullptr, "PDF", nullptr, nullptr);
    SelectObject(dc, font);
    SelectObject(dc, pen);
    SetBkMode(dc, TRANSPARENT);
    const DOCINFOA info = {sizeof info, "Benchmark", kFile, nullptr, 0};
    bool good = StartDocA(dc, &info) > 0;
    for (int page = 0; page < kPages; ++page) {
      StartPage(dc);
      ourPage(dc, page);
      EndPage(dc);
    }
    good = EndDoc(dc) > 0 && good;
    DeleteDC(dc);
    if (!good) state.SkipWithError("no document");
  }
  DeleteObject(font);
  DeleteObject(pen);
  std::remove(kFile);
}

void theirPage(QPainter &painter, int page) {
  char label[40];
  for (int i = 0; i < kLines; ++i) painter.drawLine(across(i + page), down(i), across(i + 50), down(i + 7));
  for (int i = 0; i < kLabels; ++i) {
    labelOf(page, i, label);
    painter.drawText(across(3 * i), down(5 * i), QString::fromLatin1(label));
  }
}

void theirs(benchmark::State &state) {
  static int count = 1;
  static char name[] = "benchmarks", *arguments[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static auto *application = new QGuiApplication(count, arguments); // fonts need an application object
  benchmark::DoNotOptimize(application);
  for (auto _ : state) {
    QPdfWriter writer(kFile);
    writer.setResolution(kDpi);
    writer.setPageSize(QPageSize(QPageSize::A4));
    QPainter painter(&writer);
    QFont font("DejaVu Sans");
    font.setPixelSize(100);
    painter.setFont(font);
    painter.setPen(QPen(QColor(0, 0, 128), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (int page = 0; page < kPages; ++page) {
      if (page > 0) writer.newPage();
      theirPage(painter, page);
    }
  }
  std::remove(kFile);
}

const bool registered = [] {
  benchmark::RegisterBenchmark("document of 100 pages/ours", ours);
  benchmark::RegisterBenchmark("document of 100 pages/QPdfWriter", theirs);
  return true;
}();

} // namespace
