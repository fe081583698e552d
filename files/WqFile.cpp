// Files and views of files, directly on the platform's functions.

#include "files/files.h"

#include "frame/memory.h"
#include "text/text.h"

namespace {

HANDLE open(WqFile *file, DWORD access, DWORD share, DWORD creation, DWORD attributes) {
  if (file->path[0] == '\0') return nullptr;
  file->file = CreateFileA(file->path, access, share, nullptr, creation, attributes, nullptr);
  return file->file == INVALID_HANDLE_VALUE ? nullptr : file->file;
}

// Makes a mapping and a view. With a null mapping MapViewOfFile fails.
void *map(WqFile *file, DWORD protection, DWORD access) {
  file->mapping = CreateFileMappingA(file->file, nullptr, protection, 0, 0, nullptr);
  file->view = MapViewOfFile(file->mapping, access, 0, 0, 0);
  if (!file->view && file->mapping) {
    CloseHandle(file->mapping);
    file->mapping = nullptr;
  }
  return file->view;
}

} // namespace

void WqFile_Init(WqFile *file) { WqMem_Zero(file, sizeof *file); }

void WqFile_Term(WqFile *file) {
  if (file->file == INVALID_HANDLE_VALUE) return;
  if (file->file) CloseHandle(file->file);
  file->file = nullptr;
}

void WqFile_Close(WqFile *file) { WqFile_Term(file); }

int32_t WqFile_Path(WqFile *file, const char *path) {
  file->path[sizeof file->path - 1] = '\0';
  return WqStr_nCopy(file->path, path, sizeof file->path - 1);
}

HANDLE WqFile_ReadOpen(WqFile *file) {
  return open(file, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
}

HANDLE WqFile_WriteOpen(WqFile *file) { return open(file, GENERIC_WRITE, 0, CREATE_ALWAYS, FILE_ATTRIBUTE_ARCHIVE); }

HANDLE WqFile_ReadWriteOpen(WqFile *file) {
  return open(file, GENERIC_READ | GENERIC_WRITE, 0, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL);
}

uint32_t WqFile_Read(WqFile *file, void *bytes, uint32_t size) {
  DWORD count = 0;
  return file->file && ReadFile(file->file, bytes, size, &count, nullptr) ? count : 0;
}

uint32_t WqFile_Write(WqFile *file, const void *bytes, uint32_t size) {
  DWORD count = 0;
  return file->file && WriteFile(file->file, bytes, size, &count, nullptr) ? count : 0;
}

uint32_t WqFile_Size(WqFile *file, uint32_t *size) { return *size = GetFileSize(file->file, nullptr); }

void *WqFile_ReadMapping(WqFile *file) { return map(file, SEC_COMMIT | PAGE_READONLY, FILE_MAP_READ); }

void *WqFile_ReadWriteMapping(WqFile *file) { return map(file, SEC_COMMIT | PAGE_READWRITE, FILE_MAP_ALL_ACCESS); }

BOOL WqFile_FlushMapping(WqFile *, const void *address, size_t size) { return FlushViewOfFile(address, size); }

BOOL WqFile_UnMapping(WqFile *file) {
  const BOOL unmapped = file->view && UnmapViewOfFile(file->view);
  if (file->mapping) CloseHandle(file->mapping);
  file->view = nullptr;
  file->mapping = nullptr;
  return unmapped;
}

uint32_t WqFile_SearchPath(const void *, const char *path, const char *fileName, const char *extension) {
  char found[260];
  return SearchPathA(path, fileName, extension, sizeof found, found, nullptr);
}

void WqPath_Init(char *path) { *path = '\0'; }

void WqPath_Term(char *) {}
