// The dialogs in which the user chooses files.

#include "platform/desktop/dialogs/choicebox.h"
#include "platform/desktop/dialogs/dialog.h"
#include "platform/desktop/dialogs/filehook.h"
#include "platform/desktop/dialogs/filenames.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"
#include "platform/winapi/boxes.h"

#include <algorithm>
#include <cstring>

namespace platform {

namespace {

constexpr int kUpId = 0x0500;
constexpr LONG kWidth = 460, kHeight = 320, kMargin = 10, kLine = 22, kLabel = 96, kButton = 90;

struct Filter {
  std::string text, patterns;
};

std::vector<Filter> filtersIn(LPCSTR list) {
  std::vector<Filter> filters;
  for (LPCSTR at = list; at && *at;) {
    Filter filter{at, ""};
    at += filter.text.size() + 1;
    filter.patterns = at;
    at += filter.patterns.size() + 1;
    filters.push_back(std::move(filter));
  }
  return filters;
}

std::vector<std::string> textsOf(const std::vector<Filter> &filters) {
  std::vector<std::string> texts;
  for (const Filter &filter : filters) texts.push_back(filter.text);
  return texts;
}

// Copies a text into room of the program's with a NUL. Result: whether there is enough.
bool copyOut(const std::string &text, LPSTR room, DWORD size) {
  if (!room || size <= text.size()) return false;
  std::memcpy(room, text.c_str(), text.size() + 1);
  return true;
}

LRESULT handOut(const std::string &text, WPARAM size, LPARAM room) {
  if (room && size) copyWhole(text, reinterpret_cast<char *>(room), size);
  return static_cast<LRESULT>(text.size() + 1);
}

class FileDialog final : public Dialog {
 public:
  FileDialog(HWND handle, OPENFILENAMEA &choice, bool opens)
      : Dialog(handle), choice_(choice), opens_(opens), filters_(filtersIn(choice.lpstrFilter)) {}

  void build() override {
    const std::string name = choice_.lpstrFile ? choice_.lpstrFile : "";
    begin(name);
    addFolder();
    addName(name.substr(lastPart(name)));
    addButtons();
    setDefault(IDOK);
    setFirst(item(cmb13));
    setClientSize(kWidth, kHeight);
    enter(folder_);
    hook_.open(handle_, choice_);
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
  bool has(DWORD flag) const { return choice_.Flags & flag; }
  std::string typed() const {
    const Window *const field = recordOf(item(cmb13));
    return field ? field->text : "";
  }

  // ---- The window

  void begin(const std::string &name) {
    folder_ = currentFolderName();
    const std::string wanted = choice_.lpstrInitialDir ? inFolder(folder_, choice_.lpstrInitialDir) : "";
    if (!wanted.empty() && isFolder(wanted)) folder_ = wanted;
    if (lastPart(name) == 0) return;
    const std::string given = folderOf(inFolder(folder_, name));
    if (isFolder(given)) folder_ = given;
  }

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
    const size_t chosen = std::clamp<size_t>(choice_.nFilterIndex, 1, std::max<size_t>(1, filters_.size())) - 1;
    addPart(handle_, row(1), cmb1, look,
            [&](HWND window) { return choiceBox_ = std::make_shared<ChoiceBox>(window, textsOf(filters_), chosen); });
  }

  void addButtons() {
    if (!has(OFN_HIDEREADONLY)) {
      const HWND box = add(kButtonClass, codePageFromUtf8("読み取り専用ファイルとして開く(&R)"),
                           WS_TABSTOP | BS_AUTOCHECKBOX, row(2), chx1);
      SendMessageA(box, BM_SETCHECK, has(OFN_READONLY) ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    RECT place = row(0);
    place.left = place.right + 8, place.right = kWidth - kMargin;
    add(kButtonClass, codePageFromUtf8(opens_ ? "開く(&O)" : "保存(&S)"), WS_TABSTOP, place, IDOK);
    place.top = row(1).top, place.bottom = row(1).bottom;
    add(kButtonClass, codePageFromUtf8("キャンセル"), WS_TABSTOP, place, IDCANCEL);
  }

  // ---- The folder

  std::string patterns() const {
    if (!pattern_.empty()) return pattern_;
    const size_t chosen = choiceBox_->chosen();
    return chosen < filters_.size() ? filters_[chosen].patterns : "*";
  }

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
      choice_.nFilterIndex = static_cast<DWORD>(choiceBox_->chosen() + 1);
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
      if (!check(name)) return;
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

  // Gives a path its extension, and asks what is to be asked. Whether it can be taken.
  bool check(std::string &path) {
    if (has(OFN_NOVALIDATE)) return true;
    if (!isName(path)) return refuse(path, "ファイル名に使えない文字があります。");
    if (!extensionOf(path) && !(opens_ && exists(path))) path += extension();
    const bool there = exists(path);
    if ((has(OFN_PATHMUSTEXIST) || has(OFN_FILEMUSTEXIST)) && !isFolder(folderOf(path)))
      return refuse(path, "フォルダーが見つかりません。");
    if (opens_ && !there && has(OFN_FILEMUSTEXIST)) return refuse(path, "ファイルが見つかりません。");
    if (opens_ && !there && has(OFN_CREATEPROMPT)) return ask(path, "ファイルがありません。作成しますか?");
    if (!opens_ && there && has(OFN_OVERWRITEPROMPT)) return ask(path, "同じ名前のファイルがあります。置き換えますか?");
    return true;
  }

  // That of the filter, if it has one, takes the place of the default one.
  std::string extension() const {
    const std::string given = choice_.lpstrDefExt ? choice_.lpstrDefExt : "";
    if (given.empty()) return "";
    const std::vector<std::string> all = patternsIn(patterns());
    const std::string first = all.empty() ? "" : all[0];
    const bool names = first.size() > 2 && first.compare(0, 2, "*.") == 0 && !isPattern(first.substr(2));
    return "." + (names ? first.substr(2) : given);
  }

  bool refuse(const std::string &path, const char *why) {
    say(path, why, MB_OK | MB_ICONEXCLAMATION);
    return false;
  }
  bool ask(const std::string &path, const char *question) {
    return say(path, question, MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) == IDYES;
  }
  int say(const std::string &path, const char *words, UINT type) {
    const std::string text = path + "\n" + codePageFromUtf8(words);
    return MessageBoxA(handle_, text.c_str(), recordOf(handle_)->text.c_str(), type);
  }

  void finish(const std::vector<std::string> &paths) {
    std::string all = paths[0];
    if (paths.size() > 1) {
      all = folder_;
      for (const std::string &path : paths)
        all += (has(OFN_EXPLORER) ? '\0' : ' ') + (folderOf(path) == folder_ ? path.substr(lastPart(path)) : path);
    }
    if (has(OFN_ALLOWMULTISELECT)) all += '\0'; // a second one ends the list
    if (!write(all)) return;
    writeParts(paths);
    if (hook_.tell(CDN_FILEOK)) return;
    if (!has(OFN_NOCHANGEDIR)) SetCurrentDirectoryA(folder_.c_str());
    end(IDOK);
  }

  // Without enough room the dialog ends, and the room tells how much it is.
  bool write(const std::string &all) {
    if (copyOut(all, choice_.lpstrFile, choice_.nMaxFile)) return true;
    failDialog(FNERR_BUFFERTOOSMALL);
    const auto needed = static_cast<uint16_t>(all.size() + 1);
    if (choice_.lpstrFile && choice_.nMaxFile >= sizeof needed) std::memcpy(choice_.lpstrFile, &needed, sizeof needed);
    end(0);
    return false;
  }

  void writeParts(const std::vector<std::string> &paths) {
    const std::string &path = paths[0];
    const bool one = paths.size() == 1;
    choice_.nFileOffset = static_cast<WORD>(one ? lastPart(path) : folder_.size() + 1);
    choice_.nFileExtension = static_cast<WORD>(one ? extensionOf(path) : 0);
    choice_.nFilterIndex = filters_.empty() ? 0 : static_cast<DWORD>(choiceBox_->chosen() + 1);
    if (one) copyOut(path.substr(lastPart(path)), choice_.lpstrFileTitle, choice_.nMaxFileTitle);
    choice_.Flags &= ~OFN_EXTENSIONDIFFERENT;
    if (choice_.lpstrDefExt && *choice_.lpstrDefExt &&
        foldedName(path.substr(one && extensionOf(path) ? extensionOf(path) : path.size())) !=
            foldedName(choice_.lpstrDefExt))
      choice_.Flags |= OFN_EXTENSIONDIFFERENT;
    if (has(OFN_HIDEREADONLY)) return;
    choice_.Flags &= ~OFN_READONLY;
    if (SendMessageA(item(chx1), BM_GETCHECK, 0, 0)) choice_.Flags |= OFN_READONLY;
  }

  OPENFILENAMEA &choice_;
  const bool opens_;
  const std::vector<Filter> filters_;
  std::string folder_;  // empty for the drives
  std::string pattern_; // that the user has typed, instead of the filter's
  std::shared_ptr<ItemList> list_;
  std::shared_ptr<ChoiceBox> choiceBox_;
  FileHook hook_;
};

BOOL choose(OPENFILENAMEA *choice, bool opens) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    failDialog(0);
    if (!choice || choice->lStructSize < OPENFILENAME_SIZE_VERSION_400A) return failDialog(CDERR_STRUCTSIZE);
    if (choice->lpstrFile && choice->nMaxFile && !memchr(choice->lpstrFile, '\0', choice->nMaxFile))
      return failDialog(FNERR_INVALIDFILENAME);
    if (answersItself()) return FALSE;
    DialogLook look;
    const bool titled = choice->lpstrTitle && *choice->lpstrTitle;
    look.caption = titled ? choice->lpstrTitle : codePageFromUtf8(opens ? "開く" : "名前を付けて保存");
    return runDialog(choice->hwndOwner, Disables::owner, look,
                     [&](HWND window) { return std::make_shared<FileDialog>(window, *choice, opens); }) == IDOK;
  });
}

} // namespace

} // namespace platform

BOOL GetOpenFileNameA(OPENFILENAMEA *choice) { return platform::choose(choice, true); }
BOOL GetSaveFileNameA(OPENFILENAMEA *choice) { return platform::choose(choice, false); }
