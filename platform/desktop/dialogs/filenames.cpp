#include "platform/desktop/dialogs/filenames.h"

#include "platform/kernel/codepage.h"
#include "platform/kernel/paths.h"

#include <algorithm>
#include <map>

namespace platform {

namespace {

size_t next(const std::string &text, size_t at) { return at + (isDoubleByteAt(text, at) ? 2 : 1); }

std::vector<std::string> partsOf(const std::string &path) {
  std::vector<std::string> parts(1);
  for (size_t at = 0; at < path.size(); at = next(path, at)) {
    if (isSeparator(path[at]))
      parts.emplace_back();
    else
      parts.back() += path.substr(at, next(path, at) - at);
  }
  std::erase(parts, "");
  return parts;
}

bool isDrive(const std::string &part) {
  return part.size() >= 2 && part[1] == ':' && !isLeadByte(static_cast<unsigned char>(part[0]));
}

std::string trimmed(const std::string &text) {
  const size_t from = text.find_first_not_of(' '), to = text.find_last_not_of(' ');
  return from == std::string::npos ? "" : text.substr(from, to - from + 1);
}

// Adds what a pattern finds, by folded name.
void find(const std::string &pattern, bool folders, std::map<std::u16string, ItemList::Item> &found) {
  WIN32_FIND_DATAA entry;
  const HANDLE search = FindFirstFileA(pattern.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const bool isOne = entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY;
    const std::string name = entry.cFileName;
    if (isOne != folders || entry.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN || name == "." || name == "..") continue;
    found[foldedName(name)] = {name, folders};
  } while (FindNextFileA(search, &entry));
  FindClose(search);
}

std::vector<ItemList::Item> drives() {
  std::vector<ItemList::Item> all;
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    const std::string root = {letter, ':', '\\'};
    if (GetDriveTypeA(root.c_str()) != DRIVE_NO_ROOT_DIR) all.push_back({root, true});
  }
  return all;
}

} // namespace

std::vector<std::string> namesIn(const std::string &text, bool separated) {
  std::vector<std::string> names;
  std::string name, all = trimmed(text);
  bool quoted = false;
  const auto finish = [&] {
    if (!trimmed(name).empty()) names.push_back(trimmed(name));
    name.clear();
  };
  for (size_t at = 0; at < all.size(); at = next(all, at)) {
    if (all[at] == '"') {
      quoted = !quoted;
      finish();
    } else if (all[at] == ' ' && !quoted && separated) {
      finish();
    } else {
      name += all.substr(at, next(all, at) - at);
    }
  }
  finish();
  return names;
}

std::string inFolder(const std::string &folder, const std::string &name) {
  std::string from = folder;
  if (!name.empty() && isSeparator(name[0])) from = folder.substr(0, std::min<size_t>(2, folder.size()));
  const std::vector<std::string> typed = partsOf(name);
  if (!typed.empty() && isDrive(typed[0])) from.clear();
  std::vector<std::string> parts = partsOf(from);
  for (const std::string &part : typed) {
    if (part == "..") {
      if (parts.size() > 1) parts.pop_back();
    } else if (part != ".") {
      parts.push_back(part);
    }
  }
  std::string path;
  for (const std::string &part : parts) path += (path.empty() ? "" : "\\") + part;
  return parts.size() == 1 && isDrive(path) ? path + "\\" : path;
}

size_t lastPart(const std::string &path) {
  size_t start = 0;
  for (size_t at = 0; at < path.size(); at = next(path, at))
    if (isSeparator(path[at]) || (path[at] == ':' && at == 1)) start = at + 1;
  return start;
}

std::string folderOf(const std::string &path) {
  const size_t start = lastPart(path);
  if (start >= path.size()) return "";
  const std::string folder = path.substr(0, start);
  return folder.size() > 3 ? folder.substr(0, folder.size() - 1) : folder;
}

size_t extensionOf(const std::string &path) {
  size_t found = 0;
  for (size_t at = lastPart(path); at < path.size(); at = next(path, at))
    if (path[at] == '.') found = at + 1;
  return found;
}

bool isFolder(const std::string &path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_DIRECTORY;
}

bool exists(const std::string &path) { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

bool isName(const std::string &path) {
  for (size_t at = 0; at < path.size(); at = next(path, at)) {
    const bool drive = path[at] == ':' && at == 1;
    if (!drive && std::string_view("<>|:\"*?").find(path[at]) != std::string_view::npos) return false;
  }
  return path.size() < MAX_PATH;
}

bool isPattern(const std::string &name) {
  for (size_t at = 0; at < name.size(); at = next(name, at))
    if (name[at] == '*' || name[at] == '?') return true;
  return false;
}

std::string currentFolderName() {
  char folder[MAX_PATH] = "";
  const DWORD length = GetCurrentDirectoryA(sizeof folder, folder);
  return length && length < sizeof folder ? folder : "C:\\";
}

std::vector<std::string> patternsIn(const std::string &patterns) {
  std::vector<std::string> all(1);
  for (size_t at = 0; at < patterns.size(); at = next(patterns, at)) {
    if (patterns[at] == ';')
      all.emplace_back();
    else
      all.back() += patterns.substr(at, next(patterns, at) - at);
  }
  for (std::string &pattern : all) pattern = trimmed(pattern);
  std::erase(all, "");
  return all;
}

std::vector<ItemList::Item> listFolder(const std::string &folder, const std::vector<std::string> &patterns) {
  if (folder.empty()) return drives();
  const std::string in = folder.back() == '\\' && folder.size() == 3 ? folder : folder + "\\";
  std::map<std::u16string, ItemList::Item> folders, files;
  find(in + "*", true, folders);
  for (const std::string &pattern : patterns) find(in + pattern, false, files);
  std::vector<ItemList::Item> all;
  for (auto &[key, item] : folders) all.push_back(std::move(item));
  for (auto &[key, item] : files) all.push_back(std::move(item));
  return all;
}

} // namespace platform
