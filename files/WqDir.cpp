// Folder trees, walked with the platform's find functions. Paths are built in fixed arrays; longer paths are skipped.

#include "files/files.h"

#include "files/files_private.h"
#include "text/text.h"

#include <algorithm>
#include <utility>

namespace {

constexpr size_t kTreePath = 256; // bytes of a path in a tree
constexpr size_t kListPath = 260; // bytes of an entry in a list

bool isSeparator(char c) { return c == '\\' || c == '/'; }

// The place behind a character.
const char *behind(const char *text) { return text + (wqIsDoubleByte(text) ? 2 : 1); }

// The end of a run of separators, or of other characters.
const char *runEnd(const char *text, bool separators) {
  while (*text && isSeparator(*text) == separators) text = behind(text);
  return text;
}

// Copies a path. One separator at its end is dropped.
// Result: whether the path fits.
template <size_t size> bool copyFolder(char (&dst)[size], const char *path) {
  if (!wqJoin(dst, path)) return false;
  const char *last = nullptr;
  for (const char *at = dst; *at; at = behind(at)) last = at;
  if (last && isSeparator(*last)) dst[last - dst] = '\0';
  return true;
}

// Finds the entries that match a pattern, one after the other.
class Find {
 public:
  explicit Find(const char *pattern) : handle_(FindFirstFileA(pattern, &entry_)) {}
  ~Find() {
    if (found()) FindClose(handle_);
  }
  Find(const Find &) = delete;
  Find &operator=(const Find &) = delete;

  bool found() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool next() { return FindNextFileA(handle_, &entry_) != 0; }

  const char *name() const { return entry_.cFileName; }
  bool has(DWORD attributes) const { return (entry_.dwFileAttributes & attributes) != 0; }
  bool isFolder() const { return has(FILE_ATTRIBUTE_DIRECTORY); }
  bool isLink() const { return isFolder() && has(FILE_ATTRIBUTE_REPARSE_POINT); } // to a folder

 private:
  WIN32_FIND_DATAA entry_;
  HANDLE handle_;
};

bool isLinkToFolder(const char *path) {
  const Find find(path);
  return find.found() && find.isLink();
}

// A list of paths.
class Paths {
 public:
  Paths() = default;
  ~Paths() { WqList_RemoveAllWith(first_); }
  Paths(const Paths &) = delete;
  Paths &operator=(const Paths &) = delete;

  // room: minimum size of the text in bytes.
  // Result: false if memory is short.
  bool add(const char *path, size_t room = 0) {
    const auto size = static_cast<uint32_t>(std::max<size_t>(WqStr_Len(path) + 1, room));
    auto *text = static_cast<char *>(WqMem_Alloc(size));
    WqList *node = text ? WqList_AddN(last_, reinterpret_cast<WqWord>(text)) : nullptr;
    if (!node) {
      WqMem_Free(text);
      return false;
    }
    WqStr_Copy(text, path);
    if (!first_) first_ = node;
    last_ = node;
    return true;
  }
  const WqList *first() const { return first_; }
  // Hands the list over to the caller.
  WqList *release() { return std::exchange(first_, nullptr); }

 private:
  WqList *first_ = nullptr;
  WqList *last_ = nullptr;
};

// Lists the files of a tree that WvDir_CopyFile copies.
// inner: empty, or the path of a folder within the tree.
void listFiles(const char *folder, const char *inner, Paths &files) {
  char path[kTreePath];
  if (!wqJoin(path, folder, inner, "\\*.*")) return;
  Find find(path);
  for (bool more = find.found(); more; more = find.next()) {
    if (!wqJoin(path, inner, "\\", find.name())) continue;
    if (!find.isFolder()) {
      if (!find.has(kWqLeftAlone)) files.add(path);
    } else if (find.name()[0] != '.' && !find.isLink()) {
      listFiles(folder, path, files);
    }
  }
}

bool isDotEntry(const char *name) { return WqStr_Comp(name, ".") || WqStr_Comp(name, ".."); }

} // namespace

void WqDir_Init(char *path) { *path = '\0'; }

void WqDir_Term(char *) {}

int WqDir_IsExist(const char *path) { return Find(path).found(); }

int WqDir_Create(const char *path) {
  const char *end = runEnd(path, false);
  if (*end) end = runEnd(end, true); // the first part is usually a drive
  for (;;) {
    end = runEnd(end, false);
    char part[kTreePath];
    const auto length = static_cast<size_t>(end - path);
    if (length >= sizeof part) return 0;
    WqMem_Copy(part, path, length);
    part[length] = '\0';
    if (!WqDir_IsExist(part)) {
      SECURITY_ATTRIBUTES security{};
      security.nLength = sizeof security;
      if (!CreateDirectoryA(part, &security)) return 0;
    }
    if (!*end) return 1;
    ++end;
  }
}

int WqDir_Delete(const char *path) {
  char folder[kTreePath];
  char entry[kTreePath];
  if (!copyFolder(folder, path) || !WqDir_IsExist(folder)) return 0;
  if (!isLinkToFolder(folder) && wqJoin(entry, folder, "\\*.*")) {
    Find find(entry);
    for (bool more = find.found(); more; more = find.next()) {
      if (!wqJoin(entry, folder, "\\", find.name())) continue;
      if (!find.isFolder()) {
        if (!find.has(kWqLeftAlone | FILE_ATTRIBUTE_READONLY)) DeleteFileA(entry);
      } else if (find.name()[0] != '.') {
        WqDir_Delete(entry);
      }
    }
  }
  RemoveDirectoryA(folder);
  return 1;
}

WqList *WqDir_Collect(const char *folder, const char *pattern) {
  char area[kListPath];
  char search[kListPath];
  if (!copyFolder(area, folder) || !WqDir_IsExist(area) || !wqJoin(search, area, "\\", pattern)) return nullptr;
  Paths paths;
  Find find(search);
  for (bool more = find.found(); more; more = find.next()) {
    if (find.has(kWqLeftAlone) || isDotEntry(find.name()) || !wqJoin(area, folder, "\\", find.name())) continue;
    if (!paths.add(area, sizeof area)) break;
  }
  return paths.release();
}

// Lists all files before it copies the first one: a copy into a folder of the tree itself would never end.
void WvDir_CopyFile(const char *source, const char *destination) {
  char from[kTreePath];
  char to[kTreePath];
  if (!copyFolder(from, source) || !copyFolder(to, destination) || !WqDir_IsExist(from)) return;
  Paths files;
  listFiles(from, "", files);
  for (const WqList *node = files.first(); node; node = node->next) {
    const auto *path = reinterpret_cast<const char *>(node->data);
    char file[kTreePath];
    char copy[kTreePath];
    char folder[kTreePath];
    if (!wqJoin(file, from, path) || !wqJoin(copy, to, path)) continue;
    WqDir_GetFromPath(copy, folder);
    WqDir_Create(folder);
    CopyFileA(file, copy, TRUE);
  }
}

int32_t WqDir_GetFromPath(const char *path, char *folder) {
  const char *last = path;
  for (const char *at = path; *at; at = behind(at))
    if (*at == '\\') last = at;
  const auto length = static_cast<int32_t>(last - path);
  WqMem_Copy(folder, path, static_cast<size_t>(length));
  folder[length] = '\0';
  return length;
}

int32_t WvDir_PathTo(char *folder, const char *path) { return WqDir_GetFromPath(path, folder); }
