// The list of printers, and settings. The system's own printers are asked of the spooler's programs, which every
// version of it has, so that no library of it is needed.

#include "platform/desktop/printing/printers.h"

#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace platform {

namespace {

constexpr char kFilePrinter[] = "PDF", kFilePort[] = "FILE:", kFileDriver[] = "PDF", kSpoolDriver[] = "CUPS";
constexpr int kUsualDpi = 600, kHighestDpi = 4800;
constexpr int kMarginParts = 6; // of an inch: what printers leave free at each edge

// What a command prints, by lines; nothing where there is no such command.
std::vector<std::string> linesOf(const char *command) {
  const DesktopUnlock others;
  std::vector<std::string> lines;
  const std::unique_ptr<FILE, int (*)(FILE *)> output(popen(command, "re"), pclose);
  char line[512];
  while (output && std::fgets(line, sizeof line, output.get())) {
    line[std::strcspn(line, "\n")] = 0;
    lines.emplace_back(line);
  }
  return lines;
}

std::vector<Printer> spooled() {
  const std::string_view kDefault = "system default destination: ";
  std::vector<Printer> found;
  std::string standard;
  for (const std::string &line : linesOf("LC_ALL=C timeout 3 lpstat -e -d 2>/dev/null"))
    if (line.starts_with(kDefault))
      standard = line.substr(kDefault.size());
    else if (!line.empty() && line.find(' ') == std::string::npos)
      found.push_back({codePageFromUtf8(line), kSpoolDriver, codePageFromUtf8(line), line, false});
  for (Printer &printer : found) printer.standard = printer.queue == standard;
  return found;
}

// A program asks again and again while it fills one list.
const std::vector<Printer> &known() {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::seconds kGood{2};
  static auto *list = new std::vector<Printer>;
  static Clock::time_point asked;
  if (!list->empty() && Clock::now() - asked < kGood) return *list;
  std::vector<Printer> all = spooled();
  const bool chosen = std::any_of(all.begin(), all.end(), [](const Printer &printer) { return printer.standard; });
  all.insert(all.begin(), {kFilePrinter, kFileDriver, kFilePort, "", !chosen});
  *list = std::move(all);
  asked = Clock::now();
  return *list;
}

const Sheet *sheetOf(short number) {
  const auto found =
      std::find_if(sheets().begin(), sheets().end(), [&](const Sheet &one) { return one.number == number; });
  return found == sheets().end() ? nullptr : &*found;
}

template <size_t Size> void copyName(BYTE (&to)[Size], std::string_view name) {
  copyWhole(name, reinterpret_cast<char *>(to), Size);
}

void setSheet(DEVMODEA &mode, const Sheet &sheet) {
  mode.dmPaperSize = sheet.number;
  mode.dmPaperWidth = sheet.width;
  mode.dmPaperLength = sheet.length;
  mode.dmFields = (mode.dmFields | DM_PAPERSIZE) & ~(DM_PAPERWIDTH | DM_PAPERLENGTH);
  copyName(mode.dmFormName, sheet.name);
}

DEVMODEA usualSettings(const Printer &printer) {
  DEVMODEA mode{};
  copyName(mode.dmDeviceName, printer.name);
  mode.dmSpecVersion = mode.dmDriverVersion = DM_SPECVERSION;
  mode.dmSize = sizeof mode;
  mode.dmFields = DM_ORIENTATION | DM_COPIES | DM_PRINTQUALITY | DM_YRESOLUTION | DM_COLOR | DM_DUPLEX | DM_COLLATE;
  mode.dmOrientation = DMORIENT_PORTRAIT;
  mode.dmScale = 100;
  mode.dmCopies = 1;
  mode.dmPrintQuality = mode.dmYResolution = kUsualDpi;
  mode.dmColor = DMCOLOR_COLOR;
  mode.dmDuplex = DMDUP_SIMPLEX;
  mode.dmCollate = DMCOLLATE_TRUE;
  setSheet(mode, sheets().front());
  return mode;
}

// What a program hands in may be an older, shorter record.
DEVMODEA readSettings(const DEVMODEA &asked) {
  DEVMODEA read{};
  if (asked.dmSize >= offsetof(DEVMODEA, dmColor))
    std::memcpy(&read, &asked, std::min<size_t>(asked.dmSize, sizeof read));
  return read;
}

void chooseSheet(DEVMODEA &mode, const DEVMODEA &asked) {
  if (asked.dmFields & DM_PAPERSIZE)
    if (const Sheet *sheet = sheetOf(asked.dmPaperSize)) setSheet(mode, *sheet);
  const bool width = asked.dmFields & DM_PAPERWIDTH && asked.dmPaperWidth > 0;
  const bool length = asked.dmFields & DM_PAPERLENGTH && asked.dmPaperLength > 0;
  if (!width && !length) return;
  if (width) mode.dmPaperWidth = asked.dmPaperWidth;
  if (length) mode.dmPaperLength = asked.dmPaperLength;
  mode.dmPaperSize = DMPAPER_USER;
  mode.dmFields |= DM_PAPERWIDTH | DM_PAPERLENGTH;
  copyName(mode.dmFormName, "");
}

void chooseResolution(DEVMODEA &mode, const DEVMODEA &asked) {
  const auto dots = [](short quality) -> short {
    switch (quality) {
    case DMRES_DRAFT: return kUsualDpi / 4;
    case DMRES_LOW: return kUsualDpi / 2;
    default: return static_cast<short>(quality > 0 ? std::min<int>(quality, kHighestDpi) : kUsualDpi);
    }
  };
  if (asked.dmFields & DM_PRINTQUALITY) mode.dmPrintQuality = mode.dmYResolution = dots(asked.dmPrintQuality);
  if (asked.dmFields & DM_YRESOLUTION && asked.dmYResolution > 0) mode.dmYResolution = dots(asked.dmYResolution);
}

} // namespace

const std::vector<Sheet> &sheets() {
  static const auto *const all = new std::vector<Sheet>{
      {DMPAPER_A4, 2100, 2970, "A4"},       {DMPAPER_LETTER, 2159, 2794, "Letter"},
      {DMPAPER_LEGAL, 2159, 3556, "Legal"}, {DMPAPER_TABLOID, 2794, 4318, "Tabloid"},
      {DMPAPER_A3, 2970, 4200, "A3"},       {DMPAPER_EXECUTIVE, 1842, 2667, "Executive"},
      {DMPAPER_A5, 1480, 2100, "A5"},       {DMPAPER_B4, 2570, 3640, "B4 (JIS)"},
      {DMPAPER_B5, 1820, 2570, "B5 (JIS)"},
  };
  return *all;
}

std::vector<Printer> printers() { return known(); }

std::optional<Printer> printerOf(const char *name) {
  for (const Printer &printer : known())
    if (name ? printer.name == name : printer.standard) return printer;
  return std::nullopt;
}

DEVMODEA settingsOf(const Printer &printer, const DEVMODEA *given) {
  DEVMODEA mode = usualSettings(printer);
  if (!given) return mode;
  const DEVMODEA asked = readSettings(*given);
  chooseSheet(mode, asked);
  chooseResolution(mode, asked);
  if (asked.dmFields & DM_ORIENTATION && asked.dmOrientation == DMORIENT_LANDSCAPE)
    mode.dmOrientation = asked.dmOrientation;
  if (asked.dmFields & DM_COPIES) mode.dmCopies = std::max<short>(1, asked.dmCopies);
  if (asked.dmFields & DM_COLOR) mode.dmColor = asked.dmColor;
  if (asked.dmFields & DM_DUPLEX) mode.dmDuplex = asked.dmDuplex;
  if (asked.dmFields & DM_COLLATE) mode.dmCollate = asked.dmCollate;
  return mode;
}

PageForm pageOf(const Printer &printer, const DEVMODEA &settings) {
  PageForm form;
  form.dpiX = settings.dmPrintQuality;
  form.dpiY = settings.dmYResolution;
  int width = settings.dmPaperWidth, length = settings.dmPaperLength;
  if (settings.dmOrientation == DMORIENT_LANDSCAPE) std::swap(width, length);
  const auto pixels = [](int tenths, int dpi) { return std::max(1, (tenths * dpi + 127) / 254); };
  form.sheet = {pixels(width, form.dpiX), pixels(length, form.dpiY)};
  form.inner = {QPoint(), form.sheet};
  const int x = form.dpiX / kMarginParts, y = form.dpiY / kMarginParts;
  const bool margins = !printer.queue.empty() && form.sheet.width() > 4 * x && form.sheet.height() > 4 * y;
  if (margins) form.inner.adjust(x, y, -x, -y);
  return form;
}

namespace {

// Records at the front of a buffer, and what they point at behind them. Without room it only counts.
class Block {
 public:
  Block(BYTE *buffer, size_t size, size_t records) : buffer_(buffer), size_(size), next_(records) {}

  size_t needed() const { return next_; }
  bool fits() const { return buffer_ && next_ <= size_; }
  // Copies bytes, and tells where they are.
  BYTE *add(const void *bytes, size_t count, size_t alignment) {
    next_ = (next_ + alignment - 1) / alignment * alignment;
    BYTE *const at = buffer_ && next_ + count <= size_ ? buffer_ + next_ : nullptr;
    next_ += count;
    return at ? static_cast<BYTE *>(std::memcpy(at, bytes, count)) : nullptr;
  }
  LPSTR text(const std::string &text) { return reinterpret_cast<LPSTR>(add(text.c_str(), text.size() + 1, 1)); }

 private:
  BYTE *const buffer_;
  const size_t size_;
  size_t next_;
};

DWORD attributesOf(const Printer &printer) {
  return PRINTER_ATTRIBUTE_LOCAL | (printer.standard ? PRINTER_ATTRIBUTE_DEFAULT : 0u);
}

void describe(const Printer &printer, Block &block, PRINTER_INFO_1A &info) {
  info.Flags = PRINTER_ENUM_ICON8;
  info.pDescription = block.text(printer.name + "," + printer.driver + ",");
  info.pName = block.text(printer.name);
  info.pComment = block.text("");
}

void describe(const Printer &printer, Block &block, PRINTER_INFO_2A &info) {
  const DEVMODEA mode = settingsOf(printer, nullptr);
  info.pDevMode = reinterpret_cast<DEVMODEA *>(block.add(&mode, sizeof mode, alignof(DEVMODEA)));
  info.pPrinterName = block.text(printer.name);
  info.pShareName = block.text("");
  info.pPortName = block.text(printer.port);
  info.pDriverName = block.text(printer.driver);
  info.pComment = block.text("");
  info.pLocation = block.text("");
  info.pSepFile = block.text("");
  info.pPrintProcessor = block.text("winprint");
  info.pDatatype = block.text("RAW");
  info.pParameters = block.text("");
  info.Attributes = attributesOf(printer);
}

void describe(const Printer &printer, Block &block, PRINTER_INFO_4A &info) {
  info.pPrinterName = block.text(printer.name);
  info.Attributes = attributesOf(printer);
}

void describe(const Printer &printer, Block &block, PRINTER_INFO_5A &info) {
  info.pPrinterName = block.text(printer.name);
  info.pPortName = block.text(printer.port);
  info.Attributes = attributesOf(printer);
}

template <typename Info>
BOOL list(const std::vector<Printer> &all, BYTE *buffer, size_t size, DWORD *needed, DWORD *returned) {
  Block block(buffer, size, all.size() * sizeof(Info));
  for (size_t i = 0; i < all.size(); ++i) {
    Info info{};
    describe(all[i], block, info);
    if (buffer && (i + 1) * sizeof info <= size) std::memcpy(buffer + i * sizeof info, &info, sizeof info);
  }
  *needed = static_cast<DWORD>(block.needed());
  if (!block.fits() && !all.empty()) return failWith(ERROR_INSUFFICIENT_BUFFER);
  *returned = static_cast<DWORD>(all.size());
  return TRUE;
}

} // namespace

} // namespace platform

using namespace platform;

BOOL EnumPrintersA(DWORD flags, LPSTR, DWORD level, BYTE *buffer, DWORD size, DWORD *needed, DWORD *returned) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!needed || !returned) return failWith(ERROR_INVALID_PARAMETER);
    *needed = *returned = 0;
    std::vector<Printer> all = printers();
    if (!(flags & PRINTER_ENUM_LOCAL)) // connections are printers of other machines, which the spooler makes local ones
      std::erase_if(all, [&](const Printer &printer) { return !(flags & PRINTER_ENUM_DEFAULT && printer.standard); });
    switch (level) {
    case 1: return list<PRINTER_INFO_1A>(all, buffer, size, needed, returned);
    case 2: return list<PRINTER_INFO_2A>(all, buffer, size, needed, returned);
    case 4: return list<PRINTER_INFO_4A>(all, buffer, size, needed, returned);
    case 5: return list<PRINTER_INFO_5A>(all, buffer, size, needed, returned);
    default: return failWith(ERROR_INVALID_LEVEL);
    }
  });
}

BOOL GetDefaultPrinterA(LPSTR buffer, DWORD *size) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!size) return failWith(ERROR_INVALID_PARAMETER);
    const std::optional<Printer> printer = printerOf(nullptr);
    if (!printer) return failWith(ERROR_FILE_NOT_FOUND);
    const DWORD room = std::exchange(*size, static_cast<DWORD>(printer->name.size()) + 1);
    if (!buffer || room < *size) return failWith(ERROR_INSUFFICIENT_BUFFER);
    std::memcpy(buffer, printer->name.c_str(), *size);
    return TRUE;
  });
}
