// Conversions between physical units and device pixels. Their rounding is part of the interface.

#include "drawing/drawing.h"

#include "audio/audio.h"

namespace {

constexpr double kMmPerInch = 2540.0;
constexpr double kInchPerMm = 0.0003937007874015748; // 1/2540
constexpr double kPointsPerInch = 72.0;

int32_t towardZero(double value) { return value < 0 ? WqMath_CeilInt(value) : WqMath_FloorInt(value); }

template <auto convert> void convertTwo(const WqDcMap *map, LONG *first, LONG *second) {
  *first = convert(map, *first);
  *second = convert(map, *second);
}

template <auto convert> void convertRect(const WqDcMap *map, RECT *rect) {
  convertTwo<convert>(map, &rect->left, &rect->top);
  convertTwo<convert>(map, &rect->right, &rect->bottom);
}

} // namespace

void WqDcMap_Init(WqDcMap *map) {
  *map = {};
  WqDcMap_Update(map, WqDcMap_LogPix(map));
}

void WqDcMap_Term(WqDcMap *) {}

void WqDcMap_Dc(WqDcMap *map, WqDc *dc) {
  map->dc = dc;
  if (dc->hdc) map->mapMode = map->prevMapMode = GetMapMode(dc->hdc);
}

void WqDcMap_Mode(WqDcMap *map, int32_t mode) {
  map->mapMode = mode;
  map->prevMapMode = SetMapMode(map->dc->hdc, mode);
}

int32_t WqDcMap_LogPix(const WqDcMap *) {
  HDC display = CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  const int logPix = GetDeviceCaps(display, LOGPIXELSY);
  DeleteDC(display);
  return logPix;
}

int32_t WqDcMap_Update(WqDcMap *map, int32_t logPix) {
  const int32_t before = map->logPix;
  map->logPix = logPix;
  map->dpi = logPix;
  map->mmPerPix = kMmPerInch / map->dpi;
  map->pixPerMm = map->dpi * kInchPerMm;
  map->pixPerPoint = map->dpi / kPointsPerInch;
  map->displayPixPerMm = WqDcMap_LogPix(map) / map->dpi * map->pixPerMm;
  return before;
}

int32_t WqDcMap_PointToMm(const WqDcMap *, int32_t value) { return towardZero(value * kMmPerInch / kPointsPerInch); }
int32_t WqDcMap_PointToPix(const WqDcMap *map, int32_t value) { return towardZero(value * map->pixPerPoint); }
int32_t WqDcMap_MmToPoint(const WqDcMap *, int32_t value) { return towardZero(value * kPointsPerInch * kInchPerMm); }
int32_t WqDcMap_MmToPix(const WqDcMap *map, int32_t value) { return WqMath_CeilInt(value * map->pixPerMm); }
int32_t WqDcMap_PixToPoint(const WqDcMap *map, int32_t value) { return towardZero(value * kPointsPerInch / map->dpi); }
int32_t WqDcMap_PixToMm(const WqDcMap *map, int32_t value) { return towardZero(value * map->mmPerPix); }
int32_t WqDcMap_MmToPixP(const WqDcMap *map, int32_t value) { return WqMath_CeilInt(value * map->displayPixPerMm); }

void WqDcMap_PointToMm_SIZE(const WqDcMap *map, SIZE *size) {
  convertTwo<WqDcMap_PointToMm>(map, &size->cx, &size->cy);
}
void WqDcMap_PointToMm_POINT(const WqDcMap *map, POINT *point) {
  convertTwo<WqDcMap_PointToMm>(map, &point->x, &point->y);
}
void WqDcMap_PointToMm_RECT(const WqDcMap *map, RECT *rect) { convertRect<WqDcMap_PointToMm>(map, rect); }

void WqDcMap_PointToPix_SIZE(const WqDcMap *map, SIZE *size) {
  convertTwo<WqDcMap_PointToPix>(map, &size->cx, &size->cy);
}
void WqDcMap_PointToPix_POINT(const WqDcMap *map, POINT *point) {
  convertTwo<WqDcMap_PointToPix>(map, &point->x, &point->y);
}
void WqDcMap_PointToPix_RECT(const WqDcMap *map, RECT *rect) { convertRect<WqDcMap_PointToPix>(map, rect); }

void WqDcMap_MmToPoint_SIZE(const WqDcMap *map, SIZE *size) {
  convertTwo<WqDcMap_MmToPoint>(map, &size->cx, &size->cy);
}
void WqDcMap_MmToPoint_POINT(const WqDcMap *map, POINT *point) {
  convertTwo<WqDcMap_MmToPoint>(map, &point->x, &point->y);
}
void WqDcMap_MmToPoint_RECT(const WqDcMap *map, RECT *rect) { convertRect<WqDcMap_MmToPoint>(map, rect); }

void WqDcMap_MmToPix_SIZE(const WqDcMap *map, SIZE *size) { convertTwo<WqDcMap_MmToPix>(map, &size->cx, &size->cy); }
void WqDcMap_MmToPix_POINT(const WqDcMap *map, POINT *point) { convertTwo<WqDcMap_MmToPix>(map, &point->x, &point->y); }
void WqDcMap_MmToPix_RECT(const WqDcMap *map, RECT *rect) { convertRect<WqDcMap_MmToPix>(map, rect); }

void WqDcMap_PixToPoint_SIZE(const WqDcMap *map, SIZE *size) {
  convertTwo<WqDcMap_PixToPoint>(map, &size->cx, &size->cy);
}
void WqDcMap_PixToPoint_POINT(const WqDcMap *map, POINT *point) {
  convertTwo<WqDcMap_PixToPoint>(map, &point->x, &point->y);
}
void WqDcMap_PixToPoint_RECT(const WqDcMap *map, RECT *rect) { convertRect<WqDcMap_PixToPoint>(map, rect); }

void WqDcMap_PixToMm_SIZE(const WqDcMap *map, SIZE *size) { convertTwo<WqDcMap_PixToMm>(map, &size->cx, &size->cy); }
void WqDcMap_PixToMm_POINT(const WqDcMap *map, POINT *point) { convertTwo<WqDcMap_PixToMm>(map, &point->x, &point->y); }
void WqDcMap_PixToMm_RECT(const WqDcMap *map, RECT *rect) { convertRect<WqDcMap_PixToMm>(map, rect); }
