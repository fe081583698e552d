#include "platform/desktop/dialogs/filechoice.h"

#include "platform/desktop/windows/window.h"
#include "platform/kernel/codepage.h"
#include "platform/winapi/boxes.h"

#include <algorithm>
#include <cstring>

namespace platform {

namespace {

std::vector<FileChoice::Filter> filtersIn(LPCSTR list) {
  std::vector<FileChoice::Filter> filters;
  for (LPCSTR at = list; at && *at;) {
    FileChoice::Filter filter{at, ""};
    at += filter.text.size() + 1;
    filter.patterns = at;
    at += filter.patterns.size() + 1;
    filters.push_back(std::move(filter));
  }
  return filters;
}

// A dialog that nobody sees leaves its place to its owner.
int say(HWND dialog, const std::string &path, const char *words, UINT type) {
  const Window *const record = recordOf(dialog);
  if (!record) return IDCANCEL;
  const std::string text = path + "\n" + codePageFromUtf8(words), caption = record->text;
  return MessageBoxA(IsWindowVisible(dialog) ? dialog : GetWindow(dialog, GW_OWNER), text.c_str(), caption.c_str(),
                     type);
}

bool refuse(HWND dialog, const std::string &path, const char *why) {
  say(dialog, path, why, MB_OK | MB_ICONEXCLAMATION);
  return false;
}

bool ask(HWND dialog, const std::string &path, const char *question) {
  return say(dialog, path, question, MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) == IDYES;
}

} // namespace

FileChoice::FileChoice(OPENFILENAMEA &record, bool opens)
    : record_(record), opens_(opens), filters_(filtersIn(record.lpstrFilter)), folder_(currentFolderName()) {
  const std::string given = record.lpstrFile ? record.lpstrFile : "";
  name_ = given.substr(lastPart(given));
  const std::string wanted = record.lpstrInitialDir ? inFolder(folder_, record.lpstrInitialDir) : "";
  if (!wanted.empty() && isFolder(wanted)) folder_ = wanted;
  if (lastPart(given) == 0) return;
  const std::string itsFolder = folderOf(inFolder(folder_, given));
  if (isFolder(itsFolder)) folder_ = itsFolder;
}

size_t FileChoice::firstFilter() const {
  return std::clamp<size_t>(record_.nFilterIndex, 1, std::max<size_t>(1, filters_.size())) - 1;
}

std::string FileChoice::patternsOf(size_t filter) const {
  return filter < filters_.size() ? filters_[filter].patterns : "*";
}

// That of the filter, if it has one, takes the place of the default one.
std::string FileChoice::extensionFor(const std::string &patterns) const {
  const std::string given = record_.lpstrDefExt ? record_.lpstrDefExt : "";
  if (given.empty()) return "";
  const std::vector<std::string> all = patternsIn(patterns);
  const std::string first = all.empty() ? "" : all[0];
  const bool names = first.size() > 2 && first.compare(0, 2, "*.") == 0 && !isPattern(first.substr(2));
  return "." + (names ? first.substr(2) : given);
}

bool FileChoice::check(HWND dialog, std::string &path, const std::string &patterns, bool agreed) const {
  if (has(OFN_NOVALIDATE)) return true;
  if (!isName(path)) return refuse(dialog, path, "ファイル名に使えない文字があります。");
  if (!extensionOf(path) && !(opens_ && exists(path))) {
    const std::string extension = extensionFor(patterns);
    agreed = agreed && extension.empty();
    path += extension;
  }
  const bool there = exists(path);
  if ((has(OFN_PATHMUSTEXIST) || has(OFN_FILEMUSTEXIST)) && !isFolder(folderOf(path)))
    return refuse(dialog, path, "フォルダーが見つかりません。");
  if (opens_ && !there && has(OFN_FILEMUSTEXIST)) return refuse(dialog, path, "ファイルが見つかりません。");
  if (opens_ && !there && has(OFN_CREATEPROMPT)) return ask(dialog, path, "ファイルがありません。作成しますか?");
  if (!opens_ && there && !agreed && has(OFN_OVERWRITEPROMPT))
    return ask(dialog, path, "同じ名前のファイルがあります。置き換えますか?");
  return true;
}

// Without enough room, the room tells how much it is.
DWORD FileChoice::write(const std::string &folder, const std::vector<std::string> &paths, size_t filter) const {
  std::string all = paths[0];
  if (paths.size() > 1) {
    all = folder;
    for (const std::string &path : paths)
      all += (has(OFN_EXPLORER) ? '\0' : ' ') + (folderOf(path) == folder ? path.substr(lastPart(path)) : path);
  }
  if (has(OFN_ALLOWMULTISELECT)) all += '\0'; // a second one ends the list
  if (copyOut(all, record_.lpstrFile, record_.nMaxFile)) {
    writeParts(folder, paths, filter);
    return 0;
  }
  const auto needed = static_cast<uint16_t>(all.size() + 1);
  if (record_.lpstrFile && record_.nMaxFile >= sizeof needed) std::memcpy(record_.lpstrFile, &needed, sizeof needed);
  return FNERR_BUFFERTOOSMALL;
}

void FileChoice::writeParts(const std::string &folder, const std::vector<std::string> &paths, size_t filter) const {
  const std::string &path = paths[0];
  const bool one = paths.size() == 1;
  record_.nFileOffset = static_cast<WORD>(one ? lastPart(path) : folder.size() + 1);
  record_.nFileExtension = static_cast<WORD>(one ? extensionOf(path) : 0);
  record_.nFilterIndex = filters_.empty() ? 0 : static_cast<DWORD>(filter + 1);
  if (one) copyOut(path.substr(lastPart(path)), record_.lpstrFileTitle, record_.nMaxFileTitle);
  record_.Flags &= ~OFN_EXTENSIONDIFFERENT;
  if (!record_.lpstrDefExt || !*record_.lpstrDefExt) return;
  const std::string extension = one && extensionOf(path) ? path.substr(extensionOf(path)) : "";
  if (foldedName(extension) != foldedName(record_.lpstrDefExt)) record_.Flags |= OFN_EXTENSIONDIFFERENT;
}

void FileChoice::takeReadOnly(bool wanted) const {
  if (has(OFN_HIDEREADONLY)) return;
  record_.Flags &= ~OFN_READONLY;
  if (wanted) record_.Flags |= OFN_READONLY;
}

void FileChoice::finish(const std::string &folder) const {
  if (!has(OFN_NOCHANGEDIR)) SetCurrentDirectoryA(folder.c_str());
}

bool copyOut(const std::string &text, LPSTR room, DWORD size) {
  if (!room || size <= text.size()) return false;
  std::memcpy(room, text.c_str(), text.size() + 1);
  return true;
}

LRESULT handOut(const std::string &text, WPARAM size, LPARAM room) {
  if (room && size) copyWhole(text, reinterpret_cast<char *>(room), size);
  return static_cast<LRESULT>(text.size() + 1);
}

} // namespace platform
