// The dialogs in which the user chooses files.

#include "platform/desktop/dialogs/choicebox.h"
#include "platform/desktop/dialogs/desktopdialog.h"
#include "platform/desktop/dialogs/dialog.h"
#include "platform/desktop/dialogs/filechoice.h"
#include "platform/desktop/dialogs/filehook.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"
#include "platform/winapi/boxes.h"

#include <cstring>

namespace platform {

namespace {

constexpr int kUpId = 0x0500;
constexpr LONG kWidth = 460, kHeight = 320, kMargin = 10, kLine = 22, kLabel = 96, kButton = 90;

std::vector<std::string> textsOf(const FileChoice &choice) {
  std::vector<std::string> texts;
  for (const FileChoice::Filter &filter : choice.filters()) texts.push_back(filter.text);
  return texts;
}

class FileDialog final : public Dialog {
 public:
  FileDialog(HWND handle, const FileChoice &choice) : Dialog(handle), choice_(choice), folder_(choice.folder()) {}

  void build() override {
    addFolder();
    addName(choice_.name());
    addButtons();
    setDefault(IDOK);
    setFirst(item(cmb13));
    setClientSize(kWidth, kHeight);
    enter(folder_);
    hook_.open(handle_, choice_.record());
  }

  void shown() override {
    hook_.tell(CDN_INITDONE);
    hook_.tell(CDN_FOLDERCHANGE);
  }

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
    case CDM_GETSPEC: return handOut(typed(), wParam, lParam);
    case CDM_GETFILEPATH: return handOut(inFolder(folder_, typed()), wParam, lParam);
    case CDM_GETFOLDERPATH: return handOut(folder_, wParam, lParam);
    default: return Dialog::answer(message, wParam, lParam);
    }
  }

 private:
  bool has(DWORD flag) const { return choice_.has(flag); }
  std::string typed() const {
    const Window *const field = recordOf(item(cmb13));
    return field ? field->text : "";
  }

  // ---- The window

  void addFolder() {
    const LONG right = kWidth - kMargin, top = kMargin + kLine + 6, bottom = kHeight - kMargin - 3 * (kLine + 6);
    add(kLabelClass, codePageFromUtf8("ファイルの場所(&I):"), 0,
        {kMargin, kMargin + 4, kMargin + kLabel, kMargin + kLine}, stc4);
    add(kLabelClass, "", SS_NOPREFIX, {kMargin + kLabel, kMargin + 4, right - kButton - 6, kMargin + kLine}, cmb2);
    add(kButtonClass, codePageFromUtf8("上へ(&U)"), WS_TABSTOP, {right - kButton, kMargin, right, kMargin + kLine},
        kUpId);
    DialogLook look;
    look.style = WS_TABSTOP;
    look.exStyle = WS_EX_CLIENTEDGE;
    addPart(handle_, {kMargin, top, right, bottom}, lst1, look,
            [&](HWND window) { return list_ = std::make_shared<ItemList>(window, has(OFN_ALLOWMULTISELECT)); });
  }

  RECT row(int index) const {
    const LONG top = kHeight - kMargin - (3 - index) * (kLine + 6) + 6;
    return {kMargin + kLabel, top, kWidth - kMargin - kButton - 8, top + kLine};
  }

  void addLabel(int index, const char *text, int id) {
    const RECT place = row(index);
    add(kLabelClass, codePageFromUtf8(text), 0, {kMargin, place.top + 4, place.left, place.bottom}, id);
  }

  void addName(const std::string &name) {
    addLabel(0, "ファイル名(&N):", stc3);
    add(kEditClass, name, WS_TABSTOP | ES_AUTOHSCROLL, row(0), cmb13, WS_EX_CLIENTEDGE);
    addLabel(1, "ファイルの種類(&T):", stc2);
    DialogLook look;
    look.style = WS_TABSTOP;
    look.exStyle = WS_EX_CLIENTEDGE;
    addPart(handle_, row(1), cmb1, look, [&](HWND window) {
      return choiceBox_ = std::make_shared<ChoiceBox>(window, textsOf(choice_), choice_.firstFilter());
    });
  }

  void addButtons() {
    if (!has(OFN_HIDEREADONLY)) {
      const HWND box = add(kButtonClass, codePageFromUtf8("読み取り専用ファイルとして開く(&R)"),
                           WS_TABSTOP | BS_AUTOCHECKBOX, row(2), chx1);
      SendMessageA(box, BM_SETCHECK, has(OFN_READONLY) ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    RECT place = row(0);
    place.left = place.right + 8, place.right = kWidth - kMargin;
    add(kButtonClass, codePageFromUtf8(choice_.opens() ? "開く(&O)" : "保存(&S)"), WS_TABSTOP, place, IDOK);
    place.top = row(1).top, place.bottom = row(1).bottom;
    add(kButtonClass, codePageFromUtf8("キャンセル"), WS_TABSTOP, place, IDCANCEL);
  }

  // ---- The folder

  std::string patterns() const { return pattern_.empty() ? choice_.patternsOf(choiceBox_->chosen()) : pattern_; }

  void enter(const std::string &folder) {
    folder_ = folder;
    list_->fill(listFolder(folder_, patternsIn(patterns())));
    SetWindowTextA(item(cmb2), folder_.c_str());
    EnableWindow(item(kUpId), !folder_.empty());
  }

  void change(const std::string &folder) {
    enter(folder);
    SetWindowTextA(item(cmb13), "");
    hook_.tell(CDN_FOLDERCHANGE);
  }

  // The names of the selected files become the text.
  void selected() {
    std::vector<std::string> names;
    for (const size_t index : list_->selection())
      if (!list_->items()[index].folder) names.push_back(list_->items()[index].name);
    std::string text;
    for (const std::string &name : names) text += (text.empty() ? "\"" : " \"") + name + "\"";
    if (!names.empty()) SetWindowTextA(item(cmb13), (names.size() == 1 ? names[0] : text).c_str());
    hook_.tell(CDN_SELCHANGE);
  }

  void chosen() {
    const std::optional<ItemList::Way> way = list_->way();
    const std::vector<size_t> selection = list_->selection();
    if (way == ItemList::Way::out) return up();
    if (selection.size() != 1) return;
    const ItemList::Item &chosen = list_->items()[selection[0]];
    if (chosen.folder)
      change(inFolder(folder_, chosen.name));
    else if (!way)
      accept();
  }

  void up() {
    if (!folder_.empty()) change(folderOf(folder_));
  }

  // ---- The choice

  bool command(int id, int what) override {
    switch (id) {
    case IDOK: accept(); return true;
    case IDCANCEL: end(0); return true;
    case kUpId: up(); return true;
    case lst1:
      if (what == ItemList::kSelected) selected();
      if (what == ItemList::kChosen) chosen();
      return true;
    case cmb1:
      pattern_.clear();
      choice_.record().nFilterIndex = static_cast<DWORD>(choiceBox_->chosen() + 1);
      enter(folder_);
      hook_.tell(CDN_TYPECHANGE);
      return true;
    default: return false;
    }
  }

  // A folder that is selected in the list is opened where the focus is there.
  bool opensSelected() {
    const std::vector<size_t> selection = list_->selection();
    if (GetFocus() != item(lst1) || selection.size() != 1 || !list_->items()[selection[0]].folder) return false;
    change(inFolder(folder_, list_->items()[selection[0]].name));
    return true;
  }

  void accept() {
    if (opensSelected()) return;
    std::vector<std::string> names = namesIn(typed(), has(OFN_ALLOWMULTISELECT) && !has(OFN_EXPLORER));
    if (names.empty()) return;
    if (names.size() == 1 && goes(names[0])) return;
    if (names.size() > 1 && !has(OFN_ALLOWMULTISELECT)) names = {typed()}; // which is no name
    for (std::string &name : names) {
      name = inFolder(folder_, name);
      if (!choice_.check(handle_, name, patterns(), false)) return;
    }
    finish(names);
  }

  // What is no file: patterns choose what is listed, folders are entered.
  bool goes(const std::string &name) {
    const std::string path = inFolder(folder_, name);
    if (isPattern(name)) {
      pattern_ = name;
      enter(folder_);
    } else if (isName(path) && isFolder(path)) {
      change(path);
    } else {
      return false;
    }
    return true;
  }

  void finish(const std::vector<std::string> &paths) {
    if (const DWORD error = choice_.write(folder_, paths, choiceBox_->chosen())) {
      failDialog(error);
      return end(0);
    }
    choice_.takeReadOnly(item(chx1) && SendMessageA(item(chx1), BM_GETCHECK, 0, 0));
    if (hook_.tell(CDN_FILEOK)) return;
    choice_.finish(folder_);
    end(kAccepted);
  }

  const FileChoice &choice_;
  std::string folder_;  // empty for the drives
  std::string pattern_; // that the user has typed, instead of the filter's
  std::shared_ptr<ItemList> list_;
  std::shared_ptr<ChoiceBox> choiceBox_;
  FileHook hook_;
};

// An error in the record, 0 for none.
DWORD errorIn(const OPENFILENAMEA *record) {
  if (!record || record->lStructSize < OPENFILENAME_SIZE_VERSION_400A) return CDERR_STRUCTSIZE;
  const bool ends = !record->lpstrFile || !record->nMaxFile || std::memchr(record->lpstrFile, '\0', record->nMaxFile);
  return ends ? 0 : FNERR_INVALIDFILENAME;
}

BOOL choose(OPENFILENAMEA *record, bool opens) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    failDialog(0);
    if (const DWORD error = errorIn(record)) return failDialog(error);
    if (answersItself()) return FALSE;
    DialogLook look;
    const bool titled = record->lpstrTitle && *record->lpstrTitle;
    look.caption = titled ? record->lpstrTitle : codePageFromUtf8(opens ? "開く" : "名前を付けて保存");
    const FileChoice choice(*record, opens);
    if (const auto chosen = chooseOnDesktop(choice, look)) return *chosen;
    return runDialog(record->hwndOwner, Disables::owner, look,
                     [&](HWND window) { return std::make_shared<FileDialog>(window, choice); }) == Dialog::kAccepted;
  });
}

} // namespace

} // namespace platform

BOOL GetOpenFileNameA(OPENFILENAMEA *choice) { return platform::choose(choice, true); }
BOOL GetSaveFileNameA(OPENFILENAMEA *choice) { return platform::choose(choice, false); }
