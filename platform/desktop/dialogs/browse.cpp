// The dialog in which the user chooses a folder, and the lists of items that name it.

#include "platform/desktop/dialogs/desktopdialog.h"
#include "platform/desktop/dialogs/dialog.h"
#include "platform/desktop/dialogs/filenames.h"
#include "platform/desktop/dialogs/itemids.h"
#include "platform/desktop/dialogs/itemlist.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"
#include "platform/winapi/boxes.h"
#include "platform/winapi/shell.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <malloc.h>

namespace platform {

LPITEMIDLIST listOf(const std::string &path) {
  const size_t length = sizeof(WORD) + path.size() + 1;
  auto *const bytes = static_cast<BYTE *>(std::calloc(1, length + sizeof(WORD)));
  if (!bytes) return nullptr;
  const auto size = static_cast<WORD>(length);
  std::memcpy(bytes, &size, sizeof size);
  std::memcpy(bytes + sizeof size, path.c_str(), path.size() + 1);
  return reinterpret_cast<LPITEMIDLIST>(bytes);
}

std::string pathOf(LPCITEMIDLIST list) {
  if (!list || list->mkid.cb <= sizeof(WORD)) return "";
  return reinterpret_cast<const char *>(list->mkid.abID);
}

namespace {

class Allocator final : public IMalloc {
 public:
  HRESULT QueryInterface(const void *, void **object) override {
    if (object) *object = nullptr;
    return E_NOINTERFACE;
  }
  DWORD AddRef() override { return 1; }
  DWORD Release() override { return 1; }
  void *Alloc(SIZE_T size) override { return std::malloc(size); }
  void *Realloc(void *memory, SIZE_T size) override { return std::realloc(memory, size); }
  void Free(void *memory) override { std::free(memory); }
  SIZE_T GetSize(void *memory) override { return memory ? malloc_usable_size(memory) : static_cast<SIZE_T>(-1); }
  int DidAlloc(void *) override { return -1; } // it can't tell
  void HeapMinimize() override {}
};

// ---- The dialog

constexpr int kTreeId = 0x3741, kPromptId = 0x3742, kStatusId = 0x3743;
constexpr LONG kWidth = 320, kHeight = 340, kMargin = 10, kLine = 24, kPrompt = 30, kButton = 90;

class FolderDialog final : public Dialog {
 public:
  FolderDialog(HWND handle, const BROWSEINFOA &how) : Dialog(handle), how_(how), root_(pathOf(how.pidlRoot)) {}

  void build() override {
    const LONG right = kWidth - kMargin, bottom = kHeight - kMargin - kLine;
    LONG top = kMargin + kPrompt;
    add(kLabelClass, how_.lpszTitle ? how_.lpszTitle : "", SS_NOPREFIX, {kMargin, kMargin, right, top}, kPromptId);
    if (how_.ulFlags & BIF_STATUSTEXT) {
      add(kLabelClass, "", SS_NOPREFIX, {kMargin, top, right, top + kLine}, kStatusId);
      top += kLine;
    }
    DialogLook look;
    look.style = WS_TABSTOP;
    look.exStyle = WS_EX_CLIENTEDGE;
    setFirst(addPart(handle_, {kMargin, top, right, bottom - kMargin}, kTreeId, look,
                     [&](HWND window) { return tree_ = std::make_shared<ItemList>(window, false); }));
    add(kButtonClass, "OK", WS_TABSTOP, {right - 2 * kButton - 8, bottom, right - kButton - 8, bottom + kLine}, IDOK);
    add(kButtonClass, codePageFromUtf8("キャンセル"), WS_TABSTOP, {right - kButton, bottom, right, bottom + kLine},
        IDCANCEL);
    setDefault(IDOK);
    setClientSize(kWidth, kHeight);
    fill({}, listFolder(root_, {}), root_, 0);
    open(root_.empty() ? currentFolderName() : root_);
  }

  void shown() override { tell(BFFM_INITIALIZED, 0); }

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
    case BFFM_SETSELECTIONA: select(wParam, lParam); return 0;
    case BFFM_ENABLEOK: EnableWindow(item(IDOK), lParam != 0); return 0;
    case BFFM_SETSTATUSTEXTA:
      if (const HWND status = item(kStatusId)) SetWindowTextA(status, reinterpret_cast<LPCSTR>(lParam));
      return 0;
    default: return Dialog::answer(message, wParam, lParam);
    }
  }

  const std::string &chosen() const { return chosen_; }

 private:
  using Items = std::vector<ItemList::Item>;

  // Puts folders into the tree, in front of the row `before`.
  void fill(Items items, const Items &folders, const std::string &parent, size_t before, int depth = 0) {
    std::vector<std::string> paths;
    Items rows;
    for (const ItemList::Item &folder : folders) {
      rows.push_back({folder.name, true, depth});
      paths.push_back(inFolder(parent, folder.name));
    }
    const auto at = static_cast<std::ptrdiff_t>(before);
    items.insert(items.begin() + at, rows.begin(), rows.end());
    paths_.insert(paths_.begin() + at, paths.begin(), paths.end());
    tree_->fill(std::move(items));
  }

  std::optional<size_t> current() const {
    const std::vector<size_t> selection = tree_->selection();
    return selection.empty() ? std::nullopt : std::optional(selection[0]);
  }
  std::string path() const { return current() ? paths_[*current()] : root_; }

  bool isOpen(size_t index) const {
    const Items &items = tree_->items();
    return index + 1 < items.size() && items[index + 1].depth > items[index].depth;
  }

  void expand(size_t index) {
    const int depth = tree_->items()[index].depth + 1;
    if (!isOpen(index)) fill(tree_->items(), listFolder(paths_[index], {}), paths_[index], index + 1, depth);
    tree_->select(index);
  }

  void collapse(size_t index) {
    Items items = tree_->items();
    size_t end = index + 1;
    while (end < items.size() && items[end].depth > items[index].depth) ++end;
    const auto from = static_cast<std::ptrdiff_t>(index) + 1, to = static_cast<std::ptrdiff_t>(end);
    items.erase(items.begin() + from, items.begin() + to);
    paths_.erase(paths_.begin() + from, paths_.begin() + to);
    tree_->fill(std::move(items));
    tree_->select(index);
  }

  // Opens the tree down to a folder and selects it. Whether it is in it.
  bool open(const std::string &folder) {
    std::vector<std::string> way;
    for (std::string at = folder; !at.empty() && at != root_; at = folderOf(at)) way.insert(way.begin(), at);
    std::optional<size_t> found;
    for (const std::string &step : way) {
      if (found) expand(*found);
      const auto at = std::find_if(paths_.begin(), paths_.end(),
                                   [&](const std::string &one) { return foldedName(one) == foldedName(step); });
      if (at == paths_.end()) return false;
      found = static_cast<size_t>(at - paths_.begin());
    }
    if (found) tree_->select(*found);
    return found.has_value();
  }

  void select(WPARAM isPath, LPARAM what) {
    const std::string path = isPath ? reinterpret_cast<LPCSTR>(what) : pathOf(reinterpret_cast<LPCITEMIDLIST>(what));
    const std::string folder = inFolder(currentFolderName(), path);
    if (path.empty() || !isFolder(folder)) return;
    if (open(folder)) tell(BFFM_SELCHANGED, folder);
  }

  void tell(UINT what, const std::string &path) const {
    const List list(listOf(path));
    tell(what, reinterpret_cast<LPARAM>(list.get()));
  }
  void tell(UINT what, LPARAM with) const {
    if (how_.lpfn) callOut(how_.lpfn, handle_, what, with, how_.lParam);
  }

  void go(std::optional<ItemList::Way> way) {
    const std::optional<size_t> at = current();
    if (!at) return;
    const bool isOut = way == ItemList::Way::out;
    if (isOpen(*at) && (isOut || !way)) return collapse(*at);
    if (!isOut) return expand(*at);
    if (const std::string parent = folderOf(paths_[*at]); open(parent)) tell(BFFM_SELCHANGED, parent);
  }

  bool command(int id, int what) override {
    switch (id) {
    case IDOK:
      if (path().empty()) return true;
      chosen_ = path();
      end(IDOK);
      return true;
    case IDCANCEL: end(0); return true;
    case kTreeId:
      if (what == ItemList::kSelected) tell(BFFM_SELCHANGED, path());
      if (what == ItemList::kChosen) go(tree_->way());
      return true;
    default: return false;
    }
  }

  const BROWSEINFOA how_;
  const std::string root_; // empty for the drives
  std::shared_ptr<ItemList> tree_;
  std::vector<std::string> paths_; // of the tree's rows
  std::string chosen_;
};

// The path of the chosen folder; empty for none.
std::string browse(const BROWSEINFOA &how) {
  DialogLook look;
  look.caption = codePageFromUtf8("フォルダーの参照");
  if (auto chosen = browseOnDesktop(how, look)) return *chosen;
  std::shared_ptr<FolderDialog> dialog;
  const int answer = runDialog(how.hwndOwner, Disables::owner, look,
                               [&](HWND window) { return dialog = std::make_shared<FolderDialog>(window, how); });
  return answer == IDOK ? dialog->chosen() : "";
}

} // namespace

} // namespace platform

using namespace platform;

LPITEMIDLIST SHBrowseForFolderA(BROWSEINFOA *how) {
  return locked<LPITEMIDLIST>(nullptr, [&]() -> LPITEMIDLIST {
    if (!how || answersItself()) return nullptr;
    const std::string path = browse(*how), name = path.substr(lastPart(path));
    if (path.empty()) return nullptr;
    if (how->pszDisplayName) copyWhole(name.empty() ? path : name, how->pszDisplayName, MAX_PATH);
    return listOf(path);
  });
}

BOOL SHGetPathFromIDListA(LPCITEMIDLIST list, LPSTR path) {
  return guarded<BOOL>(FALSE, [&]() -> BOOL {
    if (!path) return FALSE;
    const std::string found = pathOf(list);
    path[found.copy(path, MAX_PATH - 1)] = '\0';
    return !found.empty();
  });
}

HRESULT SHGetMalloc(IMalloc **allocator) {
  static Allocator one;
  if (!allocator) return E_INVALIDARG;
  *allocator = &one;
  return S_OK;
}
