// The dialog in which the user chooses a printer, pages and copies.

#include "platform/desktop/dialogs/choicebox.h"
#include "platform/desktop/dialogs/dialog.h"
#include "platform/desktop/dialogs/filenames.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/printing/choice.h"
#include "platform/kernel/codepage.h"
#include "platform/winapi/boxes.h"

#include <algorithm>
#include <cstdlib>

namespace platform {

namespace {

constexpr LONG kWidth = 430, kHeight = 292, kMargin = 12, kLine = 22, kStep = 28, kLabel = 110, kNumber = 56,
               kButton = 90;
constexpr int kMostCopies = 9999;

std::vector<std::string> namesOf(const std::vector<Printer> &printers) {
  std::vector<std::string> names;
  for (const Printer &printer : printers) names.push_back(printer.name);
  return names;
}

// A sheet that has no name is the last one.
std::vector<std::string> sheetNames(const DEVMODEA &settings) {
  std::vector<std::string> names;
  for (const Sheet &sheet : sheets()) names.emplace_back(sheet.name);
  if (settings.dmPaperSize != DMPAPER_USER) return names;
  const auto millimetres = [](short tenths) { return std::to_string((tenths + 5) / 10); };
  names.push_back(millimetres(settings.dmPaperWidth) + " x " + millimetres(settings.dmPaperLength) + " mm");
  return names;
}

size_t indexOf(const std::vector<Printer> &printers, const std::string &name) {
  const auto at = std::find_if(printers.begin(), printers.end(), [&](const auto &one) { return one.name == name; });
  return at == printers.end() ? 0 : static_cast<size_t>(at - printers.begin());
}

size_t indexOfSheet(const DEVMODEA &settings) {
  const auto at = std::find_if(sheets().begin(), sheets().end(),
                               [&](const Sheet &sheet) { return sheet.number == settings.dmPaperSize; });
  return static_cast<size_t>(at - sheets().begin());
}

class PrintDialog final : public Dialog {
 public:
  PrintDialog(HWND handle, PRINTDLGA &record, PrintChoice &choice)
      : Dialog(handle), record_(record), choice_(choice), printers_(printers()) {}

  void build() override {
    addPrinter();
    addRange();
    addCopies();
    addFile();
    addButtons();
    setDefault(IDOK);
    setFirst(item(cmb4));
    setClientSize(kWidth, kHeight);
    enableFile();
    if (!has(PD_ENABLEPRINTHOOK)) return;
    hooked_ = true;
    SendMessageA(handle_, WM_INITDIALOG, wParamOf(item(cmb4)), addressOf(record_));
  }

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    const UINT_PTR taken = hooked_ ? callOut(record_.lpfnPrintHook, handle_, message, wParam, lParam) : 0;
    if (message == WM_INITDIALOG) return static_cast<LRESULT>(taken);
    if (taken) return GetWindowLongPtrA(handle_, DWLP_MSGRESULT);
    return Dialog::answer(message, wParam, lParam);
  }

 private:
  bool has(DWORD flag) const { return record_.Flags & flag; }
  bool countsInSettings() const { return has(PD_USEDEVMODECOPIES); }
  bool hasRange() const { return !has(PD_NOPAGENUMS) && record_.nMinPage < record_.nMaxPage; }

  // ---- The window

  static RECT row(int index, LONG left = kLabel, LONG right = kWidth) {
    const LONG top = kMargin + index * kStep;
    return {kMargin + left, top, right - kMargin, top + kLine};
  }

  void addText(const char *text, RECT place) {
    place.top += 4;
    add(kLabelClass, codePageFromUtf8(text), 0, place, 0);
  }
  HWND addCheck(const char *text, const RECT &place, int id, bool checked, DWORD kind = BS_AUTOCHECKBOX) {
    const HWND made = add(kButtonClass, codePageFromUtf8(text), WS_TABSTOP | kind, place, id);
    if (checked) SendMessageA(made, BM_SETCHECK, BST_CHECKED, 0);
    return made;
  }
  HWND addNumber(unsigned number, RECT place, int id) {
    place.right = place.left + kNumber;
    return add(kEditClass, std::to_string(number), WS_TABSTOP | ES_AUTOHSCROLL | ES_NUMBER, place, id,
               WS_EX_CLIENTEDGE);
  }
  std::shared_ptr<ChoiceBox> addChoice(std::vector<std::string> texts, size_t chosen, const RECT &place, int id) {
    DialogLook look;
    look.style = WS_TABSTOP;
    look.exStyle = WS_EX_CLIENTEDGE;
    std::shared_ptr<ChoiceBox> made;
    addPart(handle_, place, id, look,
            [&](HWND window) { return made = std::make_shared<ChoiceBox>(window, std::move(texts), chosen); });
    return made;
  }

  void addPrinter() {
    addText("プリンター(&P):", row(0, 0, kLabel + kMargin));
    printer_ = addChoice(namesOf(printers_), indexOf(printers_, choice_.printer.name), row(0), cmb4);
    addText("用紙(&Z):", row(1, 0, kLabel + kMargin));
    const DEVMODEA &settings = choice_.settings;
    paper_ = addChoice(sheetNames(settings), indexOfSheet(settings), row(1, kLabel, 300), cmb2);
    addCheck("横向き(&D)", row(1, 300), chx3, settings.dmOrientation == DMORIENT_LANDSCAPE);
  }

  void addRange() {
    const bool pages = has(PD_PAGENUMS) && hasRange(), part = has(PD_SELECTION) && !has(PD_NOSELECTION);
    addText("印刷範囲:", row(2, 0, kLabel + kMargin));
    addCheck("すべて(&A)", row(2), rad1, !pages && !part, BS_AUTORADIOBUTTON | WS_GROUP);
    addCheck("選択した部分(&S)", row(3), rad2, part && !pages, BS_AUTORADIOBUTTON);
    addCheck("ページ指定(&G)", row(4, kLabel, 232), rad3, pages, BS_AUTORADIOBUTTON);
    const auto within = [&](WORD page) { return std::clamp(page, record_.nMinPage, record_.nMaxPage); };
    addNumber(hasRange() ? within(record_.nFromPage) : 1u, row(4, 222), edt1);
    addText("から", row(4, 284, 338));
    addNumber(hasRange() ? within(record_.nToPage) : 1u, row(4, 318), edt2);
    addText("まで", row(4, 380));
    EnableWindow(item(rad2), !has(PD_NOSELECTION));
    for (const int id : {rad3, edt1, edt2}) EnableWindow(item(id), hasRange());
  }

  // Settings that the program gave count before its record.
  void addCopies() {
    const DEVMODEA &settings = choice_.settings;
    const bool inSettings = countsInSettings() || record_.hDevMode;
    const int copies = inSettings ? settings.dmCopies : record_.nCopies;
    const bool collates = countsInSettings() ? settings.dmCollate == DMCOLLATE_TRUE : has(PD_COLLATE);
    addText("部数(&C):", row(5, 0, kLabel + kMargin));
    const HWND box = addNumber(static_cast<unsigned>(std::clamp(copies, 1, kMostCopies)), row(5), edt3);
    SendMessageA(box, EM_LIMITTEXT, 4, 0);
    addCheck("部単位で印刷(&O)", row(5, kLabel + kNumber + 16), chx2, collates);
    SetWindowLongA(item(chx2), GWL_STYLE, GetWindowLongA(item(chx2), GWL_STYLE) | WS_GROUP);
  }

  void addFile() {
    if (!has(PD_HIDEPRINTTOFILE)) addCheck("ファイルへ出力(&L)", row(6), chx1, has(PD_PRINTTOFILE));
    EnableWindow(item(chx1), !has(PD_DISABLEPRINTTOFILE));
    addText("ファイル名(&F):", row(7, 0, kLabel + kMargin));
    add(kEditClass, choice_.file, WS_TABSTOP | ES_AUTOHSCROLL, row(7, kLabel, kWidth - kButton - 8), edt4,
        WS_EX_CLIENTEDGE);
    add(kButtonClass, codePageFromUtf8("参照(&B)..."), WS_TABSTOP, row(7, kWidth - kButton - 2 * kMargin), psh3);
  }

  void addButtons() {
    RECT place = row(8);
    place.top = kHeight - kMargin - kLine - 2, place.bottom = kHeight - kMargin;
    place.left = place.right - kButton;
    const RECT left = {place.left - kButton - 8, place.top, place.left - 8, place.bottom};
    add(kButtonClass, "OK", WS_TABSTOP, left, IDOK);
    add(kButtonClass, codePageFromUtf8("キャンセル"), WS_TABSTOP, place, IDCANCEL);
  }

  // ---- What is chosen

  bool isChecked(int id) const { return item(id) && SendMessageA(item(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
  std::string textIn(int id) const {
    const Window *const field = recordOf(item(id));
    return field ? field->text : "";
  }
  int numberIn(int id) const { return std::atoi(textIn(id).substr(0, 6).c_str()); }
  const Printer &printerNow() const { return printers_[printer_->chosen()]; }
  bool goesToFile() const { return printerNow().queue.empty() || isChecked(chx1); }

  void enableFile() {
    for (const int id : {edt4, psh3}) EnableWindow(item(id), goesToFile());
  }

  bool command(int id, int what) override {
    switch (id) {
    case IDOK: accept(); return true;
    case IDCANCEL: end(0); return true;
    case chx1:
    case cmb4: enableFile(); return true;
    case psh3: lookForFile(); return true;
    case edt1:
    case edt2:
      if (what == EN_CHANGE) SendMessageA(item(rad3), BM_CLICK, 0, 0);
      return true;
    default: return false;
    }
  }

  void lookForFile() {
    char path[MAX_PATH] = "";
    copyWhole(textIn(edt4), path, sizeof path);
    OPENFILENAMEA file{};
    file.lStructSize = sizeof file;
    file.hwndOwner = handle_;
    file.lpstrFilter = "PDF (*.pdf)\0*.pdf\0";
    file.lpstrFile = path;
    file.nMaxFile = sizeof path;
    file.lpstrDefExt = "pdf";
    file.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR | OFN_OVERWRITEPROMPT;
    if (!GetSaveFileNameA(&file) || !recordOf(handle_)) return;
    agreed_ = path;
    SetWindowTextA(item(edt4), path);
  }

  void accept() {
    const int copies = numberIn(edt3), from = numberIn(edt1), to = numberIn(edt2);
    const bool pages = isChecked(rad3);
    if (copies < 1) return refuse(edt3, "部数は 1 以上にしてください。");
    if (pages && (from < record_.nMinPage || to > record_.nMaxPage || from > to)) return refuseRange();
    std::string file;
    if (goesToFile() && !takesFile(file)) return;
    choice_.printer = printerNow();
    choice_.file = file;
    choice_.settings = settingsOf(choice_.printer, &choice_.settings);
    takePaper();
    takeCopies(copies);
    takeFlags();
    if (pages) record_.nFromPage = static_cast<WORD>(from), record_.nToPage = static_cast<WORD>(to);
    end(kAccepted);
  }

  void refuse(int id, const std::string &why) {
    MessageBoxA(handle_, codePageFromUtf8(why).c_str(), recordOf(handle_)->text.c_str(), MB_OK | MB_ICONEXCLAMATION);
    if (recordOf(handle_)) SetFocus(item(id));
  }
  void refuseRange() {
    refuse(edt1, "ページは " + std::to_string(record_.nMinPage) + " から " + std::to_string(record_.nMaxPage) +
                     " までの範囲で指定してください。");
  }

  // A file that is there is replaced when the user wants it.
  bool takesFile(std::string &file) {
    const std::string typed = textIn(edt4);
    if (typed.empty()) return true;
    file = inFolder(currentFolderName(), typed);
    if (!isName(file) || isFolder(file) || !isFolder(folderOf(file)))
      return refuse(edt4, "このファイル名は使えません。"), false;
    if (!exists(file) || foldedName(file) == foldedName(agreed_)) return true;
    const std::string question = file + "\n" + codePageFromUtf8("同じ名前のファイルがあります。置き換えますか?");
    return MessageBoxA(handle_, question.c_str(), recordOf(handle_)->text.c_str(),
                       MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) == IDYES;
  }

  void takePaper() {
    DEVMODEA asked = choice_.settings;
    asked.dmOrientation = static_cast<short>(isChecked(chx3) ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT);
    if (const size_t sheet = paper_->chosen(); sheet < sheets().size()) {
      asked.dmPaperSize = sheets()[sheet].number;
      asked.dmFields = (asked.dmFields | DM_PAPERSIZE) & ~(DM_PAPERWIDTH | DM_PAPERLENGTH);
    }
    choice_.settings = settingsOf(choice_.printer, &asked);
  }

  void takeCopies(int copies) {
    const bool collates = isChecked(chx2);
    const int inSettings = countsInSettings() ? copies : 1;
    choice_.settings.dmCopies = static_cast<short>(inSettings);
    choice_.settings.dmCollate = static_cast<short>(countsInSettings() && !collates ? DMCOLLATE_FALSE : DMCOLLATE_TRUE);
    record_.nCopies = static_cast<WORD>(countsInSettings() ? 1 : copies);
    record_.Flags &= ~PD_COLLATE;
    if (!countsInSettings() && collates) record_.Flags |= PD_COLLATE;
  }

  void takeFlags() {
    record_.Flags &= ~(PD_PAGENUMS | PD_SELECTION | PD_PRINTTOFILE);
    if (isChecked(rad2)) record_.Flags |= PD_SELECTION;
    if (isChecked(rad3)) record_.Flags |= PD_PAGENUMS;
    if (isChecked(chx1)) record_.Flags |= PD_PRINTTOFILE;
  }

  PRINTDLGA &record_;
  PrintChoice &choice_;
  const std::vector<Printer> printers_;
  std::shared_ptr<ChoiceBox> printer_, paper_;
  std::string agreed_; // the file that the user has chosen in a dialog of its own, which asks
  bool hooked_ = false;
};

// Whether the user wants to print.
bool ask(PRINTDLGA &dialog, PrintChoice &choice) {
  DialogLook look;
  look.caption = codePageFromUtf8("印刷");
  return runDialog(dialog.hwndOwner, Disables::owner, look, [&](HWND window) {
           return std::make_shared<PrintDialog>(window, dialog, choice);
         }) == Dialog::kAccepted;
}

DWORD errorIn(const PRINTDLGA *dialog) {
  if (!dialog) return CDERR_INITIALIZATION;
  if (dialog->lStructSize != sizeof *dialog) return CDERR_STRUCTSIZE;
  if (dialog->Flags & PD_RETURNDEFAULT && (dialog->hDevMode || dialog->hDevNames)) return PDERR_RETDEFFAILURE;
  if (dialog->Flags & PD_ENABLEPRINTHOOK && !dialog->lpfnPrintHook) return CDERR_NOHOOK;
  return 0;
}

} // namespace

} // namespace platform

using namespace platform;

BOOL PrintDlgA(PRINTDLGA *dialog) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    failDialog(0);
    if (const DWORD error = errorIn(dialog)) return failDialog(error);
    PrintChoice choice;
    if (const DWORD error = beginPrint(*dialog, choice)) return failDialog(error);
    const bool usual = dialog->Flags & PD_RETURNDEFAULT;
    if (!usual && answersItself() && dialog->Flags & PD_USEDEVMODECOPIES)
      dialog->nCopies = 1; // the settings tell the real number
    else if (!usual && !answersItself() && !ask(*dialog, choice))
      return FALSE;
    const DWORD error = finishPrint(*dialog, choice);
    return !error || failDialog(error);
  });
}
