// The print dialog, as it answers when nobody is asked.

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/printing/printerpaper.h"
#include "platform/kernel/globalmem.h"

#include <cstring>

namespace platform {

namespace {

// A block's record, copied; nothing where the block is too small for one.
template <typename Record> std::optional<Record> recordOf(const BlockBytes &block) {
  Record record;
  if (block.size < sizeof record) return std::nullopt;
  std::memcpy(&record, block.at.get(), sizeof record);
  return record;
}

// The text at a place of a block, which may not end there.
std::string textAt(const BlockBytes &block, size_t offset) {
  if (offset >= block.size) return {};
  const char *text = static_cast<const char *>(block.at.get()) + offset;
  return {text, strnlen(text, block.size - offset)};
}

// A record with settings may be older and shorter than ours.
std::optional<DEVMODEA> settingsIn(const BlockBytes &block) {
  DEVMODEA settings{};
  if (block.size < offsetof(DEVMODEA, dmColor)) return std::nullopt;
  std::memcpy(&settings, block.at.get(), std::min(block.size, sizeof settings));
  settings.dmSize = static_cast<WORD>(std::min<size_t>(settings.dmSize, block.size));
  return settings;
}

// What the caller begins with: the printer that is named, first by the names and then by the settings.
std::optional<Printer> chosenPrinter(const BlockBytes &names, const std::optional<DEVMODEA> &settings) {
  if (const auto record = recordOf<DEVNAMES>(names)) return printerOf(textAt(names, record->wDeviceOffset).c_str());
  if (!settings) return printerOf(nullptr);
  constexpr size_t kCut = CCHDEVICENAME - 1; // a longer name is cut there
  const std::string name(reinterpret_cast<const char *>(settings->dmDeviceName),
                         strnlen(reinterpret_cast<const char *>(settings->dmDeviceName), kCut));
  for (const Printer &printer : printers())
    if (std::string_view(printer.name).substr(0, kCut) == name) return printer;
  return std::nullopt;
}

// Puts bytes into a block, which is made where there is none.
bool put(HGLOBAL &block, const void *bytes, size_t size) {
  HGLOBAL made = block ? GlobalReAlloc(block, size, GMEM_MOVEABLE | GMEM_ZEROINIT) : GlobalAlloc(GHND, size);
  void *const at = made ? GlobalLock(made) : nullptr;
  if (!at) return false;
  std::memcpy(at, bytes, size);
  GlobalUnlock(made);
  block = made;
  return true;
}

std::string namesOf(const Printer &printer) {
  DEVNAMES record{};
  size_t end = sizeof record;
  const auto place = [&](const std::string &name) {
    return static_cast<WORD>(std::exchange(end, end + name.size() + 1));
  };
  record.wDriverOffset = place(printer.driver);
  record.wDeviceOffset = place(printer.name);
  record.wOutputOffset = place(printer.port);
  record.wDefault = printer.standard ? DN_DEFAULTPRN : 0;
  std::string bytes(reinterpret_cast<const char *>(&record), sizeof record);
  for (const std::string *name : {&printer.driver, &printer.name, &printer.port})
    bytes.append(name->c_str(), name->size() + 1);
  return bytes;
}

bool accept(PRINTDLGA &dialog, const Printer &printer, const DEVMODEA &settings) {
  const std::string names = namesOf(printer);
  const bool devices = dialog.Flags & (PD_RETURNDC | PD_RETURNIC);
  std::shared_ptr<PrinterPaper> paper;
  if (devices) paper = std::make_shared<PrinterPaper>(printer, &settings);
  if (!put(dialog.hDevMode, &settings, sizeof settings) || !put(dialog.hDevNames, names.data(), names.size()))
    return false;
  if (!devices) return true;
  paper->onlyTells = !(dialog.Flags & PD_RETURNDC);
  dialog.hDC = openPaperDc(std::move(paper));
  return dialog.hDC != nullptr;
}

} // namespace

} // namespace platform

using namespace platform;

BOOL PrintDlgA(PRINTDLGA *dialog) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!dialog || dialog->lStructSize != sizeof *dialog) return FALSE;
    const bool usual = dialog->Flags & PD_RETURNDEFAULT;
    if (usual && (dialog->hDevMode || dialog->hDevNames)) return FALSE;
    const BlockBytes modeBlock = bytesOf(dialog->hDevMode), nameBlock = bytesOf(dialog->hDevNames);
    const std::optional<DEVMODEA> given = settingsIn(modeBlock);
    const std::optional<Printer> printer = chosenPrinter(nameBlock, given);
    if (!printer) return FALSE;
    const DEVMODEA settings = settingsOf(*printer, given ? &*given : nullptr);
    if (!usual && dialog->Flags & PD_USEDEVMODECOPIES) dialog->nCopies = 1; // the settings tell the real number
    return accept(*dialog, *printer, settings);
  });
}
