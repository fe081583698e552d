// Folder trees, walked with the platform's find calls. Paths are built in work areas; what doesn't fit is left alone.

#include "files/files.h"

#include "files/files_private.h"
#include "text/text.h"

namespace {

constexpr size_t kTreePath = 256; // of a path in a tree that is made, deleted or copied
constexpr size_t kListPath = 260; // of an entry in a list

bool isSeparator(char c) { return c == '\\' || c == '/'; }

// The byte behind a character.
const char *behind(const char *text) { return text + (wqIsDoubleByte(text) ? 2 : 1); }

// The end of the run of characters that are, or are not, separators.
const char *runEnd(const char *text, bool separators) {
  while (*text && isSeparator(*text) == separators) text = behind(text);
  return text;
}

// Copies a path without one separator at its end.
// Result: whether it fits.
template <size_t size> bool copyFolder(char (&dst)[size], const char *path) {
  if (!wqJoin(dst, path)) return false;
  const char *last = nullptr;
  for (const char *at = dst; *at; at = behind(at)) last = at;
  if (last && isSeparator(*last)) dst[last - dst] = '\0';
  return true;
}

// The entries that match a pattern, one after the other.
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

 private:
  WIN32_FIND_DATAA entry_;
  HANDLE handle_;
};

bool isDotEntry(const char *name) { return WqStr_Comp(name, ".") || WqStr_Comp(name, ".."); }

} // namespace

void WqDir_Init(char *path) { *path = '\0'; }

void WqDir_Term(char *) {}

int WqDir_IsExist(const char *path) { return Find(path).found(); }

int WqDir_Create(const char *path) {
  const char *end = runEnd(path, false);
  if (*end) end = runEnd(end, true); // what stands in front is a drive, as a rule
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
  if (wqJoin(entry, folder, "\\*.*")) {
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
  WqList *first = nullptr;
  WqList *last = nullptr;
  Find find(search);
  for (bool more = find.found(); more; more = find.next()) {
    if (find.has(kWqLeftAlone) || isDotEntry(find.name()) || !wqJoin(area, folder, "\\", find.name())) continue;
    auto *text = static_cast<char *>(WqMem_Alloc(sizeof area));
    WqList *node = text ? WqList_AddN(last, reinterpret_cast<WqWord>(text)) : nullptr;
    if (!node) {
      WqMem_Free(text);
      break;
    }
    WqStr_Copy(text, area);
    if (!first) first = node;
    last = node;
  }
  return first;
}

void WvDir_CopyFile(const char *source, const char *destination) {
  char from[kTreePath];
  char to[kTreePath];
  char entry[kTreePath];
  char copy[kTreePath];
  if (!copyFolder(from, source) || !copyFolder(to, destination) || !WqDir_IsExist(from)) return;
  if (!wqJoin(entry, from, "\\*.*")) return;
  Find find(entry);
  for (bool more = find.found(); more; more = find.next()) {
    if (!wqJoin(entry, from, "\\", find.name()) || !wqJoin(copy, to, "\\", find.name())) continue;
    if (!find.isFolder()) {
      if (find.has(kWqLeftAlone)) continue;
      WqDir_Create(to);
      CopyFileA(entry, copy, TRUE);
    } else if (find.name()[0] != '.') {
      WvDir_CopyFile(entry, copy);
    }
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
