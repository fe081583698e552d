// The table from colour ids to colours, with the library's own colours.

#include "drawing/drawing_private.h"

#include "frame/main.h"
#include "frame/memory.h"

#include <iterator>

namespace {

constexpr uint32_t kIdMask = 0xFF;
constexpr uint32_t kSystemBit = 0x80; // set in ids that can't be removed
constexpr int kSystemColours = 25;

// The colours from WQ_COLOR_BLACK on.
constexpr COLORREF kFixed[] = {0x02000000, 0x02FFFFFF, 0x020000FF, 0x0200FFFF, 0x0200FF00, 0x02FFFF00,
                               0x02FF0000, 0x02FF00FF, 0x02808080, 0x02C0C0C0, 0x02000080, 0x02008080,
                               0x02008000, 0x02808000, 0x02800000, 0x02800080};

constexpr uint32_t systemId(uint32_t index) { return WQ_COLOR_SYSTEM + index; }

struct Shade {
  uint32_t id;
  uint32_t first;
  uint32_t second;
};

// In the order of computation: later shades use earlier ones.
constexpr Shade kShades[] = {{169, systemId(COLOR_BTNFACE), systemId(COLOR_BTNSHADOW)},
                             {170, systemId(COLOR_BTNSHADOW), systemId(COLOR_3DDKSHADOW)},
                             {171, systemId(COLOR_BTNFACE), systemId(COLOR_HIGHLIGHT)},
                             {173, WQ_COLOR_WHITE, systemId(COLOR_HIGHLIGHT)},
                             {172, 171, 173},
                             {174, 171, 172},
                             {175, systemId(COLOR_APPWORKSPACE), systemId(COLOR_3DDKSHADOW)}};

} // namespace

void WqColorTbl_Init(WqHash *table, uint32_t bucketCount) {
  *table = {};
  WqHash_Init(table, bucketCount);
  WqColorTbl_InitSystem(table);
}

void WqColorTbl_Term(WqHash *table) {
  WqHash_RemoveAllWith(table);
  WqHash_Term(table);
}

void WqColorTbl_InitSystem(const void *) {
  for (uint32_t i = 0; i < std::size(kFixed); ++i) WqColorTbl_Insert(WQ_COLOR_BLACK + i, kFixed[i]);
  for (int i = 0; i < kSystemColours; ++i) WqColorTbl_Insert(systemId(static_cast<uint32_t>(i)), GetSysColor(i));
  for (const Shade &shade : kShades)
    WqColorTbl_Insert(shade.id, WqColor_Neutral(WqColorTbl_Get(shade.first), WqColorTbl_Get(shade.second)));
}

void WqColorTbl_InitUser(const void *) {}

void WqColorTbl_Insert(uint32_t id, COLORREF colour) {
  const WqColorEntry entry = {colour, id};
  wqInsertRecord(&wqMain.colorTbl, id & kIdMask, &entry);
}

void WqColorTbl_Remove(uint32_t id) {
  if (id & kSystemBit) return;
  const uint32_t key = id & kIdMask;
  WqMem_Free(wqFindRecord<WqColorEntry>(&wqMain.colorTbl, key));
  WqHash_RemoveWith(&wqMain.colorTbl, key);
}

COLORREF WqColorTbl_Get(uint32_t colourValue) {
  if (wqIsDirect(colourValue)) return colourValue & 0x00FFFFFF;
  const WqColorEntry *entry = wqFindRecord<WqColorEntry>(&wqMain.colorTbl, colourValue & kIdMask);
  return entry ? entry->colour : 0;
}
