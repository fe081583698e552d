// Thin lines on a bitmap, with a pen selected for each, beside the same drawn by QPainter on a QImage without
// smoothing.

#include "platform/platform.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPen>

#include <array>
#include <thread>
#include <vector>

namespace {

constexpr int kWidth = 1280, kHeight = 800, kPens = 16;

struct Line {
  int x, y, toX, toY;
};

std::vector<Line> shortLines() {
  std::vector<Line> lines;
  for (int i = 0; i < 200; ++i) {
    const int x = i * 37 % (kWidth - 90), y = i * 23 % (kHeight - 50);
    lines.push_back({x, y, x + 90, y + 50});
  }
  return lines;
}

std::vector<Line> longLines() {
  std::vector<Line> lines;
  for (int i = 0; i < 50; ++i) lines.push_back({0, i * 5, kWidth, kHeight - i * 7});
  return lines;
}

int red(int pen) { return pen * 15; }
int green(int pen) { return 255 - pen * 10; }
int blue(int pen) { return pen * 7; }

void ours(benchmark::State &state, const std::vector<Line> &lines) {
  std::thread([] {}).join(); // a program with windows has threads, and its reference counts know it
  const HDC dc = CreateCompatibleDC(nullptr);
  const HBITMAP bitmap = CreateBitmap(kWidth, kHeight, 1, 32, nullptr);
  SelectObject(dc, bitmap);
  std::array<HPEN, kPens> pens;
  for (int i = 0; i < kPens; ++i) pens[static_cast<size_t>(i)] = CreatePen(PS_SOLID, 1, RGB(red(i), green(i), blue(i)));
  for (auto _ : state) {
    size_t pen = 0;
    for (const Line &line : lines) {
      SelectObject(dc, pens[pen++ % kPens]);
      MoveToEx(dc, line.x, line.y, nullptr);
      LineTo(dc, line.toX, line.toY);
    }
  }
  if (GetPixel(dc, lines[0].x, lines[0].y) == RGB(0, 0, 0)) state.SkipWithError("no line");
  DeleteDC(dc);
  for (const HPEN pen : pens) DeleteObject(pen);
  DeleteObject(bitmap);
}

void theirs(benchmark::State &state, const std::vector<Line> &lines) {
  QImage image(kWidth, kHeight, QImage::Format_RGB32);
  image.fill(Qt::black);
  std::array<QPen, kPens> pens;
  for (int i = 0; i < kPens; ++i) pens[static_cast<size_t>(i)] = QPen(QColor(red(i), green(i), blue(i)), 1);
  QPainter painter(&image);
  for (auto _ : state) {
    size_t pen = 0;
    for (const Line &line : lines) {
      painter.setPen(pens[pen++ % kPens]);
      painter.drawLine(line.x, line.y, line.toX, line.toY);
    }
  }
}

const bool registered = [] {
  benchmark::RegisterBenchmark("200 lines, 90 x 50/ours", ours, shortLines());
  benchmark::RegisterBenchmark("200 lines, 90 x 50/QPainter", theirs, shortLines());
  benchmark::RegisterBenchmark("50 lines, 1280 x 800/ours", ours, longLines());
  benchmark::RegisterBenchmark("50 lines, 1280 x 800/QPainter", theirs, longLines());
  return true;
}();

} // namespace
