#include "bar.h"

#include "ids.h"

#include <array>
#include <iterator>

namespace {

constexpr uint16_t kSheet = 1; // in the library's registry of bitmaps
constexpr uint32_t kHeld = 3;  // ticks of a tenth of a second until a held button repeats

struct Button {
  Command command;
  bool gap;       // to its left
  uint32_t flags; // beside its column
};
constexpr Button kButtons[] = {{Command::open, false, 0}, {Command::zoomIn, true, 0},   {Command::zoomOut, false, 0},
                               {Command::all, false, 0},  {Command::start, true, 0},    {Command::end, false, 0},
                               {Command::copy, true, 0},  {Command::picture, false, 0}, {Command::print, false, 0}};

bool repeats(Command command) { return command == Command::zoomIn || command == Command::zoomOut; }

// The sheet whose buttons have the size that the look asks for.
void enterSheet(LONG button) {
  WqBmp sheet;
  WqBmp_Init(&sheet);
  sheet.instance = GetModuleHandleA(nullptr);
  sheet.resourceId = button > kButtonAt96 ? LEVELVIEW_BAR_192 : LEVELVIEW_BAR_96;
  WqBmp_Load(&sheet);
  WqBmpFile entry;
  WqBmpFile_Init(&entry, "");
  entry.handle = sheet.handle; // the registry's from now on
  WqBmpTbl_Insert(kSheet, &entry);
}

} // namespace

Bar::Bar(WqWnd *parent, const Look &look, Control &control) : Pane(parent), look_(look), control_(control) {
  WqWnd_Ds(wnd(), WQ_DS_MBB);
}

// Each button is a field of its own, and so takes the column of its command.
void Bar::build() {
  enterSheet(look_.button);
  std::array<WqMbbFieldDesc, std::size(kButtons)> fields{};
  std::array<WqMbbBtnDesc, std::size(kButtons)> buttons{};
  const LONG size = look_.button;
  LONG x = look_.gap;
  for (size_t i = 0; i < std::size(kButtons); ++i) {
    const auto &[command, gap, flags] = kButtons[i];
    const auto number = static_cast<uint16_t>(command);
    if (gap) x += 2 * look_.gap;
    fields[i] = {number, kSheet, 1, x, look_.gap, size, size};
    buttons[i] = {number, 0, 0, number | flags, {0, 0, size - 1, size - 1}, "", 0};
    const RECT rect = box(x, look_.gap, x + size, look_.gap + size);
    tip(TIP_OPEN + number, rect);
    x += size;
  }
  WqMbb_Config(window(), fields.data(), buttons.data(), static_cast<uint32_t>(fields.size()));
}

void Bar::paint(WqDc &dc, const RECT &) {
  const RECT whole = client();
  fill(dc, whole, colourPanel);
  horizontal(dc, 0, whole.right - 1, whole.bottom - 1, colourEdge);
}

// Zooming begins with the press and goes on while the button is held; other commands wait for the release.
void Bar::notified(uint32_t event, WqMbbBtn &button) {
  const auto command = static_cast<Command>(button.id);
  const bool down = button.flags & WQ_MBB_DOWN;
  switch (event) {
  case WQ_MBB_EVENT_PRESS:
    WqMbbBtn_Down(&button);
    held_ = 0;
    if (repeats(command)) control_.carryOut(command);
    break;
  case WQ_MBB_EVENT_REPEAT:
    if (repeats(command) && ++held_ > kHeld) control_.carryOut(command);
    break;
  case WQ_MBB_EVENT_RELEASE:
  case WQ_MBB_EVENT_LEAVE:
    WqMbbBtn_Up(&button);
    if (down && event == WQ_MBB_EVENT_RELEASE && !repeats(command)) control_.carryOut(command);
    break;
  default: break;
  }
}
