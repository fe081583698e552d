#include "platform/desktop/printing/choice.h"

#include "platform/desktop/drawing/dc.h"
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

std::optional<Printer> printerNamedIn(const DEVMODEA &settings) {
  constexpr size_t kCut = CCHDEVICENAME - 1; // a longer name is cut there
  const auto *const text = reinterpret_cast<const char *>(settings.dmDeviceName);
  const std::string_view name(text, strnlen(text, kCut));
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

std::string namesOf(const Printer &printer, const std::string &port) {
  DEVNAMES record{};
  size_t end = sizeof record;
  const auto place = [&](const std::string &name) {
    return static_cast<WORD>(std::exchange(end, end + name.size() + 1));
  };
  record.wDriverOffset = place(printer.driver);
  record.wDeviceOffset = place(printer.name);
  record.wOutputOffset = place(port);
  record.wDefault = printer.standard ? DN_DEFAULTPRN : 0;
  std::string bytes(reinterpret_cast<const char *>(&record), sizeof record);
  for (const std::string *name : {&printer.driver, &printer.name, &port}) bytes.append(name->c_str(), name->size() + 1);
  return bytes;
}

} // namespace

DWORD beginPrint(const PRINTDLGA &dialog, PrintChoice &choice) {
  const BlockBytes modeBlock = bytesOf(dialog.hDevMode), nameBlock = bytesOf(dialog.hDevNames);
  const std::optional<DEVMODEA> given = settingsIn(modeBlock);
  const auto names = recordOf<DEVNAMES>(nameBlock);
  std::optional<Printer> printer;
  if (names)
    printer = printerOf(textAt(nameBlock, names->wDeviceOffset).c_str());
  else
    printer = given ? printerNamedIn(*given) : printerOf(nullptr);
  if (!printer) return names || given ? PDERR_PRINTERNOTFOUND : PDERR_NODEFAULTPRN;
  choice.printer = *printer;
  choice.settings = settingsOf(*printer, given ? &*given : nullptr);
  return 0;
}

DWORD finishPrint(PRINTDLGA &dialog, const PrintChoice &choice) {
  const std::string names = namesOf(choice.printer, choice.file.empty() ? choice.printer.port : choice.file);
  const bool devices = dialog.Flags & (PD_RETURNDC | PD_RETURNIC);
  std::shared_ptr<PrinterPaper> paper;
  if (devices) paper = std::make_shared<PrinterPaper>(choice.printer, &choice.settings);
  if (!put(dialog.hDevMode, &choice.settings, sizeof choice.settings) ||
      !put(dialog.hDevNames, names.data(), names.size()))
    return CDERR_MEMALLOCFAILURE;
  if (!devices) return 0;
  paper->onlyTells = !(dialog.Flags & PD_RETURNDC);
  paper->file = choice.file;
  dialog.hDC = openPaperDc(std::move(paper));
  return dialog.hDC ? 0 : PDERR_CREATEICFAILURE;
}

} // namespace platform
